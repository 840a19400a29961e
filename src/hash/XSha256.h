#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace xstd {

/// SHA-256 over bytes that arrive in pieces (FIPS 180-4). A fresh or reset context takes any number
/// of writes and one finish; reset makes it ready for the next message.
class XSha256 {
public:
    static constexpr size_t digestSize = 32;
    static constexpr size_t blockSize = 64;

    XSha256() noexcept { reset(); }

    void reset() noexcept;
    void write(const uint8_t* bytes, size_t count) noexcept;
    /// Pads, and stores the 32 bytes of the digest in the order in which it is written down.
    void finish(uint8_t* out) noexcept;

private:
    void transform(const uint8_t* block) noexcept;

    std::array<uint32_t, 8> m_state;
    std::array<uint8_t, blockSize> m_buffer;
    uint64_t m_count;
};

} // namespace xstd
