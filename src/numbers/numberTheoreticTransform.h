#pragma once

#include "numbers/limbs.h"

#include <cstddef>
#include <vector>

namespace huge {

/// The fast Fourier transform over the integers modulo a prime p below 2^62, with p - 1 divisible
/// by a high power of 2. It takes a polynomial to its remainders modulo the factors x - root of
/// x^n - 1, by halves: x^n - c^2 is (x^(n/2) - c)(x^(n/2) + c). So the product of two polynomials
/// becomes one product for each factor.
///
/// A node of this tree of factors has a number: 0 is the whole, and node b falls into 2 b and
/// 2 b + 1. Node b of its level stands for x^n - rootOf(b)^2, and rootOf(b) is the same at each
/// level, so one table serves every length. Values are kept below 4 p between the steps and are
/// reduced by one conditional subtraction (Harvey, Faster arithmetic for number-theoretic
/// transforms, 2014); the products by a root use its quotient by p (Shoup).
class NumberTheoreticTransform {
public:
    /// A factor to be multiplied with, and floor(value * 2^64 / p) beside it.
    struct Factor {
        Limb value;
        Limb quotient;
    };

    /// The largest count of coefficients of one product.
    static constexpr size_t maxLength = size_t(1) << 19;
    static constexpr size_t kinds = 2;

    /// The transform modulo one of the two primes that products use, with the roots for so many
    /// coefficients; they are made when they are first needed. The product of the primes lies just
    /// below 2^124.
    static const NumberTheoreticTransform& of(size_t kind, size_t length);

    Limb prime() const noexcept { return m_prime; }
    /// The root whose square is the constant of node b; b is below half of
    /// the length asked for.
    const Factor& rootOf(size_t node) const noexcept { return m_roots[node]; }
    Factor factorOf(Limb value) const noexcept;

    /// value * factor modulo p, between 0 and 2 p, for any value.
    Limb multiply(Limb value, const Factor& factor) const noexcept
    {
        return factor.value * value - Limb(Limb128(factor.quotient) * value >> 64) * m_prime;
    }
    /// a * b / 2^64 modulo p, between 0 and 2 p; a and b are below 4 p.
    Limb multiplyReduced(Limb a, Limb b) const noexcept
    {
        a -= a >= m_twice ? m_twice : 0;
        b -= b >= m_twice ? m_twice : 0;
        const Limb128 product = Limb128(a) * b; // below 4 p^2, which is below 2^64 p
        const Limb multiple = Limb(product) * m_negativeInverse;
        return Limb((product + Limb128(multiple) * m_prime) >> 64);
    }
    /// A value below 4 p, reduced to below p.
    Limb reduce(Limb value) const noexcept
    {
        value -= value >= m_twice ? m_twice : 0;
        return value - (value >= m_prime ? m_prime : 0);
    }

    /// n coefficients, a power of 2, of a polynomial that is known modulo the given node become its
    /// remainders. They are below 4 p before and after.
    void forward(Limb* x, size_t n, size_t node) const noexcept;
    /// The way back; the result is n times the polynomial. Values are below 2 p before and after.
    void inverse(Limb* x, size_t n, size_t node) const noexcept;

private:
    NumberTheoreticTransform(Limb prime, Limb rootOfTwoToTwenty);
    void makeRoots(size_t count);
    void forwardByTwo(Limb* x, size_t n, size_t node) const noexcept;
    void forwardByFour(Limb* x, size_t n, size_t node) const noexcept;
    void inverseByTwo(Limb* x, size_t n, size_t node) const noexcept;
    void inverseByFour(Limb* x, size_t n, size_t node) const noexcept;
    const Factor& negatedInverseOf(size_t node) const noexcept;

    Limb m_prime;
    Limb m_rootOfTwoToTwenty;
    Limb m_twice;
    Limb m_negativeInverse; // -1 / p modulo 2^64
    std::vector<Factor> m_roots;
};

} // namespace huge
