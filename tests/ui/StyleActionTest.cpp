#include "WindowFixture.h"
#include "XActionPasteStyle.h"
#include "XActionSetBorder.h"
#include "XStyleAction.h"

namespace {

using xstd::XMergedRects;
using xstd::XRect;

const XRect a1(0, 0, 0, 0);
const XRect a1b2(0, 0, 1, 1);

class StyleActions : public WindowFixture {
protected:
    template <class Action, class... Args>
    void run(Args&&... args)
    {
        page().model()->perform(
            std::make_unique<Action>(window.get(), std::forward<Args>(args)...));
    }

    const XTavixCellExtend* record(int row, int col)
    {
        return page().model()->cellExtend(row, col);
    }
    huge::XCell* cell(int row, int col) { return page().table().cellAt(row, col); }
    int sizeAt(int row, int col) { return record(row, col)->fontSize; }

    /// The border styles of a row's cells, each left, top, right and bottom.
    std::string borders(int row, int left, int right)
    {
        std::string text;
        for (int col = left; col <= right; ++col) {
            const XTavixCellExtend* look = record(row, col);
            text += col > left ? " " : "";
            for (const auto side :
                 {&XTavixCellExtend::borderLeftStyle, &XTavixCellExtend::borderTopStyle,
                  &XTavixCellExtend::borderRightStyle, &XTavixCellExtend::borderBottomStyle})
                text += look ? static_cast<char>('0' + look->*side) : '-';
        }
        return text;
    }
};

TEST_F(StyleActions, EachWriteTheirFieldAndUndoTakesTheRecordAway)
{
    const XMergedRects rects(a1);
    run<XActionSetFontBlod>(true, rects);
    run<XActionSetFontItalic>(true, rects);
    run<XActionSetFontUnderline>(true, rects);
    run<XActionSetMultline>(true, rects);
    run<XActionSetFontName>("Mono", rects);
    run<XActionSetFontSize>(int16_t(33), rects);
    run<XActionSetTextColor>(QColor(1, 2, 3), rects);
    run<XActionSetBackgroundColor>(QColor(Qt::transparent), rects);
    run<XActionSetAlignment>(true, uint8_t(2), rects);
    run<XActionSetAlignment>(false, uint8_t(1), rects);
    const XTavixCellExtend& look = *record(0, 0);
    EXPECT_TRUE(look.bold && look.italic && look.underLine && look.multLine);
    EXPECT_EQ(look.fontName, "Mono");
    EXPECT_EQ(look.fontSize, 33);
    EXPECT_EQ(look.fore, qRgb(1, 2, 3));
    EXPECT_EQ(look.background, 0u);
    EXPECT_EQ(look.valign, 2);
    EXPECT_EQ(look.align, 1);
    for (int i = 0; i < 10; ++i)
        view()->undo();
    ASSERT_NE(cell(0, 0), nullptr); // made for the record, it stays without one
    EXPECT_EQ(record(0, 0), nullptr);
    view()->redo();
    EXPECT_TRUE(record(0, 0)->bold);
}

TEST_F(StyleActions, DoNothingOnNoCellsAndStandOnTheStack)
{
    const size_t before = page().undo().undoCount();
    run<XActionSetFontBlod>(true, XMergedRects());
    EXPECT_EQ(page().undo().undoCount(), before + 1);
}

TEST_F(StyleActions, StepEachFontFromItsOwnSize)
{
    struct Step {
        int size, larger, smaller;
    };
    const Step steps[] = {{5, 6, 6},
                          {6, 7, 6},
                          {7, 8, 6},
                          {10, 11, 9},
                          {20, 22, 18},
                          {72, 79, 64},
                          {32767, 32767, 29490}};
    for (const Step& step : steps) {
        run<XActionSetFontSize>(int16_t(step.size), XMergedRects(a1b2));
        run<XActionExpandFontSize>(XMergedRects(a1));
        run<XActionReduceFontSize>(XMergedRects(XRect(1, 1, 1, 1)));
        EXPECT_EQ(sizeAt(0, 0), step.larger) << step.size;
        EXPECT_EQ(sizeAt(1, 1), step.smaller) << step.size;
        EXPECT_EQ(sizeAt(0, 1), step.size);
    }
    run<XActionSetFontSize>(int16_t(10), XMergedRects(a1));
    run<XActionExpandFontSize>(XMergedRects(std::vector<XRect>{a1, a1b2})); // A1 twice
    EXPECT_EQ(sizeAt(0, 0), 11);
}

TEST_F(StyleActions, ShowANumberInItsNewFormatAtOnce)
{
    enter(0, 0, "16");
    huge::XFormatRule rule;
    rule.radix = 16;
    rule.mantissa = 3;
    run<XActionSetFormatRule>(rule, XFormatField::Radix, XMergedRects(a1));
    EXPECT_EQ(shown(0, 0), "0x10");
    EXPECT_EQ(record(0, 0)->formatRule.mantissa, -1);
    view()->undo();
    EXPECT_EQ(shown(0, 0), "16");
}

TEST_F(StyleActions, ClearingRemovesCellsThatHeldNothingElse)
{
    enter(0, 0, "1");
    run<XActionSetFontBlod>(true, XMergedRects(a1b2));
    run<XActionClearStyle>(XMergedRects(a1b2));
    EXPECT_EQ(record(0, 0), nullptr);
    EXPECT_EQ(shown(0, 0), "1");
    EXPECT_EQ(cell(1, 1), nullptr);
    view()->undo();
    EXPECT_TRUE(record(0, 0)->bold);
    EXPECT_TRUE(record(1, 1)->bold);
}

TEST_F(StyleActions, PastingTilesTheSourceAndStretchesASingleCell)
{
    run<XActionSetFontSize>(int16_t(20), XMergedRects(a1));
    run<XActionSetFontSize>(int16_t(21), XMergedRects(XRect(1, 1, 1, 1)));
    run<XActionSetFontSize>(int16_t(30), XMergedRects(XRect(3, 0, 6, 6)));
    huge::XSavedExtends records;
    page().table().snapshotExtends(records, XMergedRects(a1b2), {huge::optCopy});

    run<XActionPasteStyle>(XMergedRects(XRect(3, 0, 5, 2)), XMergedRects(a1b2), records);
    for (int row = 3; row <= 5; ++row) {
        for (int col = 0; col <= 2; ++col) {
            const bool odd = (row - 3) % 2 != 0;
            if ((col % 2 != 0) == odd)
                EXPECT_EQ(sizeAt(row, col), odd ? 21 : 20);
            else
                EXPECT_EQ(record(row, col), nullptr); // as A2 and B1
        }
    }
    EXPECT_NE(record(3, 0), record(5, 2));
    view()->undo();
    EXPECT_EQ(sizeAt(3, 1), 30);

    run<XActionPasteStyle>(XMergedRects(XRect(8, 4, 8, 4)), XMergedRects(a1b2), records);
    EXPECT_EQ(sizeAt(9, 5), 21);
    EXPECT_EQ(cell(9, 6), nullptr);
}

struct BorderCase {
    int mode;
    const char* upper;
    const char* lower;
};

TEST_F(StyleActions, BordersAreDrawnByMode)
{
    const BorderCase cases[] = {{XActionSetBorder::NoBorder, "---- ----", "---- ----"},
                                {XActionSetBorder::ThickFrame, "2200 0220", "2002 0022"},
                                {XActionSetBorder::ThinFrame, "1100 0110", "1001 0011"},
                                {XActionSetBorder::ThickFrameGrid, "2211 1221", "2112 1122"},
                                {XActionSetBorder::InnerLines, "0011 1001", "0110 1100"},
                                {XActionSetBorder::ThinFrameGrid, "1111 1111", "1111 1111"},
                                {XActionSetBorder::LeftLine, "1000 ----", "1000 ----"},
                                {XActionSetBorder::TopLine, "0100 0100", "---- ----"},
                                {XActionSetBorder::RightLine, "---- 0010", "---- 0010"},
                                {XActionSetBorder::BottomLine, "---- ----", "0001 0001"}};
    // The same four cells, once in one piece and once in two that touch.
    const XMergedRects whole(a1b2);
    const XMergedRects halves(std::vector<XRect>{XRect(0, 0, 1, 0), XRect(0, 1, 1, 1)});
    for (const BorderCase& row : cases) {
        for (const XMergedRects& rects : {whole, halves}) {
            run<XActionSetBorder>(rects, true, row.mode, QColor(Qt::red));
            EXPECT_EQ(borders(0, 0, 1), row.upper) << row.mode;
            EXPECT_EQ(borders(1, 0, 1), row.lower) << row.mode;
            view()->undo();
            EXPECT_EQ(borders(0, 0, 1), "---- ----") << row.mode;
        }
    }
}

TEST_F(StyleActions, OtherBordersAndColoursStay)
{
    const XMergedRects rects(a1);
    run<XActionSetBorder>(rects, true, XActionSetBorder::ThickFrame, QColor(Qt::red));
    run<XActionSetBorder>(rects, true, XActionSetBorder::LeftLine, QColor(Qt::blue));
    EXPECT_EQ(borders(0, 0, 0), "1222");
    EXPECT_EQ(record(0, 0)->borderLeft, QColor(Qt::blue).rgba());
    EXPECT_EQ(record(0, 0)->borderTop, QColor(Qt::red).rgba());
    run<XActionSetBorder>(rects, false, 0, QColor(Qt::green));
    EXPECT_EQ(borders(0, 0, 0), "1222");
    EXPECT_EQ(record(0, 0)->borderTop, QColor(Qt::green).rgba());
    run<XActionSetBorder>(rects, true, XActionSetBorder::NoBorder, QColor(Qt::red));
    EXPECT_EQ(borders(0, 0, 0), "0000");
    EXPECT_EQ(record(0, 0)->borderTop, QColor(Qt::green).rgba());
    view()->undo();
    EXPECT_EQ(borders(0, 0, 0), "1222");
}

TEST_F(StyleActions, RefuseSelectionsThatAreTooLarge)
{
    const XMergedRects columns(XRect(0, 0, 1048575, 1));
    try {
        run<XActionSetFontBlod>(true, columns);
        FAIL();
    } catch (const xstd::XExceptionItems& failure) {
        EXPECT_EQ(failure.items().front().mess(), "The selection is too large for a format");
    }
    EXPECT_EQ(cell(0, 0), nullptr);
    // What touches only a line of it, or what is there, is no matter of size.
    run<XActionSetBorder>(columns, true, XActionSetBorder::TopLine, QColor(Qt::red));
    EXPECT_EQ(borders(0, 0, 1), "0100 0100");
    run<XActionClearStyle>(columns);
    EXPECT_EQ(cell(0, 0), nullptr);
}

} // namespace
