#include "cell/XCellTableLoader.h"

#include "cell/cellName.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace huge {

XCellTableLoader::XCellTableLoader(XCellTable& table, const xstd::XRect& mainRect, int32_t baseSize)
    : m_table(table)
{
    table.clear();
    table.setMainRect(mainRect, baseSize);
    table.m_maxRow = 0;
    table.m_maxCol = 0;
}

XCell* XCellTableLoader::place(const xstd::XPoint& position)
{
    XCell* cell = m_table.forceCell(position.row, position.col);
    m_table.unlinkCell(cell); // an image may name a position twice; the last one counts
    return cell;
}

// The rest of the table has to be loaded all the same, or saving it would lose cells. While the
// flag is up nothing runs, and nothing compiles either.
void XCellTableLoader::stopped(XCell& cell)
{
    m_isStopped = true;
    xstd::XStop::clear();
    try {
        cell.findReferences_(m_table);
    } catch (const xstd::XExceptionItems&) {
        // It does not compile, and shows that.
    }
    xstd::XStop::request();
}

void XCellTableLoader::note(const XCell* cell, const std::runtime_error& damage)
{
    xstd::XString text;
    if (cell)
        text = cellName(cell->row(), cell->col()) + ": ";
    m_notes.add(text + damage.what());
}

void XCellTableLoader::settle(XCell* cell)
{
    if (!cell)
        return;
    m_table.linkCell(cell);
    m_loaded.push_back(cell);
    // Nothing will pass over a cell without references now: its next run must not be left out.
    if (!cell->ranges() && cell->hold() == XCellHold::Fresh)
        cell->setHold(XCellHold::None);
}

void XCellTableLoader::breakRings(const XCellLevels& levels)
{
    std::unordered_map<const XCell*, size_t> order;
    for (size_t i = 0; i < m_loaded.size(); ++i)
        order[m_loaded[i]] = i;
    const auto before = [&](const XCell* a, const XCell* b) { return order[a] < order[b]; };
    for (const std::vector<XCell*>& path : m_table.breakRings(levels, before)) {
        const xstd::XString text = XCellTable::cyclicPathText(path);
        xstd::XExceptionItems ring;
        ring.add(xstd::XExceptionItem(X_HERE, "cellTable")
                     .setMess("There is cyclic dependence: " + text)
                     .setExtend("cyclic", text));
        path.front()->setFailure(ring);
        m_notes.add("There is cyclic dependence: " + text);
    }
}

XCellLoadNotes XCellTableLoader::finish(int32_t maxRow, int32_t maxCol, bool calculates)
{
    m_table.m_maxRow = std::max(m_table.m_maxRow, maxRow);
    m_table.m_maxCol = std::max(m_table.m_maxCol, maxCol);
    if (m_isStopped)
        xstd::XStop::clear(); // for the search of rings: none may stay in the table
    XCellLevels levels = m_table.levelsFrom({});
    if (levels.hasRing) {
        breakRings(levels);
        levels = m_table.levelsFrom({});
    }
    if (m_isStopped)
        xstd::XStop::request();
    xstd::XMergedRects changed;
    if (calculates)
        m_table.calcLevels(changed, levels);
    if (m_isStopped)
        xstd::XStop::poll();
    return std::move(m_notes);
}

} // namespace huge
