#include "common/XNumberText.h"

#include <gtest/gtest.h>

#include <limits>

using xstd::XNumberText;
using xstd::XString;

struct NumberCase {
    const char* text;
    const char* normal; // the literal given back
    int32_t size;       // bytes consumed
};

class NumberText : public ::testing::TestWithParam<NumberCase> {};

TEST_P(NumberText, IsSplitAndGivenBack)
{
    const NumberCase& row = GetParam();
    const XNumberText number = XNumberText::parse(row.text);
    EXPECT_EQ(number.normalText(), row.normal) << row.text;
    EXPECT_EQ(number.size, row.size) << row.text;
}

INSTANTIATE_TEST_SUITE_P(Decimal, NumberText,
                         ::testing::Values(NumberCase{"", "", 0}, NumberCase{"0", "0", 1},
                                           NumberCase{"007", "007", 3}, NumberCase{"12x", "12", 2},
                                           NumberCase{" - 5 ", "-5", 4}, NumberCase{".5", ".5", 2},
                                           NumberCase{"-", "", 1}, NumberCase{"abc", "", 0}));
INSTANTIATE_TEST_SUITE_P(Separators, NumberText,
                         ::testing::Values(NumberCase{"1_000", "1000", 5},
                                           NumberCase{"1'000", "1000", 5},
                                           NumberCase{"1__0_", "10", 5}, NumberCase{"0x_1", "", 2},
                                           NumberCase{"1.2_5'", "1.25", 6}));
INSTANTIATE_TEST_SUITE_P(PointAndPrecision, NumberText,
                         ::testing::Values(NumberCase{"1.x", "1", 1}, NumberCase{"1.5.2", "1.5", 3},
                                           NumberCase{"1.5i.2", "1.5i", 4},
                                           NumberCase{"1i.2", "1i", 2},
                                           NumberCase{"1..20", "1..20", 5},
                                           NumberCase{"1.25..4.5", "1.25..4", 7},
                                           NumberCase{"1..", "1", 3}));
INSTANTIATE_TEST_SUITE_P(ExponentAndImaginary, NumberText,
                         ::testing::Values(NumberCase{"1e5", "1e5", 3},
                                           NumberCase{"1E5e2", "1e5", 3},
                                           NumberCase{"1e+5", "1", 2},
                                           NumberCase{"1.5e3i", "1.5e3i", 6},
                                           NumberCase{"2ii", "2i", 2}, NumberCase{"2I", "2i", 2}));
INSTANTIATE_TEST_SUITE_P(Radix, NumberText,
                         ::testing::Values(NumberCase{"0b1012", "0b101", 5},
                                           NumberCase{"0O178", "0o17", 4},
                                           NumberCase{"0XfFeg", "0xfFe", 5},
                                           NumberCase{"-0x1.8i", "-0x1.8i", 7},
                                           NumberCase{"0b1e1", "0b1", 3}, NumberCase{"0x", "", 2},
                                           NumberCase{"0x1..1fg", "0x1..1f", 7}));

struct SizeCase {
    const char* text;
    int64_t value;
};

TEST(NumberTextSize, IsThePrecisionOrTheLimbsOfTheDigits)
{
    const std::string digits(40, '1');
    const std::string bits = "0b" + std::string(65, '1');
    const std::string octals = "0o" + std::string(22, '7');
    const std::string nibbles = "0x" + std::string(32, 'f') + "." + std::string(2, 'f');
    const SizeCase cases[] = {
        {"1..20", 20},
        {"0x1..1f", 31},
        {"0b1..101", 5},
        {"1..999999999999999999999999999999", std::numeric_limits<int64_t>::max()},
        {"1", 1},
        {digits.c_str(), 3}, // (40 * 3.322 + 63) / 64 = 3.06
        {bits.c_str(), 2},
        {octals.c_str(), 2},
        {nibbles.c_str(), 3}};
    for (const SizeCase& row : cases)
        EXPECT_EQ(XNumberText::parse(row.text).toInt64(), row.value) << row.text;
}

TEST(NumberTextFields, AreFilledOneByOne)
{
    const XNumberText number = XNumberText::parse("-0x1f.8i..c");
    EXPECT_EQ(number.intPart, "1f");
    EXPECT_EQ(number.mantissa, "8");
    EXPECT_EQ(number.exponent, "");
    EXPECT_EQ(number.precision, "c");
    EXPECT_EQ(number.radix, 16);
    EXPECT_TRUE(number.imag);
    EXPECT_TRUE(number.negative);
}
