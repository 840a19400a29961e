#pragma once

#include "cell/XCellAction.h"

namespace huge {

/// Along what cells shift.
enum class XCellAxis { Rows, Cols };

/// The frame of the actions that insert or remove a band of cells: what lies behind the band, down
/// to the last cell that is used or referred to, shifts along the axis. The band is a number of
/// whole rows or columns, or a rectangle; then only the cells below it or to its right shift. All
/// rectangles are computed when the action is made, and nothing shifts when nothing lies behind.
class XCellBandAction : public XCellAction {
public:
    xstd::XMergedRects selectRects(xstd::XUndoableActionType type) const override;
    /// What changedRects says, with all places that cells left or came to.
    xstd::XMergedRects paintRects(xstd::XUndoableActionType type) const override;
    xstd::XMergedRects calcRects(xstd::XUndoableActionType type) const override;

protected:
    /// `firstMoved` is the first row (column) that shifts.
    XCellBandAction(XCellTable* table, XCellAxis axis, const xstd::XRect& band, int64_t firstMoved,
                    const char* name);

    /// Whole rows, or columns, from the one with this number on.
    static xstd::XRect wholeBand(const XCellTable& table, XCellAxis axis, int32_t first,
                                 int32_t count);
    static int32_t sizeOf(XCellAxis axis, const xstd::XRect& band);

    int32_t bandSize() const { return sizeOf(m_axis, m_band); }
    bool isByRows() const { return m_axis == XCellAxis::Rows; }
    /// The last used row (column) of what shifts, with references; -1 when nothing shifts.
    int32_t lastMoved() const;
    /// Fixes what shifts, by how many rows or columns.
    void setMoved(int32_t last, int32_t shift);
    /// Shifts cells and references, and back. Neither does anything when nothing lies behind.
    void shiftRanges();
    void shiftCells();
    void shiftCellsBack();
    xstd::XMergedRects movedRects() const;
    xstd::XExceptionItem ringItem(const xstd::XString& path) const override;

    XCellAxis m_axis;
    const char* m_name;
    xstd::XRect m_band;
    xstd::XRect m_reach;      ///< the working area before it grew
    xstd::XRect m_movedRect;  ///< null when nothing shifts
    xstd::XRect m_movedAfter; ///< the same, shifted
    XSavedRanges m_savedRanges;
    xstd::XMergedRects m_changed;

private:
    int32_t m_dRow = 0;
    int32_t m_dCol = 0;
};

} // namespace huge
