#include "XCellTableModel.h"

#include "LongTexts.h"
#include "XTavixCellExtend.h"
#include "cell/XCellAction.h"
#include "cell/XCellActionSetText.h"
#include "cell/XCellTable.h"
#include "cell/cellName.h"
#include "qtText.h"

#include <algorithm>

namespace {

constexpr int leastSections = 100;

int rowsOf(const huge::XCellTable& table)
{
    return std::max<int>(leastSections, table.mainRect().height());
}

int colsOf(const huge::XCellTable& table)
{
    return std::max<int>(leastSections, table.mainRect().width());
}

} // namespace

XCellTableModel::XCellTableModel(huge::XCellTable* table, QObject* parent)
    : QAbstractTableModel(parent), m_table(table), m_rows(rowsOf(*table)), m_cols(colsOf(*table))
{}

int XCellTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int XCellTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_cols;
}

Qt::ItemFlags XCellTableModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
}

QVariant XCellTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return QVariant();
    const huge::XCell* cell = m_table->cellAt(index.row(), index.column());
    if (!cell)
        return QVariant();
    const QString text = toQString(cell->valueText());
    // Who shows an item lays out all that it gets, which takes seconds for a long number.
    return role == Qt::DisplayRole ? cutText(text) : text;
}

bool XCellTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    perform(std::make_unique<huge::XCellActionSetText>(m_table, index.row(), index.column(),
                                                       toXString(value.toString()), false));
    return true;
}

QVariant XCellTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return QVariant();
    if (orientation == Qt::Horizontal)
        return toQString(huge::columnText(section));
    return QString::number(section + 1);
}

void XCellTableModel::update(const xstd::XMergedRects& rects)
{
    growToTable();
    const xstd::XRect grid(0, 0, m_rows - 1, m_cols - 1);
    for (const xstd::XRect& rect : rects.rects()) {
        const xstd::XRect seen = rect.intersect(grid);
        if (!seen.isNull())
            emit dataChanged(index(seen.top, seen.left), index(seen.bottom, seen.right));
    }
}

void XCellTableModel::reset()
{
    beginResetModel();
    m_rows = rowsOf(*m_table);
    m_cols = colsOf(*m_table);
    endResetModel();
}

void XCellTableModel::perform(std::unique_ptr<huge::XCellAction> action)
{
    huge::XCellAction* const running = action.get();
    try {
        m_undo->do_(std::move(action));
    } catch (...) {
        update(running->paintRects(xstd::XUndoableActionType::Do));
        throw;
    }
    update(running->paintRects(xstd::XUndoableActionType::Do));
}

XTavixCellExtend* XCellTableModel::cellExtend(int row, int col) const
{
    huge::XCell* cell = m_table->cellAt(row, col);
    return cell ? static_cast<XTavixCellExtend*>(cell->extend()) : nullptr;
}

XTavixCellExtend* XCellTableModel::forceCellExtend(int row, int col)
{
    huge::XCell* cell = m_table->forceCell(row, col);
    if (!cell->extend() && m_table->extendPrototype())
        cell->swapExtend(m_table->extendPrototype()->clone());
    return static_cast<XTavixCellExtend*>(cell->extend());
}

void XCellTableModel::growToTable()
{
    if (const int rows = rowsOf(*m_table); rows > m_rows) {
        beginInsertRows(QModelIndex(), m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    }
    if (const int cols = colsOf(*m_table); cols > m_cols) {
        beginInsertColumns(QModelIndex(), m_cols, cols - 1);
        m_cols = cols;
        endInsertColumns();
    }
}
