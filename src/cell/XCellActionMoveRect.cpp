#include "cell/XCellActionMoveRect.h"

#include <utility>

namespace huge {

XCellActionMoveRect::XCellActionMoveRect(XCellTable* table, xstd::XMergedRects srcRects,
                                         int32_t dRow, int32_t dCol, xstd::XOptions options)
    : XCellAction(table), m_srcRects(std::move(srcRects)), m_dRow(dRow), m_dCol(dCol),
      m_options(options), m_reach(table->mainRect())
{
    m_srcRects.normalize_();
    m_destRects = m_srcRects.offset(dRow, dCol);
    m_overwrittenRects = xstd::XMergedRects(m_destRects).subtract_(m_srcRects, true);
    // Moving a part of a cell back would not bring back what the destination's part replaced.
    m_savedRects = m_overwrittenRects;
    if (!movesWhole())
        m_savedRects.add_(m_srcRects, true);
    growTo(m_destRects.boundRect(), "moveRect");
}

xstd::XUndoableAction* XCellActionMoveRect::do_()
{
    const xstd::XStopScope scope;
    m_savedCells.clear();
    m_savedRanges.clear();
    m_table->snapshot(m_savedCells, m_savedRects, {optCopy});
    // References are rewritten from the positions that exist before the cells move.
    m_table->markRefsDeleted(m_overwrittenRects, m_reach, m_savedRanges);
    m_table->moveRanges(m_srcRects, m_dRow, m_dCol, m_reach, m_savedRanges);
    m_table->moveRects(m_srcRects, m_dRow, m_dCol, m_options);
    finish(m_changed);
    return this;
}

xstd::XUndoableAction* XCellActionMoveRect::undo_()
{
    const xstd::XStopScope scope;
    releaseHeldOut();
    if (movesWhole())
        m_table->moveRects(m_destRects, -m_dRow, -m_dCol, m_options);
    m_table->restore(m_savedCells, m_savedRects, {optTake});
    m_table->swapRangesBack(m_savedRanges, {}, {optTake});
    recalcFor(xstd::XUndoableActionType::Undo, m_changed);
    return this;
}

xstd::XMergedRects XCellActionMoveRect::selectRects(xstd::XUndoableActionType type) const
{
    return type == xstd::XUndoableActionType::Do ? m_destRects : m_srcRects;
}

xstd::XMergedRects XCellActionMoveRect::changedRects(xstd::XUndoableActionType) const
{
    return xstd::XMergedRects(m_changed).add_(m_srcRects).add_(m_destRects, true);
}

xstd::XMergedRects XCellActionMoveRect::calcRects(xstd::XUndoableActionType) const
{
    return rectsOf(m_savedRanges).add_(m_srcRects).add_(m_destRects, true);
}

xstd::XExceptionItem XCellActionMoveRect::ringItem(const xstd::XString& path) const
{
    return XCellAction::ringItem(path)
        .setExtend("action", "moveRect")
        .setExtend("srcRect", m_srcRects.toString(0))
        .setExtend("destRect", m_destRects.toString(0));
}

} // namespace huge
