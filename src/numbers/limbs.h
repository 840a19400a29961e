#pragma once

#include <cstddef>
#include <cstdint>

namespace huge {

/// One digit of a number in radix 2^64. Arrays of limbs run from the least significant up.
using Limb = uint64_t;
__extension__ typedef unsigned __int128 Limb128;

constexpr size_t limbBits = 64;

// The kernels below work on raw arrays: none allocates, and only limbsDiv can be left early, by a
// stop of the calculation. An operand may be the result's own array unless it says otherwise, but
// arrays never overlap in part.

/// 0 for 0, else the place of the highest set bit, counted from 1.
inline unsigned bitLength64(uint64_t x) noexcept
{
    return x == 0 ? 0 : 64 - unsigned(__builtin_clzll(x));
}

void limbsZero(Limb* p, size_t n) noexcept;
void limbsOnes(Limb* p, size_t n) noexcept;
void limbsFill(Limb* p, size_t n, Limb v) noexcept;
void limbsCopy(Limb* dst, const Limb* src, size_t n) noexcept;
/// Copies nSrc limbs and clears those of dst above them; nDst >= nSrc.
void limbsCopyExtend(Limb* dst, const Limb* src, size_t nDst, size_t nSrc) noexcept;

/// -1, 0 or 1 as a is below, equal to or above b.
int limbsCompare(const Limb* a, const Limb* b, size_t n) noexcept;
/// The same for integers of unequal length: limb 0 of both has the same weight.
int limbsCompareLow(const Limb* a, size_t nA, const Limb* b, size_t nB) noexcept;
/// The same for fractions of unequal length: the top limbs of both have the same weight.
int limbsCompareTop(const Limb* a, size_t nA, const Limb* b, size_t nB) noexcept;
bool limbsIsZero(const Limb* a, size_t n) noexcept;
bool limbsIsOne(const Limb* a, size_t n) noexcept;
bool limbsIsOnes(const Limb* a, size_t n) noexcept;

/// Limbs up to and including the highest that is not 0.
inline size_t limbsEffective(const Limb* a, size_t n) noexcept
{
    while (n != 0 && a[n - 1] == 0)
        --n;
    return n;
}
/// Zero bits at the low or the high end; 64 * n for an array of zeros.
size_t limbsTrailingZeros(const Limb* a, size_t n) noexcept;
size_t limbsLeadingZeros(const Limb* a, size_t n) noexcept;

/// r = a + b over max(nA, nB) limbs; gives the carry out of the top.
Limb limbsAdd(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r) noexcept;
/// a += b in place; nA >= nB. Gives the carry out of a's top limb.
Limb limbsAddTo(Limb* a, size_t nA, const Limb* b, size_t nB) noexcept;
/// r = |a - b| over max(nA, nB) limbs; gives 1 if b is above a, else 0.
Limb limbsSub(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r) noexcept;
/// a = |a - b| in place; nA >= nB. Gives 1 if b is above a, else 0.
Limb limbsSubFrom(Limb* a, size_t nA, const Limb* b, size_t nB) noexcept;
/// Adds or subtracts 1 in place; gives the carry or borrow out of the top.
Limb limbsInc(Limb* a, size_t n) noexcept;
Limb limbsDec(Limb* a, size_t n) noexcept;
/// a = 2^(64 * n) - a, in place.
void limbsNegate(Limb* a, size_t n) noexcept;

/// Shifts in place inside n limbs by any count; what leaves the array is lost.
void limbsShl(Limb* a, size_t n, size_t bits) noexcept;
void limbsShr(Limb* a, size_t n, size_t bits) noexcept;
/// Shifts by less than 64 bits into r, which may be a.
void limbsShlSmall(const Limb* a, size_t n, unsigned bits, Limb* r) noexcept;
void limbsShrSmall(const Limb* a, size_t n, unsigned bits, Limb* r) noexcept;
/// Shifts left by less than 64 bits into the n + 1 limbs of r: nothing is lost.
void limbsShlGrow(const Limb* a, size_t n, unsigned bits, Limb* r) noexcept;

void limbsNot(const Limb* a, size_t n, Limb* r) noexcept;
/// Limb-wise over nA limbs, nA >= nB. Above its end b goes on with copies of its top bit.
void limbsAnd(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r) noexcept;
void limbsOr(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r) noexcept;
void limbsXor(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r) noexcept;

/// r = a * m over n + 1 limbs. r may be a if that has the room.
void limbsMulLimb(const Limb* a, size_t n, Limb m, Limb* r) noexcept;
/// r += a * m over n limbs; gives the limb that belongs above.
Limb limbsAddMulLimb(Limb* r, const Limb* a, size_t n, Limb m) noexcept;
/// r -= a * m over n limbs; gives the limb to be taken off above.
Limb limbsSubMulLimb(Limb* r, const Limb* a, size_t n, Limb m) noexcept;

/// q = a / d; gives the remainder. q may be a; d is not 0.
Limb limbsDivLimb(const Limb* a, size_t n, Limb d, Limb* q) noexcept;
/// Divides num by den, whose top bit is set; nNum >= nDen >= 1. q gets nNum - nDen limbs, the
/// result is the digit above them, 0 or 1. The remainder stays in the low nDen limbs of num, the
/// limbs above it are cleared. Looks for a stop of the calculation at every row of a long division.
Limb limbsDiv(Limb* num, size_t nNum, const Limb* den, size_t nDen, Limb* q);

} // namespace huge
