#include "hash/XRipemd160.h"

#include "hash/blockBuffer.h"

#include <bit>

namespace xstd {

namespace {

// One side of the two parallel lines: which word each of its 80 steps takes, how far it rotates,
// and the constant of each of its five rounds.
struct Line {
    std::array<uint8_t, 80> word;
    std::array<uint8_t, 80> shift;
    std::array<uint32_t, 5> constant;
};

constexpr Line leftLine = {
    {0,  1, 2,  3, 4,  5,  6, 7,  8, 9,  10, 11, 12, 13, 14, 15, 7,  4,  13, 1,
     10, 6, 15, 3, 12, 0,  9, 5,  2, 14, 11, 8,  3,  10, 14, 4,  9,  15, 8,  1,
     2,  7, 0,  6, 13, 11, 5, 12, 1, 9,  11, 10, 0,  8,  12, 4,  13, 3,  7,  15,
     14, 5, 6,  2, 4,  0,  5, 9,  7, 12, 2,  10, 14, 1,  3,  8,  11, 6,  15, 13},
    {11, 14, 15, 12, 5, 8,  7,  9,  11, 13, 14, 15, 6,  7,  9,  8,  7,  6,  8,  13,
     11, 9,  7,  15, 7, 12, 15, 9,  11, 7,  13, 12, 11, 13, 6,  7,  14, 9,  13, 15,
     14, 8,  13, 6,  5, 12, 7,  5,  11, 12, 14, 15, 14, 15, 9,  8,  9,  14, 5,  6,
     8,  6,  5,  12, 9, 15, 5,  11, 6,  8,  13, 12, 5,  12, 13, 14, 11, 8,  5,  6},
    {0x00000000, 0x5a827999, 0x6ed9eba1, 0x8f1bbcdc, 0xa953fd4e}};

constexpr Line rightLine = {
    {5,  14, 7,  0,  9,  2,  11, 4,  13, 6, 15, 8, 1,  10, 3,  12, 6, 11, 3, 7,
     0,  13, 5,  10, 14, 15, 8,  12, 4,  9, 1,  2, 15, 5,  1,  3,  7, 14, 6, 9,
     11, 8,  12, 2,  10, 0,  4,  13, 8,  6, 4,  1, 3,  11, 15, 0,  5, 12, 2, 13,
     9,  7,  10, 14, 12, 15, 10, 4,  1,  5, 8,  7, 6,  2,  13, 14, 0, 3,  9, 11},
    {8,  9,  9,  11, 13, 15, 15, 5, 7,  7,  8,  11, 14, 14, 12, 6,  9,  13, 15, 7,
     12, 8,  9,  11, 7,  7,  12, 7, 6,  15, 13, 11, 9,  7,  15, 11, 8,  6,  6,  14,
     12, 13, 5,  14, 13, 13, 7,  5, 15, 5,  8,  11, 14, 14, 6,  14, 6,  9,  12, 9,
     12, 5,  15, 8,  8,  5,  12, 9, 12, 5,  14, 6,  8,  13, 6,  5,  15, 13, 11, 11},
    {0x50a28be6, 0x5c4dd124, 0x6d703ef3, 0x7a6d76e9, 0x00000000}};

uint32_t mix(size_t function, uint32_t x, uint32_t y, uint32_t z) noexcept
{
    switch (function) {
    case 0:
        return x ^ y ^ z;
    case 1:
        return (x & y) | (~x & z);
    case 2:
        return (x | ~y) ^ z;
    case 3:
        return (x & z) | (y & ~z);
    default:
        return x ^ (y | ~z);
    }
}

// The left line runs through the five functions upward, the right one downward.
std::array<uint32_t, 5> runLine(const Line& line, bool upward, std::array<uint32_t, 5> state,
                                const std::array<uint32_t, 16>& words) noexcept
{
    auto [a, b, c, d, e] = state;
    for (size_t step = 0; step < 80; ++step) {
        const size_t round = step / 16;
        const uint32_t sum = a + mix(upward ? round : 4 - round, b, c, d) + words[line.word[step]] +
                             line.constant[round];
        const uint32_t next = std::rotl(sum, line.shift[step]) + e;
        a = e;
        e = d;
        d = std::rotl(c, 10);
        c = b;
        b = next;
    }
    return {a, b, c, d, e};
}

uint32_t loadLittleEndian(const uint8_t* p) noexcept
{
    return uint32_t(p[3]) << 24 | uint32_t(p[2]) << 16 | uint32_t(p[1]) << 8 | uint32_t(p[0]);
}

void storeLittleEndian(uint8_t* p, uint32_t v) noexcept
{
    for (int i = 0; i < 4; ++i)
        p[i] = uint8_t(v >> (8 * i));
}

} // namespace

void XRipemd160::reset() noexcept
{
    m_state = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476, 0xc3d2e1f0};
    m_buffer.fill(0);
    m_count = 0;
}

void XRipemd160::transform(const uint8_t* block) noexcept
{
    std::array<uint32_t, 16> words;
    for (size_t i = 0; i < words.size(); ++i)
        words[i] = loadLittleEndian(block + 4 * i);
    const std::array<uint32_t, 5> left = runLine(leftLine, true, m_state, words);
    const std::array<uint32_t, 5> right = runLine(rightLine, false, m_state, words);
    const std::array<uint32_t, 5> old = m_state;
    for (size_t i = 0; i < 5; ++i)
        m_state[i] = old[(i + 1) % 5] + left[(i + 2) % 5] + right[(i + 3) % 5];
}

void XRipemd160::write(const uint8_t* bytes, size_t count) noexcept
{
    writeBlocks(m_buffer, m_count, bytes, count,
                [this](const uint8_t* block) { transform(block); });
}

void XRipemd160::finish(uint8_t* out) noexcept
{
    padBlocks(
        m_buffer, m_count, [this](const uint8_t* block) { transform(block); },
        [](uint8_t* p, uint64_t bits) {
            storeLittleEndian(p, uint32_t(bits));
            storeLittleEndian(p + 4, uint32_t(bits >> 32));
        });
    for (size_t i = 0; i < m_state.size(); ++i)
        storeLittleEndian(out + 4 * i, m_state[i]);
}

} // namespace xstd
