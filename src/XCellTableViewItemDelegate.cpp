#include "XCellTableViewItemDelegate.h"

#include "XCellBorders.h"
#include "XCellEditor.h"
#include "XCellScriptEditor.h"
#include "XCellTableModel.h"
#include "XCellTableView.h"
#include "XMessBox.h"
#include "XTavixCellExtend.h"
#include "cell/XCellTable.h"
#include "errorHtml.h"
#include "qtText.h"

#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

const QColor selectionFill(255, 255, 128, 128);
const QColor refsFill(255, 240, 240, 80);
const QColor refsFrame(255, 0, 0);
const QColor readerMarker(255, 200, 200);

/// How a text is drawn.
struct TextStyle {
    QFont font;
    QPen pen;
    int flags = Qt::TextSingleLine;
};

int verticalFlag(const XTavixCellExtend& extend)
{
    if (extend.valign == XTavixCellExtend::AlignStart)
        return Qt::AlignTop;
    return extend.valign == XTavixCellExtend::AlignEnd ? Qt::AlignBottom : Qt::AlignVCenter;
}

int horizontalFlag(const XTavixCellExtend& extend)
{
    if (extend.align == XTavixCellExtend::AlignEnd)
        return Qt::AlignRight;
    return extend.align == XTavixCellExtend::AlignCenter ? Qt::AlignHCenter : Qt::AlignLeft;
}

TextStyle styleOf(const XTavixCellExtend* extend)
{
    TextStyle style;
    if (!extend)
        return style;
    style.pen = QPen(QColor::fromRgb(extend->fore));
    style.font = extend->font();
    style.flags = extend->multLine ? Qt::TextWordWrap | Qt::TextWrapAnywhere : Qt::TextSingleLine;
    style.flags |= verticalFlag(*extend) | horizontalFlag(*extend);
    return style;
}

/// The part of `text` that can be seen in `rect`. Every character is taken as one pixel wide at
/// least, which leaves enough of any text, and shaping costs by the character.
QString visiblePart(const QString& text, const QRect& rect, const TextStyle& style)
{
    const bool wraps = style.flags & Qt::TextWordWrap;
    const int lines =
        wraps ? rect.height() / std::max(1, QFontMetrics(style.font).height()) + 2 : 1;
    const int most = (std::max(0, rect.width()) + 16) * lines;
    if (text.size() <= most)
        return text;
    const int atEnd = wraps ? Qt::AlignBottom : Qt::AlignRight;
    const int inMiddle = wraps ? Qt::AlignVCenter : Qt::AlignHCenter;
    if (style.flags & atEnd)
        return text.right(most);
    return style.flags & inMiddle ? text.mid((text.size() - most) / 2, most) : text.left(most);
}

/// Frames of the rectangles that the current cell reads, two dotted lines wide.
void paintRefSides(QPainter* painter, const QRect& rect, const XCellRefMarks::Sides& sides)
{
    painter->fillRect(rect, refsFill);
    painter->setPen(QPen(refsFrame, 1, Qt::DotLine));
    painter->setBrush(Qt::NoBrush);
    for (int i = 0; i < 2; ++i) {
        if (sides.top)
            painter->drawLine(rect.left(), rect.top() + i, rect.right(), rect.top() + i);
        if (sides.left)
            painter->drawLine(rect.left() + i, rect.top(), rect.left() + i, rect.bottom());
        if (sides.right)
            painter->drawLine(rect.right() - i, rect.top(), rect.right() - i, rect.bottom());
        if (sides.bottom)
            painter->drawLine(rect.left(), rect.bottom() - i, rect.right(), rect.bottom() - i);
    }
}

} // namespace

XCellTableViewItemDelegate::XCellTableViewItemDelegate(XCellTableView* view)
    : QStyledItemDelegate(view), m_view(view)
{}

void XCellTableViewItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const
{
    const XTavixCellExtend* extend = m_view->tableModel()->cellExtend(index.row(), index.column());
    const TextStyle style = styleOf(extend);
    painter->save();
    if (extend && extend->background != 0)
        painter->fillRect(option.rect, QColor::fromRgba(extend->background));
    const QRect rect = paintCellBorders(painter, *m_view, index.row(), index.column(), option.rect);
    paintState(painter, rect, index);
    if (option.state & QStyle::State_Selected)
        painter->fillRect(option.rect, selectionFill);
    const QRect textRect = rect.adjusted(3, 3, -3, -3);
    const QString text = index.data(Qt::DisplayRole).toString();
    painter->setFont(style.font);
    painter->setPen(style.pen);
    painter->drawText(textRect, style.flags, visiblePart(text, textRect, style));
    painter->restore();
}

void XCellTableViewItemDelegate::paintState(QPainter* painter, const QRect& rect,
                                            const QModelIndex& index) const
{
    const XCellPaintState& state = m_view->paintState();
    const int row = index.row();
    const int col = index.column();
    if (state.cutRects.contains(row, col))
        painter->fillRect(rect, state.cutColor);
    if (row == state.editRow && col == state.editCol)
        painter->fillRect(rect, state.editColor);
    if (state.showRefs) {
        const XCellRefMarks::Sides sides = state.refMarks.sidesAt(row, col);
        if (sides.count > 0)
            paintRefSides(painter, rect, sides);
    }
    const huge::XCell* cell = m_view->tableModel()->table()->cellAt(row, col);
    if (cell && cell->ranges() && !cell->ranges()->empty())
        painter->fillRect(QRect(rect.right() - 5, rect.top() + 3, 4, 4), readerMarker);
}

QSize XCellTableViewItemDelegate::sizeHint(const QStyleOptionViewItem&,
                                           const QModelIndex& index) const
{
    constexpr int longestColumn = 1000; // pixels; a result of any length stays a column
    const TextStyle style = styleOf(m_view->tableModel()->cellExtend(index.row(), index.column()));
    const QFontMetrics metrics(style.font);
    const QString text = index.data(Qt::DisplayRole).toString().left(longestColumn);
    const int width = std::min(metrics.horizontalAdvance(text), longestColumn);
    return QSize(width + 8, metrics.height() + 8);
}

QWidget* XCellTableViewItemDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                                  const QModelIndex&) const
{
    auto* editor = new XCellScriptEditor(parent);
    editor->setInCell(true);
    connect(editor, &XCellScriptEditor::committed, this,
            &XCellTableViewItemDelegate::commitAndClose);
    if (m_view->editor())
        m_view->editor()->setCellEdit(editor);
    return editor;
}

void XCellTableViewItemDelegate::commitAndClose()
{
    auto* editor = qobject_cast<QWidget*>(sender());
    emit commitData(editor);
    emit closeEditor(editor);
}

QString XCellTableViewItemDelegate::sourceText(const QModelIndex& index) const
{
    const huge::XCell* cell = m_view->tableModel()->table()->cellAt(index.row(), index.column());
    return cell ? toQString(cell->text(true)) : QString();
}

void XCellTableViewItemDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* edit = qobject_cast<XCellScriptEditor*>(editor);
    if (!edit || !index.isValid())
        return;
    edit->setCellText(sourceText(index));
    edit->moveCursor(QTextCursor::End);
}

void XCellTableViewItemDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                              const QModelIndex& index) const
{
    auto* edit = qobject_cast<XCellScriptEditor*>(editor);
    // The error box takes the focus from the editor, which makes Qt commit it once more.
    if (!edit || !index.isValid() || m_committing)
        return;
    const QScopedValueRollback<bool> guard(m_committing, true);
    const QString text = edit->toPlainText();
    if (text == sourceText(index))
        return;
    try {
        model->setData(index, text, Qt::EditRole);
    } catch (xstd::XExceptionItems& failure) {
        failure.add(xstd::XExceptionItem(X_HERE, "action"));
        showError(errorHtml(failure));
    } catch (const std::exception& failure) {
        showError(toQString(failure.what()).toHtmlEscaped());
    }
}

void XCellTableViewItemDelegate::updateEditorGeometry(QWidget* editor,
                                                      const QStyleOptionViewItem& option,
                                                      const QModelIndex& index) const
{
    if (index.isValid())
        editor->setGeometry(option.rect);
}
