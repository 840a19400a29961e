#include "values/HugeVarData.h"
#include "valueTesting.h"
#include "values/HugeVarModeler.h"
#include "values/HugeVariant.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace huge {
namespace {

using Bytes = std::vector<uint8_t>;

const HugeVariant some(Bytes{0x0a, 0x1b, 0x2c, 0x3d});

TEST(Data, GivesItsParts)
{
    const struct {
        const char* name;
        std::vector<HugeVariant> args;
        const char* result;
    } rows[] = {
        {"size", {}, "HugeInteger: 4"},
        {"mid", {}, "data: 0x0a1b2c3d"},
        {"mid", {1}, "data: 0x1b2c3d"},
        {"mid", {4}, "null"},
        {"mid", {-3}, "data: 0x0a1b2c3d"},
        {"mid", {1, 2}, "data: 0x1b2c"},
        {"mid", {1, 0}, "null"},
        {"mid", {1, -1}, "null"},
        {"mid", {2, 9}, "data: 0x2c3d"},
        {"mid", {9, 1}, "null"},
        {"mid", {-1, 2}, "data: 0x0a1b"},
        {"mid", {INT64_MAX, INT64_MAX}, "null"},
        {"subdata", {3}, "data: 0x3d"},
        {"left", {}, "data: 0x0a1b2c3d"},
        {"left", {3}, "data: 0x0a1b2c"},
        {"left", {9}, "data: 0x0a1b2c3d"},
        {"left", {-1}, "null"},
        {"right", {1}, "data: 0x3d"},
        {"right", {9}, "data: 0x0a1b2c3d"},
        {"right", {-1}, "null"},
        {"reverse", {}, "data: 0x3d2c1b0a"},
        {"hex", {}, "string: 0x0a1b2c3d"},
        {"hex", {2}, "string: 0x0a1b"},
        {"data", {}, "data: 0x0a1b2c3d"},
        {"nothing", {}, "failure: data is not suport nothing()"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(memberOf(some, row.name, row.args), row.result) << row.name;
    HugeVariant args[] = {2, 4};
    EXPECT_EQ(some.exec(args, 0).toString(), "0x0a1b2c3d");
    EXPECT_EQ(some.exec(args, 1).toString(), "0x2c3d");
    EXPECT_EQ(some.exec(args, 2).toString(), "0x2c3d");
}

TEST(Data, JoinsAndComparesWithBytesOfEveryKind)
{
    const HugeVariant one(Bytes{1});
    EXPECT_EQ((one + some).toString(), "0x010a1b2c3d");
    EXPECT_EQ((one + HugeVariant(true)).toString(), "0x0101");
    EXPECT_EQ(shown([&] { return HugeVariant(true) + one; }),
              "failure: boolean is not suport add(+)");
    EXPECT_EQ((one + HugeVariant("a")).toString(), "0x01a"); // the text does the work
    EXPECT_TRUE(one == HugeVariant(true));
    EXPECT_TRUE(some == HugeVariant(Bytes{0x0a, 0x1b, 0x2c, 0x3d}));
    EXPECT_TRUE(one < some);
    EXPECT_TRUE(HugeVariant(Bytes{1, 0}) > one);
    EXPECT_TRUE(HugeVariant(Bytes{0x80}) >= one);
    EXPECT_TRUE(one <= one);
    EXPECT_EQ(shown([&] { return some - one; }), "failure: data is not suport sub(-)");
    EXPECT_EQ(shown([&] { return -some; }), "failure: data is not suport neg");
    EXPECT_EQ(HugeVariant(Bytes{}).typeName(), "null");
    EXPECT_EQ((HugeVariant(Bytes{}) + HugeVariant(5)).toString(), "5");
    EXPECT_EQ(shown([] { return some.asType(varBool); }), "boolean: true");
    EXPECT_EQ(shown([] { return some.asType(varString); }), "string: 0x0a1b2c3d");
    EXPECT_TRUE(some.asType(varInt).isNull());
    EXPECT_EQ(some.typeId(), 1);
}

TEST(Data, RefusesToGrowForEver)
{
    HugeVariant bytes(Bytes(HugeVarData::maxBytes / 2 + 1));
    EXPECT_EQ(shown([&] { return bytes + bytes; }), "failure: The data is too long");
}

TEST(Data, HasFormsInOtherRadixes)
{
    XFormatRule rule;
    const HugeVariant two(Bytes{0x41, 0x42});
    EXPECT_EQ(two.fmt(rule), "0x4142");
    EXPECT_EQ(two.bin(rule), "0b0100000101000010");
    EXPECT_EQ(two.oct(rule), "0c41101");
    EXPECT_EQ(HugeVariant(Bytes{}).fmt(rule), "");
    rule.breakchar = '_';
    EXPECT_EQ(two.bin(rule), "0b01000001_01000010");
    rule.breakchar = 0;
    const HugeVariant hello = HugeVariant("Hello World!").data();
    rule.radix = 58;
    EXPECT_EQ(hello.fmt(rule), "2NEpo7TZRRrLZSi2U");
    rule.radix = 64;
    EXPECT_EQ(hello.fmt(rule), "SGVsbG8gV29ybGQh");
}

TEST(Modulus, IsSharedByItsCopiesAndHasFewOperations)
{
    const auto modulus = std::make_shared<HugeInteger>(258);
    const HugeVariant value = HugeVariant::make<HugeVarModeler>(modulus);
    const HugeVariant copy = value;
    EXPECT_EQ(modulus.use_count(), 3);
    EXPECT_EQ(copy.typeId(), 11);
    EXPECT_EQ(copy.asInt64(), 258);
    EXPECT_EQ(copy.asDouble(), 258.0);
    EXPECT_EQ(copy.data(), (Bytes{2, 1, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(shown([&] { return copy.asType(varBool); }), "boolean: true");
    EXPECT_EQ(shown([&] { return copy.asType(varInt); }), "HugeInteger: 258");
    EXPECT_EQ(shown([&] { return copy.asType(varFloat); }), "HugeFloat: 258");
    EXPECT_TRUE(copy.asType(varString).isNull());
    const xstd::XString name = typeid(modulus).name();
    EXPECT_EQ(shown([&] { return copy.toString(); }),
              "failure: " + name + " is not suport toString()");
    EXPECT_EQ(HugeVariant::make<HugeVarModeler>(nullptr).typeId(), 0);
}

} // namespace
} // namespace huge
