#pragma once

#include "numbers/limbs.h"

#include <cstdint>

namespace huge {

/// (a * b) mod m, m not 0.
inline uint64_t mulMod64(uint64_t a, uint64_t b, uint64_t m) noexcept
{
    return uint64_t(Limb128(a) * b % m);
}

/// base to a power modulo m, which is above 1.
inline uint64_t powMod64(uint64_t base, uint64_t exponent, uint64_t m) noexcept
{
    uint64_t power = 1;
    for (base %= m; exponent != 0; exponent >>= 1) {
        if ((exponent & 1) != 0)
            power = mulMod64(power, base, m);
        base = mulMod64(base, base, m);
    }
    return power;
}

/// -1 / m modulo 2^64 for an odd m, by Newton's iteration: m * m = 1 modulo 8, and every step
/// doubles the right bits.
inline Limb negativeInverse64(Limb m) noexcept
{
    Limb inverse = m;
    for (int bits = 3; bits < 64; bits *= 2)
        inverse *= 2 - m * inverse;
    return 0 - inverse;
}

} // namespace huge
