#include "WindowFixture.h"

#include <QLabel>

namespace {

class Editing : public WindowFixture {};

// python3: 2**1000
const char* const twoTo1000 =
    "107150860718626732094842504906000181056140481170553360744375038837035105112493612249319837881"
    "569585812759467291755314682518714528569231404359845775746985748039345677748242309854210746050"
    "623711418779541821530464749835819412673987675591655439460770629145711964776865421676604298316"
    "52624386837205668069376";

TEST_F(Editing, TypedScriptsAreCalculatedAndReadEachOther)
{
    enter(0, 0, "2**1000");
    enter(0, 1, "=A1+1");
    EXPECT_EQ(shown(0, 0), twoTo1000);
    EXPECT_EQ(shown(0, 1), QString(twoTo1000).chopped(1) + "7");
    enter(0, 0, "41");
    EXPECT_EQ(shown(0, 1), "42");
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(Editing, ALetterOrDigitInTheGridBeginsAtTheEndOfThePanesText)
{
    enter(2, 1, "1");
    goTo(2, 1);
    QTest::keyClick(view(), Qt::Key_Z, Qt::NoModifier);
    EXPECT_TRUE(pane()->hasFocus());
    EXPECT_EQ(pane()->toPlainText(), "1Z");
    QTest::keyClick(pane(), Qt::Key_Backspace);
    QTest::keyClick(pane(), Qt::Key_2);
    QTest::keyClick(pane(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(view()->hasFocus());
    EXPECT_EQ(shown(2, 1), "12");
}

TEST_F(Editing, TheEditorInTheCellCommitsWithReturnAndGivesUpWithEscape)
{
    goTo(1, 1);
    QTest::keyClick(view(), Qt::Key_F2);
    auto* inCell = view()->viewport()->findChild<XCellScriptEditor*>();
    ASSERT_NE(inCell, nullptr);
    QTest::keyClicks(inCell, "6*7");
    QTest::keyClick(inCell, Qt::Key_Return);
    EXPECT_EQ(shown(1, 1), "42");

    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTest::keyClick(view(), Qt::Key_F2);
    inCell = view()->viewport()->findChild<XCellScriptEditor*>();
    ASSERT_NE(inCell, nullptr);
    EXPECT_EQ(inCell->toPlainText(), "6*7");
    QTest::keyClicks(inCell, "1");
    QTest::keyClick(inCell, Qt::Key_Escape);
    EXPECT_EQ(shown(1, 1), "42");
    EXPECT_EQ(page().undo().undoCount(), 2u); // the save marker of the new page and one text
}

TEST_F(Editing, AFailureOfTheEditorInTheCellShowsOneBox)
{
    goTo(0, 0);
    QTest::keyClick(view(), Qt::Key_F2);
    auto* inCell = view()->viewport()->findChild<XCellScriptEditor*>();
    ASSERT_NE(inCell, nullptr);
    QTest::keyClicks(inCell, "1+(");
    QTest::keyClick(inCell, Qt::Key_Return);
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].contains("XCell::setText Error"));
    EXPECT_FALSE(testApplication().hasEscaped());
}

TEST_F(Editing, AnUnchangedTextMakesNoAction)
{
    enter(0, 0, "=1+2");
    const uint32_t steps = page().undo().undoCount();
    enter(0, 0, "1+2"); // the leading "=" was dropped, so this is the text that stands there
    goTo(3, 3);
    pane()->setFocus();
    view()->setFocus();
    QTest::keyClick(pane(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(page().undo().undoCount(), steps);
}

TEST_F(Editing, TheFocusGoingToTheGridConfirms)
{
    goTo(0, 0);
    pane()->setFocus();
    QTest::keyClicks(pane(), "5");
    view()->setFocus();
    EXPECT_EQ(shown(0, 0), "5");
}

TEST_F(Editing, EscapeInThePaneBringsTheTextBack)
{
    enter(0, 0, "5");
    pane()->setFocus();
    QTest::keyClicks(pane(), "678");
    QTest::keyClick(pane(), Qt::Key_Escape);
    EXPECT_EQ(pane()->toPlainText(), "5");
    EXPECT_TRUE(view()->hasFocus());
    EXPECT_EQ(shown(0, 0), "5");
}

TEST_F(Editing, UndoAndRedoGoBackAndForthAndFollowTheirCell)
{
    enter(0, 0, "1");
    enter(1, 0, "=A1*10");
    enter(0, 0, "2");
    goTo(5, 5);
    QTest::keyClick(view(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(0, 0), "1");
    EXPECT_EQ(shown(1, 0), "10");
    EXPECT_EQ(view()->currentIndex(), page().model()->index(0, 0));
    EXPECT_EQ(page().rangeText(false), "A1");
    EXPECT_EQ(pane()->toPlainText(), "1");
    QTest::keyClick(view(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(1, 0), "");
    QTest::keyClick(view(), Qt::Key_Y, Qt::ControlModifier);
    QTest::keyClick(view(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(shown(1, 0), "20");
    EXPECT_FALSE(page().undo().canRedo());
    QTest::keyClick(view(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(shown(1, 0), "20");
}

TEST_F(Editing, ARingIsRefusedWithItsPathAndUndoBringsTheOldTextBack)
{
    enter(0, 0, "7");
    enter(0, 1, "=A1+1");
    enter(0, 0, "=B1");
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].contains("There is a circular dependency: A1->B1->A1") ||
                errors[0].contains("There is a circular dependency: B1->A1->B1"))
        << errors[0].toStdString();
    EXPECT_TRUE(pane()->hasFocus()); // the text stays open for correction
    EXPECT_EQ(pane()->toPlainText(), "=B1");

    view()->setFocus(); // leaving it does not raise the same failure again
    EXPECT_FALSE(testApplication().hasEscaped());
    QTest::keyClick(view(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(0, 0), "7");
    EXPECT_EQ(shown(0, 1), "8");
    EXPECT_EQ(pane()->toPlainText(), "7");
}

TEST_F(Editing, AFailingCellShowsItsErrorAndAllOthersAreCalculated)
{
    enter(0, 0, "1");
    enter(0, 1, "1/A1");
    enter(0, 2, "=A1+100");
    enter(0, 3, "=B1+1");
    EXPECT_EQ(shown(0, 1), "1");
    enter(0, 0, "0");
    EXPECT_TRUE(shown(0, 1).contains("Error")) << shown(0, 1).toStdString();
    EXPECT_EQ(shown(0, 2), "100");
    EXPECT_TRUE(shown(0, 3).contains("Error")) << shown(0, 3).toStdString();
    enter(0, 0, "5");
    EXPECT_EQ(shown(0, 1), "0");
    EXPECT_EQ(shown(0, 3), "1");
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(Editing, AScriptThatThrowsLeavesTheWindowUsable)
{
    enter(0, 0, "1/0");
    ASSERT_EQ(errors.size(), 1);
    enter(0, 1, "1+1");
    EXPECT_EQ(shown(0, 1), "2");
    EXPECT_EQ(errors.size(), 1);
}

TEST_F(Editing, TextsAreShownAsTheyAre)
{
    enter(0, 0, "\"<b>bold</b>\"");
    goTo(1, 0);
    goTo(0, 0);
    EXPECT_EQ(page().valueView()->toPlainText(), "<b>bold</b>");
    enter(0, 0, "\"<i>\"; 1/0");
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].contains("<i>")); // markup would have vanished
}

TEST_F(Editing, PrintWritesToTheMessagePane)
{
    const QString before = window->messages()->toPlainText();
    enter(0, 0, "print(1, \"a\", true)");
    enter(0, 1, "printLine(2, 3)");
    enter(0, 2, "printLine()");
    enter(0, 3, "print()");
    EXPECT_EQ(window->messages()->toPlainText(), before + "1 a true\n2 3\n");
    EXPECT_EQ(shown(0, 0), "");
}

TEST_F(Editing, TheSelectionIsNamed)
{
    auto* label = window->findChild<QLabel*>("lrangeName");
    goTo(1, 27);
    EXPECT_EQ(label->text(), "AB2");
    xstd::XMergedRects rects;
    rects.add_(xstd::XRect(0, 0, 0, 0), false);
    rects.add_(xstd::XRect(1, 1, 2, 3), false);
    view()->select(rects, false);
    EXPECT_EQ(page().rangeText(false), "A1,B2:D3");
    EXPECT_EQ(page().rangeText(true), "B2:D3");
    EXPECT_EQ(label->text(), "B2:D3");
    view()->clearSelection();
    EXPECT_EQ(page().rangeText(false), "");
}

} // namespace
