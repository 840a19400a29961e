#pragma once

#include "cell/XCellRangeRef.h"
#include "common/XRect.h"

#include <QBasicTimer>
#include <QCursor>
#include <QPoint>
#include <QRect>
#include <QString>

#include <cstdint>

/// A part of a rectangle on the screen that a person can take hold of.
enum class XCellZone : uint8_t {
    None,
    BottomRight,
    TopRight,
    BottomLeft,
    TopLeft,
    Bottom,
    Right,
    Left,
    Top
};

/// What a drag does with a reference of the script under edit. A corner moves the mark.
enum class XCellRefOp : uint8_t {
    None,
    Draw,
    TopLeft,
    TopRight,
    BottomLeft,
    BottomRight,
    Top,
    Bottom,
    Left,
    Right
};

/// What the pointer is doing on the grid, from the press to the release. The target of a drag
/// stands in the paint state, because the cells show it.
struct XCellPointer {
    enum Mode : uint8_t { Normal, Fill, Move, Reference };

    Mode mode = Normal;
    XCellRefOp refOp = XCellRefOp::None;   ///< what the running drag does
    XCellRefOp hoverOp = XCellRefOp::None; ///< what a drag that begins here would do
    xstd::XRect dragFrom;                  ///< source of the drag; null without one
    xstd::XPoint pressCell{-1, -1};        ///< where the drag began
    xstd::XPoint lastCell{-1, -1};         ///< the last cell that the drag passed
    huge::XCellRangeRef dragMark;          ///< the reference as it was when its drag began
    QBasicTimer scrollTimer;               ///< runs while a drag is outside of the viewport
    QPoint scrollPos;                      ///< where the pointer is then
};

/// The zone of `rect` at `pos`: boxes of two pixels to each side of a corner, then bands of two
/// pixels to each side of an edge, without the corners.
XCellZone zoneAt(const QRect& rect, const QPoint& pos);

/// A pointer's shape from a picture, in double size where the screen has more than a pixel for each
/// of ours; a system's shape when there is no file. `path` ends with ".png".
QCursor cursorFromFile(const QString& path, const QPoint& hotSpot, Qt::CursorShape otherwise);

/// The pointer's shapes. A file that is missing gives a shape of the system's.
struct XCellCursors {
    XCellCursors();

    /// The shape for a drag of a mark.
    const QCursor& of(XCellRefOp op) const;
    /// The shape over a selection that covers `rect`: its corner copies, its edges move.
    const QCursor& of(const QRect& rect, const QPoint& pos) const;

    QCursor arrow;
    QCursor copy;
    QCursor move;
    QCursor hResize;
    QCursor vResize;
};

/// The target of a fill drag from `source` to `cell`: the rows or columns behind the source in the
/// direction in which the cell is further away; rows on a tie. Null over the source itself.
xstd::XRect fillTarget(const xstd::XRect& source, const xstd::XPoint& cell);

/// The rectangle of a mark whose drag passes `cell`; `dragTo` as it stands where the cell gives
/// none.
xstd::XRect markTarget(XCellRefOp op, const xstd::XRect& mark, const xstd::XPoint& pressCell,
                       const xstd::XPoint& cell, const xstd::XRect& dragTo);

/// The reference that a mark becomes when its drag ends at `dragTo`.
huge::XCellRangeRef draggedRef(XCellRefOp op, const huge::XCellRangeRef& mark,
                               const xstd::XRect& dragTo);
