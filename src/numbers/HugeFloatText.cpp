#include "common/XNumberText.h"
#include "numbers/HugeFloat.h"

#include <algorithm>

namespace huge {

namespace {

HugeInteger powerOf10(int64_t n)
{
    return HugeInteger(10).pow(n);
}

HugeInteger shifted(const HugeInteger& x, int64_t bits)
{
    HugeInteger r = x;
    if (bits > 0)
        r.grow_(r.effectiveSize() + size_t(bits) / 64 + 1);
    return r << bits;
}

} // namespace

HugeFloat HugeFloat::fromLimbs_(const Limb* intLimbs, size_t nInt, const Limb* fracLimbs,
                                size_t nFrac, size_t limbCount)
{
    const size_t n = nInt + nFrac;
    if (limbCount == 0)
        limbCount = n;
    LimbScratch t(n + 1);
    limbsCopy(t, fracLimbs, nFrac);
    limbsCopy(t + nFrac, intLimbs, nInt);
    const size_t lz = limbsLeadingZeros(t, n);
    HugeFloat r(0, limbCount);
    if (lz == 64 * n)
        return r;
    limbsShl(t, n, lz);
    const size_t k = std::min(n, limbCount);
    limbsCopy(r.m_limbs + (limbCount - k), t + (n - k), k);
    LimbPool::setExponent(r.m_limbs, int32_t(64 * int64_t(nInt) - int64_t(lz) - 1));
    return r;
}

HugeFloat HugeFloat::fromText_(const xstd::XString& text, size_t limbCount)
{
    const xstd::XNumberText number = xstd::XNumberText::parse(text);
    if (limbCount == 0)
        limbCount = size_t(std::max<int64_t>(number.toInt64(), 1));
    xstd::XString digits = number.intPart + number.mantissa;
    HugeInteger m;
    m.fromText_(xstd::XString(xstd::XString(number.radix == 16  ? "0x"
                                            : number.radix == 2 ? "0b"
                                            : number.radix == 8 ? "0o"
                                                                : "") +
                              digits));
    if (m.isZero())
        return HugeFloat(0, limbCount);
    int64_t scale = 0;
    const int64_t frac = int64_t(number.mantissa.size());
    int64_t binary = 0;
    if (number.radix == 10)
        scale = std::strtoll(number.exponent.c_str(), nullptr, 10) - frac;
    else
        binary = -frac * (number.radix == 16 ? 4 : number.radix == 8 ? 3 : 1);
    if (scale > 0)
        m *= powerOf10(scale);
    if (scale < 0) {
        const HugeInteger d = powerOf10(-scale);
        const int64_t up = std::max<int64_t>(0, int64_t(64 * limbCount + 64 + d.bitLength()) -
                                                    int64_t(m.bitLength()));
        m = shifted(m, up) / d;
        binary -= up;
    }
    HugeFloat r(m.trim());
    r.resize_(limbCount, true);
    return std::move(r.shiftExponent(-binary).setSign(number.negative));
}

xstd::XString HugeFloat::fmt(const XFormatRule& rule) const
{
    if (isZero())
        return "0" + decimalTail(rule);
    HugeInteger m;
    m.fromLimbs_(m_limbs, limbCount());
    int64_t x = int64_t(exponent()) - 64 * int64_t(limbCount()) + 1;
    HugeInteger low, high;
    int64_t places = 0;
    if (x >= 0) {
        low = shifted(m, x);
        high = shifted(m + 1, x) - 1;
    } else {
        places = int64_t(double(-x) * 0.30103) + 2;
        const HugeInteger p = powerOf10(places);
        const HugeInteger one = shifted(HugeInteger(1), -x);
        low = (m * p + one - 1) / one;
        high = ((m + 1) * p + one - 1) / one - 1;
    }
    while (places > 0) {
        const HugeInteger l = (low + 9) / 10, h = high / 10;
        if (l > h)
            break;
        low = l;
        high = h;
        --places;
    }
    xstd::XString digits = low.toString();
    if (int64_t(digits.size()) <= places)
        digits.insert(0, size_t(places) + 1 - digits.size(), '0');
    xstd::XString text = digits.substr(0, digits.size() - size_t(places));
    if (places > 0)
        text += "." + digits.substr(digits.size() - size_t(places));
    return (isNegative() ? "-" : "") + text;
}

} // namespace huge
