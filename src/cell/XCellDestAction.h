#pragma once

#include "cell/XCellAction.h"

namespace huge {

/// An action that changes the content of a set of cells and moves nothing. It saves these cells
/// as they are, and undo puts the saved ones back.
class XCellDestAction : public XCellAction {
public:
    xstd::XUndoableAction* undo_() override;
    xstd::XUndoableAction* rollback_() override;

    xstd::XMergedRects selectRects(xstd::XUndoableActionType type) const override;
    xstd::XMergedRects changedRects(xstd::XUndoableActionType type) const override;
    xstd::XMergedRects calcRects(xstd::XUndoableActionType type) const override;

protected:
    XCellDestAction(XCellTable* table, xstd::XMergedRects destRects);

    /// The start of do_: saves the destination as it stands now.
    void saveDest();

    xstd::XMergedRects m_destRects; ///< normalised
    xstd::XMergedRects m_changed;   ///< what the last recalculation ran

private:
    void restoreFor(xstd::XUndoableActionType type);

    XSavedCells m_savedCells;
};

} // namespace huge
