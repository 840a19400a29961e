#pragma once

#include "XCellPaintState.h"
#include "XCellPointer.h"
#include "cell/XCellActionSetDatas.h"
#include "cell/XCellActionSetTexts.h"
#include "cell/XCellRangeRef.h"
#include "common/XMergedRects.h"
#include "common/XOptions.h"
#include "common/XUndoableActions.h"

#include <QScopedValueRollback>
#include <QTableView>

#include <functional>
#include <memory>
#include <vector>

class QMenu;
class XCellEditor;
class XCellTableModel;
class XCommonAction;
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

    // Commands (XCellTableViewCommands.cpp, XCellTableViewClipboard.cpp). Each works on the
    // selection. Those on the structure want one range, and show a box otherwise; what the action
    // of a structure command, a deletion or a pasted cut raises is printed in the message pane,
    // anything else goes to the caller, after the repaint.

    void insertRow();
    void insertCol();
    void insertRowRect();
    void insertColRect();
    void removeRow();
    void removeCol();
    void removeRowRect();
    void removeColRect();
    void transposeRect();
    /// Empties the cells; nothing, and no step to undo, where there is nothing.
    void delSelectData();
    /// Runs the selected cells and all that depends on them. This is no step to undo.
    void recalcSelection();

    /// Marks the cells for the next paste, which moves them. Nothing changes until then.
    void cutSelection();
    /// The cells in the form of a page and as text.
    void copyToClipboard();
    /// Moves what was cut, whatever the mode. Otherwise the clipboard's cells, or its text where
    /// that is all it has and the mode takes values.
    void paste(huge::XCellImageMode mode);
    void pasteCutRects();
    void setCellTexts(const xstd::XMergedRects& rects, huge::XCellActionSetTexts::Texts texts);
    void setCellDatas(const xstd::XMergedRects& rects, huge::XCellActionSetDatas::Datas datas,
                      huge::XCellImageMode mode, const xstd::XMergedRects& dataRects);

    /// Keeps the formats of the cells for pasteStyle.
    void copyStyle(const xstd::XMergedRects& rects);
    /// Nothing before copyStyle. Raises what XActionPasteStyle raises, as clearStyle does.
    void pasteStyle(const xstd::XMergedRects& rects);
    void clearStyle(const xstd::XMergedRects& rects);

    /// The next recalculation runs the whole table: its values are texts that were stored.
    void setUncalculated(bool uncalculated) { m_uncalculated = uncalculated; }

    /// While it lives a resized section leaves the other selected ones alone.
    class ResizeGuard {
    public:
        explicit ResizeGuard(XCellTableView& view) : m_rollback(view.m_syncResize, false) {}

    private:
        QScopedValueRollback<bool> m_rollback;
    };

    /// The cell at the top left of the first range; null without one.
    huge::XCell* firstSelectedCell() const;
    QMenu* tableMenu() const { return m_tableMenu; }

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
    void copySectionSize(Qt::Orientation orientation, int section, int size);
    xstd::XPoint cellUnder(const QPoint& pos) const;
    xstd::XRect gridRect() const;
    QRect pixelsOf(const xstd::XRect& rect) const;
    void repaintCells(const xstd::XRect& rect);
    void setDragTo(const xstd::XRect& rect);
    void resetPointer();
    bool hasDragTarget() const;
    bool beginDrag(const QPoint& pos);
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
    void highlightHovered();
    void showMarks();
    void repaintMarks();
    void updateRefMarks(const QModelIndex& index);

    XCellPointer m_pointer;
    std::unique_ptr<XTracingAction> m_tool;
    XCellCursors m_cursors;
    std::vector<huge::XCellRangeRef> m_marks;
    int m_hoveredMark = -1; // index in m_marks
    bool m_syncResize = true;
    bool m_uncalculated = false;
    // End of mouse and references

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

private slots:
    void aboutTableMenuToShow();

private:
    using ActionMaker = std::function<std::unique_ptr<huge::XCellAction>()>;
    using RectActionMaker = std::unique_ptr<huge::XCellAction> (*)(huge::XCellTable* table,
                                                                   const xstd::XRect& rect);

    void initMenu();
    void initStructureMenus();
    XCommonAction* addEntry(QMenu* menu, const char* text, const char* icon,
                            std::function<void()> command);
    template <class Tool>
    void startTool();
    void runAction(const ActionMaker& makeAction);
    void runCommand(const ActionMaker& makeAction);
    void runOnRect(const char* refusal, RectActionMaker makeAction);
    void pasteFromClipboard(huge::XCellImageMode mode);
    bool pasteImage(const xstd::XMergedRects& target, const QByteArray& image,
                    huge::XCellImageMode mode);
    void pasteText(xstd::XMergedRects target, const QString& clipboardText);
    void forgetChangedCut(const xstd::XUndoableAction* done, xstd::XUndoableActionType type);
    bool runKey(const QKeyEvent& event);
    void printFirstListing();
    void undoOrRedo(xstd::XUndoableActionType type);
    void showAfter(huge::XCellAction& action, xstd::XUndoableActionType type);
    void editInPane(const QString& text);

    xstd::XMergedRects m_styleRects; // of the last copyStyle
    huge::XSavedExtends m_styles;
    QMenu* m_tableMenu = nullptr;
    XCommonAction* m_pasteTextEntry = nullptr;
    XCommonAction* m_pasteScriptEntry = nullptr;
    XCellPaintState m_paintState;
    XCellTableModel* m_model = nullptr;
    xstd::XUndoableActions* m_undo = nullptr;
    XCellEditor* m_editor = nullptr;
};
