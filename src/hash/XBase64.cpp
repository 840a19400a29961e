#include "hash/XBase64.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace xstd {

namespace {

constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char padding = '=';
constexpr uint8_t noDigit = 64;

constexpr std::array<uint8_t, 256> makeDigitValues()
{
    std::array<uint8_t, 256> values{};
    values.fill(noDigit);
    for (uint8_t i = 0; i < 64; ++i)
        values[uint8_t(alphabet[i])] = i;
    values[uint8_t(padding)] = 0;
    return values;
}

constexpr std::array<uint8_t, 256> digitValues = makeDigitValues();

void storeGroup(char* out, uint32_t bits) noexcept
{
    out[0] = alphabet[bits >> 18];
    out[1] = alphabet[bits >> 12 & 63];
    out[2] = alphabet[bits >> 6 & 63];
    out[3] = alphabet[bits & 63];
}

} // namespace

XString encodeBase64(const uint8_t* first, const uint8_t* last)
{
    XString text(size_t(last - first + 2) / 3 * 4, padding);
    char* out = text.data();
    for (; last - first >= 3; first += 3, out += 4)
        storeGroup(out, uint32_t(first[0]) << 16 | uint32_t(first[1]) << 8 | first[2]);
    if (first == last)
        return text;
    const bool two = last - first == 2;
    storeGroup(out, uint32_t(first[0]) << 16 | (two ? uint32_t(first[1]) << 8 : 0));
    out[3] = padding;
    if (!two)
        out[2] = padding;
    return text;
}

bool decodeBase64(const XString& text, std::vector<uint8_t>& out)
{
    const char* pos = text.c_str();
    const char* end = pos + std::strlen(pos);
    if ((end - pos) % 4 != 0)
        return false;
    if (std::any_of(pos, end, [](char c) { return digitValues[uint8_t(c)] == noDigit; }))
        return false;
    const size_t before = out.size();
    out.resize(before + size_t(end - pos) / 4 * 3);
    uint8_t* store = out.data() + before;
    for (; pos != end; pos += 4) {
        const uint32_t bits = uint32_t(digitValues[uint8_t(pos[0])]) << 18 |
                              uint32_t(digitValues[uint8_t(pos[1])]) << 12 |
                              uint32_t(digitValues[uint8_t(pos[2])]) << 6 |
                              uint32_t(digitValues[uint8_t(pos[3])]);
        *store++ = uint8_t(bits >> 16);
        // Each of the two stands or falls by its own character, in any group.
        if (pos[2] != padding)
            *store++ = uint8_t(bits >> 8);
        if (pos[3] != padding)
            *store++ = uint8_t(bits);
    }
    out.resize(size_t(store - out.data()));
    return true;
}

} // namespace xstd
