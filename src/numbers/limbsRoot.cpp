#include "numbers/limbsRoot.h"

#include "common/XStop.h"
#include "numbers/limbRows.h"
#include "numbers/limbsProduct.h"
#include "numbers/limbsQuotient.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace huge {

namespace {

/// The root of two limbs; what is left over takes the place of the lower one.
Limb rootOfTwoLimbs(Limb* square, Limb* root) noexcept
{
    const Limb128 value = Limb128(square[1]) << 64 | square[0];
    // The estimate has the 53 bits of a double; one step of Newton's iteration doubles them, and
    // what it then lacks is a unit or two.
    const double estimate = std::sqrt(double(square[1])) * 0x1p32;
    Limb r = estimate < 0x1p64 ? Limb(estimate) : std::numeric_limits<Limb>::max();
    const Limb128 sum = r + value / r;
    r = sum >> 65 != 0 ? std::numeric_limits<Limb>::max() : Limb(sum >> 1);
    while (Limb128(r) * r > value)
        --r;
    while (value - Limb128(r) * r > 2 * Limb128(r))
        ++r;
    const Limb128 rest = value - Limb128(r) * r;
    root[0] = r;
    square[0] = Limb(rest);
    return Limb(rest >> 64);
}

} // namespace

size_t limbsRootArea(size_t n) noexcept
{
    size_t area = 0;
    for (; n > 1; n -= n / 2) {
        const size_t low = n / 2;
        area = std::max(
            {area, 3 * low + limbsProductArea(low, low), 3 * low + limbsQuotientArea(n, n - low)});
    }
    return area;
}

// With the square taken apart as a3 a2 a1 a0, the root of a3 a2 is the upper part of the root, and
// its rest with a1, divided by twice that, is the lower part q, or one more (Zimmermann, Karatsuba
// Square Root, 1999).
Limb limbsRoot(Limb* number, size_t n, Limb* root, Limb* area)
{
    if (n == 1)
        return rootOfTwoLimbs(number, root);
    xstd::XStop::poll();
    const size_t low = n / 2;
    const size_t high = n - low;
    Limb* upper = root + low;
    Limb* rest = number + low; // of a division of n limbs, then the rest times the radix
    Limb* quotient = area;
    Limb* squared = area + low;

    Limb top = limbsRoot(number + 2 * low, high, upper, area);
    if (top != 0) // the rest is at most twice the root, which is above half of the radix
        rowSub(number + 2 * low, upper, high, 0, number + 2 * low);
    Limb* spare = area + 3 * low;
    top += limbsQuotient(rest, n, upper, high, quotient, spare);
    const bool odd = (quotient[0] & 1) != 0;
    limbsShrSmall(quotient, low, 1, root);
    root[low - 1] |= top << 63;
    top >>= 1; // q is the radix itself then, and its limbs are 0
    int64_t carry = odd ? int64_t(rowAdd(rest, upper, high, 0, rest)) : 0;

    limbsProduct(root, low, root, low, squared, spare);
    Limb borrow = rowSub(number, squared, 2 * low, 0, number) + top;
    if (high > low) { // by one limb
        const Limb above = number[n - 1];
        number[n - 1] = above - borrow;
        borrow = above < borrow;
    }
    carry -= int64_t(borrow);
    const Limb beyond = top == 0 ? 0 : limbsInc(upper, high);
    if (carry < 0) { // a root that is one too large
        carry += int64_t(rowAddMul(number, root, n, 2) + 2 * beyond);
        carry -= int64_t(limbsDec(number, n));
        limbsDec(root, n);
    }
    return Limb(carry);
}

} // namespace huge
