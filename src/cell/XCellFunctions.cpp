#include "cell/XCellFunctions.h"
#include "cell/XCellVarError.h"
#include "cell/XCellVarRange.h"
#include "common/XStop.h"
#include "script/XScriptEnvBase.h"

#include <cstdint>
#include <utility>

namespace huge {

namespace {

/// The error value for an argument that is a range with an empty first cell, else a null handle.
HugeVariant refuseNull(const HugeVariant& argument, int index)
{
    if (!argument.isRange() || !argument.isNull())
        return HugeVariant();
    return HugeVariant::make<XCellVarError>(cellRefError, xstd::format("args[%d] is null", index));
}

/// Adds all arguments to `total`, which begins as 0, and counts the values. Returns the error value
/// of a refused argument, else a null handle.
HugeVariant addAll(const HugeVariant* args, int argc, HugeVariant& total, int64_t& count)
{
    for (int i = 0; i < argc; ++i) {
        HugeVariant refused = refuseNull(args[i], i);
        if (refused.object())
            return refused;
        if (const XCellVarRange* range = XCellVarRange::from(args[i])) {
            count += static_cast<int64_t>(range->range()->addTo(total));
        } else {
            total += args[i];
            ++count;
        }
    }
    return HugeVariant();
}

/// The best of the arguments; `replaces` says whether the second value takes the first one's place.
template <class OfRange, class Replaces>
HugeVariant best(const HugeVariant* args, int argc, OfRange ofRange, Replaces replaces)
{
    if (argc == 0)
        return HugeVariant(int64_t(0));
    const auto candidate = [&](const HugeVariant& argument) {
        const XCellVarRange* range = XCellVarRange::from(argument);
        if (!range)
            return HugeVariant(argument);
        return range->isValid() ? ofRange(*range->range()) : invalidRange();
    };
    HugeVariant found = candidate(args[0]);
    for (int i = 1; i < argc; ++i) {
        HugeVariant next = candidate(args[i]);
        if (replaces(found, next))
            found = std::move(next);
    }
    return found;
}

/// Folds the closure's results for from to to into `result`.
template <class Fold>
HugeVariant foldCalls(const HugeVariant* args, int argc, int64_t neutral, Fold fold)
{
    if (argc != 3 || !args[2].isClosure())
        return HugeVariant(int64_t(0));
    const int64_t from = args[0].asInt64();
    const int64_t to = args[1].asInt64();
    HugeVariant result(neutral);
    if (from > to)
        return result;
    for (int64_t i = from;; ++i) {
        xstd::XStop::poll();
        HugeVariant argument(i); // the call may move it away
        fold(result, args[2].exec(&argument, 1));
        if (i == to) // tested here, since the greatest integer has no next one
            return result;
    }
}

/// A built-in of one value that asks for its class: it gets the value behind a reference.
HugeFunction onValue(HugeFunction builtin)
{
    return [builtin = std::move(builtin)](HugeVariant* args, int argc) {
        const XCellVarRange* range = argc > 0 ? XCellVarRange::from(args[0]) : nullptr;
        if (!range)
            return builtin(args, argc);
        HugeVariant value = range->toValue();
        return builtin(&value, 1);
    };
}

} // namespace

HugeVariant cellSum(const HugeVariant* args, int argc)
{
    HugeVariant total(int64_t(0));
    int64_t count = 0;
    HugeVariant refused = addAll(args, argc, total, count);
    return refused.object() ? refused : total;
}

HugeVariant cellAvg(const HugeVariant* args, int argc)
{
    HugeVariant total(int64_t(0));
    int64_t count = 0;
    HugeVariant refused = addAll(args, argc, total, count);
    if (refused.object())
        return refused;
    return count == 0 ? HugeVariant(int64_t(0)) : total / HugeVariant(count);
}

HugeVariant cellCount(const HugeVariant* args, int argc)
{
    uint64_t count = 0;
    for (int i = 0; i < argc; ++i) {
        HugeVariant refused = refuseNull(args[i], i);
        if (refused.object())
            return refused;
        const XCellVarRange* range = XCellVarRange::from(args[i]);
        count += range ? range->range()->count() : 1;
    }
    return HugeVariant(static_cast<int64_t>(count));
}

HugeVariant cellMax(const HugeVariant* args, int argc)
{
    return best(
        args, argc, [](const XCellRange& range) { return range.max(); },
        [](const HugeVariant& a, const HugeVariant& b) { return a < b; });
}

HugeVariant cellMin(const HugeVariant* args, int argc)
{
    return best(
        args, argc, [](const XCellRange& range) { return range.min(); },
        [](const HugeVariant& a, const HugeVariant& b) { return a > b; });
}

HugeVariant cellSigma(const HugeVariant* args, int argc)
{
    return foldCalls(args, argc, 0,
                     [](HugeVariant& total, const HugeVariant& value) { total += value; });
}

HugeVariant cellPai(const HugeVariant* args, int argc)
{
    return foldCalls(args, argc, 1,
                     [](HugeVariant& total, const HugeVariant& value) { total *= value; });
}

void enterCellFunctions()
{
    using Function = HugeVariant (*)(const HugeVariant*, int);
    const std::pair<const char*, Function> functions[] = {
        {"sum", cellSum}, {"avg", cellAvg},     {"count", cellCount}, {"max", cellMax},
        {"min", cellMin}, {"sigma", cellSigma}, {"pai", cellPai}};
    XScriptEnv_base env;
    for (const auto& [name, function] : functions)
        env.setVar(name, HugeVariant(HugeFunction(function)));
    for (const char* name : {"abs", "ln", "sqrt"})
        env.setVar(name, HugeVariant(onValue(env.getVar(name).toFunc())));
}

} // namespace huge
