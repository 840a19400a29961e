#include "cell/XCellDestAction.h"

#include <utility>

namespace huge {

XCellDestAction::XCellDestAction(XCellTable* table, xstd::XMergedRects destRects)
    : XCellAction(table), m_destRects(std::move(destRects))
{
    m_destRects.normalize_();
}

void XCellDestAction::saveDest()
{
    m_savedCells.clear(); // a redo saves the table as it stands then
    m_table->snapshot(m_savedCells, m_destRects, {optCopy});
}

void XCellDestAction::restoreFor(xstd::XUndoableActionType type)
{
    const xstd::XStopScope scope;
    releaseHeldOut();
    m_table->restore(m_savedCells, m_destRects, {optTake});
    recalcFor(type, m_changed);
}

xstd::XUndoableAction* XCellDestAction::undo_()
{
    restoreFor(xstd::XUndoableActionType::Undo);
    return this;
}

xstd::XUndoableAction* XCellDestAction::rollback_()
{
    restoreFor(xstd::XUndoableActionType::Rollback);
    return this;
}

xstd::XMergedRects XCellDestAction::selectRects(xstd::XUndoableActionType) const
{
    return m_destRects;
}

xstd::XMergedRects XCellDestAction::changedRects(xstd::XUndoableActionType) const
{
    return xstd::XMergedRects(m_changed).add_(m_destRects, true);
}

xstd::XMergedRects XCellDestAction::calcRects(xstd::XUndoableActionType) const
{
    return m_destRects;
}

} // namespace huge
