#include "values/HugeVarFloat.h"
#include "numbers/HugeImag.h"
#include "valueTesting.h"
#include "values/HugeVariant.h"

#include <gtest/gtest.h>

#include <vector>

namespace huge {
namespace {

HugeVariant real(const char* text)
{
    return HugeFloat::fromText_(text);
}

TEST(Floats, CalculateAndLeaveTheRealsWhereTheyMust)
{
    const HugeVariant beyond(HugeInteger().fromText_("18446744073709551616"));
    const struct {
        const char* what;
        const char* result;
        std::function<HugeVariant()> call;
    } rows[] = {
        {"7.0 / 2", "HugeFloat: 3.5", [] { return HugeVariant(7.0) / HugeVariant(2); }},
        {"1.0 / 0", "failure: div by zero", [] { return HugeVariant(1.0) / HugeVariant(0); }},
        {"1.0 % 0", "failure: div by zero", [] { return HugeVariant(1.0) % HugeVariant(0); }},
        {"-7.5 % 2", "HugeFloat: -1.5", [] { return HugeVariant(-7.5) % HugeVariant(2); }},
        {"-0.0", "HugeFloat: 0", [] { return -HugeVariant(0.0); }},
        {"6.0 >> 2", "HugeFloat: 1.5", [] { return HugeVariant(6.0) >> HugeVariant(2); }},
        {"6.0 << -2", "HugeFloat: 1.5", [] { return HugeVariant(6.0) << HugeVariant(-2); }},
        {"1.5 << 1", "HugeFloat: 3", [] { return HugeVariant(1.5) << HugeVariant(1); }},
        {"1.5 << 2^64", "failure: HugeFloat exponent is out of range",
         [&] { return HugeVariant(1.5) << beyond; }},
        {"1.5 >> 2^64", "failure: HugeFloat exponent is out of range",
         [&] { return HugeVariant(1.5) >> beyond; }},
        {"0.0 << 2^64", "HugeFloat: 0", [&] { return HugeVariant(0.0) << beyond; }},
        {"2.0 ^ 10", "HugeFloat: 1024", [] { return pow(HugeVariant(2.0), HugeVariant(10)); }},
        {"9 ^ 0.5", "HugeFloat: 3", [] { return pow(HugeVariant(9), HugeVariant(0.5)); }},
        {"-4 ^ 0.5", "HugeImag: 2i", [] { return pow(HugeVariant(-4), HugeVariant(0.5)); }},
        {"-8.0 ^ 2", "HugeImag: 64", [] { return pow(HugeVariant(-8.0), HugeVariant(2)); }},
        {"0.0 ^ 2", "HugeFloat: 0", [] { return pow(HugeVariant(0.0), HugeVariant(2)); }},
        {"0.0 ^ 0.5", "HugeFloat: 0", [] { return pow(HugeVariant(0.0), HugeVariant(0.5)); }},
        {"0.0 ^ -0.5", "failure: Zero can't be log",
         [] { return pow(HugeVariant(0.0), HugeVariant(-0.5)); }},
        {"0.0 ^ -2", "failure: div by zero", [] { return pow(HugeVariant(0.0), HugeVariant(-2)); }},
        {"1.0 / 10", "HugeFloat: 0.1", [] { return HugeVariant(1.0) / HugeVariant(10); }},
        {"10.0 ^ -3", "HugeFloat: 0.001", [] { return pow(HugeVariant(10.0), HugeVariant(-3)); }},
        {"2.5 as boolean", "boolean: true", [] { return HugeVariant(2.5).asType(varBool); }},
        {"-2.5 as integer", "HugeInteger: -2", [] { return HugeVariant(-2.5).asType(varInt); }},
        {"2.5 as complex", "HugeImag: 2.5", [] { return HugeVariant(2.5).asType(varImag); }},
        {"2.5 as residue", "HugeMod: 2", [] { return HugeVariant(2.5).asType(varMod); }},
        {"2.5 as text", "string: 2.5", [] { return HugeVariant(2.5).asType(varString); }},
        {"2.5 as function", "null", [] { return HugeVariant(2.5).asType(varFunc); }},
    };
    for (const auto& row : rows)
        EXPECT_EQ(shown(row.call), row.result) << row.what;
    EXPECT_EQ(HugeVariant(-2.9).asInt64(), -2);
    EXPECT_EQ(HugeVariant(0.1).asDouble(), 0.1);
}

TEST(Floats, HaveFunctionsWithValuesOfTheirOwnAtZero)
{
    const struct {
        const char* name;
        const char* ofInteger;
        const char* ofFloat;
    } rows[] = {
        {"sin", "HugeInteger: 0", "HugeInteger: 0"},
        {"atan", "HugeInteger: 0", "HugeInteger: 0"},
        {"tan", "HugeInteger: 0", "HugeFloat: 0"},
        {"asin", "HugeFloat: 0", "HugeFloat: 0"},
        {"sinh", "HugeFloat: 0", "HugeFloat: 0"},
        {"tanh", "HugeFloat: 0", "HugeFloat: 0"},
        {"asinh", "HugeFloat: 0", "HugeFloat: 0"},
        {"cos", "HugeInteger: 1", "HugeInteger: 1"},
        {"cosh", "HugeFloat: 1", "HugeFloat: 1"},
        {"exp", "HugeFloat: 1", "HugeFloat: 1"},
        {"atanh", "HugeFloat: 0", "HugeFloat: 0"},
        {"ln", "failure: Zero can't be log", "failure: Zero can't be log"},
        {"acosh",
         "failure: The definition domain of inverse hyperbolic cosine function is [1, infinite)",
         "failure: The definition domain of inverse hyperbolic cosine function is [1, infinite)"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(memberOf(0, row.name), row.ofInteger) << row.name;
        EXPECT_EQ(memberOf(0.0, row.name), row.ofFloat) << row.name;
    }
    for (const HugeVariant& zero : {HugeVariant(0), HugeVariant(0.0)})
        EXPECT_NEAR(zero.acos().asDouble(), 1.5707963267948966, 1e-15);
}

TEST(Floats, HaveTheFunctionsOfTheirNumbers)
{
    const struct {
        const char* name;
        double argument;
        double result;
    } rows[] = {
        {"sin", 0.5, 0.479425538604203},    {"cos", 0.5, 0.8775825618903728},
        {"tan", 0.5, 0.5463024898437905},   {"asin", 0.5, 0.5235987755982989},
        {"acos", 0.5, 1.0471975511965979},  {"atan", 0.5, 0.4636476090008061},
        {"sinh", 0.5, 0.5210953054937474},  {"cosh", 0.5, 1.1276259652063807},
        {"tanh", 0.5, 0.46211715726000973}, {"asinh", 0.5, 0.48121182505960347},
        {"acosh", 1.5, 0.9624236501192069}, {"atanh", 0.5, 0.5493061443340549},
        {"exp", 0.5, 1.6487212707001282},   {"ln", 0.5, -0.6931471805599453},
    };
    for (const auto& row : rows) {
        const HugeVariant result = HugeVariant(row.argument).member(row.name, nullptr, 0);
        EXPECT_EQ(result.typeName(), "HugeFloat") << row.name;
        EXPECT_NEAR(result.asDouble(), row.result, 1e-15) << row.name;
    }
    EXPECT_EQ(memberOf(8.0, "log", {2}), "HugeFloat: 3");
    EXPECT_EQ(HugeVariant(-1.0).ln().typeName(), "HugeImag");
    EXPECT_EQ(HugeVariant(2.0).log(HugeVariant(-2)).typeName(), "HugeImag");
    // ln(4) / ln(2i) by hand: its size is 2 ln(2) / sqrt(ln(2)^2 + (pi / 2)^2)
    EXPECT_NEAR(
        HugeVariant(4.0).log(HugeImag(HugeFloat(0), HugeFloat(2))).asImag().abs().asDouble(),
        0.8074255038868414, 1e-15);
    EXPECT_EQ(shown([] { return HugeVariant(-2.0).log(HugeVariant(0)); }),
              "failure: Zero can't be log");
    EXPECT_EQ(memberOf(0.5, "acosh"), "failure: The definition domain of inverse hyperbolic "
                                      "cosine function is [1, infinite)");
    EXPECT_EQ(memberOf(1.0, "atanh"),
              "failure: The definition domain of inverse hyperbolic tangent function is (- 1,1)");
}

TEST(Floats, HaveMembers)
{
    const HugeVariant wide(HugeFloat(3, 4));
    const HugeVariant nearOne = HugeVariant(1.0) + (HugeVariant(1.0) >> HugeVariant(62));
    const struct {
        HugeVariant value;
        const char* name;
        std::vector<HugeVariant> args;
        const char* result;
    } rows[] = {
        {-2.5, "abs", {}, "HugeFloat: 2.5"},
        {6.25, "sqrt", {}, "HugeFloat: 2.5"},
        {-6.25, "sqrt", {}, "HugeImag: 2.5i"},
        {wide, "prec", {}, "HugeInteger: 4"},
        {wide, "size", {}, "HugeInteger: 4"},
        {wide.member("inv", nullptr, 0), "prec", {}, "HugeInteger: 4"},
        {wide.member("asPrec", nullptr, 0), "prec", {}, "HugeInteger: 1"},
        {4.0, "inv", {}, "HugeFloat: 0.25"},
        {0.0, "inv", {}, "failure: div by zero"},
        {2.5, "asPrec", {3}, "HugeFloat: 2.5"},
        {2.5, "asPrec", {0}, "failure: The precision must be at least 1"},
        {2.5, "asPrec", {20800}, "failure: Number size must less than 20800"},
        {0.0, "isSimilarZero", {}, "boolean: true"},
        {1e-18, "isSimilarZero", {}, "boolean: false"},
        {1e-19, "isSimilarZero", {}, "boolean: true"},
        {1e-19, "isSimilar", {}, "boolean: true"},
        {nearOne, "isSimilar", {1}, "boolean: true"},
        {1.5, "isSimilar", {1}, "boolean: false"},
        {1.5, "isSimilar", {1, 0.75}, "boolean: true"},
        {1.5, "isSimilar", {2, 0.5}, "boolean: false"},
        {1.5, "typeName", {}, "string: HugeFloat"},
        {255.0, "hex", {}, "string: 0xFF.0"},
        {-255.5, "hex", {}, "string: 0xFF.8"},
        {-255.5, "hex", {1}, "string: 0x.8"},
        {0.0, "hex", {}, "string: 0x0"},
        {1.5, "data", {}, "data: 0x010000000000000000000000000000c0"},
        {1.5, "isPrime", {}, "failure: HugeFloat is not suport isPrime()"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(memberOf(row.value, row.name, row.args), row.result) << row.name;
}

TEST(Floats, KeepThePrecisionOfTheirOperands)
{
    const HugeVariant wide(HugeInteger().fromText_("0x1'0000000000000000'0000000000000001"));
    const HugeVariant sum = wide + HugeVariant(0.5);
    EXPECT_EQ(memberOf(sum, "prec"), "HugeInteger: 3");
    EXPECT_EQ(sum.asType(varInt).toString(), wide.toString());
    EXPECT_EQ(real("1.5").asFloat().limbCount(), 1u);
}

} // namespace
} // namespace huge
