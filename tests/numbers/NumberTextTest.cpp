#include "numberTesting.h"

#include "numbers/XRadixInt.h"

#include <gtest/gtest.h>

using namespace huge;

namespace {

struct RuleCase {
    const char* value;
    XFormatRule rule;
    const char* text;
};

XFormatRule radix(uint8_t value, bool sign = false)
{
    XFormatRule rule;
    rule.radix = value;
    rule.sign = sign;
    return rule;
}

XFormatRule grouped(uint8_t radixValue, char separator, uint8_t size = 0)
{
    XFormatRule rule = radix(radixValue);
    rule.breakchar = uint8_t(separator);
    rule.breaksize = size & 0x7F;
    return rule;
}

XFormatRule places(int16_t mantissa, bool trim = false, bool percent = false, char separator = 0)
{
    XFormatRule rule;
    rule.mantissa = mantissa;
    rule.trimmant = trim;
    rule.percent = percent;
    rule.breakchar = uint8_t(separator);
    return rule;
}

} // namespace

TEST(IntegerText, FollowsTheRule)
{
    const RuleCase rows[] = {
        {"0", {}, "0"},
        {"-12345678901234567890123", {}, "-12345678901234567890123"},
        {"1234567", grouped(10, ','), "1,234,567"},
        {"123456", grouped(10, ','), "123,456"},
        {"-12", grouped(10, ','), "-12"},
        {"1234567", grouped(10, ' ', 2), "1 23 45 67"},
        {"3", places(2), "3.00"},
        {"0", places(2), "0.00"},
        {"3", places(0), "3"},
        {"3", places(2, true), "3"},
        {"1234", places(7, false, false, ','), "1,234.000,000,0"},
        {"5", places(-1, false, true), "500%"},
        {"-5", places(1, false, true), "-500.0%"},
        {"0", places(-1, false, true), "0%"},
        {"12", places(-1, false, true, ','), "1,200%"},
        {"-255", radix(16), "0xFF"},
        {"-255", radix(16, true), "-0xFF"},
        {"0xABCDE", grouped(16, '_'), "0xA_BCDE"},
        {"0b1111000011", grouped(2, '\''), "0b11'11000011"},
        {"8", radix(8), "0c10"},
        {"0o1234567", grouped(8, ','), "0c1,234,567"},
        {"0", radix(16), "0"},
        {"7", radix(99), "7"}, // an unknown radix is decimal
    };
    for (const RuleCase& row : rows)
        EXPECT_EQ(integer(row.value).fmt(row.rule), row.text) << row.value;
    XFormatRule rule = radix(16);
    rule.mantissa = 2;
    EXPECT_EQ(integer("0x1f").fmt(rule), "0x1F.00");
    EXPECT_EQ(HugeInteger(0).fmt(rule), "0.00");
    EXPECT_EQ(HugeInteger().fmt(rule), "0");
    EXPECT_EQ(HugeInteger(-1, 5).toString(), "-1");
}

TEST(IntegerText, ReadsLiterals)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", "0"},
        {"abc", "0"},
        {"-1.5", "-1"},
        {"1_000'000", "1000000"},
        {"0b101", "5"},
        {"0o17", "15"},
        {"-0xfF", "-255"},
        {"1e3", "1000"},
        {"1.5e3", "1500"},
        {"-1.2345e2", "-123"},
        {"0.05e2", "5"},
        {"0.0005e2", "0"},
        {".5e1", "5"},
        {"1e0", "1"},
        {"1e", "1"},
        {"0e999999999", "0"},
        {"0.000e999999999999999999999999999999", "0"},
        {"12e00000000000000000000000000000003", "12000"},
        {"00000000000000000000000000000000000000000000000000000001", "1"},
        {"18446744073709551616", "0x10000000000000000"},
    };
    for (const auto& [text, value] : rows) {
        const HugeInteger x = integer(text);
        EXPECT_EQ(x, integer(value)) << text;
        EXPECT_FALSE(x.isNull()) << text;
    }
    EXPECT_EQ(integer("0x00000000000000001").size(), 2u); // digits count, zeros in front too
    EXPECT_EQ(integer("0o1234567012345670123456").size(), 2u);
    EXPECT_EQ(integer("0o123456701234567012345").size(), 1u);
    EXPECT_EQ(integer("0").size(), 1u);
}

TEST(IntegerText, RefusesWhatCannotFit)
{
    const std::string longDigits(400713, '9');
    const std::string longHex = "0x" + std::string(16 * 20800, 'f');
    for (const std::string& text :
         {std::string("1e999999999"), std::string("1e400712"), std::string("0.001e400715"),
          std::string("1e123456789012345678901234567890"), "1" + longDigits, longHex})
        EXPECT_EQ(failureOf([&] { integer(text.c_str()); }), "Number size must less than 20800")
            << text.substr(0, 40);
    EXPECT_EQ(integer("1e400711").bitLength(), 1331134u);
    EXPECT_EQ(integer(longHex.substr(0, 2 + 16 * 20799).c_str()).bitLength(), 1331136u);
}

TEST(IntegerText, PrintsLongNumbersWhole)
{
    const HugeInteger x = HugeInteger(10).pow(5000);
    EXPECT_EQ(x.toString(), "1" + std::string(5000, '0'));
    EXPECT_EQ((x - 1).toString(), std::string(5000, '9'));
    const HugeInteger y = integer(("7" + std::string(40000, '3') + "9").c_str());
    EXPECT_EQ(y.toString(), "7" + std::string(40000, '3') + "9");
    EXPECT_EQ(y % 1000, 339);
}

TEST(GroupText, CutsFromTheLeft)
{
    EXPECT_EQ(groupText(grouped(58, '-'), "abcdefghij"), "abcd-efgh-ij");
    EXPECT_EQ(groupText(grouped(2, '-'), "abcdefghij"), "abcdefgh-ij");
    EXPECT_EQ(groupText(grouped(8, '-'), "abcdef"), "abc-def");
    EXPECT_EQ(groupText(grouped(64, '-', 5), "abcdefghij"), "abcde-fghij");
    EXPECT_EQ(groupText(radix(64), "abc"), "abc");
    EXPECT_EQ(groupText(grouped(64, '-'), ""), "");
}

TEST(GroupText, SizesFollowTheRadix)
{
    EXPECT_EQ(groupSize(radix(2)), 8u);
    EXPECT_EQ(groupSize(radix(16)), 4u);
    EXPECT_EQ(groupSize(radix(8)), 3u);
    EXPECT_EQ(groupSize(radix(10)), 3u);
    EXPECT_EQ(groupSize(grouped(2, ' ', 127)), 127u);
    EXPECT_EQ(decimalTail(places(4, false, false, ',')), ".000,0");
    EXPECT_EQ(decimalTail(places(3, false, false, ',')), ".000");
    EXPECT_EQ(decimalTail(places(-1)), "");
}

TEST(RadixInt, MovesLimbsInAndOut)
{
    XRadixInt16 x;
    EXPECT_TRUE(x.isEmpty());
    EXPECT_EQ(x.print({}), "0");
    x.parse_("-0x1000000000000000020000000000000030");
    EXPECT_TRUE(x.neg());
    EXPECT_EQ(x.size(), 3u);
    EXPECT_EQ(x.bitLength(), 133u);
    Limb low[2], top[2], all[4];
    x.copyTo(low, 2);
    x.copyTo(top, 2, true);
    x.copyTo(all, 4);
    EXPECT_TRUE(low[0] == 0x30 && low[1] == 2 && top[0] == 2 && top[1] == 0x10 && all[3] == 0);
    EXPECT_EQ(x.setInt_(255).print({}), "FF");
    EXPECT_FALSE(x.neg());
    EXPECT_TRUE(x.parse_("").isEmpty());
    XRadixInt8 octal;
    EXPECT_EQ(octal.parse_("0c1777777777777777777777").print({}), "1777777777777777777777");
    EXPECT_EQ(XRadixInt2().parse_("+0B0101").print({}), "101");
    EXPECT_TRUE(XRadixInt10().parse_("000").isEmpty());
}
