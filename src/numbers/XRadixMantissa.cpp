#include "numbers/XRadixMantissa.h"

#include "numbers/HugeInteger.h"
#include "numbers/XRadixInt.h"
#include "numbers/limbsQuotient.h"
#include "numbers/radixDigits.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace huge {

XRadixMantissa& XRadixMantissa::clear_() noexcept
{
    LimbPool::release(std::exchange(m_limbs, nullptr));
    return *this;
}

size_t XRadixMantissa::bitLength() const noexcept
{
    return 64 * size() - limbsTrailingZeros(m_limbs, size());
}

XRadixMantissa& XRadixMantissa::setLimbs_(const Limb* source, size_t count)
{
    m_limbs = LimbPool::resize(m_limbs, count, false);
    limbsCopy(m_limbs, source, count);
    return *this;
}

void XRadixMantissa::copyTo(Limb* target, size_t count) const noexcept
{
    const size_t n = std::min(count, size());
    limbsZero(target, count - n);
    limbsCopy(target + (count - n), m_limbs + (size() - n), n);
}

XRadixMantissaBits& XRadixMantissaBits::parse_(const xstd::XString& digits, size_t limbCount)
{
    const size_t bits = digits.size() * m_width;
    const size_t n = (bits + 63) / 64;
    LimbScratch packed(std::max<size_t>(n, 1));
    limbsZero(packed, n);
    packDigits(digits, 0, m_width, packed);
    limbsShl(packed, n, 64 * n - bits);
    if (limbsIsZero(packed, n)) {
        clear_();
        return *this;
    }
    const size_t kept = limbCount == 0 ? n : std::min(n, limbCount);
    setLimbs_(packed + (n - kept), kept);
    return *this;
}

xstd::XString XRadixMantissaBits::print(const XFormatRule& rule) const
{
    const size_t n = size();
    size_t count = (bitLength() + m_width - 1) / m_width;
    if (rule.mantissa >= 1)
        count = std::min(count, size_t(rule.mantissa));
    // The digits as a whole number, with a limb to spare for the bits that the last one lacks.
    LimbScratch whole(n + 1);
    whole[0] = 0;
    limbsCopy(whole + 1, m_limbs, n);
    limbsShr(whole, n + 1, 64 * (n + 1) - count * m_width);
    return groupFraction(unpackDigits(whole, n + 1, count * m_width, m_width), rule);
}

xstd::XString XRadixMantissa16::print(const XFormatRule& rule) const
{
    const xstd::XString text = XRadixMantissaBits::print(rule);
    return text.empty() ? xstd::XString("0") : text;
}

XRadixMantissa10& XRadixMantissa10::parse_(const xstd::XString& digits, size_t limbCount)
{
    XRadixInt10 whole;
    whole.parse_(digits);
    if (whole.isEmpty()) {
        clear_();
        return *this;
    }
    if (limbCount == 0)
        limbCount = (size_t(std::lround(double(digits.size()) * 3.321928)) + 63) / 64;
    limbCount = std::max<size_t>(limbCount, 1);
    // whole * 2^(64 * limbCount) / 10^digits, both sides without the twos of 10^digits.
    const HugeInteger power = HugeInteger(5).pow(int64_t(digits.size())).trim();
    const size_t nDen = power.size();
    const size_t bitsUp = 64 * limbCount - std::min(64 * limbCount, digits.size());
    const size_t bitsDown = digits.size() - std::min(64 * limbCount, digits.size());
    // A limb to spare above takes what the shifts push out.
    const size_t nNum = std::max(whole.size() + bitsUp / 64 + 2, nDen + limbCount);
    LimbScratch num(nNum);
    limbsCopyExtend(num, whole.limbs(), nNum, whole.size());
    limbsShl(num, nNum, bitsUp);
    limbsShr(num, nNum, bitsDown);
    LimbScratch den(nDen);
    const unsigned shift = unsigned(power.leadingZeroBits());
    limbsShlSmall(power.limbs(), nDen, shift, den);
    limbsShlSmall(num, nNum, shift, num);
    LimbScratch quotient(nNum - nDen + 1);
    limbsQuotient(num, nNum, den, nDen, quotient);
    setLimbs_(quotient, limbCount);
    if (limbsIsZero(m_limbs, limbCount))
        clear_();
    return *this;
}

} // namespace huge
