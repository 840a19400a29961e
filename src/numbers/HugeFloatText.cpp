#include "common/XTextForms.h"
#include "numbers/HugeFloat.h"
#include "numbers/XRadixInt.h"
#include "numbers/XRadixMantissa.h"
#include "numbers/byteForms.h"
#include "numbers/decimalDigits.h"
#include "numbers/fixedPoint.h"
#include "numbers/radixDigits.h"

#include <algorithm>
#include <string>
#include <vector>

namespace huge {

namespace {

xstd::XString withSign(const HugeFloat& x, xstd::XString text)
{
    if (x.isNegative())
        text.insert(0, "-");
    return text;
}

xstd::XString inParenthesesIfNegative(const xstd::XString& text)
{
    return text[0] == '-' ? xstd::XString("(" + text + ")") : text;
}

/// Whether a number of n limbs with this exponent is told by a power where the rule leaves the
/// count of digits open.
bool isScaled(const XFormatRule& rule, size_t n, int64_t exponent)
{
    const int64_t bound = 64 * int64_t(n) + 32;
    return rule.mantissa < 0 && (exponent > bound || exponent < -bound);
}

// Decimal

void roundByRule(DecimalDigits& number, const XFormatRule& rule)
{
    if (rule.mantissa > 0)
        number.round_(rule.mantissa);
    else if (rule.mantissa == 0 && number.digitAt(1) >= '5')
        number.round_(0);
    else if (rule.mantissa == 0) // what does not round up stays in sight with one digit
        number.truncate_(1);
}

xstd::XString plainDecimal(DecimalDigits number, const XFormatRule& rule)
{
    roundByRule(number, rule);
    xstd::XString text = groupInteger(number.integerPart(), rule);
    const xstd::XString fraction = groupFraction(number.fraction(), rule);
    if (!fraction.empty())
        text += "." + fraction;
    return text;
}

DecimalDigits decimalOf(const HugeFloat& x)
{
    // What has no bits behind the point is an integer, and shown with every digit of it.
    return int64_t(x.exponent()) + 1 >= 64 * int64_t(x.limbCount())
               ? DecimalDigits::fromInteger(x.toInteger())
               : shortestDecimal(x);
}

xstd::XString decimalText(const HugeFloat& x, const XFormatRule& rule)
{
    if (x.isZero())
        return "0" + decimalTail(rule);
    const bool percent = rule.percent != 0;
    const int64_t places = percent ? 2 : 0;
    xstd::XString text;
    // A factor of 100 raises the exponent by 6 or 7.
    if (isScaled(rule, x.limbCount(), int64_t(x.exponent()) + (percent ? 6 : 0))) {
        DecimalDigits number = shortestDecimal(x);
        const int64_t power = number.point - 1 + places;
        number.point = 1;
        text = "10^" + inParenthesesIfNegative(std::to_string(power)) + "*" +
               plainDecimal(std::move(number), rule);
    } else {
        DecimalDigits number = decimalOf(x);
        number.point += places;
        text = plainDecimal(std::move(number), rule);
    }
    if (percent)
        text += "%";
    return withSign(x, std::move(text));
}

// Radix 2, 8 and 16

/// What tells these radixes apart.
struct BitRadix {
    unsigned width; ///< bits of a digit
    const char* prefix;
    xstd::XString (*powerText)(int64_t);
    xstd::XString (*integerText)(const HugeInteger&, const XFormatRule&);
    xstd::XString (*fractionText)(const Limb*, size_t, const XFormatRule&);
};

template <class RadixInt>
xstd::XString integerText(const HugeInteger& value, const XFormatRule& rule)
{
    RadixInt converter;
    converter.setLimbs_(value.limbs(), value.size());
    return converter.print(rule);
}

template <class RadixMantissa>
xstd::XString fractionText(const Limb* limbs, size_t count, const XFormatRule& rule)
{
    RadixMantissa converter;
    converter.setLimbs_(limbs, count);
    return converter.print(rule);
}

const BitRadix& bitRadix(unsigned radix)
{
    static const BitRadix binary{1, "0b", xstd::int64ToBin, integerText<XRadixInt2>,
                                 fractionText<XRadixMantissa2>};
    static const BitRadix octal{3, "0c", xstd::int64ToOct, integerText<XRadixInt8>,
                                fractionText<XRadixMantissa8>};
    static const BitRadix hexadecimal{4, "0x", xstd::int64ToHex, integerText<XRadixInt16>,
                                      fractionText<XRadixMantissa16>};
    return radix == 2 ? binary : radix == 8 ? octal : hexadecimal;
}

/// Limbs that hold the bits behind the point, or as many of them as the rule shows.
size_t fractionLimbs(const HugeFloat& x, const BitRadix& radix, const XFormatRule& rule)
{
    const int64_t bits = 64 * int64_t(x.limbCount()) - x.exponent() - 1;
    const int64_t shown = rule.mantissa > 0 ? int64_t(rule.mantissa) * radix.width : bits;
    return size_t(std::max<int64_t>(std::min(bits, shown) + 63, 0)) / 64;
}

xstd::XString plainBits(const HugeFloat& x, const BitRadix& radix, const XFormatRule& rule)
{
    const size_t n = fractionLimbs(x, radix, rule);
    if (n >= LimbPool::limit)
        LimbPool::failLimit();
    LimbScratch fraction(std::max<size_t>(n, 1));
    fixedFromFloat(x, n, 0, fraction);
    xstd::XString text = radix.prefix + radix.integerText(x.toInteger().abs(), rule);
    const xstd::XString digits = radix.fractionText(fraction, n, rule);
    if (!digits.empty())
        text += "." + digits;
    return withSign(x, std::move(text));
}

/// One digit in front of the point, lower-case, times the prefix's base to a power.
xstd::XString scaledBits(const HugeFloat& x, const BitRadix& radix, const XFormatRule& rule)
{
    const int64_t width = radix.width;
    const size_t n = x.limbCount() + 1; // a limb for the bits that the first digit pushes down
    LimbScratch mantissa(n);
    mantissa[0] = 0;
    limbsCopy(mantissa + 1, x.limbs(), n - 1);
    // The first digit holds the top bits above a whole count of digits; the floor of the quotient
    // counts these digits.
    const int64_t exponent = x.exponent();
    const int64_t power = (exponent >= 0 ? exponent : exponent - width + 1) / width;
    const int64_t topBits = exponent - power * width + 1;
    limbsShr(mantissa, n, size_t(width - topBits));
    const char digit = "0123456789abcdef"[mantissa[n - 1] >> (64 - width)];
    limbsShl(mantissa, n, size_t(width));
    xstd::XString text = radix.prefix;
    text += "10^" + inParenthesesIfNegative(radix.powerText(power)) + "*" + digit;
    const xstd::XString digits = radix.fractionText(mantissa, n, rule);
    if (!digits.empty())
        text += "." + digits;
    return rule.sign != 0 ? withSign(x, std::move(text)) : text;
}

xstd::XString bitsText(const HugeFloat& x, const XFormatRule& rule)
{
    if (x.isZero())
        return "0" + decimalTail(rule);
    const BitRadix& radix = bitRadix(rule.radix);
    return isScaled(rule, x.limbCount(), x.exponent()) ? scaledBits(x, radix, rule)
                                                       : plainBits(x, radix, rule);
}

} // namespace

xstd::XString HugeFloat::fmt(const XFormatRule& rule) const
{
    switch (rule.radix) {
    case 2:
    case 8:
    case 16:
        return bitsText(*this, rule);
    case 58:
    case 64: {
        std::vector<uint8_t> bytes;
        if (!isNull()) {
            appendWord(bytes, headerWord());
            appendLimbs(bytes, m_limbs, limbCount());
        }
        return groupText(rule, baseText(rule.radix, bytes.data(), bytes.size()));
    }
    default:
        return decimalText(*this, rule);
    }
}

} // namespace huge
