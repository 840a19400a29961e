#pragma once

#include "cell/XCellBandAction.h"

namespace huge {

/// Takes a band of cells out: what lies behind it shifts up, or to the left. References into the
/// band die, those that reach out of it end at what survives.
class XCellActionRemove : public XCellBandAction {
public:
    xstd::XUndoableAction* do_() override;
    xstd::XUndoableAction* undo_() override;

    xstd::XMergedRects changedRects(xstd::XUndoableActionType type) const override;

protected:
    XCellActionRemove(XCellTable* table, XCellAxis axis, const xstd::XRect& band, const char* name);

private:
    XSavedCells m_savedCells;
};

class XCellActionRemoveRow final : public XCellActionRemove {
public:
    /// `count` whole rows, from `row` on.
    XCellActionRemoveRow(XCellTable* table, int32_t row, int32_t count)
        : XCellActionRemove(table, XCellAxis::Rows, wholeBand(*table, XCellAxis::Rows, row, count),
                            "removeRow")
    {}

    xstd::XMergedRects changedRects(xstd::XUndoableActionType type) const override;
};

class XCellActionRemoveRowRect final : public XCellActionRemove {
public:
    XCellActionRemoveRowRect(XCellTable* table, const xstd::XRect& rect)
        : XCellActionRemove(table, XCellAxis::Rows, rect, "removeRowRect")
    {}

    xstd::XMergedRects changedRects(xstd::XUndoableActionType type) const override;
};

class XCellActionRemoveCol final : public XCellActionRemove {
public:
    /// `count` whole columns, from `col` on.
    XCellActionRemoveCol(XCellTable* table, int32_t col, int32_t count)
        : XCellActionRemove(table, XCellAxis::Cols, wholeBand(*table, XCellAxis::Cols, col, count),
                            "removeCol")
    {}
};

class XCellActionRemoveColRect final : public XCellActionRemove {
public:
    XCellActionRemoveColRect(XCellTable* table, const xstd::XRect& rect)
        : XCellActionRemove(table, XCellAxis::Cols, rect, "removeColRect")
    {}
};

} // namespace huge
