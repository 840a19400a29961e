#include "XCellEditor.h"

#include "KeyWordHint.h"
#include "XCellScriptEditor.h"
#include "XCellTableView.h"
#include "qtText.h"

#include <QScopedValueRollback>

XCellEditor::XCellEditor(QObject* parent) : QObject(parent) {}

void XCellEditor::setMainEdit(XCellScriptEditor* edit)
{
    attach(m_mainEdit, edit);
}

void XCellEditor::setCellEdit(XCellScriptEditor* edit)
{
    attach(m_cellEdit, edit);
}

void XCellEditor::attach(QPointer<XCellScriptEditor>& slot, XCellScriptEditor* edit)
{
    if (slot)
        slot->setEditor(nullptr);
    slot = edit;
    if (!edit)
        return;
    edit->setEditor(this);
    edit->setTabStopDistance(4 * QFontMetricsF(edit->font()).horizontalAdvance(' '));
}

void XCellEditor::detach(XCellScriptEditor* edit)
{
    if (m_mainEdit == edit)
        m_mainEdit = nullptr;
    if (m_cellEdit == edit)
        m_cellEdit = nullptr;
    edit->setEditor(nullptr);
}

XCellScriptEditor* XCellEditor::mainEdit() const
{
    return m_mainEdit;
}

XCellScriptEditor* XCellEditor::otherEdit(const XCellScriptEditor* edit) const
{
    return edit == m_mainEdit ? m_cellEdit : m_mainEdit;
}

XCellScriptEditor* XCellEditor::focusEdit() const
{
    for (XCellScriptEditor* edit : edits()) {
        if (edit->hasFocus())
            return edit;
    }
    return nullptr;
}

XCellScriptEditor* XCellEditor::activeEdit() const
{
    XCellScriptEditor* edit = focusEdit();
    return edit ? edit : m_mainEdit.data();
}

std::vector<XCellScriptEditor*> XCellEditor::edits() const
{
    std::vector<XCellScriptEditor*> found;
    for (const QPointer<XCellScriptEditor>& edit : {m_mainEdit, m_cellEdit}) {
        if (edit)
            found.push_back(edit);
    }
    return found;
}

void XCellEditor::hideHints()
{
    if (m_hint)
        m_hint->hideFor(nullptr);
}

void XCellEditor::printListing(const QString& text) const
{
    if (m_listingFunc)
        m_listingFunc(text, m_row, m_col);
}

void XCellEditor::showHintInfo(const QString& word) const
{
    if (m_hintInfoFunc)
        m_hintInfoFunc(word);
}

void XCellEditor::setCell(int row, int col, const QString& text)
{
    clearHighlight();
    m_row = row;
    m_col = col;
    m_cellText = text;
    m_refusedText = QString();
    for (XCellScriptEditor* edit : edits())
        edit->setCellText(text);
}

void XCellEditor::confirm()
{
    if (m_confirming || !m_mainEdit || !m_view)
        return;
    const QScopedValueRollback<bool> guard(m_confirming, true);
    hideHints();
    const QString text = m_mainEdit->toPlainText();
    if (text != m_cellText && m_row >= 0 && m_col >= 0)
        store(text);
    // The cell's text may differ from what was typed by a leading "=".
    m_cellText = m_mainEdit->toPlainText();
    leaveGrid(false);
    m_view->setFocus();
}

void XCellEditor::leaveGrid(bool clear)
{
    hideHints();
    m_view->setFocusPolicy(Qt::ClickFocus);
    m_view->leaveReferenceMode(clear);
}

void XCellEditor::store(const QString& text)
{
    try {
        m_view->setCellText(m_row, m_col, toXString(text), true);
    } catch (...) {
        m_refusedText = text;
        throw;
    }
}

void XCellEditor::cancel()
{
    for (XCellScriptEditor* edit : edits())
        edit->setCellText(m_cellText);
    if (!m_view)
        return;
    leaveGrid(false);
    m_view->setFocus();
}

void XCellEditor::onFocusIn(XCellScriptEditor* edit)
{
    if (!m_view || m_row < 0)
        return;
    m_view->setFocusPolicy(Qt::NoFocus); // a click there is a reference, and leaves the focus here
    m_view->enterReferenceMode(m_row, m_col, edit->references());
}

void XCellEditor::onFocusOut()
{
    if (!m_view || !m_view->hasFocus())
        return;
    // A text that was refused once has been shown with its failure; leaving it raises no more.
    if (m_mainEdit && !m_refusedText.isNull() && m_mainEdit->toPlainText() == m_refusedText) {
        leaveGrid(true);
        return;
    }
    confirm();
}

void XCellEditor::endCellEdit()
{
    if (m_view && m_view->isInReferenceMode())
        leaveGrid(true);
}

void XCellEditor::onTextChanged(XCellScriptEditor* edit)
{
    if (m_view && m_view->isInReferenceMode() && edit == activeEdit())
        m_view->updateMarks(edit->references());
}

void XCellEditor::highlightMark(const huge::XCellRangeRef& range)
{
    for (XCellScriptEditor* edit : edits())
        edit->highlightReference(range);
}

void XCellEditor::clearHighlight()
{
    highlightMark(huge::XCellRangeRef());
}

void XCellEditor::replaceRange(const huge::XCellRangeRef& mark, const huge::XCellRangeRef& newRange)
{
    if (XCellScriptEditor* edit = activeEdit())
        edit->replaceReference(mark, toQString(newRange.toText(false)));
}

void XCellEditor::insertRange(const huge::XCellRangeRef& range)
{
    XCellScriptEditor* edit = activeEdit();
    if (edit && edit->canTakeReference())
        edit->insertReference(toQString(range.toText(false)));
}

bool XCellEditor::canTakeReference() const
{
    const XCellScriptEditor* edit = activeEdit();
    return edit && edit->canTakeReference();
}
