#include "common/XUndoableActions.h"

#include "common/XException.h"
#include "common/XStop.h"

#include <algorithm>
#include <utility>

namespace xstd {

namespace {

bool isMarker(const XUndoableAction* action)
{
    return action && action->kind() == XAction::saveMarker;
}

XExceptionItem doError()
{
    return XExceptionItem(X_HERE, "action").setMess("XUndoableActions do Error");
}

XExceptionItems chainOf(const std::exception& failure)
{
    return XExceptionItems().add(XExceptionItem(X_HERE, "action").setMess(failure.what()));
}

} // namespace

XUndoableAction* XUndoableActions::Ring::newest() const
{
    return m_slots.empty() ? nullptr : m_slots[prev(m_pos)].get();
}

XUndoableActions::Slot XUndoableActions::Ring::takeNewest()
{
    if (!newest())
        return nullptr;
    m_pos = prev(m_pos);
    return std::exchange(m_slots[m_pos], nullptr);
}

void XUndoableActions::Ring::push(Slot action)
{
    if (m_slots.empty())
        m_slots.resize(1); // a cleared stack still owns the action that runs
    if (isMarker(action.get()))
        removeMarker();
    m_slots[m_pos] = std::move(action);
    m_pos = next(m_pos);
}

bool XUndoableActions::Ring::hasOrdinary() const
{
    size_t i = m_pos;
    for (size_t steps = 0; steps < m_slots.size(); ++steps) {
        i = prev(i);
        if (!isMarker(m_slots[i].get()))
            return m_slots[i] != nullptr;
    }
    return !m_slots.empty();
}

size_t XUndoableActions::Ring::count() const
{
    size_t i = m_pos;
    size_t found = 0;
    while (found < m_slots.size() && m_slots[i = prev(i)])
        ++found;
    return found;
}

void XUndoableActions::Ring::removeMarker()
{
    size_t i = m_pos;
    for (size_t steps = 0; steps < m_slots.size(); ++steps) {
        i = prev(i);
        if (!m_slots[i])
            return;
        if (!isMarker(m_slots[i].get()))
            continue;
        for (size_t last = prev(m_pos); i != last; i = next(i))
            m_slots[i] = std::move(m_slots[next(i)]);
        m_slots[i] = nullptr;
        m_pos = i;
        return;
    }
}

void XUndoableActions::Ring::empty()
{
    for (Slot& slot : m_slots)
        slot = nullptr;
    m_pos = 0;
}

void XUndoableActions::Ring::drop()
{
    m_slots.clear();
    m_pos = 0;
}

XUndoableActions::XUndoableActions(size_t capacity)
    : m_undo(std::max<size_t>(capacity, 1)), m_redo(std::max<size_t>(capacity, 1))
{}

XUndoableActions::~XUndoableActions() = default;

XUndoableAction* XUndoableActions::do_(std::unique_ptr<XUndoableAction> action)
{
    XUndoableAction* running = action.get();
    XUndoableAction* result = nullptr;
    if (isMarker(running))
        m_redo.removeMarker();
    else
        m_redo.empty();
    m_undo.push(std::move(action));
    try {
        result = running->do_();
    } catch (XExceptionItems& failure) {
        failure.add(doError());
        throw;
    } catch (const std::exception& failure) {
        XExceptionItems chain = chainOf(failure);
        rollbackFailed(*running, chain);
        throw chain;
    }
    notify(running, XUndoableActionType::Do);
    return result;
}

XUndoableAction* XUndoableActions::undo_()
{
    Slot marker = isMarker(m_undo.newest()) ? m_undo.takeNewest() : nullptr;
    XUndoableAction* action = m_undo.newest();
    XUndoableAction* result = nullptr;
    try {
        if (action)
            result = action->undo_();
    } catch (const XExceptionItems& failure) {
        // A stop ends the recalculation behind the change: the change itself is taken back.
        if (XStop::isStop(failure))
            moveToRedo(std::move(marker));
        else if (marker)
            m_undo.push(std::move(marker));
        throw;
    } catch (...) {
        if (marker)
            m_undo.push(std::move(marker));
        throw;
    }
    if (action)
        moveToRedo(std::move(marker));
    else if (marker)
        m_undo.push(std::move(marker));
    return result;
}

void XUndoableActions::moveToRedo(Slot marker)
{
    XUndoableAction* movedMarker = marker.get();
    Slot undone = m_undo.takeNewest();
    XUndoableAction* action = undone.get();
    if (marker)
        m_redo.push(std::move(marker));
    m_redo.push(std::move(undone));
    if (movedMarker)
        notify(movedMarker, XUndoableActionType::Undo);
    notify(action, XUndoableActionType::Undo);
}

XUndoableAction* XUndoableActions::redo_()
{
    Slot taken = m_redo.takeNewest();
    if (!taken)
        return nullptr;
    XUndoableAction* action = taken.get();
    XUndoableAction* result = nullptr;
    m_undo.push(std::move(taken));
    try {
        result = action->redo_();
    } catch (XExceptionItems& failure) {
        // A stopped action is done and stays to be undone; a rollback would be stopped as well.
        if (!XStop::isStop(failure))
            rollbackFailed(*action, failure);
        failure.add(doError());
        throw;
    } catch (const std::exception& failure) {
        XExceptionItems chain = chainOf(failure);
        rollbackFailed(*action, chain);
        throw chain;
    }
    notify(action, XUndoableActionType::Redo);
    if (isMarker(m_redo.newest())) {
        Slot marker = m_redo.takeNewest();
        XUndoableAction* moved = marker.get();
        m_undo.push(std::move(marker));
        notify(moved, XUndoableActionType::Redo);
    }
    return result;
}

XUndoableAction* XUndoableActions::rollback_()
{
    m_failedAction = m_undo.takeNewest();
    if (!m_failedAction)
        return nullptr;
    m_redo.empty(); // first: what could be redone no longer fits, even if the rollback fails
    m_failedAction->rollback_();
    notify(m_failedAction.get(), XUndoableActionType::Rollback);
    return m_failedAction.get();
}

void XUndoableActions::rollbackFailed(const XUndoableAction& action, XExceptionItems& failure)
{
    if (!action.canRollback())
        return;
    // The failure that began it all is the one to be thrown: a second one joins it.
    try {
        rollback_();
    } catch (const XExceptionItems& second) {
        for (const XExceptionItem& item : second.items())
            failure.add(item);
    } catch (const std::exception& second) {
        failure.add(XExceptionItem(X_HERE, "action").setMess(second.what()));
    }
}

bool XUndoableActions::isModified() const
{
    return !isMarker(m_undo.newest());
}

void XUndoableActions::clear()
{
    m_undo.drop();
    m_redo.drop();
    m_failedAction = nullptr;
    m_observers.clear();
}

void XUndoableActions::reset()
{
    m_undo.empty();
    m_redo.empty();
    m_failedAction = nullptr;
}

size_t XUndoableActions::addObserver(Observer observer)
{
    m_observers.emplace(++m_lastObserver, std::move(observer));
    return m_lastObserver;
}

void XUndoableActions::notify(XUndoableAction* action, XUndoableActionType type)
{
    const std::map<size_t, Observer> called = m_observers; // an observer may take itself away
    for (const auto& [number, observer] : called)
        observer(this, action, type);
}

} // namespace xstd
