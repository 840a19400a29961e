// Decimal text of integers and floats, with GMP's conversions beside them where it is installed.
// The argument is the count of limbs.

#include "numbers/HugeFloat.h"

#include <benchmark/benchmark.h>

#include <string>

#ifdef TAVIX_HAVE_GMP
#include <gmp.h>
#endif

using namespace huge;

namespace {

HugeInteger randomInteger(size_t limbs)
{
    HugeInteger x;
    return x.randomBits_(64 * limbs, true);
}

/// A float with half of its bits behind the point.
HugeFloat randomFloat(size_t limbs)
{
    return HugeFloat(randomInteger(limbs)).shiftExponent(32 * int64_t(limbs));
}

void printInteger(benchmark::State& state)
{
    const HugeInteger x = randomInteger(size_t(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(x.toString());
}
BENCHMARK(printInteger)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

void readInteger(benchmark::State& state)
{
    const xstd::XString text = randomInteger(size_t(state.range(0))).toString();
    for (auto _ : state) {
        HugeInteger x;
        benchmark::DoNotOptimize(x.fromText_(text));
    }
}
BENCHMARK(readInteger)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

void printFloat(benchmark::State& state)
{
    const HugeFloat x = randomFloat(size_t(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(x.toString());
}
BENCHMARK(printFloat)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

void readFloat(benchmark::State& state)
{
    const size_t limbs = size_t(state.range(0));
    const xstd::XString text = randomFloat(limbs).toString();
    for (auto _ : state)
        benchmark::DoNotOptimize(HugeFloat::fromText_(text, limbs));
}
BENCHMARK(readFloat)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

/// 2^2000000000 at the given precision, told by a power of ten.
void printScaledFloat(benchmark::State& state)
{
    const HugeFloat x = HugeFloat(1, size_t(state.range(0))).shiftExponent(-2000000000);
    for (auto _ : state)
        benchmark::DoNotOptimize(x.toString());
}
BENCHMARK(printScaledFloat)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

#ifdef TAVIX_HAVE_GMP

void printIntegerGmp(benchmark::State& state)
{
    const std::string digits = randomInteger(size_t(state.range(0))).toString();
    mpz_t x;
    mpz_init_set_str(x, digits.c_str(), 10);
    std::string text(digits.size() + 2, '\0');
    for (auto _ : state)
        benchmark::DoNotOptimize(mpz_get_str(text.data(), 10, x));
    mpz_clear(x);
}
BENCHMARK(printIntegerGmp)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

void readIntegerGmp(benchmark::State& state)
{
    const std::string text = randomInteger(size_t(state.range(0))).toString();
    mpz_t x;
    mpz_init(x);
    for (auto _ : state)
        benchmark::DoNotOptimize(mpz_set_str(x, text.c_str(), 10));
    mpz_clear(x);
}
BENCHMARK(readIntegerGmp)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

#endif

} // namespace
