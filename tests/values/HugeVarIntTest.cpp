#include "values/HugeVarInt.h"
#include "values/HugeVariant.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace huge {
namespace {

HugeVariant number(const char* text)
{
    return HugeInteger().fromText_(text);
}

xstd::XString memberOf(const HugeVariant& value, const char* name, std::vector<HugeVariant> args)
{
    try {
        const HugeVariant result = value.member(name, args.data(), int(args.size()));
        return result.typeName() + ":" + result.toString();
    } catch (const std::runtime_error& failure) {
        return xstd::XString("failure:") + failure.what();
    }
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

TEST(Integers, FailRatherThanLeaveTheWholeNumbers)
{
    const struct {
        const char* text;
        HugeVariant (*call)();
    } rows[] = {
        {"div with zero", [] { return HugeVariant(1) / HugeVariant(0); }},
        {"div with zero", [] { return HugeVariant(1) % HugeVariant(); }},
        {"complex numbers are not available", [] { return pow(HugeVariant(-8), HugeVariant(2)); }},
        {"floats are not available", [] { return pow(HugeVariant(2), HugeVariant(-1)); }},
        {"floats are not available", [] { return HugeVariant(1).sin(); }},
        {"floats are not available", [] { return HugeVariant(0).exp(); }},
        {"floats are not available", [] { return HugeVariant(5).asType(3); }},
        {"complex numbers are not available", [] { return HugeVariant(5).asType(4); }},
        {"residues are not available", [] { return HugeVariant(5).asType(5); }},
        {"Zero can't be log", [] { return HugeVariant(0).ln(); }},
        {"complex numbers are not available", [] { return HugeVariant(-2).ln(); }},
        {"complex numbers are not available", [] { return HugeVariant(2).log(HugeVariant(-2)); }},
        {"The definition domain of inverse hyperbolic cosine function is [1, infinite)",
         [] { return HugeVariant(0).acosh(); }},
        {"The definition domain of inverse hyperbolic tangent function is (- 1,1)",
         [] { return HugeVariant(1).atanh(); }},
    };
    for (const auto& row : rows) {
        try {
            row.call();
            ADD_FAILURE() << row.text;
        } catch (const std::runtime_error& failure) {
            EXPECT_STREQ(failure.what(), row.text);
        }
    }
}

TEST(Integers, HaveFunctionsOfZero)
{
    const HugeVariant zero(0);
    EXPECT_EQ(zero.sin().toString() + zero.tan().toString() + zero.atan().toString(), "000");
    EXPECT_EQ(zero.cos().toString(), "1");
}

TEST(Integers, HaveMembers)
{
    EXPECT_EQ(memberOf(-5, "abs", {}), "HugeInteger:5");
    EXPECT_EQ(memberOf(17, "sqrt", {}), "HugeInteger:4");
    EXPECT_EQ(memberOf(-3, "sqrt", {}), "failure:complex numbers are not available");
    EXPECT_EQ(memberOf(49, "isSquare", {}), "boolean:true");
    EXPECT_EQ(memberOf(50, "isSquare", {}), "boolean:false");
    EXPECT_EQ(memberOf(-3, "isSquare", {}), "failure:Negative numbers cannot be squared");
    EXPECT_EQ(memberOf(5, "size", {}), "HugeInteger:1");
    EXPECT_EQ(memberOf(number("18446744073709551616"), "prec", {}), "HugeInteger:2");
    EXPECT_EQ(memberOf(0, "inv", {}), "failure:div by zero");
    EXPECT_EQ(memberOf(4, "inv", {}), "failure:floats are not available");
    EXPECT_EQ(memberOf(4, "typeName", {}), "string:HugeInteger");
    EXPECT_EQ(memberOf(0, "cos", {}), "HugeInteger:1");
    EXPECT_EQ(memberOf(-703710, "hex", {}), "string:0xABCDE");
    EXPECT_EQ(memberOf(703710, "hex", {2}), "string:0xBCDE");
    EXPECT_EQ(memberOf(0, "hex", {}), "string:0x0");
    EXPECT_EQ(memberOf(4, "foo", {}), "failure:HugeInteger is not suport foo()");
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
