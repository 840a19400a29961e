#include "values/HugeVarString.h"
#include "values/HugeVariant.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace huge {
namespace {

struct MemberCase {
    const char* text;
    const char* name;
    std::vector<HugeVariant> args;
    const char* result;
};
class TextMembers : public ::testing::TestWithParam<MemberCase> {};

TEST_P(TextMembers, Give)
{
    MemberCase row = GetParam();
    xstd::XString result;
    try {
        result = HugeVariant(row.text)
                     .member(row.name, row.args.data(), int(row.args.size()))
                     .toString();
    } catch (const std::exception& failure) {
        result = xstd::XString("failure: ") + failure.what();
    }
    EXPECT_EQ(result, row.result) << row.text << "." << row.name;
}

INSTANTIATE_TEST_SUITE_P(Parts, TextMembers,
                         ::testing::ValuesIn(std::vector<MemberCase>{
                             {"hello", "substr", {}, "hello"},
                             {"hello", "substr", {2}, "llo"},
                             {"hello", "substr", {1, 3}, "ell"},
                             {"hello", "substr", {5}, ""},
                             {"hello", "substr", {6}, "failure: invalid string position"},
                             {"hello", "substr", {-1}, "failure: invalid string position"},
                             {"hello", "left", {2}, "he"},
                             {"hello", "left", {9}, "hello"},
                             {"hello", "left", {-1}, ""},
                             {"hello", "left", {}, "hello"},
                             {"hello", "right", {2, 7}, "lo"},
                             {"hello", "right", {-3}, ""},
                             {"hello", "find", {}, "0"},
                             {"hello", "find", {"l"}, "2"},
                             {"hello", "find", {"x"}, "-1"},
                             {"a5b", "find", {5}, "1"},
                             {"hello", "rfind", {"l"}, "-1"},
                             {"hello", "rfind", {"he"}, "0"},
                             {"hello", "reverse", {}, "olleh"}}));

INSTANTIATE_TEST_SUITE_P(
    Pads, TextMembers,
    ::testing::ValuesIn(std::vector<MemberCase>{
        {"abcdef", "padRight", {3}, "abc"},
        {"abcdef", "padLeft", {3}, "abc"},
        {"abcdef", "padCenter", {3}, "abc"},
        {"ab", "padRight", {5}, "ab   "},
        {"ab", "padLeft", {5, "xy"}, "xxxab"},
        {"ab", "padCenter", {5, "-"}, "-ab--"},
        {"ab", "padCenter", {}, "ab"},
        {"ab", "padLeft", {5, "-", 1}, "failure: string is not suport padLeft()"},
        {"ab", "padLeft", {int64_t(1) << 40}, "failure: The text is too long"},
        {"ab", "nothing", {}, "failure: string is not suport nothing()"}}));

TEST(TextOperators, JoinRepeatCutAndMakePaths)
{
    EXPECT_EQ((HugeVariant("ab") * HugeVariant(2)).toString(), "abab");
    EXPECT_EQ((HugeVariant(2) * HugeVariant("ab")).toString(), "abab");
    EXPECT_EQ((HugeVariant("ab") * HugeVariant(true)).toString(), "ab");
    EXPECT_EQ((HugeVariant("ab") * HugeVariant(0)).toString(), "");
    EXPECT_EQ((HugeVariant("ab") * HugeVariant(-2)).toString(), "");
    EXPECT_EQ((HugeVariant("ab") * HugeVariant("c")).toString(), "");
    EXPECT_EQ((HugeVariant("file.txt") - HugeVariant(".txt")).toString(), "file");
    EXPECT_EQ((HugeVariant("file") - HugeVariant("x")).toString(), "file");
    EXPECT_EQ((HugeVariant("a") / HugeVariant("b")).toString(), "a/b");
    EXPECT_EQ((HugeVariant("a/") / HugeVariant("b")).toString(), "a/b");
    EXPECT_EQ((HugeVariant(5) + HugeVariant("a")).toString(), "5a");
    EXPECT_TRUE(HugeVariant("abc") < HugeVariant("abd"));
    EXPECT_TRUE(HugeVariant("\xc3\xa4") > HugeVariant("z"));
    EXPECT_TRUE(HugeVariant("5") == HugeVariant(5));
    EXPECT_TRUE(HugeVariant("a") >= HugeVariant("a"));
}

TEST(TextOperators, RefuseAnAbsurdRepetition)
{
    for (const int64_t count : {int64_t(1) << 28, int64_t(1) << 62}) {
        try {
            HugeVariant("ab") * HugeVariant(count);
            ADD_FAILURE();
        } catch (const std::runtime_error& failure) {
            EXPECT_STREQ(failure.what(), "The text is too long");
        }
    }
}

TEST(TextOperators, RefuseToGrowForEver)
{
    HugeVariant text = HugeVariant("x") * HugeVariant(int64_t(1) << 20);
    EXPECT_THROW(
        {
            for (int i = 0; i < 20; ++i)
                text += text;
        },
        std::runtime_error);
    EXPECT_EQ(text.asStr().size(), HugeVarString::maxBytes);
}

TEST(TextNumbers, AreReadByPrefix)
{
    const struct {
        const char* text;
        int64_t integer;
        double real;
    } rows[] = {{"0x1F", 31, 31.0},    {"1'000", 1000, 1000.0},
                {"0b101", 5, 5.0},     {"0X 1 F", 31, 31.0},
                {" -12x", -12, -12.0}, {"abc", 0, 0.0},
                {"2.5", 2, 2.5},       {"0x1.8", 1, 1.5},
                {"0b10.01", 2, 2.25},  {"0xFF.FF", 255, 255 + 255.0 / 256}};
    for (const auto& row : rows) {
        EXPECT_DOUBLE_EQ(HugeVariant(row.text).asDouble(), row.real) << row.text;
        if (std::string(row.text).find('.') == std::string::npos) {
            EXPECT_EQ(HugeVariant(row.text).asInt64(), row.integer) << row.text;
        }
    }
}

TEST(TextForms, InOtherRadixes)
{
    XFormatRule rule;
    const HugeVariant text("AB");
    EXPECT_EQ(text.hex(0), "0x4142");
    EXPECT_EQ(text.hex(1), "0x42");
    EXPECT_EQ(HugeVariant("0x1F").hex(1), "0x1F");
    EXPECT_EQ(text.fmt(rule), "AB");
    EXPECT_EQ(text.bin(rule), "0100000101000010");
    EXPECT_EQ(text.oct(rule), "41101"); // 0x4241 in octal
    EXPECT_EQ(text.hexFmt(rule), "4142");
    rule.radix = 58;
    EXPECT_EQ(HugeVariant("Hello World!").fmt(rule), "2NEpo7TZRRrLZSi2U");
    rule.radix = 64;
    rule.breakchar = ' ';
    EXPECT_EQ(HugeVariant("Hello World!").fmt(rule), "SGVs bG8g V29y bGQh");
}

TEST(TextConversions, AreThoseOfTheContent)
{
    EXPECT_TRUE(HugeVariant("x").asType(1).asBool());
    EXPECT_EQ(HugeVariant("12abc").asType(2).toString(), "12");
    EXPECT_EQ(HugeVariant("-1.5").asType(varFloat).toString(), "-1.5");
    EXPECT_EQ(HugeVariant("2.5").asType(varImag).toString(), "2.5");
    EXPECT_EQ(HugeVariant("12").asType(varMod).typeName(), "HugeMod");
    EXPECT_TRUE(HugeVariant("x").asType(8).isNull());
    EXPECT_EQ(HugeVariant("hi").data(), (std::vector<uint8_t>{'h', 'i'}));
}

} // namespace
} // namespace huge
