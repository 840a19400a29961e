#include "cell/XCellRange.h"
#include "cell/XCell.h"
#include "cell/XCellTable.h"
#include "cell/XCellVarError.h"
#include "cell/XCellVarRange.h"
#include "common/XStop.h"
#include "values/HugeVarInt.h"

#include <algorithm>
#include <limits>

namespace huge {

namespace {

/// Calls fn(const HugeVariant&) for every value of the rectangle that is not null, row by row.
template <class F>
void forEachValue(const XCellTable* table, const xstd::XRect& rect, F&& fn)
{
    if (!table)
        return;
    table->forEachCell(rect, [&](const XCell* cell) {
        xstd::XStop::poll(); // a rectangle may hold millions of cells
        const HugeVariant& value = cell->value();
        if (!value.isNull())
            fn(value);
    });
}

/// The integer of a handle that holds one of a single limb inside 64 signed bits; false otherwise.
bool smallInteger(const HugeVariant& value, int64_t& out)
{
    if (!value.holds(HugeVarClass::Int))
        return false;
    const HugeInteger& integer = static_cast<const HugeVarInt*>(value.object())->value();
    if (integer.size() != 1 || integer.limbs()[0] > Limb(std::numeric_limits<int64_t>::max()))
        return false;
    out = integer.asInt64();
    return true;
}

/// Adds values to a total one by one, and holds the total in a register as long as it and what
/// comes are small integers, because columns of these are what is added most. The result, down to
/// its limb count, is that of +=.
class RunningTotal {
public:
    explicit RunningTotal(HugeVariant& total) : m_total(total) { load(); }

    void add(const HugeVariant& value)
    {
        int64_t number = 0;
        int64_t sum = 0;
        if (m_isLoaded && smallInteger(value, number) &&
            !__builtin_add_overflow(m_small, number, &sum)) {
            m_small = sum;
            return;
        }
        store();
        m_total += value;
        load();
    }
    /// Puts the total back; add nothing afterwards.
    void store()
    {
        if (m_isLoaded)
            static_cast<HugeVarInt*>(m_total.object())->value() = m_small;
    }

private:
    void load() { m_isLoaded = smallInteger(m_total, m_small); }

    HugeVariant& m_total;
    int64_t m_small = 0;
    bool m_isLoaded = false;
};

HugeVariant numberOf(const XCellRangeRef& ref)
{
    return HugeVariant(int64_t(ref.start.row));
}

} // namespace

XCellRange& XCellRange::operator=(const XCellRange& other)
{
    if (this == &other)
        return *this;
    dropValues();
    table = other.table;
    cell = other.cell;
    ref = other.ref;
    return *this;
}

void XCellRange::dropValues() noexcept
{
    while (m_values)
        m_values->withdraw();
}

XCell* XCellRange::firstCell() const noexcept
{
    const xstd::XRect area = rect();
    return table && ref.isCell() ? table->cellAt(area.top, area.left) : nullptr;
}

XCell* XCellRange::lastCell() const noexcept
{
    const xstd::XRect area = rect();
    return table && ref.isCell() ? table->cellAt(area.bottom, area.right) : nullptr;
}

std::vector<XCell*> XCellRange::cells() const
{
    std::vector<XCell*> found;
    if (table)
        table->forEachCell(rect(), [&](XCell* stored) { found.push_back(stored); });
    return found;
}

HugeVariant XCellRange::toValue() const
{
    HugeVariant scratch;
    return value(scratch);
}

const HugeVariant& XCellRange::value(HugeVariant& scratch) const
{
    if (ref.isDeleted)
        return scratch.replace_(invalidRange());
    if (!ref.isCell())
        return scratch.replace_(numberOf(ref));
    const XCell* first = firstCell();
    return first ? first->value() : scratch.clear_();
}

HugeVariant XCellRange::valueAt(int32_t row, int32_t col) const
{
    const xstd::XRect area = rect();
    if (ref.isDeleted || !table || row < 0 || row >= area.height() || col < 0 ||
        col >= area.width())
        return invalidRange();
    const XCell* found = table->cellAt(area.top + row, area.left + col);
    return found ? found->value() : HugeVariant();
}

uint64_t XCellRange::addTo(HugeVariant& total) const
{
    if (!ref.isCell()) {
        total += numberOf(ref);
        return 1;
    }
    uint64_t added = 0;
    RunningTotal running(total);
    forEachValue(table, rect(), [&](const HugeVariant& value) {
        running.add(value);
        ++added;
    });
    running.store();
    return added;
}

HugeVariant XCellRange::sum(uint64_t& count) const
{
    if (ref.isDeleted)
        return invalidRange();
    HugeVariant total(int64_t(0));
    count = addTo(total);
    return total;
}

uint64_t XCellRange::count() const
{
    if (ref.isDeleted)
        return ~uint64_t(0);
    if (!ref.isCell())
        return 1;
    uint64_t counted = 0;
    forEachValue(table, rect(), [&](const HugeVariant&) { ++counted; });
    return counted;
}

template <class Better>
HugeVariant XCellRange::best(Better better) const
{
    if (ref.isDeleted)
        return invalidRange();
    if (!ref.isCell())
        return numberOf(ref);
    const HugeVariant* found = nullptr;
    forEachValue(table, rect(), [&](const HugeVariant& value) {
        if (!found || better(value, *found))
            found = &value;
    });
    return found ? *found : HugeVariant();
}

HugeVariant XCellRange::max() const
{
    return best([](const HugeVariant& value, const HugeVariant& best) { return best < value; });
}

HugeVariant XCellRange::min() const
{
    return best([](const HugeVariant& value, const HugeVariant& best) { return best > value; });
}

XCellRanges::XCellRanges(XCellTable* table, XCell* owner, const XCellRangeRefs& relative,
                         int32_t row, int32_t col)
{
    m_ranges.reserve(relative.size());
    for (const auto& entry : relative)
        m_ranges.emplace_back(table, owner, XCellRangeRef(entry.second).bind_(row, col));
}

XCellRange* XCellRanges::search(int32_t id) noexcept
{
    const auto found = std::find_if(m_ranges.begin(), m_ranges.end(),
                                    [id](const XCellRange& range) { return range.ref.id == id; });
    return found == m_ranges.end() ? nullptr : &*found;
}

bool XCellRanges::hasRect() const noexcept
{
    return std::any_of(m_ranges.begin(), m_ranges.end(),
                       [](const XCellRange& range) { return range.ref.isCell(); });
}

bool XCellRanges::containsPoint(int32_t row, int32_t col) const noexcept
{
    return std::any_of(m_ranges.begin(), m_ranges.end(),
                       [=](const XCellRange& range) { return range.rect().contains(row, col); });
}

bool XCellRanges::intersectsRect(const xstd::XRect& rect) const noexcept
{
    return std::any_of(m_ranges.begin(), m_ranges.end(),
                       [&](const XCellRange& range) { return range.rect().intersects(rect); });
}

xstd::XMergedRects XCellRanges::rects(bool includeDeleted) const
{
    xstd::XMergedRects rects;
    for (const XCellRange& range : m_ranges) {
        if (range.ref.isCell() && (includeDeleted || !range.ref.isDeleted))
            rects.add_(range.rect());
    }
    rects.normalize_();
    return rects;
}

bool XCellRanges::allDeleted() const noexcept
{
    return std::all_of(m_ranges.begin(), m_ranges.end(),
                       [](const XCellRange& range) { return range.ref.isDeleted; });
}

void XCellRanges::shift(int32_t dRow, int32_t dCol, bool force) noexcept
{
    for (XCellRange& range : m_ranges)
        range.ref.move_(dRow, dCol, force);
}

void XCellRanges::setOwner(XCell* cell) noexcept
{
    for (XCellRange& range : m_ranges)
        range.cell = cell;
}

std::vector<XCellRangeRef> XCellRanges::refs() const
{
    std::vector<XCellRangeRef> refs;
    refs.reserve(m_ranges.size());
    for (const XCellRange& range : m_ranges)
        refs.push_back(range.ref);
    return refs;
}

} // namespace huge
