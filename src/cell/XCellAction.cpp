#include "cell/XCellAction.h"

#include <algorithm>

namespace huge {

namespace {

/// A working area grows to the next such row or column, so that it does not grow at every step.
constexpr int32_t growthStep = 16;

int32_t grownEdge(int32_t edge, int32_t needed, int32_t limit)
{
    if (needed <= edge)
        return edge;
    const int32_t rounded = (needed + growthStep - 1) / growthStep * growthStep;
    return std::min(rounded, limit);
}

} // namespace

void XCellAction::recalcFor(xstd::XUndoableActionType type, xstd::XMergedRects& changed)
{
    changed = xstd::XMergedRects();
    m_table->recalc(changed, calcRects(type));
}

void XCellAction::finish(xstd::XMergedRects& changed, xstd::XExceptionItems failure)
{
    m_heldOut.clear();
    changed = xstd::XMergedRects();
    const xstd::XMergedRects rects = calcRects(xstd::XUndoableActionType::Do);
    XCellLevels levels = m_table->levelsFromRects(rects, true);
    if (levels.hasRing) {
        for (const std::vector<XCell*>& path : m_table->breakRings(levels, rects)) {
            XCell* cell = path.front();
            xstd::XExceptionItems ring;
            ring.add(ringItem(XCellTable::cyclicPathText(path)));
            cell->setFailure(ring);
            m_heldOut.push_back({cell->row(), cell->col()});
            if (failure.items().empty())
                failure = ring;
        }
        levels = m_table->levelsFromRects(rects, true);
    }
    m_table->calcLevels(changed, levels);
    if (!failure.items().empty())
        throw failure;
}

void XCellAction::releaseHeldOut()
{
    for (const xstd::XPoint& point : m_heldOut) {
        if (XCell* cell = m_table->cellAt(point.row, point.col))
            m_table->release(cell);
    }
    m_heldOut.clear();
}

xstd::XExceptionItem XCellAction::ringItem(const xstd::XString& path) const
{
    return xstd::XExceptionItem(X_HERE, "action")
        .setMess("There is cyclic dependence: " + path)
        .setExtend("cyclicPath", path);
}

void XCellAction::growTo(const xstd::XRect& rect, const char* action)
{
    if (rect.isNull())
        return;
    const bool isBefore = rect.top < 0 || rect.left < 0;
    if (isBefore || rect.bottom > XCellPos::maxRow || rect.right > XCellPos::maxCol)
        throw xstd::XExceptionItems().add(
            xstd::XExceptionItem(X_HERE, "action")
                .setMess(isBefore ? "A cell lies above row 1 or left of column A"
                                  : "The table ends at row 1048576 and column AVLG")
                .setExtend("action", action)
                .setExtend("rect", rect.toString()));
    xstd::XRect main = m_table->mainRect();
    main.bottom = grownEdge(main.bottom, rect.bottom, XCellPos::maxRow);
    main.right = grownEdge(main.right, rect.right, XCellPos::maxCol);
    m_table->resizeMainRect(main);
}

int32_t XCellAction::lastUsedColWithRefs(const xstd::XRect& rect) const
{
    int32_t last = m_table->lastUsedCol(rect);
    for (const XCellRange* range : m_table->rangesInto(rect))
        last = std::max(last, std::min(range->rect().right, m_table->mainRect().right));
    return last;
}

int32_t XCellAction::lastUsedRowWithRefs(const xstd::XRect& rect) const
{
    int32_t last = m_table->lastUsedRow(rect);
    for (const XCellRange* range : m_table->rangesInto(rect))
        last = std::max(last, std::min(range->rect().bottom, m_table->mainRect().bottom));
    return last;
}

} // namespace huge
