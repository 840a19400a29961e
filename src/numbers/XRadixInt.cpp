#include "numbers/XRadixInt.h"

#include "common/XStop.h"
#include "numbers/HugeInteger.h"
#include "numbers/radixDigits.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace huge {

namespace {

// The most decimal digits that a limb holds, and 10 to their power.
constexpr size_t decimalStep = 19;
constexpr Limb decimalUnit = 10'000'000'000'000'000'000u;

/// Numbers of at most so many limbs are printed in passes over their limbs.
constexpr size_t shortLimbs = 30;

/// Writes a number's digits in front of end, where zeros stand for all of its places.
void writeShortDecimal(const Limb* limbs, size_t n, char* end)
{
    LimbScratch rest(n);
    limbsCopy(rest, limbs, n);
    n = limbsEffective(rest, n);
    for (; n > 0; end -= decimalStep) {
        Limb group = limbsDivLimb(rest, n, decimalUnit, rest);
        n = limbsEffective(rest, n);
        for (char* place = end; group != 0; group /= 10)
            *--place = char('0' + group % 10);
    }
}

/// The same for a value below the square of units[level - 1]; units[k] is 10^(19 * 2^k). Splitting
/// the number at half of its digits makes long divisions of what would be a pass over all limbs for
/// every 19 digits, and a long division has the faster inner loop by far.
void writeLongDecimal(const HugeInteger& value, const std::vector<HugeInteger>& units, size_t level,
                      char* end)
{
    xstd::XStop::poll();
    if (level == 0 || value.effectiveSize() <= shortLimbs) {
        writeShortDecimal(value.limbs(), value.size(), end);
        return;
    }
    HugeInteger high;
    HugeInteger low;
    HugeInteger::divide(value, units[level - 1], &high, &low);
    writeLongDecimal(low, units, level - 1, end);
    writeLongDecimal(high, units, level - 1, end - (decimalStep << (level - 1)));
}

std::string longDecimal(const HugeInteger& value)
{
    std::vector<HugeInteger> units;
    size_t width = decimalStep;
    for (HugeInteger unit = HugeInteger::fromUnsigned(decimalUnit);; unit *= unit, width *= 2) {
        units.push_back(unit);
        // Squared once more it would be longer than the value.
        if (2 * unit.effectiveSize() > value.size() + 1)
            break;
    }
    std::string text(2 * width, '0');
    writeLongDecimal(value, units, units.size(), text.data() + text.size());
    return text;
}

Limb decimalValue(const char* digits, size_t count)
{
    Limb value = 0;
    for (size_t i = 0; i < count; ++i)
        value = value * 10 + Limb(digits[i] - '0');
    return value;
}

} // namespace

XRadixInt::~XRadixInt()
{
    LimbPool::release(m_limbs);
}

bool XRadixInt::isEmpty() const
{
    return size() == 0;
}

XRadixInt& XRadixInt::clear_()
{
    LimbPool::release(std::exchange(m_limbs, nullptr));
    m_neg = 0;
    return *this;
}

size_t XRadixInt::bitLength() const
{
    return 64 * size() - limbsLeadingZeros(m_limbs, size());
}

XRadixInt& XRadixInt::setInt_(uint64_t value)
{
    m_limbs = LimbPool::resize(m_limbs, 1, false);
    m_limbs[0] = value;
    m_neg = 0;
    return *this;
}

XRadixInt& XRadixInt::setLimbs_(const Limb* source, size_t count)
{
    m_limbs = LimbPool::resize(m_limbs, count, false);
    limbsCopy(m_limbs, source, count);
    return *this;
}

void XRadixInt::copyTo(Limb* target, size_t count, bool fromTop) const
{
    const size_t n = std::min(count, size());
    const size_t skip = fromTop ? size() - n : 0;
    limbsCopyExtend(target, m_limbs + skip, count, n);
}

xstd::XString XRadixInt::print(const XFormatRule& rule) const
{
    return group(digits(), rule);
}

xstd::XString XRadixInt::group(const xstd::XString& digits, const XFormatRule& rule) const
{
    return groupInteger(digits, rule);
}

Limb* XRadixInt::takeLimbs() noexcept
{
    m_neg = 0;
    return std::exchange(m_limbs, nullptr);
}

void XRadixInt::makeCleared(size_t count)
{
    m_limbs = LimbPool::resize(m_limbs, count, false);
    limbsZero(m_limbs, count);
}

size_t XRadixInt::skipSignAndPrefix(const xstd::XString& text, char mark)
{
    size_t pos = 0;
    m_neg = 0;
    if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
        m_neg = text[0] == '-';
        pos = 1;
    }
    if (mark != 0 && pos + 1 < text.size() && text[pos] == '0' && (text[pos + 1] | 0x20) == mark)
        pos += 2;
    return pos;
}

XRadixInt2& XRadixInt2::parse_(const xstd::XString& text)
{
    const size_t begin = skipSignAndPrefix(text, 'b');
    if (begin == text.size()) {
        clear_();
        return *this;
    }
    makeCleared((text.size() - begin + 63) / 64);
    packDigits(text, begin, 1, m_limbs);
    return *this;
}

xstd::XString XRadixInt2::digits() const
{
    return unpackDigits(m_limbs, size(), bitLength(), 1);
}

XRadixInt8& XRadixInt8::parse_(const xstd::XString& text)
{
    const size_t begin = skipSignAndPrefix(text, 'c');
    if (begin == text.size()) {
        clear_();
        return *this;
    }
    makeCleared(((text.size() - begin) * 3 + 63) / 64);
    packDigits(text, begin, 3, m_limbs);
    return *this;
}

xstd::XString XRadixInt8::digits() const
{
    return unpackDigits(m_limbs, size(), bitLength(), 3);
}

XRadixInt16& XRadixInt16::parse_(const xstd::XString& text)
{
    const size_t begin = skipSignAndPrefix(text, 'x');
    if (begin == text.size()) {
        clear_();
        return *this;
    }
    makeCleared((text.size() - begin + 15) / 16);
    packDigits(text, begin, 4, m_limbs);
    return *this;
}

xstd::XString XRadixInt16::digits() const
{
    return unpackDigits(m_limbs, size(), bitLength(), 4);
}

XRadixInt10& XRadixInt10::parse_(const xstd::XString& text)
{
    size_t pos = skipSignAndPrefix(text, 0);
    const size_t end = text.size();
    while (pos < end && text[pos] == '0')
        ++pos;
    if (end - pos > LimbPool::maxDigits)
        LimbPool::failLimit(); // before the work, not after it
    // 10^19 is below 2^64: every step needs a limb at most.
    const size_t steps = (end - pos + decimalStep - 1) / decimalStep;
    LimbScratch acc(steps + 1);
    size_t n = 0;
    size_t count = (end - pos) % decimalStep; // the first step takes the odd digits
    if (count == 0)
        count = decimalStep;
    for (; pos < end; pos += count, count = decimalStep) {
        xstd::XStop::poll();
        if (n >= LimbPool::limit)
            LimbPool::failLimit();
        limbsMulLimb(acc, n, decimalUnit, acc);
        const Limb low = decimalValue(text.data() + pos, count);
        limbsAddTo(acc, n + 1, &low, 1);
        n = limbsEffective(acc, n + 1);
    }
    if (n == 0) {
        LimbPool::release(std::exchange(m_limbs, nullptr));
        return *this;
    }
    setLimbs_(acc, n);
    return *this;
}

xstd::XString XRadixInt10::digits() const
{
    const size_t n = limbsEffective(m_limbs, size());
    std::string text;
    if (n > shortLimbs) {
        HugeInteger value;
        value.fromLimbs_(m_limbs, n);
        text = longDecimal(value);
    } else {
        text.assign(n * 20, '0');
        writeShortDecimal(m_limbs, n, text.data() + text.size());
    }
    text.erase(0, std::min(text.find_first_not_of('0'), text.size()));
    return text;
}

} // namespace huge
