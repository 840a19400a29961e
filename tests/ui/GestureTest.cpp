#include "WindowFixture.h"
#include "XCellPointer.h"
#include "XTavixCellExtend.h"
#include "XTracingAction.h"

#include <QHeaderView>

namespace {

using xstd::XPoint;
using xstd::XRect;

struct FillCase {
    XRect source;
    XPoint cell;
    XRect target;
};

TEST(FillDrag, GoesTheFartherWayAndDownOnATie)
{
    const FillCase rows[] = {
        {{0, 0, 0, 0}, {0, 2}, {0, 1, 0, 2}},   // A1 to C1: B1:C1
        {{0, 0, 0, 0}, {2, 2}, {1, 0, 2, 0}},   // A1 to C3, as far down as across
        {{4, 4, 5, 6}, {1, 5}, {1, 4, 3, 6}},   // upward
        {{4, 4, 5, 6}, {5, 0}, {4, 0, 5, 3}},   // to the left
        {{4, 4, 5, 6}, {7, 9}, {4, 7, 5, 9}},   // two down, three across
        {{4, 4, 5, 6}, {4, 6}, {0, 0, -1, -1}}, // over the source
    };
    for (const FillCase& row : rows)
        EXPECT_EQ(fillTarget(row.source, row.cell), row.target) << row.target.toString();
}

TEST(Zones, LieTwoPixelsToEachSide)
{
    const QRect rect(QPoint(100, 50), QPoint(200, 90));
    const struct {
        QPoint pos;
        XCellZone zone;
    } rows[] = {
        {{202, 92}, XCellZone::BottomRight}, {{198, 88}, XCellZone::BottomRight},
        {{203, 90}, XCellZone::None},        {{98, 48}, XCellZone::TopLeft},
        {{200, 50}, XCellZone::TopRight},    {{100, 90}, XCellZone::BottomLeft},
        {{103, 92}, XCellZone::Bottom},      {{197, 48}, XCellZone::Top},
        {{98, 53}, XCellZone::Left},         {{202, 87}, XCellZone::Right},
        {{150, 70}, XCellZone::None},        {{150, 93}, XCellZone::None},
    };
    for (const auto& row : rows)
        EXPECT_EQ(zoneAt(rect, row.pos), row.zone) << row.pos.x() << ", " << row.pos.y();
}

class Gesture : public WindowFixture {
protected:
    QRect cell(int row, int col) { return view()->visualRect(page().model()->index(row, col)); }
    void press(const QPoint& pos, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(view()->viewport(), button, Qt::NoModifier, pos);
    }
    void moveTo(const QPoint& pos, Qt::MouseButtons buttons = Qt::LeftButton)
    {
        QMouseEvent event(QEvent::MouseMove, pos, view()->viewport()->mapToGlobal(pos),
                          Qt::NoButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(view()->viewport(), &event);
    }
    void release(const QPoint& pos, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                 Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseRelease(view()->viewport(), button, modifiers, pos);
    }
    void drag(const QPoint& from, const QPoint& to,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        press(from);
        moveTo(to);
        release(to, modifiers);
    }
    void selectRect(const XRect& rect) { view()->select(rect, false); }
    const XRect& target() { return view()->paintState().dragTo; }
    QPoint bottomEdge(int row, int col)
    {
        return {cell(row, col).center().x(), cell(row, col).bottom()};
    }
};

TEST_F(Gesture, TheCornerFillsAndTheEdgesMove)
{
    selectRect(XRect(2, 2, 2, 2));
    press(cell(2, 2).bottomRight());
    moveTo(cell(5, 3).center());
    EXPECT_EQ(target(), XRect(3, 2, 5, 2));
    moveTo(cell(2, 2).center());
    EXPECT_TRUE(target().isNull());
    release(cell(2, 2).center());
    press(bottomEdge(2, 2));
    moveTo(cell(4, 3).center());
    EXPECT_EQ(target(), XRect(4, 3, 4, 3));
    moveTo(cell(0, 0).center());
    EXPECT_EQ(target(), XRect(0, 0, 0, 0));
    moveTo(cell(2, 2).center());
    EXPECT_TRUE(target().isNull());
    release(cell(2, 2).center());
    EXPECT_EQ(view()->selectedRects(), xstd::XMergedRects(XRect(2, 2, 2, 2)));
}

TEST_F(Gesture, AMoveBeyondTheFirstRowKeepsTheLastTarget)
{
    selectRect(XRect(1, 1, 3, 1));
    press(bottomEdge(3, 1));
    moveTo(cell(2, 1).center());
    EXPECT_EQ(target(), XRect(0, 1, 2, 1));
    moveTo(cell(0, 1).center());
    EXPECT_EQ(target(), XRect(0, 1, 2, 1));
    release(cell(0, 1).center(), Qt::NoModifier, Qt::RightButton);
    EXPECT_TRUE(target().isNull());
}

TEST_F(Gesture, AFillRepeatsFormulasAndControlLeavesTheFormats)
{
    enter(0, 1, "=A1+1");
    page().model()->forceCellExtend(0, 1)->bold = true;
    selectRect(XRect(0, 1, 0, 1));
    drag(cell(0, 1).bottomRight(), cell(2, 1).center());
    EXPECT_EQ(page().table().cellAt(2, 1)->scriptText(true), "A3+1");
    EXPECT_TRUE(page().model()->cellExtend(2, 1)->bold);
    EXPECT_EQ(view()->selectedRects(), xstd::XMergedRects(XRect(0, 1, 2, 1)));
    selectRect(XRect(0, 1, 0, 1));
    drag(cell(0, 1).bottomRight(), cell(0, 2).center(), Qt::ControlModifier);
    EXPECT_EQ(page().table().cellAt(0, 2)->scriptText(true), "B1+1");
    EXPECT_EQ(page().model()->cellExtend(0, 2), nullptr);
    view()->undo();
    view()->undo();
    EXPECT_EQ(shown(2, 1), "");
}

TEST_F(Gesture, AMoveTakesTheCellsAlongAndControlLeavesTheFormats)
{
    enter(1, 1, "5");
    enter(0, 0, "=B2");
    page().model()->forceCellExtend(1, 1)->bold = true;
    selectRect(XRect(1, 1, 1, 1));
    drag(bottomEdge(1, 1), cell(4, 2).center());
    EXPECT_EQ(shown(4, 2), "5");
    EXPECT_TRUE(page().model()->cellExtend(4, 2)->bold);
    EXPECT_EQ(page().table().cellAt(0, 0)->scriptText(true), "C5");
    EXPECT_EQ(view()->selectedRects(), xstd::XMergedRects(XRect(4, 2, 4, 2)));
    drag(bottomEdge(4, 2), cell(1, 2).center(), Qt::ControlModifier);
    EXPECT_EQ(shown(1, 2), "5");
    EXPECT_EQ(page().model()->cellExtend(1, 2), nullptr);
    EXPECT_TRUE(page().model()->cellExtend(4, 2)->bold);
    drag(bottomEdge(1, 2), cell(1, 2).center()); // onto itself
    EXPECT_EQ(shown(1, 2), "5");
    view()->undo();
    view()->undo();
    EXPECT_EQ(shown(1, 1), "5");
}

TEST_F(Gesture, AnotherButtonsReleaseCancelsTheDrag)
{
    enter(1, 1, "5");
    selectRect(XRect(1, 1, 1, 1));
    press(cell(1, 1).bottomRight());
    moveTo(cell(3, 1).center());
    release(cell(3, 1).center(), Qt::NoModifier, Qt::RightButton);
    EXPECT_TRUE(target().isNull());
    release(cell(3, 1).center());
    EXPECT_EQ(shown(2, 1), "");
}

TEST_F(Gesture, ADragOutsideOfTheGridScrolls)
{
    selectRect(XRect(2, 2, 2, 2));
    press(cell(2, 2).bottomRight());
    const QPoint below(cell(2, 2).center().x(), view()->viewport()->height() + 30);
    moveTo(below);
    const int lastSeen = target().bottom;
    EXPECT_TRUE(QTest::qWaitFor([&] { return target().bottom > lastSeen + 2; }));
    release(below, Qt::NoModifier, Qt::RightButton);
    const int seen = view()->rowAt(view()->viewport()->height() - 1);
    press(cell(seen - 1, 1).center());
    moveTo(below); // selects, and goes on while the pointer rests
    EXPECT_TRUE(QTest::qWaitFor([&] { return view()->selectedRects()[0].bottom > seen + 8; }));
    release(below);
}

TEST_F(Gesture, TheShapeTellsWhatAPressWouldDo)
{
    selectRect(XRect(2, 2, 3, 4));
    const QRect corner = cell(3, 4);
    const auto shapeAt = [&](const QPoint& pos) {
        moveTo(pos, Qt::NoButton);
        return view()->viewport()->cursor().shape();
    };
    EXPECT_EQ(shapeAt(corner.bottomRight()), Qt::CrossCursor);
    EXPECT_EQ(shapeAt({corner.center().x(), corner.bottom()}), Qt::SizeAllCursor);
    EXPECT_EQ(shapeAt({cell(2, 2).left() - 1, corner.center().y()}), Qt::SizeAllCursor);
    EXPECT_EQ(shapeAt({corner.center().x(), cell(2, 2).top() - 2}), Qt::SizeAllCursor);
    EXPECT_EQ(shapeAt(corner.center()), Qt::ArrowCursor);
}

TEST_F(Gesture, TheShapesComeFromFiles)
{
    QDir().mkdir("icons");
    QImage picture(24, 24, QImage::Format_ARGB32);
    picture.fill(Qt::black);
    ASSERT_TRUE(picture.save("./icons/vresize.png"));
    const XCellCursors cursors;
    EXPECT_EQ(cursors.vResize.shape(), Qt::BitmapCursor);
    EXPECT_EQ(cursors.vResize.hotSpot(), QPoint(12, 12));
    EXPECT_EQ(cursors.hResize.shape(), Qt::SizeHorCursor);
}

class CountingTool : public XTracingAction {
public:
    explicit CountingTool(std::vector<XRect>* seen)
        : XTracingAction(theMainWindow, Qt::PointingHandCursor), m_seen(seen)
    {}
    void fire() override
    {
        m_seen->push_back(theMainWindow->currentView()->selectedRects()[0]);
        if (m_seen->size() == 1)
            throw std::runtime_error("other cells");
    }

private:
    std::vector<XRect>* m_seen;
};

TEST_F(Gesture, AToolActsAtTheReleaseAndStaysAfterAFailure)
{
    std::vector<XRect> seen;
    selectRect(XRect(1, 1, 1, 1));
    view()->setTool(std::make_unique<CountingTool>(&seen));
    EXPECT_EQ(view()->viewport()->cursor().shape(), Qt::PointingHandCursor);
    drag(cell(1, 1).bottomRight(), cell(2, 2).center()); // no fill
    showEscaped();
    EXPECT_TRUE(errors.join("").contains("other cells"));
    ASSERT_NE(view()->tool(), nullptr);
    drag(cell(3, 3).center(), cell(4, 4).center());
    EXPECT_EQ(view()->tool(), nullptr);
    EXPECT_EQ(seen, (std::vector<XRect>{XRect(1, 1, 2, 2), XRect(3, 3, 4, 4)}));
    EXPECT_EQ(view()->viewport()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(Gesture, SelectedColumnsGetOneWidthAndOthersKeepTheirs)
{
    QHeaderView* header = view()->horizontalHeader();
    view()->selectColumn(1);
    view()->select(XRect(0, 1, page().model()->rowCount() - 1, 3), false);
    const int before = header->sectionSize(5);
    header->resizeSection(2, 41);
    EXPECT_EQ(header->sectionSize(1), 41);
    EXPECT_EQ(header->sectionSize(3), 41);
    EXPECT_EQ(header->sectionSize(5), before);
    header->resizeSection(5, 77); // not selected: it alone
    EXPECT_EQ(header->sectionSize(1), 41);
    view()->select(XRect(4, 0, 5, page().model()->columnCount() - 1), false);
    view()->verticalHeader()->resizeSection(4, 55);
    EXPECT_EQ(view()->verticalHeader()->sectionSize(5), 55);
    header->resizeSection(1, 60);
    EXPECT_EQ(header->sectionSize(2), 41);
}

} // namespace
