#include "script/XScript.h"
#include "script/XScriptEnvBase.h"
#include "script/XScriptRunner.h"

#include <benchmark/benchmark.h>

namespace {

/// Runs a script that was compiled once, as a cell does.
void runScript(benchmark::State& state, const char* text)
{
    huge::XScript script{xstd::XString(text)};
    script.compile();
    const auto env = std::make_shared<huge::XScriptEnv_base>();
    for (auto _ : state)
        benchmark::DoNotOptimize(huge::XScriptRunner(script.program(), env).run());
    state.SetLabel(script.run(env).toString().left(20));
}

void loopOfAMillionAdditions(benchmark::State& state)
{
    runScript(state, "var s = 0; for (var i = 0; i < 1000000; i += 1) { s += i; } s");
}

void fibOf25ByClosures(benchmark::State& state)
{
    runScript(state, "var fib = [n, f] { iif(n < 2, n, f(n - 1, &f) + f(n - 2, &f)) };"
                     "fib(25, &fib)");
}

void textOf10000Steps(benchmark::State& state)
{
    runScript(state, "var s = ''; for (var i = 0; i < 10000; i += 1) { s += 'x'; } s.left(5)");
}

void millionCallsOfABuiltIn(benchmark::State& state)
{
    runScript(state, "var s = 0; for (var i = 0; i < 1000000; i += 1) { s = max(s, i); } s");
}

void thousandDigitProducts(benchmark::State& state)
{
    runScript(state, "var s = 1; for (var i = 1; i < 1000; i += 1) { s *= i; } s % 1000003");
}

void millionSumsOfFloats(benchmark::State& state)
{
    runScript(state, "var s = 0.0; for (var i = 0; i < 1000000; i += 1) { s += 0.25; } s");
}

void millionSumsOfResidues(benchmark::State& state)
{
    runScript(state, "var s = mod(0, 10 ** 18);"
                     "for (var i = 0; i < 1000000; i += 1) { s += 10 ** 17; } s");
}

void sineOf100Limbs(benchmark::State& state)
{
    runScript(state, "sin(1.5..100)");
}

/// What one small formula of a table costs.
void smallFormula(benchmark::State& state)
{
    runScript(state, "1 + 2 * 3");
}

BENCHMARK(loopOfAMillionAdditions)->Unit(benchmark::kMillisecond);
BENCHMARK(fibOf25ByClosures)->Unit(benchmark::kMillisecond);
BENCHMARK(textOf10000Steps)->Unit(benchmark::kMillisecond);
BENCHMARK(millionCallsOfABuiltIn)->Unit(benchmark::kMillisecond);
BENCHMARK(thousandDigitProducts)->Unit(benchmark::kMillisecond);
BENCHMARK(millionSumsOfFloats)->Unit(benchmark::kMillisecond);
BENCHMARK(millionSumsOfResidues)->Unit(benchmark::kMillisecond);
BENCHMARK(sineOf100Limbs)->Unit(benchmark::kMicrosecond);
BENCHMARK(smallFormula);

} // namespace
