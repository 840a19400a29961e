#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace xstd {

/// Feeds bytes to a digest of 64-byte blocks: full blocks go to `transform` straight from the
/// input, the rest waits in `buffer`. `count` is the number of bytes seen so far.
template <class Transform>
void writeBlocks(std::array<uint8_t, 64>& buffer, uint64_t& count, const uint8_t* bytes, size_t n,
                 Transform transform)
{
    size_t used = count % buffer.size();
    count += n;
    if (used != 0) {
        const size_t fill = std::min(n, buffer.size() - used);
        std::memcpy(buffer.data() + used, bytes, fill);
        bytes += fill;
        n -= fill;
        used += fill;
        if (used < buffer.size())
            return;
        transform(buffer.data());
    }
    for (; n >= buffer.size(); bytes += buffer.size(), n -= buffer.size())
        transform(bytes);
    if (n != 0)
        std::memcpy(buffer.data(), bytes, n);
}

/// The padding that ends a message: a one bit, zeros, and room for the 64-bit length in bits, which
/// `storeLength` writes into the last eight bytes of the last block.
template <class Transform, class StoreLength>
void padBlocks(std::array<uint8_t, 64>& buffer, uint64_t count, Transform transform,
               StoreLength storeLength)
{
    constexpr size_t lengthPos = 56;
    size_t used = count % buffer.size();
    buffer[used++] = 0x80;
    if (used > lengthPos) {
        std::fill(buffer.begin() + used, buffer.end(), uint8_t(0));
        transform(buffer.data());
        used = 0;
    }
    std::fill(buffer.begin() + used, buffer.end(), uint8_t(0));
    storeLength(buffer.data() + lengthPos, count * 8);
    transform(buffer.data());
}

} // namespace xstd
