#pragma once

#include "common/XString.h"

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace xstd {

/// A digest of N bytes, stored in the order in which the algorithm emits them. A fresh value is all
/// zero. Digests are ordered as memcmp orders their bytes.
template <size_t N>
struct XDigest {
    static constexpr size_t size = N;

    std::array<uint8_t, N> bytes{};

    auto operator<=>(const XDigest&) const = default;

    /// The bytes from the last to the first, two lower-case hexadecimal digits each.
    XString toHex() const;
    /// Reads such a text, from its end; an optional 0x in front, digits beyond N bytes are not
    /// looked at, missing ones are 0. Throws an XExceptionItems of type "h256" for an odd count of
    /// digits or a character that is no digit, and leaves the value as it was.
    XDigest& fromHex_(const XString& text);
};

using h160 = XDigest<20>;
using h256 = XDigest<32>;

extern template struct XDigest<20>;
extern template struct XDigest<32>;

/// SHA-256 of the SHA-256 of the bytes.
h256 hash256(const uint8_t* bytes, size_t count) noexcept;
inline h256 hash256(const std::vector<uint8_t>& b) noexcept
{
    return hash256(b.data(), b.size());
}

/// RIPEMD-160 of the SHA-256 of the bytes.
h160 hash160(const uint8_t* bytes, size_t count) noexcept;
inline h160 hash160(const std::vector<uint8_t>& b) noexcept
{
    return hash160(b.data(), b.size());
}

} // namespace xstd
