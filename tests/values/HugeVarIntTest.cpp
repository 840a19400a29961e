#include "values/HugeVarInt.h"
#include "valueTesting.h"
#include "values/HugeVariant.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace huge {
namespace {

HugeVariant number(const char* text)
{
    return HugeInteger().fromText_(text);
}

TEST(Integers, CalculateLikeIntegers)
{
    EXPECT_EQ((number("7") / number("2")).toString(), "3");
    EXPECT_EQ((number("-7") / number("2")).toString(), "-3");
    EXPECT_EQ((number("-7") % number("2")).toString(), "-1");
    EXPECT_EQ(pow(HugeVariant(2), HugeVariant(100)).toString(), "1267650600228229401496703205376");
    EXPECT_EQ((HugeVariant(1) << HugeVariant(64)).toString(), "0");
    EXPECT_EQ((HugeVariant(5) >> HugeVariant(1)).toString(), "2");
    EXPECT_EQ((HugeVariant(5) >> HugeVariant(-2)).toString(), "20");
    EXPECT_EQ(bitOr(HugeVariant(12), HugeVariant(3)).toString(), "15");
    EXPECT_EQ(bitAnd(HugeVariant(12), HugeVariant(6)).toString(), "4");
    EXPECT_EQ(bitXor(HugeVariant(12), HugeVariant(6)).toString(), "10");
    EXPECT_EQ((~HugeVariant(0)).toString(), "18446744073709551615");
    EXPECT_TRUE(number("100000000000000000000") > number("99999999999999999999"));
    EXPECT_TRUE(HugeVariant(-1) <= HugeVariant(false));
}

TEST(Integers, ShiftInsideTheirBlock)
{
    const HugeVariant beyond = number("18446744073709551616"); // a count whose low limb is 0
    EXPECT_EQ((HugeVariant(1) << beyond).toString(), "0");
    EXPECT_EQ((HugeVariant(5) >> beyond).toString(), "0");
    EXPECT_EQ((HugeVariant(5) << -beyond).toString(), "0");
    EXPECT_EQ((HugeVariant(5) >> HugeVariant(1e30)).toString(), "0");
    EXPECT_EQ((HugeVariant(5) << HugeVariant(1.9)).toString(), "10");
}

TEST(Integers, LeaveTheWholeNumbersWhereTheyMust)
{
    const struct {
        const char* result;
        HugeVariant (*call)();
    } rows[] = {
        {"failure: div with zero", [] { return HugeVariant(1) / HugeVariant(0); }},
        {"failure: div with zero", [] { return HugeVariant(1) % HugeVariant(); }},
        {"HugeImag: 64", [] { return pow(HugeVariant(-8), HugeVariant(2)); }},
        {"HugeFloat: 0.5", [] { return pow(HugeVariant(2), HugeVariant(-1)); }},
        {"HugeFloat: 0.1", [] { return pow(HugeVariant(10), HugeVariant(-1)); }},
        {"HugeFloat: 1", [] { return pow(HugeVariant(true), -number("1000000000000000000000")); }},
        {"failure: div by zero", [] { return pow(HugeVariant(0), HugeVariant(-1)); }},
        {"HugeInteger: 1", [] { return pow(HugeVariant(0), HugeVariant(0)); }},
        {"HugeFloat: 5", [] { return HugeVariant(5).asType(varFloat); }},
        {"HugeImag: -5", [] { return HugeVariant(-5).asType(varImag); }},
        {"HugeMod: 5", [] { return HugeVariant(5).asType(varMod); }},
        {"null", [] { return HugeVariant(5).asType(varTime); }},
        {"failure: Zero can't be log", [] { return HugeVariant(0).ln(); }},
        {"failure: Zero can't be log", [] { return HugeVariant(0).log(HugeVariant(2)); }},
        {"HugeFloat: 10", [] { return HugeVariant(1024).log(HugeVariant(2)); }},
        {"failure: The definition domain of inverse hyperbolic cosine function is [1, infinite)",
         [] { return HugeVariant(0).acosh(); }},
        {"failure: The definition domain of inverse hyperbolic tangent function is (- 1,1)",
         [] { return HugeVariant(1).atanh(); }},
        {"failure: arcsin(x) only valid for -1<=x<=1", [] { return HugeVariant(2).asin(); }},
    };
    for (const auto& row : rows)
        EXPECT_EQ(shown(row.call), row.result);
    EXPECT_EQ(HugeVariant(-2).ln().typeName(), "HugeImag");
    EXPECT_EQ(HugeVariant(2).log(HugeVariant(-2)).typeName(), "HugeImag");
}

TEST(Integers, HaveFunctionsOfFloatsWithTheirOwnLimbs)
{
    const HugeVariant wide = number("0x1'0000000000000000");
    EXPECT_EQ(memberOf(wide.sin(), "prec"), "HugeInteger: 2");
    EXPECT_EQ(memberOf(wide.asType(varFloat), "prec"), "HugeInteger: 2");
    EXPECT_NEAR(HugeVariant(1).exp().asDouble(), 2.718281828459045, 1e-15);
    EXPECT_NEAR(HugeVariant(2).atan().asDouble(), 1.1071487177940904, 1e-15);
}

TEST(Integers, HaveMembers)
{
    const struct {
        HugeVariant value;
        const char* name;
        std::vector<HugeVariant> args;
        const char* result;
    } rows[] = {
        {-5, "abs", {}, "HugeInteger: 5"},
        {17, "sqrt", {}, "HugeInteger: 4"},
        {-4, "sqrt", {}, "HugeImag: 2i"},
        {49, "isSquare", {}, "boolean: true"},
        {50, "isSquare", {}, "boolean: false"},
        {-3, "isSquare", {}, "failure: Negative numbers cannot be squared"},
        {5, "size", {}, "HugeInteger: 1"},
        {number("18446744073709551616"), "prec", {}, "HugeInteger: 2"},
        {0, "inv", {}, "failure: div by zero"},
        {4, "inv", {}, "HugeFloat: 0.25"},
        {20, "factorial", {}, "HugeInteger: 2432902008176640000"},
        {97, "isPrime", {}, "boolean: true"},
        {91, "isPrime", {}, "boolean: false"},
        {36, "euler", {}, "HugeInteger: 12"},
        {7, "order", {}, "HugeInteger: 0"},
        {7, "order", {2}, "HugeInteger: 3"},
        {23, "primeRoot", {}, "HugeInteger: 5"},
        {120, "factors", {}, "string: 2^3 * 3 * 5"},
        {1, "factors", {}, "null"},
        {4, "typeName", {}, "string: HugeInteger"},
        {0, "cos", {}, "HugeInteger: 1"},
        {8, "log", {2}, "HugeFloat: 3"},
        {-703710, "hex", {}, "string: 0xABCDE"},
        {703710, "hex", {2}, "string: 0xBCDE"},
        {0, "hex", {}, "string: 0x0"},
        {513, "data", {}, "data: 0x0102000000000000"},
        {4, "foo", {}, "failure: HugeInteger is not suport foo()"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(memberOf(row.value, row.name, row.args), row.result) << row.name;
}

TEST(Integers, GiveTheirLimbsAsBytes)
{
    EXPECT_EQ(HugeVariant(-258).data(), (std::vector<uint8_t>{2, 1, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(number("18446744073709551616").data().size(), 16u);
    EXPECT_EQ(HugeVariant(true).data(), std::vector<uint8_t>{1});
    EXPECT_TRUE(HugeVariant().data().empty());
}

} // namespace
} // namespace huge
