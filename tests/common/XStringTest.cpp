#include "common/XString.h"

#include "common/XCharSet.h"

#include <gtest/gtest.h>

using xstd::XCharSet;
using xstd::XString;

TEST(XStringTrim, TakesEveryByteUpTo32AndNoneOfAMultiByteCharacter)
{
    EXPECT_EQ(XString(" \t\r\n\x01 a b \n").trim_(), "a b");
    EXPECT_EQ(XString("  a ").trimLeft_(), "a ");
    EXPECT_EQ(XString("  a ").trimRight_(), "  a");
    EXPECT_EQ(XString(" \n\t ").trim_(), "");
    EXPECT_EQ(XString(" \xE6\x95\xB0 ").trim_(), "\xE6\x95\xB0");
    EXPECT_EQ(XString(" -a- ").trim_(XCharSet("-")), "a");
    EXPECT_EQ(XString("- -a- ").trimLeft_(XCharSet("-")), "a- ");
    EXPECT_EQ(XString(" -a - ").trimRight_(XCharSet("-")), " -a");
}

TEST(XStringChange, WorksOnAsciiAndSets)
{
    EXPECT_EQ(XString("aZ\xC3\xA4{").upper_(), "AZ\xC3\xA4{");
    EXPECT_EQ(XString("aZ@[\xC3\x84").lower_(), "az@[\xC3\x84");
    const XString text = "a1,b2";
    EXPECT_EQ(text.kept("12"), "12");
    EXPECT_EQ(text.kept(XCharSet("ab")), "ab");
    EXPECT_EQ(text.removed(","), "a1b2");
    EXPECT_EQ(text.removed(XCharSet("ab")), "1,2");
    EXPECT_EQ(XString(" a\tb\n").removeBlanks_(), "ab");
    EXPECT_EQ(XString("file.tavix").removeSuffix_(".tavix"), "file");
    EXPECT_EQ(XString("x").removeSuffix_("file.x"), "x");
    EXPECT_EQ(XString("a").appendPath_("b"), "a/b");
    EXPECT_EQ(XString("a/").appendPath_("b"), "a/b");
    EXPECT_EQ(XString("a\\").appendPath_("b"), "a\\b");
}

TEST(XStringParts, ClipAtBothEnds)
{
    const XString text = "abcde";
    EXPECT_EQ(text.left(2), "ab");
    EXPECT_EQ(text.left(9), text);
    EXPECT_EQ(text.right(2), "de");
    EXPECT_EQ(text.right(9), text);
    EXPECT_EQ(text.leadingIn(XCharSet("ba")), "ab");
    EXPECT_EQ(text.leadingIn(XCharSet("b")), "");
    EXPECT_EQ(text.trailingIn(XCharSet("ecd")), "cde");
    EXPECT_EQ(text.findFirstIn(XCharSet("db"), 2), 3);
    EXPECT_EQ(text.findFirstIn(XCharSet("x")), -1);
    EXPECT_EQ(text.findLastIn(XCharSet("ae")), 4);
    EXPECT_EQ(text.findLastIn(XCharSet("ae"), 3), 0);
}

struct BetweenCase {
    const char* text;
    const char* open;
    const char* close;
    const char* inner;
};

TEST(XStringBetween, RunsFromTheFirstOpenToTheLastClose)
{
    const BetweenCase cases[] = {
        {"f(a(b)c)d", "(", ")", "a(b)c"}, {"abc", "", "c", "ab"}, {"abc", "a", "", "bc"},
        {"abc", "x", "y", "abc"},         {"()", "(", ")", ""},   {")(", "(", ")", ""}};
    for (const BetweenCase& row : cases)
        EXPECT_EQ(XString(row.text).between(row.open, row.close), row.inner) << row.text;
}

TEST(XStringAlign, PadsShortTextsAndOnlyCenterCuts)
{
    const XString text = "abc";
    EXPECT_EQ(text.alignLeft(5, '.'), "abc..");
    EXPECT_EQ(text.alignRight(5, '.'), "..abc");
    EXPECT_EQ(text.center(5, '.'), ".abc.");
    EXPECT_EQ(text.alignLeft(2, '.'), "abc");
    EXPECT_EQ(text.alignRight(2, '.'), "abc");
    EXPECT_EQ(text.center(2, '.'), "ab");
}

TEST(XStringAsks, WhetherATextIsANumber)
{
    EXPECT_TRUE(XString("-12").isIntegerText(true));
    EXPECT_FALSE(XString("-12").isIntegerText(false));
    EXPECT_FALSE(XString("-").isIntegerText(true));
    EXPECT_FALSE(XString("1 2").isIntegerText(true));
    for (const char* number : {"12", "-1.5", "1.5e3", "1E-3", "+2e+10"})
        EXPECT_TRUE(XString(number).isFloatText()) << number;
    for (const char* other : {"", "1.5.2", "1e", "1.-5", "e5", "1e5.5"})
        EXPECT_FALSE(XString(other).isFloatText()) << other;
    EXPECT_TRUE(XString("0xAb9").isHexText());
    EXPECT_FALSE(XString("Ab9").isHexText());
    EXPECT_FALSE(XString("0xA.b").isHexText());
}

TEST(XStringSplit, KeepsEmptyPieces)
{
    EXPECT_EQ(XString("a,,b,").split(','), (std::vector<XString>{"a", "", "b", ""}));
    EXPECT_EQ(XString("a--b-c").split("--"), (std::vector<XString>{"a", "b-c"}));
    EXPECT_EQ(XString("").split(','), (std::vector<XString>{""}));
}

TEST(XStringFormat, GrowsPastItsFirstBuffer)
{
    EXPECT_EQ(xstd::format("%d-%s-%02X", 7, "x", 10), "7-x-0A");
    for (const size_t length : {4094, 4095, 4096, 4097, 100000}) {
        const XString text(length, 'x');
        EXPECT_EQ(xstd::format("%s", text.c_str()), text) << length;
    }
}

TEST(XCharSetText, WritesRunsOfThreeAsRanges)
{
    EXPECT_EQ(XCharSet("cab").toString(), "[a-c]");
    EXPECT_EQ(XCharSet("ba9").toString(), "[9ab]");
    EXPECT_EQ(XCharSet("\n\"0").toString(), "[\\n\\\"0]");
    EXPECT_EQ(XCharSet("").toString(), "[]");
    EXPECT_EQ(XCharSet("abcabc").count(), 3);
    EXPECT_TRUE(XCharSet("\xFF").has('\xFF'));
}
