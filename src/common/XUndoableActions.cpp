#include "common/XUndoableActions.h"

#include "common/XException.h"

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
        return;
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
    if (isMarker(running))
        m_redo.removeMarker();
    else
        m_redo.empty();
    m_undo.push(std::move(action));
    try {
        running->do_();
    } catch (XExceptionItems& failure) {
        failure.add(doError());
        throw;
    } catch (const std::exception& failure) {
        const XExceptionItems chain = chainOf(failure);
        if (running->canRollback())
            rollback_();
        throw chain;
    }
    notify(running, XUndoableActionType::Do);
    return running;
}

XUndoableAction* XUndoableActions::undo_()
{
    Slot marker = isMarker(m_undo.newest()) ? m_undo.takeNewest() : nullptr;
    XUndoableAction* action = m_undo.newest();
    try {
        if (action)
            action->undo_();
    } catch (...) {
        if (marker)
            m_undo.push(std::move(marker));
        throw;
    }
    if (!action) {
        if (marker)
            m_undo.push(std::move(marker));
        return nullptr;
    }
    Slot undone = m_undo.takeNewest();
    if (marker) {
        XUndoableAction* moved = marker.get();
        m_redo.push(std::move(marker));
        notify(moved, XUndoableActionType::Undo);
    }
    m_redo.push(std::move(undone));
    notify(action, XUndoableActionType::Undo);
    return action;
}

XUndoableAction* XUndoableActions::redo_()
{
    Slot taken = m_redo.takeNewest();
    if (!taken)
        return nullptr;
    XUndoableAction* action = taken.get();
    m_undo.push(std::move(taken));
    try {
        action->redo_();
    } catch (XExceptionItems& failure) {
        failure.add(doError());
        if (action->canRollback())
            rollback_();
        throw;
    } catch (const std::exception& failure) {
        const XExceptionItems chain = chainOf(failure);
        if (action->canRollback())
            rollback_();
        throw chain;
    }
    notify(action, XUndoableActionType::Redo);
    if (isMarker(m_redo.newest())) {
        Slot marker = m_redo.takeNewest();
        XUndoableAction* moved = marker.get();
        m_undo.push(std::move(marker));
        notify(moved, XUndoableActionType::Redo);
    }
    return action;
}

XUndoableAction* XUndoableActions::rollback_()
{
    Slot failed = m_undo.takeNewest();
    m_failedAction = nullptr;
    if (!failed)
        return nullptr;
    // Kept before it runs: what it throws must not delete it under the caller.
    m_failedAction = std::move(failed);
    m_failedAction->rollback_();
    m_redo.empty();
    notify(m_failedAction.get(), XUndoableActionType::Rollback);
    return m_failedAction.get();
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
