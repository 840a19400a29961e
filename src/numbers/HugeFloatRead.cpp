#include "common/XNumberText.h"
#include "common/XStop.h"
#include "numbers/HugeFloat.h"
#include "numbers/XRadixInt.h"
#include "numbers/XRadixMantissa.h"
#include "numbers/elementary.h"
#include "numbers/limbsQuotient.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>

namespace huge {

namespace {

/// The text of a number without sign, its exponent worked into the place of the point: either the
/// digits stand where they belong, or so many zeros would follow that they are left as a power.
struct PlacedDigits {
    xstd::XString integer;
    xstd::XString fraction;
    int64_t zeros = 0; ///< the value is integer * 10^zeros, without a fraction
};

int64_t exponentOf(const xstd::XNumberText& number)
{
    // Far beyond every float, and far from the end of 64 bits.
    constexpr size_t exponentDigits = 15;
    const size_t first = number.exponent.find_first_not_of('0');
    if (first == std::string::npos)
        return 0;
    if (number.exponent.size() - first > exponentDigits)
        failFloatExponent();
    return std::strtoll(number.exponent.c_str() + first, nullptr, 10);
}

/// The digits of a number that is not 0, for a precision of limbCount limbs.
PlacedDigits placeDigits(const xstd::XNumberText& number, size_t limbCount)
{
    PlacedDigits placed{number.intPart, number.mantissa, 0};
    const int64_t exponent = exponentOf(number);
    if (exponent == 0)
        return placed;
    const size_t moved = size_t(std::min<int64_t>(exponent, int64_t(placed.fraction.size())));
    placed.integer += placed.fraction.substr(0, moved);
    placed.fraction.erase(0, moved);
    placed.integer.erase(0, placed.integer.find_first_not_of('0'));
    const int64_t zeros = exponent - int64_t(moved);
    // With more zeros than this the power of five in them is longer than the mantissa.
    if (zeros > 28 * int64_t(limbCount) + 28)
        placed.zeros = zeros;
    else
        placed.integer.append(size_t(zeros), '0');
    return placed;
}

/// integer * 10^zeros, truncated. The power of five in it is longer than limbCount limbs, and than
/// the integer where zeros is negative, so the exact value lies strictly between two floats of that
/// length.
HugeFloat timesPowerOf10(const HugeInteger& integer, int64_t zeros, size_t limbCount)
{
    constexpr int64_t bitsPer1000Digits = 3321;
    const int64_t places = std::abs(zeros);
    if (places / 1000 * bitsPer1000Digits > std::numeric_limits<int32_t>::max())
        failFloatExponent();
    constexpr int64_t doubtfulBits = 8;
    for (size_t guard = 1;; guard *= 2) {
        xstd::XStop::poll();
        const size_t p = limbCount + guard;
        const HugeFloat digits = HugeFloat(integer).resize(p, false);
        const HugeFloat power = powInt(HugeFloat(5, p), HugeInteger(places));
        const HugeFloat value = zeros < 0 ? digits / power : digits * power;
        const HugeFloat doubt =
            HugeFloat(1).shiftExponent(64 * int64_t(p) - doubtfulBits - int64_t(value.exponent()));
        HugeFloat below = (value - doubt).resize(limbCount, false);
        if (below == (value + doubt).resize(limbCount, false))
            return below.shiftExponent(-zeros);
    }
}

/// The number behind a point with no integer part in front, not 0, truncated. Zeros in front of its
/// first digit cost no bits: it is its digits as a whole number, divided by the power of ten.
HugeFloat readDecimalFraction(const xstd::XString& fraction, size_t limbCount)
{
    const size_t first = fraction.find_first_not_of('0');
    const size_t places = fraction.find_last_not_of('0') + 1;
    XRadixInt10 digits;
    digits.parse_(fraction.substr(first, places - first));
    constexpr size_t maxPower5 = 64 * (LimbPool::limit - 1) / 2322 * 1000;
    if (places > maxPower5) {
        HugeInteger integer;
        integer.fromLimbs_(digits.limbs(), digits.size());
        return timesPowerOf10(integer.trim(), -int64_t(places), limbCount);
    }
    const HugeInteger power = HugeInteger(5).pow(int64_t(places)).trim();
    const size_t nDen = power.size();
    // So many limbs that the quotient is longer than the result.
    const size_t nNum = std::max(digits.size(), nDen + limbCount + 1) + 1;
    const size_t raised = nNum - 1 - digits.size();
    LimbScratch num(nNum);
    limbsZero(num, nNum);
    limbsCopy(num + raised, digits.limbs(), digits.size());
    LimbScratch den(nDen);
    const unsigned shift = unsigned(power.leadingZeroBits());
    limbsShlSmall(power.limbs(), nDen, shift, den);
    limbsShlSmall(num, nNum, shift, num);
    LimbScratch quotient(nNum - nDen); // no digit above: num has a limb to spare
    limbsQuotient(num, nNum, den, nDen, quotient);
    return HugeFloat::fromLimbs_(quotient, nNum - nDen, nullptr, 0, limbCount)
        .shiftExponent(int64_t(64 * raised + places));
}

/// Limbs of the fraction that a result of limbCount limbs needs: zeros in front of the first digit
/// cost some where no integer part stands above.
size_t fractionLimbs(const PlacedDigits& placed, bool hasInteger, size_t limbCount,
                     size_t bitsPer1000Digits)
{
    if (hasInteger)
        return limbCount;
    const size_t zeros = placed.fraction.find_first_not_of('0');
    return zeros == std::string::npos ? limbCount
                                      : limbCount + zeros * bitsPer1000Digits / 64000 + 2;
}

template <class RadixInt, class RadixMantissa>
HugeFloat readPlaced(const PlacedDigits& placed, size_t limbCount, size_t bitsPer1000Digits)
{
    RadixInt integer;
    integer.parse_(placed.integer);
    const size_t nInt = limbsEffective(integer.limbs(), integer.size());
    RadixMantissa fraction;
    fraction.parse_(placed.fraction,
                    fractionLimbs(placed, nInt != 0, limbCount, bitsPer1000Digits));
    if (nInt == 0 && fraction.isEmpty())
        return HugeFloat(0, limbCount);
    return HugeFloat::fromLimbs_(integer.limbs(), nInt, fraction.limbs(), fraction.size(),
                                 limbCount);
}

HugeFloat readDecimal(const xstd::XNumberText& number, size_t limbCount)
{
    const bool isZero =
        (number.intPart + number.mantissa).find_first_not_of('0') == std::string::npos;
    if (isZero)
        return HugeFloat(0, limbCount);
    const PlacedDigits placed = placeDigits(number, limbCount);
    if (placed.integer.find_first_not_of('0') == std::string::npos)
        return readDecimalFraction(placed.fraction, limbCount);
    if (placed.zeros == 0)
        return readPlaced<XRadixInt10, XRadixMantissa10>(placed, limbCount, 3322);
    HugeInteger integer;
    integer.fromText_(placed.integer);
    return timesPowerOf10(integer.trim(), placed.zeros, limbCount);
}

} // namespace

HugeFloat HugeFloat::fromText_(const xstd::XString& text, size_t limbCount)
{
    const xstd::XNumberText number = xstd::XNumberText::parse(text);
    if (number.isEmpty())
        return HugeFloat(0);
    if (limbCount == 0)
        limbCount = size_t(std::max<int64_t>(number.toInt64(), 1));
    if (limbCount >= LimbPool::limit)
        LimbPool::failLimit(); // before the work, not after it
    HugeFloat result;
    const PlacedDigits placed{number.intPart, number.mantissa};
    switch (number.radix) {
    case 2:
        result = readPlaced<XRadixInt2, XRadixMantissa2>(placed, limbCount, 1000);
        break;
    case 8:
        result = readPlaced<XRadixInt8, XRadixMantissa8>(placed, limbCount, 3000);
        break;
    case 16:
        result = readPlaced<XRadixInt16, XRadixMantissa16>(placed, limbCount, 4000);
        break;
    default:
        result = readDecimal(number, limbCount);
    }
    return std::move(result.setSign(number.negative));
}

HugeFloat HugeFloat::fromLimbs_(const Limb* intLimbs, size_t nInt, const Limb* fracLimbs,
                                size_t nFrac, size_t limbCount)
{
    const size_t n = nInt + nFrac;
    HugeFloat result(0, limbCount == 0 ? n : limbCount);
    LimbScratch work(n + 1);
    limbsCopy(work, fracLimbs, nFrac);
    limbsCopy(work + nFrac, intLimbs, nInt);
    const size_t leading = limbsLeadingZeros(work, n);
    if (leading == 64 * n)
        return result;
    limbsShl(work, n, leading);
    const size_t kept = std::min(n, result.limbCount());
    limbsCopy(result.m_limbs + (result.limbCount() - kept), work + (n - kept), kept);
    LimbPool::setExponent(result.m_limbs, int32_t(64 * int64_t(nInt) - int64_t(leading) - 1));
    return result;
}

} // namespace huge
