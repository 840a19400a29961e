#include "cell/XCellActionSetDatas.h"
#include "cell/XCellTiling.h"

#include <utility>

namespace huge {

namespace {

bool isOneCell(const xstd::XMergedRects& rects)
{
    return rects.size() == 1 && rects[0].area() == 1;
}

} // namespace

XCellActionSetDatas::XCellActionSetDatas(XCellTable* table, const xstd::XMergedRects& destRects,
                                         Datas datas, XCellImageMode mode,
                                         xstd::XMergedRects srcRects)
    : XCellDestAction(table, shapedDest(destRects, srcRects)), m_srcRects(std::move(srcRects)),
      m_datas(std::move(datas)), m_mode(mode)
{
    if (isOneCell(destRects))
        m_focusRect = destRects[0];
    growTo(m_destRects.boundRect(), "setDatas");
}

xstd::XMergedRects XCellActionSetDatas::shapedDest(const xstd::XMergedRects& destRects,
                                                   const xstd::XMergedRects& srcRects)
{
    if (!isOneCell(destRects))
        return destRects;
    const xstd::XRect src = srcRects.boundRect();
    return srcRects.offset(destRects[0].top - src.top, destRects[0].left - src.left);
}

void XCellActionSetDatas::clearHoles()
{
    const XCellTiling tiling(m_srcRects.boundRect(), m_destRects);
    for (XCell* cell : m_table->collectCells(m_destRects, {optAll})) {
        if (m_datas.count(tiling.sourceOf(cell->row(), cell->col())) != 0)
            continue;
        m_table->unlinkCell(cell);
        cell->clear_();
    }
}

void XCellActionSetDatas::setData(int32_t row, int32_t col, const std::vector<uint8_t>& data)
{
    XCell* cell = m_table->forceCell(row, col);
    m_table->unlinkCell(cell);
    try {
        cell->fromVectorPasted(*m_table, xstd::XByteCursor(data), m_mode,
                               m_table->extendPrototype());
    } catch (...) {
        m_table->linkCell(cell);
        throw;
    }
    if (m_mode == XCellImageMode::Formats)
        cell->keepValue();
    m_table->linkCell(cell);
}

/// Returns the first failure.
xstd::XExceptionItems XCellActionSetDatas::setDatas()
{
    xstd::XExceptionItems first;
    const xstd::XRect src = m_srcRects.boundRect();
    if (src.isNull())
        return first;
    if (m_mode != XCellImageMode::Formats)
        clearHoles();
    const XCellTiling tiling(src, m_destRects);
    for (const auto& [point, data] : m_datas) {
        if (!src.contains(point.row, point.col))
            continue;
        tiling.forEachTile(point.row, point.col, [&, &record = data](int32_t row, int32_t col) {
            try {
                setData(row, col, record);
            } catch (const xstd::XExceptionItems& failure) {
                if (first.items().empty())
                    first = failure;
            } catch (const std::exception& failure) {
                if (first.items().empty())
                    first.add(xstd::XExceptionItem(X_HERE, "action")
                                  .setMess(failure.what())
                                  .setExtend("action", "setDatas")
                                  .setExtend("destRow", row)
                                  .setExtend("destCol", col));
            }
        });
    }
    return first;
}

xstd::XUndoableAction* XCellActionSetDatas::do_()
{
    const xstd::XStopScope scope;
    saveDest();
    finish(m_changed, setDatas());
    return this;
}

xstd::XExceptionItem XCellActionSetDatas::ringItem(const xstd::XString& path) const
{
    return xstd::XExceptionItem(X_HERE, "action")
        .setMess("There is a circular dependency: " + path)
        .setExtend("cyclicPath", path)
        .setExtend("action", "setDatas")
        .setExtend("destRects", m_destRects.toString(0));
}

} // namespace huge
