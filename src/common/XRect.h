#pragma once

#include "common/XString.h"

#include <algorithm>
#include <compare>
#include <cstdint>
#include <utility>
#include <vector>

namespace xstd {

/// A position in a table; rows count first in the order of points.
struct XPoint {
    int32_t row = 0;
    int32_t col = 0;

    auto operator<=>(const XPoint&) const = default;
};

/// A rectangle of cells, rows and columns inclusive at both ends. Null when left > right or
/// top > bottom; a default rectangle is null.
struct XRect {
    int32_t top = 0;
    int32_t left = 0;
    int32_t bottom = -1;
    int32_t right = -1;

    constexpr XRect() = default;
    constexpr XRect(int32_t topRow, int32_t leftCol, int32_t bottomRow, int32_t rightCol)
        : top(topRow), left(leftCol), bottom(bottomRow), right(rightCol)
    {}

    constexpr bool operator==(const XRect&) const = default;

    constexpr bool isNull() const { return left > right || top > bottom; }
    /// Rows, columns, cells; 0 for a null rectangle.
    constexpr int64_t height() const { return isNull() ? 0 : int64_t(bottom) - top + 1; }
    constexpr int64_t width() const { return isNull() ? 0 : int64_t(right) - left + 1; }
    constexpr int64_t area() const { return height() * width(); }

    constexpr bool contains(int32_t row, int32_t col) const
    {
        return row >= top && row <= bottom && col >= left && col <= right;
    }
    constexpr bool contains(const XRect& rect) const
    {
        return contains(rect.top, rect.left) && contains(rect.bottom, rect.right);
    }
    constexpr bool intersects(const XRect& rect) const
    {
        return std::max(top, rect.top) <= std::min(bottom, rect.bottom) &&
               std::max(left, rect.left) <= std::min(right, rect.right);
    }
    /// The overlap. A null rectangle on either side is the result; disjoint ones give a null one.
    XRect intersect(const XRect& rect) const
    {
        if (isNull() || rect.isNull())
            return isNull() ? *this : rect;
        return {std::max(top, rect.top), std::max(left, rect.left), std::min(bottom, rect.bottom),
                std::min(right, rect.right)};
    }

    XRect& offset_(int32_t dRow, int32_t dCol);
    XRect offset(int32_t dRow, int32_t dCol) const { return XRect(*this).offset_(dRow, dCol); }
    /// A copy that reaches n cells further on every side.
    XRect inflated(int32_t n) const { return {top - n, left - n, bottom + n, right + n}; }
    /// Swaps ends that stand the wrong way round.
    XRect& normalize_();
    /// Mirrors about the diagonal through (row, col).
    XRect& transpose_(int32_t row, int32_t col);
    XRect transposed(int32_t row, int32_t col) const { return XRect(*this).transpose_(row, col); }

    /// Calls fn(row, col) for each cell, row by row, until it gives true.
    template <class F>
    void forEach(F&& fn) const
    {
        for (int64_t row = top; row <= bottom; ++row) {
            for (int64_t col = left; col <= right; ++col) {
                if (fn(static_cast<int32_t>(row), static_cast<int32_t>(col)))
                    return;
            }
        }
    }

    XString toString() const;

    /// Takes `other` in if the two form one rectangle. Returns false, and changes nothing, if not.
    bool merge_(const XRect& other);
    /// merge_, or pushes the parts of `other` outside of this rectangle: above, below, left, right.
    /// Returns false for disjoint rectangles that don't merge; `other` is then pushed whole.
    bool addTo(const XRect& other, std::vector<XRect>& pieces);
    /// Pushes what remains when `rect` is taken out: left, right, above, below. Returns whether the
    /// two overlapped.
    bool subtractFrom(const XRect& rect, std::vector<XRect>& pieces) const;
};

} // namespace xstd
