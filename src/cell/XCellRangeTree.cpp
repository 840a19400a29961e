#include "cell/XCellRangeTree.h"
#include "cell/XCellRange.h"
#include "common/XException.h"

#include <algorithm>

namespace huge {

namespace {

constexpr size_t usualResult = 1024;

int32_t middle(int32_t a, int32_t b) noexcept
{
    return static_cast<int32_t>((int64_t(a) + b) >> 1);
}

xstd::XExceptionItem outOfBound(const xstd::XSourceLocation& where, const xstd::XRect& nodeRect)
{
    return xstd::XExceptionItem(where, "cellRangeTree")
        .setMess("Rect is out of bound")
        .setExtend("nodeRect", nodeRect.toString());
}

} // namespace

size_t XCellRangeBag::placeOf(XCellRange* range) const
{
    if (m_index) {
        const auto found = m_index->find(range);
        return found == m_index->end() ? m_entries.size() : found->second;
    }
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [=](const Entry& entry) { return entry.range == range; });
    return static_cast<size_t>(found - m_entries.begin());
}

void XCellRangeBag::add(const xstd::XRect& rect, XCellRange* range)
{
    if (placeOf(range) != m_entries.size())
        return;
    m_entries.push_back({rect, range});
    if (m_index) {
        m_index->emplace(range, m_entries.size() - 1);
    } else if (m_entries.size() > maxUnindexed) {
        m_index = std::make_unique<Index>();
        for (size_t i = 0; i < m_entries.size(); ++i)
            m_index->emplace(m_entries[i].range, i);
    }
}

void XCellRangeBag::remove(XCellRange* range)
{
    const size_t place = placeOf(range);
    if (place == m_entries.size())
        return;
    const Entry last = m_entries.back();
    m_entries[place] = last;
    m_entries.pop_back();
    if (!m_index)
        return;
    (*m_index)[last.range] = place;
    m_index->erase(range);
}

void XCellRangeBag::move(const xstd::XRect& to, XCellRange* range)
{
    const size_t place = placeOf(range);
    if (place != m_entries.size())
        m_entries[place].rect = to;
}

void XCellRangeBag::appendTo(std::vector<XCellRange*>& out) const
{
    for (const Entry& entry : m_entries)
        out.push_back(entry.range);
}

XCellRangeTreeNode::XCellRangeTreeNode(const xstd::XRect& rect, int32_t baseSize)
    : m_rect(rect), m_midRow(middle(rect.top, rect.bottom)),
      m_midCol(middle(rect.left, rect.right)), m_baseSize(baseSize)
{
    const int64_t height = int64_t(rect.bottom) - rect.top + 1;
    const int64_t width = int64_t(rect.right) - rect.left + 1;
    const bool isNarrow = width <= baseSize;
    const bool isLow = height <= baseSize;
    m_isLeaf = isNarrow && isLow;
    m_isStrip = isNarrow != isLow;
    if (isNarrow)
        m_midCol = rect.right; // the right quarters are empty, and the others whole in width
    if (isLow)
        m_midRow = rect.bottom;
}

bool XCellRangeTreeNode::keeps(const xstd::XRect& rect) const noexcept
{
    if (!m_isStrip)
        return m_isLeaf || rect == m_rect;
    return m_midCol == m_rect.right ? rect.top == m_rect.top && rect.bottom == m_rect.bottom
                                    : rect.left == m_rect.left && rect.right == m_rect.right;
}

bool XCellRangeTreeNode::isEmpty() const noexcept
{
    return m_bag.empty() && std::none_of(m_child.begin(), m_child.end(),
                                         [](const auto& child) { return child != nullptr; });
}

xstd::XRect XCellRangeTreeNode::quarter(size_t i) const noexcept
{
    const bool isLower = i >= 2;
    const bool isRight = i % 2 == 1;
    return xstd::XRect(isLower ? m_midRow + 1 : m_rect.top, isRight ? m_midCol + 1 : m_rect.left,
                       isLower ? m_rect.bottom : m_midRow, isRight ? m_rect.right : m_midCol);
}

int XCellRangeTreeNode::quarterOf(const xstd::XRect& rect) const noexcept
{
    const bool isLower = rect.top > m_midRow;
    const bool isRight = rect.left > m_midCol;
    if (isLower != (rect.bottom > m_midRow) || isRight != (rect.right > m_midCol))
        return -1;
    return (isLower ? 2 : 0) + (isRight ? 1 : 0);
}

XCellRangeTreeNode& XCellRangeTreeNode::forceChild(size_t i)
{
    if (!m_child[i])
        m_child[i] = std::make_unique<XCellRangeTreeNode>(quarter(i), m_baseSize);
    return *m_child[i];
}

void XCellRangeTreeNode::add(const xstd::XRect& rect, XCellRange* range)
{
    if (keeps(rect)) {
        m_bag.add(rect, range);
        return;
    }
    if (const int i = quarterOf(rect); i >= 0) {
        forceChild(static_cast<size_t>(i)).add(rect, range);
        return;
    }
    for (size_t i = 0; i < m_child.size(); ++i) {
        const xstd::XRect clipped = quarter(i).intersect(rect);
        if (!clipped.isNull())
            forceChild(i).add(clipped, range);
    }
}

void XCellRangeTreeNode::remove(const xstd::XRect& rect, XCellRange* range)
{
    if (keeps(rect)) {
        m_bag.remove(range);
        return;
    }
    if (const int i = quarterOf(rect); i >= 0) {
        removeFrom(static_cast<size_t>(i), rect, range);
        return;
    }
    for (size_t i = 0; i < m_child.size(); ++i) {
        const xstd::XRect clipped = quarter(i).intersect(rect);
        if (!clipped.isNull())
            removeFrom(i, clipped, range);
    }
}

void XCellRangeTreeNode::removeFrom(size_t i, const xstd::XRect& rect, XCellRange* range)
{
    if (!m_child[i])
        return;
    m_child[i]->remove(rect, range);
    if (m_child[i]->isEmpty())
        m_child[i].reset();
}

void XCellRangeTreeNode::move(const xstd::XRect& from, const xstd::XRect& to, XCellRange* range)
{
    const bool keepsFrom = keeps(from);
    if (keepsFrom && keeps(to)) {
        m_bag.move(to, range);
        return;
    }
    const int i = keepsFrom || keeps(to) ? -1 : quarterOf(from);
    if (i >= 0 && i == quarterOf(to) && m_child[static_cast<size_t>(i)]) {
        m_child[static_cast<size_t>(i)]->move(from, to, range);
        return;
    }
    remove(from, range);
    add(to, range);
}

void XCellRangeTreeNode::query(int32_t row, int32_t col, std::vector<XCellRange*>& out) const
{
    for (const XCellRangeTreeNode* node = this; node;) {
        for (const XCellRangeBag::Entry& entry : node->m_bag.entries()) {
            if (entry.rect.contains(row, col))
                out.push_back(entry.range);
        }
        const size_t i = (row > node->m_midRow ? 2 : 0) + (col > node->m_midCol ? 1 : 0);
        node = node->m_child[i].get();
    }
}

void XCellRangeTreeNode::query(const xstd::XRect& rect, std::vector<XCellRange*>& out) const
{
    if (rect == m_rect) {
        collect(out); // every range here and below reads a part of this node
        return;
    }
    for (const XCellRangeBag::Entry& entry : m_bag.entries()) {
        if (entry.rect.intersects(rect))
            out.push_back(entry.range);
    }
    for (const auto& child : m_child) {
        const xstd::XRect clipped = child ? child->m_rect.intersect(rect) : xstd::XRect();
        if (!clipped.isNull())
            child->query(clipped, out);
    }
}

void XCellRangeTreeNode::collect(std::vector<XCellRange*>& out) const
{
    m_bag.appendTo(out);
    for (const auto& child : m_child) {
        if (child)
            child->collect(out);
    }
}

XCellRangeTree::XCellRangeTree(const xstd::XRect& rect, int32_t baseSize)
{
    if (rect.isNull())
        throw xstd::XExceptionItems().add(
            xstd::XExceptionItem(X_HERE, "cellRangeTree")
                .setMess("XCellRangeTree root node can't not be a null Rect")
                .setExtend("rect", rect.toString()));
    // Below 1 a node of one cell would still be divided, into itself.
    m_root = std::make_unique<XCellRangeTreeNode>(rect, std::max(baseSize, 1));
}

void XCellRangeTree::add(const xstd::XRect& rect, XCellRange* range)
{
    const xstd::XRect inside = m_root->rect().intersect(rect);
    if (!inside.isNull())
        m_root->add(inside, range);
}

void XCellRangeTree::remove(const xstd::XRect& rect, XCellRange* range)
{
    const xstd::XRect inside = m_root->rect().intersect(rect);
    if (!inside.isNull())
        m_root->remove(inside, range);
}

void XCellRangeTree::move(const xstd::XRect& from, const xstd::XRect& to, XCellRange* range)
{
    const xstd::XRect inside = m_root->rect().intersect(from);
    const xstd::XRect insideTo = m_root->rect().intersect(to);
    if (inside.isNull() || insideTo.isNull()) {
        remove(from, range);
        add(to, range);
        return;
    }
    m_root->move(inside, insideTo, range);
}

size_t XCellRangeTree::getRanges(const xstd::XRect& rect, std::vector<XCellRange*>& out) const
{
    if (rect.isNull() || !m_root->rect().contains(rect))
        throw xstd::XExceptionItems().add(
            outOfBound(X_HERE, m_root->rect()).setExtend("rect", rect.toString()));
    const size_t before = out.size();
    m_root->query(rect, out);
    return out.size() - before;
}

std::vector<XCellRange*> XCellRangeTree::getRanges(const xstd::XRect& rect) const
{
    std::vector<XCellRange*> ranges;
    ranges.reserve(usualResult);
    getRanges(rect, ranges);
    return ranges;
}

size_t XCellRangeTree::getRanges(int32_t row, int32_t col, std::vector<XCellRange*>& out) const
{
    if (!m_root->rect().contains(row, col))
        throw xstd::XExceptionItems().add(
            outOfBound(X_HERE, m_root->rect()).setExtend("row", row).setExtend("col", col));
    const size_t before = out.size();
    m_root->query(row, col, out);
    return out.size() - before;
}

std::vector<XCellRange*> XCellRangeTree::getRanges(int32_t row, int32_t col) const
{
    std::vector<XCellRange*> ranges;
    getRanges(row, col, ranges);
    return ranges;
}

void XCellRangeTree::allRanges(std::vector<XCellRange*>& out) const
{
    m_root->collect(out);
}

std::vector<XCellRange*> XCellRangeTree::allRanges() const
{
    std::vector<XCellRange*> ranges;
    ranges.reserve(usualResult);
    allRanges(ranges);
    return ranges;
}

void XCellRangeTree::getCells(std::vector<XCell*>& out, const std::vector<XCellRange*>& ranges,
                              bool includeDeleted)
{
    for (const XCellRange* range : ranges) {
        if (includeDeleted || !range->ref.isDeleted)
            out.push_back(range->cell);
    }
}

} // namespace huge
