#include "WindowFixture.h"
#include "XCommonAction.h"
#include "XTavixCellExtend.h"
#include "XTracingAction.h"

#include <QMenu>

#include <map>

namespace {

using xstd::XRect;

class ViewCommands : public WindowFixture {
protected:
    void selectRects(std::initializer_list<XRect> rects)
    {
        xstd::XMergedRects all;
        for (const XRect& rect : rects)
            all.add_(rect, false);
        view()->select(all, true);
        view()->setFocus();
    }
    QStringList row(int row, int cols)
    {
        QStringList texts;
        for (int col = 0; col < cols; ++col)
            texts.append(shown(row, col));
        return texts;
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier)
    {
        QTest::keyClick(view(), key, modifiers);
    }
    QString messages() { return window->messages()->toPlainText(); }
};

TEST_F(ViewCommands, StructureCommandsMoveCellsAndUndoBringsThemBack)
{
    struct Case {
        void (XCellTableView::*command)();
        XRect selected;
        const char* a1;
        const char* b2;
        const char* formula; // where C3 stood
    };
    // A1 1, B2 2, C3 =A1+B2
    const Case cases[] = {
        {&XCellTableView::insertRow, {0, 0, 0, 0}, "", "", ""},
        {&XCellTableView::insertRow, {2, 0, 2, 0}, "1", "2", ""},
        {&XCellTableView::insertCol, {0, 2, 0, 2}, "1", "2", ""},
        {&XCellTableView::insertRowRect, {0, 0, 0, 0}, "", "2", "3"},
        {&XCellTableView::insertColRect, {1, 1, 1, 1}, "1", "", "3"},
        {&XCellTableView::removeRow, {3, 0, 3, 0}, "1", "2", "3"},
        {&XCellTableView::removeCol, {4, 4, 4, 4}, "1", "2", "3"},
        {&XCellTableView::removeRowRect, {0, 1, 0, 1}, "1", "", "3"},
        {&XCellTableView::removeColRect, {1, 0, 1, 0}, "1", "", "3"},
        {&XCellTableView::transposeRect, {0, 0, 1, 1}, "1", "2", "3"},
    };
    enter(0, 0, "1");
    enter(1, 1, "2");
    enter(2, 2, "A1+B2");
    for (size_t i = 0; i < std::size(cases); ++i) {
        const Case& c = cases[i];
        SCOPED_TRACE(i);
        selectRects({c.selected});
        (view()->*c.command)();
        EXPECT_EQ(shown(0, 0), c.a1);
        EXPECT_EQ(shown(1, 1), c.b2);
        EXPECT_EQ(shown(2, 2), c.formula);
        key(Qt::Key_Z);
        EXPECT_EQ(row(0, 1) + row(1, 2) + row(2, 3), QStringList({"1", "", "2", "", "", "3"}));
    }
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(ViewCommands, StructureCommandsWantOneRange)
{
    const std::pair<void (XCellTableView::*)(), const char*> cases[] = {
        {&XCellTableView::insertRow, "Please select one rect"},
        {&XCellTableView::insertCol, "Please select one rect"},
        {&XCellTableView::removeRow, "Please select one rect"},
        {&XCellTableView::removeCol, "Please select one rect"},
        {&XCellTableView::insertRowRect, "You cannot insert multiple Rect at the same time"},
        {&XCellTableView::insertColRect, "You cannot insert multiple Rect at the same time"},
        {&XCellTableView::removeRowRect, "You cannot remove multiple Rect at the same time"},
        {&XCellTableView::removeColRect, "You cannot remove multiple Rect at the same time"},
        {&XCellTableView::transposeRect, "You cannot remove multiple Rect at the same time"}};
    enter(0, 0, "1");
    for (const auto& [command, text] : cases) {
        errors.clear();
        selectRects({{0, 0, 0, 0}, {2, 2, 3, 3}});
        (view()->*command)();
        EXPECT_EQ(errors.join("|").trimmed(), text);
        EXPECT_EQ(shown(0, 0), "1");
    }
}

TEST_F(ViewCommands, DeleteEmptiesTheSelectionAndMakesNoStepWhereThereIsNothing)
{
    enter(0, 0, "1");
    enter(4, 1, "A1+1");
    const size_t steps = page().undo().undoCount();
    selectRects({{7, 7, 9, 9}});
    key(Qt::Key_Delete, Qt::NoModifier);
    EXPECT_EQ(page().undo().undoCount(), steps);
    view()->selectColumn(0);
    key(Qt::Key_Delete, Qt::NoModifier);
    EXPECT_EQ(shown(0, 0), "");
    key(Qt::Key_Z);
    EXPECT_EQ(shown(0, 0), "1");
    EXPECT_EQ(shown(4, 1), "2");
}

TEST_F(ViewCommands, ACutWaitsForThePasteWhichMoves)
{
    enter(0, 0, "7");
    enter(1, 0, "A1*2");
    selectRects({{0, 0, 0, 0}});
    key(Qt::Key_X);
    EXPECT_EQ(shown(0, 0), "7");
    EXPECT_EQ(view()->paintState().cutRects, xstd::XMergedRects(XRect(0, 0, 0, 0)));
    selectRects({{3, 3, 3, 3}});
    key(Qt::Key_V);
    EXPECT_EQ(shown(0, 0), "");
    EXPECT_EQ(shown(3, 3), "7");
    EXPECT_EQ(shown(1, 0), "14"); // the reference follows
    EXPECT_TRUE(view()->paintState().cutRects.isEmpty());
    EXPECT_EQ(view()->selectedRects(), xstd::XMergedRects(XRect(3, 3, 3, 3)));
    key(Qt::Key_Z);
    EXPECT_EQ(shown(0, 0), "7");
}

TEST_F(ViewCommands, ACutEndsWithEscapeAndWithAChangeToItsCells)
{
    enter(0, 0, "7");
    selectRects({{0, 0, 0, 0}});
    key(Qt::Key_X);
    key(Qt::Key_Escape, Qt::NoModifier);
    EXPECT_TRUE(view()->paintState().cutRects.isEmpty());
    key(Qt::Key_X);
    view()->setCellText(5, 5, "1", false);
    EXPECT_FALSE(view()->paintState().cutRects.isEmpty());
    view()->setCellText(0, 0, "8", false);
    EXPECT_TRUE(view()->paintState().cutRects.isEmpty());
}

TEST_F(ViewCommands, TheMenuHoldsEveryCommandAndRunsIt)
{
    QMenu* menu = view()->tableMenu();
    QStringList texts;
    for (const QAction* entry : menu->actions())
        texts.append(entry->isSeparator() ? "-" : entry->text());
    EXPECT_EQ(texts, QStringList({"复制(Ctrl+C)", "剪切(Ctrl+X)", "粘贴(Ctrl+V)", "仅粘贴文本",
                                  "仅粘贴公式", "仅粘贴样式", "-", "重新计算( Ctrl + R )", "-",
                                  "计算汇总值", "计算平均值", "-", "插入单元格", "删除单元格",
                                  "转置：行列翻转"}));
    enter(0, 0, "3");
    selectRects({{0, 0, 0, 0}});
    menu->actions()[1]->trigger();
    emit menu->aboutToShow();
    EXPECT_FALSE(menu->actions()[3]->isEnabled()); // a cut is pasted whole
    EXPECT_FALSE(menu->actions()[4]->isEnabled());
    view()->clearDragState();
    emit menu->aboutToShow();
    EXPECT_TRUE(menu->actions()[3]->isEnabled());
    menu->actions()[12]->menu()->actions()[0]->trigger();
    EXPECT_EQ(shown(1, 0), "3");
    goTo(1, 0);
    menu->actions()[9]->trigger();
    EXPECT_NE(view()->tool(), nullptr);
}

TEST_F(ViewCommands, FormatsAreCopiedPastedAndClearedByKeys)
{
    selectRects({{0, 0, 0, 0}});
    key(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier); // nothing copied yet
    EXPECT_FALSE(page().undo().canUndo());
    key(Qt::Key_B);
    ASSERT_NE(page().model()->cellExtend(0, 0), nullptr);
    EXPECT_TRUE(page().model()->cellExtend(0, 0)->bold);
    key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    selectRects({{2, 2, 2, 2}});
    key(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_NE(page().model()->cellExtend(2, 2), nullptr);
    EXPECT_TRUE(page().model()->cellExtend(2, 2)->bold);
    view()->clearStyle(view()->selectedRects());
    EXPECT_EQ(page().model()->cellExtend(2, 2), nullptr);
}

TEST_F(ViewCommands, TheListingOfTheFirstSelectedCellIsPrinted)
{
    enter(0, 0, "1+2");
    const int printed = messages().size();
    selectRects({{5, 5, 5, 5}}); // no cell there
    key(Qt::Key_F4);
    EXPECT_EQ(messages().size(), printed);
    selectRects({{0, 0, 3, 3}});
    key(Qt::Key_F4);
    EXPECT_GT(messages().size(), printed);
}

TEST_F(ViewCommands, ARecalculationRunsTheSelectionAndItsReadersAndIsNoStep)
{
    enter(0, 0, "1+2");
    enter(1, 0, "A1+1");
    page().table().cellAt(0, 0)->setValue(huge::HugeVariant());
    const size_t steps = page().undo().undoCount();
    selectRects({{0, 0, 0, 0}});
    key(Qt::Key_R);
    EXPECT_EQ(row(0, 1) + row(1, 1), QStringList({"3", "4"}));
    EXPECT_EQ(page().undo().undoCount(), steps);
}

TEST_F(ViewCommands, AFailureIsPrintedAndChangesNothing)
{
    enter(0, 0, "1");
    view()->setCellText(1'048'575, 0, "2", false); // in the last row that there is
    const QString before = messages();
    selectRects({{0, 0, 0, 0}});
    view()->insertRow();
    EXPECT_TRUE(
        messages().mid(before.size()).contains("The table ends at row 1048576 and column AVLG"));
    EXPECT_TRUE(errors.isEmpty()); // no box
    EXPECT_EQ(shown(0, 0), "1");
    EXPECT_EQ(shown(1'048'575, 0), "2");
}

TEST_F(ViewCommands, ACutPastedOntoItselfIsNoStep)
{
    enter(0, 0, "1");
    const size_t steps = page().undo().undoCount();
    selectRects({{0, 0, 0, 0}});
    key(Qt::Key_X);
    key(Qt::Key_V);
    EXPECT_EQ(shown(0, 0), "1");
    EXPECT_EQ(page().undo().undoCount(), steps);
    EXPECT_TRUE(view()->paintState().cutRects.isEmpty());
}

} // namespace
