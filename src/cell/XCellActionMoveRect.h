#pragma once

#include "cell/XCellAction.h"

namespace huge {

/// Moves cells by an offset. References into what moves follow it, references into what it lands
/// on die; the moved cells themselves go on reading what they read.
class XCellActionMoveRect final : public XCellAction {
public:
    /// Grows the working area to the destination, or refuses as XCellAction::growTo. With
    /// optScriptOnly or optValueOnly the formats stay where they are; with optValueOnly only the
    /// value arrives.
    XCellActionMoveRect(XCellTable* table, xstd::XMergedRects srcRects, int32_t dRow, int32_t dCol,
                        xstd::XOptions options);

    xstd::XUndoableAction* do_() override;
    xstd::XUndoableAction* undo_() override;

    xstd::XMergedRects selectRects(xstd::XUndoableActionType type) const override;
    xstd::XMergedRects changedRects(xstd::XUndoableActionType type) const override;
    xstd::XMergedRects calcRects(xstd::XUndoableActionType type) const override;

protected:
    xstd::XExceptionItem ringItem(const xstd::XString& path) const override;

private:
    bool movesWhole() const { return !m_options.hasAny({optScriptOnly, optValueOnly}); }

    xstd::XMergedRects m_srcRects;
    int32_t m_dRow;
    int32_t m_dCol;
    xstd::XMergedRects m_destRects;
    xstd::XOptions m_options;
    xstd::XRect m_reach; // the working area before it grew
    XSavedRanges m_savedRanges;
    xstd::XMergedRects m_changed;
    xstd::XMergedRects m_overwrittenRects; // the destination outside of the source
    xstd::XMergedRects m_savedRects;
    XSavedCells m_savedCells;
};

} // namespace huge
