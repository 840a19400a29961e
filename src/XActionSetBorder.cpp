#include "XActionSetBorder.h"

struct XActionSetBorder::Side {
    uint8_t XTavixCellExtend::*style;
    QRgb XTavixCellExtend::*color;
    int32_t dRow; // the way back from the next cell on this side
    int32_t dCol;
    int lineMode; // the mode that draws this side alone
};

const XActionSetBorder::Side XActionSetBorder::sides[4] = {
    {&XTavixCellExtend::borderLeftStyle, &XTavixCellExtend::borderLeft, 0, 1, LeftLine},
    {&XTavixCellExtend::borderTopStyle, &XTavixCellExtend::borderTop, 1, 0, TopLine},
    {&XTavixCellExtend::borderRightStyle, &XTavixCellExtend::borderRight, 0, -1, RightLine},
    {&XTavixCellExtend::borderBottomStyle, &XTavixCellExtend::borderBottom, -1, 0, BottomLine}};

XActionSetBorder::XActionSetBorder(tavix* owner, const xstd::XMergedRects& rects, bool enable,
                                   int mode, const QColor& color)
    : XStyleAction(owner, rects), m_enable(enable), m_mode(mode), m_color(color.rgba())
{
    if (enable && mode == NoBorder)
        return;
    if (enable) {
        for (const Side& side : sides)
            addStrokes(side, mode);
        xstd::XMergedRects touched;
        for (const Stroke& stroke : m_strokes)
            touched.add_(stroke.cells);
        setCells(std::move(touched));
    }
    requireRoom();
}

void XActionSetBorder::addStrokes(const Side& side, int mode)
{
    const xstd::XMergedRects& all = cells();
    const xstd::XMergedRects inner = all.intersected(all.offset(side.dRow, side.dCol));
    const xstd::XMergedRects edge =
        xstd::XMergedRects(all).subtract_(all.offset(side.dRow, side.dCol));
    if (mode == ThickFrame || mode == ThickFrameGrid)
        addStroke(side, edge, XTavixCellExtend::ThickBorder);
    if (mode == ThinFrame || mode == ThinFrameGrid || mode == side.lineMode)
        addStroke(side, edge, XTavixCellExtend::ThinBorder);
    if (mode == ThickFrameGrid || mode == ThinFrameGrid || mode == InnerLines)
        addStroke(side, inner, XTavixCellExtend::ThinBorder);
}

void XActionSetBorder::addStroke(const Side& side, xstd::XMergedRects cells, uint8_t style)
{
    if (!cells.isEmpty())
        m_strokes.push_back({&side, std::move(cells), style});
}

void XActionSetBorder::change()
{
    if (!m_enable) {
        recolor();
        return;
    }
    if (m_mode == NoBorder)
        clearStyles();
    for (const Stroke& stroke : m_strokes) {
        stroke.cells.forEach([&](int32_t row, int32_t col) {
            XTavixCellExtend& record = forceRecord(row, col);
            record.*stroke.side->style = stroke.style;
            record.*stroke.side->color = m_color;
            return false;
        });
    }
}

void XActionSetBorder::clearStyles()
{
    for (huge::XCell* cell : table().collectCells(cells(), {huge::optAll})) {
        if (!cell->extend())
            continue;
        for (const Side& side : sides)
            static_cast<XTavixCellExtend*>(cell->extend())->*side.style =
                XTavixCellExtend::NoBorder;
    }
}

void XActionSetBorder::recolor()
{
    cells().forEach([this](int32_t row, int32_t col) {
        for (const Side& side : sides)
            forceRecord(row, col).*side.color = m_color;
        return false;
    });
}
