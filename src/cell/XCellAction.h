#pragma once

#include "cell/XCellTable.h"
#include "common/XException.h"
#include "common/XMergedRects.h"
#include "common/XRect.h"
#include "common/XStop.h"
#include "common/XUndoableAction.h"

#include <cstdint>
#include <utility>
#include <vector>

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
    /// The end of do_: holds out what closes a ring of references, recalculates from
    /// calcRects(Do) into `changed`, and raises `failure`, or, if that is empty, the first ring.
    void finish(xstd::XMergedRects& changed, xstd::XExceptionItems failure = {});
    /// The start of undo_: links what the action held out.
    void releaseHeldOut();
    /// What the failure of a ring with this path says; concrete actions add their details.
    virtual xstd::XExceptionItem ringItem(const xstd::XString& path) const;

    /// Makes the working area reach this row and column, in steps of 16. Raises
    /// "The table ends at row 1048576 and column AVLG", and changes nothing, for what lies beyond,
    /// and "A cell lies above row 1 or left of column A" for a negative row or column in `rect`.
    void growTo(const xstd::XRect& rect, const char* action);
    /// The last column (row) inside `rect` that is used, or that a reference into `rect` reaches;
    /// a reference counts up to the edge of the working area.
    int32_t lastUsedColWithRefs(const xstd::XRect& rect) const;
    int32_t lastUsedRowWithRefs(const xstd::XRect& rect) const;
    /// The positions of a map of saved things, normalised.
    template <class Saved>
    static xstd::XMergedRects rectsOf(const Saved& saved);

    XCellTable* m_table;
    xstd::XRect m_focusRect;

private:
    std::vector<xstd::XPoint> m_heldOut;
};

template <class Saved>
xstd::XMergedRects XCellAction::rectsOf(const Saved& saved)
{
    std::vector<xstd::XPoint> points;
    points.reserve(saved.size());
    for (const auto& entry : saved)
        points.push_back(entry.first);
    return xstd::XMergedRects().addPoints_(std::move(points));
}

} // namespace huge
