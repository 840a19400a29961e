#include "numbers/limbs.h"

#include "common/XStop.h"
#include "numbers/limbRows.h"

#include <cassert>
#include <cstring>

namespace huge {

namespace {

/// Rows of at least this many limbs look for a stop of the calculation; shorter ones are over
/// sooner than the look would pay.
constexpr size_t pollLimbs = 256;

/// Sign extension of a number above its top limb.
Limb extensionOf(const Limb* b, size_t nB) noexcept
{
    return nB != 0 && b[nB - 1] >> 63 != 0 ? ~Limb(0) : 0;
}

/// floor((2^128 - 1) / d) - 2^64 for a d whose top bit is set.
Limb reciprocal(Limb d) noexcept
{
    return Limb(((Limb128(~d) << 64) | ~Limb(0)) / d);
}

/// Divides the two limbs high:low by d, whose reciprocal is given; high < d, and d's top bit is
/// set. (Möller and Granlund, Improved division by invariant integers, algorithm 4.)
inline Limb divideTwo(Limb high, Limb low, Limb d, Limb inverse, Limb& remainder) noexcept
{
    // Written in halves: compilers keep a 128-bit sum in memory here.
    const Limb128 product = Limb128(inverse) * high;
    const Limb fraction = Limb(product) + low;
    Limb q = Limb(product >> 64) + high + 1 + (fraction < low);
    Limb r = low - q * d;
    // A branch here would be mispredicted every second time: both forms, then a choice.
    const bool tooLarge = r > fraction;
    const Limb corrected = r + d;
    q -= tooLarge;
    r = tooLarge ? corrected : r;
    if (r >= d) [[unlikely]] {
        ++q;
        r -= d;
    }
    remainder = r;
    return q;
}

/// floor((2^192 - 1) / (d1 * 2^64 + d0)) - 2^64. (The same, algorithm 6.)
Limb reciprocalOfTwo(Limb d1, Limb d0) noexcept
{
    Limb v = reciprocal(d1);
    Limb p = d1 * v + d0;
    if (p < d0) {
        --v;
        if (p >= d1) {
            --v;
            p -= d1;
        }
        p -= d1;
    }
    const Limb128 t = Limb128(v) * d0;
    p += Limb(t >> 64);
    if (p < Limb(t >> 64)) {
        --v;
        if (((Limb128(p) << 64) | Limb(t)) >= ((Limb128(d1) << 64) | d0))
            --v;
    }
    return v;
}

/// Divides n2:n1:n0 by d1:d0, where n2:n1 < d1:d0. Gives the digit, and the remainder in r.
/// (The same, algorithm 5.)
inline Limb divideThree(Limb n2, Limb n1, Limb n0, Limb d1, Limb d0, Limb inverse,
                        Limb128& r) noexcept
{
    const Limb128 d = (Limb128(d1) << 64) | d0;
    const Limb128 t = Limb128(inverse) * n2 + ((Limb128(n2) << 64) | n1);
    Limb q = Limb(t >> 64) + 1;
    const Limb r1 = n1 - (q - 1) * d1;
    r = ((Limb128(r1) << 64) | n0) - Limb128(d0) * (q - 1) - d;
    const bool tooLarge = Limb(r >> 64) >= Limb(t);
    const Limb128 corrected = r + d;
    q -= tooLarge;
    r = tooLarge ? corrected : r;
    if (r >= d) [[unlikely]] {
        ++q;
        r -= d;
    }
    return q;
}

/// r = a + carry; gives the carry out.
Limb carryInto(const Limb* a, size_t n, Limb carry, Limb* r) noexcept
{
    size_t i = 0;
    for (; carry != 0 && i < n; ++i) {
        r[i] = a[i] + 1;
        carry = r[i] == 0;
    }
    if (r != a)
        limbsCopy(r + i, a + i, n - i);
    return carry;
}

/// r = a - borrow, which a has.
void borrowFrom(const Limb* a, size_t n, Limb borrow, Limb* r) noexcept
{
    size_t i = 0;
    for (; borrow != 0 && i < n; ++i) {
        borrow = a[i] == 0;
        r[i] = a[i] - 1;
    }
    if (r != a)
        limbsCopy(r + i, a + i, n - i);
}

/// r = a - b over max(nA, nB) limbs, b not above a.
void subtractLesser(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r) noexcept
{
    const size_t n = nA < nB ? nA : nB;
    const Limb borrow = rowSub(a, b, n, 0, r);
    if (nA > n)
        borrowFrom(a + n, nA - n, borrow, r + n);
    if (nB > n)
        limbsZero(r + n, nB - n);
}

/// limbsDiv with a divisor of one limb.
Limb divideByLimb(Limb* num, size_t nNum, Limb d, Limb* q) noexcept
{
    const Limb inverse = reciprocal(d);
    Limb rest = num[nNum - 1];
    const Limb extra = rest >= d;
    if (extra != 0)
        rest -= d;
    for (size_t i = nNum - 1; i-- > 0;)
        q[i] = divideTwo(rest, num[i], d, inverse, rest);
    limbsZero(num, nNum);
    num[0] = rest;
    return extra;
}

} // namespace

void limbsZero(Limb* p, size_t n) noexcept
{
    if (n != 0)
        std::memset(p, 0, n * sizeof(Limb));
}

void limbsOnes(Limb* p, size_t n) noexcept
{
    limbsFill(p, n, ~Limb(0));
}

void limbsFill(Limb* p, size_t n, Limb v) noexcept
{
    for (size_t i = 0; i < n; ++i)
        p[i] = v;
}

void limbsCopy(Limb* dst, const Limb* src, size_t n) noexcept
{
    if (n != 0)
        std::memmove(dst, src, n * sizeof(Limb));
}

void limbsCopyExtend(Limb* dst, const Limb* src, size_t nDst, size_t nSrc) noexcept
{
    assert(nDst >= nSrc);
    limbsCopy(dst, src, nSrc);
    limbsZero(dst + nSrc, nDst - nSrc);
}

int limbsCompare(const Limb* a, const Limb* b, size_t n) noexcept
{
    while (n-- > 0) {
        if (a[n] != b[n])
            return a[n] < b[n] ? -1 : 1;
    }
    return 0;
}

int limbsCompareLow(const Limb* a, size_t nA, const Limb* b, size_t nB) noexcept
{
    if (nA > nB && !limbsIsZero(a + nB, nA - nB))
        return 1;
    if (nB > nA && !limbsIsZero(b + nA, nB - nA))
        return -1;
    return limbsCompare(a, b, nA < nB ? nA : nB);
}

int limbsCompareTop(const Limb* a, size_t nA, const Limb* b, size_t nB) noexcept
{
    const size_t n = nA < nB ? nA : nB;
    const int order = limbsCompare(a + (nA - n), b + (nB - n), n);
    if (order != 0)
        return order;
    if (!limbsIsZero(a, nA - n))
        return 1;
    return limbsIsZero(b, nB - n) ? 0 : -1;
}

bool limbsIsZero(const Limb* a, size_t n) noexcept
{
    for (size_t i = 0; i < n; ++i) {
        if (a[i] != 0)
            return false;
    }
    return true;
}

bool limbsIsOne(const Limb* a, size_t n) noexcept
{
    return n != 0 && a[0] == 1 && limbsIsZero(a + 1, n - 1);
}

bool limbsIsOnes(const Limb* a, size_t n) noexcept
{
    for (size_t i = 0; i < n; ++i) {
        if (a[i] != ~Limb(0))
            return false;
    }
    return true;
}

size_t limbsTrailingZeros(const Limb* a, size_t n) noexcept
{
    for (size_t i = 0; i < n; ++i) {
        if (a[i] != 0)
            return 64 * i + size_t(__builtin_ctzll(a[i]));
    }
    return 64 * n;
}

size_t limbsLeadingZeros(const Limb* a, size_t n) noexcept
{
    const size_t effective = limbsEffective(a, n);
    const size_t spare = 64 * (n - effective);
    return effective == 0 ? spare : spare + size_t(__builtin_clzll(a[effective - 1]));
}

Limb limbsAdd(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r) noexcept
{
    if (nA < nB)
        return limbsAdd(b, nB, a, nA, r);
    const Limb carry = rowAdd(a, b, nB, 0, r);
    return nA == nB ? carry : carryInto(a + nB, nA - nB, carry, r + nB);
}

Limb limbsAddTo(Limb* a, size_t nA, const Limb* b, size_t nB) noexcept
{
    assert(nA >= nB);
    const Limb carry = rowAdd(a, b, nB, 0, a);
    // The walk above ends at the first limb that takes the carry up: a one-limb addend must not
    // cost a pass over a number of 20,000 limbs.
    return carry == 0 ? 0 : limbsInc(a + nB, nA - nB);
}

Limb limbsSub(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r) noexcept
{
    // The order shows after a limb or two of most pairs; to subtract first and to negate a result
    // that came out negative would be a second pass.
    const bool topsDiffer = nA == nB && nA != 0 && a[nA - 1] != b[nA - 1];
    if (topsDiffer ? a[nA - 1] < b[nA - 1] : limbsCompareLow(a, nA, b, nB) < 0) {
        subtractLesser(b, nB, a, nA, r);
        return 1;
    }
    subtractLesser(a, nA, b, nB, r);
    return 0;
}

Limb limbsSubFrom(Limb* a, size_t nA, const Limb* b, size_t nB) noexcept
{
    assert(nA >= nB);
    if (limbsCompareLow(a, nA, b, nB) < 0) {
        rowSub(b, a, nB, 0, a); // above b's limbs a has none that count
        return 1;
    }
    if (rowSub(a, b, nB, 0, a) != 0)
        limbsDec(a + nB, nA - nB);
    return 0;
}

Limb limbsInc(Limb* a, size_t n) noexcept
{
    for (size_t i = 0; i < n; ++i) {
        if (++a[i] != 0)
            return 0;
    }
    return 1;
}

Limb limbsDec(Limb* a, size_t n) noexcept
{
    for (size_t i = 0; i < n; ++i) {
        if (a[i]-- != 0)
            return 0;
    }
    return 1;
}

void limbsNegate(Limb* a, size_t n) noexcept
{
    limbsNot(a, n, a);
    limbsInc(a, n);
}

void limbsShl(Limb* a, size_t n, size_t bits) noexcept
{
    const size_t skip = bits / 64;
    if (skip >= n) {
        limbsZero(a, n);
        return;
    }
    limbsCopy(a + skip, a, n - skip);
    limbsZero(a, skip);
    limbsShlSmall(a + skip, n - skip, unsigned(bits % 64), a + skip);
}

void limbsShr(Limb* a, size_t n, size_t bits) noexcept
{
    const size_t skip = bits / 64;
    if (skip >= n) {
        limbsZero(a, n);
        return;
    }
    limbsCopy(a, a + skip, n - skip);
    limbsZero(a + (n - skip), skip);
    limbsShrSmall(a, n - skip, unsigned(bits % 64), a);
}

void limbsShlSmall(const Limb* a, size_t n, unsigned bits, Limb* r) noexcept
{
    assert(bits < 64);
    if (bits == 0) {
        limbsCopy(r, a, n);
        return;
    }
    if (n == 0)
        return;
    for (size_t i = n - 1; i > 0; --i)
        r[i] = (a[i] << bits) | (a[i - 1] >> (64 - bits));
    r[0] = a[0] << bits;
}

void limbsShrSmall(const Limb* a, size_t n, unsigned bits, Limb* r) noexcept
{
    assert(bits < 64);
    if (bits == 0) {
        limbsCopy(r, a, n);
        return;
    }
    if (n == 0)
        return;
    for (size_t i = 0; i + 1 < n; ++i)
        r[i] = (a[i] >> bits) | (a[i + 1] << (64 - bits));
    r[n - 1] = a[n - 1] >> bits;
}

void limbsShlGrow(const Limb* a, size_t n, unsigned bits, Limb* r) noexcept
{
    const Limb top = n == 0 || bits == 0 ? 0 : a[n - 1] >> (64 - bits);
    limbsShlSmall(a, n, bits, r);
    r[n] = top;
}

void limbsNot(const Limb* a, size_t n, Limb* r) noexcept
{
    for (size_t i = 0; i < n; ++i)
        r[i] = ~a[i];
}

void limbsAnd(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r) noexcept
{
    assert(nA >= nB);
    const Limb above = extensionOf(b, nB); // before r, which may be b, is written
    for (size_t i = 0; i < nB; ++i)
        r[i] = a[i] & b[i];
    for (size_t i = nB; i < nA; ++i)
        r[i] = a[i] & above;
}

void limbsOr(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r) noexcept
{
    assert(nA >= nB);
    const Limb above = extensionOf(b, nB);
    for (size_t i = 0; i < nB; ++i)
        r[i] = a[i] | b[i];
    for (size_t i = nB; i < nA; ++i)
        r[i] = a[i] | above;
}

void limbsXor(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r) noexcept
{
    assert(nA >= nB);
    const Limb above = extensionOf(b, nB);
    for (size_t i = 0; i < nB; ++i)
        r[i] = a[i] ^ b[i];
    for (size_t i = nB; i < nA; ++i)
        r[i] = a[i] ^ above;
}

void limbsMulLimb(const Limb* a, size_t n, Limb m, Limb* r) noexcept
{
    r[n] = rowMul(a, n, m, 0, r);
}

Limb limbsAddMulLimb(Limb* r, const Limb* a, size_t n, Limb m) noexcept
{
    return rowAddMul(r, a, n, m);
}

Limb limbsSubMulLimb(Limb* r, const Limb* a, size_t n, Limb m) noexcept
{
    return rowSubMul(r, a, n, m);
}

Limb limbsDivLimb(const Limb* a, size_t n, Limb d, Limb* q) noexcept
{
    assert(d != 0);
    if (n == 0)
        return 0;
    if (n == 1) {
        const Limb limb = a[0];
        q[0] = limb / d;
        return limb % d;
    }
    // The division runs on a * 2^shift, formed limb by limb, so that the divisor's top bit is set.
    const unsigned shift = unsigned(__builtin_clzll(d));
    const Limb normal = d << shift;
    const Limb inverse = reciprocal(normal);
    const unsigned rightShift = 63 - shift; // behind a shift by 1: 64 together would be too many
    Limb rest = (a[n - 1] >> 1) >> rightShift;
    for (size_t i = n - 1; i > 0; --i) {
        const Limb limb = (a[i] << shift) | ((a[i - 1] >> 1) >> rightShift);
        q[i] = divideTwo(rest, limb, normal, inverse, rest);
    }
    q[0] = divideTwo(rest, a[0] << shift, normal, inverse, rest);
    return rest >> shift;
}

Limb limbsDiv(Limb* num, size_t nNum, const Limb* den, size_t nDen, Limb* q)
{
    assert(nNum >= nDen && nDen >= 1 && den[nDen - 1] >> 63 != 0);
    if (nDen == 1)
        return divideByLimb(num, nNum, den[0], q);

    Limb* top = num + (nNum - nDen);
    const Limb extra = limbsCompare(top, den, nDen) >= 0;
    if (extra != 0)
        rowSub(top, den, nDen, 0, top);

    // Two limbs of divisor and three of dividend make a trial digit that is right but for one case
    // in 2^64 (Knuth, The Art of Computer Programming 2, 4.3.1, algorithm D).
    const Limb d1 = den[nDen - 1];
    const Limb d0 = den[nDen - 2];
    const Limb inverse = reciprocalOfTwo(d1, d0);
    Limb n2 = num[nNum - 1];
    for (size_t i = nNum - nDen; i-- > 0;) {
        if (nDen >= pollLimbs)
            xstd::XStop::poll();
        Limb* row = num + i; // the digit divides row[0 .. nDen], row[nDen] being n2
        const Limb n1 = row[nDen - 1];
        if (n2 == d1 && n1 == d0) [[unlikely]] {
            // The trial digit would need a limb more.
            q[i] = ~Limb(0);
            rowSubMul(row, den, nDen, ~Limb(0));
            row[nDen] = 0;
            n2 = row[nDen - 1];
            continue;
        }
        Limb128 rest;
        Limb digit = divideThree(n2, n1, row[nDen - 2], d1, d0, inverse, rest);
        // The two top limbs of the difference are known but for what the lower ones borrow.
        const Limb borrow = rowSubMul(row, den, nDen - 2, digit);
        const bool tooLarge = rest < borrow;
        rest -= borrow;
        row[nDen - 2] = Limb(rest);
        row[nDen - 1] = Limb(rest >> 64);
        row[nDen] = 0;
        if (tooLarge) [[unlikely]] {
            --digit;
            rowAdd(row, den, nDen, 0, row);
        }
        q[i] = digit;
        n2 = row[nDen - 1];
    }
    return extra;
}

} // namespace huge
