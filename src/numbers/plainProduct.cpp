#include "numbers/plainProduct.h"

#include "common/XStop.h"
#include "numbers/limbRows.h"

#include <cassert>

namespace huge {

namespace {

/// Rows of at least this many limbs look for a stop of the calculation; shorter ones are over
/// sooner than the look would pay.
constexpr size_t pollLimbs = 256;

} // namespace

void plainProduct(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r)
{
    assert(nA >= nB && nB >= 1);
    r[nA] = rowMul(a, nA, b[0], 0, r);
    for (size_t i = 1; i < nB; ++i) {
        if (nA >= pollLimbs)
            xstd::XStop::poll();
        // Powers of 2 and 10 are mostly zeros.
        r[nA + i] = b[i] == 0 ? 0 : rowAddMul(r + i, a, nA, b[i]);
    }
}

void plainSquare(const Limb* a, size_t n, Limb* r) noexcept
{
    r[0] = 0;
    if (n > 1) {
        r[n] = rowMul(a + 1, n - 1, a[0], 0, r + 1);
        for (size_t i = 1; i + 1 < n; ++i)
            r[n + i] = rowAddMul(r + 2 * i + 1, a + i + 1, n - i - 1, a[i]);
    }
    // Twice that, and the squares of the limbs.
    Limb carry = 0;
    Limb shifted = 0;
    r[2 * n - 1] = 0;
    for (size_t i = 0; i < n; ++i) {
        const Limb128 square = Limb128(a[i]) * a[i];
        const Limb low = r[2 * i] << 1 | shifted;
        const Limb high = r[2 * i + 1] << 1 | r[2 * i] >> 63;
        shifted = r[2 * i + 1] >> 63;
        Limb128 sum = Limb128(low) + Limb(square) + carry;
        r[2 * i] = Limb(sum);
        sum = Limb128(high) + Limb(square >> 64) + Limb(sum >> 64);
        r[2 * i + 1] = Limb(sum);
        carry = Limb(sum >> 64);
    }
}

} // namespace huge
