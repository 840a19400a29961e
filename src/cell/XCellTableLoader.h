#pragma once

#include "cell/XCellTable.h"
#include "common/XException.h"
#include "common/XStop.h"

#include <stdexcept>
#include <vector>

namespace huge {

/// Fills an emptied table with cells from a document, whatever form that has. A cell that fails
/// keeps what it took over and costs no other cell.
class XCellTableLoader {
public:
    /// Empties the table and gives it these limits.
    XCellTableLoader(XCellTable& table, const xstd::XRect& mainRect, int32_t baseSize);

    /// Calls read(XCell&) with the unlinked cell at the position that position() gives, and links
    /// it. A std::runtime_error of either becomes a note.
    template <class Position, class Read>
    void load(Position&& position, Read&& read)
    {
        XCell* cell = nullptr;
        try {
            cell = place(position());
            read(*cell);
        } catch (const xstd::XExceptionItems& failure) {
            // Its text fails, and the cell shows that.
            if (xstd::XStop::isStop(failure))
                stopped(*cell);
        } catch (const std::runtime_error& damage) {
            note(cell, damage);
        }
        settle(cell);
    }
    /// Breaks rings, calculates the table if asked to, and hands the notes out. The table remembers
    /// the largest row and column that it ever had. Raises a stop, also one that came while cells
    /// were loaded.
    XCellLoadNotes finish(int32_t maxRow, int32_t maxCol, bool calculates = true);

private:
    XCell* place(const xstd::XPoint& position);
    void stopped(XCell& cell);
    void note(const XCell* cell, const std::runtime_error& damage);
    void settle(XCell* cell);
    void breakRings(const XCellLevels& levels);

    XCellTable& m_table;
    std::vector<XCell*> m_loaded; // in the order of the image
    XCellLoadNotes m_notes;
    bool m_isStopped = false;
};

} // namespace huge
