#include "cell/XCellTable.h"
#include "cell/cellName.h"
#include "common/XStop.h"

#include <tuple>
#include <utility>

namespace huge {

namespace {

void addPositions(xstd::XMergedRects& out, const std::vector<XCell*>& cells)
{
    std::vector<xstd::XPoint> points;
    points.reserve(cells.size());
    for (const XCell* cell : cells)
        points.push_back({cell->row(), cell->col()});
    out.addPoints_(std::move(points));
}

bool isEdge(const XCellRange& range)
{
    return range.ref.isCell() && !range.ref.isDeleted;
}

/// Where the search for a ring stands in one cell: the position that it looks at next among the
/// rectangles that the cell reads.
struct SearchFrame {
    XCell* cell;
    size_t range = 0;
    int32_t row = -1; // -1: at the rectangle's start
    int32_t col = 0;
};

/// The next linked cell that the frame's cell reads, or null at the end. It walks stored cells
/// without making a list, so that a long path through large rectangles needs little memory.
XCell* nextRead(const XCellTable& table, SearchFrame& frame)
{
    XCellRanges& ranges = *frame.cell->ranges();
    for (; frame.range < ranges.size(); ++frame.range, frame.row = -1) {
        if (!isEdge(ranges[frame.range]))
            continue;
        const xstd::XRect rect = ranges[frame.range].rect();
        if (frame.row < 0) {
            frame.row = rect.top;
            frame.col = rect.left;
        }
        const int32_t bottom = std::min(rect.bottom, table.endRow() - 1);
        for (; frame.row <= bottom; ++frame.row, frame.col = rect.left) {
            const int32_t right = std::min(rect.right, table.endCol(frame.row) - 1);
            while (frame.col <= right) {
                XCell* cell = table.cellAt(frame.row, frame.col++);
                if (cell && cell->isLinked())
                    return cell;
            }
        }
    }
    return nullptr;
}

} // namespace

/// Numbers the cells that one pass of the table meets. The number stands in the cell itself, valid
/// while the cell's mark is that of the pass, so that a pass needs no map from cell to number.
class XCellMarks {
public:
    explicit XCellMarks(uint32_t mark) : m_mark(mark) {}

    bool isMarked(const XCell* cell) const { return cell->m_mark == m_mark; }
    uint32_t number(const XCell* cell) const { return cell->m_order; }
    void mark(XCell* cell, uint32_t number) const
    {
        cell->m_mark = m_mark;
        cell->m_order = number;
    }

private:
    uint32_t m_mark;
};

/// Collects what depends on the seeds, asking the index once per cell, and orders it by counting
/// for each cell how many reached cells it still waits for. So the cost is linear in cells and
/// edges, however long the chains are.
class XCellLevelBuilder {
public:
    explicit XCellLevelBuilder(XCellTable& table) : m_table(table), m_marks(table.nextMark()) {}

    void add(XCell* cell) { numberOf(cell); }
    XCellLevels build();

private:
    // Beyond this many edges they are asked for again instead of kept, to bound the memory.
    static constexpr size_t maxKeptEdges = size_t(1) << 24;

    uint32_t numberOf(XCell* cell);
    void reach();
    void assignLevels();
    XCellLevels sorted() const;
    template <class F>
    void forEachReader(uint32_t number, F&& fn);

    XCellTable& m_table;
    XCellMarks m_marks;
    std::vector<XCell*> m_cells;
    std::vector<uint32_t>
        m_waitsFor; // per cell: reached cells that it reads and that have no level
    std::vector<uint32_t> m_level;
    std::vector<uint32_t> m_edges; // the readers' numbers, cell by cell
    std::vector<size_t> m_firstEdge;
    std::vector<XCell*> m_readers; // scratch of one query
    uint32_t m_levelCount = 0;
    bool m_hasRing = false;
    bool m_edgesKept = true;
};

uint32_t XCellLevelBuilder::numberOf(XCell* cell)
{
    if (!m_marks.isMarked(cell)) {
        m_marks.mark(cell, static_cast<uint32_t>(m_cells.size()));
        m_cells.push_back(cell);
        m_waitsFor.push_back(0);
    }
    return m_marks.number(cell);
}

void XCellLevelBuilder::reach()
{
    for (size_t i = 0; i < m_cells.size(); ++i) { // grows while it runs
        m_readers.clear();
        m_table.appendReaders(*m_cells[i], m_readers);
        m_firstEdge.push_back(m_edges.size());
        for (XCell* reader : m_readers) {
            const uint32_t number = numberOf(reader);
            ++m_waitsFor[number];
            if (m_edgesKept)
                m_edges.push_back(number);
        }
        if (m_edges.size() > maxKeptEdges) {
            m_edgesKept = false;
            std::vector<uint32_t>().swap(m_edges);
        }
    }
    m_firstEdge.push_back(m_edges.size());
}

template <class F>
void XCellLevelBuilder::forEachReader(uint32_t number, F&& fn)
{
    if (m_edgesKept) {
        for (size_t i = m_firstEdge[number]; i < m_firstEdge[number + 1]; ++i)
            fn(m_edges[i]);
        return;
    }
    m_readers.clear();
    m_table.appendReaders(*m_cells[number], m_readers);
    for (const XCell* reader : m_readers)
        fn(m_marks.number(reader));
}

void XCellLevelBuilder::assignLevels()
{
    const uint32_t count = static_cast<uint32_t>(m_cells.size());
    m_level.assign(count, 0);
    std::vector<uint32_t> ready;
    ready.reserve(count);
    for (uint32_t i = 0; i < count; ++i) {
        if (m_waitsFor[i] == 0)
            ready.push_back(i);
    }
    for (size_t i = 0; i < ready.size(); ++i) {
        const uint32_t next = m_level[ready[i]] + 1;
        m_levelCount = std::max(m_levelCount, next);
        forEachReader(ready[i], [&](uint32_t reader) {
            m_level[reader] = std::max(m_level[reader], next);
            if (--m_waitsFor[reader] == 0)
                ready.push_back(reader);
        });
    }
    m_hasRing = ready.size() != count;
    if (!m_hasRing)
        return;
    for (uint32_t i = 0; i < count; ++i) { // a ring, and what hangs on it
        if (m_waitsFor[i] != 0)
            m_level[i] = m_levelCount;
    }
    ++m_levelCount;
}

XCellLevels XCellLevelBuilder::sorted() const
{
    XCellLevels levels;
    levels.hasRing = m_hasRing;
    std::vector<size_t> place(m_levelCount + 1, 0);
    for (const uint32_t level : m_level)
        ++place[level + 1];
    for (uint32_t level = 0; level < m_levelCount; ++level)
        place[level + 1] += place[level];
    levels.starts.assign(place.begin(), place.end() - 1);
    levels.cells.resize(m_cells.size());
    for (size_t i = 0; i < m_cells.size(); ++i)
        levels.cells[place[m_level[i]]++] = m_cells[i];

    const auto byPosition = [](const XCell* a, const XCell* b) {
        return a->row() != b->row() ? a->row() < b->row() : a->col() < b->col();
    };
    for (size_t level = 0; level < levels.count(); ++level) {
        const auto begin = levels.cells.begin() + static_cast<std::ptrdiff_t>(levels.starts[level]);
        const auto end = levels.cells.begin() + static_cast<std::ptrdiff_t>(levels.end(level));
        if (!std::is_sorted(begin, end, byPosition))
            std::sort(begin, end, byPosition);
    }
    return levels;
}

XCellLevels XCellLevelBuilder::build()
{
    reach();
    assignLevels();
    return sorted();
}

void XCellTable::appendReaders(const XCell& cell, std::vector<XCell*>& out)
{
    if (!m_mainRect.contains(cell.row(), cell.col()))
        return; // the index does not reach there
    m_foundRanges.clear();
    m_rangeTree->getRanges(cell.row(), cell.col(), m_foundRanges);
    for (const XCellRange* range : m_foundRanges) {
        if (isEdge(*range))
            out.push_back(range->cell);
    }
}

void XCellTable::appendRectReaders(const xstd::XRect& rect, std::vector<XCell*>& out)
{
    const xstd::XRect inside = m_mainRect.intersect(rect);
    if (rect.isNull() || inside.isNull())
        return;
    m_foundRanges.clear();
    m_rangeTree->getRanges(inside, m_foundRanges);
    for (const XCellRange* range : m_foundRanges) {
        if (isEdge(*range))
            out.push_back(range->cell);
    }
}

std::vector<XCell*> XCellTable::findCycle()
{
    const XCellMarks seen(nextMark());
    constexpr uint32_t onPath = 0;
    constexpr uint32_t done = 1;
    std::vector<SearchFrame> stack;
    for (XCell* start : m_linkedCells) {
        if (seen.isMarked(start))
            continue;
        seen.mark(start, onPath);
        stack.push_back({start});
        while (!stack.empty()) {
            XCell* cell = nextRead(*this, stack.back());
            if (!cell) {
                seen.mark(stack.back().cell, done);
                stack.pop_back();
            } else if (!seen.isMarked(cell)) {
                seen.mark(cell, onPath);
                stack.push_back({cell});
            } else if (seen.number(cell) == onPath) {
                std::vector<XCell*> path;
                for (auto frame = stack.rbegin(); path.empty() || path.back() != cell; ++frame)
                    path.push_back(frame->cell);
                return path;
            }
        }
    }
    return {};
}

std::vector<XCell*> XCellTable::findCycleThrough(XCell* cell)
{
    if (!cell || !cell->isLinked())
        return {};
    // Along the readers: these are recalculated next anyway, while what a cell reads may be the
    // whole table.
    const XCellMarks seen(nextMark());
    std::vector<XCell*> reached{cell};
    std::vector<size_t> from{0};
    std::vector<XCell*> readers;
    seen.mark(cell, 0);
    for (size_t i = 0; i < reached.size(); ++i) {
        readers.clear();
        appendReaders(*reached[i], readers);
        for (XCell* reader : readers) {
            if (reader == cell) {
                std::vector<XCell*> path{reached[i]};
                for (size_t k = i; k != 0; k = from[k])
                    path.push_back(reached[from[k]]);
                std::reverse(path.begin(), path.end());
                return path;
            }
            if (!seen.isMarked(reader)) {
                seen.mark(reader, 0);
                reached.push_back(reader);
                from.push_back(i);
            }
        }
    }
    return {};
}

std::vector<std::vector<XCell*>> XCellTable::breakRings(const XCellLevels& levels,
                                                        const xstd::XMergedRects& changed)
{
    const auto rank = [&](const XCell* cell) {
        return std::tuple(changed.contains(cell->row(), cell->col()), cell->row(), cell->col());
    };
    return breakRings(levels, [&](const XCell* a, const XCell* b) { return rank(a) < rank(b); });
}

std::vector<std::vector<XCell*>> XCellTable::breakRings(const XCellLevels& levels,
                                                        const CellOrder& before)
{
    if (!levels.hasRing)
        return {};
    const XCellMarks seen(nextMark());
    enum : uint32_t { onPath, done, open };
    const size_t first = levels.starts.back();
    for (size_t i = first; i < levels.cells.size(); ++i)
        seen.mark(levels.cells[i], open);

    std::vector<std::vector<XCell*>> rings;
    std::vector<SearchFrame> stack;
    for (size_t i = first; i < levels.cells.size(); ++i) {
        if (seen.number(levels.cells[i]) == done || !levels.cells[i]->isLinked())
            continue;
        seen.mark(levels.cells[i], onPath);
        stack.push_back({levels.cells[i]});
        while (!stack.empty()) {
            XCell* cell = nextRead(*this, stack.back());
            if (!cell) {
                seen.mark(stack.back().cell, done);
                stack.pop_back();
            } else if (!seen.isMarked(cell) || seen.number(cell) == done) {
                continue; // no ring passes through it
            } else if (seen.number(cell) == open) {
                seen.mark(cell, onPath);
                stack.push_back({cell});
            } else {
                std::vector<XCell*> path;
                for (auto frame = stack.rbegin(); path.empty() || path.back() != cell; ++frame)
                    path.push_back(frame->cell);
                const auto last = std::max_element(path.begin(), path.end(), before);
                holdOut(*last);
                std::rotate(path.begin(), last, path.end());
                // The search goes on from the cell that reads the one that has gone.
                while (seen.number(path.front()) != open) {
                    seen.mark(stack.back().cell, open);
                    stack.pop_back();
                }
                seen.mark(path.front(), done);
                rings.push_back(std::move(path));
            }
        }
    }
    return rings;
}

xstd::XString XCellTable::cyclicPathText(const std::vector<XCell*>& path)
{
    xstd::XString text;
    for (const XCell* cell : path)
        text += cellName(cell->row(), cell->col()) + "->";
    if (!path.empty())
        text += cellName(path.front()->row(), path.front()->col());
    return text;
}

XCellLevels XCellTable::levelsFrom(const std::vector<XCell*>& seeds)
{
    XCellLevelBuilder builder(*this);
    for (XCell* cell : seeds.empty() ? m_linkedCells : seeds)
        builder.add(cell);
    return builder.build();
}

XCellLevels XCellTable::levelsFromRects(const xstd::XMergedRects& rects, bool withCells)
{
    // First the cells: they come in an order in which the passes over them go through the memory
    // from front to back.
    XCellLevelBuilder builder(*this);
    if (withCells) {
        for (const xstd::XRect& rect : rects)
            forEachCell(rect, [&](XCell* cell) { builder.add(cell); });
    }
    std::vector<XCell*> readers;
    for (const xstd::XRect& rect : rects)
        appendRectReaders(rect, readers);
    for (XCell* reader : readers)
        builder.add(reader);
    return builder.build();
}

void XCellTable::calcLevels(xstd::XMergedRects& changed, const XCellLevels& levels)
{
    size_t next = 0;
    try {
        for (; next < levels.cells.size(); ++next) {
            xstd::XStop::poll();
            levels.cells[next]->calc_();
        }
    } catch (const xstd::XExceptionItems& stop) {
        for (; next < levels.cells.size(); ++next)
            levels.cells[next]->showStop(stop);
        addPositions(changed, levels.cells);
        throw;
    }
    addPositions(changed, levels.cells);
}

void XCellTable::recalc(xstd::XMergedRects& changed, const xstd::XMergedRects& rects)
{
    calcLevels(changed, levelsFromRects(rects, true));
}

void XCellTable::recalcCells(xstd::XMergedRects& changed, const std::vector<XCell*>& cells)
{
    if (!cells.empty())
        calcLevels(changed, levelsFrom(cells));
}

void XCellTable::recalcAll(xstd::XMergedRects& changed)
{
    calcLevels(changed, levelsFrom({}));
}

} // namespace huge
