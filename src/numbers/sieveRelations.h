#pragma once

#include "numbers/HugeInteger.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace huge {

/// x^2 is congruent to a product of primes of the base, modulo the number that is factored. The
/// primes are told by their places in the base, each as often as it divides; place 0 is the sign.
struct SieveRelation {
    HugeInteger x;
    std::vector<uint32_t> places;
};

/// The relations that a sieve has found. One that leaves a large prime over waits for another with
/// the same: their product has its square, which is divided out.
class SieveRelations {
public:
    explicit SieveRelations(const HugeInteger& n) : m_n(n) {}

    void add(SieveRelation relation, uint64_t largePrime);
    size_t size() const noexcept { return m_whole.size(); }
    /// A factor of the number that is neither 1 nor the number, or 0 where no combination of the
    /// relations to a square on both sides gives one. primes tells the prime at each place.
    HugeInteger factor(const std::vector<uint32_t>& primes) const;

private:
    HugeInteger factorOf(const std::vector<uint64_t>& chosen,
                         const std::vector<uint32_t>& primes) const;

    const HugeInteger& m_n;
    std::vector<SieveRelation> m_whole;
    std::unordered_map<uint64_t, SieveRelation> m_partial;
};

} // namespace huge
