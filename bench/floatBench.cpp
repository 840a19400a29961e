// Arithmetic of floats, with MPFR's beside it where it is installed. The argument is the count of
// limbs.

#include "numbers/HugeFloat.h"

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <utility>

#ifdef TAVIX_HAVE_MPFR
#include <mpfr.h>
#endif

using namespace huge;

namespace {

enum Operation { Add, Subtract, Multiply, Divide, Root };

HugeFloat randomFloat(size_t limbs)
{
    static std::mt19937_64 source(1);
    HugeFloat x(1, limbs);
    for (size_t i = 0; i < limbs; ++i)
        x.limbs()[i] = source();
    x.limbs()[limbs - 1] |= Limb(1) << 63;
    return x;
}

HugeFloat calculate(Operation operation, const HugeFloat& a, const HugeFloat& b)
{
    switch (operation) {
    case Add:
        return a + b;
    case Subtract:
        return a - b;
    case Multiply:
        return a * b;
    case Divide:
        return a / b;
    case Root:
        break;
    }
    return a.sqrt();
}

void measure(benchmark::State& state, Operation operation)
{
    const HugeFloat a = randomFloat(size_t(state.range(0)));
    const HugeFloat b = randomFloat(size_t(state.range(0))).shiftExponent(3);
    for (auto _ : state)
        benchmark::DoNotOptimize(calculate(operation, a, b));
}

#ifdef TAVIX_HAVE_MPFR
void calculatePeer(Operation operation, mpfr_t r, mpfr_t a, mpfr_t b)
{
    switch (operation) {
    case Add:
        mpfr_add(r, a, b, MPFR_RNDZ);
        break;
    case Subtract:
        mpfr_sub(r, a, b, MPFR_RNDZ);
        break;
    case Multiply:
        mpfr_mul(r, a, b, MPFR_RNDZ);
        break;
    case Divide:
        mpfr_div(r, a, b, MPFR_RNDZ);
        break;
    case Root:
        mpfr_sqrt(r, a, MPFR_RNDZ);
        break;
    }
}

void measurePeer(benchmark::State& state, Operation operation)
{
    gmp_randstate_t source;
    gmp_randinit_default(source);
    mpfr_t a, b, r;
    for (mpfr_ptr x : {a, b, r}) {
        mpfr_init2(x, 64 * state.range(0));
        mpfr_urandomb(x, source);
    }
    mpfr_mul_2si(b, b, -3, MPFR_RNDZ);
    for (auto _ : state) {
        calculatePeer(operation, r, a, b);
        benchmark::ClobberMemory();
    }
    for (mpfr_ptr x : {a, b, r})
        mpfr_clear(x);
    gmp_randclear(source);
}
#endif

} // namespace

int main(int argc, char** argv)
{
    const std::pair<const char*, Operation> rows[] = {{"add", Add},
                                                      {"subtract", Subtract},
                                                      {"multiply", Multiply},
                                                      {"divide", Divide},
                                                      {"sqrt", Root}};
    for (const auto& [name, operation] : rows) {
        for (const int64_t limbs : {1, 4, 16, 64, 1000}) {
            benchmark::RegisterBenchmark(name, measure, operation)->Arg(limbs);
#ifdef TAVIX_HAVE_MPFR
            const std::string peer = std::string(name) + "/mpfr";
            benchmark::RegisterBenchmark(peer.c_str(), measurePeer, operation)->Arg(limbs);
#endif
        }
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
