#include "numbers/HugeMod.h"

#include "numberTesting.h"
#include "numbers/numberTheory.h"

#include <gtest/gtest.h>

using namespace huge;

namespace {

HugeMod residue(int64_t value, int64_t modulus)
{
    return HugeMod(HugeInteger(value), HugeInteger(modulus));
}

HugeMod plain(int64_t value)
{
    return HugeMod(HugeInteger(value), nullptr);
}

/// "5 (mod 7)"
std::string textOf(const HugeMod& x)
{
    XFormatRule rule;
    rule.mod = 1;
    return x.fmt(rule);
}

} // namespace

TEST(Residue, KeepsItsValueBetweenZeroAndTheModulus)
{
    EXPECT_EQ(textOf(residue(-3, 10)), "7 (mod 10)");
    EXPECT_EQ(textOf(residue(10, 10)), "0 (mod 10)");
    EXPECT_EQ(textOf(residue(-20, 10)), "0 (mod 10)");
    EXPECT_EQ(textOf(residue(5, 1)), "0 (mod 1)");
    EXPECT_EQ(textOf(plain(-3)), "-3 (mod 0)");
    EXPECT_EQ(textOf(HugeMod()), "0 (mod 0)");
    EXPECT_EQ(residue(5, 7).toString(), "5");
}

TEST(Residue, ShowsValueAndModulusInTheRulesRadix)
{
    XFormatRule rule;
    rule.mod = 1;
    rule.radix = 16;
    EXPECT_EQ(residue(255, 4096).fmt(rule), "0xFF (mod 0x1000)");
    rule.mod = 0;
    EXPECT_EQ(residue(255, 4096).fmt(rule), "0xFF");
}

TEST(Residue, RefusesAModulusThatIsNotPositive)
{
    for (const int64_t m : {0, -7})
        EXPECT_EQ(failureOf([&] { residue(3, m); }), "The modulus must be positive") << m;
    HugeMod x = residue(3, 7);
    EXPECT_EQ(failureOf([&] { x.unifyModulus_(std::make_shared<HugeInteger>(0)); }),
              "The modulus must be positive");
    EXPECT_EQ(textOf(x), "3 (mod 7)");
}

TEST(Residue, CalculatesUnderTheSmallerModulus)
{
    EXPECT_EQ(textOf(residue(7, 10) + residue(5, 10)), "2 (mod 10)");
    EXPECT_EQ(textOf(residue(3, 7) + residue(3, 5)), "1 (mod 5)");
    EXPECT_EQ(textOf(residue(3, 5) - residue(6, 7)), "2 (mod 5)");
    EXPECT_EQ(textOf(residue(6, 7) * residue(4, 11)), "3 (mod 7)");
    EXPECT_EQ(textOf(residue(1, 7) / residue(10, 11)), "5 (mod 7)"); // 10 is 3 modulo 7
    EXPECT_EQ(textOf(plain(9) + residue(3, 5)), "2 (mod 5)");
    EXPECT_EQ(textOf(residue(3, 5) * plain(-2)), "4 (mod 5)");
    EXPECT_EQ(textOf(plain(7) - plain(9)), "-2 (mod 0)");
    EXPECT_EQ(textOf(plain(-7) / plain(2)), "-3 (mod 0)");
    EXPECT_EQ(textOf(-residue(0, 7)), "0 (mod 7)");
    EXPECT_EQ(textOf(-residue(2, 7)), "5 (mod 7)");
    EXPECT_EQ(textOf(-plain(2)), "-2 (mod 0)");
}

TEST(Residue, TakesIntegersOnEitherSideAndInPlace)
{
    const HugeInteger three(3);
    EXPECT_EQ(textOf(residue(1, 7) / three), "5 (mod 7)");
    EXPECT_EQ(textOf(three / residue(2, 7)), "5 (mod 7)");
    EXPECT_EQ(textOf(three - residue(5, 7)), "5 (mod 7)");
    EXPECT_EQ(textOf(residue(5, 7) * HugeInteger(-1)), "2 (mod 7)");
    HugeMod x = residue(5, 7);
    EXPECT_EQ(textOf(x += three), "1 (mod 7)");
    EXPECT_EQ(textOf(x -= residue(2, 5)), "4 (mod 5)");
    EXPECT_EQ(textOf(x *= x), "1 (mod 5)");
    EXPECT_EQ(textOf(x /= three), "2 (mod 5)");
    HugeMod y = plain(9);
    EXPECT_EQ(textOf(y += x), "1 (mod 5)");
}

TEST(Residue, SharesItsModulusWithWhatIsMadeFromIt)
{
    const auto m = std::make_shared<HugeInteger>(7);
    const auto same = std::make_shared<HugeInteger>(7);
    const HugeMod a(HugeInteger(3), m);
    EXPECT_EQ((a + HugeMod(HugeInteger(2), same)).modulus(), m);
    EXPECT_EQ((HugeInteger(2) * a).modulus(), m);
    EXPECT_EQ(a.inverse().modulus(), m);
    EXPECT_EQ(chooseModulus(nullptr, same), same);
    EXPECT_EQ(chooseModulus(m, nullptr), m);
    HugeMod x = plain(9);
    EXPECT_FALSE(x.unifyModulus_(nullptr));
    EXPECT_TRUE(x.unifyModulus_(m));
    EXPECT_EQ(textOf(x), "2 (mod 7)");
    EXPECT_TRUE(x.unifyModulus_(std::make_shared<HugeInteger>(11)));
    EXPECT_EQ(x.modulus(), m);
}

TEST(Residue, ShiftsWithOneSpareLimb)
{
    EXPECT_EQ(textOf(residue(5, 7) << 3), "5 (mod 7)");
    EXPECT_EQ(textOf(residue(5, 7) >> 1), "2 (mod 7)");
    EXPECT_EQ(textOf(residue(5, 7) << -1), "2 (mod 7)");
    EXPECT_EQ(textOf(residue(5, 7) >> -3), "5 (mod 7)");
    EXPECT_EQ(textOf(plain(1) << 127), "170141183460469231731687303715884105728 (mod 0)");
    EXPECT_EQ(textOf(plain(3) << 127), "170141183460469231731687303715884105728 (mod 0)");
    EXPECT_EQ(textOf(plain(1) << 128), "0 (mod 0)");
    for (const int64_t count : {INT64_MAX, INT64_MIN}) {
        EXPECT_TRUE((residue(5, 7) << count).isZero());
        EXPECT_TRUE((residue(5, 7) >> count).isZero());
    }
}

TEST(Residue, RaisesToPowers)
{
    EXPECT_EQ(textOf(residue(2, 7).pow(HugeInteger(-1))), "4 (mod 7)");
    EXPECT_EQ(textOf(residue(2, 7).pow(HugeInteger(-2))), "2 (mod 7)");
    EXPECT_EQ(textOf(residue(0, 1).pow(HugeInteger(0))), "0 (mod 1)");
    EXPECT_EQ(textOf(residue(0, 7).pow(HugeInteger(0))), "1 (mod 7)");
    EXPECT_EQ(textOf(residue(3, 7).pow(residue(3, 11))), "6 (mod 7)");
    EXPECT_EQ(textOf(residue(3, 11).pow(residue(3, 7))), "5 (mod 11)"); // the base's modulus
    EXPECT_EQ(textOf(plain(10).pow(residue(1, 7))), "3 (mod 7)");
    EXPECT_EQ(textOf(plain(-2).pow(residue(3, 7))), "6 (mod 7)");
    EXPECT_EQ(textOf(plain(-2).pow(plain(3))), "-8 (mod 0)");
    EXPECT_EQ(failureOf([] { plain(2).pow(plain(-1)); }), "Power exponent can't be negative!");
    EXPECT_EQ(failureOf([] { residue(2, 8).pow(HugeInteger(-3)); }), "There is no inverse");
}

TEST(Residue, InvertsAndDividesWhereThereIsAnInverse)
{
    EXPECT_EQ(textOf(residue(3, 7).inverse()), "5 (mod 7)");
    EXPECT_EQ(textOf(residue(3, 8).inverse()), "3 (mod 8)");
    EXPECT_EQ(textOf(residue(4, 1).inverse()), "0 (mod 1)");
    EXPECT_EQ(textOf(residue(4, 1) / residue(0, 1)), "0 (mod 1)");
    EXPECT_EQ(failureOf([] { residue(0, 7).inverse(); }), "There is no inverse");
    EXPECT_EQ(failureOf([] { residue(1, 8) / residue(6, 8); }), "There is no inverse");
    EXPECT_EQ(failureOf([] { plain(3).inverse(); }), "The residue has no modulus");
    EXPECT_EQ(failureOf([] { plain(3) / plain(0); }), "div with zero");
}

TEST(Residue, TakesRoots)
{
    EXPECT_EQ(textOf(residue(2, 7).sqrt()), "4 (mod 7)");
    EXPECT_EQ(textOf(residue(3, 7).sqrt()), "0 (mod 7)");
    EXPECT_EQ(textOf(plain(16).sqrt()), "4 (mod 0)");
    EXPECT_EQ(failureOf([] { plain(-4).sqrt(); }), "Negative numbers cannot be squared");
    EXPECT_TRUE(residue(2, 7).isSquare());
    EXPECT_FALSE(residue(3, 7).isSquare());
    EXPECT_FALSE(residue(0, 7).isSquare());
    EXPECT_FALSE(plain(4).isSquare());
}

TEST(Residue, ComparesByValueAlone)
{
    EXPECT_EQ(residue(3, 7), residue(3, 11));
    EXPECT_EQ(residue(3, 7), residue(10, 7));
    EXPECT_EQ(residue(3, 7), HugeInteger(3));
    EXPECT_LT(residue(3, 7), residue(4, 5));
    EXPECT_GE(residue(6, 7), residue(5, 11));
    EXPECT_GT(HugeInteger(4), residue(3, 7));
}
