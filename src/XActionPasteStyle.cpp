#include "XActionPasteStyle.h"

#include "cell/XCellTiling.h"

namespace {

xstd::XMergedRects stretched(const xstd::XMergedRects& dest, const xstd::XRect& source)
{
    if (dest.size() != 1 || dest[0].height() != 1 || dest[0].width() != 1 || source.isNull())
        return dest;
    const xstd::XRect cell = dest[0];
    return source.offset(cell.top - source.top, cell.left - source.left);
}

} // namespace

XActionPasteStyle::XActionPasteStyle(tavix* owner, const xstd::XMergedRects& destRects,
                                     const xstd::XMergedRects& srcRects,
                                     const huge::XSavedExtends& records)
    : XStyleAction(owner, stretched(destRects, srcRects.boundRect())),
      m_source(srcRects.boundRect())
{
    if (m_source.isNull())
        setCells({});
    requireRoom();
    for (const auto& [point, record] : records) {
        if (record)
            m_records[point] = record->clone();
    }
}

void XActionPasteStyle::change()
{
    if (cells().isEmpty())
        return;
    const huge::XCellTiling tiling(m_source, cells());
    cells().forEach([&](int32_t row, int32_t col) {
        const auto record = m_records.find(tiling.sourceOf(row, col));
        if (record != m_records.end())
            table().forceCell(row, col)->swapExtend(record->second->clone());
        else if (huge::XCell* cell = table().cellAt(row, col))
            cell->swapExtend(nullptr);
        return false;
    });
}
