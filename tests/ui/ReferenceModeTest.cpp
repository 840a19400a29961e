#include "WindowFixture.h"
#include "XCellPointer.h"

namespace {

using huge::XCellRangeRef;
using xstd::XRect;

XCellRangeRef refOf(const char* text, int textPos = 0)
{
    XCellRangeRef ref;
    EXPECT_TRUE(XCellRangeRef::parse(text, ref));
    ref.textPos = textPos;
    ref.textLen = static_cast<uint16_t>(qstrlen(text));
    return ref;
}

struct DragCase {
    const char* mark;
    XCellRefOp op;
    XRect dragTo;
    const char* result;
};

TEST(MarkDrag, MovesByACornerAndResizesByAnEdge)
{
    const DragCase rows[] = {
        {"B2:C4", XCellRefOp::TopLeft, {4, 3, 6, 4}, "D5:E7"},
        {"$B$2:C4", XCellRefOp::BottomRight, {0, 0, 2, 1}, "$A$1:B3"},
        {"B2:C4", XCellRefOp::Bottom, {1, 1, 8, 2}, "B2:C9"},
        {"B2:C4", XCellRefOp::Top, {0, 1, 3, 2}, "B1:C4"},
        {"B2:$C$4", XCellRefOp::Right, {1, 1, 3, 5}, "B2:$F$4"},
        {"B2:C4", XCellRefOp::Left, {1, 0, 3, 2}, "A2:C4"},
        {"B2", XCellRefOp::Bottom, {1, 1, 2, 1}, "B2:B3"},
        {"B2:B3", XCellRefOp::Bottom, {1, 1, 1, 1}, "B2"},
        {"B2", XCellRefOp::Draw, {0, 0, 3, 2}, "A1:C4"},
    };
    for (const DragCase& row : rows)
        EXPECT_EQ(draggedRef(row.op, refOf(row.mark), row.dragTo).toText(true), row.result);
}

TEST(MarkDrag, AnEdgeStopsAtTheOtherAndACornerAtTheGrid)
{
    const XRect mark(1, 1, 3, 2);
    const XRect last(1, 1, 2, 2);
    EXPECT_EQ(markTarget(XCellRefOp::Bottom, mark, {3, 1}, {0, 1}, last), last);
    EXPECT_EQ(markTarget(XCellRefOp::Bottom, mark, {3, 1}, {1, 7}, last), XRect(1, 1, 1, 2));
    EXPECT_EQ(markTarget(XCellRefOp::BottomRight, mark, {3, 2}, {1, 2}, last), last);
    EXPECT_EQ(markTarget(XCellRefOp::Draw, XRect(), {3, 2}, {1, 4}, last), XRect(1, 2, 3, 4));
}

class ReferenceMode : public WindowFixture {
protected:
    QRect cell(int row, int col) { return view()->visualRect(page().model()->index(row, col)); }
    void moveTo(const QPoint& pos, Qt::MouseButtons buttons = Qt::NoButton)
    {
        QMouseEvent event(QEvent::MouseMove, pos, view()->viewport()->mapToGlobal(pos),
                          Qt::NoButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(view()->viewport(), &event);
    }
    /// The text of the mark that the pointer has at `pos`, and the shape there.
    std::pair<xstd::XString, Qt::CursorShape> at(const QPoint& pos)
    {
        moveTo(pos);
        const XCellRangeRef* mark = view()->hoveredMark();
        return {mark ? mark->toText(true) : xstd::XString(), view()->viewport()->cursor().shape()};
    }
    using Seen = std::pair<xstd::XString, Qt::CursorShape>;
};

TEST_F(ReferenceMode, ThePointerFindsTheSmallestMarkAndItsBorder)
{
    view()->enterReferenceMode(9, 9, {refOf("B2:D6", 0), refOf("C3", 6), refOf("n:5", 9)});
    const QRect c3 = cell(2, 2);
    EXPECT_EQ(at(c3.center()), Seen("C3", Qt::ArrowCursor));
    EXPECT_EQ(at(c3.bottomRight()), Seen("C3", Qt::SizeAllCursor));
    EXPECT_EQ(at({c3.center().x(), c3.bottom()}), Seen("C3", Qt::SizeVerCursor));
    const QRect b4 = cell(3, 1);
    EXPECT_EQ(at({b4.left(), b4.center().y()}), Seen("B2:D6", Qt::SizeHorCursor));
    EXPECT_EQ(at({b4.left() - 1, b4.center().y()}), Seen("B2:D6", Qt::SizeHorCursor)); // over A4
    EXPECT_EQ(at({b4.center().x(), b4.bottom()}), Seen("B2:D6", Qt::ArrowCursor));     // inside
    EXPECT_EQ(at(cell(1, 1).topLeft() - QPoint(1, 1)), Seen("B2:D6", Qt::SizeAllCursor));
    EXPECT_EQ(at(cell(8, 5).center()), Seen("", Qt::ArrowCursor));
}

TEST_F(ReferenceMode, ShowsTheMarksAndTheEditedCellUntilItEnds)
{
    view()->enterReferenceMode(2, 3, {refOf("B2:C4"), refOf("A1", 8), refOf("n:3", 12)});
    EXPECT_TRUE(view()->isInReferenceMode());
    EXPECT_EQ(view()->paintState().marks,
              (std::vector<XRect>{XRect(1, 1, 3, 2), XRect(0, 0, 0, 0)}));
    EXPECT_EQ(view()->paintState().editRow, 2);
    EXPECT_EQ(view()->paintState().editCol, 3);
    view()->updateMarks({refOf("B9")});
    EXPECT_EQ(view()->paintState().marks, (std::vector<XRect>{XRect(8, 1, 8, 1)}));
    view()->leaveReferenceMode(false);
    EXPECT_TRUE(view()->paintState().marks.empty());
    EXPECT_EQ(view()->paintState().editRow, -1);
    view()->hoverMark(refOf("B9"), false); // known still
    EXPECT_EQ(view()->paintState().hoveredMark, XRect(8, 1, 8, 1));
    view()->leaveReferenceMode(true);
    EXPECT_TRUE(view()->marks().empty());
    EXPECT_EQ(view()->hoveredMark(), nullptr);
}

TEST_F(ReferenceMode, TheCurrentCellsReferencesAreFramedOneByOne)
{
    XCellPaintState state;
    state.showRefs = true;
    view()->setPaintState(state);
    enter(5, 5, "=A1+B1+n:7");
    goTo(0, 0);
    EXPECT_TRUE(view()->paintState().refMarks.isEmpty());
    goTo(5, 5);
    const XCellRefMarks::Sides a1 = view()->paintState().refMarks.sidesAt(0, 0);
    EXPECT_TRUE(a1.left && a1.right && a1.top && a1.bottom);
    EXPECT_EQ(view()->paintState().refMarks.sidesAt(0, 1).count, 1);
    enter(5, 5, "=C3"); // stays current, and reads another cell
    EXPECT_EQ(view()->paintState().refMarks.sidesAt(0, 1).count, 0);
    EXPECT_EQ(view()->paintState().refMarks.sidesAt(2, 2).count, 1);
}

TEST_F(ReferenceMode, AMarkIsKnownByItsPlaceInTheScript)
{
    view()->enterReferenceMode(2, 3, {refOf("A1", 0), refOf("A1", 5), refOf("B1", 9)});
    view()->hoverMark(refOf("A1", 5), false);
    ASSERT_NE(view()->hoveredMark(), nullptr);
    EXPECT_EQ(view()->hoveredMark(), &view()->marks()[1]);
    view()->hoverMark(refOf("A1", 5), true);
    EXPECT_EQ(view()->hoveredMark(), &view()->marks()[0]);
    EXPECT_EQ(view()->marks()[0].textPos, 5);
    view()->hoverMark(refOf("B1", 8), true); // no mark stands there
    EXPECT_EQ(view()->hoveredMark(), nullptr);
}

class ReferenceClicks : public ReferenceMode {
protected:
    /// B10 under edit, with the cursor behind `text`.
    void edit(const QString& text)
    {
        goTo(9, 1);
        pane()->setFocus();
        pane()->selectAll();
        QTest::keyClicks(pane(), text);
        ASSERT_TRUE(view()->isInReferenceMode());
    }
    void drag(const QPoint& from, const QPoint& to)
    {
        moveTo(from);
        QTest::mousePress(view()->viewport(), Qt::LeftButton, Qt::NoModifier, from);
        moveTo(to, Qt::LeftButton);
        QTest::mouseRelease(view()->viewport(), Qt::LeftButton, Qt::NoModifier, to);
    }
    QString text() { return pane()->toPlainText(); }
};

TEST_F(ReferenceClicks, BehindAnOperatorACellOrADragIsInserted)
{
    edit("=1+");
    drag(cell(2, 2).center(), cell(2, 2).center());
    EXPECT_EQ(text(), "=1+C3");
    EXPECT_TRUE(pane()->hasFocus());
    QTest::keyClick(pane(), Qt::Key_End);
    QTest::keyClicks(pane(), "+");
    drag(cell(5, 4).center(), cell(3, 3).center());
    EXPECT_EQ(text(), "=1+C3+D4:E6");
    EXPECT_EQ(view()->marks().size(), 2u);
    EXPECT_TRUE(view()->isInReferenceMode());
}

TEST_F(ReferenceClicks, AMarkIsMovedByItsCornerAndResizedByItsEdge)
{
    edit("=$C$3:D4*2");
    const QRect d4 = cell(3, 3);
    drag(d4.bottomRight(), cell(4, 3).center());
    EXPECT_EQ(text(), "=$C$4:D5*2");
    drag({cell(4, 3).right(), cell(4, 3).center().y()}, cell(4, 5).center());
    EXPECT_EQ(text(), "=$C$4:F5*2");
    drag({cell(3, 2).center().x(), cell(3, 2).top()}, cell(0, 2).center());
    EXPECT_EQ(text(), "=$C$1:F5*2");
}

TEST_F(ReferenceClicks, BehindAValueAClickConfirmsAndSelects)
{
    edit("=total");
    drag(cell(2, 2).center(), cell(2, 2).center());
    EXPECT_FALSE(view()->isInReferenceMode());
    EXPECT_TRUE(view()->hasFocus());
    EXPECT_EQ(view()->currentIndex(), page().model()->index(2, 2));
}

} // namespace
