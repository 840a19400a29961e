#include "common/XUndoableActions.h"

#include "common/XException.h"
#include "common/XStop.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace xstd;

namespace {

/// What fails, and how.
enum class Fails { Never, Plain, Chain, Stop };

void fail(Fails how)
{
    if (how == Fails::Plain)
        throw std::runtime_error("plain failure");
    if (how != Fails::Never)
        throw XExceptionItems().add(
            XExceptionItem(X_HERE, how == Fails::Stop ? "stop" : "cell").setMess("chain failure"));
}

/// Adds its step to a number that stands for the document.
class AddStep : public XUndoableAction {
public:
    AddStep(int& document, int step) : m_document(document), m_step(step) { ++alive; }
    ~AddStep() override { --alive; }

    XUndoableAction* do_() override
    {
        m_document += m_step;
        fail(onDo);
        return this;
    }
    XUndoableAction* undo_() override
    {
        fail(onUndo);
        m_document -= m_step;
        fail(behindUndo);
        return this;
    }
    XUndoableAction* redo_() override
    {
        m_document += m_step;
        fail(onRedo);
        return this;
    }
    XUndoableAction* rollback_() override
    {
        m_document -= m_step;
        fail(onRollback);
        return this;
    }
    bool canRollback() const override { return rollsBack; }

    static inline int alive = 0;
    Fails onDo = Fails::Never;
    Fails onUndo = Fails::Never;
    Fails behindUndo = Fails::Never;
    Fails onRedo = Fails::Never;
    Fails onRollback = Fails::Never;
    bool rollsBack = true;

private:
    int& m_document;
    int m_step;
};

class UndoStack : public ::testing::Test {
protected:
    void add(int step) { stack.do_(std::make_unique<AddStep>(document, step)); }
    /// The text of the failure that the call lets out.
    template <class F>
    std::string failureOf(F run)
    {
        try {
            run();
        } catch (const std::exception& failure) {
            return failure.what();
        }
        return "none";
    }

    int document = 0;
    XUndoableActions stack{50};
};

const std::string chainText =
    "mess: chain failure\ntype: cell\nmess: XUndoableActions do Error\ntype: action";
const std::string plainText = "mess: plain failure\ntype: action";

} // namespace

TEST_F(UndoStack, GoesBackAndForth)
{
    add(1);
    add(2);
    EXPECT_NE(stack.undo_(), nullptr);
    EXPECT_EQ(document, 1);
    EXPECT_NE(stack.redo_(), nullptr);
    EXPECT_EQ(document, 3);
    stack.undo_();
    stack.undo_();
    EXPECT_EQ(stack.undo_(), nullptr);
    EXPECT_EQ(document, 0);
    EXPECT_EQ(stack.redoCount(), 2U);
    add(7);
    EXPECT_EQ(stack.redoCount(), 0U);
    EXPECT_EQ(stack.redo_(), nullptr);
    EXPECT_EQ(document, 7);
}

TEST_F(UndoStack, HoldsFiftySteps)
{
    for (int i = 0; i < 51; ++i)
        add(i == 0 ? 1000 : 1);
    EXPECT_EQ(AddStep::alive, 50);
    EXPECT_EQ(stack.undoCount(), 50U);
    for (int i = 0; i < 50; ++i) {
        EXPECT_TRUE(stack.canUndo());
        EXPECT_NE(stack.undo_(), nullptr);
    }
    EXPECT_FALSE(stack.canUndo());
    EXPECT_EQ(document, 1000);
    for (int i = 0; i < 50; ++i)
        stack.redo_();
    EXPECT_EQ(document, 1050);
    stack.reset();
    EXPECT_EQ(AddStep::alive, 0);
    add(1);
    EXPECT_EQ(stack.undoCount(), 1U);
    stack.clear();
    EXPECT_EQ(AddStep::alive, 0);
}

TEST_F(UndoStack, KnowsWhatWasSaved)
{
    EXPECT_TRUE(stack.isModified());
    stack.markSaved();
    EXPECT_FALSE(stack.isModified());
    EXPECT_FALSE(stack.canUndo());
    EXPECT_EQ(stack.undo_(), nullptr);
    EXPECT_FALSE(stack.isModified());
    add(1);
    EXPECT_TRUE(stack.isModified());
    stack.undo_();
    EXPECT_FALSE(stack.isModified());
}

TEST_F(UndoStack, CarriesTheMarkerWithTheActionBelow)
{
    add(1);
    add(2);
    stack.markSaved();
    stack.undo_();
    EXPECT_EQ(document, 1);
    EXPECT_TRUE(stack.isModified());
    EXPECT_EQ(stack.redoCount(), 2U);
    stack.redo_();
    EXPECT_EQ(document, 3);
    EXPECT_FALSE(stack.isModified());
    EXPECT_FALSE(stack.canRedo());
    stack.undo_();
    add(5);
    EXPECT_EQ(stack.redoCount(), 0U); // the marker went with the rest
    EXPECT_TRUE(stack.isModified());
}

TEST_F(UndoStack, KeepsOneMarker)
{
    add(1);
    stack.markSaved();
    add(2);
    add(3);
    stack.markSaved();
    EXPECT_EQ(stack.undoCount(), 4U); // three actions, one marker
    stack.undo_();
    stack.markSaved(); // takes the one among the redo entries along
    EXPECT_EQ(stack.redoCount(), 1U);
    EXPECT_FALSE(stack.isModified());
    stack.redo_();
    EXPECT_TRUE(stack.isModified());
    EXPECT_EQ(document, 6);
    while (stack.undo_())
        continue;
    EXPECT_EQ(document, 0);
}

TEST_F(UndoStack, ClosesTheGapOfAMarkerAcrossTheEndOfTheRing)
{
    XUndoableActions small(3);
    const auto addTo = [&](int step) { small.do_(std::make_unique<AddStep>(document, step)); };
    addTo(1);
    small.markSaved();
    addTo(2);
    addTo(4); // displaces the first
    small.markSaved();
    EXPECT_EQ(small.undoCount(), 3U);
    EXPECT_FALSE(small.isModified());
    EXPECT_NE(small.undo_(), nullptr);
    EXPECT_NE(small.undo_(), nullptr);
    EXPECT_EQ(small.undo_(), nullptr);
    EXPECT_EQ(document, 1);
    small.redo_();
    small.redo_();
    EXPECT_EQ(document, 7);
    EXPECT_FALSE(small.isModified());
}

TEST_F(UndoStack, KeepsAnActionWhoseDoEndsWithAChain)
{
    for (const Fails how : {Fails::Chain, Fails::Stop}) {
        auto action = std::make_unique<AddStep>(document, 1);
        action->onDo = how;
        const std::string text = failureOf([&] { stack.do_(std::move(action)); });
        EXPECT_NE(text.find("XUndoableActions do Error"), std::string::npos);
        EXPECT_EQ(document, 1);
        stack.undo_();
        EXPECT_EQ(document, 0);
    }
    auto action = std::make_unique<AddStep>(document, 1);
    action->onDo = Fails::Chain;
    EXPECT_EQ(failureOf([&] { stack.do_(std::move(action)); }), chainText);
}

TEST_F(UndoStack, RollsBackAPlainFailureOfDo)
{
    add(1);
    auto action = std::make_unique<AddStep>(document, 10);
    action->onDo = Fails::Plain;
    EXPECT_EQ(failureOf([&] { stack.do_(std::move(action)); }), plainText);
    EXPECT_EQ(document, 1);
    EXPECT_EQ(stack.undoCount(), 1U);
    EXPECT_EQ(AddStep::alive, 2); // the failed one lives on for the observers

    action = std::make_unique<AddStep>(document, 10);
    action->onDo = Fails::Plain;
    action->rollsBack = false;
    EXPECT_EQ(failureOf([&] { stack.do_(std::move(action)); }), plainText);
    EXPECT_EQ(document, 11);
    stack.undo_();
    EXPECT_EQ(document, 1);
}

TEST_F(UndoStack, TellsBothFailuresWhenTheRollbackFailsToo)
{
    add(1);
    auto action = std::make_unique<AddStep>(document, 10);
    action->onDo = Fails::Plain;
    action->onRollback = Fails::Chain;
    EXPECT_EQ(failureOf([&] { stack.do_(std::move(action)); }),
              plainText + "\nmess: chain failure\ntype: cell");
    EXPECT_EQ(stack.undoCount(), 1U);
    stack.undo_();
    EXPECT_EQ(document, 0);
}

TEST_F(UndoStack, StaysAsItIsWhenUndoFails)
{
    auto action = std::make_unique<AddStep>(document, 1);
    AddStep* step = action.get();
    stack.do_(std::move(action));
    stack.markSaved();
    for (const Fails how : {Fails::Plain, Fails::Chain}) {
        step->onUndo = how;
        EXPECT_NE(failureOf([&] { stack.undo_(); }), "none");
        EXPECT_EQ(stack.undoCount(), 2U);
        EXPECT_EQ(stack.redoCount(), 0U);
        EXPECT_FALSE(stack.isModified());
    }
    step->onUndo = Fails::Never;
    EXPECT_EQ(stack.undo_(), step);
    EXPECT_EQ(document, 0);
}

TEST_F(UndoStack, CountsAStoppedUndoAsDone)
{
    auto action = std::make_unique<AddStep>(document, 1);
    AddStep* step = action.get();
    stack.do_(std::move(action));
    stack.markSaved();
    step->behindUndo = Fails::Stop;
    EXPECT_NE(failureOf([&] { stack.undo_(); }), "none");
    EXPECT_EQ(document, 0);
    EXPECT_EQ(stack.redoCount(), 2U);
    stack.redo_();
    EXPECT_EQ(document, 1);
    EXPECT_FALSE(stack.isModified());
}

TEST_F(UndoStack, RollsBackAFailedRedo)
{
    for (const Fails how : {Fails::Plain, Fails::Chain}) {
        document = 0;
        stack.reset();
        add(1);
        auto action = std::make_unique<AddStep>(document, 10);
        action->onRedo = how;
        stack.do_(std::move(action));
        stack.undo_();
        EXPECT_EQ(failureOf([&] { stack.redo_(); }), how == Fails::Plain ? plainText : chainText);
        EXPECT_EQ(document, 1);
        EXPECT_EQ(stack.undoCount(), 1U);
        EXPECT_FALSE(stack.canRedo());
    }
}

TEST_F(UndoStack, KeepsAStoppedRedoToBeUndone)
{
    auto action = std::make_unique<AddStep>(document, 1);
    action->onRedo = Fails::Stop;
    stack.do_(std::move(action));
    stack.undo_();
    EXPECT_NE(failureOf([&] { stack.redo_(); }), "none");
    EXPECT_EQ(document, 1);
    EXPECT_EQ(stack.undoCount(), 1U);
    stack.undo_();
    EXPECT_EQ(document, 0);
}

TEST_F(UndoStack, TellsObserversInTheirOrder)
{
    std::vector<int> seen;
    stack.addObserver([&](XUndoableActions* sender, XUndoableAction*, XUndoableActionType type) {
        EXPECT_EQ(sender, &stack);
        seen.push_back(static_cast<int>(type));
    });
    const size_t second =
        stack.addObserver([&](XUndoableActions*, XUndoableAction* action, XUndoableActionType) {
            seen.push_back(100 + action->kind());
        });
    add(1);
    stack.markSaved();
    stack.undo_(); // the marker first, then the action
    EXPECT_EQ(seen, (std::vector<int>{1, 100, 1, 101, 2, 101, 2, 100}));
    seen.clear();
    stack.removeObserver(second);
    stack.redo_();
    auto action = std::make_unique<AddStep>(document, 1);
    action->onDo = Fails::Plain;
    EXPECT_NE(failureOf([&] { stack.do_(std::move(action)); }), "none");
    EXPECT_EQ(seen, (std::vector<int>{3, 3, 4}));
    EXPECT_FALSE(stack.isModified());
}
