#include "cell/XCellActionCopyRect.h"

#include <utility>

namespace huge {

XCellActionCopyRect::XCellActionCopyRect(XCellTable* table, xstd::XMergedRects srcRects,
                                         xstd::XMergedRects destRects, xstd::XOptions options)
    : XCellDestAction(table, std::move(destRects)), m_srcRects(std::move(srcRects)),
      m_options(options)
{
    m_srcRects.normalize_();
    if (m_srcRects.intersects(m_destRects))
        throw xstd::XExceptionItems().add(xstd::XExceptionItem(X_HERE, "action")
                                              .setMess("Destination and source rectangles overlap")
                                              .setExtend("action", "copyRect")
                                              .setExtend("srcRect", m_srcRects.toString(0))
                                              .setExtend("destRect", m_destRects.toString(0)));
    growTo(m_destRects.boundRect(), "copyRect");
}

xstd::XUndoableAction* XCellActionCopyRect::do_()
{
    const xstd::XStopScope scope;
    saveDest();
    m_table->copyRects(m_destRects, m_srcRects, m_options);
    finish(m_changed);
    return this;
}

xstd::XMergedRects XCellActionCopyRect::selectRects(xstd::XUndoableActionType type) const
{
    xstd::XMergedRects rects = m_srcRects;
    if (type == xstd::XUndoableActionType::Do)
        rects.add_(m_destRects, true);
    return rects;
}

xstd::XExceptionItem XCellActionCopyRect::ringItem(const xstd::XString& path) const
{
    return XCellAction::ringItem(path)
        .setExtend("action", "copyRect")
        .setExtend("srcRect", m_srcRects.toString(0))
        .setExtend("destRect", m_destRects.toString(0));
}

} // namespace huge
