#include "Sheet.h"

#include <gtest/gtest.h>

#include <random>

using huge::XCellHold;
using Type = xstd::XUndoableActionType;

namespace {

/// Opens what the frame offers to the actions that move cells.
class FrameProbe final : public huge::XCellAction {
public:
    using huge::XCellAction::lastUsedColWithRefs;
    using huge::XCellAction::lastUsedRowWithRefs;
    using huge::XCellAction::rectsOf;
    using huge::XCellAction::XCellAction;

    xstd::XUndoableAction* do_() override { return this; }
    xstd::XUndoableAction* undo_() override { return this; }
    xstd::XMergedRects selectRects(Type) const override { return {}; }
    xstd::XMergedRects changedRects(Type) const override { return {}; }
    xstd::XMergedRects calcRects(Type) const override { return {}; }
};

} // namespace

TEST(SetText, UndoAndRedoGiveBackContentAndReaders)
{
    Sheet sheet;
    sheet.set("B1", "A1 * 2");
    sheet.set("A1", "4");
    sheet.set("A1", "C1");
    sheet.set("C1", "6");
    EXPECT_EQ(sheet.value("B1"), "12");
    sheet.actions.undo_();
    sheet.actions.undo_();
    EXPECT_EQ(sheet.source("A1"), "4");
    EXPECT_EQ(sheet.value("B1"), "8");
    sheet.actions.undo_();
    EXPECT_EQ(sheet.cell("A1"), nullptr);
    for (int i = 0; i < 3; ++i)
        sheet.actions.redo_();
    EXPECT_EQ(sheet.value("B1"), "12");
}

TEST(SetText, EmptyAndNoneDoWhatTheySay)
{
    Sheet sheet;
    sheet.set("A1", "");
    EXPECT_EQ(sheet.cell("A1"), nullptr);
    sheet.set("A1", "5");
    sheet.set("A1", "none");
    EXPECT_EQ(sheet.value("A1"), "5");
    EXPECT_EQ(sheet.actions.undoCount(), 3u);
    sheet.set("A1", "");
    EXPECT_FALSE(sheet.cell("A1")->hasContent());
}

TEST(SetText, AFailureRaisesAfterItsReadersHaveSeenIt)
{
    for (const char* text : {"1 / 0", "1 +"}) {
        Sheet sheet;
        sheet.set("A1", "4");
        sheet.set("B1", "A1 + 1");
        EXPECT_FALSE(sheet.refused("A1", text).items().empty());
        EXPECT_TRUE(sheet.failed("A1"));
        EXPECT_TRUE(sheet.failed("B1"));
        sheet.actions.undo_();
        EXPECT_EQ(sheet.value("B1"), "5");
        EXPECT_THROW(sheet.actions.redo_(), xstd::XExceptionItems);
        EXPECT_TRUE(sheet.failed("B1"));
        sheet.set("A1", "1");
        EXPECT_EQ(sheet.value("B1"), "2");
    }
}

TEST(SetText, ARingIsRefusedWithItsPath)
{
    struct Row {
        std::vector<std::pair<const char*, const char*>> cells;
        const char* name;
        const char* text;
        const char* path;
    };
    const std::vector<Row> rows = {
        {{}, "A1", "=A1", "A1->A1"},
        {{{"B1", "A1"}}, "A1", "B1", "A1->B1->A1"},
        {{{"B1", "A1"}, {"C1", "B1"}}, "A1", "C1 + 1", "A1->B1->C1->A1"},
    };
    for (const Row& row : rows) {
        Sheet sheet;
        for (const auto& [name, text] : row.cells)
            sheet.set(name, text);
        sheet.set("A1", "4");
        const std::string before = sheet.dump();
        const xstd::XString failure = sheet.refused(row.name, row.text).toString();
        for (const std::string& part :
             {"There is a circular dependency: " + std::string(row.path), std::string("setText"),
              std::string("destRow"), std::string("destCol"), std::string(row.text)})
            EXPECT_NE(failure.find(part), std::string::npos) << part << "\n" << failure;
        EXPECT_FALSE(sheet.cell("A1")->isLinked());
        EXPECT_EQ(sheet.source("A1"), row.text[0] == '=' ? row.text + 1 : row.text);
        EXPECT_NE(sheet.value("A1").find(row.path), std::string::npos);
        EXPECT_TRUE(sheet.table.findCycle().empty());
        for (const auto& [name, text] : row.cells)
            EXPECT_TRUE(sheet.failed(name)) << text;
        sheet.actions.undo_();
        EXPECT_EQ(sheet.dump(), before);
    }
}

TEST(SetText, ACellThatIsHeldOutStaysSoUntilItsNextText)
{
    Sheet sheet;
    sheet.set("B1", "A1");
    sheet.refused("A1", "B1");
    const xstd::XString shown = sheet.value("A1");
    sheet.set("B1", "5"); // the ring is gone, and yet A1 waits for its text
    EXPECT_EQ(sheet.value("A1"), shown);
    sheet.set("C1", "A1 + 1"); // reading it does not run it
    EXPECT_EQ(sheet.value("A1"), shown);
    EXPECT_TRUE(sheet.failed("C1"));
    xstd::XMergedRects changed;
    sheet.table.recalc(changed, Sheet::rects("A1:C1"));
    EXPECT_EQ(sheet.value("A1"), shown);
    sheet.set("A1", "B1");
    EXPECT_EQ(sheet.value("C1"), "6");
    sheet.actions.undo_();
    EXPECT_EQ(sheet.value("A1"), shown);
    EXPECT_EQ(sheet.cell("A1")->hold(), XCellHold::Ring);
    EXPECT_FALSE(sheet.cell("A1")->isLinked());
}

TEST(SetText, UndoGivesBackTheTextOfASharedScript)
{
    Sheet sheet;
    sheet.set("B1", "A1 + 1 /* first */");
    sheet.set("B2", "A2 + 1 // second", true);
    EXPECT_EQ(sheet.source("B1"), "A1 + 1 // second");
    sheet.set("B3", "A3 + 1"); // another cell takes the source that stands
    EXPECT_EQ(sheet.source("B3"), "A3 + 1 // second");
    sheet.actions.undo_();
    sheet.actions.undo_();
    EXPECT_EQ(sheet.source("B1"), "A1 + 1 /* first */");
    sheet.actions.redo_();
    EXPECT_EQ(sheet.source("B1"), "A1 + 1 // second");
}

TEST(SetText, AConstantComesBackWithTheValueItHad)
{
    Sheet sheet;
    sheet.set("A1", "5");
    sheet.cell("A1")->setValue(huge::HugeVariant(int64_t(6))); // as if drawn at random
    sheet.set("A1", "7");
    sheet.actions.undo_();
    EXPECT_EQ(sheet.value("A1"), "6");
    xstd::XMergedRects changed;
    sheet.table.recalc(changed, Sheet::rects("A1")); // asked for, it runs
    EXPECT_EQ(sheet.value("A1"), "5");
}

TEST(SetText, TellsTheViewWhereToLook)
{
    Sheet sheet;
    sheet.set("C3", "B2 + 1");
    huge::XCellActionSetText action(&sheet.table, 1, 1, "4", false);
    EXPECT_EQ(action.focusRect(), Sheet::rect("B2"));
    action.setFocusRect(Sheet::rect("D4"));
    EXPECT_EQ(action.focusRect(), Sheet::rect("D4"));
    EXPECT_FALSE(action.canRollback());
    action.do_();
    EXPECT_EQ(action.selectRects(Type::Do).boundRect(), Sheet::rect("B2"));
    EXPECT_TRUE(action.paintRects(Type::Do).contains(2, 2));
    EXPECT_TRUE(action.paintRects(Type::Do).contains(1, 1));
    action.rollback_();
    EXPECT_EQ(sheet.value("C3"), "1");
}

TEST(SetText, FortyRandomEditsAreUndoneAndRedoneStepByStep)
{
    std::mt19937 random(77);
    const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const auto name = [&] { return huge::cellName(below(3), below(3)); };
    Sheet sheet;
    std::vector<std::string> states{sheet.dump()};
    for (int edit = 0; edit < 40; ++edit) {
        const std::vector<std::string> texts = {"",
                                                "1 /",
                                                "3",
                                                name(),
                                                name() + " + " + name(),
                                                "6 / " + name(),
                                                name() + " * 2 // edit " + std::to_string(edit)};
        const std::string& text = texts[static_cast<size_t>(below(7))];
        try {
            sheet.set(name(), text.c_str(), true);
        } catch (const xstd::XExceptionItems&) {
        }
        states.push_back(sheet.dump());
    }
    for (int round = 0; round < 2; ++round) {
        for (size_t i = states.size() - 1; i > 0; --i) {
            sheet.actions.undo_();
            ASSERT_EQ(sheet.dump(), states[i - 1]);
        }
        for (size_t i = 1; i < states.size(); ++i) {
            try {
                sheet.actions.redo_();
            } catch (const xstd::XExceptionItems&) {
            }
            ASSERT_EQ(sheet.dump(), states[i]);
        }
    }
}

TEST(ActionFrame, ReferencesExtendTheUsedArea)
{
    Sheet sheet;
    sheet.set("A1", "sum(C2:F9)");
    const FrameProbe probe(&sheet.table);
    EXPECT_EQ(probe.lastUsedRowWithRefs(Sheet::rect("D3:D4")), 8);
    EXPECT_EQ(probe.lastUsedColWithRefs(Sheet::rect("D3:D4")), 5);
    EXPECT_EQ(probe.lastUsedRowWithRefs(Sheet::rect("H1:H9")), 0);
    huge::XSavedCells saved;
    saved[Sheet::point("B2")] = nullptr;
    saved[Sheet::point("B3")] = nullptr;
    EXPECT_EQ(FrameProbe::rectsOf(saved).toString(0), Sheet::rects("B2:B3").toString(0));
}
