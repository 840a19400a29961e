#include "numbers/HugeImag.h"

#include "numberTesting.h"
#include "numbers/elementary.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

using namespace huge;

namespace {

using Function = HugeImag (*)(const HugeImag&);

const std::map<std::string, Function> functions = {
    {"sqrt", huge::sqrt},   {"ln", huge::ln},       {"exp", huge::exp},     {"sin", huge::sin},
    {"cos", huge::cos},     {"tan", huge::tan},     {"sinh", huge::sinh},   {"cosh", huge::cosh},
    {"tanh", huge::tanh},   {"asin", huge::asin},   {"acos", huge::acos},   {"atan", huge::atan},
    {"asinh", huge::asinh}, {"acosh", huge::acosh}, {"atanh", huge::atanh},
};

HugeImag complex(double re, double im, size_t limbs = 1)
{
    return {HugeFloat(re, limbs), HugeFloat(im, limbs)};
}

HugeFloat twoTo(int64_t exponent, size_t limbs = 1)
{
    return HugeFloat(1, limbs).shiftExponent(-exponent);
}

HugeFloat pi(size_t limbs)
{
    return constPi(limbs).resize(limbs, false);
}

/// A number of the vectors, "-0x3:-1" for -1.5.
HugeFloat fromVectorText(const std::string& text, size_t limbs)
{
    const size_t colon = text.find(':');
    const bool negative = text[0] == '-';
    const std::string digits = text.substr(negative ? 1 : 0, colon - (negative ? 1 : 0));
    HugeFloat value(integer(digits.c_str()));
    if (value.isZero())
        return HugeFloat(0, limbs);
    value = value.resize(limbs, false).shiftExponent(-std::stoll(text.substr(colon + 1)));
    return negative ? -value : value;
}

/// Whether got is less than a unit of its last place away from the value, which has a limb more.
bool isCloseTo(const HugeFloat& got, const HugeFloat& value, size_t limbs)
{
    if (value.isZero())
        return got.isZero();
    const HugeFloat error = (got.resize(limbs + 1, false) - value).abs();
    return error <= twoTo(int64_t(value.exponent()) + 1 - 64 * int64_t(limbs));
}

TEST(ComplexFunctions, AreRightInEachPartToTheLastUnit)
{
    std::ifstream file(TAVIX_COMPLEX_VECTORS);
    ASSERT_TRUE(file.is_open());
    std::string line;
    size_t count = 0;
    while (std::getline(file, line)) {
        std::istringstream words(line);
        std::string name, re, im, exponentRe, exponentIm;
        size_t limbs = 0;
        words >> name >> limbs >> re >> im;
        const HugeImag z(fromVectorText(re, limbs), fromVectorText(im, limbs));
        HugeImag got;
        if (name == "pow") {
            words >> exponentRe >> exponentIm;
            got = pow(z, HugeImag(fromVectorText(exponentRe, 1), fromVectorText(exponentIm, 1)));
        } else {
            got = functions.at(name)(z);
        }
        words >> re >> im;
        EXPECT_TRUE(isCloseTo(got.re, fromVectorText(re, limbs + 1), limbs)) << line;
        EXPECT_TRUE(isCloseTo(got.im, fromVectorText(im, limbs + 1), limbs)) << line;
        ++count;
    }
    EXPECT_EQ(count, 376u);
}

TEST(ComplexArithmetic, HasThePrecisionRuleInEachPart)
{
    const HugeImag a(HugeFloat(1, 1), HugeFloat(3, 2));
    const HugeImag b(HugeFloat(2, 4), HugeFloat(5, 1));
    const struct {
        HugeImag result;
        size_t reLimbs, imLimbs;
        double re, im;
    } rows[] = {
        {a + b, 4, 2, 3, 8},
        {a - b, 4, 2, -1, -2},
        {a * b, 4, 4, -13, 11},
        {(a * b) / b, 4, 4, 1, 3},
        {a + HugeFloat(2, 3), 3, 2, 3, 3},
        {a - HugeFloat(2, 3), 3, 2, -1, 3},
        {a * HugeFloat(2, 3), 3, 3, 2, 6},
        {a / HugeFloat(2, 3), 3, 3, 0.5, 1.5},
        {a.conj(), 1, 2, 1, -3},
        {a.neg(), 1, 2, -1, -3},
        {a.shiftExponent(1), 1, 2, 0.5, 1.5},
    };
    for (const auto& row : rows) {
        const size_t index = size_t(&row - rows);
        EXPECT_EQ(row.result.re.limbCount(), row.reLimbs) << index;
        EXPECT_EQ(row.result.im.limbCount(), row.imLimbs) << index;
        EXPECT_TRUE(row.result == complex(row.re, row.im)) << index;
    }
}

TEST(ComplexArithmetic, ReachesEveryQuotientThatAFloatHolds)
{
    const HugeFloat large = twoTo(2147483000);
    EXPECT_TRUE(HugeImag(large, large) / HugeImag(large, HugeFloat(0)) == complex(1, 1));
    EXPECT_TRUE(HugeImag(large, large) / HugeImag(large, -large) == complex(0, 1));
    EXPECT_TRUE(complex(1, 0) / HugeImag(HugeFloat(0), large) ==
                HugeImag(HugeFloat(0), -twoTo(-2147483000)));
    EXPECT_TRUE((HugeImag(large, large).abs() - large).abs() < large);
    EXPECT_TRUE(HugeImag(twoTo(-2147483000), HugeFloat(0)).abs() == twoTo(-2147483000));
    EXPECT_TRUE(complex(3, -4).abs() == HugeFloat(5));
}

TEST(ComplexText, ShowsThePartsThatAreThere)
{
    XFormatRule hexadecimal;
    hexadecimal.radix = 16;
    XFormatRule places;
    places.mantissa = 2;
    const struct {
        HugeImag value;
        XFormatRule rule;
        const char* text;
    } rows[] = {
        {complex(1, 2), {}, "1 + 2i"},
        {complex(1, -2), {}, "1 - 2i"},
        {complex(0, 2), {}, "2i"},
        {complex(0, -2), {}, "-2i"},
        {complex(-1.5, 0), {}, "-1.5"},
        {complex(0, 0), {}, "0i"},
        {HugeImag(), {}, "0i"},
        {HugeImag(HugeFloat(3), HugeFloat()), {}, "3"},
        {complex(-10, -0.5), hexadecimal, "-0xA.0 - 0x0.8i"},
        {complex(1, 0.5), places, "1.00 + 0.50i"},
        {complex(0, 0), places, "0.00i"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.value.fmt(row.rule), row.text);
}

TEST(ComplexAngle, IsExactOnTheAxes)
{
    EXPECT_TRUE(complex(-1, 0, 3).angle() == pi(3));
    EXPECT_TRUE(complex(0, -1).angle() == -pi(1).shiftExponent(1));
    EXPECT_TRUE(complex(2, 0).angle().isZero());
    EXPECT_TRUE(complex(-1, -1).angle() > pi(1));
    EXPECT_TRUE(complex(-1, -1).angle() < HugeFloat(4));
    EXPECT_EQ(HugeImag(HugeFloat(-1, 5), HugeFloat(0, 2)).angle().limbCount(), 2u);
    EXPECT_TRUE(ln(complex(-1, 0, 2)) == HugeImag(HugeFloat(0), pi(2)));
    EXPECT_TRUE(ln(complex(0, -1)) == HugeImag(HugeFloat(0), -pi(1).shiftExponent(1)));
    EXPECT_TRUE(acos(complex(0, 0)).re == pi(1).shiftExponent(1));
}

TEST(ComplexLogarithm, OfZeroHasAnEmptyAngle)
{
    for (const HugeImag& zero : {complex(0, 0, 3), HugeImag()}) {
        const HugeImag result = ln(zero);
        EXPECT_EQ(result.re.limbCount(), 1u);
        EXPECT_TRUE(result.im.isNull());
    }
    EXPECT_TRUE(log(complex(0, 0), complex(2, 1)).isZero());
}

TEST(ComplexPower, IsExactWhereItsValueIs)
{
    const struct {
        HugeImag base, exponent, power;
    } rows[] = {
        {complex(-4, 0), complex(0.5, 0), complex(0, 2)},
        {complex(-4, 0), complex(1.5, 0), complex(0, -8)},
        {complex(-4, 0), complex(-0.5, 0), complex(0, -0.5)},
        {complex(-8, 0), complex(2, 0), complex(64, 0)},
        {complex(3, 4), complex(0.5, 0), complex(2, 1)},
        {complex(-3, -4), complex(0.5, 0), complex(1, -2)},
        {complex(1, 2), complex(3, 0), complex(-11, -2)},
        {complex(1, 2), complex(1, 0), complex(1, 2)},
        {complex(1, 1), complex(-4, 0), complex(-0.25, 0)},
        {complex(0, -2), complex(7, 0), complex(0, 128)},
        {complex(0, 2), complex(-3, 0), complex(0, 0.125)},
        {complex(-1, 0), HugeImag(twoTo(2000000), HugeFloat(0)), complex(1, 0)},
        {complex(0, 1), HugeImag(HugeFloat(3), HugeFloat()), complex(0, -1)},
        {complex(0, 0), complex(0, 0), complex(1, 0)},
        {complex(0, 0), complex(2, 1), complex(0, 0)},
        {complex(5, 1), HugeImag(), complex(1, 0)},
    };
    for (const auto& row : rows)
        EXPECT_TRUE(pow(row.base, row.exponent) == row.power) << size_t(&row - rows);
    EXPECT_TRUE(pow(complex(1, 1), HugeFloat(1 << 28)) == HugeImag(twoTo(1 << 27), HugeFloat(0)));
    EXPECT_EQ(pow(complex(1, 1), HugeFloat(2.5, 4)).limbCount(), 4u);
}

TEST(ComplexFunctions, AnswerFarOutAndCloseIn)
{
    const HugeFloat large = twoTo(2000000000);
    const HugeFloat tiny = twoTo(-2000000000);
    const HugeImag small(tiny, -tiny);
    for (const char* name : {"sin", "tan", "asin", "atan", "sinh", "tanh", "asinh", "atanh"})
        EXPECT_TRUE(functions.at(name)(small) == small) << name;
    EXPECT_TRUE(tan(HugeImag(HugeFloat(1), large)) == complex(0, 1));
    EXPECT_TRUE(tanh(HugeImag(-large, HugeFloat(1))) == complex(-1, 0));
    EXPECT_TRUE(atan(HugeImag(large, large)).re == pi(1).shiftExponent(1));
    EXPECT_TRUE(asin(HugeImag(large, HugeFloat(0))).re == pi(1).shiftExponent(1));
    EXPECT_TRUE(ln(HugeImag(HugeFloat(1), tiny)) == HugeImag(HugeFloat(0), tiny));
}

TEST(ComplexFunctions, RefuseWhatHasNoValue)
{
    const HugeImag zero = complex(0, 0);
    const HugeImag z = complex(1, 1);
    const std::string range = "HugeFloat exponent is out of range";
    const struct {
        std::string failure, text;
    } rows[] = {
        {failureOf([&] { z / zero; }), "div by zero"},
        {failureOf([&] { z / HugeFloat(0); }), "div by zero"},
        {failureOf([&] { zero / HugeFloat(0); }), "div by zero"},
        {failureOf([&] { zero.angle(); }), "div by zero"},
        {failureOf([&] { pow(zero, complex(-1, 0)); }), "div by zero"},
        {failureOf([&] { pow(zero, complex(0, 1)); }), "div by zero"},
        {failureOf([&] { log(z, complex(1, 0)); }), "div by zero"},
        {failureOf([&] { log(z, zero); }), "div by zero"},
        {failureOf([&] { atanh(complex(1, 0)); }), "div by zero"},
        {failureOf([&] { atan(complex(0, -1)); }), "div by zero"},
        {failureOf([&] { exp(HugeImag(twoTo(40), HugeFloat(1))); }), range},
        {failureOf([&] { sin(HugeImag(HugeFloat(1), twoTo(40))); }), range},
        {failureOf([&] { pow(z, twoTo(32)); }), range},
        {failureOf([&] { pow(z, twoTo(2000000)); }), range},
        {failureOf([&] { pow(complex(3, 0), twoTo(2000000000)); }), range},
        {failureOf([&] { pow(complex(3, 0), HugeImag(HugeFloat(0), twoTo(2000000))); }),
         "The angle is too large"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.failure, row.text) << size_t(&row - rows);
}

} // namespace
