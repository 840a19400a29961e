#include "numbers/numberTheory.h"

#include "common/XStop.h"
#include "numbers/LimbPool.h"

#include <cmath>
#include <cstdint>

namespace huge {

namespace {

/// first * ... * last in halves, so that the factors of each product are of like length.
HugeInteger productOfRange(int64_t first, int64_t last)
{
    xstd::XStop::poll();
    if (last - first < 3) { // below 2^21 three fit a limb
        int64_t product = first;
        for (int64_t k = first + 1; k <= last; ++k)
            product *= k;
        return HugeInteger(product);
    }
    const int64_t middle = first + (last - first) / 2;
    return productOfRange(first, middle).trim() * productOfRange(middle + 1, last);
}

} // namespace

HugeInteger factorial(const HugeInteger& n)
{
    if (n < 2)
        return HugeInteger(1);
    // The greatest factorial that fits has some 85,000 for n. Its logarithm and the next one's are
    // many orders further from the limit's than a double errs, so this is the exact border.
    constexpr int64_t beyond = 1'000'000;
    if (n > beyond || std::lgamma(double(n.asInt64()) + 1) / std::log(2.0) >= LimbPool::maxBits)
        LimbPool::failLimit();
    return productOfRange(2, n.asInt64()) * 1; // one spare limb, as after any product
}

} // namespace huge
