#include "cell/XCellActionSetText.h"

#include <utility>

namespace huge {

XCellActionSetText::XCellActionSetText(XCellTable* table, int32_t row, int32_t col,
                                       xstd::XString text, bool replaceScript)
    : XCellAction(table), m_row(row), m_col(col), m_text(std::move(text)),
      m_replaceScript(replaceScript)
{
    growTo(cellRect(), "setText");
}

void XCellActionSetText::setText_()
{
    if (m_text == "none")
        return;
    XCell* cell = m_text.empty() ? m_table->cellAt(m_row, m_col) : m_table->forceCell(m_row, m_col);
    if (!cell)
        return;
    m_table->unlinkCell(cell);
    cell->setText_(*m_table, m_text, XCell::ownRow, XCell::ownCol,
                   m_replaceScript ? &m_displaced : nullptr);
    m_table->linkCell(cell);
    refuseRing(cell);
}

void XCellActionSetText::refuseRing(XCell* cell)
{
    const std::vector<XCell*> path = m_table->findCycleThrough(cell);
    if (path.empty())
        return;
    m_table->holdOut(cell);
    xstd::XExceptionItems failure;
    failure.add(xstd::XExceptionItem(X_HERE, "action")
                    .setMess("There is a circular dependency: " + XCellTable::cyclicPathText(path))
                    .setExtend("action", "setText")
                    .setExtend("destRow", m_row)
                    .setExtend("destCol", m_col)
                    .setExtend("text", m_text));
    cell->setFailure(failure);
    throw failure;
}

xstd::XUndoableAction* XCellActionSetText::do_()
{
    const xstd::XStopScope scope;
    m_savedCells.clear(); // a redo saves the table as it stands then
    m_displaced = XDisplacedText();
    m_table->snapshot(m_savedCells, cellRect(), {optCopy});
    try {
        setText_();
    } catch (const xstd::XExceptionItems&) {
        // The failure is the cell's value now, and its readers must see it.
        recalcFor(xstd::XUndoableActionType::Do, m_changed);
        throw;
    }
    recalcFor(xstd::XUndoableActionType::Do, m_changed);
    return this;
}

xstd::XUndoableAction* XCellActionSetText::undo_()
{
    restoreFor(xstd::XUndoableActionType::Undo);
    return this;
}

xstd::XUndoableAction* XCellActionSetText::rollback_()
{
    restoreFor(xstd::XUndoableActionType::Rollback);
    return this;
}

void XCellActionSetText::restoreFor(xstd::XUndoableActionType type)
{
    const xstd::XStopScope scope;
    if (m_displaced.script)
        m_displaced.script->text = m_displaced.text;
    m_displaced = XDisplacedText();
    m_table->restore(m_savedCells, cellRect(), {optTake});
    recalcFor(type, m_changed);
}

xstd::XMergedRects XCellActionSetText::selectRects(xstd::XUndoableActionType) const
{
    return cellRect();
}

xstd::XMergedRects XCellActionSetText::changedRects(xstd::XUndoableActionType) const
{
    xstd::XMergedRects rects = m_changed;
    rects.add_(cellRect(), true);
    return rects;
}

xstd::XMergedRects XCellActionSetText::calcRects(xstd::XUndoableActionType) const
{
    return cellRect();
}

xstd::XRect XCellActionSetText::focusRect() const
{
    return m_focusRect.isNull() ? cellRect() : m_focusRect;
}

} // namespace huge
