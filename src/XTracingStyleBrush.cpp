#include "XTracingStyleBrush.h"

#include "XActionPasteStyle.h"
#include "XCellTableView.h"
#include "XTablePage.h"
#include "tavix.h"

XTracingStyleBrush::XTracingStyleBrush(tavix* owner, const QCursor& cursor)
    : XTracingAction(owner, cursor), m_rects(owner->currentView()->selectedRects())
{
    owner->currentPage()->table().snapshotExtends(m_styles, m_rects, {huge::optCopy});
}

void XTracingStyleBrush::fire()
{
    owner()->perform(std::make_unique<XActionPasteStyle>(
        owner(), owner()->currentView()->selectedRects(), m_rects, m_styles));
}
