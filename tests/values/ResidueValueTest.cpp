#include "numbers/HugeFloat.h"
#include "numbers/HugeImag.h"
#include "numbers/HugeMod.h"
#include "valueTesting.h"
#include "values/HugeVarMod.h"
#include "values/HugeVariant.h"

#include <gtest/gtest.h>

#include <vector>

namespace huge {
namespace {

HugeVariant residue(int64_t value, int64_t modulus)
{
    return HugeMod(HugeInteger(value), HugeInteger(modulus));
}

HugeVariant plain(int64_t value)
{
    return HugeMod(HugeInteger(value), nullptr);
}

/// The result with its modulus, "5 (mod 7)", or the failure.
xstd::XString withModulus(HugeVariant (*call)())
{
    XFormatRule rule;
    rule.mod = 1;
    return shown([&] { return HugeVariant(call().fmt(rule)); });
}

TEST(ResidueValues, CalculateUnderTheModulus)
{
    const struct {
        const char* name;
        const char* result;
        HugeVariant (*call)();
    } rows[] = {
        {"7 + 5 mod 10", "2 (mod 10)", [] { return residue(7, 10) + residue(5, 10); }},
        {"3 mod 7 + 3 mod 5", "1 (mod 5)", [] { return residue(3, 7) + residue(3, 5); }},
        {"3 + 5 mod 7", "1 (mod 7)", [] { return plain(3) + residue(5, 7); }},
        {"integer - residue", "5 (mod 7)", [] { return HugeVariant(1) - residue(3, 7); }},
        {"residue * float", "6 (mod 7)", [] { return residue(3, 7) * HugeVariant(2.9); }},
        {"true * residue", "3 (mod 7)", [] { return HugeVariant(true) * residue(3, 7); }},
        {"1 / 3", "5 (mod 7)", [] { return HugeVariant(1) / residue(3, 7); }},
        {"1 / 0", "There is no inverse", [] { return HugeVariant(1) / residue(0, 7); }},
        {"-3", "4 (mod 7)", [] { return -residue(3, 7); }},
        {"-0", "0 (mod 7)", [] { return -residue(0, 7); }},
        {"3 << 2", "5 (mod 7)", [] { return residue(3, 7) << HugeVariant(2.5); }},
        {"6 >> 1", "3 (mod 7)", [] { return residue(6, 7) >> residue(1, 7); }},
        {"3 ^ residue", "6 (mod 7)", [] { return pow(residue(3, 7), residue(3, 7)); }},
        {"3 ^ 100", "4 (mod 7)", [] { return pow(residue(3, 7), HugeVariant(100)); }},
        {"3 ^ -1", "5 (mod 7)", [] { return pow(residue(3, 7), HugeVariant(-1)); }},
        {"integer ^ residue", "6 (mod 7)", [] { return pow(HugeVariant(3), residue(3, 7)); }},
        {"3 ^ 10^30", "4 (mod 7)",
         [] { return pow(residue(3, 7), pow(HugeVariant(10), HugeVariant(30))); }},
        {"without modulus", "Number size must less than 20800",
         [] { return pow(plain(3), pow(HugeVariant(10), HugeVariant(30))); }},
        {"residue + complex", "3 (mod 7)",
         [] { return residue(3, 7) + HugeVariant(HugeImag(HugeFloat(2), HugeFloat(1))); }},
        {"residue + null", "3 (mod 7)", [] { return residue(3, 7) + HugeVariant(); }},
    };
    for (const auto& row : rows) {
        const xstd::XString result = withModulus(row.call);
        EXPECT_EQ(result.substr(result.find(' ') + 1), row.result) << row.name;
    }
    EXPECT_EQ(shown([] { return residue(3, 7) % residue(2, 7); }), "HugeInteger: 1");
    EXPECT_EQ(shown([] { return HugeVariant(9) % residue(4, 7); }), "HugeInteger: 1");
}

TEST(ResidueValues, CompareByValueAlone)
{
    EXPECT_TRUE(residue(3, 7) == residue(3, 11));
    EXPECT_TRUE(residue(10, 7) == HugeVariant(3));
    EXPECT_TRUE(HugeVariant(3.5) == residue(3, 7));
    EXPECT_TRUE(residue(2, 7) < HugeVariant(3));
    EXPECT_TRUE(residue(3, 7) <= residue(3, 5));
    EXPECT_TRUE(residue(4, 7) > residue(3, 11));
    EXPECT_FALSE(residue(4, 7) >= HugeVariant(5));
}

TEST(ResidueValues, HaveMembers)
{
    const struct {
        HugeVariant value;
        const char* name;
        const char* result;
    } rows[] = {
        {residue(3, 7), "value", "HugeInteger: 3"},
        {residue(3, 7), "mod", "HugeInteger: 7"},
        {plain(3), "mod", "HugeInteger: 0"},
        {residue(3, 7), "inv", "HugeMod: 5"},
        {residue(0, 7), "inv", "failure: There is no inverse"},
        {plain(3), "inv", "failure: The residue has no modulus"},
        {residue(2, 7), "isSquare", "boolean: true"},
        {residue(3, 7), "canSqrt", "boolean: false"},
        {plain(4), "canSqrt", "boolean: false"},
        {plain(17), "sqrt", "HugeMod: 4"},
        {residue(3, 7), "typeName", "string: HugeMod"},
        {residue(3, 7), "sin", "failure: HugeMod is not suport sin()"},
        {residue(3, 7), "foo", "failure: HugeMod is not suport foo()"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(memberOf(row.value, row.name), row.result) << row.name;
    const HugeVariant root = residue(2, 7).member("sqrt", nullptr, 0);
    EXPECT_EQ((root * root).toString(), "2");
    EXPECT_EQ(shown([] { return ~residue(3, 7); }), "failure: HugeMod is not suport bitNot(~)");
    EXPECT_EQ(shown([] { return residue(3, 7).asInt64(); }),
              "failure: HugeMod is not suport asInt64()");
}

TEST(ResidueValues, Convert)
{
    const HugeVariant value = residue(10, 7);
    EXPECT_EQ(shown([&] { return value.asType(varBool); }), "boolean: true");
    EXPECT_EQ(shown([&] { return value.asType(varInt); }), "HugeInteger: 3");
    EXPECT_EQ(shown([&] { return value.asType(varFloat); }), "HugeFloat: 3");
    EXPECT_EQ(shown([&] { return value.asType(varImag); }), "HugeImag: 3");
    EXPECT_EQ(shown([&] { return value.asType(varString); }), "string: 3");
    EXPECT_EQ(shown([&] { return value.asType(varTime); }), "null");
    EXPECT_FALSE(value.asType(varMod).asMod().hasModulus());
    EXPECT_TRUE(HugeVariant(value).asMod().hasModulus());
}

TEST(ResidueValues, ShareTheirModulus)
{
    const HugeVariant a = residue(3, 7);
    const HugeVariant sum = a + HugeVariant(5);
    EXPECT_EQ(sum.asMod().modulus(), a.asMod().modulus());
    EXPECT_EQ(HugeVariant(a).asMod().modulus(), a.asMod().modulus());
}

TEST(ResidueValues, GiveTheLimbsOfValueAndModulusAsBytes)
{
    const std::vector<uint8_t> expected{3, 0, 0, 0, 0, 0, 0, 0, 7, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(residue(3, 7).data(), expected);
    EXPECT_EQ(plain(3).data().size(), 8u);
    EXPECT_TRUE(HugeVariant(HugeMod()).isNull());
}

} // namespace
} // namespace huge
