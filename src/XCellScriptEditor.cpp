#include "XCellScriptEditor.h"

#include "XCellEditor.h"
#include "XCellTableView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QTextBlock>

XCellScriptEditor::XCellScriptEditor(QWidget* parent) : QTextEdit(parent)
{
    setAcceptRichText(false); // a pasted text is a script, whatever it looked like
    setLineWrapMode(QTextEdit::NoWrap);
    setStyleSheet("\n\t\tQTextEdit{border:1px solid rgb(230,230,230);}\n"
                  "\t\tQTextEdit:!focus{background-color:rgb(250,250,250);}\n"
                  "\t\tQTextEdit:focus{background-color:rgb(255,255,255);}\n\t");
    setMouseTracking(true);
    makeFormats();
    connect(this, &QTextEdit::textChanged, this, &XCellScriptEditor::onTextChanged);
    connect(this, &QTextEdit::cursorPositionChanged, this,
            &XCellScriptEditor::onCursorPositionChanged);
}

XCellScriptEditor::~XCellScriptEditor()
{
    if (!m_editor)
        return;
    if (m_editor->hint())
        m_editor->hint()->forget(this);
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
    {
        const QSignalBlocker blocker(this);
        setPlainText(text);
    }
    onTextChanged();
}

void XCellScriptEditor::hideEvent(QHideEvent* event)
{
    QTextEdit::hideEvent(event);
    if (m_inCell && m_editor)
        m_editor->endCellEdit();
}

void XCellScriptEditor::changeEvent(QEvent* event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        applyFormats();
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
    if (isHintKey(*event))
        return;
    const bool isControl = event->modifiers() == Qt::ControlModifier;
    if (isConfirmKey(*event)) {
        confirm();
    } else if (event->key() == Qt::Key_Escape && !m_inCell) {
        if (m_editor)
            m_editor->cancel();
    } else if (event->key() == Qt::Key_Return && event->modifiers() == Qt::NoModifier) {
        insertIndentedLine(event);
    } else if (isControl && event->key() == Qt::Key_F4) {
        if (m_editor)
            m_editor->printListing(toPlainText());
    } else if (isControl && event->key() == Qt::Key_Z) {
        undo();
        if (XCellScriptEditor* other = m_editor ? m_editor->otherEdit(this) : nullptr)
            other->undo();
    } else {
        QTextEdit::keyPressEvent(event);
        const bool isWord = !event->text().isEmpty() && event->text()[0] != ' ' &&
                            isScriptWordCharacter(event->text()[0]);
        if (isWord)
            showHints();
        else if (!event->text().isEmpty())
            hideHints();
    }
}

/// The keys that the popup takes while it shows.
bool XCellScriptEditor::isHintKey(const QKeyEvent& event)
{
    if (!hintsVisible())
        return false;
    KeyWordHint& hint = *m_editor->hint();
    switch (event.key()) {
    case Qt::Key_Escape:
        hideHints();
        return true;
    case Qt::Key_Down:
        hint.selectNext();
        return true;
    case Qt::Key_Up:
        hint.selectPrev();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (event.modifiers() & ~Qt::KeypadModifier)
            return false;
        hint.accept();
        return true;
    default:
        return false;
    }
}

bool XCellScriptEditor::hintsVisible() const
{
    return m_editor && m_editor->hint() && m_editor->hint()->isVisible();
}

void XCellScriptEditor::hideHints()
{
    if (m_editor)
        m_editor->hideHints();
}

void XCellScriptEditor::showHints()
{
    if (!m_editor || !m_editor->hint() || m_editor->hint()->model().rowCount() == 0)
        return;
    const Word word = cursorWord();
    constexpr int longestWord = 64; // no keyword is near it, and scoring would take its time
    if (word.text.size() > longestWord || !isScriptIdentifier(word.text) ||
        readScriptReference(word.text)) {
        hideHints();
        return;
    }
    m_editor->hint()->filter(word.text);
    const QRect cursor = cursorRect();
    const QPoint place = viewport()->mapToGlobal(QPoint(cursor.left(), cursor.bottom()));
    m_editor->hint()->showAt(this, place.x(), place.y());
}

void XCellScriptEditor::insertKeyWord(const KeyWordItem* entry, bool* close)
{
    const Word word = cursorWord();
    QString text = entry->insertText;
    const int mark = text.indexOf('@');
    if (mark >= 0)
        text.remove(mark, 1);
    cursorOver(word.begin, word.end).insertText(text);
    const int place = word.begin + (mark >= 0 ? mark : text.size());
    setTextCursor(cursorOver(place, place));
    *close = true;
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

void XCellScriptEditor::focusInEvent(QFocusEvent* event)
{
    QTextEdit::focusInEvent(event);
    if (m_editor)
        m_editor->onFocusIn(this);
}

void XCellScriptEditor::focusOutEvent(QFocusEvent* event)
{
    if (m_editor)
        m_editor->onFocusOut();
    QTextEdit::focusOutEvent(event);
}

void XCellScriptEditor::mousePressEvent(QMouseEvent* event)
{
    QTextEdit::mousePressEvent(event);
    hideHints();
    m_currentMark = referenceAt(event->pos());
    if (m_editor && m_editor->view() && m_currentMark.textLen > 0)
        m_editor->view()->hoverMark(m_currentMark, true);
}

void XCellScriptEditor::mouseMoveEvent(QMouseEvent* event)
{
    QTextEdit::mouseMoveEvent(event);
    if ((event->buttons() & Qt::LeftButton) || !m_editor || !m_editor->view())
        return;
    const int place = cursorForPosition(event->pos()).position();
    if (place == m_lastHoverPos)
        return;
    m_lastHoverPos = place;
    m_editor->view()->hoverMark(referenceAt(event->pos()), false);
}

void XCellScriptEditor::enterEvent(QEvent* event)
{
    QTextEdit::enterEvent(event);
    m_lastHoverPos = -1;
}

void XCellScriptEditor::leaveEvent(QEvent* event)
{
    QTextEdit::leaveEvent(event);
    m_currentMark = huge::XCellRangeRef();
    if (m_editor && m_editor->view())
        m_editor->view()->hoverMark(m_currentMark, true);
}
