#pragma once

#include "KeyWordHint.h"
#include "XScriptScan.h"

#include <QTextCharFormat>
#include <QTextEdit>

#include <array>

class XCellEditor;

/// An editor of a cell's script, as plain text: the script pane above the grid, or in the cell. It
/// shows the tokens in their colours, the pair of brackets around the cursor, and a popup of the
/// keywords that fit the word at the cursor.
class XCellScriptEditor : public QTextEdit, private KeyWordHintInf {
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

    const XScriptScan& scan() const { return m_scan; }
    /// The references of the text, where the selected one comes first.
    const std::vector<huge::XCellRangeRef>& references() const { return m_references; }
    /// Shows a reference of the text as the one that is meant; one without a place shows none.
    void highlightReference(const huge::XCellRangeRef& range);
    void replaceReference(const huge::XCellRangeRef& mark, const QString& text);
    /// Whether a reference may stand at the cursor: behind an operator or an opening bracket, in
    /// front of no word, and in the place of no word but a selected one.
    bool canTakeReference() const;
    void insertReference(const QString& text);
    /// The brackets around the cursor; of kind 0 when there are none.
    const XBracketPair& activeBracket() const { return m_activeBracket; }

signals:
    /// The editor in the cell is done.
    void committed();

public slots:
    void onTextChanged();
    void onCursorPositionChanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    /// A word of the text by its place.
    struct Word {
        int begin = 0;
        int end = 0;
        QString text;
    };

    // Text and formats (XCellScriptEditorText.cpp)
    void makeFormats();
    void rescan();
    void applyFormats();
    void showExtraSelections();
    void showActiveBracket();
    void showHintLine();
    QString callName() const;
    QTextCursor cursorOver(int begin, int end) const;
    Word wordAt(int place) const;
    Word cursorWord() const { return wordAt(textCursor().position()); }
    QString neighbour(int place, int step) const;
    huge::XCellRangeRef referenceAt(const QPoint& position) const;

    // Keys and popup (XCellScriptEditor.cpp)
    bool isConfirmKey(const QKeyEvent& event) const;
    void confirm();
    bool isHintKey(const QKeyEvent& event);
    void insertIndentedLine(QKeyEvent* event);
    void showHints();
    void hideHints();
    bool hintsVisible() const;
    void insertKeyWord(const KeyWordItem* entry, bool* close) override;

    XCellEditor* m_editor = nullptr;
    bool m_inCell = false;
    std::array<QTextCharFormat, scriptStyleCount> m_formats;
    QString m_text; // as it was last scanned
    XScriptScan m_scan;
    std::vector<huge::XCellRangeRef> m_references;
    XBracketPair m_activeBracket;
    huge::XCellRangeRef m_currentMark;
    huge::XCellRangeRef m_hoverRange;
    int m_lastHoverPos = -1;
};
