#pragma once

#include "cell/XCellRangeRef.h"
#include "common/XMergedRects.h"
#include "common/XRect.h"
#include "values/HugeVariant.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace huge {

class XCell;
class XCellTable;
class XCellVarRange;

/// A live reference of one cell: the reference in absolute form, with the table that it reads and
/// the cell that it belongs to. Table and cell are not owned. Values that point at it
/// (XCellVarRange) register here; when the reference goes, or is overwritten as part of its cell's
/// content, they become invalid instead of dangling. A copy starts without such values.
class XCellRange {
public:
    XCellRange(XCellTable* table, XCell* cell, const XCellRangeRef& ref)
        : table(table), cell(cell), ref(ref)
    {}
    XCellRange(const XCellRange& other) : XCellRange(other.table, other.cell, other.ref) {}
    XCellRange& operator=(const XCellRange& other);
    ~XCellRange() { dropValues(); }

    xstd::XRect rect() const noexcept { return ref.rect(); }
    /// The cell at the top left, or null; null for a number.
    XCell* firstCell() const noexcept;
    /// The cell at the bottom right, or null; null for a number.
    XCell* lastCell() const noexcept;
    /// The stored cells of the rectangle, row by row.
    std::vector<XCell*> cells() const;
    void setDeleted(bool deleted) noexcept { ref.isDeleted = deleted; }

    /// What the reference is worth as a value: that of the top left cell (null when there is no
    /// cell), or the number. A deleted one is the error value "range is invalied".
    HugeVariant toValue() const;
    /// toValue() without a copy: a value that lives in a cell is returned as it stands there,
    /// anything else is put into `scratch`. Good until the cell changes.
    const HugeVariant& value(HugeVariant& scratch) const;
    /// The value at offsets from the top left, from 0. The error value "range is invalied" for
    /// offsets outside the rectangle, a deleted reference and one without table.
    HugeVariant valueAt(int32_t row, int32_t col) const;

    /// Adds every value of the rectangle that is not null to `total`, row by row, and returns how
    /// many there were. A number counts as one value. The reference is not deleted.
    uint64_t addTo(HugeVariant& total) const;
    /// The total, from the integer 0; `count` takes how many values were added. The error value
    /// "range is invalied" when deleted.
    HugeVariant sum(uint64_t& count) const;
    /// How many values are not null; all bits set when deleted.
    uint64_t count() const;
    /// The greatest (least) value that is not null, the first of equal ones; a null handle when
    /// there is none, the error value when deleted.
    HugeVariant max() const;
    HugeVariant min() const;

    XCellTable* table;
    XCell* cell;
    XCellRangeRef ref;

private:
    friend class XCellVarRange;
    template <class Better>
    HugeVariant best(Better better) const;
    void dropValues() noexcept;

    XCellVarRange* m_values = nullptr; // head of a list that runs through the values themselves
};

/// The references of one cell, in the order of their ids. Not to be copied or resized while the
/// cell is linked, because the table's index points at the elements.
class XCellRanges {
public:
    XCellRanges() = default;
    /// The references of a script, bound to the position (row, col) of `owner`.
    XCellRanges(XCellTable* table, XCell* owner, const XCellRangeRefs& relative, int32_t row,
                int32_t col);

    size_t size() const noexcept { return m_ranges.size(); }
    bool empty() const noexcept { return m_ranges.empty(); }
    XCellRange& operator[](size_t i) noexcept { return m_ranges[i]; }
    const XCellRange& operator[](size_t i) const noexcept { return m_ranges[i]; }
    auto begin() noexcept { return m_ranges.begin(); }
    auto end() noexcept { return m_ranges.end(); }
    auto begin() const noexcept { return m_ranges.begin(); }
    auto end() const noexcept { return m_ranges.end(); }

    /// The reference with this id, or null.
    XCellRange* find(int32_t id) noexcept
    {
        // The ids of a script count from 0, so the first look nearly always meets.
        const size_t index = static_cast<size_t>(static_cast<uint32_t>(id));
        if (index < m_ranges.size() && m_ranges[index].ref.id == id)
            return &m_ranges[index];
        return search(id);
    }

    /// True when one of them names cells.
    bool hasRect() const noexcept;
    /// True when one that names cells covers the point, or meets the rectangle; deleted ones too.
    bool containsPoint(int32_t row, int32_t col) const noexcept;
    bool intersectsRect(const xstd::XRect& rect) const noexcept;
    /// What they read, normalised; deleted ones only when asked for.
    xstd::XMergedRects rects(bool includeDeleted) const;
    /// True when every one is deleted, also when there is none.
    bool allDeleted() const noexcept;

    /// Moves each; see XCellRangeRef::move_.
    void shift(int32_t dRow, int32_t dCol, bool force) noexcept;
    void setOwner(XCell* cell) noexcept;
    /// The records alone, for the source text.
    std::vector<XCellRangeRef> refs() const;

private:
    XCellRange* search(int32_t id) noexcept;

    std::vector<XCellRange> m_ranges;
};

} // namespace huge
