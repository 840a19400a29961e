#include "numbers/XRadixInt.h"

#include "numbers/decimalConversion.h"
#include "numbers/radixDigits.h"

#include <algorithm>
#include <string>
#include <utility>

namespace huge {

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
    const HugeInteger value = fromDecimalDigits(text.data() + pos, end - pos);
    if (value.isZero()) {
        LimbPool::release(std::exchange(m_limbs, nullptr));
        return *this;
    }
    setLimbs_(value.limbs(), value.effectiveSize());
    return *this;
}

xstd::XString XRadixInt10::digits() const
{
    std::string text = decimalDigitsOf(m_limbs, size());
    text.erase(0, std::min(text.find_first_not_of('0'), text.size()));
    return text;
}

} // namespace huge
