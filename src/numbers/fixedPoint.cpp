#include "numbers/fixedPoint.h"

#include "common/XStop.h"
#include "numbers/limbRows.h"
#include "numbers/limbsProduct.h"

#include <algorithm>

namespace huge {

namespace {

constexpr size_t pollLimbs = 256;

/// The 64 bits of a from bit position at upwards; what lies outside the n limbs reads as 0.
Limb bitsAt(const Limb* a, int64_t n, int64_t at) noexcept
{
    const int64_t index = at >> 6; // rounds down
    const unsigned shift = unsigned(at & 63);
    const Limb low = index >= 0 && index < n ? a[index] : 0;
    if (shift == 0)
        return low;
    const Limb high = index + 1 >= 0 && index + 1 < n ? a[index + 1] : 0;
    return (low >> shift) | (high << (64 - shift));
}

/// From so many limbs on the whole product, formed by halves, takes less time than half of the rows
/// do. Measured.
constexpr size_t wholeProductLimbs = 100;
constexpr size_t wholeSquareLimbs = 140;

/// Squares shorter than this are multiplied as other products are.
constexpr size_t squareLimbs = 24;

/// fixedMul of a with itself into area: each pair of different limbs once, the sum doubled, then
/// the squares of the limbs.
void squareInto(const Limb* a, size_t w, Limb* area)
{
    const size_t lowest = w - 1; // the column that area[0] stands for
    area[0] = 0;
    for (size_t i = 0; i < w; ++i) {
        if (w >= pollLimbs)
            xstd::XStop::poll();
        const size_t j = std::max(i + 1, lowest - i); // the first partner
        if (j < w)
            area[i + 1] = rowAddMul(area + (i + j - lowest), a + j, w - j, a[i]);
        else
            area[i + 1] = 0;
    }
    limbsShlSmall(area, w + 1, 1, area);
    Limb carry = 0;
    for (size_t i = w / 2; i < w; ++i) {
        Limb* at = area + (2 * i - lowest);
        const Limb128 low = Limb128(a[i]) * a[i] + at[0] + carry;
        const Limb128 high = (low >> 64) + at[1];
        at[0] = Limb(low);
        at[1] = Limb(high);
        carry = Limb(high >> 64);
    }
}

} // namespace

size_t fixedMulArea(size_t w) noexcept
{
    return w < wholeProductLimbs ? w + 1 : 2 * w + limbsProductArea(w, w);
}

void fixedMul(const Limb* a, const Limb* b, size_t w, Limb* r, Limb* area)
{
    if (w >= (a == b ? wholeSquareLimbs : wholeProductLimbs)) {
        limbsProduct(a, w, b, w, area, area + 2 * w);
        limbsCopy(r, area + w, w);
        return;
    }
    if (a == b && w >= squareLimbs) {
        squareInto(a, w, area);
        limbsCopy(r, area + 1, w);
        return;
    }
    area[0] = 0;
    for (size_t i = 0; i < w; ++i) {
        if (w >= pollLimbs)
            xstd::XStop::poll();
        area[i + 1] = rowAddMul(area, a + (w - 1 - i), i + 1, b[i]);
    }
    limbsCopy(r, area + 1, w);
}

void fixedFromFloat(const HugeFloat& x, size_t w, size_t intLimbs, Limb* r) noexcept
{
    const size_t total = w + intLimbs;
    const int64_t n = int64_t(x.limbCount());
    if (x.isZero()) {
        limbsZero(r, total);
        return;
    }
    int64_t at = 64 * (n - int64_t(w)) - 1 - x.exponent(); // bit of the mantissa under r's bit 0
    for (size_t i = 0; i < total; ++i, at += 64)
        r[i] = bitsAt(x.limbs(), n, at);
}

HugeFloat floatFromFixed(const Limb* a, size_t count, int64_t shift, bool negative,
                         size_t limbCount)
{
    Limb* block = LimbPool::allocate(limbCount);
    HugeFloat result = HugeFloat::fromBlock(block);
    const size_t leading = limbsLeadingZeros(a, count);
    if (leading == 64 * count) {
        limbsZero(block, limbCount);
        return result;
    }
    int64_t exponent = shift - 1 - int64_t(leading);
    int64_t at = 64 * (int64_t(count) - int64_t(limbCount)) - int64_t(leading);
    const bool roundUp = (bitsAt(a, int64_t(count), at - 64) >> 63) != 0;
    for (size_t i = 0; i < limbCount; ++i, at += 64)
        block[i] = bitsAt(a, int64_t(count), at);
    if (roundUp && limbsInc(block, limbCount) != 0) {
        block[limbCount - 1] = Limb(1) << 63;
        ++exponent;
    }
    LimbPool::setExponent(block, floatExponent(exponent));
    LimbPool::setNegative(block, negative);
    return result;
}

} // namespace huge
