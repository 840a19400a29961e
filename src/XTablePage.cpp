#include "XTablePage.h"

#include "KeyWordHint.h"
#include "LongTexts.h"
#include "XCellScriptEditor.h"
#include "XCellTableModel.h"
#include "XCellTableView.h"
#include "XTavixCellExtend.h"
#include "cell/cellName.h"
#include "qtText.h"
#include "tavix.h"

#include <QItemSelection>
#include <QLabel>
#include <QTabBar>
#include <QTabWidget>
#include <QTextBrowser>

namespace {

constexpr int undoSteps = 50;

QString rangeName(const QItemSelectionRange& range)
{
    const QString first = toQString(huge::cellName(range.top(), range.left()));
    const QString last = toQString(huge::cellName(range.bottom(), range.right()));
    return first == last ? first : first + ":" + last;
}

} // namespace

XTablePage::XTablePage(tavix* owner, const QString& pageName)
    : m_owner(owner), m_pageName(pageName), m_table(xstd::XRect(0, 0, 1024, 256), 4),
      m_undo(undoSteps)
{
    buildForm();
    m_model = new XCellTableModel(&m_table, this);
    m_view->setTableModel(m_model);
    m_view->setEditor(&m_editor);
    m_view->setUndo(&m_undo);
    m_table.setExtendPrototype(std::make_unique<XTavixCellExtend>(m_view->font()));
    m_editor.setView(m_view);
    m_editor.setMainEdit(m_scriptEdit);
    m_editor.setHint(&owner->keyWordHint());
    m_editor.setListingFunc(
        [owner](const QString& text, int row, int col) { owner->printListing(text, row, col); });
    m_editor.setHintInfoFunc([this](const QString& word) { showHintInfo(word); });
    m_undo.addObserver([this](xstd::XUndoableActions*, xstd::XUndoableAction*,
                              xstd::XUndoableActionType) { onUndoChange(); });
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &XTablePage::currentChanged);
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &XTablePage::selectionChanged);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &XTablePage::dataChanged);
    buildScriptTools();
    m_view->setFocus();
}

XTablePage::XTablePage(tavix* owner, const QString& pageName, const QString& fileName)
    : XTablePage(owner, pageName)
{
    setFileName(fileName);
}

XTablePage::~XTablePage()
{
    // The widgets go first: while they do, they still reach the model, the table and the editor.
    m_view->setEditor(nullptr);
    m_editor.setView(nullptr);
    m_editor.detach(m_scriptEdit);
    delete m_tab;
    delete m_model;
}

void XTablePage::refreshTabColor()
{
    QTabWidget* tabs = m_owner->tabWidget();
    const int index = tabs->indexOf(m_tab);
    if (index >= 0)
        tabs->tabBar()->setTabTextColor(index, isModified() ? Qt::red : Qt::black);
}

QString XTablePage::rangeText(bool lastOnly) const
{
    const QItemSelection selection = m_view->selectionModel()->selection();
    if (selection.isEmpty())
        return QString();
    if (lastOnly)
        return rangeName(selection.last());
    QStringList names;
    for (const QItemSelectionRange& range : selection)
        names.append(rangeName(range));
    return names.join(",");
}

const XTavixCellExtend* XTablePage::currentCellExtend() const
{
    const QModelIndex current = m_view->currentIndex();
    return m_model->cellExtend(current.row(), current.column());
}

void XTablePage::currentChanged(const QModelIndex& current, const QModelIndex&)
{
    showCell(current);
    showValue(current);
    showFormat();
}

void XTablePage::selectionChanged(const QItemSelection&, const QItemSelection&)
{
    m_rangeLabel->setText(rangeText(true));
}

void XTablePage::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight)
{
    const QModelIndex current = m_view->currentIndex();
    if (!QItemSelectionRange(topLeft, bottomRight).contains(current))
        return;
    showValue(current);
    // A text that was refused stays under the user's cursor.
    if (!m_scriptEdit->hasFocus())
        showCell(current);
}

void XTablePage::onUndoChange()
{
    ++m_changeCount;
    refreshTabColor();
    showFormat();
    const QModelIndex current = m_view->currentIndex();
    if (!current.isValid())
        return;
    showCell(current);
    showValue(current);
}

void XTablePage::showCell(const QModelIndex& index)
{
    const huge::XCell* cell = m_table.cellAt(index.row(), index.column());
    m_editor.setCell(index.row(), index.column(),
                     cell ? toQString(cell->scriptText(true)) : QString());
}

void XTablePage::showValue(const QModelIndex& index)
{
    const huge::XCell* cell = m_table.cellAt(index.row(), index.column());
    const QString text = cell ? toQString(cell->valueText()) : QString();
    m_valueView->clear();
    QTextCursor cursor = m_valueView->textCursor();
    insertPlain(cursor, text);
    m_valueView->moveCursor(QTextCursor::Start);
}

void XTablePage::showHintInfo(const QString& word)
{
    const QString name = word.startsWith('.') ? word.mid(1) : word;
    const KeyWordItem* item = word.isEmpty() ? nullptr : m_owner->keyWordHint().find(name);
    m_hintLabel->setText(!item ? word : item->hintInfo.isEmpty() ? item->display : item->hintInfo);
}

void XTablePage::showFormat()
{
    if (m_owner->currentPage() == this) // else the panel shows another page
        m_owner->onPageBarChanged(m_owner->currentTabIndex());
}
