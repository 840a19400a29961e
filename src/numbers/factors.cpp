#include "numbers/numberTheory.h"

#include "common/XStop.h"
#include "common/XTextForms.h"
#include "numbers/LimbPool.h"
#include "numbers/ellipticCurves.h"
#include "numbers/montgomery.h"
#include "numbers/quadraticSieve.h"
#include "numbers/smallPrimes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <utility>

namespace huge {

namespace {

/// Divides x by divisor as often as it goes and gives the count.
uint32_t divideOut(HugeInteger& x, int64_t divisor)
{
    uint32_t count = 0;
    for (HugeInteger quotient, rest;; ++count) {
        xstd::XStop::poll();
        HugeInteger::divide(x, HugeInteger(divisor), &quotient, &rest);
        if (!rest.isZero())
            return count;
        x = quotient.trim();
    }
}

/// Divides x by the power of p in it and gives the exponent.
uint32_t takeOut(HugeInteger& x, uint32_t p)
{
    // First by a limb's worth of p: a factorial has tens of thousands of its smallest primes.
    int64_t power = p;
    uint32_t exponent = 1;
    for (; power <= INT64_MAX / p; ++exponent)
        power *= p;
    const uint32_t whole = exponent * divideOut(x, power);
    return whole + divideOut(x, p);
}

void takeOutPrimes(HugeInteger& x, const SmallPrimes& primes, FactorTable& table)
{
    for (const SmallPrimes::Run& run : primes.runs()) {
        xstd::XStop::poll();
        if (x.isOne())
            return;
        LimbScratch quotient(x.size());
        const Limb rest = limbsDivLimb(x.limbs(), x.size(), run.product, quotient);
        for (size_t i = run.first; i < run.end; ++i) {
            const uint32_t p = primes.primes()[i];
            if (rest % p == 0)
                table[HugeInteger(int64_t(p))] += takeOut(x, p);
        }
    }
}

/// Takes 2 and the small primes out of x, which is above 0.
void takeOutSmallPrimes(HugeInteger& x, FactorTable& table)
{
    const size_t twos = x.trailingZeroBits();
    if (twos != 0) {
        table[HugeInteger(2)] += uint32_t(twos);
        x = (x >> int64_t(twos)).trim();
    }
    takeOutPrimes(x, SmallPrimes::table(), table);
    constexpr size_t longSize = 16; // from here on divisions by limbs are far cheaper than products
    if (x.size() >= longSize)
        takeOutPrimes(x, SmallPrimes::longTable(), table);
}

/// A little more than the k-th root of x, by logarithms: Newton's iteration from a start that is
/// twice too large would take k steps.
HugeInteger rootFromAbove(const HugeInteger& x, uint32_t k)
{
    const size_t bits = x.bitLength();
    const int64_t low = bits > 64 ? int64_t(bits - 64) : 0;
    const double log = (double(low) + std::log2((x >> low).asDouble())) / k;
    const int64_t shift = std::max<int64_t>(0, int64_t(log) - 60);
    HugeInteger root(int64_t(std::exp2(log - double(shift)) * (1 + 1e-9)) + 2);
    root.grow_(size_t(shift) / 64 + 2);
    return root << shift;
}

/// The whole part of the k-th root of x, by Newton's iteration from above.
HugeInteger rootOf(const HugeInteger& x, uint32_t k)
{
    HugeInteger root = rootFromAbove(x, k);
    for (;;) {
        xstd::XStop::poll();
        const HugeInteger next = (root * int64_t(k - 1) + x / root.pow(int64_t(k - 1))) / k;
        if (next >= root)
            return root;
        root = next.trim();
    }
}

/// Whether x can be a power with the prime exponent k: modulo a prime q = 1 + 2 j k only one in k
/// residues is one. It saves nearly all roots.
bool mayBePower(const HugeInteger& x, int64_t k)
{
    LimbScratch quotient(x.size());
    int tests = k < 8 ? 12 : 4;
    for (int64_t q = 2 * k + 1; tests != 0; q += 2 * k) {
        if (!xstd::isSmallPrime(q))
            continue;
        xstd::XStop::poll();
        const HugeInteger rest(int64_t(limbsDivLimb(x.limbs(), x.size(), Limb(q), quotient)));
        if (rest.isZero())
            continue;
        if (!powMod(rest, HugeInteger((q - 1) / k), HugeInteger(q)).isOne())
            return false;
        --tests;
    }
    return true;
}

struct PerfectPower {
    HugeInteger root;
    uint32_t exponent; ///< 1 where the number is no power
};

/// x as a power with a prime exponent, where it is one; its prime factors are above the table's.
PerfectPower perfectPower(const HugeInteger& x)
{
    const uint32_t most = uint32_t(x.bitLength() / 12); // a factor has 13 bits at least
    for (const uint32_t k : primesBelow(most + 1)) {
        if (!mayBePower(x, k))
            continue;
        const HugeInteger root = rootOf(x, k);
        if (root.pow(int64_t(k)) == x)
            return {root, k};
    }
    return {x, 1};
}

/// The search for a cycle of x -> x^2 + c modulo n, which closes early modulo a small factor
/// (Brent, An improved Monte Carlo factorization algorithm).
class Rho {
public:
    explicit Rho(const HugeInteger& n)
        : m_n(n), m_ring(n), m_size(m_ring.size()), m_numbers(6 * m_size), m_c(m_numbers.get()),
          m_start(m_c + m_size), m_x(m_start + m_size), m_saved(m_x + m_size),
          m_product(m_saved + m_size), m_difference(m_product + m_size)
    {}

    /// A factor that is neither 1 nor n, or 0 after so many steps.
    HugeInteger search(uint64_t maxSteps)
    {
        while (m_steps < maxSteps) {
            HugeInteger factor = searchOnce(maxSteps);
            if (!factor.isOne() && factor != m_n)
                return factor;
        }
        return HugeInteger(0);
    }

private:
    static constexpr uint64_t batch = 127; // products per divisor: a divisor costs many of them

    void next(Limb* x)
    {
        m_ring.multiply(x, x, x);
        m_ring.add(x, m_c, x);
    }
    HugeInteger commonFactor(const Limb* a) const { return gcd(m_ring.leave(a), m_n); }
    void draw(Limb* r)
    {
        HugeInteger random;
        m_ring.enter(random.randomBits_(m_n.bitLength(), false), r);
    }

    HugeInteger searchOnce(uint64_t maxSteps)
    {
        draw(m_c);
        draw(m_x);
        limbsCopy(m_product, m_ring.one(), m_size);
        for (uint64_t length = 1;; length *= 2) {
            limbsCopy(m_start, m_x, m_size);
            for (uint64_t i = 0; i < length; ++i)
                next(m_x);
            for (uint64_t done = 0; done < length; done += batch) {
                xstd::XStop::poll();
                limbsCopy(m_saved, m_x, m_size);
                const uint64_t count = std::min(batch, length - done);
                for (uint64_t i = 0; i < count; ++i) {
                    next(m_x);
                    m_ring.subtract(m_start, m_x, m_difference);
                    m_ring.multiply(m_product, m_difference, m_product);
                }
                m_steps += count;
                const HugeInteger factor = commonFactor(m_product);
                if (!factor.isOne())
                    return factor != m_n ? factor : searchAgain(count);
                if (m_steps >= maxSteps)
                    return factor;
            }
        }
    }

    /// All factors came up in one batch: goes through it again step by step.
    HugeInteger searchAgain(uint64_t count)
    {
        for (uint64_t i = 0; i < count; ++i) {
            next(m_saved);
            m_ring.subtract(m_start, m_saved, m_difference);
            HugeInteger factor = commonFactor(m_difference);
            if (!factor.isOne())
                return factor;
        }
        return m_n;
    }

    const HugeInteger& m_n;
    Montgomery m_ring;
    size_t m_size;
    LimbScratch m_numbers;
    Limb* m_c;
    Limb* m_start;
    Limb* m_x;
    Limb* m_saved;
    Limb* m_product;
    Limb* m_difference;
    uint64_t m_steps = 0;
};

/// Levels of curves that are tried before the sieve: their time stays well below the sieve's.
size_t levelsBeforeSieve(size_t bits) noexcept
{
    return bits <= 150 ? 0 : bits <= 200 ? 1 : bits <= 250 ? 2 : 3;
}

/// A factor of a composite number without small factors that is no power. Rho finds those of some
/// ten digits at once. What is left is for the sieve, whose time depends on the number alone, after
/// some curves, which find a factor much smaller than the others; and for curves alone where the
/// number is too long to be sieved.
HugeInteger splitComposite(const HugeInteger& n)
{
    constexpr uint64_t rhoSteps = uint64_t(1) << 15;
    const size_t bits = n.bitLength();
    HugeInteger factor = Rho(n).search(bits <= 64 ? UINT64_MAX : rhoSteps);
    if (!factor.isZero())
        return factor;
    if (bits > sieveBits)
        return curveFactor(n);
    factor = curveFactor(n, levelsBeforeSieve(bits));
    return factor.isZero() ? sieveFactor(n) : factor;
}

/// Adds the prime factors of x^exponent; x is above 1 and has no small ones.
void factorizeRest(const HugeInteger& x, uint32_t exponent, FactorTable& table)
{
    // First what is cheap: a long number's root is found long before a test of its primality ends.
    const PerfectPower power = perfectPower(x);
    if (power.exponent > 1) {
        factorizeRest(power.root, exponent * power.exponent, table);
        return;
    }
    if (isPrime(x)) {
        table[x] += exponent;
        return;
    }
    const HugeInteger factor = splitComposite(x);
    factorizeRest(factor.trim(), exponent, table);
    factorizeRest((x / factor).trim(), exponent, table);
}

} // namespace

HugeInteger pollardFactor(const HugeInteger& n)
{
    const auto fail = [] { throw std::runtime_error("Only a composite number has a factor"); };
    if (n < 4)
        fail();
    HugeInteger rest = n.trim();
    FactorTable small;
    takeOutSmallPrimes(rest, small);
    if (!small.empty()) {
        const HugeInteger& factor = small.begin()->first;
        if (factor == n)
            fail();
        return factor;
    }
    const PerfectPower power = perfectPower(rest);
    if (power.exponent > 1)
        return power.root;
    if (isPrime(rest))
        fail();
    return splitComposite(rest);
}

void factorize(const HugeInteger& n, FactorTable& table)
{
    if (n.isZero())
        return;
    HugeInteger rest = n.abs().trim();
    takeOutSmallPrimes(rest, table);
    if (!rest.isOne())
        factorizeRest(rest, 1, table);
}

FactorTable primeFactors(const HugeInteger& n)
{
    FactorTable table;
    factorize(n, table);
    return table;
}

xstd::XString factorText(const FactorTable& table)
{
    xstd::XString text;
    for (const auto& [prime, exponent] : table) {
        if (!text.empty())
            text += " * ";
        text += prime.toString();
        if (exponent > 1)
            text += "^" + std::to_string(exponent);
    }
    return text;
}

HugeInteger euler(const HugeInteger& n, const FactorTable& table)
{
    HugeInteger result = n.abs();
    for (const auto& [prime, exponent] : table)
        result = result / prime * (prime - 1);
    return result;
}

HugeInteger euler(const HugeInteger& n)
{
    return euler(n, primeFactors(n));
}

HugeInteger order(const HugeInteger& m, const HugeInteger& a)
{
    requireModulus(m);
    if (m.isOne())
        return HugeInteger(1);
    if (!gcd(m, a).abs().isOne())
        return HugeInteger(0);
    const HugeInteger x = a % m;
    const FactorTable factors = primeFactors(m);
    FactorTable totientFactors; // from those of m: the totient itself may be out of reach
    for (const auto& [prime, exponent] : factors) {
        if (exponent > 1)
            totientFactors[prime] += exponent - 1;
        factorize(prime - 1, totientFactors);
    }
    HugeInteger result = euler(m, factors);
    for (const auto& [prime, exponent] : totientFactors) {
        for (uint32_t i = 0; i < exponent; ++i) {
            const HugeInteger shorter = result / prime;
            const HugeInteger power = powMod(x, shorter, m);
            if (!(power.isNegative() ? power + m : power).isOne())
                break;
            result = shorter;
        }
    }
    return result;
}

HugeInteger primeRoot(const HugeInteger& p)
{
    if (p == 2)
        return HugeInteger(1);
    if (p < 3 || !isPrime(p))
        return HugeInteger(0);
    const HugeInteger totient = p - 1;
    const FactorTable factors = primeFactors(totient);
    for (int64_t g = 2; g < 0x7FFFFFFF; ++g) {
        const bool isRoot = std::none_of(factors.begin(), factors.end(), [&](const auto& factor) {
            return powMod(HugeInteger(g), totient / factor.first, p).isOne();
        });
        if (isRoot)
            return HugeInteger(g);
    }
    return HugeInteger(0);
}

} // namespace huge
