#pragma once

#include "cell/XCellTable.h"
#include "common/XMergedRects.h"
#include "common/XRect.h"
#include "common/XStop.h"
#include "common/XUndoableAction.h"

namespace huge {

/// An undoable change of a table. A concrete action saves what it overwrites, puts the table's raw
/// operations in order, recalculates, and tells the view what to paint and what to select. The
/// table is not owned and outlives the action.
class XCellAction : public xstd::XUndoableAction {
public:
    explicit XCellAction(XCellTable* table) : m_table(table) {}

    /// Runs do_ again: it works on what the action still holds and saves anew.
    xstd::XUndoableAction* redo_() override { return do_(); }
    xstd::XUndoableAction* rollback_() override { return undo_(); }

    /// What the view selects afterwards.
    virtual xstd::XMergedRects selectRects(xstd::XUndoableActionType type) const = 0;
    /// What the action touched, with what the recalculation ran.
    virtual xstd::XMergedRects changedRects(xstd::XUndoableActionType type) const = 0;
    /// What the view paints anew.
    virtual xstd::XMergedRects paintRects(xstd::XUndoableActionType type) const
    {
        return changedRects(type);
    }
    /// Where the recalculation starts.
    virtual xstd::XMergedRects calcRects(xstd::XUndoableActionType type) const = 0;

    /// The view's current cell when the action was made; null when nobody set it.
    virtual xstd::XRect focusRect() const { return m_focusRect; }
    virtual void setFocusRect(const xstd::XRect& rect) { m_focusRect = rect; }

    /// Recalculates from calcRects(type) and puts the cells that ran in `changed`, in place of
    /// what it held; complete also when a stop is raised.
    virtual void recalcFor(xstd::XUndoableActionType type, xstd::XMergedRects& changed);

protected:
    /// Lowers the stop flag when an action begins and when it ends: a stop that came too
    /// late for the action before must not end this one, and painting after a stopped action must
    /// not stop as well.
    struct StopScope {
        StopScope() { xstd::XStop::clear(); }
        ~StopScope() { xstd::XStop::clear(); }
        StopScope(const StopScope&) = delete;
        StopScope& operator=(const StopScope&) = delete;
    };

    /// The last column (row) inside `rect` that is used, or that a reference into `rect` reaches.
    int32_t lastUsedColWithRefs(const xstd::XRect& rect) const;
    int32_t lastUsedRowWithRefs(const xstd::XRect& rect) const;
    /// The positions of a map of saved things, normalised.
    template <class Saved>
    static xstd::XMergedRects rectsOf(const Saved& saved);

    XCellTable* m_table;
    xstd::XRect m_focusRect;
};

template <class Saved>
xstd::XMergedRects XCellAction::rectsOf(const Saved& saved)
{
    xstd::XMergedRects rects;
    for (const auto& entry : saved) {
        const xstd::XPoint& point = entry.first;
        rects.add_(xstd::XRect(point.row, point.col, point.row, point.col), false);
    }
    rects.normalize_();
    return rects;
}

} // namespace huge
