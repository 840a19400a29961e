#pragma once

#include "common/XString.h"

#include <cstdint>
#include <vector>

namespace huge {

// Base58 as xstd has it, for data of any length: what is long is cut at half of its digits, by
// divisions by or products with a power of 58 squared again and again, down to pieces that the
// plain encoder takes. Cost: that of a product, times the logarithm of the length. All look for a
// stop of the calculation.

xstd::XString longBase58(const uint8_t* first, const uint8_t* last);
/// False, and out as it was, for a text that is no Base58.
bool fromLongBase58(const xstd::XString& text, std::vector<uint8_t>& out);

/// The same with a checksum of four bytes behind the data.
xstd::XString longBase58Check(const std::vector<uint8_t>& bytes);
/// False, and out empty, for a text that is no Base58 or whose checksum is not that of its bytes.
bool fromLongBase58Check(const xstd::XString& text, std::vector<uint8_t>& out);

} // namespace huge
