#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace xstd {

/// RIPEMD-160 over bytes that arrive in pieces (Dobbertin, Bosselaers, Preneel, "RIPEMD-160: A
/// Strengthened Version of RIPEMD", 1996). Used as XSha256 is.
class XRipemd160 {
public:
    static constexpr size_t digestSize = 20;
    static constexpr size_t blockSize = 64;

    XRipemd160() noexcept { reset(); }

    void reset() noexcept;
    void write(const uint8_t* bytes, size_t count) noexcept;
    /// Pads, and stores the 20 bytes of the digest in the order in which it is written down.
    void finish(uint8_t* out) noexcept;

private:
    void transform(const uint8_t* block) noexcept;

    std::array<uint32_t, 5> m_state;
    std::array<uint8_t, blockSize> m_buffer;
    uint64_t m_count;
};

} // namespace xstd
