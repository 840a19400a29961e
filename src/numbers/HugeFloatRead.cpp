#include "common/XNumberText.h"
#include "common/XStop.h"
#include "numbers/HugeFloat.h"
#include "numbers/XRadixInt.h"
#include "numbers/XRadixMantissa.h"
#include "numbers/elementary.h"

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

/// integer * 10^zeros, truncated. The power of five in it is longer than limbCount limbs, so the
/// exact value lies strictly between two floats of that length.
HugeFloat timesPowerOf10(const HugeInteger& integer, int64_t zeros, size_t limbCount)
{
    constexpr int64_t bitsPer1000Digits = 3321;
    if (zeros / 1000 * bitsPer1000Digits > std::numeric_limits<int32_t>::max())
        failFloatExponent();
    constexpr int64_t doubtfulBits = 8;
    for (size_t guard = 1;; guard *= 2) {
        xstd::XStop::poll();
        const size_t p = limbCount + guard;
        const HugeFloat value =
            HugeFloat(integer).resize(p, false) * powInt(HugeFloat(10, p), HugeInteger(zeros));
        const HugeFloat doubt =
            HugeFloat(1).shiftExponent(64 * int64_t(p) - doubtfulBits - int64_t(value.exponent()));
        HugeFloat below = (value - doubt).resize(limbCount, false);
        if (below == (value + doubt).resize(limbCount, false))
            return below;
    }
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
