#pragma once

#include "numbers/HugeInteger.h"

#include <cstdint>
#include <cstdio>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace huge {

/// GoogleTest shows numbers with this.
inline void PrintTo(const HugeInteger& value, std::ostream* out)
{
    *out << (value.bitLength() < 4096 ? value.toString() : std::string("a long number"));
}

inline HugeInteger integer(const char* text)
{
    HugeInteger result;
    return result.fromText_(text);
}

/// The text of the std::runtime_error that the call throws.
template <class Call>
std::string failureOf(Call&& call)
{
    try {
        call();
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
    return "no failure";
}

/// splitmix64: the same numbers here and in makeIntegerVectors.py.
class Stream {
public:
    explicit Stream(uint64_t seed) : m_state(seed) {}
    uint64_t next()
    {
        uint64_t z = m_state += 0x9E3779B97F4A7C15u;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }

private:
    uint64_t m_state;
};

/// An operand of the vectors.
inline std::vector<Limb> recipeLimbs(char kind, size_t n, uint64_t seed)
{
    Stream stream(seed);
    std::vector<Limb> limbs(n, kind == 'o' ? ~Limb(0) : 0);
    if (kind == 't')
        limbs.back() = Limb(1) << 63;
    if (kind == 'u')
        limbs.front() = 1;
    for (size_t i = 0; i < n && (kind == 'r' || kind == 'x'); ++i) {
        const uint64_t draw = stream.next();
        const Limb mixture[] = {0, ~Limb(0), 1, Limb(1) << 63, ~Limb(0) - 1, draw};
        limbs[i] = kind == 'r' ? draw : mixture[draw % 6];
    }
    return limbs;
}

/// 64-bit FNV-1a, as the vector files have it.
inline std::string hashOf(const std::string& bytes)
{
    uint64_t h = 0xCBF29CE484222325u;
    for (const char c : bytes)
        h = (h ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(h));
    return text;
}

/// Of the limbs without zeros at the top, and of the sign.
inline std::string hashOf(const Limb* limbs, size_t n, bool negative = false)
{
    std::string bytes;
    for (size_t i = 0; i < n; ++i) {
        for (int shift = 0; shift < 64; shift += 8)
            bytes += char(limbs[i] >> shift);
    }
    while (!bytes.empty() && bytes.back() == 0)
        bytes.pop_back();
    return hashOf(negative ? bytes + "-" : bytes);
}

inline HugeInteger fromVector(const std::vector<Limb>& limbs)
{
    HugeInteger result;
    return result.fromLimbs_(limbs.data(), limbs.size());
}

} // namespace huge
