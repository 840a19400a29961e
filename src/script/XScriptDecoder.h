#pragma once

#include "common/XStringDecoder.h"

namespace huge {

/// Cuts script source into tokens. Blanks are all bytes up to 32 and the two forms of comments;
/// line ends mean nothing. There are no keywords at this level: words are labels.
class XScriptDecoder : public xstd::XStringDecoder {
public:
    explicit XScriptDecoder(const xstd::XString& text);

    /// Skips blanks and comments; returns the bytes skipped. A comment that is not closed runs to
    /// the end of the text.
    int32_t skipBlank() override;

    /// A word of letters, digits, '_', '@' and '$'.
    xstd::XToken getLabel() override;

    /// The next token, of type 0 at the end. Operators are read by the longest match. Fails with
    /// "Unrecognized operator '...'" on a byte that begins no token.
    xstd::XToken next() override;

    /// Throws a failure of type "compile" with "scriptPos", "scriptLine" (from 1) and "scriptCol"
    /// (from 0).
    [[noreturn]] void raise(const xstd::XSourceLocation& location, const xstd::XString& message,
                            int32_t pos = 0) const override;
};

} // namespace huge
