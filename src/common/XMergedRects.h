#pragma once

#include "common/XRect.h"

#include <vector>

namespace xstd {

/// A set of cells as a list of rectangles, the form in which selections, targets of actions and
/// areas to repaint travel. Nothing forces it to be normalised; after normalize_ no two rectangles
/// share a cell.
class XMergedRects {
public:
    XMergedRects() = default;
    XMergedRects(const XRect& rect) : m_rects{rect} {}
    XMergedRects(std::vector<XRect> rects) : m_rects(std::move(rects)) {}

    const std::vector<XRect>& rects() const { return m_rects; }
    auto begin() const { return m_rects.begin(); }
    auto end() const { return m_rects.end(); }
    size_t size() const { return m_rects.size(); }
    bool isEmpty() const { return m_rects.empty(); }
    const XRect& operator[](size_t i) const { return m_rects[i]; }
    bool operator==(const XMergedRects&) const = default;
    void clear() { m_rects.clear(); }
    void reserve(size_t count) { m_rects.reserve(count); }

    XMergedRects& add_(const XRect& rect, bool normalize = false);
    XMergedRects& add_(const XMergedRects& rects, bool normalize = false);
    /// Takes a rectangle, or each of several, out of every member.
    XMergedRects& subtract_(const XRect& rect, bool normalize = false);
    XMergedRects& subtract_(const XMergedRects& rects, bool normalize = false);
    /// Cuts the members at each other's rows and joins the strips along rows, then columns. Fewer
    /// than two members stay as they are.
    XMergedRects& normalize_();
    /// Adds single cells, in any order and perhaps several times, and normalises. They are joined
    /// to runs and blocks first: 100,000 points cost little more than sorting them.
    XMergedRects& addPoints_(std::vector<XPoint> points);

    bool contains(int32_t row, int32_t col) const;
    /// A single member holds the whole rectangle.
    bool contains(const XRect& rect) const;
    /// The members together hold the whole rectangle; right for a normalised value only.
    bool covers(const XRect& rect) const;
    bool intersects(const XRect& rect) const;
    bool intersects(const XMergedRects& rects) const;
    /// The overlaps with one rectangle, normalised; with each of several, not normalised.
    XMergedRects intersected(const XRect& rect) const;
    XMergedRects intersected(const XMergedRects& rects) const;
    /// The smallest rectangle around all members but null ones; a default one if there is none.
    XRect boundRect() const;
    XMergedRects& offset_(int32_t dRow, int32_t dCol);
    XMergedRects offset(int32_t dRow, int32_t dCol) const
    {
        return XMergedRects(*this).offset_(dRow, dCol);
    }

    /// Calls fn(row, col) member by member, row by row, until it gives true; a null member ends it.
    template <class F>
    void forEach(F&& fn) const
    {
        bool found = false;
        for (const XRect& rect : m_rects) {
            if (rect.isNull())
                return;
            rect.forEach([&](int32_t row, int32_t col) { return found = fn(row, col); });
            if (found)
                return;
        }
    }

    XString toString(size_t indent = 0) const;

private:
    std::vector<XRect> m_rects;
};

} // namespace xstd
