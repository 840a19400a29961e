#include "hash/XBase58.h"
#include "hash/XBase64.h"
#include "hash/XHash.h"

#include <benchmark/benchmark.h>

#include <random>

namespace {

// Digests and encodings of as many random bytes as the argument tells.

std::vector<uint8_t> randomBytes(const benchmark::State& state)
{
    std::mt19937 random(1);
    std::vector<uint8_t> bytes(size_t(state.range(0)));
    for (uint8_t& byte : bytes)
        byte = uint8_t(random());
    return bytes;
}

template <class Context>
void digest(benchmark::State& state)
{
    const std::vector<uint8_t> bytes = randomBytes(state);
    std::array<uint8_t, Context::digestSize> out;
    for (auto _ : state) {
        Context context;
        context.write(bytes.data(), bytes.size());
        context.finish(out.data());
        benchmark::DoNotOptimize(out);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(digest<xstd::XSha256>)->Arg(32)->Arg(1 << 20);
BENCHMARK(digest<xstd::XRipemd160>)->Arg(32)->Arg(1 << 20);

using Encode = xstd::XString (*)(const uint8_t*, const uint8_t*);
using Decode = bool (*)(const xstd::XString&, std::vector<uint8_t>&);

template <Encode encode>
void write(benchmark::State& state)
{
    const std::vector<uint8_t> bytes = randomBytes(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(encode(bytes.data(), bytes.data() + bytes.size()));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(write<xstd::encodeBase58>)->Arg(32)->Arg(1 << 10)->Arg(1 << 15);
BENCHMARK(write<xstd::encodeBase64>)->Arg(32)->Arg(1 << 20);

template <Encode encode, Decode decode>
void read(benchmark::State& state)
{
    const std::vector<uint8_t> bytes = randomBytes(state);
    const xstd::XString text = encode(bytes.data(), bytes.data() + bytes.size());
    std::vector<uint8_t> out;
    for (auto _ : state) {
        out.clear();
        benchmark::DoNotOptimize(decode(text, out));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(read<xstd::encodeBase58, xstd::decodeBase58>)->Arg(32)->Arg(1 << 10)->Arg(1 << 15);
BENCHMARK(read<xstd::encodeBase64, xstd::decodeBase64>)->Arg(32)->Arg(1 << 20);

} // namespace
