#pragma once

#include "common/XMergedRects.h"
#include "common/XUndoableActions.h"

#include <QAbstractTableModel>

#include <memory>

class XTavixCellExtend;
namespace huge {
class XCellAction;
class XCellTable;
} // namespace huge

/// The table of a page behind Qt's item model interface. It hands over display texts, cut where
/// they are long; all of a cell's look is read from the table by the delegate. A change reaches
/// the screen only through update().
class XCellTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// `table` is the page's and outlives the model.
    explicit XCellTableModel(huge::XCellTable* table, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// Puts a text into a cell by an undoable action. What the action raises goes to the caller.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Announces that the cells in `rects` have changed; rows and columns that the table gained
    /// are announced first. Rectangles may reach beyond the grid.
    void update(const xstd::XMergedRects& rects);
    /// Announces that the table has another content, of any size.
    void reset();
    /// Runs the action on the undo stack and announces what it changed, also when it fails: the
    /// cell keeps a text that does not compile. The stack owns the action afterwards.
    void perform(std::unique_ptr<huge::XCellAction> action);

    huge::XCellTable* table() const { return m_table; }
    void setUndo(xstd::XUndoableActions* undo) { m_undo = undo; }

    /// The cell's format record, or null.
    XTavixCellExtend* cellExtend(int row, int col) const;
    /// The same; a cell without one gets a clone of the table's prototype.
    XTavixCellExtend* forceCellExtend(int row, int col);

private:
    void growToTable();

    huge::XCellTable* m_table;
    xstd::XUndoableActions* m_undo = nullptr;
    int m_rows; // as announced to the views
    int m_cols;
};
