#pragma once

#include "numbers/HugeInteger.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace huge {

/// What the sieve of one number works with, by the number's length.
struct SieveSizes {
    size_t primes;       // of the base
    size_t halfLength;   // values from -halfLength to halfLength - 1 are sieved at once
    uint32_t largePrime; // what may be left of a value, as a multiple of the base's greatest prime

    static SieveSizes of(size_t bits) noexcept;
};

/// The primes modulo which a number is a square, with the multiplier that gives it the most small
/// ones: the sieve factors the multiple in place of the number.
class SieveBase {
public:
    struct Prime {
        uint32_t p;
        uint32_t root; // of the multiple modulo p
        uint8_t log;   // of p, base 2, rounded
    };

    explicit SieveBase(const HugeInteger& n);

    const SieveSizes& sizes() const noexcept { return m_sizes; }
    /// The number times its multiplier.
    const HugeInteger& multiple() const noexcept { return m_multiple; }
    /// 2 first, then in rising order.
    const std::vector<Prime>& primes() const noexcept { return m_primes; }

private:
    SieveSizes m_sizes;
    HugeInteger m_multiple;
    std::vector<Prime> m_primes;
};

/// a modulo a number of 32 bits that is not 0; a is not negative.
uint32_t remainder32(const HugeInteger& a, uint32_t m) noexcept;

} // namespace huge
