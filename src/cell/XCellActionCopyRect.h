#pragma once

#include "cell/XCellDestAction.h"

namespace huge {

/// Copies cells over others, repeated as often as they fit: filling by the mouse.
class XCellActionCopyRect final : public XCellDestAction {
public:
    /// Refuses rectangles that overlap: "Destination and source rectangles overlap" ("action").
    /// Grows the working area to the destination, or refuses as XCellAction::growTo. With
    /// optScriptOnly or optValueOnly the destination keeps its formats.
    XCellActionCopyRect(XCellTable* table, xstd::XMergedRects srcRects,
                        xstd::XMergedRects destRects, xstd::XOptions options);

    xstd::XUndoableAction* do_() override;

    xstd::XMergedRects selectRects(xstd::XUndoableActionType type) const override;

protected:
    xstd::XExceptionItem ringItem(const xstd::XString& path) const override;

private:
    xstd::XMergedRects m_srcRects;
    xstd::XOptions m_options;
};

} // namespace huge
