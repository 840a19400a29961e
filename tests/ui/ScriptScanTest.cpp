#include "XScriptScan.h"

#include <gtest/gtest.h>

namespace {

/// One letter for each character: k keyword, r reference, i identifier, m member, n number, a
/// assignment, o operator, b bracket, s string, c comment or blank, e error.
std::string picture(const QString& text)
{
    const char letters[] = "?krRim?nna?obsBec";
    std::string shown(static_cast<size_t>(text.size()), ' ');
    const XScriptScan scan(text); // spans() belongs to it
    for (const XScriptScan::Span& span : scan.spans()) {
        for (int i = 0; i < span.length; ++i)
            shown[static_cast<size_t>(span.begin + i)] = letters[static_cast<int>(span.style)];
    }
    return shown;
}

TEST(ScriptScan, GivesEveryTokenItsStyle)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},
        {"if (A1 > 2) b", "kkcbrrcocnbci"},
        {"x += $A$1:C3", "icaacrrrrrrr"},
        {"a1.size", "iiommmm"},
        {"\"一二\"+B2", "ssssorr"},
        {"/*两*/1.5", "cccccnnn"},
        {"[x]{x}", "bibbib"},
        {"1 ` 2", "nceee"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(picture(QString::fromUtf8(text)), expected) << text;
}

TEST(ScriptScan, PairsBrackets)
{
    const auto brackets = [](const char* text) { return XScriptScan(text).brackets(); };
    using Pairs = std::vector<XBracketPair>;
    EXPECT_EQ(brackets("sum(A1:B2"), (Pairs{{3, -1, '(', false, "sum"}}));
    EXPECT_EQ(brackets("sum(max("), (Pairs{{7, -1, '(', false, "max"}, {3, -1, '(', false, "sum"}}));
    EXPECT_EQ(brackets(")"), (Pairs{{-1, 0, '(', false, ""}}));
    EXPECT_EQ(brackets("(]"), (Pairs{{0, 1, '[', false, ""}, {0, -1, '(', false, ""}}));
    EXPECT_EQ(brackets("a.f(x[1])"), (Pairs{{5, 7, '[', true, "x"}, {3, 8, '(', true, ".f"}}));
}

TEST(ScriptScan, FindsReferencesBehindTextOfAnyScript)
{
    const XScriptScan scan("\"中文😀\" + A1:B2 * r1");
    ASSERT_EQ(scan.references().size(), 1u);
    const huge::XCellRangeRef& found = scan.references()[0];
    EXPECT_EQ(found.rect(), xstd::XRect(0, 0, 1, 1));
    EXPECT_EQ(found.textPos, 15); // bytes: a quote, 2 of 3, 1 of 4, a quote, " + "
    EXPECT_EQ(found.textLen, 5);
    EXPECT_EQ(scan.placeOf(found.textPos), 9);
    EXPECT_EQ(scan.byteOf(9), 15);
}

} // namespace
