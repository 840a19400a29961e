#include "WindowFixture.h"
#include "XTavixCellExtend.h"

#include <QPainter>

#include <functional>

namespace {

const QRgb white = qRgb(255, 255, 255);
const QRgb red = qRgb(255, 0, 0);
const QRgb blue = qRgb(0, 0, 255);
const QRgb green = qRgb(0, 128, 0);
const QRgb gridLeft = qRgb(245, 245, 245);
const QRgb gridTop = qRgb(240, 240, 240);

class CellPainting : public WindowFixture {
protected:
    /// B2 painted on white into a rectangle of 40 by 20 pixels at (10, 10).
    QImage paintB2(QStyle::State state = QStyle::State_Enabled)
    {
        QImage image(60, 40, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.rect = QRect(10, 10, 40, 20);
        option.state = state;
        view()->itemDelegate()->paint(&painter, option, page().model()->index(1, 1));
        painter.end();
        return image;
    }

    XTavixCellExtend* extend(int row, int col) { return page().model()->forceCellExtend(row, col); }
};

// The pixels that a case looks at: three across the middle of each side, from outside inward. The
// cell's own pixels are 10 to 49 across and 10 to 29 down; 50 and 30 belong to the next cells.
struct Sides {
    std::vector<QRgb> left, top, right, bottom;
};

Sides sidesOf(const QImage& image)
{
    return {{image.pixel(10, 20), image.pixel(11, 20), image.pixel(12, 20)},
            {image.pixel(30, 10), image.pixel(30, 11), image.pixel(30, 12)},
            {image.pixel(50, 20), image.pixel(49, 20), image.pixel(48, 20)},
            {image.pixel(30, 30), image.pixel(30, 29), image.pixel(30, 28)}};
}

TEST_F(CellPainting, AnEmptyCellHasItsGridLinesAtTheLeftAndTop)
{
    const Sides sides = sidesOf(paintB2());
    EXPECT_EQ(sides.left, (std::vector<QRgb>{gridLeft, white, white}));
    EXPECT_EQ(sides.top, (std::vector<QRgb>{gridTop, white, white}));
    EXPECT_EQ(sides.right, (std::vector<QRgb>{white, white, white}));
    EXPECT_EQ(sides.bottom, (std::vector<QRgb>{white, white, white}));
}

TEST_F(CellPainting, ThinBordersAreDrawnOnceAndThickOnesReachIn)
{
    extend(1, 1)->borderLeftStyle = XTavixCellExtend::ThickBorder;
    extend(1, 1)->borderLeft = red;
    extend(1, 1)->borderRightStyle = XTavixCellExtend::ThinBorder;
    extend(1, 1)->borderRight = red;
    extend(1, 1)->borderBottomStyle = XTavixCellExtend::ThickBorder;
    extend(1, 1)->borderBottom = blue;
    extend(0, 1)->borderBottomStyle = XTavixCellExtend::ThickBorder;
    extend(0, 1)->borderBottom = green;
    const Sides sides = sidesOf(paintB2());
    EXPECT_EQ(sides.left, (std::vector<QRgb>{red, red, white}));
    EXPECT_EQ(sides.top, (std::vector<QRgb>{green, white, white}));
    EXPECT_EQ(sides.right, (std::vector<QRgb>{white, white, white})); // C2 draws it
    EXPECT_EQ(sides.bottom, (std::vector<QRgb>{white, blue, white}));
}

TEST_F(CellPainting, TheOwnBorderHidesTheNeighboursOne)
{
    extend(1, 1)->borderLeftStyle = XTavixCellExtend::ThinBorder;
    extend(1, 1)->borderLeft = red;
    extend(1, 0)->borderRightStyle = XTavixCellExtend::ThickBorder;
    extend(1, 0)->borderRight = blue;
    EXPECT_EQ(sidesOf(paintB2()).left, (std::vector<QRgb>{red, white, white}));
}

TEST_F(CellPainting, ASelectionIsOutlinedByTheCellsInsideAndBesideIt)
{
    goTo(1, 0); // A2, the neighbour at the left
    const QRgb outline = paintB2().pixel(10, 20);
    EXPECT_GT(qBlue(outline), qRed(outline) + 30);
    EXPECT_EQ(paintB2().pixel(30, 10), gridTop);
    goTo(1, 1);
    const QImage selected = paintB2(QStyle::State_Enabled | QStyle::State_Selected);
    EXPECT_GT(qRed(selected.pixel(30, 20)), qBlue(selected.pixel(30, 20)) + 30); // yellow fill
    EXPECT_EQ(selected.pixel(52, 20), white);
}

TEST_F(CellPainting, PassingStatesAreShown)
{
    XCellPaintState state;
    const auto middle = [&] {
        view()->setPaintState(state);
        return QColor(paintB2().pixel(30, 25));
    };
    EXPECT_EQ(middle(), QColor(Qt::white));
    state.cutRects.add_(xstd::XRect(1, 1, 1, 1), false);
    EXPECT_LT(middle().green(), 140);
    state = XCellPaintState();
    state.editRow = state.editCol = 1;
    EXPECT_GT(middle().blue(), 240);
    EXPECT_LT(middle().green(), 140);
    state = XCellPaintState();
    state.marks = {xstd::XRect(1, 1, 3, 1)};
    view()->setPaintState(state);
    EXPECT_EQ(sidesOf(paintB2()).left, (std::vector<QRgb>{red, white, white}));
    EXPECT_EQ(sidesOf(paintB2()).bottom, (std::vector<QRgb>{white, white, white}));
    state.hoveredMark = state.marks[0];
    view()->setPaintState(state);
    EXPECT_EQ(sidesOf(paintB2()).left, (std::vector<QRgb>{red, red, white}));
    EXPECT_EQ(sidesOf(paintB2()).right, (std::vector<QRgb>{white, red, white}));
}

TEST_F(CellPainting, ACellThatReadsOthersHasAMarker)
{
    enter(1, 1, "=A1");
    goTo(5, 5);
    const QImage image = paintB2();
    EXPECT_EQ(image.pixel(46, 15), qRgb(255, 200, 200));
    EXPECT_EQ(image.pixel(43, 15), white);
}

TEST_F(CellPainting, ALongTextIsClippedOrWrappedAtTheCell)
{
    enter(1, 1, "\"" + QString(3000, 'W') + "\"");
    goTo(5, 5);
    extend(1, 1);
    const auto inkBelow = [&](int y) {
        const QImage image = paintB2();
        for (int x = 14; x < 46; ++x) {
            for (int row = y; row < 27; ++row) {
                if (qGray(image.pixel(x, row)) < 128)
                    return true;
            }
        }
        return false;
    };
    extend(1, 1)->fore = qRgb(0, 0, 0);
    extend(1, 1)->fontSize = 5;
    extend(1, 1)->valign = XTavixCellExtend::AlignStart;
    EXPECT_TRUE(inkBelow(12));
    EXPECT_FALSE(inkBelow(24));
    extend(1, 1)->multLine = true;
    EXPECT_TRUE(inkBelow(24));
    const QImage image = paintB2();
    for (int y = 0; y < image.height(); ++y)
        EXPECT_EQ(image.pixel(55, y), white); // nothing runs out of the cell
}

TEST_F(CellPainting, TheSeenPartOfALongTextFollowsTheAlignment)
{
    const QString seen = QString::fromUtf8("字").repeated(300);
    const QString rest = QString::fromUtf8("é").repeated(3000);
    const auto painted = [&](const QString& text, uint8_t align) {
        view()->setCellText(1, 1, toXString('"' + text + '"'), true);
        extend(1, 1)->align = align;
        return paintB2();
    };
    const QImage plain = painted(seen.repeated(4), XTavixCellExtend::AlignStart);
    EXPECT_EQ(painted(seen + rest, XTavixCellExtend::AlignStart), plain);
    const QImage atEnd = painted(seen.repeated(4), XTavixCellExtend::AlignEnd);
    EXPECT_EQ(painted(rest + seen, XTavixCellExtend::AlignEnd), atEnd);
    const QImage centred = painted(seen.repeated(4), XTavixCellExtend::AlignCenter);
    EXPECT_EQ(painted(rest + seen + rest, XTavixCellExtend::AlignCenter), centred);
    EXPECT_NE(painted(rest, XTavixCellExtend::AlignStart), plain);
}

TEST(ReferenceFrames, AreLookedUpWithoutAnEntryForEachCell)
{
    XCellRefMarks marks;
    marks.setRects({xstd::XRect(0, 0, 1048575, 0), xstd::XRect(4, 0, 4, 2)});
    const XCellRefMarks::Sides shared = marks.sidesAt(4, 0);
    EXPECT_EQ(shared.count, 2);
    EXPECT_TRUE(shared.top && shared.left && shared.bottom && shared.right);
    const XCellRefMarks::Sides last = marks.sidesAt(1048575, 0);
    EXPECT_TRUE(last.bottom && last.left && last.right && !last.top);
    EXPECT_EQ(marks.sidesAt(3, 1).count, 0);
}

TEST(CellFormat, TransposeExchangesSidesAndTwiceGivesTheFirstStateBack)
{
    XTavixCellExtend extend{QFont("Courier New", 12)};
    extend.borderTop = red;
    extend.borderTopStyle = XTavixCellExtend::ThickBorder;
    extend.borderRight = blue;
    extend.borderRightStyle = XTavixCellExtend::ThinBorder;
    extend.transpose();
    EXPECT_EQ(extend.borderLeft, red);
    EXPECT_EQ(extend.borderLeftStyle, XTavixCellExtend::ThickBorder);
    EXPECT_EQ(extend.borderBottom, blue);
    EXPECT_EQ(extend.borderBottomStyle, XTavixCellExtend::ThinBorder);
    EXPECT_EQ(extend.borderTopStyle, XTavixCellExtend::NoBorder);
    extend.transpose();
    EXPECT_EQ(extend.borderTop, red);
    EXPECT_EQ(extend.borderRightStyle, XTavixCellExtend::ThinBorder);
}

TEST(CellFormat, ACloneIsItsOwnRecordAndAssignBringsAllFields)
{
    XTavixCellExtend source{QFont("Courier New", 12)};
    source.bold = true;
    source.formatRule.radix = 16;
    const auto clone = source.clone();
    static_cast<XTavixCellExtend&>(*clone).fontName = "other";
    EXPECT_EQ(source.fontName, "Courier New");
    XTavixCellExtend target{QFont()};
    target.assign(source);
    EXPECT_EQ(target.fontName, "Courier New");
    EXPECT_EQ(target.fontSize, 12);
    EXPECT_TRUE(target.bold);
    EXPECT_EQ(target.rule().radix, 16);
    EXPECT_EQ(target.valign, XTavixCellExtend::AlignCenter);
}

} // namespace
