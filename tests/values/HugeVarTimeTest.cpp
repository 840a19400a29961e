#include "values/HugeVarTime.h"
#include "valueTesting.h"
#include "values/HugeVariant.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <limits>

namespace huge {
namespace {

/// Local time is that of a zone without a rule of its own while a test runs.
class Times : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        setenv("TZ", "CST-8", 1); // eight hours east of Greenwich
        tzset();
    }
    static void TearDownTestSuite()
    {
        unsetenv("TZ");
        tzset();
    }
};

HugeVariant timeOf(int64_t ticks)
{
    return xstd::XTime{ticks};
}

// 2026-01-05 01:03:07 UTC, a Monday, and 345.012 milliseconds
const int64_t monday = 1767574987LL * 10'000'000 + 3'450'120;

TEST_F(Times, TellTheirFields)
{
    const struct {
        const char* name;
        const char* result;
    } rows[] = {
        {"year", "HugeInteger: 126"},
        {"month", "HugeInteger: 0"},
        {"day", "HugeInteger: 5"},
        {"week", "HugeInteger: 1"},
        {"hour", "HugeInteger: 9"},
        {"minute", "HugeInteger: 3"},
        {"second", "HugeInteger: 7"},
        {"millisecond", "HugeInteger: 345"},
        {"microsecond", "HugeInteger: 12"},
        {"microseconds", "HugeInteger: 1767574987345012"},
        {"data", "data: 0x887c583800cc3e00"},
        {"nothing", "failure: time is not suport nothing()"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(memberOf(timeOf(monday), row.name), row.result) << row.name;
}

TEST_F(Times, ReadAsDateAndTime)
{
    EXPECT_EQ(timeOf(monday).toString(), "2026-1-5 9:3:7.12");
    EXPECT_EQ(timeOf(0).toString(), "1970-1-1 8:0:0.0");
    // Before 1970 the parts of a second count forward too.
    EXPECT_EQ(timeOf(-15'000'000).toString(), "1970-1-1 7:59:58.0");
    EXPECT_EQ(memberOf(timeOf(-15'000'000), "millisecond"), "HugeInteger: 500");
    EXPECT_EQ(timeOf(std::numeric_limits<int64_t>::min()).toString().left(7), "-27258-");
}

TEST_F(Times, HaveTheBytesOfTheirTicksInOtherRadixes)
{
    XFormatRule rule;
    const HugeVariant time = timeOf(0x4241);
    EXPECT_EQ(time.fmt(rule), time.toString());
    EXPECT_EQ(time.hexFmt(rule), "4142000000000000");
    EXPECT_EQ(time.oct(rule), "41101");
    EXPECT_EQ(time.bin(rule).left(16), "0100000101000010");
    rule.radix = 64;
    EXPECT_EQ(time.fmt(rule), "QUIAAAAAAAA=");
    EXPECT_EQ(time.data(), (std::vector<uint8_t>{0x41, 0x42, 0, 0, 0, 0, 0, 0}));
}

TEST_F(Times, CompareWithTimesAlone)
{
    EXPECT_TRUE(timeOf(1) < timeOf(2));
    EXPECT_TRUE(timeOf(2) >= timeOf(2));
    EXPECT_TRUE(timeOf(3) > timeOf(2));
    EXPECT_TRUE(timeOf(3) <= timeOf(3));
    EXPECT_TRUE(timeOf(3) == timeOf(3));
    for (const HugeVariant& other : {HugeVariant(5), HugeVariant(1.5), HugeVariant(true)}) {
        EXPECT_EQ(shown([&] { return timeOf(1) == other; }), "failure: null is not time");
        EXPECT_EQ(shown([&] { return other < timeOf(1); }), "failure: null is not time");
    }
    EXPECT_EQ(shown([] { return timeOf(1) > HugeVariant(); }), "failure: null is not time");
    EXPECT_EQ(shown([] { return timeOf(1) + HugeVariant(1); }),
              "failure: time is not suport add(+)");
}

TEST_F(Times, ConvertToWholeSeconds)
{
    EXPECT_EQ(timeOf(monday).asInt64(), 1767574987);
    EXPECT_EQ(timeOf(-15'000'000).asInt64(), -1);
    EXPECT_EQ(timeOf(monday).asDouble(), 1767574987.0);
    EXPECT_EQ(shown([] { return timeOf(monday).asType(varInt); }), "HugeInteger: 1767574987");
    EXPECT_EQ(shown([] { return timeOf(monday).asType(varString); }), "HugeInteger: 0");
    EXPECT_TRUE(timeOf(9'999'999).isZero());
    EXPECT_EQ(timeOf(monday).toTime(), xstd::XTime{monday});
    EXPECT_EQ(HugeVariant(5).toTime(), xstd::XTime{});
    EXPECT_EQ(HugeVarTime::fromSeconds(-7).asTime(), xstd::XTime{-70'000'000});
    EXPECT_EQ(shown([] { return HugeVarTime::fromSeconds(int64_t(1) << 40); }),
              "failure: time is out of range");
}

} // namespace
} // namespace huge
