#pragma once

#include "cell/ScriptSet.h"
#include "cell/XCell.h"
#include "cell/XCellRangeTree.h"
#include "cell/XCellRow.h"
#include "common/XMergedRects.h"
#include "common/XOptions.h"
#include "common/XRect.h"
#include "common/XString.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace huge {

/// What the operations of a table understand as options.
enum XCellTableOption : int {
    optAll = 0,        ///< no restriction
    optValueOnly = 1,  ///< the result value alone
    optScriptOnly = 2, ///< text, script and references; in collections: cells with references
    optPlain = 3,      ///< the whole cell
    optCopy = 4,       ///< save or give back a copy
    optTake = 5,       ///< save by taking out of the table, or give the saved object itself back
    optPointer = 7     ///< save by pointing at what stays in the table
};

/// Cells saved by an action, by position. A null entry went back to the table.
using XSavedCells = std::map<xstd::XPoint, std::unique_ptr<XCell>>;
/// Cells of a table by position; the table keeps them.
using XCellPointers = std::map<xstd::XPoint, XCell*>;
/// Format records saved by an action, by position, with the same rule.
using XSavedExtends = std::map<xstd::XPoint, std::unique_ptr<XCellExtend>>;
/// References saved by an action, by position, with the same rule.
using XSavedRanges = std::map<xstd::XPoint, std::unique_ptr<XCellRanges>>;

/// The cells of a recalculation in the order in which they run. Cells of one level do not read
/// each other; within a level they stand by row, then column.
struct XCellLevels {
    std::vector<XCell*> cells;
    std::vector<size_t> starts; ///< index of each level's first cell
    bool hasRing = false;       ///< the last level is the cells of rings, and what reads them

    size_t count() const { return starts.size(); }
    size_t end(size_t level) const
    {
        return level + 1 < starts.size() ? starts[level + 1] : cells.size();
    }
};

/// What reading an image did not take over as it stood. The table is whole nevertheless: a damaged
/// record costs its own cell, and of each ring of references one cell is held out.
struct XCellLoadNotes {
    static constexpr size_t maxTexts = 20;

    void add(const xstd::XString& text)
    {
        if (texts.size() < maxTexts)
            texts.push_back(text);
        ++count;
    }

    std::vector<xstd::XString> texts; ///< the first of them
    size_t count = 0;
};

/// A sheet: it owns its cells, the index of their references and their shared scripts. Its
/// operations are raw: they neither ask nor can they be undone, and an action puts them in order.
/// A cell is unlinked before its references change and linked afterwards, because the index finds
/// a reference only under the rectangle with which it was added. Rows and columns count from 0.
class XCellTable {
public:
    /// An empty table whose reference index covers `rect`, divided down to `baseSize`.
    XCellTable(const xstd::XRect& rect, int32_t baseSize);
    ~XCellTable();
    XCellTable(const XCellTable&) = delete;
    XCellTable& operator=(const XCellTable&) = delete;

    /// The cell there, or null; any position may be asked for.
    XCell* cellAt(int32_t row, int32_t col) const noexcept
    {
        if (row < 0 || static_cast<size_t>(row) >= m_rows.size())
            return nullptr;
        return m_rows[static_cast<size_t>(row)].at(col);
    }
    /// One behind the last row, or the last column in a row, that may hold a cell.
    int32_t endRow() const noexcept { return static_cast<int32_t>(m_rows.size()); }
    int32_t endCol(int32_t row) const noexcept
    {
        return row >= 0 && row < endRow() ? m_rows[static_cast<size_t>(row)].end() : 0;
    }
    /// The cell there; an empty one is made if there is none.
    XCell* forceCell(int32_t row, int32_t col);
    /// Stores and links `cell` and returns what stood there, unlinked. With null the occupant is
    /// only taken out, still linked; the caller unlinks it.
    std::unique_ptr<XCell> putCell(int32_t row, int32_t col, std::unique_ptr<XCell> cell);
    /// Takes the cell out, unlinked, and leaves an empty one with the same format. Null if there
    /// was none.
    std::unique_ptr<XCell> takeCell(int32_t row, int32_t col);
    void deleteCell(int32_t row, int32_t col);
    void deleteRects(const xstd::XMergedRects& rects);
    /// Empties the cells in `rects`; their formats stay.
    void clearRects(const xstd::XMergedRects& rects);

    /// Registers the cell's references. One that is held out as part of a ring is only listed, so
    /// that its references can be rewritten. Nothing happens to a cell that has none or is linked
    /// already.
    void linkCell(XCell* cell);
    /// The reverse; nothing happens to null or an unlinked cell.
    void unlinkCell(XCell* cell);
    /// Takes a cell that closes a ring of references out of all recalculation, until it is
    /// released or gets another text.
    void holdOut(XCell* cell);
    /// Links a cell that was held out.
    void release(XCell* cell);
    /// The part of linking that concerns the index alone.
    void addRanges(XCellRanges& ranges);
    void removeRanges(XCellRanges& ranges);
    /// Every linked cell, in no particular order.
    const std::vector<XCell*>& linkedCells() const noexcept { return m_linkedCells; }
    const std::vector<XCell*>& heldOutCells() const noexcept { return m_heldOutCells; }

    const xstd::XRect& mainRect() const noexcept { return m_mainRect; }
    int32_t baseSize() const noexcept { return m_baseSize; }
    /// Builds the index anew for another working area.
    void setMainRect(const xstd::XRect& rect, int32_t baseSize);
    /// setMainRect with the present base size; nothing happens when `rect` is the present area.
    void resizeMainRect(const xstd::XRect& rect);

    XCellRangeTree& rangeTree() noexcept { return *m_rangeTree; }
    const XCellRangeTree& rangeTree() const noexcept { return *m_rangeTree; }
    ScriptSet& scripts() noexcept { return m_scripts; }
    const ScriptSet& scripts() const noexcept { return m_scripts; }

    /// The record of which every new format record is a clone; null when there is none.
    const XCellExtend* extendPrototype() const noexcept { return m_extendPrototype.get(); }
    void setExtendPrototype(std::unique_ptr<XCellExtend> prototype);

    /// Largest row and column in which a cell was ever made; they never fall while it lives.
    int32_t maxRow() const noexcept { return m_maxRow; }
    int32_t maxCol() const noexcept { return m_maxCol; }
    /// Drops all cells and scripts.
    void clear();

    /// Calls fn(XCell*) for every cell in `rect`, by row, then column; positions without a cell
    /// cost nothing beyond the stored rows.
    template <class F>
    void forEachCell(const xstd::XRect& rect, F&& fn) const;

    // Bulk transfer (XCellTableTransfer.cpp).

    /// Every cell in `rects` by rectangle, row, column; with optScriptOnly those with references.
    std::vector<XCell*> collectCells(const xstd::XMergedRects& rects, xstd::XOptions options) const;
    /// Saves every cell in `rects`: with optCopy a copy, with optTake the cell itself, unlinked.
    void snapshot(XSavedCells& saved, const xstd::XMergedRects& rects, xstd::XOptions options);
    /// With optPointer only: where the cells in `rects` are; with optScriptOnly as well, those with
    /// references.
    void snapshot(XCellPointers& saved, const xstd::XMergedRects& rects,
                  xstd::XOptions options) const;
    /// Makes `rects` hold what `saved` holds: cells without an entry go; with optCopy copies come
    /// back, otherwise the saved cells themselves, whose entries become null. Constants come back
    /// with their values and are not run by the next recalculation.
    void restore(XSavedCells& saved, const xstd::XMergedRects& rects, xstd::XOptions options);
    /// The same two for format records.
    void snapshotExtends(XSavedExtends& saved, const xstd::XMergedRects& rects,
                         xstd::XOptions options);
    void restoreExtends(XSavedExtends& saved, const xstd::XMergedRects& rects,
                        xstd::XOptions options);
    /// Gives saved references back to the cells that stand at their positions, inside
    /// `limitRects` if that is not empty: copies with optCopy, otherwise the saved ones.
    void swapRangesBack(XSavedRanges& saved, const xstd::XMergedRects& limitRects,
                        xstd::XOptions options);
    /// Copies `source` to a position; null empties it. optValueOnly and optScriptOnly keep what
    /// else the destination has. Returns the cell there, or null.
    XCell* putCopy(const XCell* source, int32_t row, int32_t col, xstd::XOptions options);
    /// Moves one cell; its references keep what they point at. With optValueOnly and
    /// optScriptOnly the source keeps its format, and the destination its own.
    void moveCell(int32_t fromRow, int32_t fromCol, int32_t toRow, int32_t toCol,
                  xstd::XOptions options);
    /// moveCell for every position of `rects`, in an order in which no cell is overwritten that
    /// has yet to move.
    void moveRects(const xstd::XMergedRects& rects, int32_t dRow, int32_t dCol,
                   xstd::XOptions options);
    /// Copies `srcRects`, repeated as often as they fit, over `destRects`: where the source has no
    /// cell the destination is emptied. Raises "The target and source regions cannot overlap"
    /// ("cellTable").
    void copyRects(const xstd::XMergedRects& destRects, const xstd::XMergedRects& srcRects,
                   xstd::XOptions options);
    /// Mirrors the cells of `rect` about its top left corner, with their formats and their number
    /// references ("r:5" becomes "c:5").
    void transposeCells(const xstd::XRect& rect);
    /// The last column (row) inside `rect` that holds a used cell; 0 if none does.
    int32_t lastUsedCol(const xstd::XRect& rect) const;
    int32_t lastUsedRow(const xstd::XRect& rect) const;

    // Rewriting of references (XCellTableRefs.cpp). What a cell had before goes to `saved` the
    // first time that one of its references changes. Cells that are held out take part. A reference
    // that reaches beyond `reach`, the working area as it was before the change, counts up to
    // there.

    /// Every reference into `rects`, once, in row, column order of the cells that have them.
    std::vector<XCellRange*> rangesInto(const xstd::XMergedRects& rects);
    /// Marks those deleted that lie wholly in `rects`.
    void markRefsDeleted(const xstd::XMergedRects& rects, const xstd::XRect& reach,
                         XSavedRanges& saved);
    /// For a band of rows (columns) that is about to go: those that end in it end before it, and
    /// those that begin in it begin behind it. Concerns what lies inside the band's width.
    void clipRangesAtRows(const xstd::XRect& band, const xstd::XRect& reach, XSavedRanges& saved);
    void clipRangesAtCols(const xstd::XRect& band, const xstd::XRect& reach, XSavedRanges& saved);
    /// For `rects`, about to move: a reference that lies wholly inside follows, also with absolute
    /// ends. One that has a whole edge inside stretches or shrinks with it, when the move is across
    /// that edge and does not turn the reference inside out; absolute edges stay.
    void moveRanges(const xstd::XMergedRects& rects, int32_t dRow, int32_t dCol,
                    const xstd::XRect& reach, XSavedRanges& saved);
    /// Mirrors those that lie wholly in `rect` about its top left corner.
    void transposeRanges(const xstd::XRect& rect, XSavedRanges& saved);

    // Recalculation (XCellTableRecalc.cpp).

    /// A ring among the linked cells, each cell read by the next and the last by the first; empty
    /// when there is none.
    std::vector<XCell*> findCycle();
    /// A ring that passes through `cell`, which comes first; empty when there is none. Enough
    /// after a change of this one cell in a table without rings.
    std::vector<XCell*> findCycleThrough(XCell* cell);
    /// Holds out one cell of every ring among the cells of `levels`, the last in row, column order
    /// of those that stand in `changed`. Each path begins with the cell that is held out and goes
    /// on as findCycle's.
    std::vector<std::vector<XCell*>> breakRings(const XCellLevels& levels,
                                                const xstd::XMergedRects& changed);
    /// The same with the last cell of each ring in an order of the caller's.
    using CellOrder = std::function<bool(const XCell*, const XCell*)>;
    std::vector<std::vector<XCell*>> breakRings(const XCellLevels& levels, const CellOrder& before);
    /// "A1->B1->A1" for a ring of A1 and B1.
    static xstd::XString cyclicPathText(const std::vector<XCell*>& path);

    /// The seeds and all that depends on them; a cell's level is the longest path to it from a
    /// seed. No seeds stand for all linked cells. Cells of a ring, and what reads them, come last.
    XCellLevels levelsFrom(const std::vector<XCell*>& seeds);
    /// levelsFrom the readers of `rects` and, with `withCells`, the cells in it. Without any of
    /// these the result is empty.
    XCellLevels levelsFromRects(const xstd::XMergedRects& rects, bool withCells);
    /// Runs the cells and adds where they stand to `changed`, which is normalised. A failing cell
    /// keeps its failure as value. A stop becomes the value of the cell that it meets and of all
    /// behind it, and is raised; `changed` is complete then too.
    void calcLevels(xstd::XMergedRects& changed, const XCellLevels& levels);
    /// Runs the cells in `rects` and all that depends on these positions.
    void recalc(xstd::XMergedRects& changed, const xstd::XMergedRects& rects);
    /// Runs the cells and all that depends on them.
    void recalcCells(xstd::XMergedRects& changed, const std::vector<XCell*>& cells);
    /// Runs every linked cell.
    void recalcAll(xstd::XMergedRects& changed);

    // Images (XCellTableImage.cpp, XCellTableJson.cpp). A cell is stored by its text; what it
    // evaluates to is calculated anew.

    /// The image of the table, as documents hold it: its limits, then a record per cell, so that a
    /// cell comes after all that it reads. Cells that are held out stand behind the rest.
    std::vector<uint8_t> toVector();
    /// Makes the table what the image says and calculates it. A cell whose link would close a ring
    /// stays held out and shows that; a text that fails is kept, and the cell shows the failure.
    /// std::runtime_error with the table as it was, for an image with damaged limits or record
    /// lengths. A stop is raised when all cells are there, the rest of them not calculated.
    XCellLoadNotes fromVector(const std::vector<uint8_t>& image, XCellImageMode mode);
    /// The same content as a tree. Reading it takes a missing "baseSize" for 4.
    xstd::XJson toJson();
    XCellLoadNotes fromJson(const xstd::XKVNode& node, XCellImageMode mode);

    /// The image of some cells, as the clipboard holds it: the rectangles, then the records.
    std::vector<uint8_t> saveRectsToVector(const xstd::XMergedRects& rects) const;
    /// The rectangles of such an image, normalised, and its records by their positions.
    /// std::runtime_error, with both outputs empty, if anything in it is damaged.
    static bool rectsFromVector(const std::vector<uint8_t>& image, xstd::XMergedRects& outRects,
                                std::map<xstd::XPoint, std::vector<uint8_t>>& outDatas);
    /// The rectangle around `rects` as text: tabs between columns, line feeds between rows, values
    /// quoted and escaped, "none" where there is none. std::runtime_error for more cells than a
    /// text can be made of.
    xstd::XString rectsToText(const xstd::XMergedRects& rects) const;

private:
    std::unique_ptr<XCell>& forceSlot(int32_t row, int32_t col);
    void forgetLinks() noexcept;
    std::vector<XCell*>& listOf(const XCell& cell) noexcept;
    void moveRect(const xstd::XRect& rect, int32_t dRow, int32_t dCol, xstd::XOptions options);
    void setRef(XCellRange& range, const XCellRangeRef& ref);
    template <class F>
    void rewriteRanges(const xstd::XMergedRects& rects, const xstd::XRect& reach,
                       XSavedRanges& saved, F&& rewrite);
    uint32_t nextMark() noexcept { return ++m_lastMark; }
    XCellLevels imageOrder();
    friend class XCellTableLoader;
    void appendReaders(const XCell& cell, std::vector<XCell*>& out);
    void appendRectReaders(const xstd::XRect& rect, std::vector<XCell*>& out);
    friend class XCellLevelBuilder;

    std::vector<XCellRange*> m_foundRanges; // scratch of one query
    uint32_t m_lastMark = 0;
    int32_t m_maxRow = 0;
    int32_t m_maxCol = 0;
    int32_t m_baseSize = 1;
    xstd::XRect m_mainRect;
    std::unique_ptr<XCellExtend> m_extendPrototype;
    // Cells go before the scripts that they hold and before the index that points at their
    // references: members are destroyed from the last to the first.
    ScriptSet m_scripts;
    std::unique_ptr<XCellRangeTree> m_rangeTree;
    std::vector<XCell*> m_linkedCells;
    std::vector<XCell*> m_heldOutCells;
    std::vector<XCellRow> m_rows;
};

template <class F>
void XCellTable::forEachCell(const xstd::XRect& rect, F&& fn) const
{
    const int32_t bottom = std::min(rect.bottom, endRow() - 1);
    for (int32_t row = std::max(rect.top, 0); row <= bottom; ++row)
        m_rows[static_cast<size_t>(row)].forEach(rect.left, rect.right, fn);
}

} // namespace huge
