#pragma once

#include "XCellPaintState.h"
#include "common/XMergedRects.h"
#include "common/XUndoableActions.h"

#include <QTableView>

class XCellEditor;
class XCellTableModel;
namespace huge {
class XCell;
class XCellAction;
} // namespace huge

/// The grid of a page. Every command on cells ends here: it builds one action, puts it on the
/// page's undo stack and repaints what the action reports.
class XCellTableView : public QTableView {
    Q_OBJECT

public:
    explicit XCellTableView(QWidget* parent = nullptr);
    ~XCellTableView() override;

    /// Model, stack and editor are the page's. The model comes first: it gets the stack too.
    void setTableModel(XCellTableModel* model);
    void setUndo(xstd::XUndoableActions* undo);
    void setEditor(XCellEditor* editor) { m_editor = editor; }
    XCellTableModel* tableModel() const { return m_model; }
    XCellEditor* editor() const { return m_editor; }

    const XCellPaintState& paintState() const { return m_paintState; }
    /// Takes another state over and repaints the grid.
    void setPaintState(const XCellPaintState& state);

    /// The selection, one rectangle for each of its ranges.
    xstd::XMergedRects selectedRects() const;
    /// Selects the rectangles. With `clear` the current cell is dropped first.
    void select(const xstd::XMergedRects& rects, bool clear);

    /// Puts a text into a cell. What the action raises goes to the caller, after the repaint.
    void setCellText(int row, int col, const xstd::XString& text, bool replaceScript);
    /// Takes the last action back, selects what it touched and goes to its cell. A failure is
    /// printed in the message pane.
    void undo();
    /// Does the last undone action again, with the same signs.
    void redo();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

private:
    void undoOrRedo(xstd::XUndoableActionType type);
    void showAfter(huge::XCellAction& action, xstd::XUndoableActionType type);
    void editInPane(const QString& text);
    void updateRefMarks(const huge::XCell* cell);

    XCellPaintState m_paintState;
    XCellTableModel* m_model = nullptr;
    xstd::XUndoableActions* m_undo = nullptr;
    XCellEditor* m_editor = nullptr;
};
