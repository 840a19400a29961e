#pragma once

#include <QTextEdit>

class XCellEditor;

/// An editor of a cell's script, as plain text: the script pane above the grid, or in the cell.
class XCellScriptEditor : public QTextEdit {
    Q_OBJECT

public:
    explicit XCellScriptEditor(QWidget* parent = nullptr);
    ~XCellScriptEditor() override;

    void setEditor(XCellEditor* editor) { m_editor = editor; }
    /// In a cell there is room for one line: Return commits there, and lines are made with
    /// Shift+Return. In the pane Return makes a line, and Ctrl+Return or Ctrl+S commits.
    void setInCell(bool inCell);
    /// Replaces the text without reporting it as an edit of the user's.
    void setCellText(const QString& text);

signals:
    /// The editor in the cell is done.
    void committed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool isConfirmKey(const QKeyEvent& event) const;
    void confirm();
    void insertIndentedLine(QKeyEvent* event);

    XCellEditor* m_editor = nullptr;
    bool m_inCell = false;
};
