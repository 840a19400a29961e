#include "Sheet.h"
#include "cell/XCellActionDelValues.h"
#include "cell/XCellActionSetDatas.h"
#include "cell/XCellActionSetTexts.h"
#include "cell/pastedSource.h"

#include <gtest/gtest.h>

using namespace huge;
using Texts = XCellActionSetTexts::Texts;

namespace {

void paste(Sheet& sheet, const char* dest, const Texts& texts)
{
    sheet.actions.do_(
        std::make_unique<XCellActionSetTexts>(&sheet.table, Sheet::rects(dest), texts));
}

XCellActionSetDatas::Datas copied(Sheet& sheet, const char* src)
{
    XCellActionSetDatas::Datas datas;
    for (const XCell* cell : sheet.table.collectCells(Sheet::rects(src), {optAll}))
        datas[{cell->row(), cell->col()}] = cell->toVector();
    return datas;
}

void pasteDatas(Sheet& sheet, const char* src, const char* dest, XCellImageMode mode)
{
    sheet.actions.do_(std::make_unique<XCellActionSetDatas>(
        &sheet.table, Sheet::rects(dest), copied(sheet, src), mode, Sheet::rects(src)));
}

void format(Sheet& sheet, const char* name, int number)
{
    sheet.force(name)->swapExtend(std::make_unique<TestExtend>(number));
}

int formatOf(Sheet& sheet, const char* name)
{
    XCell* cell = sheet.cell(name);
    return cell && cell->extend() ? static_cast<TestExtend*>(cell->extend())->number : 0;
}

/// What the cells show, rows separated by "/" and cells by ",".
std::string shown(Sheet& sheet, const char* area)
{
    const xstd::XRect rect = Sheet::rect(area);
    std::string text;
    rect.forEach([&](int32_t row, int32_t col) {
        text += sheet.value(cellName(row, col));
        text += col < rect.right ? "," : row < rect.bottom ? "/" : "";
        return false;
    });
    return text;
}

} // namespace

TEST(PastedSource, KeepsWhatIsALabelElsewhereAsAText)
{
    struct Row {
        const char* field;
        const char* source;
    };
    for (const Row& row :
         std::vector<Row>{{"12", "12"},
                          {"=Rent", "=Rent"},
                          {"A1 + 1", "A1 + 1"},
                          {"A1", "A1"},
                          {"sum", "sum"},
                          {"Rent", "\"Rent\""},
                          {"\xe7\xa7\x9f\xe9\x87\x91", "\"\xe7\xa7\x9f\xe9\x87\x91\""},
                          {"total cost", "\"total cost\""},
                          {"\"quoted, 1,2\"", "\"quoted, 1,2\""},
                          {"say \"hi", "\"say \\\"hi\""},
                          {"1,234", "1234"},
                          {" -1,234,567.5 ", "-1234567.5"},
                          {"3,14", "\"3,14\""},
                          {"1,2345", "\"1,2345\""},
                          {"max(1,2)", "max(1,2)"},
                          {"7\r\n", "7\n"},
                          {"", ""}})
        EXPECT_EQ(pastedSource(row.field), row.source) << row.field;
}

TEST(PasteTexts, TheGridIsRepeatedAndCut)
{
    struct Row {
        const char* dest;
        Texts texts;
        const char* area;
        const char* shows;
    };
    for (const Row& row :
         std::vector<Row>{{"A1:C2", {{"7"}}, "A1:C2", "7,7,7/7,7,7"},
                          {"A1:C3", {{"1", "2"}, {"3", "4"}}, "A1:C3", "1,2,1/3,4,3/1,2,1"},
                          {"A1:C2", {{"1", "2", "3"}, {"4"}}, "A1:C2", "1,2,3/4,old,"},
                          {"B2", {{"none"}}, "A1:B2", ",old/,old"},
                          {"B1:B2", {{""}}, "A1:B2", ",/,"},
                          {"A1:B2", {}, "A1:B2", ",old/,old"}}) {
        Sheet sheet;
        sheet.set("B1", "\"old\"");
        sheet.set("B2", "\"old\"");
        const std::string before = sheet.state();
        paste(sheet, row.dest, row.texts);
        EXPECT_EQ(shown(sheet, row.area), row.shows);
        sheet.actions.undo_();
        EXPECT_EQ(sheet.state(), before);
    }
}

TEST(PasteTexts, GoOnPastWhatFailsAndRaiseTheFirstFailure)
{
    Sheet sheet;
    sheet.set("D1", "C1 + 1");
    try {
        paste(sheet, "A1:C1", {{"1 / 0", "=1 +", "8"}});
        FAIL();
    } catch (const xstd::XExceptionItems& failure) {
        EXPECT_NE(failure.toString().find("div with zero"), std::string::npos);
    }
    EXPECT_EQ(sheet.source("B1"), "1 +");
    EXPECT_TRUE(sheet.failed("B1"));
    EXPECT_EQ(sheet.value("D1"), "9"); // the readers have run
    sheet.actions.undo_();
    EXPECT_EQ(sheet.cell("A1"), nullptr);
    EXPECT_EQ(sheet.value("D1"), "1");
}

TEST(PasteTexts, EachRingLosesItsLastPastedCell)
{
    Sheet sheet;
    sheet.set("C1", "B1");
    const std::string before = sheet.state();
    try {
        paste(sheet, "A1:B3", {{"B1", "A1 + C1"}, {"A2", "5"}, {"B2", "A3"}});
        FAIL();
    } catch (const xstd::XExceptionItems& failure) {
        const xstd::XString text = failure.toString();
        for (const char* part : {"There is a circular dependency: B1->", "cyclicPath", "setTexts",
                                 "destRects", "{tl:(0, 0), br:(2, 1)}"})
            EXPECT_NE(text.find(part), std::string::npos) << part << text;
    }
    EXPECT_EQ(sheet.cell("B1")->hold(), XCellHold::Ring);
    EXPECT_EQ(sheet.cell("A2")->hold(), XCellHold::Ring);
    EXPECT_TRUE(sheet.cell("A1")->isLinked() && sheet.cell("C1")->isLinked());
    EXPECT_EQ(sheet.value("B3"), "5");
    EXPECT_TRUE(sheet.table.findCycle().empty());
    sheet.actions.undo_();
    EXPECT_EQ(sheet.state(), before);
    EXPECT_TRUE(sheet.table.heldOutCells().empty());
}

TEST(PasteCells, TakeOverWhatTheModeSays)
{
    struct Row {
        XCellImageMode mode;
        const char* source;
        const char* value;
        int format;
    };
    for (const Row& row :
         {Row{XCellImageMode::Values, "8", "8", 2}, Row{XCellImageMode::Scripts, "A3 + 1", "1", 2},
          Row{XCellImageMode::Formats, "77", "77", 1},
          Row{XCellImageMode::Everything, "A3 + 1", "1", 1}}) {
        Sheet sheet;
        sheet.table.setExtendPrototype(std::make_unique<TestExtend>(0));
        sheet.set("A1", "7");
        sheet.set("B1", "A1 + 1");
        format(sheet, "B1", 1);
        sheet.cell("B1")->setState(3);
        sheet.set("B3", "77");
        format(sheet, "B3", 2);
        const std::string before = sheet.state();
        pasteDatas(sheet, "B1", "B3", row.mode);
        EXPECT_EQ(sheet.source("B3"), row.source);
        EXPECT_EQ(sheet.value("B3"), row.value);
        EXPECT_EQ(formatOf(sheet, "B3"), row.format);
        EXPECT_EQ(sheet.cell("B3")->state(), 3);
        sheet.actions.undo_();
        EXPECT_EQ(sheet.state(), before);
    }
}

TEST(PasteCells, OneCellTakesTheShapeOfTheSource)
{
    Sheet sheet;
    for (const char* name : {"A1", "C2", "F6", "G6"})
        sheet.set(name, "5");
    format(sheet, "G6", 4);
    XCellActionSetDatas action(&sheet.table, Sheet::rects("F5"), copied(sheet, "A1:C2"),
                               XCellImageMode::Everything, Sheet::rects("A1:C2"));
    action.do_();
    EXPECT_EQ(shown(sheet, "F5:H6"), "5,,/,,5");
    EXPECT_EQ(formatOf(sheet, "G6"), 4); // emptied, but for its format
    EXPECT_EQ(action.focusRect(), Sheet::rect("F5"));
    EXPECT_EQ(action.selectRects(xstd::XUndoableActionType::Do), Sheet::rects("F5:H6"));
    pasteDatas(sheet, "A1:C2", "A10:D13", XCellImageMode::Scripts);
    EXPECT_EQ(shown(sheet, "A10:D13"), "5,,,5/,,5,/5,,,5/,,5,");
}

TEST(PasteCells, AValueRefersToNothing)
{
    Sheet sheet;
    sheet.set("A1", "5");
    sheet.set("B1", "\"A1\"");
    pasteDatas(sheet, "B1", "C3", XCellImageMode::Values);
    EXPECT_EQ(sheet.source("C3"), "#REF#");
    EXPECT_EQ(sheet.value("C3"), "refError:range is invalid");
}

TEST(PasteCells, ADamagedRecordLosesOnlyItself)
{
    Sheet sheet;
    sheet.set("A1", "1");
    sheet.set("A2", "2");
    XCellActionSetDatas::Datas datas = copied(sheet, "A1:A2");
    datas.begin()->second.resize(10);
    XCellActionSetDatas action(&sheet.table, Sheet::rects("C1"), datas, XCellImageMode::Everything,
                               Sheet::rects("A1:A2"));
    try {
        action.do_();
        FAIL();
    } catch (const xstd::XExceptionItems& failure) {
        EXPECT_NE(failure.toString().find("The image ends inside the text of a cell at offset 8"),
                  std::string::npos)
            << failure.toString();
    }
    EXPECT_EQ(shown(sheet, "C1:C2"), "/2");
}

TEST(DeleteKey, RemovesCellsWithoutFormatAndEmptiesTheOthers)
{
    Sheet sheet;
    sheet.set("A1", "1");
    sheet.set("A2", "2");
    format(sheet, "A2", 3);
    sheet.set("B1", "A1 + A2");
    const std::string before = sheet.state();
    sheet.actions.do_(std::make_unique<XCellActionDelValues>(&sheet.table, Sheet::rects("A1:A9")));
    EXPECT_EQ(sheet.cell("A1"), nullptr);
    EXPECT_FALSE(sheet.cell("A2")->hasContent());
    EXPECT_EQ(formatOf(sheet, "A2"), 3);
    EXPECT_NE(sheet.value("B1"), "3");
    sheet.actions.undo_();
    EXPECT_EQ(sheet.state(), before);
}

TEST(CellRecord, HasItsSevenFields)
{
    Sheet sheet;
    sheet.set("C2", "$A1+1");
    sheet.cell("C2")->setState(2);
    format(sheet, "C2", 9);
    const std::vector<uint8_t> expected = {
        1,    0,    0,    0,    2,   0,   0,    0,              // row, column
        5,    0,    0,    0,    '$', 'A', '1',  '+', '1',       // text
        1,    0,    0,    0,    '1',                            // value
        2,    0,    0,    0,    2,   0,                         // state
        33,   0,    0,    0,    1,   0,   27,   0,   0,   0,    // references: one
        0,    0,    0,    0,    0,   0,   0,    0,   3,   0, 0, // id, place, length, not deleted
        0xff, 0xff, 0xff, 0xff, 0,   0,   0x10, 1,              // one row up, column A
        0xff, 0xff, 0xff, 0xff, 0,   0,   0x10, 1,              //
        1,    0,    0,    0,    9};                             // format
    EXPECT_EQ(sheet.cell("C2")->toVector(), expected);
}

TEST(CellRecord, CutAnywhereItChangesNothing)
{
    Sheet sheet;
    sheet.set("C2", "$A1+1");
    format(sheet, "C2", 9);
    const std::vector<uint8_t> record = sheet.cell("C2")->toVector();
    XCell cell(4, 2);
    for (size_t size = 0; size < record.size(); ++size) {
        EXPECT_THROW(cell.fromVector(sheet.table, xstd::XByteCursor(record.data(), size),
                                     XCellImageMode::Everything, nullptr),
                     std::runtime_error);
        ASSERT_FALSE(cell.isUsed());
    }
    cell.fromVector(sheet.table, xstd::XByteCursor(record), XCellImageMode::Scripts, nullptr);
    EXPECT_EQ(cell.scriptText(true), "$A4+1");
}

TEST(CellRecord, KeepsAFormatThatNobodyKnows)
{
    Sheet sheet;
    std::vector<uint8_t> format = {8, 0, 0, 0, 0xff, 0xff, 2, 0, 10, 0, 0, 0, 42, 43};
    XCell source(0, 0);
    source.setText_(sheet.table, "5");
    XCell cell(0, 0);
    xstd::XByteWriter record;
    const std::vector<uint8_t> plain = source.toVector();
    record.putRaw(plain.data(), plain.size() - 4);
    record.putBytes(format);
    cell.fromVector(sheet.table, xstd::XByteCursor(record.bytes()), XCellImageMode::Everything,
                    nullptr);
    EXPECT_EQ(cell.valueText(), "5.00");
    EXPECT_EQ(cell.toVector(), record.bytes());
}
