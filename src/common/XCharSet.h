#pragma once

#include "common/XString.h"

#include <bitset>
#include <cstdint>

namespace xstd {

/// A set of byte values.
class XCharSet {
public:
    XCharSet() = default;
    /// The bytes of a text.
    explicit XCharSet(const std::string& chars);

    XCharSet& add_(char c);
    bool has(char c) const { return m_bits[static_cast<uint8_t>(c)]; }
    int32_t count() const { return static_cast<int32_t>(m_bits.count()); }
    bool isEmpty() const { return m_bits.none(); }
    /// For messages: "[", the members in ascending order with runs as first-last, "]".
    XString toString() const;

private:
    std::bitset<256> m_bits;
};

} // namespace xstd
