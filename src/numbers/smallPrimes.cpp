#include "numbers/smallPrimes.h"

#include "common/XStop.h"

namespace huge {

SmallPrimes::SmallPrimes(uint32_t limit) : m_primes(primesBelow(limit))
{
    m_primes.erase(m_primes.begin()); // 2
    Run run{1, 0, 0};
    for (size_t i = 0; i < m_primes.size(); ++i) {
        if (Limb128(run.product) * m_primes[i] >> 64 != 0) {
            m_runs.push_back(run);
            run = {1, i, i};
        }
        run.product *= m_primes[i];
        run.end = i + 1;
    }
    m_runs.push_back(run);
}

const SmallPrimes& SmallPrimes::table()
{
    static const SmallPrimes made(4096);
    return made;
}

const SmallPrimes& SmallPrimes::longTable()
{
    static const SmallPrimes made(1 << 20);
    return made;
}

std::vector<uint32_t> primesBelow(uint32_t limit)
{
    std::vector<bool> isComposite(limit);
    std::vector<uint32_t> primes;
    for (uint32_t n = 2; n < limit; ++n) {
        if (isComposite[n])
            continue;
        xstd::XStop::poll();
        primes.push_back(n);
        for (uint64_t multiple = uint64_t(n) * n; multiple < limit; multiple += n)
            isComposite[multiple] = true;
    }
    return primes;
}

} // namespace huge
