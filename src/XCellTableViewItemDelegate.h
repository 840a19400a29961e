#pragma once

#include <QStyledItemDelegate>

class XCellTableView;
class XTavixCellExtend;

/// Paints one cell and manages the editor in it. Everything that a cell looks like is decided
/// here: the format record comes from the table, the passing state from the view.
class XCellTableViewItemDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// The view owns the delegate.
    explicit XCellTableViewItemDelegate(XCellTableView* view);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    /// An unchanged text makes no action. A failure is shown in the error box and ends here.
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

private slots:
    void commitAndClose();

private:
    QString sourceText(const QModelIndex& index) const;
    const XTavixCellExtend* recordOrPrototype(const XTavixCellExtend* record) const;
    void paintState(QPainter* painter, const QRect& rect, const QModelIndex& index) const;

    XCellTableView* m_view;
    mutable bool m_committing = false;
};
