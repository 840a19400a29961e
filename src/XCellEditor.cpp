#include "XCellEditor.h"

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

void XCellEditor::setCell(int row, int col, const QString& text)
{
    m_row = row;
    m_col = col;
    m_cellText = text;
    m_refusedText = QString();
    if (m_mainEdit)
        m_mainEdit->setCellText(text);
    if (m_cellEdit)
        m_cellEdit->setCellText(text);
}

void XCellEditor::confirm()
{
    if (m_confirming || !m_mainEdit || !m_view)
        return;
    const QScopedValueRollback<bool> guard(m_confirming, true);
    const QString text = m_mainEdit->toPlainText();
    if (text != m_cellText && m_row >= 0 && m_col >= 0)
        store(text);
    // The cell's text may differ from what was typed by a leading "=".
    m_cellText = m_mainEdit->toPlainText();
    m_view->setFocus();
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
    if (m_mainEdit)
        m_mainEdit->setCellText(m_cellText);
    if (m_cellEdit)
        m_cellEdit->setCellText(m_cellText);
    if (m_view)
        m_view->setFocus();
}

void XCellEditor::onFocusOut()
{
    if (!m_view || !m_view->hasFocus())
        return;
    // A text that was refused once has been shown with its failure; leaving it raises no more.
    if (m_mainEdit && !m_refusedText.isNull() && m_mainEdit->toPlainText() == m_refusedText)
        return;
    confirm();
}
