#include "values/HugeVarString.h"

#include "common/XStop.h"
#include "common/XTextForms.h"
#include "numbers/HugeFloat.h"
#include "numbers/HugeImag.h"
#include "numbers/HugeMod.h"
#include "numbers/XFormatRule.h"
#include "numbers/byteForms.h"
#include "values/HugeVariant.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

namespace huge {

namespace {

using xstd::XString;

/// Text without blanks and digit separators.
XString cleaned(const XString& text)
{
    XString kept;
    for (const char c : text) {
        if (uint8_t(c) > 32 && c != '\'')
            kept.push_back(c);
    }
    return kept;
}

bool startsWithPrefix(const XString& text, char letter)
{
    return text.size() >= 2 && text[0] == '0' && (text[1] | 0x20) == letter;
}

int digitValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    c = char(c | 0x20);
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : 99;
}

/// Digits of bitsPerDigit bits behind a prefix, with a point somewhere, as a double: the first 53
/// significant bits count.
double doubleOfDigits(const XString& digits, int bitsPerDigit)
{
    uint64_t mantissa = 0;
    int exponent = 0;
    bool behindPoint = false;
    for (const char c : digits) {
        if (c == '.' && !behindPoint) {
            behindPoint = true;
            continue;
        }
        const int digit = digitValue(c);
        if (digit >= 1 << bitsPerDigit)
            break;
        for (int bit = bitsPerDigit - 1; bit >= 0; --bit) {
            const bool fits = mantissa >> 52 == 0;
            if (fits)
                mantissa = mantissa << 1 | uint64_t(digit >> bit & 1);
            exponent += int(!fits) - int(behindPoint);
        }
    }
    return std::ldexp(double(mantissa), exponent);
}

/// An index from outside, negative ones counting as 0.
size_t clipped(int64_t index)
{
    return index < 0 ? 0 : size_t(index);
}

void requireLength(uint64_t bytes)
{
    if (bytes > HugeVarString::maxBytes)
        throw std::runtime_error("The text is too long");
}

XString repeated(const XString& text, int64_t count)
{
    if (count <= 0 || text.empty())
        return {};
    if (uint64_t(count) > HugeVarString::maxBytes)
        requireLength(uint64_t(count));
    requireLength(text.size() * uint64_t(count));
    XString result;
    result.reserve(text.size() * size_t(count));
    for (int64_t i = 0; i < count; ++i) {
        xstd::XStop::poll();
        result.append(text);
    }
    return result;
}

/// The text in exactly width bytes, by the rule of one of the three members of that kind.
XString padded(const XString& text, const XString& name, int64_t width, char fill)
{
    requireLength(clipped(width));
    const size_t wanted = clipped(width);
    if (text.size() >= wanted)
        return text.left(wanted);
    if (name == "padLeft")
        return text.alignRight(wanted, fill);
    return name == "padRight" ? text.alignLeft(wanted, fill) : text.center(wanted, fill);
}

int compared(const HugeVariant& a, const HugeVariant& b)
{
    return a.toXString().compare(b.toXString());
}

} // namespace

HugeVariant HugeVarString::member(const xstd::XString& name, HugeVariant* args, int argc) const
{
    const bool isPad = name == "padCenter" || name == "padRight" || name == "padLeft";
    if (isPad && argc <= 2) {
        if (argc == 0)
            return m_text;
        const XString fill = argc == 2 ? args[1].toXString() : XString();
        return padded(m_text, name, args[0].asInt64(), fill.empty() ? ' ' : fill[0]);
    }
    if (name == "substr" || name == "left" || name == "right") {
        if (argc == 0)
            return m_text;
        const int64_t count = args[0].asInt64();
        if (name == "left")
            return m_text.left(clipped(count));
        if (name == "right")
            return m_text.right(clipped(count));
        if (count < 0 || size_t(count) > m_text.size())
            throw std::out_of_range("invalid string position");
        return XString(
            m_text.substr(size_t(count), argc >= 2 ? size_t(args[1].asInt64()) : XString::npos));
    }
    if (name == "find" || name == "rfind") {
        if (argc == 0)
            return 0;
        const XString wanted = args[0].toXString();
        return int64_t(name == "find" ? m_text.find(wanted) : m_text.rfind(wanted, 0));
    }
    if (name == "reverse")
        return XString(std::string(m_text.rbegin(), m_text.rend()));
    return HugeVar::member(name, args, argc);
}

HugeVariant HugeVarString::clone() const
{
    return HugeVariant::make<HugeVarString>(m_text);
}

HugeVariant HugeVarString::move()
{
    return HugeVariant::make<HugeVarString>(std::move(m_text));
}

HugeVariant HugeVarString::asType(int typeCode) const
{
    switch (typeCode) {
    case varBool:
        return HugeVariant(!m_text.empty());
    case varInt:
        return std::move(HugeInteger().fromText_(m_text));
    case varFloat:
        return HugeFloat::fromText_(m_text);
    case varImag:
        return HugeImag(HugeFloat::fromText_(m_text), HugeFloat(0));
    case varMod:
        return HugeMod(std::move(HugeInteger().fromText_(m_text)), nullptr);
    case varString:
        return clone();
    default:
        return {};
    }
}

int64_t HugeVarString::asInt64() const
{
    const XString digits = cleaned(m_text);
    if (startsWithPrefix(m_text, 'x'))
        return xstd::hexToInt64(digits);
    if (startsWithPrefix(m_text, 'b'))
        return xstd::binToInt64(digits);
    return std::strtoll(digits.c_str(), nullptr, 10);
}

double HugeVarString::asDouble() const
{
    const XString digits = cleaned(m_text);
    if (startsWithPrefix(m_text, 'x'))
        return doubleOfDigits(digits.substr(2), 4);
    if (startsWithPrefix(m_text, 'b'))
        return doubleOfDigits(digits.substr(2), 1);
    return std::strtod(digits.c_str(), nullptr);
}

HugeVariant HugeVarString::add(const HugeVariant& a, const HugeVariant& b) const
{
    XString text = a.toXString();
    const XString tail = b.toXString();
    requireLength(text.size() + tail.size());
    text.append(tail);
    return text;
}

void HugeVarString::append(const xstd::XString& text)
{
    requireLength(m_text.size() + text.size());
    m_text.append(text);
}

HugeVariant HugeVarString::sub(const HugeVariant& a, const HugeVariant& b) const
{
    return a.toXString().removeSuffix_(b.toXString());
}

HugeVariant HugeVarString::mul(const HugeVariant& a, const HugeVariant& b) const
{
    const bool aIsText = a.final().holds(HugeVarClass::String);
    const bool bIsText = b.final().holds(HugeVarClass::String);
    if (aIsText && bIsText)
        return XString();
    const HugeVariant& text = aIsText ? a : b;
    const HugeVariant& count = aIsText ? b : a;
    return repeated(text.asStr(), count.asInt64());
}

HugeVariant HugeVarString::div(const HugeVariant& a, const HugeVariant& b) const
{
    return a.toXString().appendPath_(b.toXString());
}

bool HugeVarString::equ(const HugeVariant& a, const HugeVariant& b) const
{
    return compared(a, b) == 0;
}

bool HugeVarString::greate(const HugeVariant& a, const HugeVariant& b) const
{
    return compared(a, b) > 0;
}

bool HugeVarString::greate_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return compared(a, b) >= 0;
}

bool HugeVarString::less(const HugeVariant& a, const HugeVariant& b) const
{
    return compared(a, b) < 0;
}

bool HugeVarString::less_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return compared(a, b) <= 0;
}

xstd::XString HugeVarString::hex(int64_t bytes) const
{
    if (m_text.isHexText())
        return m_text;
    XString digits =
        xstd::bytesToHex(reinterpret_cast<const uint8_t*>(m_text.data()), m_text.size());
    digits.upper_();
    if (bytes > 0 && uint64_t(bytes) < digits.size())
        digits = digits.right(2 * size_t(bytes));
    return "0x" + digits;
}

xstd::XString HugeVarString::fmt(const XFormatRule& rule) const
{
    if (m_text.empty())
        return {};
    const auto* bytes = reinterpret_cast<const uint8_t*>(m_text.data());
    switch (rule.radix) {
    case 2:
        return groupText(rule, xstd::bytesToBin(bytes, m_text.size()));
    case 8:
        return groupText(rule, xstd::bytesToOct(bytes, m_text.size()));
    case 16:
        return groupText(rule, xstd::bytesToHex(bytes, m_text.size()));
    case 58:
    case 64:
        return groupText(rule, baseText(rule.radix, bytes, m_text.size()));
    default:
        return m_text;
    }
}

} // namespace huge
