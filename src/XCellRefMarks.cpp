#include "XCellRefMarks.h"

void XCellRefMarks::setRects(const std::vector<xstd::XRect>& rects)
{
    m_sides.clear();
    for (const xstd::XRect& rect : rects) {
        rect.forEach([&](int32_t row, int32_t col) {
            Sides& sides = m_sides[xstd::XPoint{row, col}];
            sides.top |= row == rect.top;
            sides.left |= col == rect.left;
            sides.bottom |= row == rect.bottom;
            sides.right |= col == rect.right;
            ++sides.count;
            return false;
        });
    }
}

XCellRefMarks::Sides XCellRefMarks::sidesAt(int32_t row, int32_t col) const
{
    const auto found = m_sides.find(xstd::XPoint{row, col});
    return found == m_sides.end() ? Sides() : found->second;
}
