#include "script/XScriptBuiltins.h"

#include "common/XException.h"
#include "common/XPlatform.h"
#include "common/XTime.h"
#include "hash/XBase64.h"
#include "hash/XHash.h"
#include "numbers/HugeFloat.h"
#include "numbers/HugeImag.h"
#include "numbers/HugeInteger.h"
#include "numbers/HugeMod.h"
#include "numbers/elementary.h"
#include "numbers/longBase58.h"
#include "numbers/numberTheory.h"
#include "numbers/randomSource.h"
#include "values/HugeVarTime.h"
#include "values/realFunctions.h"

#include <cstdio>
#include <functional>
#include <limits>
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
    if (args[0].final().holds(HugeVarClass::Imag))
        return args[0].ln();
    return realLn(args[0].toFloat());
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

/// A constant of as many limbs as the first argument tells.
template <const HugeFloat& (*function)(size_t)>
HugeVariant constant(HugeVariant* args, int argc)
{
    const HugeInteger limbs = argc == 0 ? HugeInteger(1) : args[0].toInteger();
    const int64_t count =
        limbs.compare(int64_t(LimbPool::limit)) > 0 ? int64_t(LimbPool::limit) : limbs.asInt64();
    toPrecision(HugeFloat(0), limbs.isNegative() ? 0 : count); // refuses what cannot be
    return function(size_t(count)).resize(size_t(count), false);
}

HugeVariant prime(HugeVariant* args, int argc)
{
    return randomPrime(argc == 0 ? 64 : args[0].asInt64());
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

HugeVariant residue(HugeVariant* args, int argc)
{
    if (argc != 2)
        throw xstd::XExceptionItems().add(
            xstd::XExceptionItem(X_HERE, "scriptRuntime")
                .setMess("mod(value,modeleter) function need two args! ")
                .setExtend("args", argc));
    return HugeMod(args[0].toInteger(), args[1].toInteger());
}

HugeVariant toInt(HugeVariant* args, int argc)
{
    return argc == 0 ? HugeVariant(0) : HugeVariant(args[0].toInteger());
}

HugeVariant toReal(HugeVariant* args, int argc)
{
    return argc == 0 ? HugeVariant(0) : HugeVariant(args[0].toFloat());
}

HugeVariant toComplex(HugeVariant* args, int argc)
{
    if (argc == 0)
        return 0;
    return argc == 1 ? args[0].toImag() : HugeImag(args[0].toFloat(), args[1].toFloat());
}

/// A field of a local date; what no calendar holds is refused before it is worked with.
int dateField(HugeVariant* args, int argc, int index, int64_t base)
{
    const int64_t value = index < argc ? args[index].asInt64() : 0;
    int64_t field = 0;
    if (__builtin_sub_overflow(value, base, &field) || field < std::numeric_limits<int>::min() ||
        field > std::numeric_limits<int>::max())
        throw std::runtime_error("time is out of range");
    return int(field);
}

/// Now, or a local date from year, month, day, hour, minute and second, of which the missing ones
/// are 0. Fields beyond their calendar's range carry into the next.
HugeVariant moment(HugeVariant* args, int argc)
{
    if (argc == 0)
        return xstd::XTime{xstd::XPlatform::clockTicks()};
    std::tm fields{};
    fields.tm_year = dateField(args, argc, 0, 1900);
    fields.tm_mon = dateField(args, argc, 1, 1);
    fields.tm_mday = dateField(args, argc, 2, 0);
    fields.tm_hour = dateField(args, argc, 3, 0);
    fields.tm_min = dateField(args, argc, 4, 0);
    fields.tm_sec = dateField(args, argc, 5, 0);
    fields.tm_isdst = -1;
    fields.tm_wday = -1; // stays so where there is no such time
    const std::time_t seconds = std::mktime(&fields);
    if (seconds == -1 && fields.tm_wday == -1)
        throw std::runtime_error("time is out of range");
    return HugeVarTime::fromSeconds(seconds);
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

HugeVarClass classOf(const HugeVariant& value)
{
    const HugeVar* object = value.final().object();
    return object == nullptr ? HugeVarClass::Other : object->varClass();
}

HugeVariant absolute(HugeVariant* args, int argc)
{
    if (argc == 0)
        return 0;
    switch (classOf(args[0])) {
    case HugeVarClass::Int:
        return args[0].asInt().abs();
    case HugeVarClass::Float:
        return args[0].asFloat().abs();
    case HugeVarClass::Imag:
        return args[0].asImag().abs();
    default:
        return {};
    }
}

HugeVariant squareRoot(HugeVariant* args, int argc)
{
    if (argc == 0)
        return 0;
    switch (classOf(args[0])) {
    case HugeVarClass::Int:
        return args[0].isNegative() ? realSqrt(args[0].toFloat()) : args[0].asInt().sqrt();
    case HugeVarClass::Float:
        return realSqrt(args[0].asFloat());
    case HugeVarClass::Imag:
        return sqrt(args[0].asImag());
    case HugeVarClass::Mod:
        return args[0].asMod().sqrt();
    default:
        return {};
    }
}

// Digests and encodings of a value's bytes

using Bytes = std::vector<uint8_t>;

template <class Digest>
HugeVariant digest(HugeVariant* args, int argc, Digest (*hash)(const Bytes&) noexcept)
{
    if (argc == 0)
        return "";
    const Digest result = hash(args[0].data());
    return Bytes(result.bytes.begin(), result.bytes.end());
}

HugeVariant hash256Of(HugeVariant* args, int argc)
{
    return digest<xstd::h256>(args, argc, &xstd::hash256);
}

HugeVariant hash160Of(HugeVariant* args, int argc)
{
    return digest<xstd::h160>(args, argc, &xstd::hash160);
}

xstd::XString base58(const Bytes& bytes)
{
    return longBase58(bytes.data(), bytes.data() + bytes.size());
}

xstd::XString base64(const Bytes& bytes)
{
    return xstd::encodeBase64(bytes.data(), bytes.data() + bytes.size());
}

template <xstd::XString (*encode)(const Bytes&)>
HugeVariant encoded(HugeVariant* args, int argc)
{
    return argc == 0 ? HugeVariant("") : HugeVariant(encode(args[0].data()));
}

using Decode = bool (*)(const xstd::XString& text, Bytes& out);

template <Decode decode>
constexpr const char* decodeFailure = "not a base64 string";
template <>
constexpr const char* decodeFailure<&fromLongBase58> = "not a base58 string";
template <>
constexpr const char* decodeFailure<&fromLongBase58Check> = "not a base58check string";

template <Decode decode>
Bytes decodedBytes(const HugeVariant& value)
{
    const Bytes text = value.data();
    Bytes bytes;
    if (!decode(std::string(text.begin(), text.end()), bytes))
        throw std::runtime_error(decodeFailure<decode>);
    return bytes;
}

template <Decode decode>
HugeVariant decoded(HugeVariant* args, int argc)
{
    return argc == 0 ? HugeVariant("") : HugeVariant(decodedBytes<decode>(args[0]));
}

template <Decode decode>
HugeVariant decodedText(HugeVariant* args, int argc)
{
    if (argc == 0)
        return "";
    const Bytes bytes = decodedBytes<decode>(args[0]);
    return xstd::XString(std::string(bytes.begin(), bytes.end()));
}

/// A callable of a type of its own for each function: functions are told apart by these types.
template <HugeVariant (*function)(HugeVariant*, int)>
HugeVariant callable()
{
    return HugeFunction([](HugeVariant* args, int argc) { return function(args, argc); });
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
        {"pi", callable<&constant<&constPi>>()},
        {"e", callable<&constant<&constE>>()},
        {"i", HugeImag(HugeFloat(0), HugeFloat(1))},
        {"randprime", callable<&prime>()},
        {"ln", callable<&naturalLogarithm>()},
        {"rand_int", callable<&randomInt>()},
        {"rand_bigint", callable<&randomBigInt>()},
        {"mod", callable<&residue>()},
        {"int", callable<&toInt>()},
        {"float", callable<&toReal>()},
        {"imag", callable<&toComplex>()},
        {"time", callable<&moment>()},
        {"gcd", callable<&divisor<&gcd>>()},
        {"lcm", callable<&divisor<&lcm>>()},
        {"abs", callable<&absolute>()},
        {"sqrt", callable<&squareRoot>()},
        {"hash256", callable<&hash256Of>()},
        {"hash160", callable<&hash160Of>()},
        {"base58", callable<&encoded<&base58>>()},
        {"base58check", callable<&encoded<&longBase58Check>>()},
        {"base64", callable<&encoded<&base64>>()},
        {"decbase58", callable<&decoded<&fromLongBase58>>()},
        {"decbase58check", callable<&decoded<&fromLongBase58Check>>()},
        {"decbase64", callable<&decoded<&xstd::decodeBase64>>()},
        {"decbase58str", callable<&decodedText<&fromLongBase58>>()},
        {"decbase58checkstr", callable<&decodedText<&fromLongBase58Check>>()},
        {"decbase64str", callable<&decodedText<&xstd::decodeBase64>>()},
    };
    return all;
}

} // namespace huge
