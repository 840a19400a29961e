#include "XCellPointer.h"

#include <QApplication>
#include <QPixmap>

#include <algorithm>
#include <cstdlib>

using xstd::XPoint;
using xstd::XRect;

namespace {

constexpr int reach = 2; // pixels to each side of a line
constexpr QPoint centre(12, 12);

bool isNear(int value, int line)
{
    return std::abs(value - line) <= reach;
}

/// Strictly between the two corners' boxes.
bool isBetween(int value, int first, int last)
{
    return value > first + reach && value < last - reach;
}

bool isCorner(XCellRefOp op)
{
    return op >= XCellRefOp::TopLeft && op <= XCellRefOp::BottomRight;
}

bool isInLimits(const XRect& rect)
{
    return rect.top >= 0 && rect.left >= 0 && rect.bottom <= huge::XCellPos::maxRow &&
           rect.right <= huge::XCellPos::maxCol;
}

} // namespace

XCellZone zoneAt(const QRect& rect, const QPoint& pos)
{
    const bool left = isNear(pos.x(), rect.left());
    const bool right = isNear(pos.x(), rect.right());
    const bool top = isNear(pos.y(), rect.top());
    const bool bottom = isNear(pos.y(), rect.bottom());
    if (bottom && (right || left))
        return right ? XCellZone::BottomRight : XCellZone::BottomLeft;
    if (top && (right || left))
        return right ? XCellZone::TopRight : XCellZone::TopLeft;
    if ((bottom || top) && isBetween(pos.x(), rect.left(), rect.right()))
        return bottom ? XCellZone::Bottom : XCellZone::Top;
    if ((right || left) && isBetween(pos.y(), rect.top(), rect.bottom()))
        return right ? XCellZone::Right : XCellZone::Left;
    return XCellZone::None;
}

QCursor cursorFromFile(const QString& path, const QPoint& hotSpot, Qt::CursorShape otherwise)
{
    // Qt hands the picture and its hot spot to the window system in pixels of the screen.
    const bool isFine = qApp->devicePixelRatio() > 1;
    QPixmap picture(isFine ? QString(path).replace(".png", "@2x.png") : path);
    const int scale = isFine && !picture.isNull() ? 2 : 1;
    if (picture.isNull())
        picture.load(path);
    if (picture.isNull())
        return otherwise;
    picture.setDevicePixelRatio(1);
    return QCursor(picture, scale * hotSpot.x(), scale * hotSpot.y());
}

XCellCursors::XCellCursors()
    : copy(cursorFromFile("./icons/CellCopy.png", centre, Qt::CrossCursor)),
      move(cursorFromFile("./icons/CellMove.png", centre, Qt::SizeAllCursor)),
      hResize(cursorFromFile("./icons/hresize.png", centre, Qt::SizeHorCursor)),
      vResize(cursorFromFile("./icons/vresize.png", centre, Qt::SizeVerCursor))
{}

const QCursor& XCellCursors::of(XCellRefOp op) const
{
    if (isCorner(op))
        return move;
    if (op == XCellRefOp::Top || op == XCellRefOp::Bottom)
        return vResize;
    return op == XCellRefOp::Left || op == XCellRefOp::Right ? hResize : arrow;
}

const QCursor& XCellCursors::of(const QRect& rect, const QPoint& pos) const
{
    if (QRect(rect.right() - 2, rect.bottom() - 2, 4, 4).contains(pos))
        return copy;
    const QRect bands[] = {
        QRect(rect.left() - 1, rect.top() + 2, 3, rect.height() - 3),
        QRect(rect.right() - 1, rect.top() + 2, 4, rect.height() - 4),
        QRect(rect.left() + 2, rect.top() - 2, rect.width() - 3, 3),
        QRect(rect.left() + 2, rect.bottom() - 1, rect.width() - 3, 3),
    };
    for (const QRect& band : bands) {
        if (band.contains(pos))
            return move;
    }
    return arrow;
}

XRect fillTarget(const XRect& source, const XPoint& cell)
{
    if (source.contains(cell.row, cell.col))
        return XRect();
    const int32_t dRow = std::max({source.top - cell.row, cell.row - source.bottom, 0});
    const int32_t dCol = std::max({source.left - cell.col, cell.col - source.right, 0});
    if (dCol <= dRow) {
        return cell.row < source.top
                   ? XRect(cell.row, source.left, source.top - 1, source.right)
                   : XRect(source.bottom + 1, source.left, cell.row, source.right);
    }
    return cell.col < source.left ? XRect(source.top, cell.col, source.bottom, source.left - 1)
                                  : XRect(source.top, source.right + 1, source.bottom, cell.col);
}

XRect markTarget(XCellRefOp op, const XRect& mark, const XPoint& pressCell, const XPoint& cell,
                 const XRect& dragTo)
{
    XRect target = mark;
    if (op == XCellRefOp::Draw)
        target = XRect(pressCell.row, pressCell.col, cell.row, cell.col).normalize_();
    else if (isCorner(op))
        target.offset_(cell.row - pressCell.row, cell.col - pressCell.col);
    else if (op == XCellRefOp::Top)
        target.top = cell.row;
    else if (op == XCellRefOp::Bottom)
        target.bottom = cell.row;
    else if (op == XCellRefOp::Left)
        target.left = cell.col;
    else if (op == XCellRefOp::Right)
        target.right = cell.col;
    return target.isNull() || !isInLimits(target) ? dragTo : target;
}

huge::XCellRangeRef draggedRef(XCellRefOp op, const huge::XCellRangeRef& mark, const XRect& dragTo)
{
    huge::XCellRangeRef ref = mark;
    const XRect from = mark.rect();
    if (op == XCellRefOp::Draw) {
        ref = huge::XCellRangeRef();
        ref.start = {dragTo.top, static_cast<uint16_t>(dragTo.left), 0, huge::XCellPos::kindCell};
        ref.end = {dragTo.bottom, static_cast<uint16_t>(dragTo.right), 0, huge::XCellPos::kindCell};
    } else if (isCorner(op))
        ref.shift_(dragTo.top - from.top, dragTo.left - from.left, true);
    else if (op == XCellRefOp::Top)
        ref.start.row = dragTo.top;
    else if (op == XCellRefOp::Bottom)
        ref.end.row = dragTo.bottom;
    else if (op == XCellRefOp::Left)
        ref.start.col = static_cast<uint16_t>(dragTo.left);
    else if (op == XCellRefOp::Right)
        ref.end.col = static_cast<uint16_t>(dragTo.right);
    return ref;
}
