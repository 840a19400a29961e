#include "cell/XCellActionInsert.h"

#include <algorithm>

namespace huge {

XCellActionInsert::XCellActionInsert(XCellTable* table, XCellAxis axis, const xstd::XRect& band,
                                     const char* name)
    : XCellBandAction(table, axis, band, axis == XCellAxis::Rows ? band.top : band.left, name)
{
    const int32_t last = lastMoved();
    const int32_t size = bandSize();
    const xstd::XRect moved = m_movedRect;
    setMoved(last, size);
    if (m_movedRect.isNull())
        return;
    // References end at the limits, but a cell must not be pushed out there.
    const int32_t lastCell = isByRows() ? m_table->lastUsedRow(moved) : m_table->lastUsedCol(moved);
    const int32_t limit = isByRows() ? XCellPos::maxRow : XCellPos::maxCol;
    const int64_t edge =
        std::max(int64_t(lastCell) + size, std::min(int64_t(last) + size, int64_t(limit)));
    const int32_t needed = static_cast<int32_t>(std::min(edge, int64_t(limit) + 1));
    growTo(isByRows() ? xstd::XRect(0, 0, needed, 0) : xstd::XRect(0, 0, 0, needed), name);
}

xstd::XUndoableAction* XCellActionInsert::do_()
{
    const StopScope scope;
    m_savedRanges.clear();
    shiftRanges();
    XSavedExtends formats;
    if (!m_movedRect.isNull())
        m_table->snapshotExtends(formats, m_band, {optCopy});
    shiftCells();
    if (!m_movedRect.isNull())
        m_table->restoreExtends(formats, m_band, {optTake});
    finish(m_changed);
    return this;
}

xstd::XUndoableAction* XCellActionInsert::undo_()
{
    const StopScope scope;
    releaseHeldOut();
    shiftCellsBack();
    m_table->swapRangesBack(m_savedRanges, {}, {optTake});
    recalcFor(xstd::XUndoableActionType::Undo, m_changed);
    return this;
}

xstd::XMergedRects XCellActionInsert::changedRects(xstd::XUndoableActionType) const
{
    return xstd::XMergedRects(m_changed).add_(m_band, true);
}

} // namespace huge
