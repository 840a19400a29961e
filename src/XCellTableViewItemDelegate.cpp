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

/// Continuation bytes of a character have the bits 10 in front.
bool startsCharacter(const xstd::XString& text, size_t at)
{
    return at >= text.size() || (text[at] & 0xc0) != 0x80;
}

/// The text around the byte `anchor`: `before` and `behind` characters of it at most.
QString charactersAround(const xstd::XString& text, size_t anchor, size_t before, size_t behind)
{
    while (!startsCharacter(text, anchor))
        ++anchor;
    size_t first = anchor;
    for (; before > 0 && first > 0; --before) {
        do
            --first;
        while (first > 0 && !startsCharacter(text, first));
    }
    size_t last = anchor;
    for (; behind > 0 && last < text.size(); --behind) {
        do
            ++last;
        while (!startsCharacter(text, last));
    }
    return QString::fromUtf8(text.data() + first, static_cast<int>(last - first));
}

/// The part of a value that can be seen in `rect`. A result may have hundreds of thousands of
/// digits, and converting and shaping cost by the character. Hardly a character is narrower than a
/// fifth of the font's size.
QString visiblePart(const xstd::XString& text, const QRect& rect, const TextStyle& style)
{
    const bool wraps = style.flags & Qt::TextWordWrap;
    const size_t width = std::max(0, rect.width());
    if (text.size() <= width / 8)
        return toQString(text);
    const size_t perLine = width / std::max(1, QFontInfo(style.font).pixelSize() / 5) + 16;
    const size_t lines =
        wraps ? std::max(0, rect.height()) / QFontMetrics(style.font).height() + 2 : 1;
    const size_t most = perLine * lines;
    if (text.size() <= most)
        return toQString(text);
    const int atEnd = wraps ? Qt::AlignBottom : Qt::AlignRight;
    const int inMiddle = wraps ? Qt::AlignVCenter : Qt::AlignHCenter;
    if (style.flags & atEnd)
        return charactersAround(text, text.size(), most, 0);
    if (style.flags & inMiddle)
        return charactersAround(text, text.size() / 2, most / 2, most / 2);
    return charactersAround(text, 0, 0, most);
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

/// A cell without a record looks as it will when it gets one: nothing jumps then.
const XTavixCellExtend*
XCellTableViewItemDelegate::recordOrPrototype(const XTavixCellExtend* record) const
{
    if (record)
        return record;
    return static_cast<const XTavixCellExtend*>(m_view->tableModel()->table()->extendPrototype());
}

void XCellTableViewItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const
{
    const XTavixCellExtend* extend = m_view->tableModel()->cellExtend(index.row(), index.column());
    const TextStyle style = styleOf(recordOrPrototype(extend));
    painter->save();
    if (extend && extend->background != 0)
        painter->fillRect(option.rect, QColor::fromRgba(extend->background));
    const QRect rect = paintCellBorders(painter, *m_view, index.row(), index.column(), option.rect);
    paintState(painter, rect, index);
    if (option.state & QStyle::State_Selected)
        painter->fillRect(option.rect, selectionFill);
    const huge::XCell* cell = m_view->tableModel()->table()->cellAt(index.row(), index.column());
    if (cell && !cell->valueText().empty()) {
        // The model would convert the whole value.
        const QRect textRect = rect.adjusted(3, 3, -3, -3);
        painter->setFont(style.font);
        painter->setPen(style.pen);
        painter->drawText(textRect, style.flags, visiblePart(cell->valueText(), textRect, style));
    }
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
    const TextStyle style =
        styleOf(recordOrPrototype(m_view->tableModel()->cellExtend(index.row(), index.column())));
    const QFontMetrics metrics(style.font);
    const huge::XCell* cell = m_view->tableModel()->table()->cellAt(index.row(), index.column());
    const QString text =
        cell ? charactersAround(cell->valueText(), 0, 0, longestColumn) : QString();
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
