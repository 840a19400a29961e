#include "numbers/halfGcd.h"

#include "common/XStop.h"
#include "numbers/limbRows.h"

#include <algorithm>
#include <utility>

namespace huge {

namespace {

/// Pairs of fewer limbs are taken down by steps of 62 bits. Measured.
constexpr size_t recursiveLimbs = 80;

/// A matrix of steps whose entries are limbs below 2^63.
struct ShortMatrix {
    Limb m00 = 1, m01 = 0, m10 = 0, m11 = 1;
};

/// The upper 128 bits of a number, of which its pair has so many bits.
Limb128 leadingBits(const HugeInteger& x, size_t bits) noexcept
{
    const size_t low = bits - 128;
    const size_t limb = low / 64;
    const unsigned shift = low % 64;
    const auto at = [&](size_t i) { return i < x.size() ? x.limbs()[i] : 0; };
    Limb128 top = (Limb128(at(limb + 1)) << 64 | at(limb)) >> shift;
    if (shift != 0)
        top |= Limb128(at(limb + 2)) << (128 - shift);
    return top;
}

/// larger -= q * smaller with the greatest q that leaves it at 2^65 or above; gives q, 0 for none.
Limb subtractMultiple(Limb128& larger, Limb128 smaller) noexcept
{
    constexpr Limb128 least = Limb128(1) << 65;
    if (larger - smaller < least)
        return 0;
    // Most quotients are small: a division of 128 bits takes far longer than some subtractions.
    Limb q = 1;
    larger -= smaller;
    for (; q < 4 && larger >= smaller; ++q)
        larger -= smaller;
    if (larger >= smaller) {
        const Limb more = Limb(larger / smaller);
        q += more;
        larger -= smaller * more;
    }
    if (larger < least) {
        larger += smaller;
        --q;
    }
    return q;
}

/// The steps that the leading bits of both numbers settle. As both stay above 2^65, no entry
/// reaches 2^63, and what follows below the leading bits makes neither number negative.
ShortMatrix settledSteps(Limb128 x, Limb128 y) noexcept
{
    constexpr Limb128 least = Limb128(1) << 65;
    ShortMatrix m;
    if (x < least || y < least)
        return m;
    for (;;) {
        if (x >= y) {
            const Limb q = subtractMultiple(x, y);
            if (q == 0)
                return m;
            m.m01 += q * m.m00;
            m.m11 += q * m.m10;
        } else {
            const Limb q = subtractMultiple(y, x);
            if (q == 0)
                return m;
            m.m00 += q * m.m01;
            m.m10 += q * m.m11;
        }
    }
}

/// p * a - q * b over n limbs, which is not negative and no longer than that.
HugeInteger difference(Limb p, const HugeInteger& a, Limb q, const HugeInteger& b, size_t n)
{
    HugeInteger result(0, n);
    Limb* r = result.limbs();
    rowMul(a.limbs(), n, p, 0, r);
    rowSubMul(r, b.limbs(), n, q);
    return result;
}

/// p * a + q * b.
HugeInteger sum(Limb p, const HugeInteger& a, Limb q, const HugeInteger& b)
{
    const size_t nA = a.effectiveSize();
    const size_t nB = b.effectiveSize();
    HugeInteger result(0, std::max(nA, nB) + 1);
    Limb* r = result.limbs();
    r[nA] = rowMul(a.limbs(), nA, p, 0, r);
    const Limb carry = rowAddMul(r, b.limbs(), nB, q);
    limbsAddTo(r + nB, result.size() - nB, &carry, 1); // both factors are below 2^63: it fits
    return result;
}

void takeOff(const ShortMatrix& m, HugeInteger& x, HugeInteger& y, size_t n)
{
    x.grow_(n);
    y.grow_(n);
    HugeInteger nextX = difference(m.m11, x, m.m01, y, n);
    y = difference(m.m00, y, m.m10, x, n);
    x = std::move(nextX);
}

void multiply(EuclidMatrix& m, const ShortMatrix& by)
{
    HugeInteger m00 = sum(by.m00, m.m00, by.m10, m.m01);
    m.m01 = sum(by.m01, m.m00, by.m11, m.m01);
    m.m00 = std::move(m00);
    HugeInteger m10 = sum(by.m00, m.m10, by.m10, m.m11);
    m.m11 = sum(by.m01, m.m10, by.m11, m.m11);
    m.m10 = std::move(m10);
}

EuclidMatrix operator*(const EuclidMatrix& a, const EuclidMatrix& b)
{
    EuclidMatrix r;
    r.m00 = (a.m00 * b.m00 + a.m01 * b.m10).trim();
    r.m01 = (a.m00 * b.m01 + a.m01 * b.m11).trim();
    r.m10 = (a.m10 * b.m00 + a.m11 * b.m10).trim();
    r.m11 = (a.m10 * b.m01 + a.m11 * b.m11).trim();
    return r;
}

size_t limbsOfLonger(const HugeInteger& x, const HugeInteger& y)
{
    return std::max(x.effectiveSize(), y.effectiveSize());
}

/// One division that leaves both numbers above 2^(64 s); false where there is none.
bool divideOnce(HugeInteger& x, HugeInteger& y, size_t s, EuclidMatrix& m)
{
    const bool firstIsLonger = x >= y;
    HugeInteger& larger = firstIsLonger ? x : y;
    const HugeInteger& smaller = firstIsLonger ? y : x;
    HugeInteger q;
    HugeInteger rest;
    HugeInteger::divide(larger, smaller, &q, &rest);
    if (rest.effectiveSize() <= s) {
        q -= 1;
        rest += smaller;
    }
    if (q.isZero())
        return false;
    larger = rest.trim();
    q = q.trim();
    if (firstIsLonger) {
        m.m01 = (m.m01 + q * m.m00).trim();
        m.m11 = (m.m11 + q * m.m10).trim();
    } else {
        m.m00 = (m.m00 + q * m.m01).trim();
        m.m10 = (m.m10 + q * m.m11).trim();
    }
    return true;
}

/// Takes the pair down as far as it goes, some 62 bits at a time.
void takeDown(HugeInteger& x, HugeInteger& y, size_t s, EuclidMatrix& m)
{
    for (;;) {
        xstd::XStop::poll();
        if (std::min(x.effectiveSize(), y.effectiveSize()) <= s)
            return;
        const size_t n = limbsOfLonger(x, y);
        ShortMatrix steps;
        if (n >= s + 2 && n >= 3) {
            const size_t bits = std::max(x.bitLength(), y.bitLength());
            steps = settledSteps(leadingBits(x, bits), leadingBits(y, bits));
        }
        if (steps.m01 == 0 && steps.m10 == 0) {
            if (!divideOnce(x, y, s, m))
                return;
        } else {
            takeOff(steps, x, y, n);
            multiply(m, steps);
        }
    }
}

/// The limbs of a from first to last - 1 as a number.
HugeInteger part(const HugeInteger& a, size_t first, size_t last)
{
    const size_t end = std::min(last, a.effectiveSize());
    HugeInteger result(0);
    if (first < end)
        result.fromLimbs_(a.limbs() + first, limbsEffective(a.limbs() + first, end - first), 1);
    return result;
}

/// upper * 2^(64 cut) + lower, which is not negative.
HugeInteger joined(const HugeInteger& upper, size_t cut, const HugeInteger& lower)
{
    const size_t n = upper.effectiveSize();
    HugeInteger result(0, n + cut);
    limbsCopy(result.limbs() + cut, upper.limbs(), n);
    return (result + lower).trim();
}

} // namespace

void EuclidMatrix::takeOff(HugeInteger& x, HugeInteger& y) const
{
    HugeInteger nextX = (m11 * x - m01 * y).trim();
    y = (m00 * y - m10 * x).trim();
    x = std::move(nextX);
}

EuclidMatrix halfGcdAbove(HugeInteger& x, HugeInteger& y, size_t cut)
{
    HugeInteger upperX = part(x, cut, SIZE_MAX);
    HugeInteger upperY = part(y, cut, SIZE_MAX);
    EuclidMatrix m = halfGcd(upperX, upperY);
    if (m.isOne())
        return m;
    HugeInteger lowerX = part(x, 0, cut);
    HugeInteger lowerY = part(y, 0, cut);
    m.takeOff(lowerX, lowerY);
    x = joined(upperX, cut, lowerX);
    y = joined(upperY, cut, lowerY);
    return m;
}

EuclidMatrix halfGcd(HugeInteger& x, HugeInteger& y)
{
    const size_t n = limbsOfLonger(x, y);
    const size_t s = n / 2 + 1;
    EuclidMatrix m;
    if (std::min(x.effectiveSize(), y.effectiveSize()) <= s)
        return m;
    if (n >= recursiveLimbs) {
        m = halfGcdAbove(x, y, n / 2);
        // The second half starts with the upper limbs of what has three quarters of the length, and
        // of them takes as many off as the whole pair has to lose.
        const size_t target = 3 * n / 4 + 1;
        while (limbsOfLonger(x, y) > target) {
            if (!divideOnce(x, y, s, m))
                return m;
        }
        const size_t left = limbsOfLonger(x, y);
        if (left > s + 2)
            m = m * halfGcdAbove(x, y, 2 * s - left + 1);
    }
    takeDown(x, y, s, m);
    return m;
}

} // namespace huge
