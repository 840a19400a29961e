#include "cell/XCellRangeRef.h"

#include <gtest/gtest.h>

#include <vector>

namespace huge {

namespace {

XCellRangeRef ref(const char* text)
{
    XCellRangeRef out;
    EXPECT_TRUE(XCellRangeRef::parse(text, out)) << text;
    return out;
}

TEST(ReferenceGrammar, SortsEachCoordinateWithItsMark)
{
    struct Case {
        const char* text;
        const char* normal;
    };
    const std::vector<Case> cases = {{"A1", "A1"},
                                     {"A1:C4", "A1:C4"},
                                     {"C4:A1", "A1:C4"},
                                     {"A4:C1", "A1:C4"},
                                     {"$C4:A$1", "A$1:$C4"},
                                     {"$A$4:$C$1", "$A$1:$C$4"},
                                     {"A$5:B2", "A2:B$5"},
                                     {"A1:A1", "A1"},
                                     {"A1:$A$1", "A1:$A$1"},
                                     {"r:5", "r:5"},
                                     {"A1:AVLG1048576", "A1:AVLG1048576"}};
    for (const Case& c : cases)
        EXPECT_EQ(ref(c.text).toText(true), c.normal);
    EXPECT_EQ(ref("r:5").end, XCellPos());
    EXPECT_EQ(ref("$B7").end, ref("$B7").start);
    EXPECT_EQ(ref("C4:A2").rect(), xstd::XRect(1, 0, 3, 2));
    EXPECT_TRUE(ref("n:4").rect().isNull());
}

TEST(ReferenceGrammar, RefusesWhatIsNotExactlyOneReference)
{
    for (const char* text : {"", ":", "A1:", ":A1", "A1:B", "A1:b2", "A1:B2:C3", "A1:r:5", "r:5:A1",
                             "A1: B2", "A1:AVLH1", "total"}) {
        XCellRangeRef out;
        EXPECT_FALSE(XCellRangeRef::parse(text, out)) << text;
    }
}

TEST(ReferenceMove, LeavingTheLimitsDeletesAndKeepsTheLastPosition)
{
    struct Case {
        const char* from;
        int32_t dRow;
        int32_t dCol;
        const char* shown;
        const char* stored;
    };
    const std::vector<Case> cases = {{"B2:C3", 1, 1, "C3:D4", "C3:D4"},
                                     {"B2:C3", -2, 0, "#REF#", "B2:C3"},
                                     {"B2", 0, -2, "#REF#", "B2"},
                                     {"$B$2", -9, -9, "$B$2", "$B$2"},
                                     {"B1048576", 1, 0, "#REF#", "B1048576"},
                                     {"A1:A$5", 10, 0, "A$5:A11", "A$5:A11"},
                                     {"A$5:A11", -10, 0, "A1:A$5", "A1:A$5"},
                                     {"c:3", 0, -4, "#REF#", "c:3"}};
    for (const Case& c : cases) {
        const XCellRangeRef moved = ref(c.from).move_(c.dRow, c.dCol, false);
        EXPECT_EQ(moved.toText(true), c.shown) << c.from;
        EXPECT_EQ(moved.toText(false), c.stored) << c.from;
    }
}

TEST(ReferenceBinding, RelativeFormComesBackAtAnyCell)
{
    XCellRangeRef relative = ref("A1").shift_(-1, -1, false); // compiled in B2
    EXPECT_EQ(relative.start.row, -1);
    EXPECT_EQ(relative.start.signedCol(), -1);
    EXPECT_EQ(XCellRangeRef(relative).bind_(1, 1), ref("A1"));
    EXPECT_EQ(XCellRangeRef(relative).bind_(9, 32766).toText(true), "AVLF9");
    EXPECT_EQ(XCellRangeRef(relative).bind_(0, 5).toText(true), "#REF#");

    relative = ref("$A$1").shift_(-7, -7, false);
    EXPECT_EQ(relative.start, ref("$A$1").start);
    EXPECT_EQ(relative.bind_(99, 99).toText(true), "$A$1");
}

TEST(ReferenceTransposition, MirrorsBothEndsAndSortsThem)
{
    EXPECT_EQ(ref("A1:C2").transpose_(0, 0).toText(true), "A1:B3");
    EXPECT_EQ(ref("$B1:C$9").transpose_(0, 0).toText(true), "A$2:$I3");
    EXPECT_EQ(ref("r:4").transpose_(0, 0).toText(true), "c:4");
    EXPECT_EQ(ref("A1:A40000").transpose_(0, 0).toText(true), "#REF#");
}

XCellRangeRef token(const char* text, int32_t at, uint16_t length)
{
    XCellRangeRef made = ref(text);
    made.textPos = at;
    made.textLen = length;
    return made;
}

TEST(SourceSplice, ChangesNothingOutsideTheTokens)
{
    const xstd::XString source = " A1 /* A1 */+  $B$2 * sum( A1 : B2 )\n// \xe4\xbd\xa0 end ";
    std::vector<XCellRangeRef> refs = {token("C7", 15, 4), token("AA10", 1, 2)};
    EXPECT_EQ(spliceRefs(source, refs, true),
              " AA10 /* A1 */+  C7 * sum( A1 : B2 )\n// \xe4\xbd\xa0 end ");
    refs[0].isDeleted = true;
    EXPECT_EQ(spliceRefs(source, refs, true),
              " AA10 /* A1 */+  #REF# * sum( A1 : B2 )\n// \xe4\xbd\xa0 end ");
    EXPECT_EQ(spliceRefs("A1", {token("B1", 0, 2)}, true), "B1");
    EXPECT_EQ(spliceRefs("1 + 2", {}, true), "1 + 2");
}

TEST(SourceSplice, PassesOverPlacesThatTheSourceDoesNotHave)
{
    EXPECT_EQ(spliceRefs("A1+A1", {token("B1", 0, 2), token("C1", 1, 2), token("D1", 99, 2)}, true),
              "B1+A1");
    EXPECT_EQ(spliceRefs("A1", {token("B1", 0, 200)}, true), "B1");
}

} // namespace

} // namespace huge
