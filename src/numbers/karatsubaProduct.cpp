#include "numbers/karatsubaProduct.h"

#include "numbers/limbRows.h"
#include "numbers/plainProduct.h"

namespace huge {

namespace {

/// |x1 - x0| over low limbs, of the upper and the lower part of x; gives 1 if x1 is below x0.
Limb differenceOfHalves(const Limb* x, size_t low, size_t high, Limb* r) noexcept
{
    return limbsSub(x + low, high, x, low, r);
}

/// r holds a0 * b0 and a1 * b1 side by side. The middle part of the product, their sum less or plus
/// the product of the differences, goes in between.
void addMiddle(Limb* r, size_t low, size_t high, const Limb* differences, bool added,
               Limb* middle) noexcept
{
    Limb top = limbsAdd(r, 2 * low, r + 2 * low, 2 * high, middle);
    if (added)
        top += rowAdd(middle, differences, 2 * low, 0, middle);
    else
        top -= rowSub(middle, differences, 2 * low, 0, middle);
    middle[2 * low] = top;
    limbsAddTo(r + low, low + 2 * high, middle, 2 * low + 1);
}

} // namespace

void karatsubaProduct(const Limb* a, const Limb* b, size_t n, Limb* r, Limb* area)
{
    if (n < karatsubaLimbs) {
        plainProduct(a, n, b, n, r);
        return;
    }
    const size_t high = n / 2;
    const size_t low = n - high;
    Limb* differences = area;
    Limb* middle = area + 2 * low; // until then the room of the products of halves
    const Limb below =
        differenceOfHalves(a, low, high, r) ^ differenceOfHalves(b, low, high, r + low);
    karatsubaProduct(r, r + low, low, differences, middle);
    karatsubaProduct(a, b, low, r, middle);
    karatsubaProduct(a + low, b + low, high, r + 2 * low, middle);
    addMiddle(r, low, high, differences, below != 0, middle);
}

void karatsubaSquare(const Limb* a, size_t n, Limb* r, Limb* area)
{
    if (n < karatsubaSquareLimbs) {
        plainSquare(a, n, r);
        return;
    }
    const size_t high = n / 2;
    const size_t low = n - high;
    Limb* differences = area;
    Limb* middle = area + 2 * low;
    differenceOfHalves(a, low, high, r);
    karatsubaSquare(r, low, differences, middle);
    karatsubaSquare(a, low, r, middle);
    karatsubaSquare(a + low, high, r + 2 * low, middle);
    addMiddle(r, low, high, differences, false, middle);
}

} // namespace huge
