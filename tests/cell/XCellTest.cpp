#include "Sheet.h"
#include "common/XStop.h"

#include <gtest/gtest.h>

using huge::XCell;
using huge::XCellHold;

TEST(CellText, EveryLeadingEqualsSignIsDroppedAndNeverStored)
{
    struct Row {
        const char* typed;
        const char* source;
        const char* value;
    };
    for (const Row& row : {Row{"=1+2", "1+2", "3"}, Row{"1+2", "1+2", "3"}, Row{"===7", "7", "7"},
                           Row{"=", "", ""}, Row{"==A1 + 1", "A1 + 1", "1"}}) {
        Sheet sheet;
        sheet.set("B2", row.typed);
        EXPECT_EQ(sheet.source("B2"), row.source) << row.typed;
        EXPECT_EQ(sheet.value("B2"), row.value) << row.typed;
    }
}

TEST(CellText, ACellHasExactlyOneOfTextAndScript)
{
    Sheet sheet;
    sheet.set("A1", "5");
    EXPECT_TRUE(sheet.cell("A1")->constantText() && !sheet.cell("A1")->script());
    sheet.set("A1", "B1");
    EXPECT_TRUE(!sheet.cell("A1")->constantText() && sheet.cell("A1")->script());
    ASSERT_TRUE(sheet.cell("A1")->ranges());
    EXPECT_EQ(sheet.cell("A1")->ranges()->size(), 1u);
    sheet.refused("A1", "1 +");
    EXPECT_TRUE(sheet.cell("A1")->constantText() && !sheet.cell("A1")->script());
    EXPECT_FALSE(sheet.cell("A1")->ranges());
    sheet.set("A1", "");
    EXPECT_FALSE(sheet.cell("A1")->hasContent());
}

TEST(CellText, OneThatReadsNoCellIsCalculatedAtOnce)
{
    Sheet sheet;
    XCell* cell = sheet.force("C4");
    cell->setText_(sheet.table, "r:5 + c:1 + n:1");
    EXPECT_EQ(cell->valueText(), "7");
    cell->setText_(sheet.table, "A1 + 1");
    EXPECT_EQ(cell->value().object(), nullptr); // waits for the recalculation
}

TEST(CellText, FailsWithTheCellInTheChainAndStays)
{
    struct Row {
        const char* text;
        const char* part;
    };
    for (const Row& row : {Row{"1 / 0", "div with zero"}, Row{"1 +", "ScriptCompile Error"}}) {
        Sheet sheet;
        XCell* cell = sheet.force("C2");
        try {
            cell->setText_(sheet.table, row.text);
            FAIL() << row.text;
        } catch (const xstd::XExceptionItems& failure) {
            const xstd::XString text = failure.toString();
            for (const char* part : {row.part, "XCell::setText Error", "cellRow", "cellCol",
                                     "cellName", "C2", row.text})
                EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
            EXPECT_EQ(cell->valueText(), "valueError: " + text);
        }
        EXPECT_EQ(cell->text(true), row.text);
        EXPECT_EQ(cell->value().typeId(), 13);
        const xstd::XString shown = cell->valueText();
        cell->calc_(); // a failed text is not run again
        EXPECT_EQ(cell->valueText(), shown);
        EXPECT_EQ(cell->hold(), XCellHold::Failed);
    }
}

TEST(CellText, ABaseBesideTheCellMovesRelativeReferences)
{
    Sheet sheet;
    XCell* cell = sheet.force("C3");
    cell->setText_(sheet.table, "A1 + $A$1", 0, 1); // as it stands in B1
    EXPECT_EQ(cell->scriptText(true), "B3 + $A$1");
}

TEST(CellText, ACellWithAValueAloneShowsIt)
{
    XCell cell(0, 0);
    cell.setValue(huge::HugeVariant(int64_t(12)));
    EXPECT_EQ(cell.text(true), "12");
    EXPECT_EQ(cell.scriptText(true), "");
}

TEST(CellText, TheFormatActsOnTheDisplayText)
{
    Sheet sheet;
    sheet.set("A1", "16");
    EXPECT_EQ(sheet.value("A1"), "16");
    auto extend = std::make_unique<TestExtend>(1);
    extend->rule().radix = 16;
    sheet.cell("A1")->swapExtend(std::move(extend));
    EXPECT_EQ(sheet.value("A1"), "0x10");
    sheet.set("A1", ""); // the format stays
    sheet.set("A1", "17");
    EXPECT_EQ(sheet.value("A1"), "0x11");
}

TEST(CellCopy, MovesRelativeReferencesAndSharesTheScript)
{
    Sheet sheet;
    sheet.set("B2", "A1 + $A$1 + A$1 + $A1");
    XCell copy(*sheet.cell("B2"), 2, 3);
    EXPECT_EQ(copy.scriptText(true), "C2 + $A$1 + C$1 + $A2");
    EXPECT_EQ(copy.script().use_count(), 2);
    for (const huge::XCellRange& range : *copy.ranges())
        EXPECT_EQ(range.cell, &copy);
    XCell same(0, 0);
    same = copy;
    EXPECT_EQ(same.row(), 2);
    EXPECT_EQ(same.scriptText(true), "C2 + $A$1 + C$1 + $A2");
    EXPECT_EQ(same.ranges()->begin()->cell, &same);
}

TEST(CellCopy, ScriptAloneTakesTextAndValueAlong)
{
    Sheet sheet;
    sheet.set("A1", "=2+3");
    sheet.set("A2", "B1 + $B$1");
    XCell dest(4, 2);
    dest.swapExtend(std::make_unique<TestExtend>(9));
    dest.assignScriptFrom(sheet.cell("A1"), true);
    EXPECT_EQ(dest.scriptText(true), "2+3");
    EXPECT_EQ(dest.valueText(), "5");
    dest.assignScriptFrom(sheet.cell("A2"), true); // absolute references move as well
    EXPECT_EQ(dest.scriptText(true), "D4 + $D$4");
    EXPECT_FALSE(dest.constantText());
    dest.assignScriptFrom(sheet.cell("A2"), false);
    EXPECT_EQ(dest.scriptText(true), "B1 + $B$1");
    dest.assignScriptFrom(nullptr, false);
    EXPECT_FALSE(dest.hasContent());
    EXPECT_TRUE(dest.extend());
}

TEST(CellRanges, AreReplacedAndMovedWithTheirOwner)
{
    Sheet sheet;
    sheet.set("B2", "A1 + $A$1");
    XCell cell(4, 4);
    cell.setRangesShifted(*sheet.cell("B2")->ranges(), 1, 1);
    EXPECT_EQ((*cell.ranges())[0].rect(), Sheet::rect("D4"));
    EXPECT_EQ((*cell.ranges())[1].rect(), Sheet::rect("A1"));
    EXPECT_EQ(cell.findRange(1), &(*cell.ranges())[1]);
    EXPECT_EQ(cell.findRange(2), nullptr);
    cell.move_(1, 0, true);
    EXPECT_EQ(cell.row(), 5);
    EXPECT_EQ((*cell.ranges())[1].rect(), Sheet::rect("A2"));
    EXPECT_EQ(cell.swapRanges(nullptr)->size(), 2u);
    EXPECT_EQ(cell.findRange(0), nullptr);
}

TEST(CellClosure, IsCalledFromAnotherCell)
{
    Sheet sheet;
    sheet.set("A1", "[x] { x * 2 }");
    sheet.set("B1", "(A1.value)(5)");
    EXPECT_EQ(sheet.value("B1"), "10");
    sheet.set("C1", "3");
    sheet.set("A1", "[x] { x * C1 }");
    EXPECT_EQ(sheet.value("B1"), "15");
    sheet.set("C1", "4");
    EXPECT_EQ(sheet.value("B1"), "20");
}

TEST(CellClosure, SurvivesItsCellAndFindsTheReferenceGone)
{
    Sheet sheet;
    sheet.set("C1", "3");
    sheet.set("A1", "[x] { C1 }");
    huge::HugeVariant closure = sheet.cell("A1")->value();
    huge::HugeVariant argument(int64_t(1));
    sheet.table.deleteCell(0, 0);
    sheet.table.scripts().clear();
    const huge::HugeVariant result = closure.object()->exec(&argument, 1);
    EXPECT_EQ(result.toString(), "refError:range is invalid");
}

TEST(CellClosure, DoesNotFindTheReferencesOfALaterText)
{
    Sheet sheet;
    sheet.set("C1", "3");
    sheet.set("D1", "4");
    sheet.set("A1", "[x] { C1 }");
    const huge::HugeVariant closure = sheet.cell("A1")->value();
    sheet.set("A1", "[x] { D1 }");
    huge::HugeVariant argument(int64_t(1));
    EXPECT_EQ(closure.exec(&argument, 1).toString(), "refError:range is invalid");
}

TEST(CellFailure, KeepsNoSecondCopyOfALongText)
{
    Sheet sheet;
    const std::string text = "1 / 0 // " + std::string(1000000, 'x');
    EXPECT_THROW(sheet.set("A1", text.c_str()), xstd::XExceptionItems);
    EXPECT_EQ(sheet.cell("A1")->text(true), text);
    const xstd::XString shown = sheet.value("A1");
    EXPECT_EQ(shown.rfind("valueError: mess: div with zero", 0), 0u);
    EXPECT_LT(shown.size(), 70000u);
}
