#pragma once

#include "cell/XCellDestAction.h"

namespace huge {

/// Empties cells: one with a format stays, without content, any other goes.
class XCellActionDelValues final : public XCellDestAction {
public:
    XCellActionDelValues(XCellTable* table, xstd::XMergedRects destRects)
        : XCellDestAction(table, std::move(destRects))
    {}

    xstd::XUndoableAction* do_() override;
};

} // namespace huge
