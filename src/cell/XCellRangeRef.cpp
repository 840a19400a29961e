#include "cell/XCellRangeRef.h"

#include <algorithm>
#include <utility>

namespace huge {

xstd::XRect XCellRangeRef::rect() const noexcept
{
    if (!isCell())
        return xstd::XRect();
    return xstd::XRect(std::min(start.row, end.row), std::min(start.col, end.col),
                       std::max(start.row, end.row), std::max(start.col, end.col));
}

XCellRangeRef& XCellRangeRef::shift_(int32_t dRow, int32_t dCol, bool force) noexcept
{
    start.shift_(dRow, dCol, force);
    end.shift_(dRow, dCol, force);
    return *this;
}

XCellRangeRef& XCellRangeRef::normalize_() noexcept
{
    if (!start.isCell() || !end.isCell())
        return *this;
    const auto swapFlags = [this](uint8_t mask) {
        const uint8_t differing = (start.flags ^ end.flags) & mask;
        start.flags ^= differing;
        end.flags ^= differing;
    };
    if (start.row > end.row) {
        std::swap(start.row, end.row);
        swapFlags(0x0f);
    }
    if (start.col > end.col) {
        std::swap(start.col, end.col);
        swapFlags(0xf0);
    }
    return *this;
}

XCellRangeRef& XCellRangeRef::bind_(int32_t row, int32_t col) noexcept
{
    if (!start.canShift(row, col, false) || !end.canShift(row, col, false))
        isDeleted = true;
    start.shiftClamped_(row, col);
    end.shiftClamped_(row, col);
    return normalize_();
}

XCellRangeRef& XCellRangeRef::move_(int32_t dRow, int32_t dCol, bool force) noexcept
{
    if (start.canShift(dRow, dCol, force) && end.canShift(dRow, dCol, force))
        return shift_(dRow, dCol, force).normalize_();
    isDeleted = true;
    return *this;
}

XCellRangeRef& XCellRangeRef::transpose_(int32_t row, int32_t col) noexcept
{
    if (!start.canTranspose(row, col) || !end.canTranspose(row, col)) {
        isDeleted = true;
        return *this;
    }
    start.transpose_(row, col);
    end.transpose_(row, col);
    return normalize_();
}

xstd::XString XCellRangeRef::toText(bool showRef) const
{
    return toTextShifted(0, 0, showRef);
}

xstd::XString XCellRangeRef::toTextShifted(int32_t dRow, int32_t dCol, bool showRef) const
{
    if (showRef && isDeleted)
        return "#REF#";
    xstd::XString text = start.toTextShifted(dRow, dCol, true);
    if (isCell() && start != end)
        text += ":" + end.toTextShifted(dRow, dCol, true);
    return text;
}

xstd::XString XCellRangeRef::toRcText() const
{
    return toRcTextShifted(0, 0);
}

xstd::XString XCellRangeRef::toRcTextShifted(int32_t dRow, int32_t dCol) const
{
    if (!isCell())
        return start.toText(true);
    const auto text = [&](const XCellPos& pos) {
        const XCellPos shifted = pos.shifted(dRow, dCol, false);
        return xstd::format("(%d, %d)", shifted.row, shifted.signedCol());
    };
    return start == end ? text(start) : text(start) + ":" + text(end);
}

bool XCellRangeRef::parse(const xstd::XString& text, XCellRangeRef& out)
{
    XCellPos start;
    XCellPos end;
    if (XCellPos::parse(text, start)) {
        if (start.isCell())
            end = start;
    } else {
        const size_t colon = text.find(':');
        if (colon == xstd::XString::npos)
            return false;
        // Both halves are cells: the prefix of a number holds the first colon of its text.
        if (!XCellPos::parse(xstd::XString(text.substr(0, colon)), start) ||
            !XCellPos::parse(xstd::XString(text.substr(colon + 1)), end) || !end.isCell())
            return false;
    }
    out.start = start;
    out.end = end;
    out.normalize_();
    return true;
}

xstd::XString spliceRefs(const xstd::XString& source, std::vector<XCellRangeRef> refs, bool showRef)
{
    std::sort(refs.begin(), refs.end(),
              [](const XCellRangeRef& a, const XCellRangeRef& b) { return a.textPos < b.textPos; });
    xstd::XString text;
    text.reserve(source.size());
    size_t cursor = 0;
    for (const XCellRangeRef& ref : refs) {
        const size_t begin = static_cast<size_t>(std::max(ref.textPos, 0));
        if (begin < cursor || begin > source.size())
            continue; // no token of this source
        text.append(source, cursor, begin - cursor);
        text += ref.toText(showRef);
        cursor = std::min(begin + ref.textLen, source.size());
    }
    text.append(source, cursor, xstd::XString::npos);
    return text;
}

} // namespace huge
