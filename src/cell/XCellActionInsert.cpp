#include "cell/XCellActionInsert.h"

#include <algorithm>

namespace huge {

XCellActionInsert::XCellActionInsert(XCellTable* table, XCellAxis axis, const xstd::XRect& band,
                                     const char* name)
    : XCellBandAction(table, axis, band, axis == XCellAxis::Rows ? band.top : band.left, name)
{
    const xstd::XRect behind = m_movedRect;
    const int32_t last = lastMoved();
    const int32_t size = bandSize();
    const int32_t limit = isByRows() ? XCellPos::maxRow : XCellPos::maxCol;
    setMoved(last, size);
    if (last < 0)
        return;
    int64_t edge = std::min(int64_t(last) + size, int64_t(limit));
    if (!m_movedRect.isNull()) {
        // References end at the limits, but a cell must not be pushed out there.
        const int64_t lastCell =
            isByRows() ? m_table->lastUsedRow(behind) : m_table->lastUsedCol(behind);
        edge = std::max(edge, std::min(lastCell + size, int64_t(limit) + 1));
    }
    const int32_t needed = static_cast<int32_t>(edge);
    growTo(isByRows() ? xstd::XRect(0, 0, needed, 0) : xstd::XRect(0, 0, 0, needed), name);
}

xstd::XUndoableAction* XCellActionInsert::do_()
{
    const xstd::XStopScope scope;
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
    const xstd::XStopScope scope;
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
