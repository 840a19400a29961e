#include "cell/XCellBandAction.h"

#include <algorithm>

namespace huge {

XCellBandAction::XCellBandAction(XCellTable* table, XCellAxis axis, const xstd::XRect& band,
                                 int64_t firstMoved, const char* name)
    : XCellAction(table), m_axis(axis), m_name(name), m_band(band), m_reach(table->mainRect())
{
    const int32_t first = static_cast<int32_t>(std::min<int64_t>(firstMoved, XCellPos::maxRow + 1));
    m_movedRect = isByRows() ? xstd::XRect(first, band.left, m_reach.bottom, band.right)
                             : xstd::XRect(band.top, first, band.bottom, m_reach.right);
}

xstd::XRect XCellBandAction::wholeBand(const XCellTable& table, XCellAxis axis, int32_t first,
                                       int32_t count)
{
    const xstd::XRect& main = table.mainRect();
    const int32_t limit = axis == XCellAxis::Rows ? XCellPos::maxRow : XCellPos::maxCol;
    const int32_t last = static_cast<int32_t>(std::min<int64_t>(int64_t(first) + count - 1, limit));
    return axis == XCellAxis::Rows ? xstd::XRect(first, 0, last, main.right)
                                   : xstd::XRect(0, first, main.bottom, last);
}

int32_t XCellBandAction::sizeOf(XCellAxis axis, const xstd::XRect& band)
{
    return static_cast<int32_t>(axis == XCellAxis::Rows ? band.height() : band.width());
}

int32_t XCellBandAction::lastMoved() const
{
    if (m_movedRect.isNull() || bandSize() == 0)
        return -1;
    return isByRows() ? lastUsedRowWithRefs(m_movedRect) : lastUsedColWithRefs(m_movedRect);
}

void XCellBandAction::setMoved(int32_t last, int32_t shift)
{
    (isByRows() ? m_movedRect.bottom : m_movedRect.right) = last;
    if (m_movedRect.isNull()) {
        m_movedRect = xstd::XRect();
        return;
    }
    (isByRows() ? m_dRow : m_dCol) = shift;
    m_movedAfter = m_movedRect.offset(m_dRow, m_dCol);
}

void XCellBandAction::shiftRanges()
{
    if (!m_movedRect.isNull())
        m_table->moveRanges(m_movedRect, m_dRow, m_dCol, m_reach, m_savedRanges);
}

void XCellBandAction::shiftCells()
{
    if (!m_movedRect.isNull())
        m_table->moveRects(m_movedRect, m_dRow, m_dCol, {optPlain});
}

void XCellBandAction::shiftCellsBack()
{
    if (!m_movedRect.isNull())
        m_table->moveRects(m_movedAfter, -m_dRow, -m_dCol, {optPlain});
}

xstd::XMergedRects XCellBandAction::movedRects() const
{
    if (m_movedRect.isNull())
        return {};
    return xstd::XMergedRects(m_movedRect).add_(m_movedAfter, true);
}

xstd::XMergedRects XCellBandAction::selectRects(xstd::XUndoableActionType) const
{
    return m_band;
}

xstd::XMergedRects XCellBandAction::paintRects(xstd::XUndoableActionType type) const
{
    return changedRects(type).add_(m_band).add_(movedRects(), true);
}

xstd::XMergedRects XCellBandAction::calcRects(xstd::XUndoableActionType) const
{
    return rectsOf(m_savedRanges).add_(m_band).add_(movedRects(), true);
}

xstd::XExceptionItem XCellBandAction::ringItem(const xstd::XString& path) const
{
    return XCellAction::ringItem(path)
        .setExtend("action", m_name)
        .setExtend("rect", m_band.toString());
}

} // namespace huge
