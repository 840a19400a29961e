#pragma once

#include "cell/XCellBuilder.h"
#include "cell/XCellDecoder.h"
#include "cell/XCellRangeRef.h"
#include "script/XScript.h"

#include <cstdint>

namespace huge {

/// The compiler of one cell's text: the language with references. It is used once; what lasts is
/// its program and its references.
class XCellScript final : public XScript_base {
public:
    /// For a text without "=" in front that stands, or is to be read as if it stood, in the cell
    /// (row, col).
    XCellScript(const xstd::XString& text, int32_t row, int32_t col);

    /// The source as it reads in the cell (row, col).
    xstd::XString textAt(int32_t row, int32_t col, bool showRef) const;

    /// The references, by id, relative to the base cell; filled by compile().
    XCellRangeRefs ranges;

private:
    XCellDecoder m_textDecoder;
    XCellBuilder m_imageBuilder;
};

} // namespace huge
