#include "common/XJsonDecoder.h"
#include "common/XStop.h"
#include "imageTesting.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using huge::XCellImageMode;

void enter(Sheet& sheet, const std::vector<std::pair<std::string, const char*>>& cells)
{
    for (const auto& [name, text] : cells)
        sheet.refused(name, text);
}

/// Of values, states and formats.
const std::vector<std::pair<std::string, const char*>> everyKind = {
    {"B2", "A1 + 1"},    {"A1", "41"},        {"C1", "'tab\\there'"},
    {"C2", "1 / 0"},     {"C3", "(1 2"},      {"D4", "sum(A1:B2) + C2"},
    {"E5", "r:5 + c:3"}, {"F2", "$A$1 + A1"}, {"F1", "\"中文 名字\""},
    {"F3", "$A$1 + A2"}, {"J1", "2 ** 300"},  {"J2", "1.5 / 7"}};

TEST(TableImage, OfAnEmptyTableIs28Bytes)
{
    Sheet sheet;
    const Bytes expected = int32Bytes(0) + int32Bytes(0) + int32Bytes(1024) + int32Bytes(256) +
                           int32Bytes(0) + int32Bytes(0) + int32Bytes(4);
    EXPECT_EQ(sheet.table.toVector(), expected);
    Sheet other;
    other.table.resizeMainRect(xstd::XRect(0, 0, 5, 5));
    other.set("A1", "1");
    load(other, expected);
    EXPECT_EQ(other.table.mainRect(), xstd::XRect(0, 0, 1024, 256));
    EXPECT_EQ(other.cell("A1"), nullptr);
    EXPECT_EQ(other.table.toVector(), expected);
}

TEST(TableImage, IsLaidDownByteByByte)
{
    Sheet sheet;
    load(sheet, smallHeader(0, 0));
    sheet.set("A1", "A2+$B$1");
    sheet.force("A1")->setState(2);
    sheet.set("A2", "=7");
    sheet.force("C3")->swapExtend(std::make_unique<TestExtend>(9));

    const Bytes start = {1, 0, 0, 0, 0, 0, 0, 1};    // one row below
    const Bytes fixed = {0, 0, 0, 0, 1, 0, 0x11, 1}; // $B$1
    const Bytes reference1 = int32Bytes(0) + int32Bytes(0) + Bytes{2, 0, 0} + start + start;
    const Bytes reference2 = int32Bytes(1) + int32Bytes(3) + Bytes{4, 0, 0} + fixed + fixed;
    const Bytes references = Bytes{2, 0} + block(reference1) + block(reference2);
    const Bytes formula =
        block(int32Bytes(0) + int32Bytes(0) + textBytes("A2+$B$1") + textBytes(sheet.value("A1")) +
              block({2, 0}) + block(references) + block({}));
    EXPECT_EQ(sheet.table.toVector(), smallHeader(2, 2) + cellRecord(1, 0, "7", "7") +
                                          cellRecord(2, 2, "", "", {0, 0}, {9}) + formula);
}

TEST(TableImage, BringsEveryKindOfCellBack)
{
    Sheet sheet;
    enter(sheet, everyKind);
    sheet.force("A1")->setState(3);
    sheet.force("G1")->swapExtend(std::make_unique<TestExtend>(5));
    sheet.force("B2")->swapExtend(std::make_unique<TestExtend>(6));
    const Bytes image = sheet.table.toVector();

    Sheet loaded;
    loaded.table.setExtendPrototype(std::make_unique<TestExtend>(0));
    load(loaded, image);
    EXPECT_EQ(loaded.state(), sheet.state());
    EXPECT_EQ(loaded.table.toVector(), image);
    // And it lives: the failing cell and its readers recover.
    loaded.set("C2", "8");
    EXPECT_EQ(loaded.value("D4"), "91");
}

TEST(TableImage, HoldsACellBehindAllThatItReads)
{
    Sheet sheet;
    enter(sheet, {{"A1", "C3+1"}, {"C3", "B5"}, {"B5", "2"}, {"A9", "1"}, {"D1", "C3"}});
    const xstd::XJson tree = sheet.table.toJson();
    std::string order;
    for (const xstd::XKVNode& level : tree.at("cells")->elements()) {
        for (const xstd::XKVNode& cell : level.elements())
            order += cell.at("text")->toText() + " ";
        order += "| ";
    }
    EXPECT_EQ(order, "2 1 | B5 | C3+1 C3 | ");
}

TEST(TableImage, ModeSaysWhatIsTakenOver)
{
    const Bytes image = smallHeader(5, 5) + cellRecord(0, 0, "2 + 3", "6", {1, 0}, {8});
    struct Case {
        XCellImageMode mode;
        const char* text;
        const char* value;
        bool format;
    };
    for (const Case& row : {Case{XCellImageMode::Values, "6", "6", false},
                            Case{XCellImageMode::Scripts, "2 + 3", "5", false},
                            Case{XCellImageMode::Formats, "", "", true},
                            Case{XCellImageMode::Everything, "2 + 3", "5", true}}) {
        Sheet sheet;
        sheet.table.setExtendPrototype(std::make_unique<TestExtend>(0));
        sheet.table.fromVector(image, row.mode);
        EXPECT_EQ(sheet.source("A1"), row.text);
        EXPECT_EQ(sheet.value("A1"), row.value);
        EXPECT_EQ(sheet.cell("A1")->state(), 1);
        EXPECT_EQ(sheet.cell("A1")->extend() != nullptr, row.format);
        EXPECT_EQ(sheet.table.maxRow(), 5);
    }
}

TEST(TableImage, ADeletedReferenceIsThereAgain)
{
    Sheet sheet;
    load(sheet, smallHeader(0, 0) + cellRecord(0, 0, "5", "5") + cellRecord(1, 1, "A1 * 2", "") +
                    cellRecord(2, 2, "A1 * 2", ""));
    (*sheet.cell("B2")->ranges())[0].setDeleted(true);
    EXPECT_EQ(sheet.source("B2"), "#REF# * 2");
    const Bytes image = sheet.table.toVector();
    load(sheet, image);
    EXPECT_EQ(sheet.source("B2"), "A1 * 2");
    EXPECT_EQ(sheet.value("B2"), "10");
}

TEST(TableImage, ARingLosesTheCellThatStandsLast)
{
    Sheet sheet;
    const auto notes = load(sheet, smallHeader(0, 0) + cellRecord(0, 1, "A1", "") +
                                       cellRecord(0, 0, "B1 + 1", "") + cellRecord(0, 2, "A1", "") +
                                       cellRecord(0, 3, "D1", ""));
    EXPECT_EQ(notes.count, 2u);
    EXPECT_EQ(notes.texts.at(0), "There is cyclic dependence: A1->B1->A1");
    EXPECT_EQ(notes.texts.at(1), "There is cyclic dependence: D1->D1");
    EXPECT_EQ(sheet.cell("A1")->hold(), huge::XCellHold::Ring);
    EXPECT_TRUE(sheet.failed("A1") && sheet.failed("B1") && sheet.failed("C1"));
    EXPECT_TRUE(sheet.table.findCycle().empty());
    // The same cell stays out when the table is saved and loaded again.
    const Bytes image = sheet.table.toVector();
    Sheet again;
    load(again, image);
    EXPECT_EQ(again.state(), sheet.state());
    EXPECT_EQ(again.table.toVector(), image);
    again.set("A1", "4");
    EXPECT_EQ(again.value("B1"), "4");
}

TEST(TableImage, ADamagedRecordCostsItsOwnCellAlone)
{
    const std::vector<std::pair<Bytes, std::string>> cases = {
        {cellRecord(17, 0, "1", "1"), "The row of a cell is out of range: 17 at offset 32"},
        {cellRecord(0, -1, "1", "1"), "The column of a cell is out of range: -1 at offset 36"},
        {block({1, 2}), "The image ends inside the row of a cell at offset 32"},
        {block(int32Bytes(1) + int32Bytes(1) + int32Bytes(0x7fffffff)),
         "The length of the text of a cell does not fit: 2147483647 at offset 40"},
        {cellRecord(1, 1, "3", "3", {}), "The image ends inside the state of a cell at offset 54"},
        {cellRecord(1, 1, "3", "3", {0, 0}, {1, 2}),
         "B2: The image ends inside the number format at offset 0"}};
    for (const auto& [damaged, text] : cases) {
        Sheet sheet;
        const Bytes image = smallHeader(9, 9) + damaged + cellRecord(2, 2, "7", "7");
        const auto notes = load(sheet, image);
        EXPECT_EQ(notes.count, 1u);
        EXPECT_EQ(notes.texts.at(0), text);
        EXPECT_EQ(sheet.value("C3"), "7");
    }
}

TEST(TableImage, DamageOfTheWholeIsRefusedBeforeAnythingChanges)
{
    Sheet sheet;
    sheet.set("A1", "5");
    const Bytes good = smallHeader(1, 1) + cellRecord(0, 0, "1", "1") + cellRecord(0, 1, "2", "2");
    const size_t record = 4 + 8 + 5 + 5 + 6 + 4 + 4;
    ASSERT_EQ(good.size(), 28 + 2 * record);
    for (size_t size = 0; size < good.size(); ++size) {
        const std::string text =
            failureOf([&] { load(sheet, Bytes(good.begin(), good.begin() + long(size))); });
        if (size == 28 || size == 28 + record) {
            EXPECT_EQ(text, "");
            load(sheet, Bytes(smallHeader(0, 0)));
            sheet.set("A1", "5");
            continue;
        }
        EXPECT_NE(text.find(" at offset "), std::string::npos) << size;
        EXPECT_EQ(sheet.value("A1"), "5");
    }
}

TEST(TableImage, SurvivesEveryValueInEveryField)
{
    Sheet source;
    enter(source, {{"A1", "1"}, {"B2", "A1 + $A$1"}, {"A2", "sum(A1:A1)"}});
    source.force("C3")->swapExtend(std::make_unique<TestExtend>(9));
    const Bytes good = source.table.toVector();
    Sheet sheet;
    sheet.table.setExtendPrototype(std::make_unique<TestExtend>(0));
    for (size_t at = 0; at + 4 <= good.size(); ++at) {
        for (const int32_t value : {-1, 0, 1, 2, 65535, 32767, 1048576, INT32_MAX, INT32_MIN}) {
            Bytes damaged = good;
            const Bytes field = int32Bytes(value);
            std::copy(field.begin(), field.end(), damaged.begin() + static_cast<long>(at));
            const std::string text = failureOf([&] { load(sheet, damaged); });
            if (!text.empty()) {
                EXPECT_NE(text.find(" at offset "), std::string::npos) << text;
            } else if (sheet.table.mainRect().area() < 100000) {
                const Bytes image = sheet.table.toVector(); // whatever came in can be saved
                load(sheet, image);
            }
        }
    }
}

// A few bytes that ask for a walk over 34,000,000,000 positions, or for room for 10,000 rows of
// 32,767 cells, must cost little of either.
TEST(TableImage, FarCellsAndLargeRangesCostNoMoreThanTheyHold)
{
    const Bytes widest = int32Bytes(0) + int32Bytes(0) + int32Bytes(1048575) + int32Bytes(32766) +
                         int32Bytes(1048575) + int32Bytes(32766) + int32Bytes(4);
    Sheet sheet;
    const auto notes =
        load(sheet, widest + cellRecord(0, 0, "sum(B1:AVLG1048576) + A2", "") +
                        cellRecord(1, 0, "A1", "") + cellRecord(1048575, 32766, "5", ""));
    EXPECT_EQ(notes.texts.at(0), "There is cyclic dependence: A2->A1->A2");
    Bytes image = widest;
    for (int32_t row = 0; row < 10000; ++row)
        image = std::move(image) + cellRecord(row, 32766, "1", "");
    load(sheet, image);
    EXPECT_EQ(sheet.table.cellAt(9999, 32766)->valueText(), "1");
    EXPECT_EQ(sheet.table.cellAt(9999, 255), nullptr);
    EXPECT_EQ(sheet.table.lastUsedCol(sheet.table.mainRect()), 32766);
}

TEST(TableImage, AStopLeavesAllCellsInPlace)
{
    Sheet source;
    enter(source, {{"A1", "1"}, {"B1", "A1 + 1"}});
    const Bytes image = source.table.toVector();
    Sheet sheet;
    xstd::XStop::request();
    EXPECT_NE(failureOf([&] { load(sheet, image); }), "");
    xstd::XStop::clear();
    EXPECT_EQ(sheet.source("A1") + sheet.source("B1"), "1A1 + 1");
    sheet.set("A1", "3");
    EXPECT_EQ(sheet.value("B1"), "4");
}

TEST(JsonImage, HoldsWhatTheTableHolds)
{
    Sheet sheet;
    enter(sheet, everyKind);
    const xstd::XJson tree = sheet.table.toJson();
    EXPECT_EQ(tree.at("mainRect")->toJson(), "[0, 0, 1024, 256]");
    EXPECT_EQ(tree.at("cells[0][0]")->toJson(),
              "{col: 0, row: 0, state: {isDeleted: false, isInvalid: false}, text: \"41\", "
              "value: \"41\"}");
    Sheet loaded;
    loaded.table.fromJson(xstd::XJsonDecoder().parse(tree.toJson(0, 2)),
                          XCellImageMode::Everything);
    EXPECT_EQ(loaded.state(), sheet.state());
}

TEST(JsonImage, NamesWhatIsWrong)
{
    const std::string front = "{mainRect: [0, 0, 9, 9], maxRow: 0, maxCol: 0, ";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"[]", "\"mainRect[0]\" is no integer"},
        {"{mainRect: [0, 0, 9]}", "\"mainRect[3]\" is no integer"},
        {"{mainRect: [0, 5, 9, 4]}", "\"mainRect[3]\" is out of range: 4"},
        {front + "baseSize: -1, cells: []}", "\"baseSize\" is out of range: -1"},
        {front + "cells: {}}", "\"cells\" is no array"}};
    Sheet sheet;
    sheet.set("A1", "5");
    for (const auto& [text, message] : cases) {
        const xstd::XJson tree = xstd::XJsonDecoder().parse(text);
        EXPECT_EQ(failureOf([&] { sheet.table.fromJson(tree, XCellImageMode::Everything); }),
                  message);
        EXPECT_EQ(sheet.value("A1"), "5");
    }
    const xstd::XJson tree = xstd::XJsonDecoder().parse(
        front + "cells: [[{row: 1}, {row: 10, col: 1}, 7], [{row: 1, col: 1, text: \"6\"}], 3]}");
    const auto notes = sheet.table.fromJson(tree, XCellImageMode::Everything);
    EXPECT_EQ(notes.texts,
              (std::vector<xstd::XString>{"\"col\" is no integer",
                                          "A cell lies outside of the table: row 10, column 1",
                                          "\"row\" is no integer"}));
    EXPECT_EQ(sheet.value("B2"), "6");
    EXPECT_EQ(sheet.table.baseSize(), 4);
}

using Datas = std::map<xstd::XPoint, Bytes>;

TEST(RectangleImage, HoldsRectanglesAndTheCellsInThem)
{
    Sheet sheet;
    sheet.set("A1", "4");
    sheet.set("C1", "9");
    const Bytes image = sheet.table.saveRectsToVector(Sheet::rects("A1:B2"));
    const Bytes record = cellRecord(0, 0, "4", "4");
    EXPECT_EQ(image, int32Bytes(1) + int32Bytes(0) + int32Bytes(0) + int32Bytes(1) + int32Bytes(1) +
                         record);
    xstd::XMergedRects rects;
    Datas datas;
    EXPECT_TRUE(huge::XCellTable::rectsFromVector(image, rects, datas));
    EXPECT_EQ(rects, Sheet::rects("A1:B2"));
    EXPECT_EQ(datas, (Datas{{{0, 0}, Bytes(record.begin() + 4, record.end())}}));
}

TEST(RectangleImage, IsRefusedWholeWhenAnythingIsDamaged)
{
    const Bytes rect = int32Bytes(0) + int32Bytes(0) + int32Bytes(3) + int32Bytes(3);
    const Bytes good = int32Bytes(2) + rect + rect + cellRecord(1, 1, "3", "3");
    xstd::XMergedRects rects;
    Datas datas;
    for (size_t size = 0; size < good.size(); ++size) {
        const std::string text = failureOf([&] {
            huge::XCellTable::rectsFromVector(Bytes(good.begin(), good.begin() + long(size)), rects,
                                              datas);
        });
        EXPECT_EQ(text.find(" at offset ") == std::string::npos, size == 36) << size << text;
    }
    Bytes nested;
    for (int32_t i = 0; i < 3000; ++i)
        nested = nested + int32Bytes(i) + int32Bytes(0) + int32Bytes(10000 - i) + int32Bytes(i);
    const std::vector<std::pair<Bytes, std::string>> cases = {
        {int32Bytes(-1), "The number of rectangles does not fit: -1 at offset 0"},
        {int32Bytes(INT32_MAX) + rect,
         "The number of rectangles does not fit: 2147483647 at offset 0"},
        {int32Bytes(1) + int32Bytes(2) + int32Bytes(0) + int32Bytes(1) + int32Bytes(0),
         "The bottom of a rectangle is out of range: 1 at offset 12"},
        {int32Bytes(3000) + nested, "Too many rectangles lie over one another at offset 0"},
        {int32Bytes(0) + cellRecord(1, 1, "", "", {1}),
         "The image ends inside the state of a cell at offset 28"}};
    for (const auto& [image, message] : cases)
        EXPECT_EQ(failureOf([&, &bytes = image] {
                      huge::XCellTable::rectsFromVector(bytes, rects, datas);
                  }),
                  message);
    EXPECT_TRUE(rects.isEmpty() && datas.empty());
}

TEST(RectangleText, QuotesValuesAndNamesEmptyCells)
{
    Sheet sheet;
    EXPECT_EQ(sheet.table.rectsToText(Sheet::rects("A1:B1")), "none\tnone");
    enter(sheet, {{"A1", "2 ** 70"}, {"B1", "'a\\tb\\\"c'"}, {"A2", "''"}, {"C2", "7"}});
    sheet.force("A1")->swapExtend(std::make_unique<TestExtend>(1));
    sheet.cell("A1")->extend()->rule().radix = 16;
    EXPECT_EQ(sheet.table.rectsToText(std::vector{Sheet::rect("A1:B2"), Sheet::rect("C2")}),
              "\"1180591620717411303424\"\t\"a\\tb\\\"c\"\tnone\nnone\tnone\t\"7\"");
    EXPECT_EQ(sheet.table.rectsToText({}), "");
    EXPECT_EQ(failureOf([&] { sheet.table.rectsToText(xstd::XRect(0, 0, 1048575, 32766)); }),
              "A text can hold 50000000 cells, but not 34358689792");
}

} // namespace
