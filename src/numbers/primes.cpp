#include "numbers/numberTheory.h"

#include "common/XStop.h"
#include "common/XTextForms.h"
#include "numbers/LimbPool.h"
#include "numbers/montgomery.h"
#include "numbers/smallPrimes.h"

#include <stdexcept>

namespace huge {

namespace {

/// Primes up to this length are found by trial division.
constexpr size_t smallBits = 32;

/// Whether an odd number above the table's primes is a multiple of one. Most composite numbers
/// are, which is seen long before a power could be taken; a number of one limb gets fewer trials,
/// since its powers are cheap.
bool hasSmallFactor(const HugeInteger& n)
{
    const SmallPrimes& table = SmallPrimes::table();
    const size_t size = n.effectiveSize();
    const size_t runs = size == 1 ? 4 : size < 4 ? 16 : table.runs().size();
    LimbScratch quotient(size);
    for (size_t i = 0; i < runs; ++i) {
        const SmallPrimes::Run& run = table.runs()[i];
        const Limb rest = limbsDivLimb(n.limbs(), size, run.product, quotient);
        for (size_t k = run.first; k < run.end; ++k) {
            if (rest % table.primes()[k] == 0)
                return true;
        }
    }
    return false;
}

/// A base of the test: neither 0 nor 1 nor n - 1, which every odd number above 3 leaves room for.
HugeInteger randomBase(const HugeInteger& n, size_t bits)
{
    for (;;) {
        HugeInteger a;
        a = a.randomBits_(bits, true) % n;
        if (!a.isZero() && !a.isOne() && a != n - 1)
            return a;
    }
}

/// The test of Miller and Rabin for an odd number above 3.
class MillerRabin {
public:
    explicit MillerRabin(const HugeInteger& n)
        : m_n(n), m_bits(n.bitLength()), m_ring(n), m_twos((n - 1).trailingZeroBits()),
          m_odd((n - 1) >> int64_t(m_twos)), m_minusOne(m_ring.size()), m_x(m_ring.size())
    {
        limbsSub(m_ring.modulus(), m_ring.size(), m_ring.one(), m_ring.size(), m_minusOne);
    }

    bool passesRound()
    {
        m_ring.enter(randomBase(m_n, m_bits), m_x);
        m_ring.power(m_x, m_odd, m_x);
        if (m_ring.isEqual(m_x, m_ring.one()) || m_ring.isEqual(m_x, m_minusOne))
            return true;
        for (size_t i = 1; i < m_twos; ++i) {
            xstd::XStop::poll();
            m_ring.multiply(m_x, m_x, m_x);
            if (m_ring.isEqual(m_x, m_minusOne))
                return true;
            if (m_ring.isEqual(m_x, m_ring.one()))
                return false;
        }
        return false;
    }

private:
    const HugeInteger& m_n;
    size_t m_bits;
    Montgomery m_ring;
    size_t m_twos; // n - 1 = m_odd * 2^m_twos
    HugeInteger m_odd;
    LimbScratch m_minusOne;
    LimbScratch m_x;
};

} // namespace

bool millerRabin(const HugeInteger& n, int rounds)
{
    if (n.isNegative() || n.isZero())
        return false;
    if (n <= 3)
        return true;
    if (n.isEven())
        return false;
    MillerRabin test(n);
    for (int i = 0; i < rounds; ++i) {
        xstd::XStop::poll();
        if (!test.passesRound())
            return false;
    }
    return true;
}

bool isPrime(const HugeInteger& n, int rounds)
{
    const size_t bits = n.bitLength();
    if (bits < 3)
        return bits != 0;
    if (n.isEven() || n.isNegative())
        return false;
    if (bits <= smallBits)
        return xstd::isSmallPrime(n.asInt64());
    return !hasSmallFactor(n) && millerRabin(n, rounds);
}

HugeInteger randomPrime(int64_t bits)
{
    if (bits < 1)
        throw std::runtime_error("A random prime needs at least one bit");
    if (uint64_t(bits) > LimbPool::maxBits)
        LimbPool::failLimit();
    HugeInteger x;
    for (;;) {
        xstd::XStop::poll();
        if (isPrime(x.randomBits_(size_t(bits), false), 20))
            return x;
    }
}

} // namespace huge
