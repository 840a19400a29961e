#include "Sheet.h"
#include "cell/XCellActionCopyRect.h"
#include "cell/XCellActionInsert.h"
#include "cell/XCellActionMoveRect.h"
#include "cell/XCellActionRemove.h"
#include "cell/XCellActionTranspose.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

using namespace huge;
using Type = xstd::XUndoableActionType;
using Make = std::function<std::unique_ptr<XCellAction>(XCellTable*)>;

namespace {

template <class Action, class... Args>
Make make(Args... args)
{
    return [=](XCellTable* table) { return std::make_unique<Action>(table, args...); };
}

Make move(const char* src, int32_t dRow, int32_t dCol, int option = optPlain)
{
    return make<XCellActionMoveRect>(Sheet::rects(src), dRow, dCol, xstd::XOptions{option});
}

Make copy(const char* src, const char* dest, int option = optPlain)
{
    return make<XCellActionCopyRect>(Sheet::rects(src), Sheet::rects(dest), xstd::XOptions{option});
}

xstd::XString refusal(const std::function<void()>& step)
{
    try {
        step();
    } catch (const xstd::XExceptionItems& failure) {
        return failure.toString();
    }
    return "";
}

bool has(const xstd::XString& text, const char* part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

TEST(References, FollowWhatMoves)
{
    struct Row {
        const char* cell;
        const char* text;
        Make action;
        const char* after;  // where the cell is then
        const char* source; // and what it reads
    };
    const std::vector<Row> rows = {
        {"C1", "A5", make<XCellActionInsertRow>(1, 1), "C1", "A6"},
        {"C1", "$A$5", make<XCellActionInsertRow>(1, 1), "C1", "$A$6"},
        {"C1", "A1:A10", make<XCellActionInsertRow>(4, 1), "C1", "A1:A11"},
        {"C1", "A$1:A$10", make<XCellActionInsertRow>(4, 1), "C1", "A$1:A$10"},
        {"C1", "A1:A10", make<XCellActionInsertRow>(0, 2), "C3", "A3:A12"},
        {"C1", "r:5", make<XCellActionInsertRow>(1, 1), "C1", "r:5"},
        {"C3", "A1:D1", make<XCellActionInsertCol>(1, 2), "E3", "A1:F1"},
        {"C1", "A5", make<XCellActionRemoveRow>(4, 1), "C1", "#REF#"},
        {"C1", "A1:A10", make<XCellActionRemoveRow>(2, 2), "C1", "A1:A8"},
        {"C1", "A2:A11", make<XCellActionRemoveRow>(1, 10), "C1", "#REF#"},
        {"C1", "A2:A5", make<XCellActionRemoveRow>(3, 2), "C1", "A2:A3"},
        {"C9", "A2:A6", make<XCellActionRemoveRow>(0, 3), "C6", "A1:A3"},
        {"C9", "A$2:A$6", make<XCellActionRemoveRow>(0, 3), "C6", "A$1:A$3"},
        {"C1", "A$2:A$5", make<XCellActionRemoveRow>(3, 2), "C1", "A$2:A$3"},
        {"H1", "B1:E1", make<XCellActionRemoveCol>(3, 3), "E1", "B1:C1"},
        {"C1", "A1:A3", make<XCellActionInsertRowRect>(Sheet::rect("A2:A2")), "C1", "A1:A4"},
        {"C1", "A1:B3", make<XCellActionInsertRowRect>(Sheet::rect("A2:A2")), "C1", "A1:B3"},
        {"C1", "A1:A5", make<XCellActionRemoveRowRect>(Sheet::rect("A2:A3")), "C1", "A1:A3"},
        {"C1", "A4:F4", make<XCellActionRemoveColRect>(Sheet::rect("B4:C4")), "C1", "A4:D4"},
        {"C1", "A4:F4", make<XCellActionInsertColRect>(Sheet::rect("B4:C5")), "C1", "A4:H4"},
        {"B1", "A1", move("A1", 2, 2), "B1", "C3"},
        {"B1", "C3", move("A1", 2, 2), "B1", "#REF#"},
        {"A1", "B1", move("A1", 2, 2), "C3", "B1"},
        {"B1", "A1:A3", move("A3", 2, 0), "B1", "A1:A5"},
        {"B1", "A1:A3", move("A3", 0, 2), "B1", "A1:A3"},
        {"B1", "A1:A3", move("A1:A3", 2, 3), "B1", "D3:D5"},
        {"B1", "A2", make<XCellActionTranspose>(Sheet::rect("A1:C2")), "A2", "B1"},
        {"B1", "D9", make<XCellActionTranspose>(Sheet::rect("A1:C2")), "A2", "D9"},
        {"B1", "r:2 + c:3 + n:4", make<XCellActionTranspose>(Sheet::rect("A1:C2")), "A2",
         "c:2 + r:3 + n:4"},
        {"F1", "A3", make<XCellActionTranspose>(Sheet::rect("A1:C2")), "F1", "#REF#"},
        // beyond the working area, which ends at row 1025
        {"C1", "A1:A1048576", make<XCellActionInsertRow>(4, 1), "C1", "A1:A1048576"},
        {"C1", "A1:A2000", make<XCellActionInsertRow>(4, 1), "C1", "A1:A2001"},
        {"C1", "A1:A1048576", make<XCellActionInsertRow>(0, 1), "C2", "A2:A1048576"},
    };
    for (const Row& row : rows) {
        Sheet sheet;
        sheet.set(row.cell, row.text);
        const std::string before = sheet.state();
        sheet.actions.do_(row.action(&sheet.table));
        EXPECT_EQ(sheet.source(row.after), row.source) << row.text;
        EXPECT_EQ(has(sheet.value(row.after), "range is invalid"),
                  std::string(row.source) == "#REF#");
        sheet.actions.undo_();
        EXPECT_EQ(sheet.state(), before);
        sheet.actions.redo_();
        EXPECT_EQ(sheet.source(row.after), row.source) << row.text;
    }
}

// A range is a set of positions, each of which moves or goes on its own; the range afterwards is
// the smallest one around what is left of them.
TEST(References, AgreeWithPositionsThatMoveOneByOne)
{
    std::mt19937 random(4711);
    const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    for (int round = 0; round < 600; ++round) {
        const int top = below(12);
        const int left = below(8);
        const xstd::XRect range(top, left, top + below(6), left + below(6));
        const int first = below(14);
        const int count = 1 + below(4);
        const bool byRows = below(2) == 0;
        const bool inserts = below(2) == 0;
        const auto moved = [&](xstd::XPoint& at) {
            int32_t& place = byRows ? at.row : at.col;
            if (place < first)
                return true;
            const bool survives = inserts || place >= first + count;
            place += inserts ? count : -count;
            return survives;
        };
        xstd::XMergedRects kept;
        range.forEach([&](int32_t row, int32_t col) {
            xstd::XPoint at{row, col};
            if (moved(at))
                kept.add_(xstd::XRect(at.row, at.col, at.row, at.col));
            return false;
        });
        Sheet sheet;
        const std::string name =
            cellName(range.top, range.left) + ":" + cellName(range.bottom, range.right);
        sheet.set("AZ900", ("sum(" + name + ")").c_str());
        XCellRange* reference = &(*sheet.cell("AZ900")->ranges())[0];
        const Make action = inserts ? (byRows ? make<XCellActionInsertRow>(first, count)
                                              : make<XCellActionInsertCol>(first, count))
                                    : (byRows ? make<XCellActionRemoveRow>(first, count)
                                              : make<XCellActionRemoveCol>(first, count));
        sheet.actions.do_(action(&sheet.table));
        ASSERT_EQ(reference->ref.isDeleted, kept.isEmpty());
        if (!kept.isEmpty()) {
            ASSERT_EQ(reference->rect(), kept.boundRect()) << name << first << " " << count;
        }
    }
}

TEST(Copying, AdaptsReferencesAndRepeatsTheSource)
{
    Sheet sheet;
    sheet.set("B1", "A1 + $A$9");
    sheet.set("B2", "7");
    sheet.actions.do_(copy("B1:B2", "C3:D5")(&sheet.table));
    EXPECT_EQ(sheet.source("C3"), "B3 + $A$9");
    EXPECT_EQ(sheet.source("D5"), "C5 + $A$9");
    EXPECT_EQ(sheet.source("D4"), "7");
    sheet.actions.do_(copy("B1", "A1")(&sheet.table)); // left of column A
    EXPECT_EQ(sheet.source("A1"), "#REF# + $A$9");
}

TEST(Rings, ClosedByAShiftLoseTheirLastCell)
{
    struct Row {
        std::vector<std::pair<const char*, const char*>> cells;
        Make action;
        const char* heldOut;
        const char* path;
        std::vector<const char*> details;
    };
    const std::vector<Row> rows = {
        {{{"A5", "sum(A$1:A$4)"}}, make<XCellActionRemoveRow>(1, 1), "A4", "A4->A4", {"removeRow"}},
        {{{"C1", "sum(A$1:A$4)"}, {"A5", "C1"}},
         make<XCellActionRemoveRowRect>(Sheet::rect("A2:B2")),
         "A4",
         "A4->C1->A4",
         {"removeRowRect", "rect"}},
        {{{"D1", "sum(C1:C5)"}, {"A1", "D1"}},
         move("A1", 2, 2),
         "C3",
         "C3->D1->C3",
         {"moveRect", "cyclicPath", "srcRect", "destRect", "{tl:(0, 0), br:(0, 0)}"}},
        {{{"A1", "B1"}, {"B3", "A3"}},
         copy("A1", "A3"),
         "A3",
         "A3->B3->A3",
         {"copyRect", "cyclicPath"}},
        {{{"B1", "C1"}, {"C1", "A5"}, {"A2", "sum(B$1:C$1)"}},
         make<XCellActionTranspose>(Sheet::rect("A1:B2")),
         "B1",
         "B1->B1",
         {"transpose", "rect"}},
    };
    for (const Row& row : rows) {
        Sheet sheet;
        for (const auto& [name, text] : row.cells)
            sheet.set(name, text);
        const std::string before = sheet.state();
        const xstd::XString failure = refusal([&] { sheet.actions.do_(row.action(&sheet.table)); });
        EXPECT_TRUE(sheet.table.findCycle().empty());
        EXPECT_TRUE(has(failure, ("There is cyclic dependence: " + std::string(row.path)).c_str()))
            << failure;
        for (const char* detail : row.details)
            EXPECT_TRUE(has(failure, detail)) << detail << failure;
        EXPECT_EQ(sheet.cell(row.heldOut)->hold(), XCellHold::Ring);
        EXPECT_TRUE(has(sheet.value(row.heldOut), row.path));
        sheet.actions.undo_();
        EXPECT_EQ(sheet.state(), before);
    }
}

TEST(Rings, ReferencesOfACellThatIsHeldOutAreRewritten)
{
    Sheet sheet;
    sheet.set("B2", "A2");
    sheet.refused("A2", "B2 + sum(A5:A6)");
    sheet.actions.do_(make<XCellActionInsertRow>(0, 1)(&sheet.table));
    EXPECT_EQ(sheet.source("A3"), "B3 + sum(A6:A7)");
    EXPECT_EQ(sheet.cell("A3")->hold(), XCellHold::Ring);
    sheet.actions.do_(move("A6:A7", 0, 3, optScriptOnly)(&sheet.table));
    EXPECT_EQ(sheet.source("A3"), "B3 + sum(D6:D7)");
    sheet.actions.undo_();
    sheet.actions.undo_();
    EXPECT_EQ(sheet.source("A2"), "B2 + sum(A5:A6)");
    sheet.set("A5", "4");
    sheet.set("B2", "1");
    sheet.set("A2", "B2 + sum(A5:A6)");
    EXPECT_EQ(sheet.value("A2"), "5");
}

TEST(Growth, GoesInStepsOf16UpToTheLimits)
{
    Sheet sheet;
    sheet.table.setMainRect(xstd::XRect(0, 0, 15, 15), 4);
    make<XCellActionInsertRow>(3, 20)(&sheet.table); // nothing shifts, and yet there is room
    EXPECT_EQ(sheet.table.mainRect(), xstd::XRect(0, 0, 32, 15));
    sheet.table.setMainRect(xstd::XRect(0, 0, 31, 15), 4);
    sheet.set("A32", "1");
    sheet.set("B1", "A32 + 1");
    sheet.actions.do_(make<XCellActionInsertRow>(0, 1)(&sheet.table));
    EXPECT_EQ(sheet.table.mainRect(), xstd::XRect(0, 0, 32, 15));
    sheet.set("A33", "5"); // found as what it reads
    EXPECT_EQ(sheet.value("B2"), "6");
    sheet.actions.do_(move("A33", 1, 16)(&sheet.table));
    EXPECT_EQ(sheet.table.mainRect(), xstd::XRect(0, 0, 48, 16));
    sheet.actions.do_(copy("B2", "A1048576")(&sheet.table));
    EXPECT_EQ(sheet.table.mainRect().bottom, XCellPos::maxRow);
    EXPECT_EQ(sheet.source("A1048576"), "#REF# + 1"); // P34, 1048574 rows down
}

TEST(Growth, BeyondTheLimitsIsRefusedBeforeAnythingChanges)
{
    Sheet sheet;
    sheet.set("A1", "1");
    sheet.table.resizeMainRect(xstd::XRect(0, 0, XCellPos::maxRow, 20));
    sheet.set("A1048576", "2");
    const std::string before = sheet.state();
    const xstd::XRect main = sheet.table.mainRect();
    const size_t steps = sheet.actions.undoCount();
    const char* const ends = "The table ends at row 1048576 and column AVLG";
    for (const auto& [action, text] : std::vector<std::pair<Make, const char*>>{
             {make<XCellActionInsertRow>(3, 1), ends},
             {make<XCellActionInsertRowRect>(Sheet::rect("A1:A2")), ends},
             {move("A1", XCellPos::maxRow + 1, 0), ends},
             {move("A1", 0, XCellPos::maxCol + 1), ends},
             {move("A1", -1, 0), "A cell lies above row 1 or left of column A"},
             {make<XCellActionTranspose>(xstd::XRect(5, 0, 5, 20)), ""},
             {make<XCellActionTranspose>(xstd::XRect(0, 0, 40000, 0)), ends},
             {copy("A1", "A1:B1"), "Destination and source rectangles overlap"}}) {
        const xstd::XString failure = refusal([&] { action(&sheet.table); });
        EXPECT_TRUE(has(failure, text)) << failure;
        EXPECT_EQ(failure.empty(), text[0] == 0);
    }
    EXPECT_EQ(sheet.state(), before);
    EXPECT_EQ(sheet.table.mainRect(), main);
    EXPECT_EQ(sheet.actions.undoCount(), steps);
    EXPECT_TRUE(has(refusal([&] {
                        sheet.table.copyRects(Sheet::rects("A1:A2"), Sheet::rects("A2"),
                                              {optPlain});
                    }),
                    "The target and source regions cannot overlap"));
}

TEST(InsertedCells, LookLikeThoseThatTheyPushAway)
{
    Sheet sheet;
    sheet.set("A2", "5");
    sheet.cell("A2")->swapExtend(std::make_unique<TestExtend>(4));
    sheet.cell("A2")->setValue(HugeVariant(int64_t(6))); // as if drawn at random
    sheet.actions.do_(make<XCellActionInsertRow>(1, 1)(&sheet.table));
    EXPECT_EQ(static_cast<TestExtend*>(sheet.cell("A2")->extend())->number, 4);
    EXPECT_FALSE(sheet.cell("A2")->hasContent());
    EXPECT_EQ(sheet.value("A3"), "6");
    sheet.actions.undo_();
    EXPECT_EQ(sheet.value("A2"), "6");
    EXPECT_EQ(sheet.cell("A3"), nullptr);
}

TEST(ShiftActions, TellTheViewWhereToLook)
{
    struct Row {
        Make action;
        const char* selectDo;
        const char* selectUndo;
        const char* painted; // a position that must be among them
    };
    for (const Row& row : std::vector<Row>{
             {make<XCellActionInsertRow>(1, 2), "A2:IW3", "A2:IW3", "A11"},
             {make<XCellActionRemoveCol>(1, 1), "B1:B1025", "B1:B1025", "C9"},
             {make<XCellActionInsertColRect>(Sheet::rect("A9:A9")), "A9", "A9", "D9"},
             {make<XCellActionRemoveRowRect>(Sheet::rect("C8")), "C8", "C8", "C9"},
             {move("C9", 1, 1), "D10", "C9", "C9"},
             {make<XCellActionTranspose>(Sheet::rect("C8:C9")), "C8:D8", "C8:C9", "C9"}}) {
        Sheet sheet;
        sheet.set("A9", "1");
        sheet.set("C9", "2");
        const std::unique_ptr<XCellAction> action = row.action(&sheet.table);
        action->do_();
        EXPECT_EQ(action->selectRects(Type::Do), Sheet::rects(row.selectDo));
        const xstd::XPoint at = Sheet::point(row.painted);
        EXPECT_TRUE(action->paintRects(Type::Do).contains(at.row, at.col)) << row.painted;
        action->undo_();
        EXPECT_EQ(action->selectRects(Type::Undo), Sheet::rects(row.selectUndo));
    }
}
