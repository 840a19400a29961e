#pragma once

#include "numbers/HugeInteger.h"
#include "numbers/LimbPool.h"

#include <cstddef>

namespace huge {

/// Arithmetic modulo one odd modulus above 1 of n limbs. A number x stands as x * 2^(64 n) mod m,
/// always reduced and n limbs long, so that a product is reduced by multiplications alone
/// (Montgomery, Modular multiplication without trial division). What takes limb arrays allocates
/// nothing, but for power; results may take an operand's place.
class Montgomery {
public:
    explicit Montgomery(const HugeInteger& modulus);

    /// Limbs of the modulus and of every number in this form.
    size_t size() const noexcept { return m_size; }
    const Limb* modulus() const noexcept { return m_modulus; }
    /// The number 1.
    const Limb* one() const noexcept { return m_one; }

    /// Brings an integer, of any size and sign, into this form.
    void enter(const HugeInteger& a, Limb* r) const;
    /// Takes a number out again, on n limbs.
    HugeInteger leave(const Limb* a) const;

    void multiply(const Limb* a, const Limb* b, Limb* r) const;
    void add(const Limb* a, const Limb* b, Limb* r) const noexcept;
    void subtract(const Limb* a, const Limb* b, Limb* r) const noexcept;
    /// base to a power that is not 0, whose sign is not looked at.
    void power(const Limb* base, const HugeInteger& exponent, Limb* r) const;

    bool isZero(const Limb* a) const noexcept { return limbsIsZero(a, m_size); }
    bool isEqual(const Limb* a, const Limb* b) const noexcept
    {
        return limbsCompare(a, b, m_size) == 0;
    }

private:
    void reduceProduct(Limb* r) const;

    size_t m_size;
    mutable LimbScratch m_limbs; // all the arrays that follow
    Limb* m_modulus;
    Limb* m_one;
    Limb* m_square;      // of the radix's power
    Limb* m_longInverse; // -1 / modulus on n limbs, where the modulus is long
    Limb* m_product;     // of 2 n limbs
    Limb* m_area;
    Limb m_negativeInverse; // of the modulus, modulo 2^64
};

} // namespace huge
