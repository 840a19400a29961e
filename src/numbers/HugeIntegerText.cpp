#include "numbers/HugeInteger.h"

#include "common/XNumberText.h"
#include "numbers/XRadixInt.h"
#include "numbers/byteForms.h"

#include <memory>
#include <string>
#include <vector>

namespace huge {

namespace {

std::unique_ptr<XRadixInt> makeRadixInt(unsigned radix)
{
    switch (radix) {
    case 2:
        return std::make_unique<XRadixInt2>();
    case 8:
        return std::make_unique<XRadixInt8>();
    case 16:
        return std::make_unique<XRadixInt16>();
    default:
        return std::make_unique<XRadixInt10>();
    }
}

const char* prefixOf(unsigned radix) noexcept
{
    return radix == 2 ? "0b" : radix == 8 ? "0c" : "0x";
}

xstd::XString binaryText(const HugeInteger& value, const XFormatRule& rule)
{
    if (value.isZero())
        return value.isNull() ? xstd::XString("0") : xstd::XString("0" + decimalTail(rule));
    const std::unique_ptr<XRadixInt> converter = makeRadixInt(rule.radix);
    converter->setLimbs_(value.limbs(), value.size());
    const char* minus = value.isNegative() && rule.sign != 0 ? "-" : "";
    return minus + (prefixOf(rule.radix) + converter->print(rule)) + decimalTail(rule);
}

xstd::XString decimalText(const HugeInteger& value, const XFormatRule& rule)
{
    if (value.isNull())
        return "0";
    XRadixInt10 converter;
    converter.setLimbs_(value.limbs(), value.size());
    xstd::XString digits = converter.digits();
    const bool zero = digits.empty();
    if (rule.percent != 0 && !zero)
        digits += "00"; // a product could pass the limit
    xstd::XString text = converter.group(digits, rule) + decimalTail(rule);
    if (value.isNegative() && !zero)
        text.insert(0, "-");
    if (rule.percent != 0)
        text += "%";
    return text;
}

xstd::XString bytesText(const HugeInteger& value, const XFormatRule& rule)
{
    std::vector<uint8_t> bytes;
    appendLimbs(bytes, value.limbs(), value.size());
    return groupText(rule, baseText(rule.radix, bytes.data(), bytes.size()));
}

/// The digits of a decimal literal's integer part once its exponent has moved the point.
xstd::XString shiftedDigits(const xstd::XNumberText& number)
{
    if (number.exponent.empty())
        return number.intPart;
    const std::string significant = number.intPart + number.mantissa;
    const size_t first = significant.find_first_not_of('0');
    const size_t exponentStart = number.exponent.find_first_not_of('0');
    if (first == std::string::npos || exponentStart == std::string::npos)
        return number.intPart; // zero, or times 1
    // With more digits the exponent is beyond any number, and beyond an integer of ours too. A
    // fraction with that many zeros in front cannot be typed.
    constexpr size_t exponentDigits = 15;
    if (number.exponent.size() - exponentStart > exponentDigits)
        LimbPool::failLimit();
    const size_t exponent = size_t(std::stoull(number.exponent));
    const size_t end = number.intPart.size() + exponent; // of the integer's digits
    if (end > first && end - first > LimbPool::maxDigits)
        LimbPool::failLimit();
    std::string digits = significant.substr(first, end > first ? end - first : 0);
    if (end > first)
        digits.resize(end - first, '0');
    return digits;
}

} // namespace

xstd::XString HugeInteger::fmt(const XFormatRule& rule) const
{
    switch (rule.radix) {
    case 2:
    case 8:
    case 16:
        return binaryText(*this, rule);
    case 58:
    case 64:
        return bytesText(*this, rule);
    default:
        return decimalText(*this, rule);
    }
}

HugeInteger& HugeInteger::fromText_(const xstd::XString& text)
{
    const xstd::XNumberText number = xstd::XNumberText::parse(text);
    if (number.isEmpty())
        return *this = 0;
    const std::unique_ptr<XRadixInt> converter = makeRadixInt(unsigned(number.radix));
    converter->parse_(number.radix == 10 ? shiftedDigits(number) : number.intPart);
    if (converter->isEmpty())
        return *this = 0;
    LimbPool::release(std::exchange(m_limbs, converter->takeLimbs()));
    return setNegative_(number.negative);
}

} // namespace huge
