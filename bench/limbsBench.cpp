// The limb kernels, with GMP's functions for the same work beside them where it is installed. The
// argument is the count of limbs; a division is of twice as many limbs by that many.

#include "numbers/HugeInteger.h"
#include "numbers/limbs.h"
#include "numbers/limbsProduct.h"
#include "numbers/limbsQuotient.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#ifdef TAVIX_HAVE_GMP
#include <gmp.h>
#endif

using namespace huge;

namespace {

std::vector<Limb> randomLimbs(size_t n)
{
    static std::mt19937_64 source(1);
    std::vector<Limb> limbs(n);
    for (Limb& limb : limbs)
        limb = source();
    limbs.back() |= Limb(1) << 63;
    return limbs;
}

/// The arrays of one measurement, long enough for every kernel.
struct Arrays {
    explicit Arrays(size_t count)
        : n(count), a(randomLimbs(n)), b(randomLimbs(n)), twice(randomLimbs(2 * n)),
          r(randomLimbs(2 * n + 2)), q(n + 2)
    {}
    size_t n;
    std::vector<Limb> a, b, twice, r, q;
};

/// Runs the work on fresh arrays; it is called with them and must not be optimised away.
template <class Work>
void measure(benchmark::State& state, Work work)
{
    Arrays arrays{size_t(state.range(0))};
    for (auto _ : state) {
        work(arrays);
        benchmark::ClobberMemory();
    }
}

void integerSum(benchmark::State& state)
{
    HugeInteger sum(0);
    const HugeInteger step(12345);
    for (auto _ : state) {
        sum += step;
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(integerSum);

void integerProductAndRemainder(benchmark::State& state)
{
    HugeInteger x(987654321);
    const HugeInteger factor(6364136223);
    const HugeInteger modulus(1000000007);
    for (auto _ : state) {
        x = x * factor % modulus;
        benchmark::DoNotOptimize(x);
    }
}
BENCHMARK(integerProductAndRemainder);

void decimalText(benchmark::State& state)
{
    const std::vector<Limb> limbs = randomLimbs(size_t(state.range(0)));
    HugeInteger x;
    x.fromLimbs_(limbs.data(), limbs.size());
    for (auto _ : state)
        benchmark::DoNotOptimize(x.toString());
}
BENCHMARK(decimalText)->Arg(1)->Arg(16)->Arg(1024);

#define KERNEL(name, call)                                                                         \
    void name(benchmark::State& state)                                                             \
    {                                                                                              \
        measure(state, [](Arrays& x) { call; });                                                   \
    }                                                                                              \
    BENCHMARK(name)->Arg(4)->Arg(16)->Arg(64)->Arg(256)->Arg(1024)

KERNEL(add, limbsAdd(x.a.data(), x.n, x.b.data(), x.n, x.r.data()));
#ifdef TAVIX_HAVE_GMP
KERNEL(gmpAdd, mpn_add_n(x.r.data(), x.a.data(), x.b.data(), mp_size_t(x.n)));
#endif

KERNEL(sub, limbsSub(x.a.data(), x.n, x.b.data(), x.n, x.r.data()));
#ifdef TAVIX_HAVE_GMP
KERNEL(gmpSub, mpn_sub_n(x.r.data(), x.a.data(), x.b.data(), mp_size_t(x.n)));
#endif

KERNEL(mulLimb, limbsMulLimb(x.a.data(), x.n, x.b[0], x.r.data()));
#ifdef TAVIX_HAVE_GMP
KERNEL(gmpMulLimb, mpn_mul_1(x.r.data(), x.a.data(), mp_size_t(x.n), x.b[0]));
#endif

KERNEL(addMulLimb, limbsAddMulLimb(x.r.data(), x.a.data(), x.n, x.b[0]));
#ifdef TAVIX_HAVE_GMP
KERNEL(gmpAddMulLimb, mpn_addmul_1(x.r.data(), x.a.data(), mp_size_t(x.n), x.b[0]));
#endif

KERNEL(subMulLimb, limbsSubMulLimb(x.r.data(), x.a.data(), x.n, x.b[0]));
#ifdef TAVIX_HAVE_GMP
KERNEL(gmpSubMulLimb, mpn_submul_1(x.r.data(), x.a.data(), mp_size_t(x.n), x.b[0]));
#endif

KERNEL(mul, limbsProduct(x.a.data(), x.n, x.b.data(), x.n, x.r.data()));
#ifdef TAVIX_HAVE_GMP
KERNEL(gmpMul, mpn_mul_n(x.r.data(), x.a.data(), x.b.data(), mp_size_t(x.n)));
#endif

KERNEL(divLimb, limbsDivLimb(x.a.data(), x.n, x.b[0] >> 1, x.q.data()));
#ifdef TAVIX_HAVE_GMP
KERNEL(gmpDivLimb, mpn_divrem_1(x.q.data(), 0, x.a.data(), mp_size_t(x.n), x.b[0] >> 1));
#endif

KERNEL(div, (limbsCopy(x.r.data(), x.twice.data(), 2 * x.n),
             limbsQuotient(x.r.data(), 2 * x.n, x.b.data(), x.n, x.q.data())));
#ifdef TAVIX_HAVE_GMP
KERNEL(gmpDiv, mpn_tdiv_qr(x.q.data(), x.r.data(), 0, x.twice.data(), mp_size_t(2 * x.n),
                           x.b.data(), mp_size_t(x.n)));
#endif

} // namespace
