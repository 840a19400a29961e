#include "cell/XCellActionRemove.h"

namespace huge {

XCellActionRemove::XCellActionRemove(XCellTable* table, XCellAxis axis, const xstd::XRect& band,
                                     const char* name)
    : XCellBandAction(table, axis, band,
                      int64_t(axis == XCellAxis::Rows ? band.bottom : band.right) + 1, name)
{
    setMoved(lastMoved(), -bandSize());
}

xstd::XUndoableAction* XCellActionRemove::do_()
{
    const xstd::XStopScope scope;
    m_savedCells.clear();
    m_savedRanges.clear();
    m_table->snapshot(m_savedCells, m_band, {optTake}); // the dead need no rewriting
    m_table->markRefsDeleted(m_band, m_reach, m_savedRanges);
    if (isByRows())
        m_table->clipRangesAtRows(m_band, m_reach, m_savedRanges);
    else
        m_table->clipRangesAtCols(m_band, m_reach, m_savedRanges);
    shiftRanges();
    shiftCells();
    finish(m_changed);
    return this;
}

xstd::XUndoableAction* XCellActionRemove::undo_()
{
    const xstd::XStopScope scope;
    releaseHeldOut();
    shiftCellsBack();
    m_table->restore(m_savedCells, m_band, {optTake});
    m_table->swapRangesBack(m_savedRanges, {}, {optTake});
    recalcFor(xstd::XUndoableActionType::Undo, m_changed);
    return this;
}

xstd::XMergedRects XCellActionRemove::changedRects(xstd::XUndoableActionType) const
{
    return xstd::XMergedRects(m_changed).add_(m_band, true);
}

xstd::XMergedRects XCellActionRemoveRow::changedRects(xstd::XUndoableActionType) const
{
    return xstd::XMergedRects(m_changed).add_(movedRects(), true);
}

xstd::XMergedRects XCellActionRemoveRowRect::changedRects(xstd::XUndoableActionType) const
{
    return m_changed;
}

} // namespace huge
