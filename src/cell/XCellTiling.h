#pragma once

#include "common/XMergedRects.h"
#include "common/XRect.h"

#include <cstdint>
#include <utility>

namespace huge {

/// Lays a source over a destination, repeated as often as it fits and cut at the edges: the top
/// left corners of their bounding rectangles fall on each other.
class XCellTiling {
public:
    /// `src` is not null.
    XCellTiling(const xstd::XRect& src, xstd::XMergedRects dest)
        : m_src(src), m_dest(std::move(dest)), m_bound(m_dest.boundRect())
    {}

    /// The source position that falls on a position inside the destination's bounds.
    xstd::XPoint sourceOf(int32_t row, int32_t col) const
    {
        return {static_cast<int32_t>(m_src.top + (row - m_bound.top) % m_src.height()),
                static_cast<int32_t>(m_src.left + (col - m_bound.left) % m_src.width())};
    }
    /// Calls fn(row, col) for every position of the destination on which a source position falls.
    template <class F>
    void forEachTile(int32_t srcRow, int32_t srcCol, F&& fn) const
    {
        const int64_t top = int64_t(m_bound.top) + (srcRow - m_src.top);
        const int64_t left = int64_t(m_bound.left) + (srcCol - m_src.left);
        for (int64_t row = top; row <= m_bound.bottom; row += m_src.height()) {
            for (int64_t col = left; col <= m_bound.right; col += m_src.width()) {
                if (m_dest.contains(static_cast<int32_t>(row), static_cast<int32_t>(col)))
                    fn(static_cast<int32_t>(row), static_cast<int32_t>(col));
            }
        }
    }

private:
    xstd::XRect m_src;
    xstd::XMergedRects m_dest;
    xstd::XRect m_bound;
};

} // namespace huge
