#include "numbers/HugeFloat.h"

#include "numbers/limbRows.h"
#include "numbers/limbsProduct.h"
#include "numbers/limbsQuotient.h"
#include "numbers/workLimbs.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace huge {

namespace {

constexpr Limb topBit = Limb(1) << 63;

/// Gives a number whose mantissa is complete its exponent and sign.
HugeFloat finished(HugeFloat&& result, int64_t exponent, bool negative)
{
    LimbPool::setExponent(result.limbs(), floatExponent(exponent));
    LimbPool::setNegative(result.limbs(), negative);
    return std::move(result);
}

HugeFloat withLimbs(size_t n)
{
    return HugeFloat::fromBlock(LimbPool::allocate(n));
}

HugeFloat finishedLimb(Limb limb, int64_t exponent, bool negative)
{
    HugeFloat result = withLimbs(1);
    result.limbs()[0] = limb;
    return finished(std::move(result), exponent, negative);
}

/// The mantissa at the top of n limbs, shifted right by so many bits; what leaves them is lost.
void placeMantissa(const HugeFloat& x, size_t n, uint64_t shift, Limb* r) noexcept
{
    const size_t size = x.limbCount();
    const size_t limbs = size_t(std::min<uint64_t>(shift / 64, n)); // whole limbs of the shift
    const size_t bits = shift % 64;
    const size_t kept = n - limbs; // limbs that x may reach into
    const size_t low = kept > size ? kept - size : 0;
    const size_t used = kept - low;
    limbsZero(r, low);
    limbsCopy(r + low, x.limbs() + (size - used), used);
    limbsZero(r + kept, limbs);
    if (bits != 0 && kept != 0) {
        // The lowest limb that x fills passes its low bits on to the one below, if there is one.
        const size_t from = low == 0 ? 0 : low - 1;
        limbsShrSmall(r + from, kept - from, unsigned(bits), r + from);
    }
}

/// The sum of one-limb numbers, a's exponent not below b's; sign is a's.
HugeFloat sumOfLimbs(Limb a, Limb b, uint64_t shift, int64_t exponent, bool like, bool negative)
{
    b = shift < 64 ? b >> shift : 0;
    if (like) {
        const Limb sum = a + b;
        return sum < a ? finishedLimb(sum >> 1 | topBit, exponent + 1, negative)
                       : finishedLimb(sum, exponent, negative);
    }
    const bool reversed = a < b;
    const Limb difference = reversed ? b - a : a - b;
    if (difference == 0)
        return HugeFloat(0);
    const int leading = __builtin_clzll(difference);
    return finishedLimb(difference << leading, exponent - leading, negative != reversed);
}

} // namespace

HugeFloat HugeFloat::sumOf(const HugeFloat& a, const HugeFloat& b, bool negateB)
{
    if (b.isZero())
        return a;
    if (a.isZero())
        return negateB ? b.negate() : b;
    if (a.exponent() < b.exponent()) {
        HugeFloat swapped = sumOf(b, a, negateB);
        return negateB ? std::move(swapped.negate_()) : swapped;
    }
    const size_t n = std::max(a.limbCount(), b.limbCount());
    const bool like = a.isNegative() == (b.isNegative() != negateB);
    int64_t exponent = a.exponent();
    const uint64_t shift = uint64_t(exponent - b.exponent());
    if (n == 1)
        return sumOfLimbs(a.m_limbs[0], b.m_limbs[0], shift, exponent, like, a.isNegative());
    WorkLimbs other(n);
    placeMantissa(b, n, shift, other);
    HugeFloat result = withLimbs(n);
    Limb* block = result.limbs();
    placeMantissa(a, n, 0, block);
    bool negative = a.isNegative();
    if (like) {
        if (rowAdd(block, other, n, 0, block) != 0) {
            limbsShrSmall(block, n, 1, block);
            block[n - 1] |= topBit;
            ++exponent;
        }
        return finished(std::move(result), exponent, negative);
    }
    if (rowSub(block, other, n, 0, block) != 0) {
        limbsNegate(block, n);
        negative = !negative;
    }
    const size_t leading = limbsLeadingZeros(block, n);
    if (leading == 64 * n)
        return finished(std::move(result), 0, false);
    if (leading != 0)
        limbsShl(block, n, leading);
    return finished(std::move(result), exponent - int64_t(leading), negative);
}

HugeFloat HugeFloat::productOf(const HugeFloat& a, const HugeFloat& b)
{
    if (a.isZero())
        return a;
    const size_t nA = a.limbCount();
    const size_t nB = b.limbCount();
    const size_t n = std::max(nA, nB);
    if (b.isZero())
        return HugeFloat(0, n);
    const int64_t exponent = int64_t(a.exponent()) + b.exponent();
    const bool negative = a.isNegative() != b.isNegative();
    if (n == 1) {
        const Limb128 product = Limb128(a.m_limbs[0]) * b.m_limbs[0];
        const Limb high = Limb(product >> 64);
        return high >> 63 != 0 ? finishedLimb(high, exponent + 1, negative)
                               : finishedLimb(Limb(product >> 63), exponent, negative);
    }
    const size_t total = nA + nB;
    WorkLimbs product(total);
    limbsProduct(a.m_limbs, nA, b.m_limbs, nB, product);
    HugeFloat result = withLimbs(n);
    Limb* block = result.limbs();
    const Limb* top = product + (total - n);
    if (product[total - 1] >> 63 != 0) {
        limbsCopy(block, top, n);
        return finished(std::move(result), exponent + 1, negative);
    }
    limbsShlSmall(top, n, 1, block);
    block[0] |= top[-1] >> 63;
    return finished(std::move(result), exponent, negative);
}

HugeFloat HugeFloat::quotientOf(const HugeFloat& a, const HugeFloat& b)
{
    if (a.isZero())
        return a;
    if (b.isZero())
        throw std::runtime_error("div by zero");
    const size_t nA = a.limbCount();
    const size_t nB = b.limbCount();
    const size_t n = std::max(nA, nB);
    const int64_t exponent = int64_t(a.exponent()) - b.exponent() - 1;
    const bool negative = a.isNegative() != b.isNegative();
    WorkLimbs rest(n + nB);
    limbsZero(rest, n + nB - nA);
    limbsCopy(rest + (n + nB - nA), a.m_limbs, nA);
    HugeFloat result = withLimbs(n);
    Limb* block = result.limbs();
    if (limbsQuotient(rest, n + nB, b.m_limbs, nB, block) == 0)
        return finished(std::move(result), exponent, negative);
    limbsShrSmall(block, n, 1, block);
    block[n - 1] |= topBit;
    return finished(std::move(result), exponent + 1, negative);
}

HugeFloat operator%(const HugeFloat& a, const HugeFloat& b)
{
    return a - (a / b).trunc() * b;
}

} // namespace huge
