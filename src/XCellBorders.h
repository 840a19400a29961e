#pragma once

#include <QRect>

#include <cstdint>

class QPainter;
class XCellTableView;

/// Draws the edges of the cell at (row, col): grid lines, borders, selection outline, reference
/// marks and drag target. `rect` is the cell's rectangle. Returns the rectangle that is left
/// inside, which still reaches one pixel into the next cells where nothing was drawn there.
QRect paintCellBorders(QPainter* painter, const XCellTableView& view, int32_t row, int32_t col,
                       const QRect& rect);
