#pragma once

#include "common/XUndoableAction.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace xstd {

class XExceptionItems;

/// An undo and redo stack: two rings of fixed size that own their actions. The newest entry stands
/// just before the ring's cursor; in a full ring a new entry displaces the oldest. A save marker
/// travels with the action below it, so that whether the document differs from what was saved is a
/// matter of the history and not of a flag. Each ring holds at most one marker.
class XUndoableActions {
public:
    using Observer = std::function<void(XUndoableActions*, XUndoableAction*, XUndoableActionType)>;

    /// Room for `capacity` steps, markers counted; at least 1.
    explicit XUndoableActions(size_t capacity);
    XUndoableActions(const XUndoableActions&) = delete;
    XUndoableActions& operator=(const XUndoableActions&) = delete;
    virtual ~XUndoableActions();

    /// Puts the action on the ring and runs it; returns what its do_ gives. An ordinary one empties
    /// the redo ring.
    /// A chain that comes out gets an item of type "action" and is thrown on, and the action stays
    /// to be undone. Any other exception leaves as a new chain; the action is rolled back and taken
    /// off first, if it allows that.
    XUndoableAction* do_(std::unique_ptr<XUndoableAction> action);
    /// Takes the newest ordinary action back and returns what its undo_ gives; null if there is
    /// none. A failure goes to the caller and leaves both rings as they were. So does a stop, but
    /// the action then counts as taken back: stops come from the recalculation behind the change.
    XUndoableAction* undo_();
    /// Does the action taken back last again and returns what its redo_ gives; null if there is
    /// none. After any failure but a stop the action is rolled back and taken off, if it allows
    /// that; the failure leaves as in do_.
    XUndoableAction* redo_();
    /// Takes the newest action back after it failed, and keeps it for the observers until the next
    /// time. Empties the redo ring.
    XUndoableAction* rollback_();

    void markSaved() { do_(std::make_unique<XActionSave>()); }
    /// False only when the newest entry is a save marker.
    bool isModified() const;
    bool canUndo() const { return m_undo.hasOrdinary(); }
    bool canRedo() const { return m_redo.hasOrdinary(); }
    size_t undoCount() const { return m_undo.count(); }
    size_t redoCount() const { return m_redo.count(); }

    /// Drops all entries, the rings and the observers.
    void clear();
    /// Drops all entries; observers and capacity stay.
    void reset();

    /// Registers an observer; the number takes it away again. They are called in this order.
    size_t addObserver(Observer observer);
    void removeObserver(size_t number) { m_observers.erase(number); }
    void notify(XUndoableAction* action, XUndoableActionType type);

private:
    using Slot = std::unique_ptr<XUndoableAction>;

    class Ring {
    public:
        explicit Ring(size_t capacity) : m_slots(capacity) {}

        XUndoableAction* newest() const;
        Slot takeNewest();
        /// A marker takes the place of an older one; an occupied slot's action goes.
        void push(Slot action);
        bool hasOrdinary() const;
        size_t count() const;
        void removeMarker();
        void empty();
        void drop();

    private:
        size_t next(size_t i) const { return i + 1 < m_slots.size() ? i + 1 : 0; }
        size_t prev(size_t i) const { return (i > 0 ? i : m_slots.size()) - 1; }

        std::vector<Slot> m_slots;
        size_t m_pos = 0; // the next free slot
    };

    /// The newest undo entry goes to the redo ring, above the marker that stood on it, if any.
    void moveToRedo(Slot marker);
    /// rollback_ for an action that threw `failure`; what the rollback throws is added to it.
    void rollbackFailed(const XUndoableAction& action, XExceptionItems& failure);

    Ring m_undo;
    Ring m_redo;
    std::map<size_t, Observer> m_observers;
    size_t m_lastObserver = 0;
    Slot m_failedAction;
};

} // namespace xstd
