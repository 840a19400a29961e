#include "XCellScriptEditor.h"

#include "XCellEditor.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QTextBlock>

XCellScriptEditor::XCellScriptEditor(QWidget* parent) : QTextEdit(parent)
{
    setAcceptRichText(false); // a pasted text is a script, whatever it looked like
    setLineWrapMode(QTextEdit::NoWrap);
    setStyleSheet("\n\t\tQTextEdit{border:1px solid rgb(230,230,230);}\n"
                  "\t\tQTextEdit:!focus{background-color:rgb(250,250,250);}\n"
                  "\t\tQTextEdit:focus{background-color:rgb(255,255,255);}\n\t");
}

XCellScriptEditor::~XCellScriptEditor()
{
    if (m_editor)
        m_editor->detach(this);
}

void XCellScriptEditor::setInCell(bool inCell)
{
    m_inCell = inCell;
    const Qt::ScrollBarPolicy bars = inCell ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded;
    setHorizontalScrollBarPolicy(bars);
    setVerticalScrollBarPolicy(bars);
    document()->setDocumentMargin(inCell ? 2 : 4);
}

void XCellScriptEditor::setCellText(const QString& text)
{
    if (text == toPlainText())
        return; // the cursor stays where the user left it
    const QSignalBlocker blocker(this);
    setPlainText(text);
}

bool XCellScriptEditor::isConfirmKey(const QKeyEvent& event) const
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    if (event.key() == Qt::Key_S)
        return modifiers == Qt::ControlModifier;
    if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter)
        return false;
    if (m_inCell)
        return modifiers == Qt::NoModifier || modifiers == Qt::ControlModifier;
    return modifiers == Qt::ControlModifier || modifiers == Qt::ShiftModifier ||
           modifiers == Qt::AltModifier;
}

void XCellScriptEditor::confirm()
{
    if (m_inCell)
        emit committed();
    else if (m_editor)
        m_editor->confirm();
}

void XCellScriptEditor::keyPressEvent(QKeyEvent* event)
{
    if (isConfirmKey(*event)) {
        confirm();
    } else if (event->key() == Qt::Key_Escape && !m_inCell) {
        if (m_editor)
            m_editor->cancel();
    } else if (event->key() == Qt::Key_Return && event->modifiers() == Qt::NoModifier) {
        insertIndentedLine(event);
    } else {
        QTextEdit::keyPressEvent(event);
    }
}

void XCellScriptEditor::insertIndentedLine(QKeyEvent* event)
{
    const QString line = textCursor().block().text();
    int blanks = 0;
    while (blanks < line.size() && (line[blanks] == ' ' || line[blanks] == '\t'))
        ++blanks;
    QTextEdit::keyPressEvent(event);
    insertPlainText(line.left(blanks));
}

void XCellScriptEditor::focusOutEvent(QFocusEvent* event)
{
    if (m_editor)
        m_editor->onFocusOut();
    QTextEdit::focusOutEvent(event);
}
