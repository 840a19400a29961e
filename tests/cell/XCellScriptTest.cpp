#include "cell/XCellScript.h"
#include "cell/ScriptSet.h"
#include "cell/XCellRange.h"
#include "script/XScriptProgram.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace huge {

namespace {

struct TokenCase {
    const char* source;
    std::vector<std::string> tokens;
};

TEST(ReferenceTokens, AReferenceIsOneTokenAndAnythingElseStaysWhatItIs)
{
    const std::vector<TokenCase> cases = {{"A1+$B$2:C$4", {"A1", "+", "$B$2:C$4"}},
                                          {"a1 A01 A0 A1x", {"a1", "A01", "A0", "A1x"}},
                                          {"A1:B", {"A1", ":", "B"}},
                                          {"A1:b2", {"A1", ":", "b2"}},
                                          {"A1:", {"A1", ":"}},
                                          {"A1: B2", {"A1", ":", "B2"}},
                                          {"x:A1", {"x", ":", "A1"}},
                                          {"A1:B2:C3", {"A1:B2", ":", "C3"}},
                                          {"AVLG1048576 AVLH1", {"AVLG1048576", "AVLH1"}},
                                          {"r:5", {"r:5"}},
                                          {"r:x", {"r", ":", "x"}},
                                          {"r:", {"r", ":"}},
                                          {"c: 1'000 n:/**/7", {"c:1000", "n:7"}},
                                          {"r:r:r:5", {"r", ":", "r", ":", "r:5"}},
                                          {"r:2i", {"r", ":", "2i"}},
                                          {"R:5", {"R", ":", "5"}},
                                          {"r (1)", {"r", "(", "1", ")"}}};
    for (const TokenCase& c : cases) {
        XCellDecoder decoder{xstd::XString(c.source)};
        std::vector<std::string> read;
        for (xstd::XToken token = decoder.next(); token.type != xstd::tokenNull;
             token = decoder.next())
            read.push_back(token.text);
        EXPECT_EQ(read, c.tokens) << c.source;
    }
}

TEST(ReferenceTokens, CoverTheirWholeSource)
{
    XCellDecoder decoder{xstd::XString(" r:  5+A1:B2")};
    const xstd::XToken row = decoder.next();
    EXPECT_EQ(row.cursor.pos, 1);
    EXPECT_EQ(row.size, 5);
    decoder.next();
    EXPECT_EQ(decoder.next().size, 5);

    // A token that its 16-bit length cannot tell is no reference.
    XCellDecoder far{xstd::XString("r:" + std::string(70000, ' ') + "5")};
    EXPECT_EQ(far.next().text, "r");
    EXPECT_EQ(far.next().text, ":");
    EXPECT_EQ(far.next().text, "5");
}

/// The extend operand of 29 bytes behind its tag and length.
std::vector<uint8_t> onlyOperand(const std::vector<uint8_t>& image)
{
    const uint8_t lead[] = {0x08, 29, 0};
    const auto found = std::search(image.begin(), image.end(), std::begin(lead), std::end(lead));
    if (found == image.end() || image.end() - found < 32)
        return {};
    return {found + 3, found + 32};
}

TEST(ReferenceOperands, HoldIdPlaceAndBothEndsRelativeToTheBase)
{
    XCellScript relative(" A1", 1, 1);
    relative.compile();
    EXPECT_EQ(onlyOperand(relative.prog()),
              (std::vector<uint8_t>{5, 0,    0,    0,    0,    1,    0,    0,    0,    2,
                                    0, 0,    0,    0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0,
                                    1, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0,    1}));
    XCellScript mixed("$B$2:D300", 9, 2);
    mixed.compile();
    EXPECT_EQ(onlyOperand(mixed.prog()),
              (std::vector<uint8_t>{5, 0, 0, 0, 0,    0, 0,    0,    0, 9, 0, 0, 0, 1, 0,
                                    0, 0, 1, 0, 0x11, 1, 0x22, 0x01, 0, 0, 1, 0, 0, 1}));
    XCellScript number("c:5", 7, 2);
    number.compile();
    EXPECT_EQ(onlyOperand(number.prog()),
              (std::vector<uint8_t>{3, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0, 0, 0, 3, 0,
                                    0, 0, 0, 0, 0, 4, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(ReferenceOperands, ReadBackAsTheirTextAtTheBase)
{
    XCellScript script("A1 + $C$3:D9", 4, 4);
    script.compile();
    std::vector<uint8_t> scratch;
    XCellBuilder builder(&scratch, 4, 4, &script.ranges);
    od_extend name;
    builder.decodeExtend(name, XScriptExtendData(std::vector<uint8_t>{5, 1, 0, 0, 0}));
    EXPECT_EQ(name.name, "$C$3:D9");
    EXPECT_EQ(name.format, 5);
    EXPECT_EQ(name.textPos, 5);
    EXPECT_EQ(name.textLen, 7);
    builder.decodeExtend(name, XScriptExtendData::fromName("total"));
    EXPECT_EQ(name.name, "total");
    EXPECT_THROW(builder.decodeExtend(name, XScriptExtendData(std::vector<uint8_t>{5, 9, 0, 0, 0})),
                 xstd::XExceptionItems);
}

std::vector<uint8_t> imageOf(const char* text, int32_t row, int32_t col)
{
    XCellScript script(text, row, col);
    script.compile();
    return script.prog();
}

TEST(CellScript, TheImageTellsTextsApartByTheirRelativeFormAndPlace)
{
    EXPECT_EQ(imageOf("A1+1", 0, 1), imageOf("B1+1", 0, 2));
    EXPECT_EQ(imageOf("A1+1", 0, 1), imageOf("A1+1 // one", 0, 1));
    EXPECT_NE(imageOf("A1+1", 0, 1), imageOf("A1+1", 0, 2));
    EXPECT_NE(imageOf("A1+1", 0, 1), imageOf(" A1+1", 0, 1));
    EXPECT_NE(imageOf("$A1+1", 0, 1), imageOf("$B1+1", 0, 2));
    EXPECT_NE(imageOf("A1", 0, 1), imageOf("A1:A1", 0, 1));
    EXPECT_EQ(imageOf("A1:C4", 0, 0).size(), imageOf("C4:A1", 0, 0).size());
}

TEST(CellScript, KeepsItsReferencesInOrderAndForgetsThemWithItsImage)
{
    XCellScript script("B2 + sum(A1:C3, r:4) + B2", 1, 1);
    script.compile();
    ASSERT_EQ(script.ranges.size(), 4u);
    // In the order of the instructions: the arguments of the call are there before it is added.
    EXPECT_EQ(script.ranges[0].textPos, 9);
    EXPECT_EQ(script.ranges[1].start.kind, XCellPos::kindRow);
    EXPECT_EQ(script.ranges[1].start.row, 3);
    EXPECT_EQ(script.ranges[2].textPos, 0);
    EXPECT_EQ(script.ranges[3].textPos, 23);
    EXPECT_EQ(script.textAt(1, 1, true), "B2 + sum(A1:C3, r:4) + B2");
    EXPECT_EQ(script.textAt(2, 3, true), "D3 + sum(C2:E4, r:5) + D3");
    EXPECT_EQ(script.textAt(0, 1, true), "B1 + sum(#REF#, r:3) + B1");
    script.compile();
    EXPECT_EQ(script.ranges.size(), 4u);
}

TEST(CellRanges, FindAndAskByRectangle)
{
    XCellScript script("B2 + r:4 + C3:D9", 0, 0);
    script.compile();
    XCellRanges ranges(nullptr, nullptr, script.ranges, 0, 0);
    ASSERT_EQ(ranges.size(), 3u);
    EXPECT_EQ(ranges.find(2), &ranges[2]);
    EXPECT_EQ(ranges.find(3), nullptr);
    EXPECT_EQ(ranges.find(-1), nullptr);
    EXPECT_TRUE(ranges.hasRect());
    EXPECT_TRUE(ranges.containsPoint(8, 3));
    EXPECT_FALSE(ranges.containsPoint(4, 0));
    EXPECT_TRUE(ranges.intersectsRect({0, 0, 1, 1}));
    EXPECT_FALSE(ranges.intersectsRect({0, 0, 0, 9}));
    ranges[2].setDeleted(true);
    EXPECT_EQ(ranges.rects(false), xstd::XMergedRects(xstd::XRect(1, 1, 1, 1)));
    EXPECT_EQ(ranges.rects(true).size(), 2u);
    EXPECT_FALSE(ranges.allDeleted());
    ranges.shift(-9, 0, false);
    EXPECT_TRUE(ranges.allDeleted());
    EXPECT_EQ(spliceRefs("B2 + r:4 + C3:D9", ranges.refs(), true), "#REF# + #REF# + #REF#");

    ranges[0].ref.id = 7; // ids that are no indexes are searched for
    EXPECT_EQ(ranges.find(7), &ranges[0]);
    EXPECT_EQ(ranges.find(0), nullptr);
}

ScriptItemPtr put(ScriptSet& set, const char* text, int32_t row, int32_t col, bool replace = false)
{
    XCellScript script(text, row, col);
    script.compile();
    return replace ? set.putReplacing(row, col, text, script.program(), script.ranges)
                   : set.put(row, col, text, script.program(), script.ranges);
}

TEST(SharedScripts, OnePerProgramAsLongAsSomebodyHoldsIt)
{
    ScriptSet set;
    ScriptItemPtr first = put(set, "A1+1", 0, 1);
    ScriptItemPtr same = put(set, "B1+1 // other words", 0, 2);
    ScriptItemPtr other = put(set, "A1+2", 0, 1);
    EXPECT_EQ(first, same);
    EXPECT_NE(first, other);
    EXPECT_EQ(first.use_count(), 2);
    EXPECT_EQ(first->text, "A1+1");
    EXPECT_EQ(first->col, 1);
    EXPECT_EQ(set.size(), 2u);

    put(set, "C1+1 // mine", 0, 3, true);
    EXPECT_EQ(first->text, "C1+1 // mine");

    const std::vector<uint8_t> code = first->program->code();
    EXPECT_EQ(set.find(code), first);
    first.reset();
    EXPECT_TRUE(set.contains(code));
    same.reset();
    EXPECT_FALSE(set.contains(code));
    EXPECT_EQ(set.size(), 1u);
}

TEST(SharedScripts, OutliveTheirSet)
{
    auto set = std::make_unique<ScriptSet>();
    ScriptItemPtr cleared = put(*set, "A1+1", 0, 1);
    set->clear();
    EXPECT_EQ(cleared->owner, nullptr);
    const ScriptItemPtr fresh = put(*set, "A1+1", 0, 1);
    EXPECT_NE(fresh, cleared);
    cleared.reset(); // takes no entry of the set along
    EXPECT_EQ(set->size(), 1u);
    set.reset();
    EXPECT_EQ(fresh->text, "A1+1");
}

} // namespace

} // namespace huge
