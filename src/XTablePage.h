#pragma once

#include "XCellEditor.h"
#include "cell/XCellTable.h"
#include "common/XUndoableActions.h"

#include <QObject>
#include <QString>

class QFrame;
class QItemSelection;
class QLabel;
class QModelIndex;
class QSplitter;
class QTextBrowser;
class QWidget;
class XCellScriptEditor;
class XCellTableModel;
class XCellTableView;
class XTavixCellExtend;
class tavix;

/// One open table with everything that shows and edits it. It is no widget itself: its tab is a
/// widget that the page owns, with the script pane and the value above the grid.
class XTablePage : public QObject {
    Q_OBJECT

public:
    XTablePage(tavix* owner, const QString& pageName);
    ~XTablePage() override;

    const QString& pageName() const { return m_pageName; }
    /// True when something has changed since the last save marker.
    bool isModified() const { return m_undo.isModified(); }
    /// Shows in the tab's text colour whether the page is modified.
    void refreshTabColor();
    /// The selection as text: each range as "A1" or "A1:B2", joined by ","; only the last range
    /// with `lastOnly`. Empty without a selection.
    QString rangeText(bool lastOnly) const;
    /// The format record of the current cell; null when it has none.
    const XTavixCellExtend* currentCellExtend() const;

    QWidget* tab() const { return m_tab; }
    XCellTableView* view() const { return m_view; }
    XCellTableModel* model() const { return m_model; }
    XCellScriptEditor* scriptEdit() const { return m_scriptEdit; }
    QTextBrowser* valueView() const { return m_valueView; }
    QLabel* rangeLabel() const { return m_rangeLabel; }
    huge::XCellTable& table() { return m_table; }
    xstd::XUndoableActions& undo() { return m_undo; }
    XCellEditor& editor() { return m_editor; }

public slots:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous);
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected);
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight);

private:
    void buildForm();
    void buildScriptPane(QFrame* frame);
    QFrame* buildCellName(QWidget* parent);
    QFrame* buildToolRow(QWidget* parent);
    void buildScriptTools();
    void onUndoChange();
    void showCell(const QModelIndex& index);
    void showValue(const QModelIndex& index);
    void showFormat();

    tavix* m_owner;
    QString m_pageName;
    huge::XCellTable m_table;
    XCellEditor m_editor;
    XCellTableModel* m_model = nullptr;
    XCellTableView* m_view = nullptr;
    XCellScriptEditor* m_scriptEdit = nullptr;
    QTextBrowser* m_valueView = nullptr;
    QLabel* m_rangeLabel = nullptr;
    QLabel* m_hintLabel = nullptr;
    QFrame* m_scriptTools = nullptr;
    QWidget* m_tab = nullptr;
    QSplitter* m_splitter = nullptr;
    xstd::XUndoableActions m_undo;
};
