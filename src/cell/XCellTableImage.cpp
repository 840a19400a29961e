#include "cell/XCellTable.h"
#include "cell/XCellTableLoader.h"
#include "common/XTextForms.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

namespace huge {

namespace {

constexpr const char* recordName = "record of a cell";

/// The front of a table image.
struct Header {
    explicit Header(xstd::XByteCursor& image)
    {
        mainRect.top = image.getIntIn(0, XCellPos::maxRow, "top of the table");
        mainRect.left = image.getIntIn(0, XCellPos::maxCol, "left edge of the table");
        mainRect.bottom = image.getIntIn(mainRect.top, XCellPos::maxRow, "bottom of the table");
        mainRect.right = image.getIntIn(mainRect.left, XCellPos::maxCol, "right edge of the table");
        maxRow = image.getIntIn(0, XCellPos::maxRow, "last row");
        maxCol = image.getIntIn(0, XCellPos::maxCol, "last column");
        baseSize = image.getIntIn(1, XCellPos::maxRow, "base size");
    }

    xstd::XRect mainRect;
    int32_t maxRow;
    int32_t maxCol;
    int32_t baseSize;
};

/// The position at the front of a record. The rest of the record is looked through too, so that
/// damage shows before a cell is made for it.
xstd::XPoint positionIn(const xstd::XByteCursor& block, const xstd::XRect& limits)
{
    xstd::XByteCursor front = block;
    front.getIntIn(limits.top, limits.bottom, "row of a cell");
    front.getIntIn(limits.left, limits.right, "column of a cell");
    return XCell::recordPosition(block);
}

/// How many strips it takes to cut the rectangles at each other's rows. A few thousand that lie
/// inside one another would give millions.
uint64_t stripCount(const std::vector<xstd::XRect>& rects)
{
    std::vector<int32_t> cuts;
    for (const xstd::XRect& rect : rects) {
        cuts.push_back(rect.top);
        cuts.push_back(rect.bottom + 1);
    }
    std::sort(cuts.begin(), cuts.end());
    cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
    uint64_t count = 0;
    for (const xstd::XRect& rect : rects)
        count += static_cast<uint64_t>(std::upper_bound(cuts.begin(), cuts.end(), rect.bottom) -
                                       std::lower_bound(cuts.begin(), cuts.end(), rect.top));
    return count;
}

xstd::XMergedRects readRects(xstd::XByteCursor& image)
{
    constexpr uint64_t maxStrips = 1000000;
    constexpr size_t rectSize = 16;
    const size_t begin = image.offset();
    const int32_t count = image.getInt("number of rectangles");
    if (count < 0 || static_cast<size_t>(count) > image.left() / rectSize)
        xstd::XByteCursor::fail("The number of rectangles does not fit: " + std::to_string(count),
                                begin);
    std::vector<xstd::XRect> rects;
    rects.reserve(static_cast<size_t>(count));
    for (int32_t i = 0; i < count; ++i) {
        xstd::XRect rect;
        rect.top = image.getIntIn(0, XCellPos::maxRow, "top of a rectangle");
        rect.left = image.getIntIn(0, XCellPos::maxCol, "left edge of a rectangle");
        rect.bottom = image.getIntIn(rect.top, XCellPos::maxRow, "bottom of a rectangle");
        rect.right = image.getIntIn(rect.left, XCellPos::maxCol, "right edge of a rectangle");
        rects.push_back(rect);
    }
    if (stripCount(rects) > maxStrips)
        xstd::XByteCursor::fail("Too many rectangles lie over one another", begin);
    return xstd::XMergedRects(std::move(rects)).normalize_();
}

void putRect(xstd::XByteWriter& image, const xstd::XRect& rect)
{
    image.putInt(rect.top);
    image.putInt(rect.left);
    image.putInt(rect.bottom);
    image.putInt(rect.right);
}

} // namespace

/// All cells by level. A cell that is held out takes part in no recalculation, so its level says
/// nothing: a level of its own at the end makes it the one that closes the ring when the image is
/// read.
XCellLevels XCellTable::imageOrder()
{
    XCellLevels levels = levelsFromRects(m_mainRect, true);
    if (m_heldOutCells.empty())
        return levels;
    XCellLevels ordered;
    std::vector<XCell*> heldOut;
    for (size_t level = 0; level < levels.count(); ++level) {
        const size_t start = ordered.cells.size();
        for (size_t i = levels.starts[level]; i < levels.end(level); ++i) {
            XCell* cell = levels.cells[i];
            (cell->m_isHeldOut && cell->isListed() ? heldOut : ordered.cells).push_back(cell);
        }
        if (ordered.cells.size() != start)
            ordered.starts.push_back(start);
    }
    ordered.starts.push_back(ordered.cells.size());
    ordered.cells.insert(ordered.cells.end(), heldOut.begin(), heldOut.end());
    return ordered;
}

std::vector<uint8_t> XCellTable::toVector()
{
    xstd::XByteWriter image;
    putRect(image, m_mainRect);
    image.putInt(m_maxRow);
    image.putInt(m_maxCol);
    image.putInt(m_baseSize);
    for (const XCell* cell : imageOrder().cells)
        image.putBytes(cell->toVector());
    return image.take();
}

XCellLoadNotes XCellTable::fromVector(const std::vector<uint8_t>& image, XCellImageMode mode)
{
    xstd::XByteCursor check(image);
    const Header header(check);
    xstd::XByteCursor records = check;
    while (!check.atEnd())
        check.getBlock(recordName);

    XCellTableLoader loader(*this, header.mainRect, header.baseSize);
    while (!records.atEnd()) {
        const xstd::XByteCursor block = records.getBlock(recordName);
        if (block.atEnd())
            continue;
        loader.load([&] { return positionIn(block, header.mainRect); },
                    [&](XCell& cell) { cell.fromVector(*this, block, mode, extendPrototype()); });
    }
    return loader.finish(header.maxRow, header.maxCol, mode != XCellImageMode::Stored);
}

std::vector<uint8_t> XCellTable::saveRectsToVector(const xstd::XMergedRects& rects) const
{
    xstd::XByteWriter image;
    image.putInt(static_cast<int32_t>(rects.size()));
    for (const xstd::XRect& rect : rects)
        putRect(image, rect);
    for (const XCell* cell : collectCells(rects, {optAll}))
        image.putBytes(cell->toVector());
    return image.take();
}

bool XCellTable::rectsFromVector(const std::vector<uint8_t>& image, xstd::XMergedRects& outRects,
                                 std::map<xstd::XPoint, std::vector<uint8_t>>& outDatas)
{
    outRects.clear();
    outDatas.clear();
    xstd::XByteCursor cursor(image);
    xstd::XMergedRects rects = readRects(cursor);
    std::map<xstd::XPoint, std::vector<uint8_t>> datas;
    while (!cursor.atEnd()) {
        xstd::XByteCursor block = cursor.getBlock(recordName);
        if (block.atEnd())
            continue;
        const size_t size = block.left();
        const xstd::XPoint position = XCell::recordPosition(block);
        const uint8_t* bytes = block.getRaw(size, recordName);
        datas[position].assign(bytes, bytes + size);
    }
    outRects = std::move(rects);
    outDatas = std::move(datas);
    return true;
}

xstd::XString XCellTable::rectsToText(const xstd::XMergedRects& rects) const
{
    constexpr int64_t maxCells = 50000000; // 250 MB of empty cells
    const xstd::XRect bound = rects.boundRect();
    if (bound.area() > maxCells)
        throw std::runtime_error("A text can hold " + std::to_string(maxCells) +
                                 " cells, but not " + std::to_string(bound.area()));
    xstd::XString text;
    for (int32_t row = bound.top; row <= bound.bottom; ++row) {
        if (row != bound.top)
            text += '\n';
        for (int32_t col = bound.left; col <= bound.right; ++col) {
            if (col != bound.left)
                text += '\t';
            const XCell* cell = cellAt(row, col);
            const bool hasValue = cell && !cell->value().isNull();
            text += hasValue ? xstd::escapeText(cell->plainValueText()) : xstd::XString("none");
        }
    }
    return text;
}

} // namespace huge
