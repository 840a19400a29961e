#pragma once

#include "numbers/limbs.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace huge {

/// The odd primes below a limit in rising order, and runs of them whose product fits a limb: one
/// division of a long number by such a product serves the whole run.
class SmallPrimes {
public:
    struct Run {
        Limb product;
        size_t first; ///< index of the run's first prime
        size_t end;   ///< and behind its last
    };

    /// The primes below 4,096, made at the first call.
    static const SmallPrimes& table();
    /// The primes below 2^20, made at the first call.
    static const SmallPrimes& longTable();

    const std::vector<uint32_t>& primes() const noexcept { return m_primes; }
    const std::vector<Run>& runs() const noexcept { return m_runs; }

private:
    explicit SmallPrimes(uint32_t limit);

    std::vector<uint32_t> m_primes;
    std::vector<Run> m_runs;
};

/// The primes below limit in rising order, by the sieve of Eratosthenes. Looks for a stop.
std::vector<uint32_t> primesBelow(uint32_t limit);

} // namespace huge
