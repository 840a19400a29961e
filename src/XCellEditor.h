#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

class XCellScriptEditor;
class XCellTableView;

/// Ties the script pane of a page and the editor in a cell to the grid. It keeps the cell's text
/// as it stands in the table, so that confirming an unchanged text makes no action.
class XCellEditor : public QObject {
    Q_OBJECT

public:
    explicit XCellEditor(QObject* parent = nullptr);

    /// None of the widgets is owned; each finds this object through its own pointer back.
    void setView(XCellTableView* view) { m_view = view; }
    void setMainEdit(XCellScriptEditor* edit);
    void setCellEdit(XCellScriptEditor* edit);
    /// Forgets a widget that goes.
    void detach(XCellScriptEditor* edit);
    XCellScriptEditor* mainEdit() const;

    /// Shows another cell, or a cell's new text, in the widgets.
    void setCell(int row, int col, const QString& text);
    /// Puts the script pane's text into the cell and gives the focus back to the grid. What the
    /// action raises goes on; the pane then keeps text and focus.
    void confirm();
    /// Brings back the cell's text and gives the focus to the grid.
    void cancel();
    /// Confirms when the focus went from an editor to the grid.
    void onFocusOut();

private:
    void attach(QPointer<XCellScriptEditor>& slot, XCellScriptEditor* edit);
    void store(const QString& text);

    XCellTableView* m_view = nullptr;
    QPointer<XCellScriptEditor> m_mainEdit;
    QPointer<XCellScriptEditor> m_cellEdit;
    int m_row = -1;
    int m_col = -1;
    QString m_cellText;
    QString m_refusedText; // the cell has it already, and with it the failure
    bool m_confirming = false;
};
