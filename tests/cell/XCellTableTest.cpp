#include "Sheet.h"

#include <gtest/gtest.h>

using huge::XCell;
using huge::XCellTable;

namespace {

bool reads(Sheet& sheet, const char* name, const char* reader)
{
    const xstd::XPoint at = Sheet::point(name);
    for (const huge::XCellRange* range : sheet.table.rangeTree().getRanges(at.row, at.col)) {
        if (range->cell == sheet.cell(reader))
            return true;
    }
    return false;
}

XCell* format(Sheet& sheet, const char* name, int number)
{
    sheet.force(name)->swapExtend(std::make_unique<TestExtend>(number));
    return sheet.cell(name);
}

int formatOf(Sheet& sheet, const char* name)
{
    XCell* cell = sheet.cell(name);
    return cell && cell->extend() ? static_cast<TestExtend*>(cell->extend())->number : 0;
}

} // namespace

TEST(TableStore, GrowsToTheCellThatIsAskedFor)
{
    Sheet sheet;
    EXPECT_EQ(sheet.table.cellAt(5, 7), nullptr);
    EXPECT_EQ(sheet.table.cellAt(-1, -1), nullptr);
    XCell* cell = sheet.table.forceCell(5, 7);
    EXPECT_EQ(sheet.table.forceCell(5, 7), cell);
    EXPECT_EQ(sheet.table.cellAt(5, 6), nullptr);
    sheet.table.deleteCell(5, 7);
    EXPECT_EQ(sheet.table.cellAt(5, 7), nullptr);
    EXPECT_EQ(sheet.table.maxRow(), 5);
    EXPECT_EQ(sheet.table.maxCol(), 7);
}

TEST(TableStore, PuttingLinksTheNewCellAndUnlinksTheOld)
{
    Sheet sheet;
    sheet.set("A1", "B1");
    sheet.set("A2", "B2");
    auto moving = sheet.table.putCell(1, 0, nullptr);
    sheet.table.unlinkCell(moving.get());
    auto old = sheet.table.putCell(0, 0, std::move(moving));
    EXPECT_FALSE(old->isLinked());
    EXPECT_TRUE(reads(sheet, "B2", "A1"));
    EXPECT_FALSE(reads(sheet, "B1", "A1"));
    EXPECT_EQ(sheet.table.linkedCells(), std::vector<XCell*>{sheet.cell("A1")});
    EXPECT_EQ(sheet.table.putCell(900, 9, nullptr), nullptr);
}

TEST(TableStore, TakingACellLeavesItsFormat)
{
    Sheet sheet;
    EXPECT_EQ(sheet.table.takeCell(0, 0), nullptr);
    EXPECT_EQ(sheet.cell("A1"), nullptr);
    sheet.set("A1", "B1");
    format(sheet, "A1", 3);
    const auto taken = sheet.table.takeCell(0, 0);
    EXPECT_EQ(taken->scriptText(true), "B1");
    EXPECT_FALSE(sheet.cell("A1")->hasContent());
    EXPECT_EQ(formatOf(sheet, "A1"), 3);
    EXPECT_TRUE(sheet.table.linkedCells().empty());
}

TEST(TableStore, EmptyingAndDeletingRectangles)
{
    Sheet sheet;
    for (const char* name : {"A1", "B1", "C1"}) {
        sheet.set(name, "D9");
        format(sheet, name, 1);
    }
    sheet.table.clearRects(Sheet::rects("A1:A9"));
    sheet.table.deleteRects(Sheet::rects("B1:B9"));
    EXPECT_FALSE(sheet.cell("A1")->hasContent());
    EXPECT_EQ(formatOf(sheet, "A1"), 1);
    EXPECT_EQ(sheet.cell("B1"), nullptr);
    EXPECT_EQ(sheet.table.linkedCells(), std::vector<XCell*>{sheet.cell("C1")});
}

TEST(TableStore, OneScriptServesAllLikeCells)
{
    Sheet sheet;
    sheet.set("B1", "A1 + 1");
    sheet.set("B2", "A2 + 1");
    sheet.set("B3", "A1 + 1");
    EXPECT_EQ(sheet.cell("B1")->script(), sheet.cell("B2")->script());
    EXPECT_NE(sheet.cell("B1")->script(), sheet.cell("B3")->script());
    EXPECT_EQ(sheet.cell("B1")->script().use_count(), 2);
    sheet.actions.reset(); // its snapshots hold scripts too
    sheet.table.deleteRects(Sheet::rects("B2:B3"));
    EXPECT_EQ(sheet.cell("B1")->script().use_count(), 1);
    sheet.table.clear();
    EXPECT_EQ(sheet.cell("B1"), nullptr);
    EXPECT_TRUE(sheet.table.linkedCells().empty());
}

TEST(TableStore, AnotherWorkingAreaKeepsTheReferencesFound)
{
    Sheet sheet;
    sheet.set("A1", "B1:B40");
    sheet.table.resizeMainRect(Sheet::rect("A1:C20"));
    EXPECT_TRUE(reads(sheet, "B20", "A1"));
    EXPECT_EQ(sheet.table.baseSize(), 4);
}

TEST(TableTransfer, ASnapshotOfCopiesComesBackAsItWas)
{
    Sheet sheet;
    sheet.set("A1", "B1 + 1");
    sheet.set("A2", "7");
    format(sheet, "A2", 4);
    const std::string before = sheet.dump();
    huge::XSavedCells saved;
    sheet.table.snapshot(saved, Sheet::rects("A1:A9"), {huge::optCopy});
    EXPECT_EQ(saved.size(), 2u);
    sheet.set("A1", "9");
    sheet.table.deleteCell(1, 0);
    sheet.set("A5", "new");
    const XCell* kept = saved.begin()->second.get();
    sheet.table.restore(saved, Sheet::rects("A1:A9"), {huge::optTake});
    EXPECT_EQ(sheet.cell("A1"), kept);
    EXPECT_EQ(saved.begin()->second, nullptr);
    EXPECT_EQ(sheet.cell("A5"), nullptr);
    EXPECT_EQ(formatOf(sheet, "A2"), 4);
    EXPECT_EQ(sheet.dump(), before);
}

TEST(TableTransfer, TakenCellsLeaveTheTableAndCopiesCanComeBackTwice)
{
    Sheet sheet;
    sheet.set("A1", "B1 + 1");
    const std::string before = sheet.dump();
    huge::XSavedCells saved;
    sheet.table.snapshot(saved, Sheet::rects("A1:B2"), {huge::optTake});
    EXPECT_EQ(sheet.cell("A1"), nullptr);
    EXPECT_TRUE(sheet.table.linkedCells().empty());
    for (int round = 0; round < 2; ++round) {
        sheet.table.restore(saved, Sheet::rects("A1:B2"), {huge::optCopy});
        EXPECT_EQ(sheet.dump(), before);
    }
}

TEST(TableTransfer, PointersAndCollectionsFilterByReferences)
{
    Sheet sheet;
    sheet.set("B1", "1");
    sheet.set("A2", "B1");
    sheet.set("A1", "2");
    EXPECT_EQ(sheet.table.collectCells(Sheet::rects("A1:C3"), {huge::optAll}),
              (std::vector<XCell*>{sheet.cell("A1"), sheet.cell("B1"), sheet.cell("A2")}));
    huge::XCellPointers pointers;
    sheet.table.snapshot(pointers, Sheet::rects("A1:C3"), {huge::optPointer, huge::optScriptOnly});
    ASSERT_EQ(pointers.size(), 1u);
    EXPECT_EQ(pointers.begin()->second, sheet.cell("A2"));
}

TEST(TableTransfer, FormatsAreSavedApartFromContent)
{
    Sheet sheet;
    sheet.set("A1", "1");
    format(sheet, "A1", 1);
    format(sheet, "A2", 2);
    huge::XSavedExtends saved;
    sheet.table.snapshotExtends(saved, Sheet::rects("A1:A4"), {huge::optCopy});
    EXPECT_EQ(formatOf(sheet, "A1"), 1);
    format(sheet, "A1", 8);
    format(sheet, "A3", 8);
    sheet.table.deleteCell(1, 0);
    sheet.table.restoreExtends(saved, Sheet::rects("A1:A4"), {huge::optTake});
    EXPECT_EQ(formatOf(sheet, "A1"), 1);
    EXPECT_EQ(formatOf(sheet, "A2"), 2);
    EXPECT_EQ(formatOf(sheet, "A3"), 0);
    EXPECT_EQ(sheet.value("A1"), "1");
    sheet.table.snapshotExtends(saved, Sheet::rects("A1"), {huge::optTake});
    EXPECT_EQ(formatOf(sheet, "A1"), 0);
}

TEST(TableTransfer, SavedReferencesGoBackWithinTheLimit)
{
    for (const int option : {huge::optCopy, huge::optTake}) {
        Sheet sheet;
        huge::XSavedRanges saved;
        for (const char* name : {"A1", "A2"}) {
            sheet.set(name, "C1");
            saved[Sheet::point(name)] =
                std::make_unique<huge::XCellRanges>(*sheet.cell(name)->ranges());
            sheet.table.unlinkCell(sheet.cell(name));
            sheet.cell(name)->ranges()->shift(4, 0, true);
            sheet.table.linkCell(sheet.cell(name));
        }
        sheet.table.swapRangesBack(saved, Sheet::rects("A2:B9"), {option});
        EXPECT_EQ(sheet.source("A1"), "C5");
        EXPECT_EQ(sheet.source("A2"), "C1");
        EXPECT_TRUE(reads(sheet, "C1", "A2") && !reads(sheet, "C5", "A2"));
        EXPECT_EQ(saved[Sheet::point("A2")] == nullptr, option == huge::optTake);
    }
}

TEST(TableTransfer, ACopyKeepsWhatTheOptionLeavesAlone)
{
    struct Row {
        int option;
        const char* source;
        const char* value;
        int format;
    };
    for (const Row& row :
         {Row{huge::optPlain, "D5 + 1", "1", 1}, Row{huge::optValueOnly, "", "1", 2},
          Row{huge::optScriptOnly, "D5 + 1", "1", 2}}) {
        Sheet sheet;
        sheet.set("A1", "B1 + 1");
        format(sheet, "A1", 1);
        sheet.set("C5", "77");
        format(sheet, "C5", 2);
        XCell* copy = sheet.table.putCopy(sheet.cell("A1"), 4, 2, {row.option});
        EXPECT_EQ(copy, sheet.cell("C5"));
        EXPECT_EQ(sheet.source("C5"), row.source);
        EXPECT_EQ(sheet.value("C5"), row.value);
        EXPECT_EQ(formatOf(sheet, "C5"), row.format);
        EXPECT_EQ(reads(sheet, "D5", "C5"), row.option != huge::optValueOnly);
        sheet.table.putCopy(nullptr, 4, 2, {row.option});
        EXPECT_EQ(sheet.cell("C5") == nullptr, row.option == huge::optPlain);
        EXPECT_FALSE(reads(sheet, "D5", "C5"));
        EXPECT_EQ(sheet.table.putCopy(nullptr, 999, 9, {row.option}), nullptr);
    }
}

TEST(TableTransfer, AMoveKeepsTheReferences)
{
    struct Row {
        int option;
        const char* source;
        int format;
        bool sourceStays;
    };
    for (const Row& row :
         {Row{huge::optPlain, "B1 + 1", 1, false}, Row{huge::optValueOnly, "", 2, true},
          Row{huge::optScriptOnly, "B1 + 1", 2, true}}) {
        Sheet sheet;
        sheet.set("A1", "B1 + 1");
        format(sheet, "A1", 1);
        format(sheet, "C5", 2);
        sheet.table.moveCell(0, 0, 4, 2, {row.option});
        EXPECT_EQ(sheet.source("C5"), row.source);
        EXPECT_EQ(sheet.value("C5"), "1");
        EXPECT_EQ(formatOf(sheet, "C5"), row.format);
        EXPECT_EQ(sheet.cell("C5")->row(), 4);
        EXPECT_EQ(sheet.cell("A1") != nullptr, row.sourceStays);
        EXPECT_EQ(sheet.value("A1"), "");
        EXPECT_EQ(sheet.table.linkedCells().size(), row.option == huge::optValueOnly ? 0u : 1u);
        sheet.table.moveCell(9, 9, 4, 2, {row.option}); // nothing moves onto it
        EXPECT_EQ(sheet.value("C5"), "");
    }
}

TEST(TableTransfer, ABlockThatOverlapsItsDestinationMovesWhole)
{
    struct Row {
        int32_t dRow, dCol;
    };
    for (const Row& row : {Row{1, 0}, Row{-1, 0}, Row{0, 1}, Row{0, -1}, Row{1, -1}, Row{-1, 1}}) {
        Sheet sheet;
        for (int32_t r = 2; r <= 4; ++r) {
            for (int32_t c = 2; c <= 4; ++c) {
                if (r != 3 || c != 3) // a hole moves like a cell
                    sheet.set(huge::cellName(r, c), std::to_string(10 * r + c).c_str());
            }
        }
        sheet.table.moveRects(Sheet::rects("C3:E5"), row.dRow, row.dCol, {huge::optPlain});
        for (int32_t r = 2; r <= 4; ++r) {
            for (int32_t c = 2; c <= 4; ++c) {
                const std::string expected = r == 3 && c == 3 ? "" : std::to_string(10 * r + c);
                EXPECT_EQ(sheet.value(huge::cellName(r + row.dRow, c + row.dCol)), expected);
            }
        }
        EXPECT_EQ(sheet.table.collectCells(Sheet::rects("A1:Z99"), {huge::optAll}).size(), 8u);
    }
}

TEST(TableExtent, TextsValuesAndFormatsCountAsUsed)
{
    Sheet sheet;
    EXPECT_EQ(sheet.table.lastUsedRow(Sheet::rect("A1:Z99")), 0);
    sheet.set("B2", "null"); // a text whose value is null
    EXPECT_EQ(sheet.table.lastUsedRow(Sheet::rect("A1:Z99")), 1);
    format(sheet, "C7", 1);
    sheet.force("D9"); // holds nothing
    EXPECT_EQ(sheet.table.lastUsedRow(Sheet::rect("A1:Z99")), 6);
    EXPECT_EQ(sheet.table.lastUsedCol(Sheet::rect("A1:Z99")), 2);
    EXPECT_EQ(sheet.table.lastUsedCol(Sheet::rect("A1:Z5")), 1);
    EXPECT_EQ(sheet.table.lastUsedRow(Sheet::rect("D1:Z99")), 0);
}
