#pragma once

#include <cstdint>

namespace xstd {

/// Why an observer of an undo stack is called.
enum class XUndoableActionType : int32_t { Do = 1, Undo = 2, Redo = 3, Rollback = 4 };

/// Something that can be done.
class XAction {
public:
    /// Kinds of action: an ordinary one, and the marker of a saved state.
    static constexpr int32_t ordinary = 0;
    static constexpr int32_t saveMarker = 1;

    virtual ~XAction() = default;
    XAction(const XAction&) = delete;
    XAction& operator=(const XAction&) = delete;

    virtual XAction* do_() = 0;
    int32_t kind() const noexcept { return m_kind; }

protected:
    explicit XAction(int32_t kind = ordinary) noexcept : m_kind(kind) {}

private:
    int32_t m_kind;
};

/// Something that can be done, undone and done again. Every operation returns the object itself.
class XUndoableAction : public XAction {
public:
    XUndoableAction* do_() override = 0;
    virtual XUndoableAction* undo_() = 0;
    virtual XUndoableAction* redo_() = 0;
    /// Takes back an execution that failed half way.
    virtual XUndoableAction* rollback_() = 0;
    XUndoableAction* self() noexcept { return this; }
    /// Whether a failed execution is to be rolled back.
    virtual bool canRollback() const { return true; }

protected:
    using XAction::XAction;
};

/// Marks the state that was saved. It changes nothing, and travels with the action below it.
class XActionSave final : public XUndoableAction {
public:
    XActionSave() noexcept : XUndoableAction(saveMarker) {}

    XUndoableAction* do_() override { return this; }
    XUndoableAction* undo_() override { return this; }
    XUndoableAction* redo_() override { return this; }
    XUndoableAction* rollback_() override { return this; }
};

} // namespace xstd
