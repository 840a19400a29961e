#include "numbers/recursiveQuotient.h"

#include "common/XStop.h"
#include "numbers/limbRows.h"
#include "numbers/limbsProduct.h"

#include <algorithm>
#include <cassert>

namespace huge {

namespace {

/// The same for n + m limbs by n, with m limbs of quotient, m <= n.
Limb divideByHalves(Limb* num, const Limb* den, size_t n, size_t m, Limb* q, Limb* area)
{
    if (m < recursiveQuotientLimbs)
        return limbsDiv(num, n + m, den, n, q);
    xstd::XStop::poll();
    const size_t low = m / 2;
    const size_t high = m - low;
    const Limb* upper = den + low;

    Limb extra = divideByHalves(num + 2 * low, upper, n - low, high, q + low, area);
    extra = subtractLeftOut(num + low, n, q + low, high, extra, den, low, den, area);

    const Limb lowExtra = divideByHalves(num + low, upper, n - low, low, q, area);
    [[maybe_unused]] const Limb left =
        subtractLeftOut(num, n, q, low, lowExtra, den, low, den, area);
    assert(left == 0); // what the first half left is below the divisor
    return extra;
}

} // namespace

size_t recursiveQuotientArea(size_t n) noexcept
{
    size_t most = 0;
    // At each level stand parts of two lengths at most, a limb apart.
    for (; n >= recursiveQuotientLimbs; n -= n / 2) {
        for (const size_t m : {n - 1, n}) {
            const size_t low = m / 2;
            most = std::max(
                {most, m + limbsProductArea(m - low, low), 2 * low + limbsProductArea(low, low)});
        }
    }
    return most;
}

Limb recursiveQuotient(Limb* num, const Limb* den, size_t n, Limb* q, Limb* area)
{
    return divideByHalves(num, den, n, n, q, area);
}

Limb subtractLeftOut(Limb* num, size_t n, Limb* q, size_t nQ, Limb extra, const Limb* den,
                     size_t nDen, const Limb* whole, Limb* area)
{
    const size_t nProduct = nQ + nDen;
    assert(nProduct <= n);
    limbsProduct(q, nQ, den, nDen, area, area + nProduct);
    // What is still to be taken off at the end of the product; at the top of num, or beyond it.
    Limb below = extra != 0 ? rowAdd(area + nQ, den, nDen, 0, area + nQ) : 0;
    below += rowSub(num, area, nProduct, 0, num);
    for (size_t i = nProduct; i < n && below != 0; ++i) {
        const Limb limb = num[i];
        num[i] = limb - below;
        below = limb < below;
    }
    while (below != 0) {
        below -= rowAdd(num, whole, n, 0, num);
        if (limbsDec(q, nQ) != 0)
            extra -= 1;
    }
    return extra;
}

} // namespace huge
