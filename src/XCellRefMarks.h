#pragma once

#include "common/XRect.h"

#include <cstdint>
#include <map>
#include <vector>

/// The rectangles that the current cell reads, prepared for painting: for each covered cell, at
/// which of its sides a rectangle ends.
class XCellRefMarks {
public:
    struct Sides {
        bool top = false;
        bool left = false;
        bool bottom = false;
        bool right = false;
        int32_t count = 0; ///< rectangles that cover the cell; 0 for a cell outside all
    };

    /// Rectangles must lie inside the grid: each of their cells gets an entry.
    void setRects(const std::vector<xstd::XRect>& rects);
    void clear() { m_sides.clear(); }
    Sides sidesAt(int32_t row, int32_t col) const;

private:
    std::map<xstd::XPoint, Sides> m_sides;
};
