#include "cell/XCellTable.h"

#include <utility>

namespace huge {

XCellTable::XCellTable(const xstd::XRect& rect, int32_t baseSize)
{
    setMainRect(rect, baseSize);
}

XCellTable::~XCellTable()
{
    forgetLinks();
}

// For cells that go together with the index that they are registered in.
void XCellTable::forgetLinks() noexcept
{
    for (std::vector<XCell*>* list : {&m_linkedCells, &m_heldOutCells}) {
        for (XCell* cell : *list)
            cell->m_linkIndex = XCell::notLinked;
        list->clear();
    }
}

std::vector<XCell*>& XCellTable::listOf(const XCell& cell) noexcept
{
    return cell.m_isHeldOut ? m_heldOutCells : m_linkedCells;
}

std::unique_ptr<XCell>& XCellTable::forceSlot(int32_t row, int32_t col)
{
    const size_t rowIndex = static_cast<size_t>(row);
    if (rowIndex >= m_rows.size())
        m_rows.resize(rowIndex + 1);
    m_maxRow = std::max(m_maxRow, row);
    m_maxCol = std::max(m_maxCol, col);
    return m_rows[rowIndex].slot(col);
}

XCell* XCellTable::forceCell(int32_t row, int32_t col)
{
    std::unique_ptr<XCell>& slot = forceSlot(row, col);
    if (!slot)
        slot = std::make_unique<XCell>(row, col);
    return slot.get();
}

std::unique_ptr<XCell> XCellTable::putCell(int32_t row, int32_t col, std::unique_ptr<XCell> cell)
{
    if (!cell) {
        if (!cellAt(row, col))
            return nullptr;
        return std::move(m_rows[static_cast<size_t>(row)].slot(col));
    }
    std::unique_ptr<XCell>& slot = forceSlot(row, col);
    unlinkCell(slot.get());
    cell->setPosition(row, col);
    std::swap(slot, cell);
    linkCell(slot.get());
    return cell;
}

std::unique_ptr<XCell> XCellTable::takeCell(int32_t row, int32_t col)
{
    XCell* old = cellAt(row, col);
    if (!old)
        return nullptr;
    unlinkCell(old);
    auto empty = std::make_unique<XCell>(row, col);
    if (old->extend())
        empty->swapExtend(old->extend()->clone());
    return putCell(row, col, std::move(empty));
}

void XCellTable::deleteCell(int32_t row, int32_t col)
{
    unlinkCell(cellAt(row, col));
    putCell(row, col, nullptr);
}

void XCellTable::deleteRects(const xstd::XMergedRects& rects)
{
    for (const xstd::XRect& rect : rects)
        forEachCell(rect, [this](XCell* cell) { deleteCell(cell->row(), cell->col()); });
}

void XCellTable::clearRects(const xstd::XMergedRects& rects)
{
    for (const xstd::XRect& rect : rects) {
        forEachCell(rect, [this](XCell* cell) {
            unlinkCell(cell);
            cell->clear_();
        });
    }
}

void XCellTable::linkCell(XCell* cell)
{
    if (!cell || !cell->ranges() || cell->isListed())
        return;
    cell->m_isHeldOut = cell->hold() == XCellHold::Ring;
    std::vector<XCell*>& list = listOf(*cell);
    cell->m_linkIndex = static_cast<uint32_t>(list.size());
    list.push_back(cell);
    if (!cell->m_isHeldOut)
        addRanges(*cell->ranges());
}

void XCellTable::unlinkCell(XCell* cell)
{
    if (!cell || !cell->isListed())
        return;
    if (!cell->m_isHeldOut)
        removeRanges(*cell->ranges());
    std::vector<XCell*>& list = listOf(*cell);
    XCell* last = list.back();
    list[cell->m_linkIndex] = last;
    last->m_linkIndex = cell->m_linkIndex;
    list.pop_back();
    cell->m_linkIndex = XCell::notLinked;
}

void XCellTable::holdOut(XCell* cell)
{
    unlinkCell(cell);
    cell->setHold(XCellHold::Ring);
    linkCell(cell);
}

void XCellTable::release(XCell* cell)
{
    unlinkCell(cell);
    cell->setHold(XCellHold::None);
    linkCell(cell);
}

void XCellTable::addRanges(XCellRanges& ranges)
{
    for (XCellRange& range : ranges) {
        if (range.ref.isCell())
            m_rangeTree->add(range.rect(), &range);
    }
}

void XCellTable::removeRanges(XCellRanges& ranges)
{
    for (XCellRange& range : ranges) {
        if (range.ref.isCell())
            m_rangeTree->remove(range.rect(), &range);
    }
}

void XCellTable::setMainRect(const xstd::XRect& rect, int32_t baseSize)
{
    m_rangeTree = std::make_unique<XCellRangeTree>(rect, baseSize);
    m_mainRect = rect;
    m_baseSize = baseSize;
    for (XCell* cell : m_linkedCells)
        addRanges(*cell->ranges());
}

void XCellTable::resizeMainRect(const xstd::XRect& rect)
{
    if (rect != m_mainRect)
        setMainRect(rect, m_baseSize);
}

void XCellTable::setExtendPrototype(std::unique_ptr<XCellExtend> prototype)
{
    m_extendPrototype = std::move(prototype);
}

void XCellTable::clear()
{
    // A fresh index is cheaper than taking every reference out of the old one.
    m_rangeTree = std::make_unique<XCellRangeTree>(m_mainRect, m_baseSize);
    forgetLinks();
    m_rows.clear();
    m_scripts.clear();
}

} // namespace huge
