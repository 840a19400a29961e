#include "numbers/quadraticSieve.h"

#include "common/XStop.h"
#include "numbers/sieveBase.h"
#include "numbers/sieveRelations.h"
#include "numbers/wordModular.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace huge {

namespace {

/// Smaller primes are left out of the sieve: they take the most time and tell the least.
constexpr uint32_t leastSieved = 40;
/// Relations beyond one for each prime: each of them halves the risk of no factor.
constexpr size_t surplus = 40;

uint32_t inverseModulo(uint32_t a, uint32_t p) noexcept
{
    return uint32_t(powMod64(a, p - 2, p));
}

/// The sieve of one number. It goes over the values of (a x + b)^2 - m divided by a, m being the
/// multiple, for x around 0, where a is a product of primes of the base and b one of the roots of m
/// modulo a. From one b to the next each prime's places move by a step known before.
class QuadraticSieve {
public:
    explicit QuadraticSieve(const HugeInteger& n)
        : m_n(n), m_base(n), m_half(m_base.sizes().halfLength), m_relations(m_n),
          m_places(m_base.primes().size()), m_logs(2 * m_half)
    {
        m_primesByPlace.push_back(1); // the sign's
        for (const SieveBase::Prime& prime : m_base.primes())
            m_primesByPlace.push_back(prime.p);
        const uint32_t greatest = m_base.primes().back().p;
        m_largest = uint64_t(greatest) * m_base.sizes().largePrime;
        // The logarithm of a value less that of what may be left over, and of the small primes.
        const double value = double(m_base.multiple().bitLength()) / 2 + std::log2(double(m_half));
        m_threshold = uint8_t(std::max(10.0, value - std::log2(double(m_largest)) - 4.5));
    }

    HugeInteger factor()
    {
        size_t wanted = m_base.primes().size() + 1 + surplus;
        for (;;) {
            while (m_relations.size() < wanted)
                sieveLeading();
            HugeInteger found = m_relations.factor(m_primesByPlace);
            if (!found.isZero())
                return found;
            wanted = m_relations.size() + surplus;
        }
    }

private:
    /// Where one prime divides, counted from the start of the sieved values.
    struct Places {
        uint32_t first;
        uint32_t second;
    };

    void sieveLeading();
    void chooseLeading();
    std::vector<size_t> drawPrimes(size_t first, size_t last, size_t count);
    void addFittingPrime(std::vector<size_t>& chosen, double target) const;
    void prepareRoots();
    void nextRoot(size_t index);
    void placeFirst();
    void sieve();
    void collect();
    void tryValue(int64_t x);

    bool dividesLeading(size_t i) const noexcept
    {
        return std::find(m_chosen.begin(), m_chosen.end(), i) != m_chosen.end();
    }

    HugeInteger m_n;
    SieveBase m_base;
    size_t m_half;
    SieveRelations m_relations;
    std::vector<uint32_t> m_primesByPlace;
    uint64_t m_largest;
    uint8_t m_threshold;

    HugeInteger m_a;
    HugeInteger m_b;
    HugeInteger m_c;                            // (b^2 - m) / a
    std::vector<size_t> m_chosen;               // the primes of a
    std::set<std::vector<size_t>> m_used;       // all of them so far
    std::vector<HugeInteger> m_parts;           // b is their sum, with signs
    std::vector<std::vector<uint32_t>> m_steps; // per part and prime: 2 part / a modulo p
    std::vector<uint32_t> m_inverses;           // of a modulo p, 0 where p divides a
    std::vector<Places> m_places;
    std::vector<uint8_t> m_logs;
    std::mt19937_64 m_source{1};
};

/// Takes a product of primes near sqrt(2 m) / half, which keeps the values smallest.
void QuadraticSieve::chooseLeading()
{
    const auto& primes = m_base.primes();
    const double target = (double(m_base.multiple().bitLength()) + 1) / 2 - std::log2(m_half);
    // Primes of some eleven bits: smaller ones lose more places, greater ones give fewer products.
    const double wantedLog = std::min(11.0, std::log2(double(primes.back().p)) - 1);
    const size_t count = std::max<size_t>(2, size_t(std::lround(target / wantedLog)));
    const double ideal = std::exp2(target / double(count));
    const auto middle = std::lower_bound(
        primes.begin(), primes.end(), ideal,
        [](const SieveBase::Prime& prime, double value) { return prime.p < value; });
    const size_t reach = std::max<size_t>(10, std::min<size_t>(60, primes.size() / 4));
    const size_t center = size_t(middle - primes.begin());
    const size_t last = std::min(primes.size(), center + reach);
    const size_t first = std::max<size_t>(3, last > 2 * reach ? last - 2 * reach : 3);

    // A short base may run out of products near the target; then any other has to do.
    constexpr int fewTries = 100;
    for (int tries = 0;; ++tries) {
        xstd::XStop::poll();
        std::vector<size_t> chosen = tries < fewTries ? drawPrimes(first, last, count - 1)
                                                      : drawPrimes(3, primes.size(), count);
        if (chosen.size() < count)
            addFittingPrime(chosen, target);
        std::sort(chosen.begin(), chosen.end());
        if (m_used.insert(chosen).second) {
            m_chosen = std::move(chosen);
            return;
        }
    }
}

/// Different primes from these places of the base, none of which divides the multiple.
std::vector<size_t> QuadraticSieve::drawPrimes(size_t first, size_t last, size_t count)
{
    std::vector<size_t> chosen;
    while (chosen.size() < count) {
        const size_t i = first + m_source() % (last - first);
        if (m_base.primes()[i].root != 0 &&
            std::find(chosen.begin(), chosen.end(), i) == chosen.end())
            chosen.push_back(i);
    }
    return chosen;
}

/// One prime more, which brings the product nearest to 2^target.
void QuadraticSieve::addFittingPrime(std::vector<size_t>& chosen, double target) const
{
    const auto& primes = m_base.primes();
    for (const size_t i : chosen)
        target -= std::log2(double(primes[i].p));
    const double rest = std::exp2(target);
    size_t best = 0;
    for (size_t i = 3; i < primes.size(); ++i) {
        if (primes[i].root == 0 || std::find(chosen.begin(), chosen.end(), i) != chosen.end())
            continue;
        if (best == 0 || std::abs(primes[i].p - rest) < std::abs(primes[best].p - rest))
            best = i;
    }
    chosen.push_back(best);
}

/// b modulo each prime of a is a root of m: the parts that add up to it, and the first sum.
void QuadraticSieve::prepareRoots()
{
    const auto& primes = m_base.primes();
    m_a = HugeInteger(1);
    for (const size_t i : m_chosen)
        m_a = (m_a * int64_t(primes[i].p)).trim();
    m_parts.clear();
    m_b = HugeInteger(0);
    for (const size_t i : m_chosen) {
        const uint32_t p = primes[i].p;
        const HugeInteger others = (m_a / int64_t(p)).trim();
        uint64_t factor = uint64_t(primes[i].root) * inverseModulo(remainder32(others, p), p) % p;
        factor = std::min(factor, p - factor);
        m_parts.push_back((others * int64_t(factor)).trim());
        m_b += m_parts.back();
    }
    m_c = ((m_b * m_b - m_base.multiple()) / m_a).trim();

    m_inverses.assign(primes.size(), 0);
    m_steps.assign(m_parts.size(), std::vector<uint32_t>(primes.size()));
    for (size_t i = 1; i < primes.size(); ++i) {
        const uint32_t p = primes[i].p;
        if (dividesLeading(i))
            continue;
        m_inverses[i] = inverseModulo(remainder32(m_a, p), p);
        for (size_t part = 0; part < m_parts.size(); ++part)
            m_steps[part][i] =
                uint32_t(uint64_t(remainder32(m_parts[part], p)) * 2 % p * m_inverses[i] % p);
    }
    placeFirst();
}

/// The places of every prime for the first b: x = (root - b) / a and (-root - b) / a.
void QuadraticSieve::placeFirst()
{
    const auto& primes = m_base.primes();
    for (size_t i = 1; i < primes.size(); ++i) {
        const uint32_t p = primes[i].p;
        const uint64_t b = remainder32(m_b, p);
        const uint64_t start = m_half % p;
        const auto place = [&](uint64_t root) {
            return uint32_t(((root + p - b) * m_inverses[i] + start) % p);
        };
        m_places[i] = {place(primes[i].root), place(p - primes[i].root)};
    }
}

/// On to the next b, by Gray's code: one part changes its sign.
void QuadraticSieve::nextRoot(size_t index)
{
    const size_t part = size_t(std::countr_zero(index));
    const bool subtract = (index >> (part + 1) & 1) == 0;
    const HugeInteger twice = (m_parts[part] * int64_t(2)).trim();
    m_b = (subtract ? m_b - twice : m_b + twice).trim();
    m_c = ((m_b * m_b - m_base.multiple()) / m_a).trim();
    const auto& primes = m_base.primes();
    const std::vector<uint32_t>& steps = m_steps[part];
    for (size_t i = 1; i < primes.size(); ++i) {
        const uint32_t p = primes[i].p;
        const uint32_t step = subtract ? steps[i] : p - steps[i];
        Places& places = m_places[i];
        places.first += step;
        places.first -= places.first >= p ? p : 0;
        places.second += step;
        places.second -= places.second >= p ? p : 0;
    }
}

/// Adds the logarithm of each prime wherever it divides, block by block as the nearest cache holds.
void QuadraticSieve::sieve()
{
    std::fill(m_logs.begin(), m_logs.end(), uint8_t(0));
    const auto& primes = m_base.primes();
    const size_t length = m_logs.size();
    uint8_t* logs = m_logs.data();
    for (size_t i = 1; i < primes.size(); ++i) {
        const uint32_t p = primes[i].p;
        if (p < leastSieved || m_inverses[i] == 0)
            continue;
        const uint8_t log = primes[i].log;
        size_t first = m_places[i].first;
        size_t second = m_places[i].second;
        if (first > second)
            std::swap(first, second);
        for (; second < length; first += p, second += p) {
            logs[first] = uint8_t(logs[first] + log);
            logs[second] = uint8_t(logs[second] + log);
        }
        if (first < length)
            logs[first] = uint8_t(logs[first] + log);
    }
}

/// Divides the value at x by all primes that the places tell, and keeps it if little is left.
void QuadraticSieve::tryValue(int64_t x)
{
    const auto& primes = m_base.primes();
    HugeInteger rest = ((m_a * x + m_b * int64_t(2)) * x + m_c).trim();
    SieveRelation relation;
    if (rest.isNegative()) {
        relation.places.push_back(0);
        rest.setNegative_(false);
    }
    if (rest.isZero())
        return;
    const size_t twos = rest.trailingZeroBits();
    rest = (rest >> int64_t(twos)).trim();
    relation.places.insert(relation.places.end(), twos, 1);
    const auto at = uint32_t(x + int64_t(m_half));
    Limb* limbs = rest.limbs();
    size_t n = rest.effectiveSize();
    LimbScratch quotient(n);
    for (size_t i = 1; i < primes.size(); ++i) {
        const uint32_t p = primes[i].p;
        if (m_inverses[i] != 0) {
            const uint32_t place = at % p;
            if (place != m_places[i].first && place != m_places[i].second)
                continue;
        }
        while (limbsDivLimb(limbs, n, p, quotient) == 0) {
            limbsCopy(limbs, quotient, n);
            n = limbsEffective(limbs, n);
            relation.places.push_back(uint32_t(i) + 1);
        }
    }
    if (n != 1 || limbs[0] > m_largest)
        return;
    for (const size_t i : m_chosen)
        relation.places.push_back(uint32_t(i) + 1);
    relation.x = (m_a * x + m_b).trim();
    m_relations.add(std::move(relation), limbs[0]);
}

/// Goes through the sums for values that are likely to fall apart.
void QuadraticSieve::collect()
{
    for (size_t at = 0; at < m_logs.size(); ++at) {
        if (m_logs[at] >= m_threshold)
            tryValue(int64_t(at) - int64_t(m_half));
    }
}

/// All values of one leading factor.
void QuadraticSieve::sieveLeading()
{
    chooseLeading();
    prepareRoots();
    const size_t count = size_t(1) << (m_parts.size() - 1);
    for (size_t index = 1;; ++index) {
        xstd::XStop::poll();
        sieve();
        collect();
        if (index == count)
            return;
        nextRoot(index);
    }
}

} // namespace

HugeInteger sieveFactor(const HugeInteger& n)
{
    return QuadraticSieve(n).factor();
}

} // namespace huge
