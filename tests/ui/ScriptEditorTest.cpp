#include "KeyWordHint.h"
#include "WindowFixture.h"

#include <QLabel>
#include <QListView>

namespace {

using xstd::XRect;

class ScriptEditor : public WindowFixture {
protected:
    /// Begins to write a script in the pane, for the cell J10.
    void write(const QString& text)
    {
        goTo(9, 9);
        pane()->setFocus();
        pane()->selectAll();
        pane()->insertPlainText(text);
    }
    QPoint middle(int row, int col)
    {
        return view()->visualRect(page().model()->index(row, col)).center();
    }
    void drag(const QPoint& from, const QPoint& to)
    {
        QWidget* grid = view()->viewport();
        QMouseEvent hover(QEvent::MouseMove, from, grid->mapToGlobal(from), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(grid, &hover);
        QTest::mousePress(grid, Qt::LeftButton, Qt::NoModifier, from);
        QMouseEvent move(QEvent::MouseMove, to, grid->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(grid, &move);
        QTest::mouseRelease(grid, Qt::LeftButton, Qt::NoModifier, to);
    }
    void click(int row, int col) { drag(middle(row, col), middle(row, col)); }
    QString text() { return pane()->toPlainText(); }
    QString hintLine() { return page().tab()->findChild<QLabel*>("lhintInfo")->text(); }
};

TEST_F(ScriptEditor, PicksReferencesInTheGrid)
{
    write("1+");
    EXPECT_TRUE(view()->isInReferenceMode());
    EXPECT_EQ(view()->focusPolicy(), Qt::NoFocus);
    click(1, 1);
    EXPECT_EQ(text(), "1+B2");
    QTest::keyClicks(pane(), "*sum(");
    drag(middle(0, 0), middle(1, 2));
    EXPECT_EQ(text(), "1+B2*sum(A1:C2");
    QTextCursor cursor = pane()->textCursor();
    cursor.setPosition(2);
    cursor.setPosition(4, QTextCursor::KeepAnchor);
    pane()->setTextCursor(cursor);
    click(2, 2); // in the place of the selected one
    EXPECT_EQ(text(), "1+C3*sum(A1:C2");
    ASSERT_EQ(view()->marks().size(), 2u);
    pane()->moveCursor(QTextCursor::End);
    QTest::keyClicks(pane(), ")");
    QTest::keyClick(pane(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(view()->isInReferenceMode());
    EXPECT_EQ(view()->focusPolicy(), Qt::ClickFocus);
    EXPECT_EQ(shown(9, 9), "1");
}

TEST_F(ScriptEditor, AClickThatCanBeNoReferenceEndsTheEdit)
{
    write("12");
    EXPECT_FALSE(page().editor().canTakeReference());
    click(1, 1);
    EXPECT_FALSE(view()->isInReferenceMode());
    EXPECT_EQ(shown(9, 9), "12");
    EXPECT_EQ(view()->currentIndex().row(), 1);
}

TEST_F(ScriptEditor, AMarkIsDraggedBehindTextOfAnyScript)
{
    write("\"中文\"+A1:B2+C5");
    ASSERT_EQ(view()->marks().size(), 2u);
    const QRect cell = view()->visualRect(page().model()->index(1, 1));
    drag(cell.bottomRight(), cell.bottomRight() + QPoint(cell.width(), 2 * cell.height()));
    EXPECT_EQ(text(), "\"中文\"+B3:C4+C5"); // its corner moves the mark
    const QRect edge = view()->visualRect(page().model()->index(3, 2));
    drag(QPoint(edge.center().x(), edge.bottom()),
         QPoint(edge.center().x(), edge.bottom() + 2 * edge.height()));
    EXPECT_EQ(text(), "\"中文\"+B3:C6+C5"); // its edge changes the size
    QTest::keyClick(pane(), Qt::Key_Escape);
    EXPECT_EQ(text(), "");
    EXPECT_FALSE(view()->isInReferenceMode());
}

TEST_F(ScriptEditor, TellsWhereAReferenceMayStand)
{
    const std::pair<const char*, bool> rows[] = {
        {"", true},     {"1+|", true},     {"f(|", true},      {"f(|)", true}, {"A1|", false},
        {"x |", false}, {"1 + |2", false}, {"return |", true}, {"a, |", true}, {") |", false},
    };
    for (const auto& [row, expected] : rows) {
        const QString source = row;
        write(QString(source).remove('|'));
        QTextCursor cursor = pane()->textCursor();
        cursor.setPosition(qMax(0, source.indexOf('|')));
        pane()->setTextCursor(cursor);
        EXPECT_EQ(pane()->canTakeReference(), expected) << row;
    }
}

TEST_F(ScriptEditor, ShowsTheInnermostBracketsAndTheHintOfTheCall)
{
    window->keyWordHint().add({"sum", "sum(a, ...)", "sum(@)", "the total"});
    window->keyWordHint().add({"max", "max(a, ...)", "max(@)", ""});
    write("sum(max(1,2),3)");
    const auto at = [this](int place) {
        QTextCursor cursor = pane()->textCursor();
        cursor.setPosition(place);
        pane()->setTextCursor(cursor);
    };
    at(9);
    EXPECT_EQ(pane()->activeBracket().left, 7);
    EXPECT_EQ(hintLine(), "max(a, ...)"); // there is no hint: what the list shows
    at(13);
    EXPECT_EQ(pane()->activeBracket().left, 3);
    EXPECT_EQ(hintLine(), "the total");
    at(0);
    EXPECT_EQ(pane()->activeBracket().kind, 0);
    EXPECT_EQ(hintLine(), "");
}

TEST_F(ScriptEditor, ForgetsBracketsThatAreGone)
{
    write("(1)");
    pane()->moveCursor(QTextCursor::Left);
    EXPECT_EQ(pane()->extraSelections().size(), 2);
    write("12");
    EXPECT_EQ(pane()->extraSelections().size(), 0);
}

TEST_F(ScriptEditor, OffersKeywordsWhileAWordIsWritten)
{
    KeyWordHint& popup = window->keyWordHint();
    popup.add({"sum", "sum(a, ...)", "sum(@)", ""});
    popup.add({"sumx", "sumx", "sumx", ""});
    write("");
    QTest::keyClicks(pane(), "s");
    EXPECT_TRUE(popup.isVisible());
    QTest::keyClick(pane(), Qt::Key_Escape);
    EXPECT_FALSE(popup.isVisible());
    EXPECT_TRUE(view()->isInReferenceMode()); // only the popup has gone
    QTest::keyClicks(pane(), "u");
    QTest::keyClick(pane(), Qt::Key_Return);
    EXPECT_EQ(text(), "sum()");
    EXPECT_EQ(pane()->textCursor().position(), 4);
    EXPECT_FALSE(popup.isVisible());
    QTest::keyClicks(pane(), "1+su");
    QTest::keyClick(pane(), Qt::Key_Down);
    QTest::keyClick(pane(), Qt::Key_Return);
    EXPECT_EQ(text(), "sum(1+sumx)");
    QTest::keyClicks(pane(), "A1");
    QTest::keyClick(pane(), Qt::Key_Backspace);
    QTest::keyClicks(pane(), " ");
    EXPECT_FALSE(popup.isVisible());
}

TEST_F(ScriptEditor, KeepsTheIndentAndListsTheScript)
{
    write("    1");
    QTest::keyClick(pane(), Qt::Key_Return);
    EXPECT_EQ(text(), "    1\n    ");
    write("A1+1");
    QTest::keyClick(pane(), Qt::Key_F4, Qt::ControlModifier);
    EXPECT_TRUE(window->messages()->toPlainText().contains("ADD"));
}

TEST_F(ScriptEditor, TheEditorInTheCellPicksReferencesToo)
{
    goTo(9, 9);
    QTest::keyClick(view(), Qt::Key_F2);
    auto* inCell = view()->viewport()->findChild<XCellScriptEditor*>();
    ASSERT_NE(inCell, nullptr);
    QTest::keyClicks(inCell, "2*");
    click(1, 1);
    EXPECT_EQ(inCell->toPlainText(), "2*B2");
    QTest::keyClick(inCell, Qt::Key_Return);
    EXPECT_EQ(shown(9, 9), "0");
    EXPECT_FALSE(view()->isInReferenceMode());
}

} // namespace
