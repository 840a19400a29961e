#include "numbers/HugeImag.h"

#include "numbers/elementary.h"
#include "numbers/imagParts.h"

#include <cstdint>
#include <limits>
#include <stdexcept>

namespace huge {

namespace {

constexpr int64_t leastExponent = std::numeric_limits<int32_t>::min();

/// Exponents up to here can be added, squares summed and quotients formed without leaving 32 bits.
constexpr int32_t easyExponent = 1 << 28;

/// The exponent of the product or one below it; the least of all for a zero.
int64_t productExponent(const HugeFloat& a, const HugeFloat& b) noexcept
{
    if (a.isZero() || b.isZero())
        return std::numeric_limits<int64_t>::min() / 4;
    return int64_t(a.exponent()) + b.exponent();
}

bool isEasy(const HugeFloat& x) noexcept
{
    return x.isZero() || (x.exponent() < easyExponent && x.exponent() > -easyExponent);
}

/// a / b as the parts stand.
HugeImag plainQuotient(const HugeImag& a, const HugeImag& b)
{
    const HugeFloat d = sumOfProducts(b.re, b.re, b.im, b.im, false);
    return {sumOfProducts(a.re, b.re, a.im, b.im, false) / d,
            sumOfProducts(a.im, b.re, a.re, b.im, true) / d};
}

} // namespace

// Shared pieces

int32_t largerExponent(const HugeImag& z) noexcept
{
    if (z.re.isZero())
        return z.im.exponent();
    return z.im.isZero() ? z.re.exponent() : std::max(z.re.exponent(), z.im.exponent());
}

HugeFloat sumOfProducts(const HugeFloat& a, const HugeFloat& b, const HugeFloat& c,
                        const HugeFloat& d, bool subtract)
{
    const int64_t left = productExponent(a, b);
    const int64_t right = productExponent(c, d);
    const size_t limbs =
        std::max({a.limbCount(), b.limbCount(), c.limbCount(), d.limbCount(), size_t(1)});
    const auto dwarfed = [limbs](int64_t small, int64_t large) {
        return small < leastExponent && large - small > int64_t(64 * limbs + 2);
    };
    if (dwarfed(left, right) && !a.isZero() && !b.isZero())
        return cutTo(subtract ? -(c * d) : c * d, limbs);
    if (dwarfed(right, left) && !c.isZero() && !d.isZero())
        return cutTo(a * b, limbs);
    return subtract ? a * b - c * d : a * b + c * d;
}

HugeFloat resultOf(const HugeFloat& x, size_t limbs)
{
    if (x.isZero() || x.limbCount() <= limbs)
        return cutTo(x, limbs);
    // Powers by squaring lose most, half of the spare limb.
    return x.resize(limbs, x.limbs()[x.limbCount() - limbs - 1] >= ~Limb(0) << 36);
}

HugeFloat squareOrZero(const HugeFloat& x)
{
    return productExponent(x, x) < leastExponent ? HugeFloat(0, x.limbCount()) : x * x;
}

HugeFloat hypotenuse(const HugeFloat& a, const HugeFloat& b, size_t limbs)
{
    if (a.isZero() || b.isZero())
        return cutTo(a.isZero() ? b.abs() : a.abs(), limbs);
    const HugeFloat& large = a.exponent() < b.exponent() ? b : a;
    const HugeFloat& small = a.exponent() < b.exponent() ? a : b;
    // The small one adds its square, halved, to the unit: nothing of that is left on these limbs.
    if (int64_t(large.exponent()) - small.exponent() > int64_t(32 * limbs + 2))
        return cutTo(large.abs(), limbs);
    const int64_t shift = large.exponent();
    const HugeFloat x = cutTo(large, limbs).shiftExponent(shift);
    const HugeFloat y = cutTo(small, limbs).shiftExponent(shift);
    return (x * x + y * y).sqrt().shiftExponent(-shift);
}

HugeFloat argument(const HugeFloat& re, const HugeFloat& im, size_t limbs)
{
    if (im.isZero())
        return re.isNegative() ? cutTo(constPi(limbs), limbs) : HugeFloat(0, limbs);
    const HugeFloat x = cutTo(re.abs(), limbs);
    const HugeFloat y = cutTo(im.abs(), limbs);
    const bool steep = y > x;
    HugeFloat angle(0, limbs);
    if (!re.isZero()) {
        // Beside pi a quotient that is too small for an exponent is no angle any more.
        const int64_t slope = int64_t(x.exponent()) - y.exponent();
        const bool counts = (steep ? -slope : slope) <= int64_t(64 * limbs + 2);
        if (counts || !(steep || re.isNegative()))
            angle = atan(steep ? x / y : y / x);
    }
    const HugeFloat pi = cutTo(constPi(limbs), limbs);
    if (steep)
        angle = pi.shiftExponent(1) - angle;
    if (re.isNegative())
        angle = pi - angle;
    return im.isNegative() ? -angle : angle;
}

HugeImag sqrtOn(const HugeImag& z, size_t limbs)
{
    const HugeFloat re = cutTo(z.re, limbs);
    const HugeFloat im = cutTo(z.im, limbs);
    const HugeFloat zero(0, limbs);
    if (im.isZero()) {
        const HugeFloat root = re.abs().sqrt();
        return re.isNegative() ? HugeImag(zero, root) : HugeImag(root, zero);
    }
    // The larger part first, from a sum; the other part is what makes twice the product im.
    const HugeFloat large = (hypotenuse(re, im, limbs) + re.abs()).shiftExponent(1).sqrt();
    const HugeFloat small = im.abs() / large.shiftExponent(-1);
    if (!re.isNegative())
        return {large, im.isNegative() ? -small : small};
    return {small, im.isNegative() ? -large : large};
}

// Members and operators

HugeFloat HugeImag::abs() const
{
    // The squares are exact, so that the root is right to the last bit.
    const size_t limbs = precisionOf(*this);
    return cutTo(hypotenuse(re, im, std::min(2 * limbs + 1, LimbPool::limit - 1)), limbs);
}

HugeFloat HugeImag::angle() const
{
    if (isZero())
        throw std::runtime_error("div by zero");
    const size_t limbs = precisionOf(*this);
    if (im.isZero()) {
        const size_t imLimbs = std::max<size_t>(im.limbCount(), 1);
        return re.isNegative() ? cutTo(constPi(imLimbs), imLimbs) : HugeFloat(0);
    }
    const size_t work = guarded(limbs);
    const HugeFloat principal = argument(re, im, work);
    if (!re.isNegative() || !im.isNegative())
        return resultOf(principal, limbs);
    return resultOf(principal + cutTo(constPi(work), work).shiftExponent(-1), limbs);
}

HugeImag operator+(const HugeImag& a, const HugeImag& b)
{
    return {a.re + b.re, a.im + b.im};
}

HugeImag operator-(const HugeImag& a, const HugeImag& b)
{
    return {a.re - b.re, a.im - b.im};
}

HugeImag operator*(const HugeImag& a, const HugeImag& b)
{
    return {sumOfProducts(a.re, b.re, a.im, b.im, true),
            sumOfProducts(a.re, b.im, a.im, b.re, false)};
}

HugeImag operator/(const HugeImag& a, const HugeImag& b)
{
    if (b.isZero())
        throw std::runtime_error("div by zero");
    if (a.isZero() || (isEasy(a.re) && isEasy(a.im) && isEasy(b.re) && isEasy(b.im)))
        return plainQuotient(a, b);
    // The square in the divisor leaves the range of exponents before the quotient does. Shifting
    // both operands to a size near 1 changes no bit of any mantissa.
    const int64_t shiftA = largerExponent(a);
    const int64_t shiftB = largerExponent(b);
    const auto scaled = [](const HugeImag& z, int64_t shift) {
        const auto part = [shift](const HugeFloat& x) {
            return x.isZero() || x.exponent() - shift < leastExponent
                       ? HugeFloat(0, std::max<size_t>(x.limbCount(), 1))
                       : x.shiftExponent(shift);
        };
        return HugeImag(part(z.re), part(z.im));
    };
    return plainQuotient(scaled(a, shiftA), scaled(b, shiftB)).shiftExponent(shiftB - shiftA);
}

HugeImag operator+(const HugeImag& a, const HugeFloat& b)
{
    return {a.re + b, a.im};
}

HugeImag operator-(const HugeImag& a, const HugeFloat& b)
{
    return {a.re - b, a.im};
}

HugeImag operator*(const HugeImag& a, const HugeFloat& b)
{
    return {a.re * b, a.im * b};
}

HugeImag operator/(const HugeImag& a, const HugeFloat& b)
{
    if (b.isZero())
        throw std::runtime_error("div by zero");
    return {a.re / b, a.im / b};
}

} // namespace huge
