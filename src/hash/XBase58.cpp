#include "hash/XBase58.h"

#include "common/XStop.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace xstd {

namespace {

__extension__ using Wide = unsigned __int128;

constexpr char alphabet[] = "123456789ABCDEFGHJKLMNPQRSTUVWXYZabcdefghijkmnopqrstuvwxyz";

// Ten digits are worked at once: 58^10 is the largest power that fits 64 bits.
constexpr size_t digitsPerGroup = 10;
constexpr uint64_t groupBase = 430804206899405824u;

// The divisor shifted up to its top bit, and floor((2^128 - 1) / that) - 2^64, with which a
// division of 128 bits takes two products (Möller, Granlund, "Improved division by invariant
// integers").
constexpr int groupShift = std::countl_zero(groupBase);
constexpr uint64_t shiftedBase = groupBase << groupShift;
constexpr uint64_t baseInverse = uint64_t(~Wide(0) / shiftedBase);

constexpr std::array<uint8_t, 256> makeDigitValues()
{
    std::array<uint8_t, 256> values{};
    values.fill(58);
    for (uint8_t i = 0; i < 58; ++i)
        values[uint8_t(alphabet[i])] = i;
    return values;
}

constexpr std::array<uint8_t, 256> digitValues = makeDigitValues();

struct Division {
    uint64_t quotient;
    uint64_t remainder;
};

// (high * 2^64 + low) / 58^10, for high below 58^10.
Division divideByGroup(uint64_t high, uint64_t low) noexcept
{
    const Wide shifted = (Wide(high) << 64 | low) << groupShift;
    const uint64_t top = uint64_t(shifted >> 64);
    const uint64_t bottom = uint64_t(shifted);
    const Wide estimate = Wide(baseInverse) * top + shifted;
    uint64_t quotient = uint64_t(estimate >> 64) + 1;
    uint64_t remainder = bottom - quotient * shiftedBase;
    if (remainder > uint64_t(estimate)) {
        --quotient;
        remainder += shiftedBase;
    }
    if (remainder >= shiftedBase) {
        ++quotient;
        remainder -= shiftedBase;
    }
    return {quotient, remainder >> groupShift};
}

// groups = groups * 2^64 + word, in base 58^10, lowest group first.
void appendWord(std::vector<uint64_t>& groups, uint64_t word)
{
    uint64_t carry = word;
    for (uint64_t& group : groups) {
        const Division step = divideByGroup(group, carry);
        group = step.remainder;
        carry = step.quotient;
    }
    for (; carry != 0; carry /= groupBase)
        groups.push_back(carry % groupBase);
}

uint64_t loadBytes(const uint8_t* p, size_t count) noexcept
{
    uint64_t word = 0;
    for (size_t i = 0; i < count; ++i)
        word = word << 8 | p[i];
    return word;
}

// words = words * scale + add, lowest word first.
void appendGroup(std::vector<uint64_t>& words, uint64_t scale, uint64_t add)
{
    uint64_t carry = add;
    for (uint64_t& word : words) {
        const Wide product = Wide(word) * scale + carry;
        word = uint64_t(product);
        carry = uint64_t(product >> 64);
    }
    if (carry != 0)
        words.push_back(carry);
}

bool isBlank(char c) noexcept
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

uint32_t checksum(const uint8_t* bytes, size_t count) noexcept
{
    uint64_t hash = 0xcbf29ce484222325;
    for (size_t i = 0; i < count; ++i)
        hash = (hash ^ bytes[i]) * 0x100000001b3;
    return uint32_t(hash);
}

constexpr size_t checksumSize = 4;

} // namespace

XString encodeBase58(const uint8_t* first, const uint8_t* last)
{
    const uint8_t* start = std::find_if(first, last, [](uint8_t byte) { return byte != 0; });
    const size_t count = size_t(last - start);
    std::vector<uint64_t> groups;
    groups.reserve(count / 7 + 2); // a group holds a little more than seven bytes
    size_t taken = count % 8;
    if (taken != 0)
        appendWord(groups, loadBytes(start, taken));
    for (; taken < count; taken += 8) {
        XStop::poll();
        appendWord(groups, loadBytes(start + taken, 8));
    }
    XString text;
    text.reserve(size_t(start - first) + groups.size() * digitsPerGroup);
    for (uint64_t group : groups)
        for (size_t i = 0; i < digitsPerGroup; ++i, group /= 58)
            text.push_back(alphabet[group % 58]);
    while (!text.empty() && text.back() == alphabet[0])
        text.pop_back();
    text.append(size_t(start - first), alphabet[0]);
    std::reverse(text.begin(), text.end());
    return text;
}

bool decodeBase58(const XString& text, std::vector<uint8_t>& out)
{
    const char* pos = text.c_str();
    const char* end = pos + std::strlen(pos);
    pos = std::find_if_not(pos, end, isBlank);
    while (end != pos && isBlank(end[-1]))
        --end;
    // What is refused is refused before the long work.
    if (std::any_of(pos, end, [](char c) { return digitValues[uint8_t(c)] == 58; }))
        return false;
    const char* digits = std::find_if(pos, end, [](char c) { return c != alphabet[0]; });
    std::vector<uint64_t> words;
    words.reserve(size_t(end - digits) / 10 + 2);
    for (const char* p = digits; p != end;) {
        XStop::poll();
        uint64_t scale = 1;
        uint64_t group = 0;
        for (size_t i = 0; i < digitsPerGroup && p != end; ++i, ++p) {
            group = group * 58 + digitValues[uint8_t(*p)];
            scale *= 58;
        }
        appendGroup(words, scale, group);
    }
    std::vector<uint8_t> bytes;
    bytes.reserve(words.size() * 8 + size_t(digits - pos));
    for (uint64_t word : words)
        for (int i = 0; i < 8; ++i, word >>= 8)
            bytes.push_back(uint8_t(word));
    while (!bytes.empty() && bytes.back() == 0)
        bytes.pop_back();
    bytes.insert(bytes.end(), size_t(digits - pos), 0);
    std::reverse(bytes.begin(), bytes.end());
    out = std::move(bytes);
    return true;
}

void appendChecksum(std::vector<uint8_t>& bytes)
{
    const uint32_t sum = checksum(bytes.data(), bytes.size());
    for (size_t i = 0; i < checksumSize; ++i)
        bytes.push_back(uint8_t(sum >> (8 * i)));
}

bool takeChecksum(std::vector<uint8_t>& bytes)
{
    if (bytes.size() < checksumSize)
        return false;
    const size_t count = bytes.size() - checksumSize;
    const uint32_t sum = checksum(bytes.data(), count);
    for (size_t i = 0; i < checksumSize; ++i)
        if (bytes[count + i] != uint8_t(sum >> (8 * i)))
            return false;
    bytes.resize(count);
    return true;
}

XString encodeBase58Check(const std::vector<uint8_t>& bytes)
{
    std::vector<uint8_t> checked = bytes;
    appendChecksum(checked);
    return encodeBase58(checked.data(), checked.data() + checked.size());
}

bool decodeBase58Check(const XString& text, std::vector<uint8_t>& out)
{
    out.clear();
    std::vector<uint8_t> bytes;
    if (!decodeBase58(text, bytes) || !takeChecksum(bytes))
        return false;
    out = std::move(bytes);
    return true;
}

} // namespace xstd
