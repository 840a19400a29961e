#pragma once

#include "XCellEditor.h"
#include "cell/XCellTable.h"
#include "common/XKVNode.h"
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
namespace huge {
struct XDocumentFile;
} // namespace huge

/// One open table with everything that shows and edits it. It is no widget itself: its tab is a
/// widget that the page owns, with the script pane and the value above the grid.
class XTablePage : public QObject {
    Q_OBJECT

public:
    XTablePage(tavix* owner, const QString& pageName);
    /// The same, for the document at `fileName`, which is not loaded yet.
    XTablePage(tavix* owner, const QString& pageName, const QString& fileName);
    ~XTablePage() override;

    const QString& pageName() const { return m_pageName; }
    /// Sets the tab's text too.
    void setPageName(const QString& name);
    /// The page's document and its file in the cache, absolute; empty where there is none.
    const QString& fileName() const { return m_fileName; }
    void setFileName(const QString& path);
    const QString& cacheFileName() const { return m_cacheFileName; }
    void setCacheFileName(const QString& path) { m_cacheFileName = path; }
    /// The name that a dialog offers for the document.
    QString defaultFileName() const;

    /// True when something has changed since the last save marker, or when the content came from
    /// the cache.
    bool isModified() const { return m_forcedModified || m_undo.isModified(); }
    void setForcedModified(bool modified) { m_forcedModified = modified; }
    /// Counts the changes of the page, in both directions.
    uint64_t changeCount() const { return m_changeCount; }

    // Documents and the session's record of the page (XTablePageDocument.cpp)

    /// Writes the page to a file; the message pane tells the outcome. On failure the old file and
    /// the page stay as they were.
    bool saveFile(const QString& path);
    /// Makes the page what the file says; with Stored nothing is calculated. On failure the message
    /// pane tells why, and the page is empty.
    bool loadFile(const QString& path,
                  huge::XCellImageMode mode = huge::XCellImageMode::Everything);
    /// Whether the document has another content on the disk than when the page last read or wrote
    /// it.
    bool isChangedOnDisk() const;
    /// The page's entry in the list of the session; without its file in the cache if so asked.
    xstd::XJson toJson(bool withCache) const;
    /// Writes the page into the cache, in a file of its own, and gives its entry.
    /// std::runtime_error, with the cache as it was, if that fails.
    xstd::XJson toCacheJson();
    /// Fills the page from its entry.
    void fromJson(const xstd::XKVNode& node, huge::XCellImageMode mode);
    /// Removes the page's file from the cache. std::runtime_error "remove ..." if that fails.
    void removeCache();
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
    QString allocCacheFile() const;
    huge::XDocumentFile document();
    std::vector<uint8_t> viewImage() const;
    void applyViewImage(const std::vector<uint8_t>& image);
    void printNotes(const huge::XCellLoadNotes& notes);
    void empty();
    void rememberStamp();
    void onUndoChange();
    void showCell(const QModelIndex& index);
    void showValue(const QModelIndex& index);
    void showHintInfo(const QString& word);
    void showFormat();

    tavix* m_owner;
    bool m_forcedModified = false;
    QString m_pageName;
    QString m_cacheFileName;
    QString m_fileName;
    QString m_stamp; // size and time of the document when it was last read or written
    uint64_t m_changeCount = 0;
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
