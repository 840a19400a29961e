#pragma once

#include "cell/XCellDestAction.h"
#include "common/XString.h"

#include <vector>

namespace huge {

/// Pastes plain text: a grid of fields, repeated over the destination and cut at its edges. A field
/// means what pastedSource says. "none" leaves its cell alone, and so does a row that is too short;
/// an empty field empties the cell.
class XCellActionSetTexts final : public XCellDestAction {
public:
    using Texts = std::vector<std::vector<xstd::XString>>;

    /// Grows the working area to the destination, or refuses as XCellAction::growTo.
    XCellActionSetTexts(XCellTable* table, xstd::XMergedRects destRects, Texts texts);

    /// Goes on past fields that fail, and raises the first failure at the end.
    xstd::XUndoableAction* do_() override;

protected:
    xstd::XExceptionItem ringItem(const xstd::XString& path) const override;

private:
    const xstd::XString& textFor(int32_t row, int32_t col) const;
    void setText(int32_t row, int32_t col, const xstd::XString& text);
    xstd::XExceptionItems setRectTexts();

    Texts m_texts;
    int64_t m_colCount = 0; // of the longest row
    xstd::XRect m_bound;    // of the destination
};

} // namespace huge
