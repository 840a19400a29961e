#include "cell/XCellTable.h"

#include <algorithm>
#include <utility>

namespace huge {

namespace {

/// A reference with where its cell stands, to sort by.
struct OwnedRange {
    xstd::XPoint owner;
    XCellRange* range;

    auto operator<=>(const OwnedRange&) const = default;
};

/// Moves the whole reference. One that reached beyond what counts is cut at the limits of the
/// table instead of being lost there: a reference to a whole column stays one.
void follow(XCellRangeRef& ref, bool reachesBeyond, int32_t dRow, int32_t dCol)
{
    if (reachesBeyond && ref.start.canShift(dRow, dCol, true) &&
        !ref.end.canShift(dRow, dCol, true)) {
        ref.start.shift_(dRow, dCol, true);
        ref.end.row = std::min(ref.end.row + dRow, XCellPos::maxRow);
        ref.end.col = static_cast<uint16_t>(std::min(ref.end.signedCol() + dCol, XCellPos::maxCol));
        return;
    }
    ref.move_(dRow, dCol, true);
}

/// Lets one edge of a reference follow, when it lies whole in the rectangles that move and moves
/// across itself.
void stretch(XCellRangeRef& ref, const xstd::XRect& area, const xstd::XMergedRects& rects,
             int32_t dRow, int32_t dCol)
{
    const bool topRight = rects.contains(area.top, area.right);
    const bool bottomLeft = rects.contains(area.bottom, area.left);
    if (!rects.contains(area.top, area.left)) {
        if (!rects.contains(area.bottom, area.right))
            return;
        if (topRight && dRow == 0 && int64_t(area.right) + dCol >= area.left)
            ref.end.shiftClamped_(0, dCol);
        else if (bottomLeft && dCol == 0 && int64_t(area.bottom) + dRow >= area.top)
            ref.end.shiftClamped_(dRow, 0);
    } else if (topRight && dCol == 0 && int64_t(area.top) + dRow <= area.bottom) {
        ref.start.shiftClamped_(dRow, 0);
    } else if (bottomLeft && dRow == 0 && int64_t(area.left) + dCol <= area.right) {
        ref.start.shiftClamped_(0, dCol);
    }
}

} // namespace

std::vector<XCellRange*> XCellTable::rangesInto(const xstd::XMergedRects& rects)
{
    m_foundRanges.clear();
    for (const xstd::XRect& rect : rects) {
        const xstd::XRect inside = m_mainRect.intersect(rect);
        if (!rect.isNull() && !inside.isNull())
            m_rangeTree->getRanges(inside, m_foundRanges);
    }
    for (XCell* cell : m_heldOutCells) {
        for (XCellRange& range : *cell->ranges()) {
            if (rects.intersects(range.rect()))
                m_foundRanges.push_back(&range);
        }
    }
    std::vector<OwnedRange> owned;
    owned.reserve(m_foundRanges.size());
    for (XCellRange* range : m_foundRanges)
        owned.push_back({{range->cell->row(), range->cell->col()}, range});
    if (!std::is_sorted(owned.begin(), owned.end()))
        std::sort(owned.begin(), owned.end());
    owned.erase(std::unique(owned.begin(), owned.end()), owned.end());
    std::vector<XCellRange*> ranges;
    ranges.reserve(owned.size());
    for (const OwnedRange& entry : owned)
        ranges.push_back(entry.range);
    return ranges;
}

void XCellTable::setRef(XCellRange& range, const XCellRangeRef& ref)
{
    const bool isFiled = range.cell->isLinked() && ref.isCell() && ref.rect() != range.rect();
    if (isFiled)
        m_rangeTree->move(range.rect(), ref.rect(), &range);
    range.ref = ref;
}

/// Calls rewrite(ref, area) with a copy of each reference into `rects` and the part of its
/// rectangle that counts, and puts what it made of the copy in the reference's place.
template <class F>
void XCellTable::rewriteRanges(const xstd::XMergedRects& rects, const xstd::XRect& reach,
                               XSavedRanges& saved, F&& rewrite)
{
    for (XCellRange* range : rangesInto(rects)) {
        const xstd::XRect before = range->rect();
        const xstd::XRect area = before.intersect(reach);
        if (range->ref.isDeleted || area.isNull() || !rects.intersects(area))
            continue;
        XCellRangeRef ref = range->ref;
        rewrite(ref, area);
        if (ref == range->ref)
            continue;
        XCell* cell = range->cell;
        const xstd::XPoint point{cell->row(), cell->col()};
        // They come in this order, so that the end is where a new entry belongs.
        if (saved.empty() || saved.rbegin()->first < point)
            saved.emplace_hint(saved.end(), point, std::make_unique<XCellRanges>(*cell->ranges()));
        else if (std::unique_ptr<XCellRanges>& entry = saved[point]; !entry)
            entry = std::make_unique<XCellRanges>(*cell->ranges());
        setRef(*range, ref);
    }
}

void XCellTable::markRefsDeleted(const xstd::XMergedRects& rects, const xstd::XRect& reach,
                                 XSavedRanges& saved)
{
    rewriteRanges(rects, reach, saved, [&](XCellRangeRef& ref, const xstd::XRect& area) {
        if (rects.covers(area))
            ref.isDeleted = true;
    });
}

void XCellTable::clipRangesAtRows(const xstd::XRect& band, const xstd::XRect& reach,
                                  XSavedRanges& saved)
{
    rewriteRanges(band, reach, saved, [&](XCellRangeRef& ref, const xstd::XRect& area) {
        if (area.left < band.left || area.right > band.right || band.contains(area))
            return;
        if (ref.start.row >= band.top)
            ref.start.row = band.bottom + 1;
        else if (ref.end.row <= band.bottom)
            ref.end.row = band.top - 1;
    });
}

void XCellTable::clipRangesAtCols(const xstd::XRect& band, const xstd::XRect& reach,
                                  XSavedRanges& saved)
{
    rewriteRanges(band, reach, saved, [&](XCellRangeRef& ref, const xstd::XRect& area) {
        if (area.top < band.top || area.bottom > band.bottom || band.contains(area))
            return;
        if (ref.start.signedCol() >= band.left)
            ref.start.col = static_cast<uint16_t>(band.right + 1);
        else if (ref.end.signedCol() <= band.right)
            ref.end.col = static_cast<uint16_t>(band.left - 1);
    });
}

void XCellTable::moveRanges(const xstd::XMergedRects& rects, int32_t dRow, int32_t dCol,
                            const xstd::XRect& reach, XSavedRanges& saved)
{
    rewriteRanges(rects, reach, saved, [&](XCellRangeRef& ref, const xstd::XRect& area) {
        if (rects.covers(area))
            follow(ref, area != ref.rect(), dRow, dCol);
        else
            stretch(ref, area, rects, dRow, dCol);
    });
}

void XCellTable::transposeRanges(const xstd::XRect& rect, XSavedRanges& saved)
{
    rewriteRanges(rect, m_mainRect, saved, [&](XCellRangeRef& ref, const xstd::XRect&) {
        if (rect.contains(ref.rect()))
            ref.transpose_(rect.top, rect.left);
    });
}

} // namespace huge
