#pragma once

#include "cell/XCellAction.h"

namespace huge {

/// Mirrors a rectangle about its top left corner. References inside of it are mirrored along;
/// references to cells that it newly covers die.
class XCellActionTranspose final : public XCellAction {
public:
    /// Grows the working area to the result, or refuses as XCellAction::growTo.
    XCellActionTranspose(XCellTable* table, const xstd::XRect& rect);

    xstd::XUndoableAction* do_() override;
    xstd::XUndoableAction* undo_() override;

    xstd::XMergedRects selectRects(xstd::XUndoableActionType type) const override;
    xstd::XMergedRects changedRects(xstd::XUndoableActionType type) const override;
    xstd::XMergedRects calcRects(xstd::XUndoableActionType type) const override;

protected:
    xstd::XExceptionItem ringItem(const xstd::XString& path) const override;

private:
    xstd::XRect m_rect;
    xstd::XRect m_transposed;
    xstd::XRect m_otherRect; // of the result, what lies outside of the rectangle; may be null
    xstd::XRect m_reach;     // the working area before it grew
    XSavedCells m_savedCells;
    XSavedRanges m_savedRanges;
    xstd::XMergedRects m_changed;
};

} // namespace huge
