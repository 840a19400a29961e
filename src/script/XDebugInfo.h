#pragma once

#include "script/XScriptToken.h"

#include <cstdint>
#include <map>
#include <vector>

namespace huge {

/// Where the instructions and operands of an image come from in the source. Filled while
/// compiling, read by the listing. The source lines themselves are set by the caller that wants
/// them shown.
class XDebugInfo {
public:
    struct TokenPlace {
        int32_t pos = 0;    ///< code offset
        int32_t line = 0;   ///< from 1
        int32_t column = 0; ///< bytes, from 0
        xstd::XString text;
    };

    /// Notes the token that stands at a code offset; one of empty text is ignored.
    void addToken(int32_t pos, const XCStoken& token);

    /// Notes that the instruction at a code offset begins a source line, counted from 1.
    void addLine(int32_t pos, int32_t line);

    /// The line noted at exactly this offset, or -1.
    int32_t lineAt(int32_t pos) const;

    /// The text of that line; "" when there is none or the number is out of range.
    xstd::XString lineText(int32_t pos) const;

    /// The text of the token noted at this offset, or "".
    xstd::XString tokenText(int32_t pos) const;

    /// Token and source line of an offset, joined by " => " when both exist.
    xstd::XString describe(int32_t pos) const;

    std::vector<xstd::XString> lines;
    std::map<int32_t, TokenPlace> tokens;
    std::map<int32_t, int32_t> lineOf;
};

} // namespace huge
