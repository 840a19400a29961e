#pragma once

#include "XStyleAction.h"

#include <vector>

/// Draws borders around and between cells, takes them away or gives them another colour. A side of
/// a cell is on an edge when the cell beyond it was not asked for: rectangles that touch have none
/// where they touch. The action touches only the cells that its mode names.
class XActionSetBorder final : public XStyleAction {
public:
    enum Mode : int {
        NoBorder = 1,       ///< styles go, colours stay, and no record is made
        ThickFrame = 2,     ///< the edges
        ThinFrame = 3,      ///< the edges
        ThickFrameGrid = 4, ///< thick edges, thin lines inside
        InnerLines = 5,     ///< all but the edges
        ThinFrameGrid = 6,  ///< every side
        LeftLine = 7,       ///< the left edges alone, and so on
        TopLine = 8,
        RightLine = 9,
        BottomLine = 10
    };

    /// Without `enable` the mode does not count: all four sides of every cell get the colour, and
    /// keep their styles.
    XActionSetBorder(tavix* owner, const xstd::XMergedRects& rects, bool enable, int mode,
                     const QColor& color);

private:
    struct Side;
    /// What one side of some cells becomes.
    struct Stroke {
        const Side* side;
        xstd::XMergedRects cells;
        uint8_t style;
    };

    static const Side sides[4];

    void addStrokes(const Side& side, int mode);
    void addStroke(const Side& side, xstd::XMergedRects cells, uint8_t style);
    void change() override;
    void clearStyles();
    void recolor();

    bool m_enable;
    int m_mode;
    QRgb m_color;
    std::vector<Stroke> m_strokes;
};
