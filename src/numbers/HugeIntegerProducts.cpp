#include "numbers/HugeInteger.h"

#include "common/XStop.h"
#include "numbers/XRadixInt.h"
#include "numbers/limbsProduct.h"
#include "numbers/limbsQuotient.h"

#include <cmath>
#include <stdexcept>

namespace huge {

namespace {

size_t limbsOfBits(size_t bits) noexcept
{
    return (bits + 63) / 64;
}

/// A number of n limbs from scratch limbs. Where n is the limit or more, the limbs above it have to
/// be spare ones.
HugeInteger fromScratch(const Limb* limbs, size_t n)
{
    if (n >= LimbPool::limit) {
        if (limbsEffective(limbs, n) >= LimbPool::limit)
            LimbPool::failLimit();
        n = LimbPool::limit - 1;
    }
    HugeInteger result;
    result.fromLimbs_(limbs, n);
    return result;
}

/// A lower bound of the binary logarithm of a magnitude that is not zero.
double log2Below(const HugeInteger& a)
{
    const size_t n = a.effectiveSize();
    const size_t bits = a.bitLength();
    const unsigned shift = unsigned(64 * n - bits);
    Limb top = a.limbs()[n - 1] << shift;
    if (shift != 0 && n > 1)
        top |= a.limbs()[n - 2] >> (64 - shift);
    // Cut to 53 bits, so that the conversion is exact; the logarithm then errs by a few units of
    // its last place, which the factor takes off.
    const double fraction = std::ldexp(double(top & ~Limb(0x7FF)), -63);
    return (double(bits - 1) + std::log2(fraction)) * (1 - 1e-14);
}

} // namespace

HugeInteger HugeInteger::productOf(const Operand& a, const Operand& b)
{
    const size_t nA = limbsEffective(a.limbs, a.size);
    const size_t nB = limbsEffective(b.limbs, b.size);
    if (nA == 0 || nB == 0)
        return HugeInteger(0);
    const bool negative = a.negative != b.negative;
    // A product has at least nA + nB - 1 limbs, so what cannot fit fails before the work.
    if (nA + nB > LimbPool::limit)
        LimbPool::failLimit();
    if (nA + nB == LimbPool::limit) {
        LimbScratch scratch(nA + nB);
        limbsProduct(a.limbs, nA, b.limbs, nB, scratch);
        return std::move(fromScratch(scratch, nA + nB).setNegative_(negative));
    }
    HugeInteger result = fromBlock(LimbPool::allocate(nA + nB));
    Limb* r = result.m_limbs;
    if (nB == 1)
        limbsMulLimb(a.limbs, nA, b.limbs[0], r);
    else
        limbsProduct(a.limbs, nA, b.limbs, nB, r);
    LimbPool::setNegative(r, negative);
    return result;
}

void HugeInteger::divideAny(const Operand& a, const Operand& b, HugeInteger* quotient,
                            HugeInteger* remainder)
{
    const size_t bitsA = 64 * a.size - limbsLeadingZeros(a.limbs, a.size);
    const size_t bitsB = 64 * b.size - limbsLeadingZeros(b.limbs, b.size);
    const size_t nA = limbsOfBits(bitsA);
    const size_t nB = limbsOfBits(bitsB);
    if (bitsB == 0)
        throw std::runtime_error("div with zero");

    // Both results are made aside: the pointers may name the operands.
    HugeInteger q(0);
    HugeInteger r(0);
    if (bitsA != 0 && bitsA < bitsB) {
        r.fromLimbs_(a.limbs, nA);
    } else if (bitsA != 0 && bitsB < 64) {
        q = fromBlock(LimbPool::allocate(nA));
        r.m_limbs[0] = limbsDivLimb(a.limbs, nA, b.limbs[0], q.m_limbs);
    } else if (bitsA != 0) {
        const unsigned shift = unsigned((64 - bitsB % 64) % 64);
        const size_t nNum = shift == 0 ? nA : limbsOfBits(bitsA + shift) + 1;
        LimbScratch num(nNum + 1);
        LimbScratch den(nB + 1);
        limbsZero(num + nA, nNum + 1 - nA);
        limbsShlGrow(a.limbs, nA, shift, num);
        limbsShlGrow(b.limbs, nB, shift, den);
        LimbScratch digits(nNum - nB + 1);
        digits[nNum - nB] = limbsQuotient(num, nNum, den, nB, digits);
        if (quotient != nullptr)
            q = fromScratch(digits, nNum - nB + 1);
        limbsShrSmall(num, nB, shift, num);
        r.fromLimbs_(num, nB);
    }
    // The signs are read before either result is stored, for the same reason.
    q.setNegative_(a.negative != b.negative);
    r.setNegative_(a.negative);
    if (quotient != nullptr)
        *quotient = std::move(q);
    if (remainder != nullptr)
        *remainder = std::move(r);
}

HugeInteger HugeInteger::quotientOf(const Operand& a, const Operand& b)
{
    HugeInteger quotient;
    divideAny(a, b, &quotient, nullptr);
    return quotient;
}

HugeInteger HugeInteger::remainderOf(const Operand& a, const Operand& b)
{
    HugeInteger remainder;
    divideAny(a, b, nullptr, &remainder);
    return remainder;
}

void HugeInteger::divide(const HugeInteger& a, const HugeInteger& b, HugeInteger* quotient,
                         HugeInteger* remainder)
{
    divideAny(a, b, quotient, remainder);
}

HugeInteger HugeInteger::pow(int64_t exponent) const
{
    if (exponent < 0)
        throw std::runtime_error("Power exponent can't be negative!");
    if (exponent == 0)
        return HugeInteger(1);
    if (exponent == 1)
        return *this;
    const bool odd = (exponent & 1) != 0;
    const size_t bits = bitLength();
    if (bits <= 1) // 0, 1 and -1 stay what they are, however large the exponent
        return HugeInteger(bits == 0 ? 0 : isNegative() && odd ? -1 : 1);
    if (log2Below(*this) * double(exponent) >= double(LimbPool::maxBits))
        LimbPool::failLimit();

    HugeInteger power = abs();
    HugeInteger result(1);
    for (uint64_t rest = uint64_t(exponent);;) {
        if ((rest & 1) != 0)
            result *= power;
        rest >>= 1;
        if (rest == 0) // one more squaring would be for nothing, and may not fit
            return std::move(result.setNegative_(isNegative() && odd));
        power *= power;
    }
}

HugeInteger HugeInteger::pow(const HugeInteger& exponent) const
{
    if (exponent.fitsInt64() || exponent.isNegative())
        return pow(exponent.isNegative() ? int64_t(-1) : exponent.asInt64());
    if (bitLength() > 1)
        LimbPool::failLimit();
    return pow(exponent.isEven() ? int64_t(2) : int64_t(3)); // 0, 1 and -1: parity decides
}

} // namespace huge
