#pragma once

#include "cell/XCellBuilder.h"
#include "cell/XCellDecoder.h"
#include "cell/XCellRangeRef.h"
#include "hash/XHash.h"
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

    /// Digest of the program: cells with the same one share it.
    xstd::h160 hash() const;
    /// Lists the compiled program behind its digest and its references, line by line; standard
    /// output takes the lines without a sink.
    void dump(const XDebugInfo* debug, const XScriptBuilder::LineSink& sink);
    /// Hands the instructions out one by one.
    void dumpTo(const XScriptBuilder::InstructionSink& sink) { m_imageBuilder.decodeTo(sink); }
    /// Compiles a text and lists it with its source lines. Fails as compile() does, before the
    /// first line.
    static void list(const xstd::XString& text, int32_t row, int32_t col,
                     const XScriptBuilder::LineSink& sink);

    /// The references, by id, relative to the base cell; filled by compile().
    XCellRangeRefs ranges;

private:
    XCellDecoder m_textDecoder;
    XCellBuilder m_imageBuilder;
};

} // namespace huge
