#include "numbers/numberTheory.h"

#include "common/XStop.h"
#include "numbers/limbsProduct.h"
#include "numbers/limbsQuotient.h"
#include "numbers/montgomery.h"
#include "numbers/slidingWindows.h"
#include "numbers/wordModular.h"

#include <stdexcept>
#include <utility>
#include <vector>

namespace huge {

namespace {

/// a modulo m, not negative.
HugeInteger reduced(const HugeInteger& a, const HugeInteger& m)
{
    HugeInteger r = a % m;
    return r.isNegative() ? r + m : r;
}

/// A product of two numbers below m that is too long for a number, modulo m.
HugeInteger longProductModulo(const HugeInteger& a, const HugeInteger& b, const HugeInteger& m)
{
    const size_t nA = a.effectiveSize();
    const size_t nB = b.effectiveSize();
    const size_t nM = m.effectiveSize();
    const unsigned shift = unsigned(__builtin_clzll(m.limbs()[nM - 1]));
    LimbScratch product(nA + nB + 1);
    limbsProduct(a.limbs(), nA, b.limbs(), nB, product);
    limbsShlGrow(product, nA + nB, shift, product);
    LimbScratch den(nM + 1);
    limbsShlGrow(m.limbs(), nM, shift, den);
    LimbScratch quotient(nA + nB + 1 - nM);
    limbsQuotient(product, nA + nB + 1, den, nM, quotient);
    limbsShrSmall(product, nM, shift, product);
    HugeInteger result;
    result.fromLimbs_(product, nM);
    return result;
}

/// base^exponent for a modulus of one limb, which may be even.
Limb powerModuloLimb(Limb base, const HugeInteger& exponent, Limb m)
{
    Limb result = 1 % m;
    const size_t bits = exponent.bitLength();
    for (size_t i = 0; i < bits; ++i) {
        xstd::XStop::poll();
        if (exponent.testBit(i))
            result = mulMod64(result, base, m);
        base = mulMod64(base, base, m);
    }
    return result;
}

HugeInteger powerModuloOdd(const HugeInteger& base, const HugeInteger& exponent,
                           const HugeInteger& m)
{
    const Montgomery ring(m);
    LimbScratch x(ring.size());
    LimbScratch power(ring.size());
    ring.enter(base, x);
    ring.power(x, exponent, power);
    return ring.leave(power);
}

HugeInteger powerModuloEven(const HugeInteger& base, const HugeInteger& exponent,
                            const HugeInteger& m)
{
    const unsigned width = windowWidth(exponent.bitLength());
    std::vector<HugeInteger> odd{base}; // base, base^3, base^5 ...
    const HugeInteger square = mulMod(base, base, m);
    while (odd.size() < size_t(1) << (width - 1))
        odd.push_back(mulMod(odd.back(), square, m));
    HugeInteger result;
    walkWindows(
        exponent, width,
        [&](size_t count) {
            for (; count != 0; --count) {
                xstd::XStop::poll();
                result = mulMod(result, result, m);
            }
        },
        [&](size_t i) { result = result.isNull() ? odd[i] : mulMod(result, odd[i], m); });
    return result;
}

/// base^exponent with 0 <= base < m and an exponent above 0, whose sign is not looked at.
HugeInteger positivePower(const HugeInteger& base, const HugeInteger& exponent,
                          const HugeInteger& m)
{
    if (m.effectiveSize() == 1) {
        const Limb x = base.isZero() ? 0 : base.limbs()[0];
        return HugeInteger::fromUnsigned(powerModuloLimb(x, exponent, m.limbs()[0]));
    }
    return m.isEven() ? powerModuloEven(base, exponent, m) : powerModuloOdd(base, exponent, m);
}

/// A number that is no square modulo p, or 0 where p turns out not to be prime. Half of all
/// numbers are none modulo a prime, so that the draws come to an end.
HugeInteger nonResidue(const HugeInteger& p)
{
    const HugeInteger half = (p - 1) >> 1;
    for (int draws = 0; draws < 128; ++draws) {
        HugeInteger z;
        z = z.randomBits_(16, false) % p;
        const HugeInteger power = z.isZero() ? z : powMod(z, half, p);
        if (power == p - 1)
            return z;
        if (!power.isZero() && !power.isOne())
            break;
    }
    return HugeInteger(0);
}

/// The root of a quadratic residue modulo a prime with p = 1 modulo 8 (Tonelli and Shanks; Cohen,
/// A Course in Computational Algebraic Number Theory, 1.5.1).
HugeInteger tonelliShanks(const HugeInteger& a, const HugeInteger& p)
{
    const HugeInteger even = p - 1;
    const size_t s = even.trailingZeroBits();
    const HugeInteger q = even >> int64_t(s);
    const HugeInteger inverse = invMod(a, p);
    HugeInteger x = powMod(a, (q + 1) >> 1, p);
    HugeInteger z;
    for (size_t i = s - 1; i != 0;) {
        --i;
        HugeInteger exponent;
        exponent.setBit_(i, true);
        const HugeInteger error = mulMod(mulMod(inverse, x, p), x, p);
        if (powMod(error, exponent, p).isOne())
            continue;
        if (z.isNull())
            z = nonResidue(p);
        if (z.isZero())
            return z;
        x = mulMod(x, powMod(z, even >> int64_t(i + 2), p), p);
    }
    return x;
}

/// The root of a quadratic residue modulo a prime with p = 5 modulo 8, or 0.
HugeInteger rootModuloFive(const HugeInteger& a, const HugeInteger& p)
{
    const HugeInteger quarter = (p - 1) >> 2;
    const HugeInteger root = powMod(a, (p + 3) >> 3, p);
    const HugeInteger sign = powMod(a, quarter, p);
    if (sign.isOne())
        return root;
    return sign == p - 1 ? mulMod(root, powMod(HugeInteger(2), quarter, p), p) : HugeInteger(0);
}

} // namespace

void requireModulus(const HugeInteger& m)
{
    if (m.isNegative() || m.isZero())
        throw std::runtime_error("The modulus must be positive");
}

HugeInteger mulMod(const HugeInteger& a, const HugeInteger& b, const HugeInteger& m)
{
    requireModulus(m);
    if (a.effectiveSize() + b.effectiveSize() < LimbPool::limit)
        return a * b % m;
    const HugeInteger x = a % m;
    const HugeInteger y = b % m;
    if (x.effectiveSize() + y.effectiveSize() < LimbPool::limit)
        return x * y % m;
    return std::move(longProductModulo(x, y, m).setNegative_(x.isNegative() != y.isNegative()));
}

HugeInteger powMod(const HugeInteger& a, const HugeInteger& e, const HugeInteger& m)
{
    requireModulus(m);
    if (e.isZero())
        return HugeInteger(1);
    if (e.bitLength() == 1)
        return e.isNegative() ? invMod(a, m) : a;
    HugeInteger power = positivePower(a.abs() % m, e, m);
    power.setNegative_(a.isNegative() && !e.isEven()); // like the remainder of the whole power
    return e.isNegative() ? invMod(power, m) : power;
}

bool isQuadratic(const HugeInteger& a, const HugeInteger& p)
{
    requireModulus(p);
    const HugeInteger x = reduced(a, p);
    return !x.isZero() && powMod(x, (p - 1) >> 1, p).isOne();
}

HugeInteger sqrtMod(const HugeInteger& a, const HugeInteger& p)
{
    if (p.isZero())
        return HugeInteger(0);
    requireModulus(p);
    const HugeInteger x = reduced(a, p);
    if (x.isOne())
        return x;
    if (p.isEven() || !isQuadratic(x, p))
        return HugeInteger(0);
    const Limb low = p.limbs()[0];
    const HugeInteger root = low % 8 == 1   ? tonelliShanks(x, p)
                             : low % 8 == 5 ? rootModuloFive(x, p)
                                            : powMod(x, (p + 1) >> 2, p);
    // Modulo a composite number Euler's criterion and the formulas can be wrong.
    return mulMod(root, root, p) == x ? root : HugeInteger(0);
}

} // namespace huge
