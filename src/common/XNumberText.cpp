#include "common/XNumberText.h"

#include "common/XTextForms.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace xstd {

namespace {

bool isDigit(char c, int radix)
{
    if (c >= '0' && c <= '9')
        return c - '0' < radix;
    return radix == 16 && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'));
}

class Reader {
public:
    Reader(const char* text, size_t length) : m_text(text), m_length(length) {}

    XNumberText read()
    {
        skipBlanks();
        if (atEnd())
            return {};
        if (at() == '-') {
            m_number.negative = true;
            ++m_pos;
            skipBlanks();
        }
        readPrefix();
        m_number.intPart += digits(m_number.radix);
        while (readPart())
            continue;
        m_number.size = static_cast<int32_t>(m_pos);
        return std::move(m_number);
    }

private:
    bool atEnd() const { return m_pos >= m_length; }
    char at(size_t ahead = 0) const
    {
        return m_pos + ahead < m_length ? m_text[m_pos + ahead] : '\0';
    }
    void skipBlanks()
    {
        while (!atEnd() && static_cast<uint8_t>(at()) < 33)
            ++m_pos;
    }

    void readPrefix()
    {
        if (at() != '0')
            return;
        switch (at(1)) {
        case 'b':
        case 'B':
            m_number.radix = 2;
            break;
        case 'o':
        case 'O':
            m_number.radix = 8;
            break;
        case 'x':
        case 'X':
            m_number.radix = 16;
            break;
        default:
            return;
        }
        m_pos += 2;
    }

    // Digits, with separators between and behind them.
    XString digits(int radix)
    {
        XString found;
        for (; !atEnd(); ++m_pos) {
            if (isDigit(at(), radix))
                found.push_back(at());
            else if ((at() != '\'' && at() != '_') || found.empty())
                break;
        }
        return found;
    }

    // One part behind the integer digits; false where the number ends.
    bool readPart()
    {
        switch (at()) {
        case '.':
            return readPoint();
        case 'e':
        case 'E':
            if (m_number.radix != 10 || m_hasExponent)
                return false;
            m_hasExponent = true;
            ++m_pos;
            m_number.exponent = digits(10);
            return true;
        case 'i':
        case 'I':
            if (m_number.imag)
                return false;
            m_number.imag = true;
            ++m_pos;
            return true;
        default:
            return false;
        }
    }

    bool readPoint()
    {
        if (at(1) == '.') {
            m_pos += 2;
            m_number.precision = digits(m_number.radix);
            return false;
        }
        const bool ended = !m_number.mantissa.empty() || (m_number.radix == 10 && m_number.imag);
        if (ended || !isDigit(at(1), m_number.radix))
            return false;
        ++m_pos;
        m_number.mantissa = digits(m_number.radix);
        return true;
    }

    const char* m_text;
    size_t m_length;
    size_t m_pos = 0;
    bool m_hasExponent = false;
    XNumberText m_number;
};

const char* prefixOf(int radix)
{
    return radix == 16 ? "0x" : radix == 8 ? "0o" : radix == 2 ? "0b" : "";
}

} // namespace

XNumberText XNumberText::parse(const char* text, size_t length)
{
    return Reader(text, length).read();
}

XString XNumberText::normalText() const
{
    if (isEmpty())
        return {};
    XString text = negative ? "-" : "";
    text += prefixOf(radix) + intPart;
    if (!mantissa.empty())
        text += "." + mantissa;
    if (!exponent.empty())
        text += "e" + exponent;
    if (imag)
        text += "i";
    if (!precision.empty())
        text += ".." + precision;
    return text;
}

int64_t XNumberText::toInt64() const
{
    if (!precision.empty())
        return std::strtoll(precision.c_str(), nullptr, radix); // saturates by itself
    const int64_t nInt = static_cast<int64_t>(intPart.size());
    const int64_t nMantissa = static_cast<int64_t>(mantissa.size());
    switch (radix) {
    case 16:
        return (nInt / 2 + nMantissa / 2 + 7) >> 3;
    case 8:
        return ((nInt + nMantissa) * 3 + 63) >> 6;
    case 2:
        return (nInt + nMantissa + 63) >> 6;
    default:
        return std::llround((static_cast<double>(nInt + nMantissa) * 3.322 + 63) / 64);
    }
}

bool XNumberText::toInteger(int64_t& value) const
{
    if (!mantissa.empty())
        return false;
    uint64_t magnitude = 0;
    const auto shiftIn = [&](int base, int digit) {
        return !__builtin_mul_overflow(magnitude, uint64_t(base), &magnitude) &&
               !__builtin_add_overflow(magnitude, uint64_t(digit), &magnitude);
    };
    for (const char c : intPart) {
        if (!shiftIn(radix, hexDigitValue(c)))
            return false;
    }
    // An exponent that strtoull cannot hold is still more than any that a number survives.
    for (auto zeros = std::strtoull(exponent.c_str(), nullptr, 10); zeros != 0 && magnitude != 0;
         --zeros) {
        if (!shiftIn(10, 0))
            return false;
    }
    constexpr uint64_t largest = std::numeric_limits<int64_t>::max();
    if (magnitude > largest + (negative ? 1 : 0))
        return false;
    value = static_cast<int64_t>(negative ? 0 - magnitude : magnitude);
    return true;
}

double XNumberText::toDouble() const
{
    double value = 0;
    if (radix == 10) {
        const XString text =
            "0" + intPart + "." + mantissa + "0e" + (exponent.empty() ? "0" : exponent);
        const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
        if (read.ec == std::errc::result_out_of_range) {
            const bool large =
                intPart.find_first_not_of('0') != intPart.npos ||
                std::strtoull(exponent.c_str(), nullptr, 10) > mantissa.find_first_not_of('0');
            value = large ? std::numeric_limits<double>::infinity() : 0;
        }
    } else {
        double weight = 1;
        for (const char c : intPart)
            value = value * radix + hexDigitValue(c);
        for (const char c : mantissa)
            value += (weight /= radix) * hexDigitValue(c);
    }
    return negative ? -value : value;
}

} // namespace xstd
