#pragma once

#include "XTracingAction.h"
#include "cell/XCellTable.h"
#include "common/XMergedRects.h"

/// Gives the cells that are marked next the look that the selection had when the tool was made.
class XTracingStyleBrush final : public XTracingAction {
public:
    XTracingStyleBrush(tavix* owner, const QCursor& cursor);

    void fire() override;

private:
    xstd::XMergedRects m_rects;
    huge::XSavedExtends m_styles;
};
