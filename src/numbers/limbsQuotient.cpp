#include "numbers/limbsQuotient.h"

#include "numbers/limbsProduct.h"
#include "numbers/recursiveQuotient.h"
#include "numbers/workLimbs.h"

#include <algorithm>

namespace huge {

namespace {

bool isPlain(size_t nQuotient, size_t nDen) noexcept
{
    return nQuotient < recursiveQuotientLimbs || nDen < recursiveQuotientLimbs;
}

/// Divides nDen + m limbs by nDen, m < nDen: by the upper m limbs of the divisor, and what that
/// leaves out is taken off by one product.
Limb divideByTop(Limb* num, size_t m, const Limb* den, size_t nDen, Limb* q, Limb* area)
{
    const size_t cut = nDen - m;
    const Limb extra = m < recursiveQuotientLimbs
                           ? limbsDiv(num + cut, 2 * m, den + cut, m, q)
                           : recursiveQuotient(num + cut, den + cut, m, q, area);
    return subtractLeftOut(num, nDen, q, m, extra, den, cut, den, area);
}

} // namespace

size_t limbsQuotientArea(size_t nNum, size_t nDen) noexcept
{
    const size_t nQuotient = nNum - nDen;
    if (isPlain(nQuotient, nDen))
        return 0;
    const size_t first = nQuotient % nDen;
    size_t area = nQuotient >= nDen ? recursiveQuotientArea(nDen) : 0;
    if (first != 0)
        area = std::max(
            {area, recursiveQuotientArea(first), nDen + limbsProductArea(first, nDen - first)});
    return area;
}

Limb limbsQuotient(Limb* num, size_t nNum, const Limb* den, size_t nDen, Limb* q, Limb* area)
{
    size_t rest = nNum - nDen;
    if (isPlain(rest, nDen))
        return limbsDiv(num, nNum, den, nDen, q);
    // From the top: a short piece first, then pieces of the divisor's length. Only the first can
    // have a digit above its own.
    Limb extra = 0;
    const size_t first = rest % nDen;
    if (first != 0) {
        rest -= first;
        extra = divideByTop(num + rest, first, den, nDen, q + rest, area);
    }
    for (bool isTop = first == 0; rest != 0; isTop = false) {
        rest -= nDen;
        const Limb digit = recursiveQuotient(num + rest, den, nDen, q + rest, area);
        if (isTop)
            extra = digit;
    }
    return extra;
}

Limb limbsQuotient(Limb* num, size_t nNum, const Limb* den, size_t nDen, Limb* q)
{
    WorkLimbs area(limbsQuotientArea(nNum, nDen));
    return limbsQuotient(num, nNum, den, nDen, q, area);
}

} // namespace huge
