#pragma once

#include "XStyleAction.h"

/// Gives cells the records of others, repeated as often as they fit. Where the source had no
/// record the destination has none afterwards.
class XActionPasteStyle final : public XStyleAction {
public:
    /// `records` are those of the cells in `srcRects`; the action keeps copies. A destination of
    /// one cell grows to the size of the source.
    XActionPasteStyle(tavix* owner, const xstd::XMergedRects& destRects,
                      const xstd::XMergedRects& srcRects, const huge::XSavedExtends& records);

private:
    void change() override;

    xstd::XRect m_source; // around all source rectangles
    huge::XSavedExtends m_records;
};
