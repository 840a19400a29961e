#include "cell/XCellAction.h"

#include <algorithm>

namespace huge {

namespace {

std::vector<XCellRange*> rangesInto(const XCellTable& table, const xstd::XRect& rect)
{
    std::vector<XCellRange*> ranges;
    const xstd::XRect inside = table.mainRect().intersect(rect);
    if (!rect.isNull() && !inside.isNull())
        table.rangeTree().getRanges(inside, ranges);
    return ranges;
}

} // namespace

void XCellAction::recalcFor(xstd::XUndoableActionType type, xstd::XMergedRects& changed)
{
    changed = xstd::XMergedRects();
    m_table->recalc(changed, calcRects(type));
}

int32_t XCellAction::lastUsedColWithRefs(const xstd::XRect& rect) const
{
    int32_t last = m_table->lastUsedCol(rect);
    for (const XCellRange* range : rangesInto(*m_table, rect))
        last = std::max(last, range->rect().right);
    return last;
}

int32_t XCellAction::lastUsedRowWithRefs(const xstd::XRect& rect) const
{
    int32_t last = m_table->lastUsedRow(rect);
    for (const XCellRange* range : rangesInto(*m_table, rect))
        last = std::max(last, range->rect().bottom);
    return last;
}

} // namespace huge
