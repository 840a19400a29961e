#include "cell/XCellTable.h"
#include "cell/XCellTiling.h"
#include "common/XException.h"

#include <tuple>
#include <utility>

namespace huge {

namespace {

const std::initializer_list<int> contentOnly = {optValueOnly, optScriptOnly};

/// Where content of the given kind of transfer goes into an existing cell.
void receive(XCell& dest, const XCell& source, xstd::XOptions options, bool shift)
{
    if (options.has(optValueOnly))
        dest.assignValueFrom(source);
    else
        dest.assignScriptFrom(&source, shift);
}

} // namespace

std::vector<XCell*> XCellTable::collectCells(const xstd::XMergedRects& rects,
                                             xstd::XOptions options) const
{
    std::vector<XCell*> cells;
    const bool withRanges = options.has(optScriptOnly);
    for (const xstd::XRect& rect : rects) {
        forEachCell(rect, [&](XCell* cell) {
            if (!withRanges || cell->ranges())
                cells.push_back(cell);
        });
    }
    return cells;
}

void XCellTable::snapshot(XSavedCells& saved, const xstd::XMergedRects& rects,
                          xstd::XOptions options)
{
    for (XCell* cell : collectCells(rects, {optAll})) {
        const xstd::XPoint point{cell->row(), cell->col()};
        if (options.has(optTake)) {
            unlinkCell(cell);
            saved[point] = putCell(point.row, point.col, nullptr);
        } else {
            saved[point] = std::make_unique<XCell>(*cell);
        }
    }
}

void XCellTable::snapshot(XCellPointers& saved, const xstd::XMergedRects& rects,
                          xstd::XOptions options) const
{
    for (XCell* cell : collectCells(rects, options))
        saved[xstd::XPoint{cell->row(), cell->col()}] = cell;
}

void XCellTable::restore(XSavedCells& saved, const xstd::XMergedRects& rects,
                         xstd::XOptions options)
{
    for (XCell* cell : collectCells(rects, {optAll})) {
        const xstd::XPoint point{cell->row(), cell->col()};
        if (saved.find(point) == saved.end())
            deleteCell(point.row, point.col);
    }
    for (auto& [point, cell] : saved) {
        if (!cell || !rects.contains(point.row, point.col))
            continue; // a null entry is back in the table already
        if (options.has(optCopy))
            putCopy(cell.get(), point.row, point.col, {optPlain});
        else
            putCell(point.row, point.col, std::move(cell));
        cellAt(point.row, point.col)->keepValue();
    }
}

void XCellTable::snapshotExtends(XSavedExtends& saved, const xstd::XMergedRects& rects,
                                 xstd::XOptions options)
{
    for (XCell* cell : collectCells(rects, {optAll})) {
        if (!cell->extend())
            continue;
        cell->clearDisplayText();
        const xstd::XPoint point{cell->row(), cell->col()};
        saved[point] = options.has(optTake) ? cell->swapExtend(nullptr) : cell->extend()->clone();
    }
}

void XCellTable::restoreExtends(XSavedExtends& saved, const xstd::XMergedRects& rects,
                                xstd::XOptions options)
{
    for (XCell* cell : collectCells(rects, {optAll})) {
        if (saved.find(xstd::XPoint{cell->row(), cell->col()}) == saved.end())
            cell->swapExtend(nullptr);
    }
    for (auto& [point, extend] : saved) {
        if (!extend || !rects.contains(point.row, point.col))
            continue;
        XCell* cell = forceCell(point.row, point.col);
        cell->swapExtend(options.has(optCopy) ? extend->clone() : std::move(extend));
    }
}

void XCellTable::swapRangesBack(XSavedRanges& saved, const xstd::XMergedRects& limitRects,
                                xstd::XOptions options)
{
    for (auto& [point, ranges] : saved) {
        if (!ranges || (!limitRects.isEmpty() && !limitRects.contains(point.row, point.col)))
            continue;
        XCell* cell = cellAt(point.row, point.col);
        if (!cell)
            continue;
        if (cell->ranges() && cell->ranges()->size() == ranges->size()) {
            for (size_t i = 0; i < ranges->size(); ++i)
                setRef((*cell->ranges())[i], (*ranges)[i].ref);
        } else {
            unlinkCell(cell);
            cell->setRanges(*ranges);
            linkCell(cell);
        }
        if (!options.has(optCopy))
            ranges.reset();
    }
}

XCell* XCellTable::putCopy(const XCell* source, int32_t row, int32_t col, xstd::XOptions options)
{
    XCell* dest = cellAt(row, col);
    const bool content = options.hasAny(contentOnly);
    if (!source) {
        unlinkCell(dest);
        if (dest && content)
            dest->clear_();
        else if (dest)
            deleteCell(row, col);
        return cellAt(row, col);
    }
    if (!content) {
        putCell(row, col, std::make_unique<XCell>(*source, row, col));
        return cellAt(row, col);
    }
    dest = forceCell(row, col);
    unlinkCell(dest);
    receive(*dest, *source, options, true);
    linkCell(dest);
    return dest;
}

void XCellTable::moveCell(int32_t fromRow, int32_t fromCol, int32_t toRow, int32_t toCol,
                          xstd::XOptions options)
{
    XCell* source = cellAt(fromRow, fromCol);
    if (!source) {
        putCopy(nullptr, toRow, toCol, options);
        return;
    }
    if (!options.hasAny(contentOnly)) {
        // It stays linked: the index holds its references, and these do not move.
        putCell(toRow, toCol, putCell(fromRow, fromCol, nullptr));
        source->keepValue();
        return;
    }
    unlinkCell(source);
    const XCell moving(*source);
    source->clear_();
    XCell* dest = forceCell(toRow, toCol);
    unlinkCell(dest);
    receive(*dest, moving, options, false);
    if (dest->script() && moving.hold() == XCellHold::Ring)
        dest->setHold(XCellHold::Ring);
    dest->keepValue();
    linkCell(dest);
}

void XCellTable::moveRect(const xstd::XRect& rect, int32_t dRow, int32_t dCol,
                          xstd::XOptions options)
{
    const auto steps = [](int64_t first, int64_t last, bool backward, auto&& step) {
        for (int64_t i = first; i <= last; ++i)
            step(static_cast<int32_t>(backward ? last - (i - first) : i));
    };
    const auto stored = [this](int64_t row) {
        const bool isThere = row >= 0 && row < endRow();
        return isThere ? int64_t(endCol(static_cast<int32_t>(row))) : 0;
    };
    // A position matters when a cell leaves it or when it empties the place that it moves to.
    const int64_t lastRow = static_cast<int64_t>(m_rows.size()) - 1 + std::max(0, -dRow);
    steps(rect.top, std::min<int64_t>(rect.bottom, lastRow), dRow > 0, [&](int32_t row) {
        const int64_t lastCol = std::max(stored(row), stored(int64_t(row) + dRow) - dCol) - 1;
        steps(rect.left, std::min<int64_t>(rect.right, lastCol), dRow == 0 && dCol > 0,
              [&](int32_t col) { moveCell(row, col, row + dRow, col + dCol, options); });
    });
}

void XCellTable::moveRects(const xstd::XMergedRects& rects, int32_t dRow, int32_t dCol,
                           xstd::XOptions options)
{
    if (dRow == 0 && dCol == 0)
        return;
    if (rects.size() == 1) {
        moveRect(rects[0], dRow, dCol, options);
        return;
    }
    std::vector<std::pair<int32_t, int32_t>> from;
    for (const xstd::XRect& rect : rects) {
        forEachCell(rect, [&](XCell* cell) { from.emplace_back(cell->row(), cell->col()); });
        forEachCell(rect.offset(dRow, dCol), [&](XCell* cell) {
            from.emplace_back(cell->row() - dRow, cell->col() - dCol);
        });
    }
    // Against the direction of the move: what stands in the way has moved on before.
    std::sort(from.begin(), from.end(), [=](const auto& a, const auto& b) {
        if (a.first != b.first)
            return dRow > 0 ? a.first > b.first : a.first < b.first;
        return dRow == 0 && dCol > 0 ? a.second > b.second : a.second < b.second;
    });
    from.erase(std::unique(from.begin(), from.end()), from.end());
    for (const auto& [row, col] : from)
        moveCell(row, col, row + dRow, col + dCol, options);
}

void XCellTable::copyRects(const xstd::XMergedRects& destRects, const xstd::XMergedRects& srcRects,
                           xstd::XOptions options)
{
    if (destRects.intersects(srcRects))
        throw xstd::XExceptionItems().add(
            xstd::XExceptionItem(X_HERE, "cellTable")
                .setMess("The target and source regions cannot overlap")
                .setExtend("srcRect", srcRects.toString(0))
                .setExtend("destRect", destRects.toString(0)));
    if (srcRects.boundRect().isNull())
        return;
    const XCellTiling tiling(srcRects.boundRect(), destRects);
    for (const XCell* cell : collectCells(destRects, {optAll})) {
        const xstd::XPoint from = tiling.sourceOf(cell->row(), cell->col());
        if (srcRects.contains(from.row, from.col) && !cellAt(from.row, from.col))
            putCopy(nullptr, cell->row(), cell->col(), options);
    }
    for (const XCell* cell : collectCells(srcRects, {optAll})) {
        tiling.forEachTile(cell->row(), cell->col(),
                           [&](int32_t row, int32_t col) { putCopy(cell, row, col, options); });
    }
}

void XCellTable::transposeCells(const xstd::XRect& rect)
{
    XSavedCells taken;
    snapshot(taken, rect, {optTake});
    for (auto& [point, cell] : taken) {
        for (size_t i = 0; cell->ranges() && i < cell->ranges()->size(); ++i) {
            XCellRangeRef& ref = (*cell->ranges())[i].ref;
            if (!ref.isCell())
                ref.transpose_(rect.top, rect.left);
        }
        if (cell->extend())
            cell->extend()->transpose();
        cell->clearDisplayText();
        cell->keepValue();
        const int32_t row = rect.top + (point.col - rect.left);
        const int32_t col = rect.left + (point.row - rect.top);
        putCell(row, col, std::move(cell));
    }
}

int32_t XCellTable::lastUsedCol(const xstd::XRect& rect) const
{
    int32_t last = 0;
    forEachCell(rect, [&](const XCell* cell) {
        if (cell->isUsed())
            last = std::max(last, cell->col());
    });
    return last;
}

int32_t XCellTable::lastUsedRow(const xstd::XRect& rect) const
{
    const int32_t bottom = std::min<int64_t>(rect.bottom, static_cast<int64_t>(m_rows.size()) - 1);
    for (int32_t row = bottom; row >= std::max(rect.top, 0); --row) {
        bool isUsed = false;
        forEachCell(xstd::XRect(row, rect.left, row, rect.right),
                    [&](const XCell* cell) { isUsed = isUsed || cell->isUsed(); });
        if (isUsed)
            return row;
    }
    return 0;
}

} // namespace huge
