// The elementary functions, with MPFR's beside them where it is installed. The argument is the
// count of limbs. Tables and constants are there before the clock runs.

#include "numbers/elementary.h"

#include <benchmark/benchmark.h>

#include <random>
#include <string>

#ifdef TAVIX_HAVE_MPFR
#include <mpfr.h>
#endif

using namespace huge;

namespace {

/// A random number from 1/2 to 1, or twice that.
HugeFloat randomFloat(size_t limbs, int32_t exponent)
{
    static std::mt19937_64 source(1);
    HugeFloat x = HugeFloat::fromUnsigned(1, limbs);
    for (size_t i = 0; i < limbs; ++i)
        x.limbs()[i] = source();
    x.limbs()[limbs - 1] |= Limb(1) << 63;
    return x.shiftExponent(-int64_t(exponent));
}

using Function = HugeFloat (*)(const HugeFloat&);

#ifdef TAVIX_HAVE_MPFR
using PeerFunction = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);
#else
using PeerFunction = void*;
#endif

struct Row {
    const char* name;
    Function function;
    PeerFunction peer;
    int32_t exponent; // of the arguments
};

void measure(benchmark::State& state, Function function, int32_t exponent)
{
    const HugeFloat x = randomFloat(size_t(state.range(0)), exponent);
    benchmark::DoNotOptimize(function(x));
    for (auto _ : state)
        benchmark::DoNotOptimize(function(x));
}

#ifdef TAVIX_HAVE_MPFR
#define PEER(function) function

void measurePeer(benchmark::State& state, PeerFunction function, int32_t exponent)
{
    const mpfr_prec_t bits = 64 * state.range(0);
    const HugeFloat x = randomFloat(size_t(state.range(0)), exponent);
    mpfr_t argument, result;
    mpfr_init2(argument, bits);
    mpfr_init2(result, bits);
    mpfr_set_ui(argument, 0, MPFR_RNDN);
    for (size_t i = 0; i < x.limbCount(); ++i) {
        mpfr_add_ui(argument, argument, x.limbs()[i], MPFR_RNDZ);
        mpfr_div_2ui(argument, argument, 64, MPFR_RNDN);
    }
    mpfr_mul_2si(argument, argument, exponent + 1, MPFR_RNDN);
    function(result, argument, MPFR_RNDN);
    for (auto _ : state)
        function(result, argument, MPFR_RNDN);
    mpfr_clear(argument);
    mpfr_clear(result);
}
#else
#define PEER(function) nullptr
#endif

const Row rows[] = {{"exp", exp, PEER(mpfr_exp), 0},       {"ln", ln, PEER(mpfr_log), 3},
                    {"log2", log2, PEER(mpfr_log2), 3},    {"sin", sin, PEER(mpfr_sin), 0},
                    {"cos", cos, PEER(mpfr_cos), 0},       {"tan", tan, PEER(mpfr_tan), 0},
                    {"asin", asin, PEER(mpfr_asin), -2},   {"acos", acos, PEER(mpfr_acos), -2},
                    {"atan", atan, PEER(mpfr_atan), 0},    {"sinh", sinh, PEER(mpfr_sinh), 0},
                    {"cosh", cosh, PEER(mpfr_cosh), 0},    {"tanh", tanh, PEER(mpfr_tanh), 0},
                    {"asinh", asinh, PEER(mpfr_asinh), 0}, {"acosh", acosh, PEER(mpfr_acosh), 1},
                    {"atanh", atanh, PEER(mpfr_atanh), -2}};

void addLengths(benchmark::internal::Benchmark* row)
{
    row->Arg(1)->Arg(4)->Arg(16)->Arg(64)->Arg(256)->Arg(1000)->Unit(benchmark::kMicrosecond);
}

const bool registered = [] {
    for (const Row& row : rows) {
        addLengths(benchmark::RegisterBenchmark(row.name, measure, row.function, row.exponent));
#ifdef TAVIX_HAVE_MPFR
        const std::string peer = std::string(row.name) + "Mpfr";
        addLengths(benchmark::RegisterBenchmark(peer.c_str(), measurePeer, row.peer, row.exponent));
#endif
    }
    return true;
}();

} // namespace
