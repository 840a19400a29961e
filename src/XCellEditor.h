#pragma once

#include "cell/XCellRangeRef.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

class KeyWordHint;
class XCellScriptEditor;
class XCellTableView;

/// Ties the script pane of a page and the editor in a cell to the grid. It keeps the cell's text
/// as it stands in the table, so that confirming an unchanged text makes no action; and while one
/// of the two has the focus it hands references from the grid to the text and back.
class XCellEditor : public QObject {
    Q_OBJECT

public:
    using ListingFunc = std::function<void(const QString& text, int row, int col)>;
    using HintInfoFunc = std::function<void(const QString& word)>;

    explicit XCellEditor(QObject* parent = nullptr);

    /// None of the widgets is owned; each finds this object through its own pointer back.
    void setView(XCellTableView* view) { m_view = view; }
    XCellTableView* view() const { return m_view; }
    void setMainEdit(XCellScriptEditor* edit);
    void setCellEdit(XCellScriptEditor* edit);
    /// Forgets a widget that goes.
    void detach(XCellScriptEditor* edit);
    XCellScriptEditor* mainEdit() const;
    /// The other of the two widgets; null when there is none.
    XCellScriptEditor* otherEdit(const XCellScriptEditor* edit) const;
    /// The widget that has the focus; the pane, or null, when none has.
    XCellScriptEditor* activeEdit() const;
    XCellScriptEditor* focusEdit() const;

    /// The popup of keywords, which is not owned.
    void setHint(KeyWordHint* hint) { m_hint = hint; }
    KeyWordHint* hint() const { return m_hint; }
    void hideHints();
    /// What prints the listing of a script, and what shows the hint of a word; an empty word clears
    /// it.
    void setListingFunc(ListingFunc func) { m_listingFunc = std::move(func); }
    void setHintInfoFunc(HintInfoFunc func) { m_hintInfoFunc = std::move(func); }
    void printListing(const QString& text) const;
    void showHintInfo(const QString& word) const;

    /// Shows another cell, or a cell's new text, in the widgets.
    void setCell(int row, int col, const QString& text);
    /// Puts the script pane's text into the cell and gives the focus back to the grid. What the
    /// action raises goes on; the pane then keeps text and focus.
    void confirm();
    /// Brings back the cell's text and gives the focus to the grid.
    void cancel();
    /// Lets the grid pick references while an editor has the focus.
    void onFocusIn(XCellScriptEditor* edit);
    /// Confirms when the focus went from an editor to the grid.
    void onFocusOut();
    /// The editor in the cell has gone from the screen.
    void endCellEdit();
    /// The text of an editor has changed, and with it maybe its references.
    void onTextChanged(XCellScriptEditor* edit);

    /// Shows the reference in the texts, while the pointer is on its mark in the grid.
    void highlightMark(const huge::XCellRangeRef& range);
    void clearHighlight();
    /// Puts another reference in the place of one.
    void replaceRange(const huge::XCellRangeRef& mark, const huge::XCellRangeRef& newRange);
    /// Puts a reference at the cursor, or in the place of the word there, where one may stand.
    void insertRange(const huge::XCellRangeRef& range);
    bool canTakeReference() const;

private:
    void attach(QPointer<XCellScriptEditor>& slot, XCellScriptEditor* edit);
    void leaveGrid(bool clear);
    void store(const QString& text);
    std::vector<XCellScriptEditor*> edits() const;

    XCellTableView* m_view = nullptr;
    KeyWordHint* m_hint = nullptr;
    ListingFunc m_listingFunc;
    HintInfoFunc m_hintInfoFunc;
    QPointer<XCellScriptEditor> m_mainEdit;
    QPointer<XCellScriptEditor> m_cellEdit;
    int m_row = -1;
    int m_col = -1;
    QString m_cellText;
    QString m_refusedText; // the cell has it already, and with it the failure
    bool m_confirming = false;
};
