#include "numbers/HugeFloat.h"
#include "numbers/limbsRoot.h"
#include "numbers/workLimbs.h"

#include <stdexcept>

namespace huge {

HugeFloat HugeFloat::sqrt() const
{
    if (isNegative())
        throw std::runtime_error("Negative numbers cannot be squared");
    if (isZero() || isOne())
        return *this;
    const size_t n = limbCount();
    WorkLimbs square(2 * n + limbsRootArea(n));
    limbsZero(square, n);
    limbsCopy(square + n, m_limbs, n);
    // With an odd exponent the mantissa times 2^(64 n), else half of that: its root fills n limbs.
    if (exponent() % 2 == 0)
        limbsShrSmall(square, 2 * n, 1, square);
    HugeFloat result = fromBlock(LimbPool::allocate(n));
    limbsRoot(square, n, result.m_limbs, square + 2 * n);
    LimbPool::setExponent(result.m_limbs, exponent() >> 1); // rounds down
    return result;
}

} // namespace huge
