#pragma once

#include "common/XString.h"

#include <cstdint>
#include <vector>

namespace xstd {

/// Bytes as Base64 with padding and without line breaks (RFC 4648, section 4).
XString encodeBase64(const uint8_t* first, const uint8_t* last);

/// Appends the bytes of such a text, which ends at its first NUL. Gives false, and appends nothing,
/// for a character that is none of Base64 or a length that is no multiple of 4. A "=" that is no
/// padding counts as a zero digit.
bool decodeBase64(const XString& text, std::vector<uint8_t>& out);

} // namespace xstd
