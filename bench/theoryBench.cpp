// Number theory, with GMP's functions for the same work beside them where it is installed. The
// argument is the count of limbs, or of bits where primes are drawn or factors found.

#include "numbers/numberTheory.h"

#include <benchmark/benchmark.h>

#include <string>

#ifdef TAVIX_HAVE_GMP
#include <gmp.h>
#endif

using namespace huge;

namespace {

HugeInteger randomOdd(size_t limbs)
{
    HugeInteger x;
    return x.randomBits_(64 * limbs, true).setBit_(0, true);
}

HugeInteger randomEven(size_t limbs)
{
    return randomOdd(limbs) - 1;
}

/// 2^1024 - 105, the greatest prime of 1,024 bits.
HugeInteger prime1024()
{
    HugeInteger p;
    p.setBits_(0, 1023, true);
    return p - 104;
}

HugeInteger primeOfBits(int64_t bits)
{
    for (;;) {
        HugeInteger p = randomPrime(bits);
        if (p.bitLength() == size_t(bits))
            return p;
    }
}

void power(benchmark::State& state, const HugeInteger& m)
{
    const HugeInteger a = randomOdd(m.size());
    const HugeInteger e = randomOdd(m.size());
    for (auto _ : state)
        benchmark::DoNotOptimize(powMod(a, e, m));
}

void powerModuloOdd(benchmark::State& state)
{
    power(state, randomOdd(size_t(state.range(0))));
}
BENCHMARK(powerModuloOdd)->Arg(1)->Arg(2)->Arg(4)->Arg(16)->Arg(64)->Unit(benchmark::kMicrosecond);

void powerModuloEven(benchmark::State& state)
{
    power(state, randomEven(size_t(state.range(0))));
}
BENCHMARK(powerModuloEven)->Arg(1)->Arg(4)->Arg(16)->Unit(benchmark::kMicrosecond);

void inverse(benchmark::State& state)
{
    const HugeInteger m = prime1024();
    const HugeInteger a = randomOdd(15);
    for (auto _ : state)
        benchmark::DoNotOptimize(invMod(a, m));
}
BENCHMARK(inverse)->Unit(benchmark::kMicrosecond);

void primality1024(benchmark::State& state)
{
    const HugeInteger p = prime1024();
    for (auto _ : state)
        benchmark::DoNotOptimize(isPrime(p));
}
BENCHMARK(primality1024)->Unit(benchmark::kMillisecond);

void randomPrimes(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(randomPrime(state.range(0)));
}
BENCHMARK(randomPrimes)->Arg(64)->Arg(512)->Unit(benchmark::kMillisecond);

void factorsOfTwoPrimes(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        const HugeInteger n = primeOfBits(state.range(0)) * primeOfBits(state.range(0));
        state.ResumeTiming();
        benchmark::DoNotOptimize(primeFactors(n));
    }
}
BENCHMARK(factorsOfTwoPrimes)->Arg(32)->Arg(40)->Arg(50)->Arg(64)->Unit(benchmark::kMillisecond);

void greatestFactorial(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(factorial(HugeInteger(state.range(0))));
}
BENCHMARK(greatestFactorial)->Arg(1000)->Arg(80000)->Unit(benchmark::kMillisecond);

#ifdef TAVIX_HAVE_GMP

void toGmp(mpz_t r, const HugeInteger& x)
{
    mpz_init(r);
    mpz_import(r, x.size(), -1, sizeof(Limb), 0, 0, x.limbs());
}

void powerByGmp(benchmark::State& state)
{
    mpz_t a, e, m, r;
    toGmp(a, randomOdd(size_t(state.range(0))));
    toGmp(e, randomOdd(size_t(state.range(0))));
    toGmp(m, randomOdd(size_t(state.range(0))));
    mpz_init(r);
    for (auto _ : state)
        mpz_powm(r, a, e, m);
    mpz_clears(a, e, m, r, nullptr);
}
BENCHMARK(powerByGmp)->Arg(1)->Arg(2)->Arg(4)->Arg(16)->Arg(64)->Unit(benchmark::kMicrosecond);

void inverseByGmp(benchmark::State& state)
{
    mpz_t a, m, r;
    toGmp(a, randomOdd(15));
    toGmp(m, prime1024());
    mpz_init(r);
    for (auto _ : state)
        mpz_invert(r, a, m);
    mpz_clears(a, m, r, nullptr);
}
BENCHMARK(inverseByGmp)->Unit(benchmark::kMicrosecond);

#endif

} // namespace
