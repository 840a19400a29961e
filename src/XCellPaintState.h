#pragma once

#include "XCellRefMarks.h"
#include "common/XMergedRects.h"
#include "common/XRect.h"

#include <QColor>

#include <vector>

/// The view's passing state as far as the cells show it. Rectangles are null, and lists empty,
/// while there is nothing to show.
struct XCellPaintState {
    xstd::XMergedRects cutRects;    ///< cells that wait for the paste of a cut
    xstd::XRect dragTo;             ///< target of a drag
    bool showRefs = false;          ///< frames what the current cell reads
    XCellRefMarks refMarks;         ///< these frames
    std::vector<xstd::XRect> marks; ///< references of the script under edit
    xstd::XRect hoveredMark;        ///< the one of them under the pointer
    int32_t editRow = -1;           ///< cell under edit
    int32_t editCol = -1;
    QColor cutColor = QColor(150, 0, 0, 128);
    QColor editColor = QColor(150, 0, 255, 128);
};
