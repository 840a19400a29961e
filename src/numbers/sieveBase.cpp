#include "numbers/sieveBase.h"

#include "common/XStop.h"
#include "numbers/numberTheory.h"
#include "numbers/smallPrimes.h"
#include "numbers/wordModular.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace huge {

namespace {

struct SizesRow {
    size_t bits;
    SieveSizes sizes;
};

// Measured: the quickest for products of two primes of equal length.
constexpr SizesRow rows[] = {
    {80, {60, 16384, 20}},     {100, {110, 32768, 30}},     {128, {260, 32768, 40}},
    {150, {600, 32768, 50}},   {170, {1200, 65536, 60}},    {200, {2800, 65536, 80}},
    {220, {4800, 98304, 100}}, {250, {11000, 196608, 120}}, {290, {30000, 262144, 150}},
};

/// How much a multiplier helps: the logarithms that the small primes of the base take off a value
/// on average, less half of its own.
double worthOf(const HugeInteger& n, uint32_t multiplier, const std::vector<uint32_t>& primes)
{
    const uint32_t last = remainder32(n, 8) * multiplier % 8;
    double worth = -0.5 * std::log(double(multiplier));
    worth += (last == 1 ? 2 : last == 5 ? 1 : 0.5) * std::log(2.0);
    for (const uint32_t p : primes) {
        if (p == 2)
            continue;
        const double log = std::log(double(p)) / (p - 1);
        if (multiplier % p == 0)
            worth += log;
        else if (powMod64(uint64_t(remainder32(n, p)) * multiplier % p, (p - 1) / 2, p) == 1)
            worth += 2 * log;
    }
    return worth;
}

uint32_t bestMultiplier(const HugeInteger& n)
{
    static constexpr uint32_t multipliers[] = {
        1,  2,  3,  5,  6,  7,  10, 11, 13, 14, 15, 17, 19, 21, 22, 23, 26, 29, 30, 31, 33, 34, 35,
        37, 38, 39, 41, 42, 43, 46, 47, 51, 53, 55, 57, 58, 59, 61, 62, 65, 66, 67, 69, 70, 71, 73};
    const std::vector<uint32_t> primes = primesBelow(2000);
    return *std::max_element(
        std::begin(multipliers), std::end(multipliers),
        [&](uint32_t a, uint32_t b) { return worthOf(n, a, primes) < worthOf(n, b, primes); });
}

} // namespace

uint32_t remainder32(const HugeInteger& a, uint32_t m) noexcept
{
    uint64_t rest = 0;
    for (size_t i = a.size(); i-- > 0;) {
        const Limb limb = a.limbs()[i];
        rest = (rest << 32 | limb >> 32) % m;
        rest = (rest << 32 | (limb & UINT32_MAX)) % m;
    }
    return uint32_t(rest);
}

SieveSizes SieveSizes::of(size_t bits) noexcept
{
    const SizesRow* above = std::find_if(std::begin(rows), std::end(rows) - 1,
                                         [bits](const SizesRow& row) { return bits <= row.bits; });
    SieveSizes sizes = above->sizes;
    if (above != rows && bits < above->bits) {
        const SizesRow& below = above[-1];
        const double part = double(bits - below.bits) / double(above->bits - below.bits);
        const double growth = double(sizes.primes) / double(below.sizes.primes);
        sizes.primes = size_t(double(below.sizes.primes) * std::pow(growth, part));
    }
    return sizes;
}

SieveBase::SieveBase(const HugeInteger& n)
    : m_sizes(SieveSizes::of(n.bitLength())), m_multiple((n * int64_t(bestMultiplier(n))).trim())
{
    // Every second prime is of use.
    const double count = 2.4 * double(m_sizes.primes) + 50;
    const auto limit = uint32_t(count * (std::log(count) + std::log(std::log(count))));
    for (const uint32_t p : primesBelow(limit)) {
        xstd::XStop::poll();
        if (m_primes.size() == m_sizes.primes)
            break;
        const uint32_t rest = remainder32(m_multiple, p);
        if (p != 2 && rest != 0 && powMod64(rest, (p - 1) / 2, p) != 1)
            continue;
        uint32_t root = rest;
        if (p != 2 && rest != 0)
            root = uint32_t(sqrtMod(HugeInteger(int64_t(rest)), HugeInteger(int64_t(p))).asInt64());
        m_primes.push_back({p, root, uint8_t(std::lround(std::log2(double(p))))});
    }
}

} // namespace huge
