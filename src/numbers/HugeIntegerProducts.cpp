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

namespace {

/// Two factors that turn a value of so many bits into a first approximation of its root, as binary
/// fractions of 1,024 bits: 0.805... for an odd and 0.569... for an even count of bits. Their
/// quotient is the root of 2, and the approximation is off by less than a fifth.
struct RootFactors {
    static constexpr size_t bits = 1024;
    HugeInteger odd;
    HugeInteger even;
};

const RootFactors& rootFactors()
{
    static const RootFactors factors = [] {
        RootFactors made;
        made.odd.fromText_("0xCE2DABBEC3E9320DCF37F9560C27CD43B8F0BEFDC56498904E2BEFC2529EEA45"
                           "5E0C639D1A3B0F601EB4B8BDAEC583ECF67D841BD6449C92E0CE2FCE1FEE27FE"
                           "255C243947BA040408FC25451443D0313ECDC70F259922F03B4A5970ABEB7E5F"
                           "7ACC311552FD8CF14027AA093EB8ED5BC801F4DAAED4F88F85625F43AFC01028");
        made.even.fromText_("0x91CA4703C5DBC39BD863A9523FA70144D1221404F09D20DFF429B0D4F0FB0740"
                            "DEF52EA2D2A856ED1DF282D05BA5F0EFDC2BE5F08236F9C0A4A0907D49B1B2BC"
                            "B598364D33C0B4C591EFE7BA0D745C1C85EFD4C1FFFCD9D21452315491FF9E12"
                            "EF9DA6A679B563AD63B67A995087C70C176344C9FF9172D3A8528D020CB0B0C0");
        return made;
    }();
    return factors;
}

/// The first approximation of a root, without spare limbs.
HugeInteger firstRoot(const HugeInteger& a)
{
    const size_t bits = a.bitLength();
    const size_t width = limbsOfBits(bits < RootFactors::bits ? bits : RootFactors::bits);
    const bool even = bits % 2 == 0;
    const HugeInteger& factor = even ? rootFactors().even : rootFactors().odd;
    const Limb* top = factor.limbs() + (factor.size() - width);
    const size_t nA = a.effectiveSize();
    const size_t n = nA + width; // may pass the limit of a number, before the shift brings it back
    LimbScratch product(n);
    limbsProduct(a.limbs(), nA, top, width, product);
    limbsShr(product, n, 64 * width + (even ? bits / 2 - 1 : (bits - 1) / 2));
    HugeInteger root;
    root.fromLimbs_(product, limbsEffective(product, n), 1);
    return root;
}

} // namespace

HugeInteger HugeInteger::sqrt() const
{
    if (isNegative())
        throw std::runtime_error("Negative numbers cannot be squared");
    const size_t bits = bitLength();
    if (bits <= 1)
        return HugeInteger(int64_t(bits));
    HugeInteger x = firstRoot(*this);
    for (;;) {
        xstd::XStop::poll();
        const HugeInteger previous = x;
        x = (x + *this / x) >> 1;
        const HugeInteger change = x - previous;
        if (change.bitLength() <= 1)
            return x;
    }
}

} // namespace huge
