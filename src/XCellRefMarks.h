#pragma once

#include "common/XRect.h"

#include <cstdint>
#include <utility>
#include <vector>

/// The rectangles that the current cell reads, for painting: at which sides of a cell does one of
/// them end? The rectangles alone are kept, because a whole column has a million cells and only
/// those on the screen are ever asked for.
class XCellRefMarks {
public:
    struct Sides {
        bool top = false;
        bool left = false;
        bool bottom = false;
        bool right = false;
        int32_t count = 0; ///< rectangles that cover the cell; 0 for a cell outside all
    };

    void setRects(std::vector<xstd::XRect> rects) { m_rects = std::move(rects); }
    void clear() { m_rects.clear(); }
    bool isEmpty() const { return m_rects.empty(); }
    Sides sidesAt(int32_t row, int32_t col) const;

private:
    std::vector<xstd::XRect> m_rects;
};
