#pragma once

#include "common/XString.h"
#include "hash/XRipemd160.h"
#include "hash/XSha256.h"

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
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

/// Writes toHex().
std::ostream& operator<<(std::ostream& out, const h160& digest);
std::ostream& operator<<(std::ostream& out, const h256& digest);

/// A digest of two stages over bytes that arrive in pieces: the bytes go to SHA-256, and what that
/// gives goes to the second stage. Used as XSha256 is.
template <class Second>
class XTwoStageHash {
public:
    using Digest = XDigest<Second::digestSize>;

    void reset() noexcept { m_first.reset(); }
    void write(const uint8_t* bytes, size_t count) noexcept { m_first.write(bytes, count); }
    void finish(Digest& out) noexcept
    {
        h256 inner;
        m_first.finish(inner.bytes.data());
        Second second;
        second.write(inner.bytes.data(), inner.bytes.size());
        second.finish(out.bytes.data());
    }

private:
    XSha256 m_first;
};

using XHash160 = XTwoStageHash<XRipemd160>;
using XHash256 = XTwoStageHash<XSha256>;

/// SHA-256 of the SHA-256 of the bytes.
h256 hash256(const uint8_t* bytes, size_t count) noexcept;
h256 hash256(const uint8_t* first, const uint8_t* last) noexcept;
h256 hash256(const std::vector<uint8_t>& bytes) noexcept;
h256 hash256(const XString& bytes) noexcept;

/// RIPEMD-160 of the SHA-256 of the bytes.
h160 hash160(const uint8_t* bytes, size_t count) noexcept;
h160 hash160(const uint8_t* first, const uint8_t* last) noexcept;
h160 hash160(const std::vector<uint8_t>& bytes) noexcept;
h160 hash160(const XString& bytes) noexcept;

} // namespace xstd
