#include "cell/XCellActionTranspose.h"

namespace huge {

XCellActionTranspose::XCellActionTranspose(XCellTable* table, const xstd::XRect& rect)
    : XCellAction(table), m_rect(rect), m_transposed(rect.transposed(rect.top, rect.left)),
      m_reach(table->mainRect())
{
    std::vector<xstd::XRect> pieces;
    m_transposed.subtractFrom(m_rect, pieces);
    if (pieces.size() == 1)
        m_otherRect = pieces[0];
    growTo(m_transposed, "transpose");
}

xstd::XUndoableAction* XCellActionTranspose::do_()
{
    const xstd::XStopScope scope;
    m_savedRanges.clear();
    m_savedCells.clear();
    m_table->snapshot(m_savedCells, xstd::XMergedRects(m_rect).add_(m_transposed, true), {optCopy});
    if (!m_otherRect.isNull())
        m_table->markRefsDeleted(m_otherRect, m_reach, m_savedRanges);
    m_table->transposeRanges(m_rect, m_savedRanges);
    m_table->transposeCells(m_rect);
    finish(m_changed);
    return this;
}

xstd::XUndoableAction* XCellActionTranspose::undo_()
{
    const xstd::XStopScope scope;
    releaseHeldOut();
    m_table->restore(m_savedCells, xstd::XMergedRects(m_rect).add_(m_transposed, true), {optTake});
    m_table->swapRangesBack(m_savedRanges, {}, {optTake});
    recalcFor(xstd::XUndoableActionType::Undo, m_changed);
    return this;
}

xstd::XMergedRects XCellActionTranspose::selectRects(xstd::XUndoableActionType type) const
{
    return type == xstd::XUndoableActionType::Do ? m_transposed : m_rect;
}

xstd::XMergedRects XCellActionTranspose::changedRects(xstd::XUndoableActionType) const
{
    return xstd::XMergedRects(m_changed).add_(m_rect).add_(m_transposed, true);
}

xstd::XMergedRects XCellActionTranspose::calcRects(xstd::XUndoableActionType) const
{
    return rectsOf(m_savedRanges).add_(m_rect).add_(m_transposed, true);
}

xstd::XExceptionItem XCellActionTranspose::ringItem(const xstd::XString& path) const
{
    return XCellAction::ringItem(path)
        .setExtend("action", "transpose")
        .setExtend("rect", m_rect.toString());
}

} // namespace huge
