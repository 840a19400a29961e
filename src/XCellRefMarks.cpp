#include "XCellRefMarks.h"

XCellRefMarks::Sides XCellRefMarks::sidesAt(int32_t row, int32_t col) const
{
    Sides sides;
    for (const xstd::XRect& rect : m_rects) {
        if (!rect.contains(row, col))
            continue;
        sides.top |= row == rect.top;
        sides.left |= col == rect.left;
        sides.bottom |= row == rect.bottom;
        sides.right |= col == rect.right;
        ++sides.count;
    }
    return sides;
}
