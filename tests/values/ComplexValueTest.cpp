#include "numbers/HugeFloat.h"
#include "numbers/HugeImag.h"
#include "numbers/HugeMod.h"
#include "valueTesting.h"
#include "values/HugeVarImag.h"
#include "values/HugeVariant.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace huge {
namespace {

HugeVariant complex(double re, double im)
{
    return HugeImag(HugeFloat(re), HugeFloat(im));
}

const HugeVariant oneTwo = complex(1, 2);

struct Row {
    const char* name;
    const char* result;
    HugeVariant (*call)();
};

void expectRows(const std::vector<Row>& rows)
{
    for (const Row& row : rows)
        EXPECT_EQ(shown(row.call), row.result) << row.name;
}

TEST(ComplexValues, CalculateBesideEveryRealNumber)
{
    expectRows({
        {"z + 1", "HugeImag: 2 + 2i", [] { return oneTwo + HugeVariant(1); }},
        {"true + z", "HugeImag: 2 + 2i", [] { return HugeVariant(true) + oneTwo; }},
        {"0.5 - z", "HugeImag: -0.5 - 2i", [] { return HugeVariant(0.5) - oneTwo; }},
        {"z * z", "HugeImag: -3 + 4i", [] { return oneTwo * oneTwo; }},
        {"5 / z", "HugeImag: 1 - 2i", [] { return HugeVariant(5) / oneTwo; }},
        {"z ^ 2", "HugeImag: -3 + 4i", [] { return pow(oneTwo, HugeVariant(2)); }},
        {"2 ^ 0i", "HugeImag: 1", [] { return pow(HugeVariant(2), complex(0, 0)); }},
        {"z + null", "HugeImag: 1 + 2i", [] { return oneTwo + HugeVariant(); }},
        {"z / null", "failure: div by zero", [] { return oneTwo / HugeVariant(); }},
        {"-z", "HugeImag: -1 - 2i", [] { return -oneTwo; }},
        {"z >> 1", "HugeImag: 0.5 + 1i", [] { return oneTwo >> HugeVariant(1); }},
        {"z << 2.9", "HugeImag: 4 + 8i", [] { return oneTwo << HugeVariant(2.9); }},
        {"z << true", "HugeImag: 2 + 4i", [] { return oneTwo << HugeVariant(true); }},
        {"z << -2^63", "failure: HugeFloat exponent is out of range",
         [] { return oneTwo << HugeVariant(INT64_MIN); }},
    });
}

TEST(ComplexValues, AreEqualByBothParts)
{
    EXPECT_FALSE(HugeVariant(1) == oneTwo);
    EXPECT_TRUE(complex(1, 0) == HugeVariant(1));
    EXPECT_TRUE(HugeVariant(true) == complex(1, 0));
    EXPECT_TRUE(oneTwo == HugeVariant(HugeImag(HugeFloat(1, 3), HugeFloat(2, 5))));
    EXPECT_TRUE(HugeVariant() == complex(0, 0));
}

TEST(ComplexValues, RefuseWhatOnlyRealNumbersHave)
{
    expectRows({
        {"z % 2", "failure: HugeImag is not suport per(%)", [] { return oneTwo % HugeVariant(2); }},
        {"1 < z", "failure: HugeImag is not suport less(<)",
         [] { return HugeVariant(HugeVariant(1) < oneTwo); }},
        {"z <= z", "failure: HugeImag is not suport less_equ(<=)",
         [] { return HugeVariant(oneTwo <= oneTwo); }},
        {"z > 1", "failure: HugeImag is not suport greate(>)",
         [] { return HugeVariant(oneTwo > HugeVariant(1)); }},
        {"z >= 1", "failure: HugeImag is not suport greate_equ(>=)",
         [] { return HugeVariant(oneTwo >= HugeVariant(1)); }},
        {"~z", "failure: HugeImag is not suport bitNot(~)", [] { return ~oneTwo; }},
        {"z | 1", "failure: HugeImag is not suport bitOr(|)",
         [] { return bitOr(oneTwo, HugeVariant(1)); }},
        {"z.hex()", "failure: HugeImag is not suport hex()",
         [] { return HugeVariant(oneTwo.hex(0)); }},
        {"z()", "failure: HugeImag is not suport exec()", [] { return oneTwo.exec(nullptr, 0); }},
        {"asFloat", "failure: HugeImag is not float", [] { return HugeVariant(oneTwo.asFloat()); }},
    });
}

TEST(ComplexValues, HaveMembers)
{
    const struct {
        HugeVariant value;
        const char* name;
        const char* result;
    } rows[] = {
        {oneTwo, "re", "HugeFloat: 1"},
        {oneTwo, "im", "HugeFloat: 2"},
        {complex(3, -4), "abs", "HugeFloat: 5"},
        {complex(3, -4), "model", "HugeFloat: 5"},
        {complex(3, -4), "sqrt", "HugeImag: 2 - 1i"},
        {complex(-4, 0), "sqrt", "HugeImag: 2i"},
        {oneTwo, "conj", "HugeImag: 1 - 2i"},
        {complex(5, 0), "angle", "HugeFloat: 0"},
        {complex(0, 0), "radian", "failure: div by zero"},
        {complex(0, 0), "exp", "HugeImag: 1"},
        {complex(0, 0), "cos", "HugeImag: 1"},
        {complex(0, 0), "ln", "HugeImag: 0i"},
        {oneTwo, "typeName", "string: HugeImag"},
        {oneTwo, "foo", "failure: HugeImag is not suport foo()"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(memberOf(row.value, row.name), row.result) << row.name;
    EXPECT_EQ(memberOf(complex(0, 0).ln(), "im"), "HugeFloat: 0");
    EXPECT_EQ(memberOf(complex(0, 1), "log", {complex(0, 1)}), "HugeImag: 1");
}

TEST(ComplexValues, Convert)
{
    const HugeVariant value = complex(-2.5, 3);
    EXPECT_EQ(shown([&] { return value.asType(varBool); }), "boolean: true");
    EXPECT_EQ(shown([&] { return value.asType(varInt); }), "HugeInteger: -2");
    EXPECT_EQ(shown([&] { return value.asType(varFloat); }), "HugeFloat: -2.5");
    EXPECT_EQ(shown([&] { return value.asType(varImag); }), "HugeImag: -2.5 + 3i");
    EXPECT_EQ(shown([&] { return value.asType(varString); }), "string: -2.5 + 3i");
    EXPECT_EQ(shown([&] { return value.asType(varMod); }), "null");
    EXPECT_EQ(value.asInt64(), -2);
    EXPECT_EQ(value.asDouble(), -2.5);
    EXPECT_EQ(complex(0, 3).asType(varBool).toString(), "true");
}

TEST(ComplexValues, AreNothingOnlyWithoutAnyPart)
{
    EXPECT_TRUE(HugeVariant(HugeImag()).isNull());
    EXPECT_FALSE(HugeVariant(HugeImag(HugeFloat(0), HugeFloat())).isNull());
    EXPECT_TRUE(complex(0, 0).isZero());
    EXPECT_EQ((HugeVariant(HugeImag(HugeFloat(), HugeFloat(2))) + HugeVariant(1)).toString(),
              "1 + 2i");
}

TEST(ComplexValues, GiveTheLimbsOfBothPartsAsBytes)
{
    const std::vector<uint8_t> bytes = HugeVariant(HugeImag(HugeFloat(1), HugeFloat(-3, 2))).data();
    std::vector<uint8_t> expected(24, 0);
    expected[7] = 0x80;
    expected[23] = 0xC0;
    EXPECT_EQ(bytes, expected);
}

} // namespace
} // namespace huge
