#include "common/XRect.h"

namespace xstd {

namespace {

// Not further apart than touching.
bool reach(int32_t firstA, int32_t lastA, int32_t firstB, int32_t lastB)
{
    return int64_t(firstA) <= int64_t(lastB) + 1 && int64_t(firstB) <= int64_t(lastA) + 1;
}

void pushUnlessNull(const XRect& rect, std::vector<XRect>& pieces)
{
    if (!rect.isNull())
        pieces.push_back(rect);
}

} // namespace

XRect& XRect::offset_(int32_t dRow, int32_t dCol)
{
    top += dRow;
    bottom += dRow;
    left += dCol;
    right += dCol;
    return *this;
}

XRect& XRect::normalize_()
{
    if (top > bottom)
        std::swap(top, bottom);
    if (left > right)
        std::swap(left, right);
    return *this;
}

XRect& XRect::transpose_(int32_t row, int32_t col)
{
    offset_(-row, -col);
    std::swap(top, left);
    std::swap(bottom, right);
    normalize_();
    return offset_(row, col);
}

XString XRect::toString() const
{
    if (isNull())
        return "{tl:(null, null), br:{null, null)}";
    return format("{tl:(%d, %d), br:(%d, %d)}", top, left, bottom, right);
}

bool XRect::merge_(const XRect& other)
{
    if (isNull()) {
        *this = other;
        return true;
    }
    if (other.isNull() || contains(other))
        return true;
    if (top == other.top && bottom == other.bottom && reach(left, right, other.left, other.right)) {
        left = std::min(left, other.left);
        right = std::max(right, other.right);
        return true;
    }
    if (left == other.left && right == other.right && reach(top, bottom, other.top, other.bottom)) {
        top = std::min(top, other.top);
        bottom = std::max(bottom, other.bottom);
        return true;
    }
    if (!other.contains(*this))
        return false;
    *this = other;
    return true;
}

bool XRect::addTo(const XRect& other, std::vector<XRect>& pieces)
{
    if (merge_(other))
        return true;
    if (!intersects(other)) {
        pieces.push_back(other);
        return false;
    }
    XRect rest = other;
    pushUnlessNull({rest.top, rest.left, top - 1, rest.right}, pieces);
    rest.top = std::max(rest.top, top);
    pushUnlessNull({bottom + 1, rest.left, rest.bottom, rest.right}, pieces);
    rest.bottom = std::min(rest.bottom, bottom);
    pushUnlessNull({rest.top, rest.left, rest.bottom, left - 1}, pieces);
    pushUnlessNull({rest.top, right + 1, rest.bottom, rest.right}, pieces);
    return true;
}

bool XRect::subtractFrom(const XRect& rect, std::vector<XRect>& pieces) const
{
    if (isNull())
        return false;
    if (!intersects(rect)) {
        pieces.push_back(*this);
        return false;
    }
    XRect rest = *this;
    pushUnlessNull({rest.top, rest.left, rest.bottom, rect.left - 1}, pieces);
    rest.left = std::max(rest.left, rect.left);
    pushUnlessNull({rest.top, rect.right + 1, rest.bottom, rest.right}, pieces);
    rest.right = std::min(rest.right, rect.right);
    pushUnlessNull({rest.top, rest.left, rect.top - 1, rest.right}, pieces);
    pushUnlessNull({rect.bottom + 1, rest.left, rest.bottom, rest.right}, pieces);
    return true;
}

} // namespace xstd
