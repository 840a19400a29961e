#pragma once

#include "cell/XCellDestAction.h"

#include <cstdint>
#include <map>
#include <vector>

namespace huge {

/// Pastes records of cells, repeated over the destination and cut at its edges. Where the source
/// had no cell the destination is emptied, but for its format; a paste of formats leaves it alone.
class XCellActionSetDatas final : public XCellDestAction {
public:
    /// The records by the positions that they had when they were copied.
    using Datas = std::map<xstd::XPoint, std::vector<uint8_t>>;

    /// `srcRects` is what was copied. A destination of one cell becomes the focus, and the paste
    /// takes the shape of the source, its top left corner on this cell. Grows the working area to
    /// the destination, or refuses as XCellAction::growTo.
    XCellActionSetDatas(XCellTable* table, const xstd::XMergedRects& destRects, Datas datas,
                        XCellImageMode mode, xstd::XMergedRects srcRects);

    /// Goes on past records that fail, and raises the first failure at the end.
    xstd::XUndoableAction* do_() override;

protected:
    xstd::XExceptionItem ringItem(const xstd::XString& path) const override;

private:
    static xstd::XMergedRects shapedDest(const xstd::XMergedRects& destRects,
                                         const xstd::XMergedRects& srcRects);
    void clearHoles();
    void setData(int32_t row, int32_t col, const std::vector<uint8_t>& data);
    xstd::XExceptionItems setDatas();

    xstd::XMergedRects m_srcRects;
    Datas m_datas;
    XCellImageMode m_mode;
};

} // namespace huge
