#include "cell/XCellActionDelValues.h"

namespace huge {

xstd::XUndoableAction* XCellActionDelValues::do_()
{
    const xstd::XStopScope scope;
    saveDest();
    for (XCell* cell : m_table->collectCells(m_destRects, {optAll})) {
        m_table->unlinkCell(cell); // first: a reference is found only where it was filed
        cell->clear_();
        if (!cell->isUsed())
            m_table->deleteCell(cell->row(), cell->col());
    }
    finish(m_changed);
    return this;
}

} // namespace huge
