#include "XActionPasteStyle.h"
#include "XCellTableModel.h"
#include "XCellTableView.h"
#include "XMessBox.h"
#include "XStyleAction.h"
#include "cell/XCellActionDelValues.h"
#include "cell/XCellActionInsert.h"
#include "cell/XCellActionMoveRect.h"
#include "cell/XCellActionRemove.h"
#include "cell/XCellActionTranspose.h"
#include "cell/XCellTable.h"
#include "errorHtml.h"
#include "tavix.h"

#include <utility>

using xstd::XRect;

namespace {

const char* const oneRectText = "Please select one rect";
const char* const insertRectText = "You cannot insert multiple Rect at the same time";
const char* const removeRectText = "You cannot remove multiple Rect at the same time";

// The action on the rows, the columns or the cells of a rectangle.

template <class Action>
std::unique_ptr<huge::XCellAction> onRows(huge::XCellTable* table, const XRect& rect)
{
    return std::make_unique<Action>(table, rect.top, rect.height());
}

template <class Action>
std::unique_ptr<huge::XCellAction> onCols(huge::XCellTable* table, const XRect& rect)
{
    return std::make_unique<Action>(table, rect.left, rect.width());
}

template <class Action>
std::unique_ptr<huge::XCellAction> onRect(huge::XCellTable* table, const XRect& rect)
{
    return std::make_unique<Action>(table, rect);
}

} // namespace

void XCellTableView::runAction(const ActionMaker& makeAction)
{
    std::unique_ptr<huge::XCellAction> action = makeAction();
    const QModelIndex current = currentIndex();
    if (current.isValid())
        action->setFocusRect(
            XRect(current.row(), current.column(), current.row(), current.column()));
    huge::XCellAction* const running = action.get();
    m_model->perform(std::move(action));
    select(running->selectRects(xstd::XUndoableActionType::Do), false);
}

void XCellTableView::runCommand(const ActionMaker& makeAction)
{
    try {
        runAction(makeAction);
    } catch (const xstd::XExceptionItems& failure) {
        theMainWindow->printError(errorHtml(failure));
    } catch (const std::exception& failure) {
        theMainWindow->printError(errorHtml(failure, X_HERE, "action"));
    }
}

void XCellTableView::runOnRect(const char* refusal, RectActionMaker makeAction)
{
    const xstd::XMergedRects selected = selectedRects();
    if (selected.size() != 1) {
        showError(QString(refusal).toHtmlEscaped());
        return;
    }
    runCommand([&] { return makeAction(m_model->table(), selected[0]); });
}

void XCellTableView::insertRow()
{
    runOnRect(oneRectText, onRows<huge::XCellActionInsertRow>);
}

void XCellTableView::insertCol()
{
    runOnRect(oneRectText, onCols<huge::XCellActionInsertCol>);
}

void XCellTableView::insertRowRect()
{
    runOnRect(insertRectText, onRect<huge::XCellActionInsertRowRect>);
}

void XCellTableView::insertColRect()
{
    runOnRect(insertRectText, onRect<huge::XCellActionInsertColRect>);
}

void XCellTableView::removeRow()
{
    runOnRect(oneRectText, onRows<huge::XCellActionRemoveRow>);
}

void XCellTableView::removeCol()
{
    runOnRect(oneRectText, onCols<huge::XCellActionRemoveCol>);
}

void XCellTableView::removeRowRect()
{
    runOnRect(removeRectText, onRect<huge::XCellActionRemoveRowRect>);
}

void XCellTableView::removeColRect()
{
    runOnRect(removeRectText, onRect<huge::XCellActionRemoveColRect>);
}

void XCellTableView::transposeRect()
{
    runOnRect(removeRectText, onRect<huge::XCellActionTranspose>);
}

void XCellTableView::delSelectData()
{
    const xstd::XMergedRects selected = selectedRects();
    bool any = false;
    for (const XRect& rect : selected.rects()) {
        m_model->table()->forEachCell(
            rect, [&](const huge::XCell* cell) { any = any || cell->isUsed(); });
    }
    if (!any)
        return;
    runCommand(
        [&] { return std::make_unique<huge::XCellActionDelValues>(m_model->table(), selected); });
}

void XCellTableView::recalcSelection()
{
    xstd::XMergedRects changed;
    try {
        const xstd::XStopScope scope;
        // Where nothing was calculated yet, no cell may read another's stored text.
        const bool all = std::exchange(m_uncalculated, false);
        huge::XCellTable& table = *m_model->table();
        table.recalc(changed, all ? xstd::XMergedRects(table.mainRect()) : selectedRects());
    } catch (const xstd::XExceptionItems& failure) { // a stop: what ran is complete
        theMainWindow->printError(errorHtml(failure));
    }
    m_model->update(changed);
}

void XCellTableView::cutSelection()
{
    const xstd::XMergedRects before = m_paintState.cutRects;
    m_paintState.cutRects = selectedRects();
    for (const xstd::XMergedRects& rects : {before, m_paintState.cutRects}) {
        for (const XRect& rect : rects.rects())
            repaintCells(rect);
    }
}

void XCellTableView::pasteCutRects()
{
    const xstd::XMergedRects source = m_paintState.cutRects;
    const xstd::XMergedRects selected = selectedRects();
    if (source.isEmpty() || selected.isEmpty())
        return;
    const XRect from = source.boundRect();
    const XRect to = selected.boundRect();
    const int dRow = to.top - from.top;
    const int dCol = to.left - from.left;
    if (dRow != 0 || dCol != 0) {
        runCommand([&] {
            return std::make_unique<huge::XCellActionMoveRect>(m_model->table(), source, dRow, dCol,
                                                               xstd::XOptions{huge::optTake});
        });
    }
    clearDragState();
}

void XCellTableView::forgetChangedCut(const xstd::XUndoableAction* done,
                                      xstd::XUndoableActionType type)
{
    const auto* action = dynamic_cast<const huge::XCellAction*>(done);
    if (!action || m_paintState.cutRects.isEmpty())
        return;
    const xstd::XMergedRects changed = action->changedRects(type);
    if (!changed.intersects(m_paintState.cutRects))
        return;
    for (const XRect& rect : m_paintState.cutRects.rects())
        repaintCells(rect);
    m_paintState.cutRects.clear();
}

void XCellTableView::copyStyle(const xstd::XMergedRects& rects)
{
    m_styleRects = rects;
    m_styles.clear();
    m_model->table()->snapshotExtends(m_styles, rects, {huge::optCopy});
}

void XCellTableView::pasteStyle(const xstd::XMergedRects& rects)
{
    if (m_styleRects.isEmpty() || rects.isEmpty())
        return;
    runAction([&] {
        return std::make_unique<XActionPasteStyle>(theMainWindow, rects, m_styleRects, m_styles);
    });
}

void XCellTableView::clearStyle(const xstd::XMergedRects& rects)
{
    if (rects.isEmpty())
        return;
    runAction([&] { return std::make_unique<XActionClearStyle>(theMainWindow, rects); });
}

huge::XCell* XCellTableView::firstSelectedCell() const
{
    const QItemSelection selection = selectionModel()->selection();
    return selection.isEmpty()
               ? nullptr
               : m_model->table()->cellAt(selection.first().top(), selection.first().left());
}
