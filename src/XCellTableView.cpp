#include "XCellTableView.h"

#include "XCellEditor.h"
#include "XCellScriptEditor.h"
#include "XCellTableModel.h"
#include "XCellTableViewItemDelegate.h"
#include "XTracingAction.h"
#include "cell/XCellActionSetText.h"
#include "cell/XCellTable.h"
#include "errorHtml.h"
#include "qtText.h"
#include "tavix.h"

#include <QHeaderView>
#include <QItemSelection>
#include <QKeyEvent>

#include <algorithm>
#include <iterator>

using xstd::XUndoableActionType;

namespace {

const char* const viewSheet = "XCellTableView{\n"
                              "\t\tgridline-color: rgb(240,240,240);\n"
                              "\t\tbackground-color: white;\n"
                              "\t\tselection-color: black;\n"
                              "\t\tselection-background-color: rgba(210,210,250,128);\n"
                              "\t\tborder: none;\n"
                              "\t\tpadding: 3px 3px;\n"
                              "\t}";

xstd::XRect rectOf(const QItemSelectionRange& range)
{
    return xstd::XRect(range.top(), range.left(), range.bottom(), range.right());
}

/// The rectangles of a selection, each one cell further to the right and downward: the next cells
/// draw the shared edges.
xstd::XMergedRects rectsWithEdges(const QItemSelection& selection)
{
    xstd::XMergedRects rects;
    for (const QItemSelectionRange& range : selection) {
        xstd::XRect rect = rectOf(range);
        ++rect.bottom;
        ++rect.right;
        rects.add_(rect, false);
    }
    return rects;
}

/// Keys that begin a text in the script pane: letters, digits and the underline.
bool beginsText(int key)
{
    return (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9) ||
           key == Qt::Key_Underscore;
}

} // namespace

XCellTableView::XCellTableView(QWidget* parent) : QTableView(parent)
{
    setStyleSheet(viewSheet);
    setShowGrid(false);
    setMouseTracking(true);
    horizontalHeader()->setObjectName("horizontalHeader");
    horizontalHeader()->setMouseTracking(true);
    verticalHeader()->setObjectName("verticalHeader");
    verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
    initHeaders();
    initMenu();
    setItemDelegate(new XCellTableViewItemDelegate(this));
}

XCellTableView::~XCellTableView() = default;

void XCellTableView::setTableModel(XCellTableModel* model)
{
    m_model = model;
    setModel(model);
}

void XCellTableView::setUndo(xstd::XUndoableActions* undo)
{
    m_undo = undo;
    m_undo->addObserver([this](xstd::XUndoableActions*, const xstd::XUndoableAction* action,
                               XUndoableActionType type) { forgetChangedCut(action, type); });
    m_model->setUndo(undo);
}

void XCellTableView::setPaintState(const XCellPaintState& state)
{
    m_paintState = state;
    viewport()->update();
}

xstd::XMergedRects XCellTableView::selectedRects() const
{
    xstd::XMergedRects rects;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        rects.add_(rectOf(range), false);
    return rects;
}

void XCellTableView::select(const xstd::XMergedRects& rects, bool clear)
{
    if (clear)
        selectionModel()->clear();
    QItemSelection selection;
    for (const xstd::XRect& rect : rects.rects()) {
        if (!rect.isNull())
            selection.select(m_model->index(rect.top, rect.left),
                             m_model->index(rect.bottom, rect.right));
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void XCellTableView::setCellText(int row, int col, const xstd::XString& text, bool replaceScript)
{
    m_model->perform(std::make_unique<huge::XCellActionSetText>(m_model->table(), row, col, text,
                                                                replaceScript));
}

void XCellTableView::undo()
{
    undoOrRedo(XUndoableActionType::Undo);
}

void XCellTableView::redo()
{
    undoOrRedo(XUndoableActionType::Redo);
}

void XCellTableView::undoOrRedo(XUndoableActionType type)
{
    try {
        xstd::XUndoableAction* done =
            type == XUndoableActionType::Undo ? m_undo->undo_() : m_undo->redo_();
        if (auto* action = dynamic_cast<huge::XCellAction*>(done))
            showAfter(*action, type);
    } catch (const xstd::XExceptionItems& failure) {
        theMainWindow->printError(errorHtml(failure));
    } catch (const std::exception& failure) {
        theMainWindow->printError(errorHtml(failure, X_HERE, "action"));
    }
}

void XCellTableView::showAfter(huge::XCellAction& action, XUndoableActionType type)
{
    const auto selectType =
        type == XUndoableActionType::Undo ? XUndoableActionType::Undo : XUndoableActionType::Do;
    m_model->update(action.paintRects(type));
    select(action.selectRects(selectType), type == XUndoableActionType::Undo);
    const xstd::XRect focus = action.focusRect();
    if (!focus.isNull())
        selectionModel()->setCurrentIndex(m_model->index(focus.top, focus.left),
                                          QItemSelectionModel::Current);
}

void XCellTableView::keyPressEvent(QKeyEvent* event)
{
    if (runKey(*event))
        return;
    if (!(event->modifiers() & Qt::ControlModifier) && beginsText(event->key()))
        editInPane(QChar(event->key()));
    else
        QTableView::keyPressEvent(event);
}

bool XCellTableView::runKey(const QKeyEvent& event)
{
    constexpr int control = Qt::ControlModifier;
    constexpr int shift = Qt::ShiftModifier;
    struct Command {
        int key;
        std::function<void()> run;
    };
    const Command commands[] = {
        {control | Qt::Key_C, [this] { copyToClipboard(); }},
        {control | Qt::Key_V, [this] { paste(huge::XCellImageMode::Everything); }},
        {control | Qt::Key_X, [this] { cutSelection(); }},
        {control | Qt::Key_Z, [this] { undo(); }},
        {control | Qt::Key_Y, [this] { redo(); }},
        {control | Qt::Key_R, [this] { recalcSelection(); }},
        {control | Qt::Key_F4, [this] { printFirstListing(); }},
        {control | Qt::Key_B, [] { theMainWindow->toggleBold(); }},
        {control | Qt::Key_I, [] { theMainWindow->toggleItalic(); }},
        {control | Qt::Key_U, [] { theMainWindow->toggleUnderline(); }},
        {control | shift | Qt::Key_C, [this] { copyStyle(selectedRects()); }},
        {control | shift | Qt::Key_V, [this] { pasteStyle(selectedRects()); }},
        {Qt::Key_Delete, [this] { delSelectData(); }},
        {Qt::Key_Escape, [this] { clearDragState(); }},
    };
    const int pressed = static_cast<int>(event.modifiers() & ~Qt::KeypadModifier) | event.key();
    const auto command = std::find_if(std::begin(commands), std::end(commands),
                                      [&](const Command& c) { return c.key == pressed; });
    if (command == std::end(commands))
        return false;
    command->run();
    return true;
}

void XCellTableView::printFirstListing()
{
    if (const huge::XCell* cell = firstSelectedCell())
        theMainWindow->printListing(toQString(cell->scriptText(false)), cell->row(), cell->col());
}

void XCellTableView::editInPane(const QString& text)
{
    XCellScriptEditor* pane = m_editor ? m_editor->mainEdit() : nullptr;
    if (!pane)
        return;
    pane->setFocus();
    pane->moveCursor(QTextCursor::End);
    pane->insertPlainText(text);
}

void XCellTableView::mouseDoubleClickEvent(QMouseEvent*)
{
    editInPane(QString());
}

void XCellTableView::selectionChanged(const QItemSelection& selected,
                                      const QItemSelection& deselected)
{
    QTableView::selectionChanged(selected, deselected);
    m_model->update(rectsWithEdges(selected));
    m_model->update(rectsWithEdges(deselected));
}
