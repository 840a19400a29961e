#include "common/XMergedRects.h"

#include <tuple>

namespace xstd {

namespace {

std::vector<int64_t> rowCuts(const std::vector<XRect>& rects)
{
    std::vector<int64_t> cuts;
    cuts.reserve(2 * rects.size());
    for (const XRect& rect : rects) {
        cuts.push_back(rect.top);
        cuts.push_back(int64_t(rect.bottom) + 1);
    }
    std::sort(cuts.begin(), cuts.end());
    cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
    return cuts;
}

std::vector<XRect> cutAtRows(const std::vector<XRect>& rects, const std::vector<int64_t>& cuts)
{
    std::vector<XRect> strips;
    strips.reserve(rects.size());
    for (const XRect& rect : rects) {
        if (rect.isNull())
            continue;
        auto cut = std::lower_bound(cuts.begin(), cuts.end(), int64_t(rect.top));
        for (; cut + 1 != cuts.end() && *(cut + 1) <= int64_t(rect.bottom) + 1; ++cut)
            strips.emplace_back(static_cast<int32_t>(*cut), rect.left,
                                static_cast<int32_t>(*(cut + 1) - 1), rect.right);
    }
    return strips;
}

// The strips are sorted by height, top and left: of one band those that overlap or touch follow
// each other.
void joinAlongRows(std::vector<XRect>& strips)
{
    std::sort(strips.begin(), strips.end(), [](const XRect& a, const XRect& b) {
        return std::tuple(a.height(), a.top, a.left) < std::tuple(b.height(), b.top, b.left);
    });
    std::vector<XRect> joined;
    for (const XRect& strip : strips) {
        if (!joined.empty() && joined.back().height() == strip.height() &&
            joined.back().top == strip.top && strip.left <= int64_t(joined.back().right) + 1)
            joined.back().right = std::max(joined.back().right, strip.right);
        else
            joined.push_back(strip);
    }
    strips = std::move(joined);
}

void joinAlongColumns(std::vector<XRect>& strips)
{
    std::sort(strips.begin(), strips.end(), [](const XRect& a, const XRect& b) {
        return std::tuple(a.width(), a.left, a.top) < std::tuple(b.width(), b.left, b.top);
    });
    std::vector<XRect> joined;
    for (const XRect& strip : strips) {
        if (!joined.empty() && joined.back().width() == strip.width() &&
            joined.back().left == strip.left && strip.top <= int64_t(joined.back().bottom) + 1)
            joined.back().bottom = std::max(joined.back().bottom, strip.bottom);
        else
            joined.push_back(strip);
    }
    strips = std::move(joined);
}

/// Adds the rectangles of `open` that do not go on in `runs` to `out`, and lets the others grow:
/// `runs` are the runs of one row, `open` the rectangles that end above it, both from the left.
void growRuns(std::vector<XRect>& open, std::vector<XRect>& runs, std::vector<XRect>& out)
{
    auto run = runs.begin();
    for (const XRect& above : open) {
        while (run != runs.end() && run->left < above.left)
            ++run;
        const bool goesOn = run != runs.end() && run->left == above.left &&
                            run->right == above.right && run->top == above.bottom + 1;
        if (goesOn)
            run->top = above.top;
        else
            out.push_back(above);
    }
    open.swap(runs);
    runs.clear();
}

} // namespace

XMergedRects& XMergedRects::add_(const XRect& rect, bool normalize)
{
    m_rects.push_back(rect);
    return normalize ? normalize_() : *this;
}

XMergedRects& XMergedRects::add_(const XMergedRects& rects, bool normalize)
{
    const std::vector<XRect> added = rects.m_rects; // `rects` may be this object
    m_rects.insert(m_rects.end(), added.begin(), added.end());
    return normalize ? normalize_() : *this;
}

XMergedRects& XMergedRects::subtract_(const XRect& rect, bool normalize)
{
    bool changed = false;
    std::vector<XRect> rest;
    for (const XRect& member : m_rects)
        changed = member.subtractFrom(rect, rest) || changed;
    m_rects = std::move(rest);
    return changed && normalize ? normalize_() : *this;
}

XMergedRects& XMergedRects::subtract_(const XMergedRects& rects, bool normalize)
{
    const std::vector<XRect> taken = rects.m_rects; // `rects` may be this object
    for (const XRect& rect : taken)
        subtract_(rect, false);
    return normalize ? normalize_() : *this;
}

XMergedRects& XMergedRects::normalize_()
{
    if (m_rects.size() < 2)
        return *this;
    std::vector<XRect> strips = cutAtRows(m_rects, rowCuts(m_rects)); // none crosses a cut row
    joinAlongRows(strips); // overlaps end here: afterwards no cell lies in two strips
    joinAlongColumns(strips);
    m_rects = std::move(strips);
    return *this;
}

bool XMergedRects::contains(int32_t row, int32_t col) const
{
    return std::any_of(m_rects.begin(), m_rects.end(),
                       [=](const XRect& member) { return member.contains(row, col); });
}

bool XMergedRects::contains(const XRect& rect) const
{
    return std::any_of(m_rects.begin(), m_rects.end(),
                       [&](const XRect& member) { return member.contains(rect); });
}

bool XMergedRects::covers(const XRect& rect) const
{
    int64_t area = 0;
    for (const XRect& member : m_rects)
        area += member.intersect(rect).area();
    return area == rect.area();
}

bool XMergedRects::intersects(const XRect& rect) const
{
    return std::any_of(m_rects.begin(), m_rects.end(),
                       [&](const XRect& member) { return member.intersects(rect); });
}

bool XMergedRects::intersects(const XMergedRects& rects) const
{
    return std::any_of(rects.begin(), rects.end(),
                       [this](const XRect& rect) { return intersects(rect); });
}

XMergedRects XMergedRects::intersected(const XRect& rect) const
{
    return intersected(XMergedRects(rect)).normalize_();
}

XMergedRects XMergedRects::intersected(const XMergedRects& rects) const
{
    XMergedRects result;
    for (const XRect& member : m_rects) {
        for (const XRect& rect : rects) {
            const XRect overlap = member.intersect(rect);
            if (!overlap.isNull())
                result.m_rects.push_back(overlap);
        }
    }
    return result;
}

XRect XMergedRects::boundRect() const
{
    XRect bound;
    for (const XRect& member : m_rects) {
        if (member.isNull())
            continue;
        if (bound.isNull())
            bound = member;
        bound.top = std::min(bound.top, member.top);
        bound.left = std::min(bound.left, member.left);
        bound.bottom = std::max(bound.bottom, member.bottom);
        bound.right = std::max(bound.right, member.right);
    }
    return bound;
}

XMergedRects& XMergedRects::offset_(int32_t dRow, int32_t dCol)
{
    for (XRect& member : m_rects)
        member.offset_(dRow, dCol);
    return *this;
}

XString XMergedRects::toString(size_t indent) const
{
    const XString blanks(indent, ' ');
    XString text = blanks + "{";
    for (const XRect& member : m_rects)
        text += "\n" + blanks + "    " + member.toString();
    return text + "\n" + blanks + "}";
}

XMergedRects& XMergedRects::addPoints_(std::vector<XPoint> points)
{
    if (!std::is_sorted(points.begin(), points.end()))
        std::sort(points.begin(), points.end());
    std::vector<XRect> open;
    std::vector<XRect> runs;
    for (const auto& [row, col] : points) {
        if (!runs.empty() && runs.back().bottom != row)
            growRuns(open, runs, m_rects);
        if (!runs.empty() && runs.back().right >= col - 1)
            runs.back().right = std::max(runs.back().right, col);
        else
            runs.push_back(XRect(row, col, row, col));
    }
    growRuns(open, runs, m_rects);
    growRuns(open, runs, m_rects);
    return normalize_();
}

} // namespace xstd
