#include "numbers/elementary.h"

#include "common/XException.h"
#include "common/XStop.h"
#include "numberTesting.h"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <map>
#include <sstream>

using namespace huge;

namespace {

/// Reads a number of elementaryVectors.txt: the mantissa's digits from the top bit on, "@", the
/// exponent.
HugeFloat floatOf(std::string text, size_t limbs)
{
    const bool negative = text[0] == '-';
    const size_t at = text.find('@');
    const std::string digits = text.substr(negative, at - negative);
    HugeFloat x = HugeFloat::fromUnsigned(1, limbs);
    for (size_t i = 0; i < 16 * limbs; ++i) {
        Limb& limb = x.limbs()[limbs - 1 - i / 16];
        const char digit = i < digits.size() ? digits[i] : '0';
        limb = limb << 4 | Limb(digit <= '9' ? digit - '0' : digit - 'a' + 10);
    }
    if (x.isZero())
        return HugeFloat(0, limbs);
    return std::move(x.shiftExponent(-std::stoll(text.substr(at + 1))).setSign(negative));
}

/// A number of 1 to 2 times 2^exponent.
HugeFloat randomFloat(Stream& stream, size_t limbs, int32_t exponent)
{
    HugeFloat x = HugeFloat::fromUnsigned(1, limbs);
    for (size_t i = 0; i < limbs; ++i)
        x.limbs()[i] = stream.next();
    x.limbs()[limbs - 1] |= Limb(1) << 63;
    return x.shiftExponent(-int64_t(exponent));
}

/// Whether got is within so many units of the last of limbs limbs of want.
::testing::AssertionResult isNear(const HugeFloat& got, const HugeFloat& want, size_t limbs,
                                  int64_t units)
{
    if (want.isZero())
        return got.isZero() ? ::testing::AssertionSuccess() : ::testing::AssertionFailure();
    const size_t wide = std::max(want.limbCount(), limbs + 1);
    const HugeFloat distance = (got.resize(wide, false) - want).abs();
    const HugeFloat bound =
        HugeFloat(units, 1).shiftExponent(64 * int64_t(limbs) - 1 - want.exponent());
    if (distance <= bound)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "off by 2^" << distance.exponent() << ", the value is 2^" << want.exponent();
}

HugeFloat exp2OnOwnLimbs(const HugeFloat& x)
{
    return exp2(x);
}

using Unary = HugeFloat (*)(const HugeFloat&);
using Binary = HugeFloat (*)(const HugeFloat&, const HugeFloat&);

const std::map<std::string, Unary> unaryFunctions = {{"exp", exp},     {"exp2", exp2OnOwnLimbs},
                                                     {"ln", ln},       {"log2", log2},
                                                     {"sin", sin},     {"cos", cos},
                                                     {"tan", tan},     {"asin", asin},
                                                     {"acos", acos},   {"atan", atan},
                                                     {"sinh", sinh},   {"cosh", cosh},
                                                     {"tanh", tanh},   {"asinh", asinh},
                                                     {"acosh", acosh}, {"atanh", atanh}};
const std::map<std::string, Binary> binaryFunctions = {{"pow", pow}, {"log", log}};

HugeFloat power2(int64_t exponent, size_t limbs = 1)
{
    return HugeFloat(1, limbs).shiftExponent(-exponent);
}

constexpr int32_t maxExponent = std::numeric_limits<int32_t>::max();
constexpr int32_t minExponent = std::numeric_limits<int32_t>::min();

} // namespace

TEST(Elementary, AgreesWithIndependentlyComputedValues)
{
    std::ifstream file(TAVIX_ELEMENTARY_VECTORS);
    ASSERT_TRUE(file);
    size_t count = 0;
    for (std::string line; std::getline(file, line);) {
        if (line[0] == '#')
            continue;
        std::istringstream words(line);
        std::string name, first, second, value;
        size_t limbs = 0;
        words >> name >> limbs >> first >> second;
        const auto binary = binaryFunctions.find(name);
        HugeFloat got;
        if (binary == binaryFunctions.end()) {
            value = second;
            got = unaryFunctions.at(name)(floatOf(first, limbs));
        } else {
            words >> value;
            got = binary->second(floatOf(first, limbs), floatOf(second, limbs));
        }
        EXPECT_TRUE(isNear(got, floatOf(value, limbs + 2), limbs, 2)) << line.substr(0, 200);
        EXPECT_TRUE(got.limbCount() == limbs || got.isZero()) << line.substr(0, 200);
        ++count;
    }
    EXPECT_GT(count, 400u);
}

TEST(Elementary, HasExactValues)
{
    const auto number = [](auto x) { return HugeFloat(x, 3); };
    const HugeFloat zero = number(0);
    const HugeFloat one = number(1);
    EXPECT_EQ(log2(power2(-1000, 3)), number(-1000));
    EXPECT_EQ(log2(power2(minExponent)), HugeFloat(int64_t(minExponent)));
    EXPECT_TRUE(ln(one).isZero());
    EXPECT_EQ(log(number(1000), number(10)), number(3));
    EXPECT_EQ(log(number(8), HugeFloat(2)), number(3));
    EXPECT_EQ(exp2(number(10)), number(1024));
    EXPECT_EQ(exp2(number(-3), 5), number(0.125));
    EXPECT_EQ(exp2(number(-3), 5).limbCount(), 5u);
    EXPECT_EQ(exp(zero), one);
    EXPECT_EQ(exp(HugeFloat()), one);
    EXPECT_EQ(pow(number(4), number(0.5)), number(2));
    EXPECT_EQ(pow(number(27), number(0)), one);
    EXPECT_EQ(pow(number(-3), number(3)), number(-27));
    EXPECT_EQ(pow(zero, number(0.5)), zero);
    EXPECT_EQ(powInt(number(3), HugeInteger(40)), HugeFloat::fromUnsigned(12157665459056928801u));
    EXPECT_EQ(powInt(number(-2), HugeInteger(-3)), number(-0.125));
    EXPECT_EQ(powInt(zero, HugeInteger(0)), one);
    EXPECT_EQ(powInt(number(-1), HugeInteger(int64_t(1) << 62) * 4 + 1), number(-1));
    EXPECT_TRUE(sin(zero).isZero());
    EXPECT_EQ(cos(zero), one);
    EXPECT_TRUE(tan(zero).isZero());
    EXPECT_TRUE(acos(one).isZero());
    EXPECT_EQ(tanh(number(-1000)), number(-1));
    EXPECT_EQ(cosh(zero), one);
    EXPECT_TRUE(acosh(one).isZero());
}

TEST(Elementary, TakesItsPrecisionFromTheArgument)
{
    const HugeFloat x = HugeFloat(0.75, 5);
    for (const auto& [name, function] : unaryFunctions) {
        if (name != "acosh") {
            EXPECT_EQ(function(x).limbCount(), 5u) << name;
        }
    }
    EXPECT_EQ(pow(x, HugeFloat(0.3, 9)).limbCount(), 5u);
    EXPECT_EQ(log(x, HugeFloat(3, 9)).limbCount(), 9u);
    EXPECT_EQ(asin(HugeFloat(0, 5)).limbCount(), 1u);
}

TEST(Elementary, CutsPiForTheEndsOfTheInverseFunctions)
{
    // The first 192 bits of pi.
    const HugeFloat pi = floatOf("c90fdaa22168c234c4c6628b80dc1cd129024e088a67cc74@1", 3);
    const HugeFloat one(1, 3);
    EXPECT_EQ(constPi(3).resize(3, false), pi);
    EXPECT_EQ(asin(one), pi.shiftExponent(1));
    EXPECT_EQ(asin(-one), -pi.shiftExponent(1));
    EXPECT_EQ(acos(-one), pi);
    EXPECT_EQ(acos(HugeFloat(0, 3)), pi.shiftExponent(1));
    EXPECT_EQ(atan(one), pi.shiftExponent(2));
    EXPECT_EQ(atan(-power2(1000, 3)), -pi.shiftExponent(1));
}

TEST(Elementary, KeepsConstantsAtTheGreatestPrecision)
{
    EXPECT_GE(constPi(10).limbCount(), 10u);
    EXPECT_GE(constPi(5).limbCount(), 10u);
    EXPECT_EQ(constPi(80).resize(7, false), constPi(7).resize(7, false));
    EXPECT_EQ(constE(2).resize(2, false), floatOf("adf85458a2bb4a9aafdc5620273d3cf1@1", 2));
    EXPECT_EQ(constLog2E(2).resize(2, false), floatOf("b8aa3b295c17f0bbbe87fed0691d3e88@0", 2));
    EXPECT_TRUE(isNear(constE(70) * HugeFloat(1, 70), exp(HugeFloat(1, 70)), 70, 1));
    EXPECT_TRUE(
        isNear(constLog2E(70).resize(70, false) * ln(HugeFloat(2, 70)), HugeFloat(1), 70, 4));
}

TEST(Elementary, FailsOutsideOfItsDomain)
{
    const HugeFloat zero(0);
    const HugeFloat negative(-1.5);
    const HugeFloat beyond = HugeFloat(1.0000001);
    EXPECT_EQ(failureOf([&] { ln(zero); }), "Zero can't be log");
    EXPECT_EQ(failureOf([&] { log2(negative); }), "NegNumber can't be log");
    EXPECT_EQ(failureOf([&] { log(HugeFloat(2), zero); }), "Zero can't be log");
    EXPECT_EQ(failureOf([&] { log(HugeFloat(2), HugeFloat(1)); }), "div by zero");
    EXPECT_EQ(failureOf([&] { pow(negative, HugeFloat(0.5)); }), "NegNumber can't be log");
    EXPECT_EQ(failureOf([&] { pow(zero, HugeFloat(-2)); }), "div by zero");
    EXPECT_EQ(failureOf([&] { asin(beyond); }), "arcsin(x) only valid for -1<=x<=1");
    EXPECT_EQ(failureOf([&] { acos(-beyond); }), "arcsin(x) only valid for -1<=x<=1");
    for (const HugeFloat& x : {zero, negative, HugeFloat(0.999)})
        EXPECT_EQ(failureOf([&] { acosh(x); }),
                  "The definition domain of inverse hyperbolic cosine function is [1, infinite)");
    for (const HugeFloat& x : {HugeFloat(1), HugeFloat(-1), negative})
        EXPECT_EQ(failureOf([&] { atanh(x); }),
                  "The definition domain of inverse hyperbolic tangent function is (- 1,1)");
    EXPECT_EQ(failureOf([] { sin(power2(maxExponent)); }), "The angle is too large");
}

TEST(Elementary, FailsWhereTheExponentLeavesItsRange)
{
    const std::string text = "HugeFloat exponent is out of range";
    for (const HugeFloat& x : {power2(maxExponent - 1), power2(31), HugeFloat(1488522236, 2)}) {
        EXPECT_EQ(failureOf([&] { exp(x); }), text);
        EXPECT_EQ(failureOf([&] { exp(x * HugeFloat(-2)); }), text);
        EXPECT_EQ(failureOf([&] { cosh(x * HugeFloat(-2)); }), text);
        EXPECT_EQ(failureOf([&] { sinh(x * HugeFloat(2)); }), text);
    }
    EXPECT_EQ(failureOf([] { exp2(power2(31)); }), text);
    EXPECT_EQ(failureOf([] { exp2(HugeFloat(-2147483648.5, 1)); }), text);
    EXPECT_EQ(exp2(HugeFloat(int64_t(minExponent))), power2(minExponent));
    EXPECT_EQ(exp(HugeFloat(1488522235.5)).exponent(), maxExponent);
    EXPECT_EQ(failureOf([] { pow(HugeFloat(10), HugeFloat(1e300)); }), text);
    // A long number: the failure comes before the work.
    const HugeFloat third = HugeFloat(1, 20000) / HugeFloat(3);
    EXPECT_EQ(failureOf([&] { powInt(third, HugeInteger(int64_t(1) << 60)); }), text);
    EXPECT_EQ(failureOf([&] { powInt(third, HugeInteger(int64_t(1) << 60).pow(2)); }), text);
    EXPECT_EQ(failureOf([&] { exp(third.shiftExponent(-40)); }), text);
}

TEST(Elementary, TakesExponentsToTheEndOfTheirRange)
{
    const HugeFloat huge = power2(maxExponent, 2);
    const HugeFloat tiny = power2(minExponent, 2);
    EXPECT_TRUE(isNear(ln(huge), HugeFloat(int64_t(maxExponent), 3) * ln(HugeFloat(2, 3)), 2, 2));
    EXPECT_TRUE(isNear(asinh(-huge), -(ln(huge) + ln(HugeFloat(2, 3))), 2, 2));
    EXPECT_TRUE(isNear(acosh(huge), ln(huge) + ln(HugeFloat(2, 3)), 2, 2));
    EXPECT_EQ(tanh(-huge), HugeFloat(-1));
    EXPECT_TRUE(isNear(atan(huge), constPi(2).resize(2, false).shiftExponent(1), 2, 2));
    for (const Unary function : {sin, tan, asin, atan, sinh, tanh, asinh, atanh})
        EXPECT_EQ(function(-tiny), -tiny);
    for (const Unary function : {exp, cos, cosh, exp2OnOwnLimbs})
        EXPECT_EQ(function(-tiny), HugeFloat(1));
    EXPECT_EQ(pow(HugeFloat(3), tiny), HugeFloat(1));
    EXPECT_EQ(powInt(HugeFloat(-2), HugeInteger(int64_t(minExponent))), power2(minExponent));
}

TEST(Elementary, KeepsIdentitiesAtAnyPrecision)
{
    Stream stream(7);
    for (const size_t n : {1u, 2u, 3u, 5u, 17u, 70u, 71u, 72u, 90u}) {
        const HugeFloat one(1, n);
        for (const int32_t exponent : {-40, -3, -1, 0, 3, 20}) {
            const HugeFloat x = randomFloat(stream, n, exponent);
            HugeFloat sine, cosine;
            sinCos(x, sine, cosine);
            EXPECT_EQ(sine, sin(x));
            EXPECT_EQ(cosine, cos(x));
            EXPECT_EQ(sin(-x), -sine);
            EXPECT_TRUE(isNear(sine * sine + cosine * cosine, one, n, 8)) << n;
            // ln x is a limb longer: what it lacks grows by its size.
            EXPECT_TRUE(isNear(exp(ln(x.resize(n + 1, false))), x, n, 1)) << n;
            EXPECT_TRUE(isNear(asinh(sinh(x.resize(n + 1, false))), x, n, 1)) << n;
            EXPECT_TRUE(isNear(tan(atan(x.resize(n + 1, false))), x, n, 1)) << n;
        }
    }
}

TEST(Elementary, WorksOnAThousandLimbs)
{
    Stream stream(11);
    const size_t n = 1000;
    const HugeFloat x = randomFloat(stream, n, 0);
    EXPECT_TRUE(isNear(exp(ln(x)), x, n, 4));
    HugeFloat sine, cosine;
    sinCos(x, sine, cosine);
    EXPECT_TRUE(isNear(atan(sine / cosine), x, n, 16) ||
                isNear(atan(sine / cosine) + constPi(n).resize(n, false), x, n, 16));
}

TEST(Elementary, ReducesLargeAnglesExactly)
{
    // 2^10000 less its multiple of 2 pi, by the sine's own addition theorem.
    const HugeFloat x = power2(10000, 4);
    HugeFloat sine, cosine;
    sinCos(x, sine, cosine);
    EXPECT_TRUE(isNear(sin(x.shiftExponent(-1)), (sine * cosine).shiftExponent(-1), 4, 8));
    EXPECT_TRUE(isNear(cos(x.shiftExponent(-1)), (cosine - sine) * (cosine + sine), 4, 64));
}

TEST(Elementary, CanBeStopped)
{
    const HugeFloat x = HugeFloat(1, 3000) / HugeFloat(3);
    xstd::XStop::request();
    for (const auto& [name, function] : unaryFunctions) {
        if (name != "acosh") {
            EXPECT_THROW(function(x), xstd::XExceptionItems) << name;
        }
    }
    xstd::XStop::clear();
    EXPECT_TRUE(isNear(exp(HugeFloat(1, 6)), constE(6).resize(6, false), 6, 1));
}
