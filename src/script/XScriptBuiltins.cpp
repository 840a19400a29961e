#include "script/XScriptBuiltins.h"

#include "numbers/HugeInteger.h"
#include "numbers/randomSource.h"
#include "values/unavailable.h"

#include <cstdio>
#include <functional>
#include <stdexcept>

namespace huge {

namespace {

HugeVariant print(HugeVariant* args, int argc)
{
    for (int i = 0; i < argc; ++i)
        std::printf("%s%d", i == 0 ? "" : " ", args[i].isZero() ? 0 : 1);
    return {};
}

HugeVariant printLine(HugeVariant* args, int argc)
{
    print(args, argc);
    std::printf("\n");
    return {};
}

/// A function of one value; the integer 0 without arguments.
template <HugeVariant (HugeVariant::*function)() const>
HugeVariant unary(HugeVariant* args, int argc)
{
    return argc == 0 ? HugeVariant(0) : (args[0].*function)();
}

HugeVariant exponential(HugeVariant* args, int argc)
{
    return argc == 0 ? HugeVariant(1) : args[0].exp();
}

HugeVariant logarithm(HugeVariant* args, int argc)
{
    if (argc == 0)
        return 0;
    return argc == 1 ? args[0].ln() : args[1].log(args[0]);
}

HugeVariant naturalLogarithm(HugeVariant* args, int argc)
{
    if (argc == 0)
        return {};
    if (args[0].isZero())
        throw std::runtime_error("Zero can't be log");
    failFloat();
}

/// A copy of the argument that no other one is better than, the first of several.
template <class IsBetter>
HugeVariant best(const HugeVariant* args, int argc, IsBetter isBetter)
{
    if (argc == 0)
        return 0;
    const HugeVariant* found = args;
    for (int i = 1; i < argc; ++i) {
        if (isBetter(args[i], *found))
            found = args + i;
    }
    return *found;
}

HugeVariant greatest(HugeVariant* args, int argc)
{
    return best(args, argc, std::greater<HugeVariant>());
}

HugeVariant least(HugeVariant* args, int argc)
{
    return best(args, argc, std::less<HugeVariant>());
}

HugeVariant randomInt(HugeVariant*, int)
{
    const uint64_t high = randomSource().bits32();
    return int64_t(high << 32 | randomSource().bits32());
}

HugeVariant randomBigInt(HugeVariant* args, int argc)
{
    const int64_t bits = argc == 0 ? 32 : args[0].asInt64();
    if (bits > int64_t(LimbPool::maxBits))
        LimbPool::failLimit();
    HugeInteger value(0);
    if (bits > 0)
        value.randomBits_(size_t(bits), false);
    return value;
}

HugeVariant toInt(HugeVariant* args, int argc)
{
    return argc == 0 ? HugeVariant(0) : HugeVariant(args[0].toInteger());
}

template <HugeInteger (*function)(const HugeInteger&, const HugeInteger&)>
HugeVariant divisor(HugeVariant* args, int argc)
{
    if (argc == 0)
        return 0;
    if (argc == 1)
        return args[0];
    return function(args[0].toInteger(), args[1].toInteger());
}

bool isInteger(const HugeVariant& value)
{
    return value.final().holds(HugeVarClass::Int);
}

HugeVariant absolute(HugeVariant* args, int argc)
{
    if (argc == 0)
        return 0;
    return isInteger(args[0]) ? HugeVariant(args[0].asInt().abs()) : HugeVariant();
}

HugeVariant squareRoot(HugeVariant* args, int argc)
{
    if (argc == 0)
        return 0;
    if (!isInteger(args[0]))
        return {};
    if (args[0].isNegative())
        failComplex();
    return args[0].asInt().sqrt();
}

/// A callable of a type of its own for each function: functions are told apart by these types.
template <HugeVariant (*function)(HugeVariant*, int)>
HugeFunction callable()
{
    return [](HugeVariant* args, int argc) { return function(args, argc); };
}

} // namespace

const std::vector<ScriptBuiltin>& scriptBuiltins()
{
    static const std::vector<ScriptBuiltin> all = {
        {"print", callable<&print>()},
        {"printline", callable<&printLine>()},
        {"exp", callable<&exponential>()},
        {"log", callable<&logarithm>()},
        {"sin", callable<&unary<&HugeVariant::sin>>()},
        {"cos", callable<&unary<&HugeVariant::cos>>()},
        {"tan", callable<&unary<&HugeVariant::tan>>()},
        {"asin", callable<&unary<&HugeVariant::asin>>()},
        {"acos", callable<&unary<&HugeVariant::acos>>()},
        {"atan", callable<&unary<&HugeVariant::atan>>()},
        {"sinh", callable<&unary<&HugeVariant::sinh>>()},
        {"cosh", callable<&unary<&HugeVariant::cosh>>()},
        {"tanh", callable<&unary<&HugeVariant::tanh>>()},
        {"asinh", callable<&unary<&HugeVariant::asinh>>()},
        {"acosh", callable<&unary<&HugeVariant::acosh>>()},
        {"atanh", callable<&unary<&HugeVariant::atanh>>()},
        {"max", callable<&greatest>()},
        {"min", callable<&least>()},
        {"ln", callable<&naturalLogarithm>()},
        {"rand_int", callable<&randomInt>()},
        {"rand_bigint", callable<&randomBigInt>()},
        {"int", callable<&toInt>()},
        {"gcd", callable<&divisor<&gcd>>()},
        {"lcm", callable<&divisor<&lcm>>()},
        {"abs", callable<&absolute>()},
        {"sqrt", callable<&squareRoot>()},
    };
    return all;
}

} // namespace huge
