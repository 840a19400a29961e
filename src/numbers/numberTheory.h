#pragma once

#include "common/XString.h"
#include "numbers/HugeInteger.h"

#include <cstddef>
#include <cstdint>
#include <map>

namespace huge {

// Number theory on integers. A modulus of 0 or below throws std::runtime_error "The modulus must be
// positive". What can take long looks for a stop of the calculation.

/// Throws that failure where m is 0 or below.
void requireModulus(const HugeInteger& m);
/// The inverse of a modulo m, 0 modulo 1. Throws std::runtime_error "There is no inverse".
HugeInteger invMod(const HugeInteger& a, const HugeInteger& m);
/// (a * b) % m, with the sign of the product.
HugeInteger mulMod(const HugeInteger& a, const HugeInteger& b, const HugeInteger& m);
/// a^e % m, with the sign of the power; a negative e takes the inverse of the power. Exponent 0
/// gives 1 and exponent 1 gives a as it stands, whatever the modulus.
HugeInteger powMod(const HugeInteger& a, const HugeInteger& e, const HugeInteger& m);
/// A square root of a modulo the prime p, or 0 where there is none and where p is 0. For a p that
/// is not prime it may miss a root, but what it gives is one.
HugeInteger sqrtMod(const HugeInteger& a, const HugeInteger& p);
/// Whether a is a quadratic residue modulo the odd prime p, by Euler's criterion; 0 is none.
bool isQuadratic(const HugeInteger& a, const HugeInteger& p);

/// Whether n passes that many rounds of the test of Miller and Rabin with random bases (Knuth, The
/// Art of Computer Programming 2, 4.5.4, algorithm P). 1, 2 and 3 do, other even numbers and
/// everything below 1 don't.
bool millerRabin(const HugeInteger& n, int rounds);
/// Whether n is prime: below 33 bits for certain, above with so many rounds of the test of Miller
/// and Rabin. By this program's tradition 1 counts as a prime, and so do -1, -2 and -3; no other
/// negative number does.
bool isPrime(const HugeInteger& n, int rounds = 20);
/// A random prime of at most bits bits, 1 included: random numbers are drawn until one is prime.
/// Throws std::runtime_error "A random prime needs at least one bit", or the limit's text.
HugeInteger randomPrime(int64_t bits);

/// Primes in rising order with their exponents.
using FactorTable = std::map<HugeInteger, uint32_t>;

/// A factor of the composite n that is neither 1 nor n: by trial division, as a root, by rho or by
/// elliptic curves. It takes as long as the second greatest prime factor asks for. Throws
/// std::runtime_error "Only a composite number has a factor".
HugeInteger pollardFactor(const HugeInteger& n);
/// Adds the prime factors of the magnitude of n to the table; 0 and 1 have none.
void factorize(const HugeInteger& n, FactorTable& table);
FactorTable primeFactors(const HugeInteger& n);
/// The table as text, "2^3 * 3 * 5"; empty for no factors.
xstd::XString factorText(const FactorTable& table);

/// Euler's totient of the magnitude of n, from its factors; 0 for 0.
HugeInteger euler(const HugeInteger& n, const FactorTable& table);
HugeInteger euler(const HugeInteger& n);
/// The least positive k with a^k = 1 modulo m, or 0 where a and m are not coprime.
HugeInteger order(const HugeInteger& m, const HugeInteger& a);
/// The least primitive root of p, or 0 where p is not prime.
HugeInteger primeRoot(const HugeInteger& p);

/// n!, 1 for n below 2. From 88,771 on it throws the limit's failure at once.
HugeInteger factorial(const HugeInteger& n);

} // namespace huge
