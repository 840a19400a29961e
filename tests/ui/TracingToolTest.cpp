#include "WindowFixture.h"
#include "XComboBox.h"
#include "XTavixCellExtend.h"
#include "XTracingCalc.h"

#include <QItemSelectionModel>

namespace {

using xstd::XMergedRects;
using xstd::XRect;

const XRect b1(0, 1, 0, 1);

class SelectionFixture : public WindowFixture {
protected:
    void mark(const XMergedRects& rects) { view()->select(rects, true); }
    QPoint at(int row, int col)
    {
        return view()->visualRect(page().model()->index(row, col)).center();
    }
    void click(int row, int col)
    {
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, at(row, col));
        showEscaped();
    }
    void drag(int row, int col, int toRow, int toCol)
    {
        QWidget* grid = view()->viewport();
        QTest::mousePress(grid, Qt::LeftButton, Qt::NoModifier, at(row, col));
        QMouseEvent move(QEvent::MouseMove, at(toRow, toCol), grid->mapToGlobal(at(toRow, toCol)),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(grid, &move);
        QTest::mouseRelease(grid, Qt::LeftButton, Qt::NoModifier, at(toRow, toCol));
        showEscaped();
    }
    std::string scriptAt(int row, int col)
    {
        const huge::XCell* cell = page().table().cellAt(row, col);
        return cell ? cell->scriptText(false) : "";
    }
    const XTavixCellExtend& look(int row, int col)
    {
        return *page().model()->forceCellExtend(row, col);
    }
};

class TracingTools : public SelectionFixture {};

TEST_F(TracingTools, WriteTheSumOrAverageIntoTheNextCell)
{
    enter(0, 0, "3");
    enter(1, 0, "5");
    enter(3, 3, "7");
    mark(std::vector<XRect>{XRect(0, 0, 1, 0), XRect(3, 3, 3, 3)});
    view()->setTool(std::make_unique<XTracingCalcSum>(window.get(), Qt::CrossCursor));
    EXPECT_EQ(view()->viewport()->cursor().shape(), Qt::CrossCursor);
    click(4, 1);
    EXPECT_EQ(scriptAt(4, 1), "sum(A1:A2,D4)");
    EXPECT_EQ(shown(4, 1), "15");
    EXPECT_EQ(view()->tool(), nullptr);

    mark(XRect(0, 0, 0, 0));
    view()->setTool(std::make_unique<XTracingCalcAvg>(window.get(), Qt::CrossCursor));
    click(5, 1);
    EXPECT_EQ(scriptAt(5, 1), "avg(A1)");
    EXPECT_EQ(shown(5, 1), "3");
    EXPECT_TRUE(errors.isEmpty()) << errors.join("|").toStdString();
}

TEST_F(TracingTools, StayUntilOneCellIsMarked)
{
    enter(0, 0, "3");
    mark(XRect(0, 0, 0, 0));
    view()->setTool(std::make_unique<XTracingCalcSum>(window.get(), Qt::CrossCursor));
    drag(2, 1, 4, 2);
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].contains("You can only put the calculation results in one cell"));
    EXPECT_NE(view()->tool(), nullptr);
    click(2, 1);
    EXPECT_EQ(shown(2, 1), "3");
    EXPECT_EQ(view()->tool(), nullptr);
}

TEST_F(TracingTools, ShowTheRingOfASumOverItself)
{
    mark(XRect(0, 0, 2, 0));
    view()->setTool(std::make_unique<XTracingCalcSum>(window.get(), Qt::CrossCursor));
    click(1, 0);
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].contains("There is a circular dependency: "));
}

TEST_F(TracingTools, BrushTheLookOfThenOverTheCellsMarkedNext)
{
    goTo(0, 0);
    window->toggleBold();
    mark(XRect(0, 0, 0, 1)); // B1 has no record
    window->startStyleBrush();
    mark(XRect(0, 0, 0, 0));
    window->toggleBold(); // too late for the brush
    drag(3, 0, 4, 1);
    EXPECT_TRUE(look(3, 0).bold && look(4, 0).bold);
    EXPECT_FALSE(look(0, 0).bold);
    EXPECT_EQ(page().table().cellAt(4, 1), nullptr);
    EXPECT_EQ(view()->tool(), nullptr);
    view()->undo();
    EXPECT_EQ(page().model()->cellExtend(3, 0), nullptr);
}

class StyleCommands : public SelectionFixture {};

TEST_F(StyleCommands, DoNothingWithoutASelection)
{
    view()->selectionModel()->clear();
    const size_t before = page().undo().undoCount();
    window->toggleBold();
    window->toggleMultLine();
    window->togglePercent();
    window->toggleSign();
    window->stepMantissa(1);
    window->stepBreakSize(1);
    window->stepFontSize(true);
    window->setBorder(2);
    window->clearStyle();
    window->startStyleBrush();
    window->onSelectBorderColor(Qt::red, XToolColorButton::FromIcon);
    EXPECT_EQ(page().undo().undoCount(), before);
    EXPECT_EQ(view()->tool(), nullptr);
}

TEST_F(StyleCommands, ToggleByAnyOrByTheFirstSelectedCell)
{
    mark(b1);
    window->toggleBold();
    window->toggleSign();
    window->toggleMultLine();
    window->togglePercent();
    window->toggleBreakChar(',');
    mark(XRect(0, 0, 0, 1)); // A1 has no record
    window->toggleBold();
    window->toggleSign();
    window->toggleMultLine();
    window->togglePercent();
    window->toggleBreakChar(',');
    for (const int col : {0, 1}) {
        EXPECT_FALSE(look(0, col).bold);
        EXPECT_FALSE(look(0, col).formatRule.sign);
        EXPECT_TRUE(look(0, col).multLine);
        EXPECT_TRUE(look(0, col).formatRule.percent);
        EXPECT_EQ(look(0, col).formatRule.breakchar, ',');
    }
    window->toggleBreakChar('\'');
    EXPECT_EQ(look(0, 1).formatRule.breakchar, '\'');
    window->toggleBreakChar('\'');
    window->toggleMultLine();
    EXPECT_EQ(look(0, 1).formatRule.breakchar, 0);
    EXPECT_FALSE(look(0, 1).multLine);
}

TEST_F(StyleCommands, StepFromTheLargestOfTheSelection)
{
    goTo(0, 0);
    const auto mantissa = [&](int step) {
        window->stepMantissa(step);
        return int(look(0, 0).formatRule.mantissa);
    };
    EXPECT_EQ(mantissa(-1), -1);
    EXPECT_EQ(mantissa(1), 0);
    EXPECT_EQ(mantissa(-1), -1);
    const auto breakSize = [&](int step) {
        window->stepBreakSize(step);
        return int(look(0, 0).formatRule.breaksize);
    };
    EXPECT_EQ(breakSize(-1), 127);
    EXPECT_EQ(breakSize(1), 0);
    EXPECT_EQ(breakSize(1), 1);

    mark(b1);
    for (int i = 0; i < 4; ++i)
        window->stepMantissa(1);
    EXPECT_EQ(look(0, 1).formatRule.mantissa, 3);
    mark(XRect(0, 0, 0, 1));
    EXPECT_EQ(mantissa(1), 4);
    EXPECT_EQ(look(0, 1).formatRule.mantissa, 4);
}

TEST_F(StyleCommands, RecolourBordersFromTheIconAlone)
{
    goTo(1, 1);
    window->setBorder(3);
    EXPECT_EQ(look(1, 1).borderLeft, QColor(Qt::black).rgba());
    window->onSelectBorderColor(Qt::red, XToolColorButton::FromPopup);
    EXPECT_EQ(look(1, 1).borderLeft, QColor(Qt::black).rgba());
    window->onSelectBorderColor(Qt::red, XToolColorButton::FromIcon);
    EXPECT_EQ(look(1, 1).borderLeft, QColor(Qt::red).rgba());
    EXPECT_EQ(look(1, 1).borderLeftStyle, XTavixCellExtend::ThinBorder);
}

TEST_F(StyleCommands, HearBoxesOnlyWithTheFocus)
{
    goTo(0, 0);
    const size_t before = page().undo().undoCount();
    window->onSetFontName("Mono");
    window->onSetFontSize("20");
    window->onSetMantissaSize("2");
    EXPECT_EQ(page().undo().undoCount(), before);
    const QList<XComboBox*> boxes = window->findChildren<XComboBox*>(); // font, size, places
    ASSERT_EQ(boxes.size(), 3);
    boxes[0]->setFocus();
    window->onSetFontName("Mono");
    EXPECT_EQ(look(0, 0).fontName, "Mono");
    boxes[1]->setFocus();
    for (const char* size : {"20", "0", "-5", "large"})
        window->onSetFontSize(size);
    EXPECT_EQ(look(0, 0).fontSize, 20);
    window->onSetFontSize("99999");
    EXPECT_EQ(look(0, 0).fontSize, 32767);
    boxes[2]->setFocus();
    window->onSetMantissaSize("2");
    window->onSetMantissaSize("many");
    EXPECT_EQ(look(0, 0).formatRule.mantissa, 2);
    window->onSetMantissaSize("70000");
    EXPECT_EQ(look(0, 0).formatRule.mantissa, 32767);
    window->onSetMantissaSize("-3");
    EXPECT_EQ(look(0, 0).formatRule.mantissa, -1);
}

TEST_F(StyleCommands, GoBackToTheCellWhereTheyWereGiven)
{
    goTo(2, 1);
    window->setRadix(2);
    window->setAlignment(true, 2);
    EXPECT_EQ(look(2, 1).formatRule.radix, 2);
    EXPECT_EQ(look(2, 1).valign, 2);
    goTo(7, 3);
    view()->undo();
    EXPECT_EQ(view()->currentIndex(), page().model()->index(2, 1));
}

} // namespace
