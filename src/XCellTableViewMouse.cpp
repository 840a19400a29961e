#include "XCellTableView.h"

#include "XCellEditor.h"
#include "XCellTableModel.h"
#include "XTracingAction.h"
#include "cell/XCellActionCopyRect.h"
#include "cell/XCellActionMoveRect.h"
#include "errorHtml.h"
#include "tavix.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTimerEvent>

#include <algorithm>
#include <utility>
#include <vector>

using xstd::XPoint;
using xstd::XRect;

namespace {

constexpr int scrollInterval = 40; // ms between the steps of a drag outside of the viewport

bool isEdge(XCellZone zone)
{
    return zone >= XCellZone::Bottom;
}

} // namespace

void XCellTableView::initHeaders()
{
    connect(horizontalHeader(), &QHeaderView::sectionResized, this,
            &XCellTableView::hsectionResized);
    connect(verticalHeader(), &QHeaderView::sectionResized, this, &XCellTableView::vsectionResized);
}

void XCellTableView::hsectionResized(int logicalIndex, int, int newSize)
{
    copySectionSize(Qt::Horizontal, logicalIndex, newSize);
}

void XCellTableView::vsectionResized(int logicalIndex, int, int newSize)
{
    copySectionSize(Qt::Vertical, logicalIndex, newSize);
}

/// Where a wholly selected section gets a size, all wholly selected ones get it.
void XCellTableView::copySectionSize(Qt::Orientation orientation, int section, int size)
{
    if (!m_syncResize || !selectionModel())
        return;
    const QScopedValueRollback<bool> guard(m_syncResize, false);
    const bool isColumn = orientation == Qt::Horizontal;
    const int last = (isColumn ? m_model->rowCount() : m_model->columnCount()) - 1;
    std::vector<std::pair<int, int>> sections; // first and last of each range
    bool isSelected = false;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        const bool isWhole = isColumn ? range.top() == 0 && range.bottom() == last
                                      : range.left() == 0 && range.right() == last;
        if (!isWhole)
            continue;
        const auto [from, to] = isColumn ? std::pair(range.left(), range.right())
                                         : std::pair(range.top(), range.bottom());
        sections.emplace_back(from, to);
        isSelected = isSelected || (section >= from && section <= to);
    }
    if (!isSelected)
        return;
    QHeaderView* header = isColumn ? horizontalHeader() : verticalHeader();
    for (const auto& [from, to] : sections) {
        for (int i = from; i <= to; ++i)
            header->resizeSection(i, size);
    }
}

XPoint XCellTableView::cellUnder(const QPoint& pos) const
{
    const QRect seen = viewport()->rect();
    const int row = rowAt(std::clamp(pos.y(), seen.top(), seen.bottom()));
    const int col = columnAt(std::clamp(pos.x(), seen.left(), seen.right()));
    return {row < 0 ? m_model->rowCount() - 1 : row, col < 0 ? m_model->columnCount() - 1 : col};
}

XRect XCellTableView::gridRect() const
{
    return XRect(0, 0, m_model->rowCount() - 1, m_model->columnCount() - 1);
}

QRect XCellTableView::pixelsOf(const XRect& rect) const
{
    const XRect cells = rect.intersect(gridRect());
    if (cells.isNull())
        return QRect();
    return visualRect(m_model->index(cells.top, cells.left)) |
           visualRect(m_model->index(cells.bottom, cells.right));
}

void XCellTableView::repaintCells(const XRect& rect)
{
    constexpr int frame = 3; // the next cells draw the shared edges, and dots are two pixels wide
    const QRect pixels = pixelsOf(rect);
    if (!pixels.isEmpty())
        viewport()->update(pixels.adjusted(-frame, -frame, frame, frame));
}

void XCellTableView::setDragTo(const XRect& rect)
{
    repaintCells(m_paintState.dragTo);
    m_paintState.dragTo = rect;
    repaintCells(rect);
}

void XCellTableView::resetPointer()
{
    if (m_pointer.mode != XCellPointer::Reference)
        m_pointer.mode = XCellPointer::Normal;
    repaintCells(m_pointer.dragFrom);
    setDragTo(XRect());
    m_pointer.refOp = XCellRefOp::None;
    m_pointer.dragFrom = XRect();
    m_pointer.pressCell = m_pointer.lastCell = XPoint{-1, -1};
    m_pointer.scrollTimer.stop();
}

void XCellTableView::mousePressEvent(QMouseEvent* event)
{
    if (m_editor)
        m_editor->hideHints();
    if (m_pointer.mode == XCellPointer::Reference) {
        // The other buttons have nothing to say to the script under edit, and a tool wants cells.
        if (event->button() != Qt::LeftButton || (!m_tool && startReference(event->pos())))
            return;
        setFocusPolicy(Qt::ClickFocus);
        setFocus();
        leaveReferenceMode(true);
    } else if (!m_tool && beginDrag(event->pos())) {
        return;
    }
    QTableView::mousePressEvent(event);
}

bool XCellTableView::beginDrag(const QPoint& pos)
{
    const xstd::XMergedRects selected = selectedRects();
    if (selected.size() != 1)
        return false;
    const XCellZone zone = zoneAt(pixelsOf(selected[0]), pos);
    if (zone != XCellZone::BottomRight && !isEdge(zone))
        return false;
    m_pointer.mode = isEdge(zone) ? XCellPointer::Move : XCellPointer::Fill;
    m_pointer.dragFrom = selected[0];
    if (isEdge(zone))
        m_pointer.pressCell = m_pointer.lastCell = cellUnder(pos);
    else
        m_pointer.lastCell = XPoint{-1, -1};
    return true;
}

void XCellTableView::mouseMoveEvent(QMouseEvent* event)
{
    if (!(event->buttons() & Qt::LeftButton)) {
        viewport()->setCursor(cursorFor(event->pos()));
        QTableView::mouseMoveEvent(event);
    } else if (m_pointer.mode != XCellPointer::Normal) {
        dragOver(event->pos());
        followEdge(event->pos());
    } else {
        QTableView::mouseMoveEvent(event);
        if (state() == DragSelectingState)
            followEdge(event->pos());
    }
}

void XCellTableView::dragOver(const QPoint& pos)
{
    const XPoint cell = cellUnder(pos);
    if (cell == m_pointer.lastCell)
        return;
    m_pointer.lastCell = cell;
    if (m_pointer.mode == XCellPointer::Fill)
        setDragTo(fillTarget(m_pointer.dragFrom, cell));
    else if (m_pointer.mode == XCellPointer::Move)
        dragMove(cell);
    else if (m_pointer.refOp != XCellRefOp::None)
        setDragTo(markTarget(m_pointer.refOp, m_pointer.dragFrom, m_pointer.pressCell, cell,
                             m_paintState.dragTo));
}

void XCellTableView::dragMove(const XPoint& cell)
{
    const XPoint& press = m_pointer.pressCell;
    if (cell == press) {
        setDragTo(XRect());
        return;
    }
    const XRect target = m_pointer.dragFrom.offset(cell.row - press.row, cell.col - press.col);
    if (target.top >= 0 && target.left >= 0)
        setDragTo(target);
}

void XCellTableView::followEdge(const QPoint& pos)
{
    m_pointer.scrollPos = pos;
    if (viewport()->rect().contains(pos))
        m_pointer.scrollTimer.stop();
    else if (!m_pointer.scrollTimer.isActive())
        m_pointer.scrollTimer.start(scrollInterval, this);
}

void XCellTableView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_pointer.scrollTimer.timerId()) {
        QTableView::timerEvent(event);
        return;
    }
    const QPoint pos = m_pointer.scrollPos;
    scrollTowards(pos);
    if (m_pointer.mode != XCellPointer::Normal) {
        dragOver(pos);
        return;
    }
    // The last cell that is seen: the cell under the pointer may lie far behind the edge.
    const QRect seen = viewport()->rect();
    const QPoint inside(std::clamp(pos.x(), seen.left(), seen.right()),
                        std::clamp(pos.y(), seen.top(), seen.bottom()));
    QMouseEvent move(QEvent::MouseMove, inside, viewport()->mapToGlobal(inside), Qt::NoButton,
                     Qt::LeftButton, QGuiApplication::keyboardModifiers());
    QTableView::mouseMoveEvent(&move);
}

void XCellTableView::scrollTowards(const QPoint& pos)
{
    const QRect seen = viewport()->rect();
    const auto step = [](QScrollBar* bar, int value, int first, int last) {
        if (value < first)
            bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
        else if (value > last)
            bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    };
    step(horizontalScrollBar(), pos.x(), seen.left(), seen.right());
    step(verticalScrollBar(), pos.y(), seen.top(), seen.bottom());
}

void XCellTableView::mouseReleaseEvent(QMouseEvent* event)
{
    m_pointer.scrollTimer.stop();
    const bool isDragging =
        m_pointer.mode == XCellPointer::Fill || m_pointer.mode == XCellPointer::Move;
    if (event->button() == Qt::RightButton) {
        if (isDragging)
            clearDragState();
        else
            m_tableMenu->popup(event->globalPos());
        return;
    }
    if (m_pointer.mode == XCellPointer::Reference) {
        finishReference();
        return;
    }
    if (isDragging) {
        const bool control = QGuiApplication::queryKeyboardModifiers() & Qt::ControlModifier;
        finishDrag(control);
    }
    QTableView::mouseReleaseEvent(event);
    if (m_tool) {
        m_tool->fire(); // a failure leaves the tool, so that other cells can be marked
        clearDragState();
    }
}

void XCellTableView::finishDrag(bool scriptOnly)
{
    const xstd::XOptions options{scriptOnly ? huge::optScriptOnly : huge::optPlain};
    if (m_pointer.mode == XCellPointer::Fill)
        copySelectData(options);
    else
        moveSelectData(options);
    clearDragState();
}

bool XCellTableView::hasDragTarget() const
{
    return !m_pointer.dragFrom.isNull() && !m_paintState.dragTo.isNull() &&
           m_pointer.dragFrom != m_paintState.dragTo;
}

void XCellTableView::copySelectData(xstd::XOptions options)
{
    if (!hasDragTarget())
        return;
    const XRect from = m_pointer.dragFrom;
    const XRect to = m_paintState.dragTo;
    runCommand([&] {
        return std::make_unique<huge::XCellActionCopyRect>(m_model->table(), from, to, options);
    });
    select(xstd::XMergedRects({from, to}).boundRect(), false);
}

void XCellTableView::moveSelectData(xstd::XOptions options)
{
    if (!hasDragTarget())
        return;
    const XRect from = m_pointer.dragFrom;
    const XRect to = m_paintState.dragTo;
    runCommand([&] {
        return std::make_unique<huge::XCellActionMoveRect>(
            m_model->table(), from, to.top - from.top, to.left - from.left, options);
    });
    // A move that was refused may have gone beyond the grid.
    select(to.intersect(gridRect()), false);
}

void XCellTableView::clearDragState()
{
    resetPointer();
    for (const XRect& rect : m_paintState.cutRects.rects())
        repaintCells(rect);
    m_paintState.cutRects.clear();
    setTool(nullptr);
}

void XCellTableView::setTool(std::unique_ptr<XTracingAction> tool)
{
    m_tool = std::move(tool);
    viewport()->setCursor(m_tool ? m_tool->cursor() : m_cursors.arrow);
}

QCursor XCellTableView::cursorFor(const QPoint& pos)
{
    if (m_tool)
        return m_tool->cursor();
    if (m_pointer.mode == XCellPointer::Reference)
        return markCursor(pos);
    const xstd::XMergedRects selected = selectedRects();
    if (selected.size() != 1 || pos.x() <= 0 || pos.y() <= 0)
        return m_cursors.arrow;
    return m_cursors.of(pixelsOf(selected[0]), pos);
}
