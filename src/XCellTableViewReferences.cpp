#include "XCellTableView.h"

#include "XCellEditor.h"
#include "XCellTableModel.h"
#include "cell/XCellTable.h"

#include <algorithm>
#include <utility>

using xstd::XPoint;
using xstd::XRect;

namespace {

/// What a zone of a cell gives: the mark at the cell itself is dragged by `own`; a mark at the
/// neighbour by `other`.
struct ZoneRule {
    XCellZone zone;
    XCellRefOp own;
    int dRow;
    int dCol;
    XCellRefOp other;
};

const ZoneRule zoneRules[] = {
    {XCellZone::BottomRight, XCellRefOp::BottomRight, 1, 1, XCellRefOp::TopLeft},
    {XCellZone::TopRight, XCellRefOp::TopRight, -1, 1, XCellRefOp::BottomLeft},
    {XCellZone::BottomLeft, XCellRefOp::BottomLeft, 1, -1, XCellRefOp::TopRight},
    {XCellZone::TopLeft, XCellRefOp::TopLeft, -1, -1, XCellRefOp::BottomRight},
    {XCellZone::Bottom, XCellRefOp::Bottom, 1, 0, XCellRefOp::Top},
    {XCellZone::Right, XCellRefOp::Right, 0, 1, XCellRefOp::Left},
    {XCellZone::Left, XCellRefOp::Left, 0, -1, XCellRefOp::Right},
    {XCellZone::Top, XCellRefOp::Top, -1, 0, XCellRefOp::Bottom},
};

/// The neighbour on the other side of the zone lies outside of the mark: the zone is a part of the
/// mark's own border, not of a grid line inside.
bool isBorderZone(const ZoneRule& rule, const XRect& mark, const XPoint& cell)
{
    const bool rowLeaves = cell.row + rule.dRow < mark.top || cell.row + rule.dRow > mark.bottom;
    const bool colLeaves = cell.col + rule.dCol < mark.left || cell.col + rule.dCol > mark.right;
    return rowLeaves == (rule.dRow != 0) && colLeaves == (rule.dCol != 0);
}

/// The cell of a mark from which its drag counts.
XPoint grabbedCell(XCellRefOp op, const XRect& mark, const XPoint& otherwise)
{
    switch (op) {
    case XCellRefOp::TopLeft:
        return {mark.top, mark.left};
    case XCellRefOp::TopRight:
        return {mark.top, mark.right};
    case XCellRefOp::BottomLeft:
        return {mark.bottom, mark.left};
    case XCellRefOp::BottomRight:
        return {mark.bottom, mark.right};
    default:
        return otherwise;
    }
}

bool isSameMark(const huge::XCellRangeRef& a, const huge::XCellRangeRef& b)
{
    return a.textPos == b.textPos && a.textLen == b.textLen && a.start == b.start && a.end == b.end;
}

} // namespace

void XCellTableView::enterReferenceMode(int row, int col,
                                        const std::vector<huge::XCellRangeRef>& ranges)
{
    leaveReferenceMode(true);
    m_paintState.editRow = row;
    m_paintState.editCol = col;
    repaintCells(XRect(row, col, row, col));
    m_marks = ranges;
    m_pointer.mode = XCellPointer::Reference;
    showMarks();
}

void XCellTableView::leaveReferenceMode(bool clear)
{
    resetPointer();
    m_pointer.mode = XCellPointer::Normal;
    m_pointer.hoverOp = XCellRefOp::None;
    m_hoveredMark = -1;
    if (clear)
        m_marks.clear();
    const int row = std::exchange(m_paintState.editRow, -1);
    const int col = std::exchange(m_paintState.editCol, -1);
    repaintCells(XRect(row, col, row, col));
    showMarks();
}

void XCellTableView::updateMarks(const std::vector<huge::XCellRangeRef>& ranges)
{
    m_hoveredMark = -1;
    m_pointer.hoverOp = XCellRefOp::None;
    m_marks = ranges;
    showMarks();
}

void XCellTableView::hoverMark(const huge::XCellRangeRef& range, bool front)
{
    const auto found = std::find_if(m_marks.begin(), m_marks.end(),
                                    [&](const auto& mark) { return isSameMark(mark, range); });
    int index = found == m_marks.end() ? -1 : static_cast<int>(found - m_marks.begin());
    if (front && index > 0)
        std::swap(m_marks[0], m_marks[std::exchange(index, 0)]);
    setHovered(index);
}

void XCellTableView::clearHover()
{
    setHovered(-1);
}

bool XCellTableView::canTakeReference() const
{
    return m_editor && m_editor->canTakeReference();
}

const huge::XCellRangeRef* XCellTableView::hoveredMark() const
{
    return m_hoveredMark < 0 ? nullptr : &m_marks[m_hoveredMark];
}

void XCellTableView::highlightHovered()
{
    if (!m_editor)
        return;
    if (const huge::XCellRangeRef* mark = hoveredMark())
        m_editor->highlightMark(*mark);
    else
        m_editor->clearHighlight();
}

int XCellTableView::markAt(int row, int col) const
{
    int best = -1;
    for (size_t i = 0; i < m_marks.size(); ++i) {
        const XRect rect = m_marks[i].rect();
        if (m_marks[i].isDeleted || !rect.contains(row, col))
            continue;
        if (best < 0 || rect.area() < m_marks[best].rect().area())
            best = static_cast<int>(i);
    }
    return best;
}

void XCellTableView::setHovered(int mark)
{
    m_hoveredMark = mark;
    m_pointer.hoverOp = XCellRefOp::None;
    showMarks();
}

void XCellTableView::showMarks()
{
    repaintMarks();
    m_paintState.marks.clear();
    if (m_pointer.mode == XCellPointer::Reference || m_hoveredMark >= 0) {
        for (const huge::XCellRangeRef& mark : m_marks) {
            if (!mark.isDeleted && mark.isCell())
                m_paintState.marks.push_back(mark.rect());
        }
    }
    m_paintState.hoveredMark = m_hoveredMark < 0 ? XRect() : m_marks[m_hoveredMark].rect();
    repaintMarks();
}

void XCellTableView::repaintMarks()
{
    for (const XRect& rect : m_paintState.marks)
        repaintCells(rect);
}

QCursor XCellTableView::markCursor(const QPoint& pos)
{
    const XPoint cell = cellUnder(pos);
    const XCellZone zone = zoneAt(pixelsOf(XRect(cell.row, cell.col, cell.row, cell.col)), pos);
    int mark = markAt(cell.row, cell.col);
    XCellRefOp op = XCellRefOp::None;
    for (const ZoneRule& rule : zoneRules) {
        if (rule.zone != zone)
            continue;
        if (mark < 0) {
            mark = markAt(cell.row + rule.dRow, cell.col + rule.dCol);
            op = rule.other;
        } else if (isBorderZone(rule, m_marks[mark].rect(), cell)) {
            op = rule.own;
        }
    }
    if (mark != m_hoveredMark) {
        setHovered(mark);
        highlightHovered();
    }
    m_pointer.hoverOp = mark < 0 ? XCellRefOp::None : op;
    return m_cursors.of(m_pointer.hoverOp);
}

bool XCellTableView::startReference(const QPoint& pos)
{
    const XPoint cell = cellUnder(pos);
    if (m_hoveredMark >= 0 && m_pointer.hoverOp != XCellRefOp::None) {
        m_pointer.refOp = m_pointer.hoverOp;
        m_pointer.dragMark = m_marks[m_hoveredMark];
        m_pointer.dragFrom = m_pointer.dragMark.rect();
        m_pointer.pressCell = grabbedCell(m_pointer.refOp, m_pointer.dragFrom, cell);
        m_pointer.lastCell = m_pointer.pressCell;
        setDragTo(XRect());
        return true;
    }
    if (!canTakeReference())
        return false;
    m_pointer.refOp = XCellRefOp::Draw;
    m_pointer.dragFrom = XRect();
    m_pointer.pressCell = m_pointer.lastCell = cell;
    setDragTo(XRect(cell.row, cell.col, cell.row, cell.col));
    return true;
}

void XCellTableView::finishReference()
{
    const XRect target = m_paintState.dragTo;
    const XCellRefOp op = m_pointer.refOp;
    const huge::XCellRangeRef mark = m_pointer.dragMark;
    const bool isChange =
        op != XCellRefOp::None && !target.isNull() && target != m_pointer.dragFrom;
    clearDragState();
    if (!isChange || !m_editor)
        return;
    const huge::XCellRangeRef ref = draggedRef(op, mark, target);
    if (op == XCellRefOp::Draw)
        m_editor->insertRange(ref);
    else
        m_editor->replaceRange(mark, ref);
}

void XCellTableView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    updateRefMarks(current);
}

void XCellTableView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                 const QVector<int>& roles)
{
    QTableView::dataChanged(topLeft, bottomRight, roles);
    // The current cell may read other cells from now on.
    if (QItemSelectionRange(topLeft, bottomRight).contains(currentIndex()))
        updateRefMarks(currentIndex());
}

void XCellTableView::updateRefMarks(const QModelIndex& index)
{
    const huge::XCell* cell =
        index.isValid() ? m_model->table()->cellAt(index.row(), index.column()) : nullptr;
    // Each reference has its own frame, also where two of them touch or overlap.
    std::vector<XRect> rects;
    if (cell && cell->ranges()) {
        for (const huge::XCellRange& range : *cell->ranges()) {
            if (range.ref.isCell() && !range.ref.isDeleted)
                rects.push_back(range.rect());
        }
    }
    m_paintState.refMarks.setRects(std::move(rects));
    if (m_paintState.showRefs)
        viewport()->update();
}
