#include "numbers/HugeInteger.h"

#include "common/XStop.h"
#include "numbers/halfGcd.h"
#include "numbers/numberTheory.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace huge {

namespace {

/// The state of Euclid's algorithm: two magnitudes and their signs. A remainder has its dividend's
/// sign, so that every step just swaps the two signs.
struct EuclidPair {
    HugeInteger x;
    HugeInteger y;
    bool negativeX;
    bool negativeY;

    void divideOnce()
    {
        HugeInteger rest = x % y;
        x = std::move(y);
        y = std::move(rest);
        std::swap(negativeX, negativeY);
    }
};

/// Several steps of Euclid in one: x becomes a * x + b * y, y becomes c * x + d * y. In each row
/// one factor is not above 0 and the other not below.
struct EuclidSteps {
    int64_t a = 1, b = 0, c = 0, d = 1;
    bool odd = false;
};

/// 62 bits of a number from the given bit length down.
int64_t leadingBits(const HugeInteger& x, size_t bits) noexcept
{
    const size_t low = bits - 62;
    const size_t limb = low / 64;
    const unsigned shift = low % 64;
    const Limb* limbs = x.limbs();
    Limb value = limb < x.size() ? limbs[limb] >> shift : 0;
    if (shift > 2 && limb + 1 < x.size())
        value |= limbs[limb + 1] << (64 - shift);
    return int64_t(value & ((Limb(1) << 62) - 1));
}

/// The steps that the leading bits of both numbers settle, whatever bits follow (Knuth, The Art of
/// Computer Programming 2, 4.5.2, algorithm L).
EuclidSteps settledSteps(int64_t x, int64_t y) noexcept
{
    EuclidSteps steps;
    while (y + steps.c != 0 && y + steps.d != 0) {
        const int64_t q = (x + steps.a) / (y + steps.c);
        if (q != (x + steps.b) / (y + steps.d))
            break;
        steps.a = std::exchange(steps.c, steps.a - q * steps.c);
        steps.b = std::exchange(steps.d, steps.b - q * steps.d);
        x = std::exchange(y, x - q * y);
        steps.odd = !steps.odd;
    }
    return steps;
}

/// a * x + b * y, which is neither negative nor longer than the n limbs of x and y.
HugeInteger combined(int64_t a, const HugeInteger& x, int64_t b, const HugeInteger& y, size_t n)
{
    const bool addsX = b <= 0;
    const Limb* plus = addsX ? x.limbs() : y.limbs();
    const Limb* minus = addsX ? y.limbs() : x.limbs();
    LimbScratch sum(n + 1);
    limbsMulLimb(plus, n, Limb(addsX ? a : b), sum);
    limbsSubMulLimb(sum, minus, n, Limb(addsX ? -b : -a));
    HugeInteger result;
    result.fromLimbs_(sum, limbsEffective(sum, n), 1);
    return result;
}

/// The steps for numbers of more than two limbs, x the longer one; b is 0 where their leading bits
/// settle none, and a division has to.
EuclidSteps stepsOf(const HugeInteger& x, const HugeInteger& y)
{
    if (y.effectiveSize() + 1 < x.effectiveSize() || x < y)
        return {};
    const size_t bits = x.bitLength();
    return settledSteps(leadingBits(x, bits), leadingBits(y, bits));
}

void take(const EuclidSteps& steps, HugeInteger& x, HugeInteger& y)
{
    const size_t n = x.effectiveSize();
    y.grow_(n);
    HugeInteger nextX = combined(steps.a, x, steps.b, y, n);
    y = combined(steps.c, x, steps.d, y, n);
    x = std::move(nextX);
}

/// One round on numbers of more than two limbs.
void shorten(EuclidPair& pair)
{
    const EuclidSteps steps = stepsOf(pair.x, pair.y);
    if (steps.b == 0) {
        pair.divideOnce();
        return;
    }
    take(steps, pair.x, pair.y);
    if (steps.odd)
        std::swap(pair.negativeX, pair.negativeY);
}

[[noreturn]] void failNoInverse()
{
    throw std::runtime_error("There is no inverse");
}

/// The inverse of a modulo m, 0 < a < m. The cofactors' signs alternate, so that their magnitudes
/// are enough; none is above m.
Limb inverseModuloLimb(Limb a, Limb m)
{
    Limb x = m, y = a, u = 0, v = 1;
    bool odd = false;
    while (y != 0) {
        const Limb q = x / y;
        x = std::exchange(y, x - q * y);
        u = std::exchange(v, u + q * v);
        odd = !odd;
    }
    if (x != 1)
        failNoInverse();
    return odd ? u : m - u;
}

void divideOnce(HugeInteger& x, HugeInteger& y, HugeInteger& u, HugeInteger& v)
{
    HugeInteger quotient;
    HugeInteger::divide(x, y, &quotient, &x);
    x.swap(y);
    u -= quotient * v;
    u.swap(v);
}

/// The inverse of a modulo m, 0 < a < m, by Euclid's algorithm with the factor of a carried along:
/// x = u * a and y = v * a modulo m. The signs of u and v differ, so that a step's two products
/// add up and neither is longer than m.
HugeInteger inverseModulo(const HugeInteger& a, const HugeInteger& m)
{
    HugeInteger x = m, y = a, u(0), v(1);
    while (std::min(x.effectiveSize(), y.effectiveSize()) >= halfGcdLimbs) {
        const size_t n = std::max(x.effectiveSize(), y.effectiveSize());
        const EuclidMatrix steps = halfGcdAbove(x, y, n / 2);
        if (steps.isOne())
            divideOnce(x, y, u, v);
        else
            steps.takeOff(u, v);
    }
    while (!y.isZero()) {
        xstd::XStop::poll();
        const EuclidSteps steps = x.effectiveSize() > 2 ? stepsOf(x, y) : EuclidSteps();
        if (steps.b != 0) {
            take(steps, x, y);
            HugeInteger nextU = u * steps.a + v * steps.b;
            v = (u * steps.c + v * steps.d).trim();
            u = nextU.trim();
        } else {
            divideOnce(x, y, u, v);
        }
    }
    if (!x.isOne())
        failNoInverse();
    return u.isNegative() ? u + m : u;
}

/// Takes steps of Euclid's algorithm until one number is short; their order does not count.
void takeDown(HugeInteger& x, HugeInteger& y)
{
    while (std::min(x.effectiveSize(), y.effectiveSize()) >= halfGcdLimbs) {
        const size_t n = std::max(x.effectiveSize(), y.effectiveSize());
        if (halfGcdAbove(x, y, 2 * n / 3).isOne()) {
            x = x % y;
            x.swap(y);
        }
    }
}

uint64_t lowLimb(const HugeInteger& x) noexcept
{
    return x.size() == 0 ? 0 : x.limbs()[0];
}

} // namespace

HugeInteger gcd(const HugeInteger& a, const HugeInteger& b)
{
    EuclidPair pair{a.abs(), b.abs(), a.isNegative(), b.isNegative()};
    if (pair.negativeX == pair.negativeY) // else the sign tells the count of divisions
        takeDown(pair.x, pair.y);
    while (!pair.y.isZero() && (pair.x.effectiveSize() > 1 || pair.y.effectiveSize() > 1)) {
        xstd::XStop::poll();
        if (pair.x.effectiveSize() > 2)
            shorten(pair);
        else
            pair.divideOnce();
    }
    if (pair.y.isZero())
        return std::move(pair.x.setNegative_(pair.negativeX));
    uint64_t x = lowLimb(pair.x);
    uint64_t y = lowLimb(pair.y);
    while (y != 0) {
        x = std::exchange(y, x % y);
        std::swap(pair.negativeX, pair.negativeY);
    }
    return std::move(HugeInteger::fromUnsigned(x).setNegative_(pair.negativeX));
}

HugeInteger lcm(const HugeInteger& a, const HugeInteger& b)
{
    // The division goes first: the product of both may pass the limit where the multiple does not.
    return a / gcd(a, b) * b;
}

HugeInteger invMod(const HugeInteger& a, const HugeInteger& m)
{
    requireModulus(m);
    if (m.isOne())
        return HugeInteger(0);
    HugeInteger x = a.isNegative() || a >= m ? a % m : a;
    if (x.isNegative())
        x += m;
    if (x.isZero())
        failNoInverse();
    const size_t size = std::max(x.size(), m.size());
    HugeInteger inverse =
        m.effectiveSize() == 1
            ? HugeInteger::fromUnsigned(inverseModuloLimb(x.limbs()[0], m.limbs()[0]))
            : inverseModulo(x, m);
    return std::move(inverse.setSize_(size, true));
}

} // namespace huge
