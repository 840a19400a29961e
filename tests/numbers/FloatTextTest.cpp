#include "numberTesting.h"

#include "numbers/HugeFloat.h"

#include <gtest/gtest.h>

#include <limits>

using namespace huge;

namespace {

const char limitText[] = "Number size must less than 20800";

struct RuleCase {
    const char* value;
    size_t limbs; ///< 0 for as many as the text needs
    XFormatRule rule;
    const char* text;
    int64_t exponent = 0; ///< the value times 2 to this power
};

XFormatRule places(int16_t mantissa)
{
    XFormatRule rule;
    rule.mantissa = mantissa;
    return rule;
}

XFormatRule radix(uint8_t value, int16_t mantissa = -1)
{
    XFormatRule rule = places(mantissa);
    rule.radix = value;
    return rule;
}

XFormatRule percent(int16_t mantissa)
{
    XFormatRule rule = places(mantissa);
    rule.percent = 1;
    return rule;
}

XFormatRule trimmed(int16_t mantissa)
{
    XFormatRule rule = places(mantissa);
    rule.trimmant = 1;
    return rule;
}

XFormatRule grouped(XFormatRule rule, char separator, uint8_t size = 0)
{
    rule.breakchar = uint8_t(separator);
    rule.breaksize = size & 0x7F;
    return rule;
}

XFormatRule withSign(XFormatRule rule)
{
    rule.sign = 1;
    return rule;
}

void expectTexts(const std::vector<RuleCase>& rows)
{
    for (const RuleCase& row : rows) {
        const HugeFloat x = HugeFloat::fromText_(row.value, row.limbs).shiftExponent(-row.exponent);
        EXPECT_EQ(x.fmt(row.rule), row.text) << row.value << " * 2^" << row.exponent;
    }
}

/// A float of random, adversarial limbs.
HugeFloat floatFrom(Stream& stream, size_t n, int64_t exponent)
{
    const char kinds[] = {'r', 'x', 'o', 't'};
    const HugeInteger mantissa =
        fromVector(recipeLimbs(kinds[stream.next() % 4], n, stream.next()));
    HugeFloat x(mantissa.isZero() ? HugeInteger(1, n) : mantissa);
    return x.shiftExponent(x.exponent() - exponent).setSign(stream.next() % 2 != 0);
}

} // namespace

TEST(FloatText, ShowsTheShortestDecimal)
{
    expectTexts({
        {"1.0", 1, {}, "1"},
        {"0.5", 1, {}, "0.5"},
        {"-2.5", 1, {}, "-2.5"},
        {"0.0", 1, {}, "0"},
        {"0.1", 1, {}, "0.1"},
        {"0.1", 7, {}, "0.1"},
        {"1.995", 0, {}, "1.995"},
        {"9223372036854775808.0", 1, {}, "9223372036854775808"},
        {"18446744073709551615.0", 1, {}, "0.99999999999999999995", -64},
        {"9223372036854775809.0", 1, {}, "1.0000000000000000002", -63},
        {"1.0", 1, {}, "10^1505*1.4124670321394260369", 5000},
        {"-1.0", 1, {}, "-10^(-1506)*7.079811261048172893", -5000},
        {"1.0", 1, {}, "10^646456992*8.8080652584198167661", 2147483647},
        {"1.0", 1, {}, "10^(-646456993)*1.1353231052007462688", -2147483647},
        {"1.0", 1, {}, "79228162514264337593543950336", 96}, // the last that stands in full
        {"1.0", 1, {}, "10^29*1.584563250285286752", 97},
    });
}

TEST(FloatText, RoundsThatDecimalHalfUp)
{
    expectTexts({
        {"3.0", 1, places(2), "3.00"},
        {"0.0", 1, places(2), "0.00"},
        {"1.995", 1, places(2), "2.00"},
        {"1.25", 1, places(1), "1.3"},
        {"1.7", 1, places(0), "2"},
        {"1.2", 1, places(0), "1.2"},
        {"1.26", 1, places(0), "1.2"},
        {"1.02", 1, places(0), "1"},
        {"99.999", 1, places(2), "100.00"},
        {"0.005", 1, places(2), "0.01"},
        {"0.0049", 1, places(2), "0.00"},
        {"-0.5", 1, places(1), "-0.5"},
        {"1.5", 1, trimmed(3), "1.5"},
        {"1.9996", 1, trimmed(3), "2"},
        {"1.0", 1, places(1), "0.0", -2147483647},
        {"0.1", 1, percent(-1), "10%"},
        {"0.12345", 1, percent(1), "12.3%"},
        {"1.995", 1, percent(0), "200%"},
        {"1.0", 1, percent(-1), "10^1507*1.4124670321394260369%", 5000},
        {"1234567.1234567", 0, grouped({}, ','), "1,234,567.123,456,7"},
        {"12345.6", 0, grouped(places(5), '_', 2), "1_23_45.60_00_0"},
        {"0.0", 1, grouped(places(4), ','), "0.000,0"},
    });
}

TEST(FloatText, ShowsBitsInOtherRadixes)
{
    expectTexts({
        {"1.0", 1, radix(16), "0x1.0"},
        {"1.0", 1, radix(2), "0b1"},
        {"1.0", 1, radix(8), "0c1"},
        {"0.0", 1, radix(16, 2), "0.00"},
        {"1.0", 1, radix(16, 2), "0x1.00"},
        {"-10.625", 1, radix(16), "-0xA.A"},
        {"-10.625", 1, radix(2), "-0b1010.101"},
        {"10.625", 1, radix(8), "0c12.5"},
        {"10.625", 1, radix(8, 3), "0c12.500"},
        {"10.625", 1, radix(2, 1), "0b1010.1"},
        {"0.03125", 1, radix(16), "0x0.08"},
        {"1.0", 1, radix(16, 3), "0x0.000", -2147483647},
        {"703710.6640625", 1, grouped(radix(16), ' '), "0xA BCDE.AA"},
        {"1.0", 1, radix(2), "0b10^0b1001110001000*1", 5000},
        {"1.75", 1, radix(2), "0b10^(-0b1001110001000)*1.11", -5000},
        {"1.75", 1, radix(8), "0c10^0c3203*1.6", 5001}, // 5001 = 3 * 1667 = 3 * 0c3203
        {"1.75", 1, radix(8), "0c10^0c3203*3.4", 5002},
        {"1.75", 1, radix(8), "0c10^(-0c3204)*3.4", -5003}, // 3 * -1668 + 1
        {"11.0", 1, radix(16), "0x10^0x4e2*b.0", 5000},
        {"18446744073709551615.0", 1, radix(16), "0x10^0x4e2*1.FFFFFFFFFFFFFFFE", 4937},
        {"-1.0", 1, radix(16), "0x10^0x4e2*1.0", 5000},
        {"-1.0", 1, withSign(radix(16)), "-0x10^0x4e2*1.0", 5000},
        // The header word with one limb and exponent 0, then the limb.
        {"1.0", 1, radix(64), "AQAAAAAAAAAAAAAAAAAAgA=="},
        {"1.0", 1, grouped(radix(64), '-', 6), "AQAAAA-AAAAAA-AAAAAA-AAgA=="},
    });
}

TEST(IntegerText, ShowsLimbsInBase58AndBase64)
{
    EXPECT_EQ(HugeInteger(1).fmt(radix(64)), "AQAAAAAAAAA=");
    EXPECT_EQ(HugeInteger(-1).fmt(radix(64)), "AQAAAAAAAAA=");
    EXPECT_EQ(HugeInteger(1, 2).fmt(grouped(radix(64), ' ')), "AQAA AAAA AAAA AAAA AAAA AA==");
    EXPECT_EQ(HugeInteger(1).fmt(radix(58)), "Ahg1opVcGX"); // of 01 00 00 00 00 00 00 00
}

TEST(FloatText, IsReadAndTruncated)
{
    struct Case {
        const char* text;
        size_t limbs; ///< asked for
        size_t size;  ///< of the result
        const char* shown;
    };
    for (const Case& row : std::vector<Case>{
             {"", 0, 1, "0"},
             {"abc", 3, 1, "0"},
             {"0.000", 4, 4, "0"},
             {"1.5", 0, 1, "1.5"},
             {"1.5..100", 0, 100, "1.5"},
             {"-0x1.8", 0, 1, "-1.5"},
             {"0.8", 0, 1, "0.8"},
             {"0x.8", 0, 1, "0.5"},
             {"0o17.4", 0, 1, "15.5"},
             {"0b-1", 0, 1, "0"},
             {"-0b1.01", 2, 2, "-1.25"},
             {"1e3", 0, 1, "1000"},
             {"1.5e3", 0, 1, "1500"},
             {"0.0015e2", 0, 1, "0.15"},
             {"12.345e1", 0, 1, "123.45"},
             {"0.000e99999999999999999999", 2, 2, "0"},
             {"1.5e600000000", 1, 1, "10^600000000*1.5"},
             {"1.5e646456992", 1, 1, "10^646456992*1.5"},
             {"7e1000", 2, 2, "10^1000*7"},
             {"0.00000000000000000000000000000000000000001234567890123456789", 1, 1,
              "10^(-41)*1.234567890123456789"},
         }) {
        const HugeFloat x = HugeFloat::fromText_(row.text, row.limbs);
        EXPECT_EQ(x.limbCount(), row.size) << row.text;
        EXPECT_EQ(x.toString(), row.shown) << row.text;
    }
    // floor(2^67 / 10) and floor(10^40 / 2^69), the mantissas of 0.1 and 1e40
    EXPECT_EQ(HugeFloat::fromText_("0.1", 1).limbs()[0], 0xCCCCCCCCCCCCCCCCu);
    EXPECT_EQ(HugeFloat::fromText_("1e40", 1).limbs()[0], 0xEB194F8E1AE525FDu);
    EXPECT_EQ(HugeFloat::fromText_("1e40", 1).exponent(), 132);
}

TEST(FloatText, WorksUpToTheLimits)
{
    EXPECT_EQ(HugeFloat::fromText_("0.1..20799").toString(), "0.1");
    // More zeros than a power of five has room for, and a result twice as long as its zeros.
    const xstd::XString zeros(600000, '0');
    EXPECT_EQ(HugeFloat::fromText_("0." + zeros + "25", 1).toString(), "10^(-600001)*2.5");
    const HugeFloat x = HugeFloat::fromText_("0." + zeros.substr(0, 230000) + "3");
    EXPECT_EQ(x.limbCount(), 11940u);
    EXPECT_EQ(x.exponent(), -764046); // floor(log2(3) - 230001 * log2(10))
}

TEST(FloatText, ReadsBackToTheSameValue)
{
    Stream stream(20261123);
    for (int i = 0; i < 400; ++i) {
        const size_t n = 1 + stream.next() % (i % 10 == 0 ? 40 : 4);
        const int64_t range = 64 * int64_t(n) + 32;
        const HugeFloat x =
            floatFrom(stream, n, int64_t(stream.next() % uint64_t(2 * range + 1)) - range);
        const HugeFloat back = HugeFloat::fromText_(x.toString(), n);
        EXPECT_EQ(back, x) << x.toString();
        EXPECT_EQ(HugeFloat::fromText_(x.fmt(radix(2)), n), x);
        EXPECT_EQ(HugeFloat::fromText_(x.fmt(radix(16)), n), x);
    }
}

TEST(FloatText, RefusesWhatCannotBeShownOrRead)
{
    const HugeFloat huge = HugeFloat(1).shiftExponent(std::numeric_limits<int32_t>::min() + 1);
    for (const XFormatRule& rule : {places(2), places(0), radix(16, 2)})
        EXPECT_EQ(failureOf([&] { huge.fmt(rule); }), limitText);
    const HugeFloat tiny = HugeFloat(1).shiftExponent(std::numeric_limits<int32_t>::max());
    EXPECT_EQ(failureOf([&] { tiny.fmt(radix(16, 0)); }), limitText);
    for (const char* text : {"1.5..20800", "1.5..99999999999999999999", "0x1..5160"})
        EXPECT_EQ(failureOf([&] { HugeFloat::fromText_(text); }), limitText) << text;
    for (const char* text : {"1e646456994", "1e999999999", "1.5e99999999999999999999"})
        EXPECT_EQ(failureOf([&] { HugeFloat::fromText_(text); }),
                  "HugeFloat exponent is out of range")
            << text;
}
