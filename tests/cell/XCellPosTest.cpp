#include "cell/XCellPos.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace huge {

namespace {

XCellPos pos(const char* text)
{
    XCellPos out;
    EXPECT_TRUE(XCellPos::parse(text, out)) << text;
    return out;
}

struct PositionCase {
    const char* text;
    int32_t row;
    int32_t col;
    uint8_t flags;
    uint8_t kind;
};

std::ostream& operator<<(std::ostream& out, const PositionCase& c)
{
    return out << c.text;
}

class PositionGrammar : public ::testing::TestWithParam<PositionCase> {};

TEST_P(PositionGrammar, ReadsAndWritesTheSameText)
{
    const PositionCase& c = GetParam();
    const XCellPos read = pos(c.text);
    EXPECT_EQ(read.row, c.row);
    EXPECT_EQ(read.col, c.col);
    EXPECT_EQ(read.flags, c.flags);
    EXPECT_EQ(read.kind, c.kind);
    EXPECT_EQ(read.toText(true), c.text);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, PositionGrammar,
    ::testing::Values(PositionCase{"A1", 0, 0, 0x00, 1}, PositionCase{"$A1", 0, 0, 0x10, 1},
                      PositionCase{"A$1", 0, 0, 0x01, 1}, PositionCase{"$A$1", 0, 0, 0x11, 1},
                      PositionCase{"Z10", 9, 25, 0x00, 1}, PositionCase{"AA100", 99, 26, 0x00, 1},
                      PositionCase{"AAA2", 1, 702, 0x00, 1},
                      PositionCase{"AVLG1048576", 1048575, 32766, 0x00, 1},
                      PositionCase{"r:0", 0, 0, 0x00, 3}, PositionCase{"r:5", 5, 0, 0x00, 3},
                      PositionCase{"c:12", 12, 0, 0x00, 4},
                      PositionCase{"n:2147483647", 2147483647, 0, 0x00, 5}));

TEST(PositionGrammarRefusals, AnythingElseIsNoPosition)
{
    const std::vector<const char*> refused = {"",
                                              "A",
                                              "1",
                                              "$",
                                              "$1",
                                              "A$",
                                              "a1",
                                              "Aa1",
                                              "A0",
                                              "A01",
                                              "A$01",
                                              "A-1",
                                              "A1 ",
                                              " A1",
                                              "A1x",
                                              "$$A1",
                                              "A$$1",
                                              "A1$",
                                              "AVLH1",
                                              "A1048577",
                                              "ZZZZZZZZZZZZZZZZ1",
                                              "A99999999999999999999",
                                              "r:",
                                              "r:x",
                                              "r:-1",
                                              "x:1",
                                              "R:1",
                                              "n:1.5",
                                              "r:2147483648",
                                              "rr:1",
                                              ":1",
                                              "A1:B2",
                                              "A_1",
                                              "\xc3\x84"
                                              "1"};
    for (const char* text : refused) {
        XCellPos out;
        out.row = 77;
        EXPECT_FALSE(XCellPos::parse(text, out)) << text;
        EXPECT_EQ(out.row, 77) << text;
    }
}

TEST(PositionText, DollarsAreOptional)
{
    EXPECT_EQ(pos("$B$3").toText(false), "B3");
    EXPECT_EQ(XCellPos().toText(true), "unknown");
    EXPECT_EQ(pos("B$3").toTextShifted(2, 2, true), "D$3");
    EXPECT_EQ(pos("r:3").toTextShifted(2, 2, true), "r:3");
}

struct ShiftCase {
    const char* from;
    int32_t dRow;
    int32_t dCol;
    bool force;
    const char* to;
};

std::ostream& operator<<(std::ostream& out, const ShiftCase& c)
{
    return out << c.from << " by " << c.dRow << "," << c.dCol << (c.force ? " forced" : "");
}

class PositionShift : public ::testing::TestWithParam<ShiftCase> {};

TEST_P(PositionShift, MovesWhatIsRelativeAndComesBack)
{
    const ShiftCase& c = GetParam();
    EXPECT_TRUE(pos(c.from).canShift(c.dRow, c.dCol, c.force));
    const XCellPos moved = pos(c.from).shifted(c.dRow, c.dCol, c.force);
    EXPECT_EQ(moved.toText(true), c.to);
    EXPECT_EQ(moved.shifted(-c.dRow, -c.dCol, c.force), pos(c.from));
}

INSTANTIATE_TEST_SUITE_P(
    Forms, PositionShift,
    ::testing::Values(ShiftCase{"B2", 3, 2, false, "D5"}, ShiftCase{"B2", -1, -1, false, "A1"},
                      ShiftCase{"$B2", 3, 2, false, "$B5"}, ShiftCase{"B$2", 3, 2, false, "D$2"},
                      ShiftCase{"$B$2", 3, 2, false, "$B$2"}, ShiftCase{"$B$2", 3, 2, true, "$D$5"},
                      ShiftCase{"r:5", 1, 7, false, "r:6"}, ShiftCase{"c:5", 1, 7, false, "c:12"},
                      ShiftCase{"n:5", 1, 7, false, "n:13"}, ShiftCase{"n:5", 1, 7, true, "n:13"}));

TEST(PositionLimits, AShiftThatLeavesThemIsKnownBefore)
{
    EXPECT_FALSE(pos("A5").canShift(-5, 0, false));
    EXPECT_FALSE(pos("C1").canShift(0, -3, false));
    EXPECT_TRUE(pos("C$1").canShift(-9, 0, false));
    EXPECT_FALSE(pos("C$1").canShift(-9, 0, true));
    EXPECT_FALSE(pos("AVLG1").canShift(0, 1, false));
    EXPECT_FALSE(pos("AVLG1").canShift(0, 32766, false)); // 65,532 is -4 in 16 bits
    EXPECT_FALSE(pos("A1048576").canShift(1, 0, false));
    EXPECT_FALSE(pos("r:3").canShift(-4, 0, false));
    EXPECT_FALSE(pos("n:2147483647").canShift(1, 0, false));
}

TEST(PositionTransposition, MirrorsAboutADiagonalAndItsInverseIsItself)
{
    const auto transposed = [](const char* text, int32_t row, int32_t col) {
        return pos(text).transpose_(row, col).toText(true);
    };
    EXPECT_EQ(transposed("C1", 0, 0), "A3");
    EXPECT_EQ(transposed("$C1", 0, 0), "A$3");
    EXPECT_EQ(transposed("D2", 1, 1), "B4"); // two columns right of B2 becomes two rows below it
    EXPECT_EQ(transposed("r:4", 0, 0), "c:4");
    EXPECT_EQ(transposed("c:4", 9, 9), "r:4");
    EXPECT_EQ(transposed("n:4", 9, 9), "n:4");
    EXPECT_EQ(pos("$F9").transpose_(3, 5).transpose_(3, 5), pos("$F9"));
    EXPECT_TRUE(pos("A32767").canTranspose(0, 0));
    EXPECT_FALSE(pos("A32768").canTranspose(0, 0));
    EXPECT_FALSE(pos("A1").canTranspose(1, 0)); // one row above: one column left of A
}

TEST(PositionGrowth, OneCoordinateAtATime)
{
    EXPECT_EQ(pos("B2").addRow_(2), pos("B4"));
    EXPECT_EQ(pos("B$2").addRow_(2), pos("B$2"));
    EXPECT_EQ(pos("B2").addCol_(2), pos("D2"));
    EXPECT_EQ(pos("r:2").addRow_(2), pos("r:4"));
    EXPECT_EQ(pos("r:2").addCol_(2), pos("r:2"));
    EXPECT_EQ(pos("n:2").addCol_(2), pos("n:4"));
}

} // namespace

} // namespace huge
