#pragma once

#include "common/XRect.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace huge {

class XCell;
class XCellRange;

/// The references stored at one node, each once, in no particular order, with the part of each that
/// lies in the node: queries test these, and reading them in a row is much cheaper than asking the
/// references themselves. Adding and removing take the same time however many there are: beyond a
/// handful an index from reference to place joins the list, since a popular cell may have 100,000
/// readers.
class XCellRangeBag {
public:
    struct Entry {
        xstd::XRect rect;
        XCellRange* range;
    };

    bool empty() const noexcept { return m_entries.empty(); }
    const std::vector<Entry>& entries() const noexcept { return m_entries; }
    /// Nothing happens when the reference is here already.
    void add(const xstd::XRect& rect, XCellRange* range);
    /// Nothing happens when it is not here.
    void remove(XCellRange* range);
    /// Files the reference, which is here, under another rectangle.
    void move(const xstd::XRect& to, XCellRange* range);
    /// Appends all references to `out`.
    void appendTo(std::vector<XCellRange*>& out) const;

private:
    using Index = std::unordered_map<XCellRange*, size_t>;
    static constexpr size_t maxUnindexed = 32;

    size_t placeOf(XCellRange* range) const;

    std::vector<Entry> m_entries;
    std::unique_ptr<Index> m_index;
};

/// One area of the tree. Child 0 is its top left quarter, 1 the top right, 2 the bottom left, 3
/// the bottom right; they are made when something is stored there. A node is a leaf, for good,
/// when neither side is longer than the base size. With one such side it is a strip: only the
/// other side is halved, and a range that spans the strip's length stays there, to be tested. So
/// a whole column is stored at few nodes, and a column of single cells at a leaf for each few.
class XCellRangeTreeNode {
public:
    XCellRangeTreeNode(const xstd::XRect& rect, int32_t baseSize);

    const xstd::XRect& rect() const noexcept { return m_rect; }
    bool isLeaf() const noexcept { return m_isLeaf; }
    bool isEmpty() const noexcept;
    const XCellRangeBag& bag() const noexcept { return m_bag; }
    /// Null when nothing is stored there.
    const XCellRangeTreeNode* child(size_t i) const noexcept { return m_child[i].get(); }

    /// Stores, or drops, a range whose rectangle clipped to this node is `rect`, which is not null.
    void add(const xstd::XRect& rect, XCellRange* range);
    void remove(const xstd::XRect& rect, XCellRange* range);
    /// remove and add in one; cheap for a short way.
    void move(const xstd::XRect& from, const xstd::XRect& to, XCellRange* range);
    /// Appends what the point, or the rectangle, touches; both lie inside the node.
    void query(int32_t row, int32_t col, std::vector<XCellRange*>& out) const;
    void query(const xstd::XRect& rect, std::vector<XCellRange*>& out) const;
    /// Appends all that this node and those below it hold.
    void collect(std::vector<XCellRange*>& out) const;

private:
    xstd::XRect quarter(size_t i) const noexcept;
    /// Whether a range that is clipped to `rect` here is stored at this node.
    bool keeps(const xstd::XRect& rect) const noexcept;
    /// The quarter that holds the rectangle whole; -1 for one that lies in several.
    int quarterOf(const xstd::XRect& rect) const noexcept;
    XCellRangeTreeNode& forceChild(size_t i);
    void removeFrom(size_t i, const xstd::XRect& rect, XCellRange* range);

    xstd::XRect m_rect;
    int32_t m_midRow;
    int32_t m_midCol;
    int32_t m_baseSize;
    bool m_isLeaf;
    bool m_isStrip;
    XCellRangeBag m_bag;
    std::array<std::unique_ptr<XCellRangeTreeNode>, 4> m_child;
};

/// Tells which references read a position or a rectangle: a quadtree over the table's area that
/// points at references, which it does not own. A rectangle is clipped on its way down and stored
/// where it covers a node whole, spans a strip, or arrives at a leaf. So a whole column costs few
/// entries, and one reference may be found several times.
///
/// A reference is removed under the rectangle with which it was added: whoever changes its ends
/// removes it before and adds it afterwards. Area outside the root is dropped when adding.
class XCellRangeTree {
public:
    /// Covers `rect`, which is not null ("cellRangeTree"), and divides it down to areas of
    /// `baseSize` by `baseSize`, 1 at least.
    XCellRangeTree(const xstd::XRect& rect, int32_t baseSize);

    const XCellRangeTreeNode& root() const noexcept { return *m_root; }

    void add(const xstd::XRect& rect, XCellRange* range);
    void remove(const xstd::XRect& rect, XCellRange* range);
    /// Files a reference under another rectangle than the one with which it was added.
    void move(const xstd::XRect& from, const xstd::XRect& to, XCellRange* range);

    /// Appends every reference that reads a part of `rect`, and perhaps the same one again;
    /// returns how many it appended. Raises "Rect is out of bound" ("cellRangeTree") when the
    /// rectangle is not wholly inside the root's.
    size_t getRanges(const xstd::XRect& rect, std::vector<XCellRange*>& out) const;
    std::vector<XCellRange*> getRanges(const xstd::XRect& rect) const;
    /// The same for one position.
    size_t getRanges(int32_t row, int32_t col, std::vector<XCellRange*>& out) const;
    std::vector<XCellRange*> getRanges(int32_t row, int32_t col) const;
    /// Everything stored, once per node that holds it.
    void allRanges(std::vector<XCellRange*>& out) const;
    std::vector<XCellRange*> allRanges() const;

    /// Appends the owner of each reference; of deleted ones only when asked for.
    static void getCells(std::vector<XCell*>& out, const std::vector<XCellRange*>& ranges,
                         bool includeDeleted);

private:
    std::unique_ptr<XCellRangeTreeNode> m_root;
};

} // namespace huge
