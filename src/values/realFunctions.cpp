#include "values/realFunctions.h"

#include "numbers/HugeImag.h"
#include "numbers/elementary.h"

#include <stdexcept>

namespace huge {

namespace {

HugeImag complexOf(const HugeFloat& x)
{
    return HugeImag(x, HugeFloat(0));
}

/// Whether the power is better calculated as a quotient: 10 ^ -1 is the same value as 1 / 10 then,
/// truncated, which decimal text shows as 0.1. The bounds keep the divisor's exponent in its range.
bool isSmallReciprocal(const HugeFloat& base, const HugeFloat& exponent)
{
    return exponent.isNegative() && exponent.exponent() < 20 && exponent.isInteger() &&
           base.exponent() >= 0 && base.exponent() < 1024;
}

} // namespace

HugeVariant realPower(const HugeFloat& base, const HugeFloat& exponent)
{
    if (base.isNegative())
        return pow(complexOf(base), exponent);
    if (isSmallReciprocal(base, exponent))
        return HugeFloat(1) / pow(base, -exponent);
    return pow(base, exponent);
}

HugeVariant realSqrt(const HugeFloat& x)
{
    return x.isNegative() ? HugeVariant(sqrt(complexOf(x))) : HugeVariant(x.sqrt());
}

HugeVariant realLn(const HugeFloat& x)
{
    return x.isNegative() ? HugeVariant(ln(complexOf(x))) : HugeVariant(ln(x));
}

HugeVariant realLog(const HugeFloat& x, const HugeVariant& base)
{
    if (x.isZero() || base.isZero())
        throw std::runtime_error("Zero can't be log");
    if (x.isNegative() || base.isNegative() || base.final().holds(HugeVarClass::Imag))
        return log(complexOf(x), base.toImag());
    return log(x, base.toFloat());
}

HugeFloat toPrecision(const HugeFloat& x, int64_t limbCount)
{
    if (limbCount < 1)
        throw std::runtime_error("The precision must be at least 1");
    if (limbCount >= int64_t(LimbPool::limit))
        LimbPool::failLimit();
    return x.resize(size_t(limbCount), false);
}

} // namespace huge
