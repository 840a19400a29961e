#pragma once

#include "cell/XCellAction.h"
#include "common/XString.h"

namespace huge {

/// Gives one cell a text. The text "none" leaves the cell alone, the empty text clears it and keeps
/// its format. What fails raises, but the text stays in the cell, its readers are recalculated
/// before, and the action can be undone.
class XCellActionSetText final : public XCellAction {
public:
    /// With `replaceScript` the text also becomes the source of a script that other cells share,
    /// with its comments and spacing.
    XCellActionSetText(XCellTable* table, int32_t row, int32_t col, xstd::XString text,
                       bool replaceScript);

    /// Raises what setText_ of the cell raises, and a ring of references that the text closes: the
    /// cell then stays out of the table's references and shows that failure.
    xstd::XUndoableAction* do_() override;
    xstd::XUndoableAction* undo_() override;
    xstd::XUndoableAction* rollback_() override;
    /// A text that fails stays, for the person to correct or to undo.
    bool canRollback() const override { return false; }

    xstd::XMergedRects selectRects(xstd::XUndoableActionType type) const override;
    xstd::XMergedRects changedRects(xstd::XUndoableActionType type) const override;
    xstd::XMergedRects calcRects(xstd::XUndoableActionType type) const override;
    /// The cell itself when no other rectangle was set.
    xstd::XRect focusRect() const override;

private:
    xstd::XRect cellRect() const { return xstd::XRect(m_row, m_col, m_row, m_col); }
    void setText_();
    void refuseRing(XCell* cell);
    void restoreFor(xstd::XUndoableActionType type);

    int32_t m_row;
    int32_t m_col;
    XSavedCells m_savedCells;
    xstd::XMergedRects m_changed;
    xstd::XString m_text;
    bool m_replaceScript;
    XDisplacedText m_displaced;
};

} // namespace huge
