#pragma once

#include "cell/XCellBandAction.h"

namespace huge {

/// Makes room: the cells from the band on shift down, or to the right, and the new blank cells look
/// like those that stood there.
class XCellActionInsert : public XCellBandAction {
public:
    xstd::XUndoableAction* do_() override;
    xstd::XUndoableAction* undo_() override;

    xstd::XMergedRects changedRects(xstd::XUndoableActionType type) const override;

protected:
    /// Grows the working area for what shifts, or refuses as XCellAction::growTo when a used cell
    /// would leave the table.
    XCellActionInsert(XCellTable* table, XCellAxis axis, const xstd::XRect& band, const char* name);
};

class XCellActionInsertRow final : public XCellActionInsert {
public:
    /// `count` whole rows, from `row` on.
    XCellActionInsertRow(XCellTable* table, int32_t row, int32_t count)
        : XCellActionInsert(table, XCellAxis::Rows, wholeBand(*table, XCellAxis::Rows, row, count),
                            "insertRow")
    {}
};

class XCellActionInsertRowRect final : public XCellActionInsert {
public:
    XCellActionInsertRowRect(XCellTable* table, const xstd::XRect& rect)
        : XCellActionInsert(table, XCellAxis::Rows, rect, "insertRowRect")
    {}
};

class XCellActionInsertCol final : public XCellActionInsert {
public:
    /// `count` whole columns, from `col` on.
    XCellActionInsertCol(XCellTable* table, int32_t col, int32_t count)
        : XCellActionInsert(table, XCellAxis::Cols, wholeBand(*table, XCellAxis::Cols, col, count),
                            "insertCol")
    {}
};

class XCellActionInsertColRect final : public XCellActionInsert {
public:
    XCellActionInsertColRect(XCellTable* table, const xstd::XRect& rect)
        : XCellActionInsert(table, XCellAxis::Cols, rect, "insertColRect")
    {}
};

} // namespace huge
