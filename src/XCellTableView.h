#pragma once

#include "XCellPaintState.h"
#include "XCellPointer.h"
#include "cell/XCellRangeRef.h"
#include "common/XMergedRects.h"
#include "common/XOptions.h"
#include "common/XUndoableActions.h"

#include <QTableView>

#include <functional>
#include <memory>
#include <vector>

class XCellEditor;
class XCellTableModel;
class XTracingAction;
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

    // Mouse and references

    /// Fills the target of the drag from its source, and selects both. Nothing happens without a
    /// target; a failure is printed in the message pane.
    void copySelectData(xstd::XOptions options);
    /// Moves the source of the drag to its target, and selects the target, in the same way.
    void moveSelectData(xstd::XOptions options);
    /// Ends whatever the pointer has begun, a pending cut and the tool.
    void clearDragState();
    /// Gives the pointer to a tool, which acts on the next release of the mouse; null ends it.
    void setTool(std::unique_ptr<XTracingAction> tool);
    XTracingAction* tool() const { return m_tool.get(); }

    /// While a script is under edit the grid shows what it reads, as marks; a click or drag makes
    /// or changes a reference in the script in place of selecting. `ranges` are the script's
    /// references in absolute form, (row, col) is the cell under edit.
    void enterReferenceMode(int row, int col, const std::vector<huge::XCellRangeRef>& ranges);
    /// With `clear` the marks are forgotten, else they stay known to hoverMark.
    void leaveReferenceMode(bool clear);
    bool isInReferenceMode() const { return m_pointer.mode == XCellPointer::Reference; }
    void updateMarks(const std::vector<huge::XCellRangeRef>& ranges);
    /// Frames the mark at the same place of the script with the same cells, or none when there is
    /// no such mark. With `front` it becomes the first, which is preferred where marks are alike.
    void hoverMark(const huge::XCellRangeRef& range, bool front);
    void clearHover();
    /// Whether the editor has a place for a reference at its cursor.
    bool canTakeReference() const;
    const std::vector<huge::XCellRangeRef>& marks() const { return m_marks; }
    /// The mark under the pointer or under the editor's cursor; null when there is none.
    const huge::XCellRangeRef* hoveredMark() const;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                     const QVector<int>& roles) override;

private slots:
    void hsectionResized(int logicalIndex, int oldSize, int newSize);
    void vsectionResized(int logicalIndex, int oldSize, int newSize);

private:
    void initHeaders();
    xstd::XPoint cellUnder(const QPoint& pos) const;
    xstd::XRect gridRect() const;
    QRect pixelsOf(const xstd::XRect& rect) const;
    void repaintCells(const xstd::XRect& rect);
    void setDragTo(const xstd::XRect& rect);
    void resetPointer();
    bool hasDragTarget() const;
    void runDrag(const std::function<std::unique_ptr<huge::XCellAction>()>& makeAction);
    bool startDrag(const QPoint& pos);
    bool startReference(const QPoint& pos);
    void dragOver(const QPoint& pos);
    void dragMove(const xstd::XPoint& cell);
    void finishDrag(bool scriptOnly);
    void finishReference();
    void followEdge(const QPoint& pos);
    void scrollTowards(const QPoint& pos);
    QCursor cursorFor(const QPoint& pos);
    QCursor markCursor(const QPoint& pos);
    int markAt(int row, int col) const;
    void setHovered(int mark);
    void showMarks();
    void repaintMarks();
    void updateRefMarks(const QModelIndex& index);

    XCellPointer m_pointer;
    std::unique_ptr<XTracingAction> m_tool;
    XCellCursors m_cursors;
    std::vector<huge::XCellRangeRef> m_marks;
    int m_hoveredMark = -1; // index in m_marks
    bool m_syncResize = true;
    // End of mouse and references

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

private:
    void undoOrRedo(xstd::XUndoableActionType type);
    void showAfter(huge::XCellAction& action, xstd::XUndoableActionType type);
    void editInPane(const QString& text);

    XCellPaintState m_paintState;
    XCellTableModel* m_model = nullptr;
    xstd::XUndoableActions* m_undo = nullptr;
    XCellEditor* m_editor = nullptr;
};
