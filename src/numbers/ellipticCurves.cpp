#include "numbers/ellipticCurves.h"

#include "common/XStop.h"
#include "numbers/LimbPool.h"
#include "numbers/montgomery.h"
#include "numbers/numberTheory.h"
#include "numbers/smallPrimes.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <numeric>
#include <utility>
#include <vector>

namespace huge {

namespace {

// Lenstra, Factoring integers with elliptic curves; the forms of curve and steps are those of
// Montgomery, Speeding the Pollard and elliptic curve methods of factorization.

/// How far a curve is followed, and how many of them are tried before the next level. A curve
/// finds a factor p when the order of its group modulo p has only prime factors up to bound, but
/// for one up to reach.
struct Level {
    uint32_t bound;
    uint32_t reach;
    uint32_t step; // of the second stage: a product of the first primes
    int curves;
};

constexpr Level levels[] = {
    {2'000, 150'000, 210, 25},
    {11'000, 1'100'000, 2310, 90},
    {50'000, 5'000'000, 2310, 220},
    {250'000, 25'000'000, 2310, 450},
    {1'000'000, 100'000'000, 2310, 1000}, // again and again
};

/// What all curves of a level share.
struct Plan {
    explicit Plan(const Level& level);

    Level level;
    std::vector<HugeInteger> multipliers;     // their product has all prime powers up to the bound
    std::vector<uint32_t> babySteps;          // below half a step and coprime to it
    std::vector<std::vector<uint32_t>> pairs; // per giant step: babySteps whose sum or difference
                                              // with it is prime
};

Plan::Plan(const Level& givenLevel) : level(givenLevel)
{
    constexpr size_t multiplierBits = 8192;
    const std::vector<uint32_t> primes = primesBelow(level.reach + level.step);
    HugeInteger multiplier(1);
    for (const uint32_t p : primes) {
        if (p > level.bound)
            break;
        uint64_t power = p;
        while (power * p <= level.bound)
            power *= p;
        multiplier = (multiplier * int64_t(power)).trim();
        if (multiplier.bitLength() > multiplierBits) {
            multipliers.push_back(multiplier);
            multiplier = 1;
        }
    }
    multipliers.push_back(multiplier);
    for (uint32_t j = 1; j < level.step / 2; j += 2) {
        if (std::gcd(j, level.step) == 1)
            babySteps.push_back(j);
    }
    // Giant step k stands at (first + k) * step.
    const uint32_t first = level.bound / level.step;
    pairs.resize(level.reach / level.step - first + 1);
    for (const uint32_t p : primes) {
        if (p <= level.bound)
            continue;
        const uint32_t k = (p + level.step / 2) / level.step;
        if (k - first < pairs.size()) {
            const uint32_t at = k * level.step;
            pairs[k - first].push_back(p < at ? at - p : p - at);
        }
    }
    for (std::vector<uint32_t>& row : pairs) {
        std::sort(row.begin(), row.end());
        row.erase(std::unique(row.begin(), row.end()), row.end());
    }
}

/// A point without its y: x / z.
struct Point {
    Limb* x;
    Limb* z;
};

/// One curve b y^2 = x^3 + a x^2 + x modulo n and the points that a search on it needs.
class Curve {
public:
    Curve(const Montgomery& ring, const HugeInteger& n, const Plan& plan)
        : m_ring(ring), m_n(n), m_plan(plan), m_size(ring.size()),
          m_store(m_size * (fixedNumbers + 3 * (plan.level.step / 4 + 1))), m_next(m_store.get()),
          m_quarter(number()), m_start(point()), m_low(point()), m_high(point()), m_sum(number()),
          m_difference(number()), m_first(number()), m_second(number()), m_product(number())
    {}

    /// A factor of n, which may be n itself; 1 where the curve finds none.
    HugeInteger search()
    {
        const HugeInteger bad = choose();
        if (!bad.isOne())
            return bad;
        for (const HugeInteger& multiplier : m_plan.multipliers) {
            multiply(multiplier);
            std::swap(m_start, m_low);
        }
        const HugeInteger found = commonFactor(m_start.z);
        return found.isOne() ? secondStage() : found;
    }

private:
    static constexpr size_t fixedNumbers = 32;

    Limb* number()
    {
        Limb* made = m_next;
        m_next += m_size;
        return made;
    }
    Point point()
    {
        Limb* x = number();
        return {x, number()};
    }
    HugeInteger commonFactor(const Limb* a) const { return gcd(m_ring.leave(a), m_n); }

    HugeInteger choose();
    void doublePoint(const Point& p, const Point& r);
    void addPoints(const Point& p, const Point& q, const Point& difference, const Point& r);
    void multiply(const HugeInteger& factor);
    std::vector<Point> babyPoints();
    HugeInteger secondStage();

    const Montgomery& m_ring;
    const HugeInteger& m_n;
    const Plan& m_plan;
    size_t m_size;
    LimbScratch m_store;
    Limb* m_next;
    Limb* m_quarter; // (a + 2) / 4
    Point m_start;
    Point m_low;
    Point m_high;
    Limb* m_sum; // working numbers of the steps
    Limb* m_difference;
    Limb* m_first;
    Limb* m_second;
    Limb* m_product;
};

/// A random curve, whose order has the factor 12, and a point on it (Suyama's choice). Gives 1, or
/// what n has in common with a number that has no inverse.
HugeInteger Curve::choose()
{
    HugeInteger sigma;
    sigma.randomBits_(40, false) += 6;
    const HugeInteger u = (sigma * sigma - 5) % m_n;
    const HugeInteger v = sigma * 4 % m_n;
    const HugeInteger cubeU = mulMod(mulMod(u, u, m_n), u, m_n);
    const HugeInteger cubeV = mulMod(mulMod(v, v, m_n), v, m_n);
    const HugeInteger below = mulMod(cubeU * 16, v, m_n);
    const HugeInteger common = gcd(below, m_n);
    if (!common.isOne())
        return common;
    const HugeInteger d = v - u;
    const HugeInteger above = mulMod(mulMod(mulMod(d, d, m_n), d, m_n), u * 3 + v, m_n);
    m_ring.enter(mulMod(above, invMod(below, m_n), m_n), m_quarter);
    m_ring.enter(cubeU, m_start.x);
    m_ring.enter(cubeV, m_start.z);
    return common;
}

void Curve::doublePoint(const Point& p, const Point& r)
{
    m_ring.add(p.x, p.z, m_sum);
    m_ring.subtract(p.x, p.z, m_difference);
    m_ring.multiply(m_sum, m_sum, m_sum);
    m_ring.multiply(m_difference, m_difference, m_difference);
    m_ring.subtract(m_sum, m_difference, m_first);
    m_ring.multiply(m_sum, m_difference, r.x);
    m_ring.multiply(m_quarter, m_first, m_second);
    m_ring.add(m_second, m_difference, m_second);
    m_ring.multiply(m_first, m_second, r.z);
}

/// r = p + q, where p - q is known. r may be p or q or difference.
void Curve::addPoints(const Point& p, const Point& q, const Point& difference, const Point& r)
{
    m_ring.subtract(p.x, p.z, m_first);
    m_ring.add(q.x, q.z, m_sum);
    m_ring.multiply(m_first, m_sum, m_first);
    m_ring.add(p.x, p.z, m_second);
    m_ring.subtract(q.x, q.z, m_difference);
    m_ring.multiply(m_second, m_difference, m_second);
    m_ring.add(m_first, m_second, m_sum);
    m_ring.subtract(m_first, m_second, m_difference);
    m_ring.multiply(m_sum, m_sum, m_sum);
    m_ring.multiply(m_difference, m_difference, m_difference);
    m_ring.multiply(difference.z, m_sum, m_sum);
    m_ring.multiply(difference.x, m_difference, r.z);
    limbsCopy(r.x, m_sum, m_size);
}

/// m_low = factor * m_start, m_high = m_low + m_start; factor is above 0.
void Curve::multiply(const HugeInteger& factor)
{
    limbsCopy(m_low.x, m_start.x, m_size);
    limbsCopy(m_low.z, m_start.z, m_size);
    doublePoint(m_start, m_high);
    for (size_t i = factor.bitLength() - 1; i-- > 0;) {
        xstd::XStop::poll();
        const bool bit = factor.testBit(i);
        const Point& sum = bit ? m_low : m_high;
        const Point& twice = bit ? m_high : m_low;
        addPoints(m_high, m_low, m_start, sum);
        doublePoint(twice, twice);
    }
}

/// The odd multiples of m_start below half a step: the one of j at index j / 2.
std::vector<Point> Curve::babyPoints()
{
    std::vector<Point> points;
    const Point twice = point();
    doublePoint(m_start, twice);
    points.push_back(m_start);
    points.push_back(point());
    addPoints(twice, points[0], points[0], points[1]);
    while (2 * points.size() < m_plan.level.step / 2) {
        const size_t i = points.size();
        points.push_back(point());
        addPoints(points[i - 1], twice, points[i - 2], points[i]);
    }
    return points;
}

/// Looks for the one large prime p of the order: with p = at - j or at + j the points at * m_start
/// and j * m_start have the same x modulo the factor.
HugeInteger Curve::secondStage()
{
    const std::vector<Point> babies = babyPoints();
    std::vector<Limb*> products(babies.size());
    for (const uint32_t j : m_plan.babySteps) {
        products[j / 2] = number();
        m_ring.multiply(babies[j / 2].x, babies[j / 2].z, products[j / 2]);
    }
    const Point step = point();
    Point at = point();
    Point before = point();
    const int64_t first = m_plan.level.bound / m_plan.level.step;
    const auto store = [&](const Point& r, int64_t factor) {
        multiply(HugeInteger(factor * m_plan.level.step));
        limbsCopy(r.x, m_low.x, m_size);
        limbsCopy(r.z, m_low.z, m_size);
    };
    store(step, 1);
    store(before, first - 1);
    store(at, first);
    limbsCopy(m_product, m_ring.one(), m_size);
    Limb* atProduct = number();
    for (const std::vector<uint32_t>& row : m_plan.pairs) {
        xstd::XStop::poll();
        m_ring.multiply(at.x, at.z, atProduct);
        for (const uint32_t j : row) { // at.x * z - x * at.z
            const Point& baby = babies[j / 2];
            m_ring.subtract(at.x, baby.x, m_first);
            m_ring.add(at.z, baby.z, m_second);
            m_ring.multiply(m_first, m_second, m_first);
            m_ring.subtract(m_first, atProduct, m_first);
            m_ring.add(m_first, products[j / 2], m_first);
            m_ring.multiply(m_product, m_first, m_product);
        }
        addPoints(at, step, before, before);
        std::swap(at, before);
    }
    return commonFactor(m_product);
}

} // namespace

HugeInteger curveFactor(const HugeInteger& n)
{
    return curveFactor(n, SIZE_MAX);
}

HugeInteger curveFactor(const HugeInteger& n, size_t levelCount)
{
    const Montgomery ring(n);
    for (size_t i = 0; i < levelCount; ++i) {
        const Level& level = levels[std::min(i, std::size(levels) - 1)];
        const Plan plan(level);
        for (int curve = 0; curve < level.curves; ++curve) {
            HugeInteger factor = Curve(ring, n, plan).search();
            if (!factor.isOne() && factor != n)
                return factor;
        }
    }
    return HugeInteger(0);
}

} // namespace huge
