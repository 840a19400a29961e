#include "XCellBorders.h"

#include "XCellTableModel.h"
#include "XCellTableView.h"
#include "XTavixCellExtend.h"

#include <QItemSelectionModel>
#include <QPainter>

#include <algorithm>

namespace {

const QColor verticalGrid(245, 245, 245);
const QColor horizontalGrid(240, 240, 240);
const QColor selectionOutline(120, 120, 250, 128);
const QColor markFrame(255, 0, 0);
const QColor dragFrame(128, 0, 0);

enum class Side { Top, Left, Right, Bottom };

Side opposite(Side side)
{
    switch (side) {
    case Side::Top:
        return Side::Bottom;
    case Side::Left:
        return Side::Right;
    case Side::Right:
        return Side::Left;
    case Side::Bottom:
        break;
    }
    return Side::Top;
}

struct Border {
    int style = XTavixCellExtend::NoBorder;
    QRgb color = 0;
};

Border borderOf(const XTavixCellExtend* extend, Side side)
{
    if (!extend)
        return Border();
    switch (side) {
    case Side::Top:
        return {extend->borderTopStyle, extend->borderTop};
    case Side::Left:
        return {extend->borderLeftStyle, extend->borderLeft};
    case Side::Right:
        return {extend->borderRightStyle, extend->borderRight};
    case Side::Bottom:
        break;
    }
    return {extend->borderBottomStyle, extend->borderBottom};
}

/// The cell lies in `area` and touches this side of it.
bool touches(const xstd::XRect& area, int32_t row, int32_t col, Side side)
{
    if (!area.contains(row, col))
        return false;
    switch (side) {
    case Side::Top:
        return row == area.top;
    case Side::Left:
        return col == area.left;
    case Side::Right:
        return col == area.right;
    case Side::Bottom:
        break;
    }
    return row == area.bottom;
}

/// Draws one cell's four edges. Each edge gives the width that it takes from the cell; a thin line
/// between two cells is drawn by the cell to the right or below it.
class CellEdges {
public:
    CellEdges(QPainter* painter, const XCellTableView& view, int32_t row, int32_t col,
              const QRect& rect)
        : m_painter(painter), m_view(view), m_row(row), m_col(col),
          m_rect(rect.adjusted(0, 0, 1, 1))
    {}

    QRect paint()
    {
        m_painter->save();
        m_painter->setBrush(Qt::NoBrush);
        m_rect.setTop(m_rect.top() + firstEdge(Side::Top));
        m_rect.setLeft(m_rect.left() + firstEdge(Side::Left));
        m_rect.setRight(m_rect.right() - lastEdge(Side::Right));
        m_rect.setBottom(m_rect.bottom() - lastEdge(Side::Bottom));
        m_painter->restore();
        return m_rect;
    }

private:
    /// The edge that is shared with the cell to the left or above.
    int firstEdge(Side side)
    {
        const int32_t nextRow = m_row - (side == Side::Top ? 1 : 0);
        const int32_t nextCol = m_col - (side == Side::Left ? 1 : 0);
        gridLine(side);
        int width = 0;
        const Border own = borderAt(m_row, m_col, side);
        const Border next = borderAt(nextRow, nextCol, opposite(side));
        if (own.style != XTavixCellExtend::NoBorder)
            width = lines(side, own.style == XTavixCellExtend::ThinBorder ? 1 : 2,
                          QColor::fromRgb(own.color));
        else if (next.style != XTavixCellExtend::NoBorder)
            width = lines(side, 1, QColor::fromRgb(next.color));
        if (isSelected(m_row, m_col) != isSelected(nextRow, nextCol))
            width = std::max(width, lines(side, 1, selectionOutline));
        if (touches(state().hoveredMark, m_row, m_col, side))
            width = std::max(width, lines(side, 2, markFrame));
        else if (marksTouch(m_row, m_col, side) || marksTouch(nextRow, nextCol, opposite(side)))
            width = std::max(width, lines(side, 1, markFrame));
        return std::max(width, dragLine(side));
    }

    /// The edge whose thin lines the cell to the right or below draws.
    int lastEdge(Side side)
    {
        int width = 0;
        const Border own = borderAt(m_row, m_col, side);
        if (own.style == XTavixCellExtend::ThickBorder)
            width = lines(side, 1, QColor::fromRgb(own.color));
        if (touches(state().hoveredMark, m_row, m_col, side))
            width = std::max(width, lines(side, 1, markFrame));
        return std::max(width, dragLine(side));
    }

    void gridLine(Side side)
    {
        if (side == Side::Top)
            m_painter->fillRect(m_rect.left() + 1, m_rect.top(), m_rect.width() - 2, 1,
                                horizontalGrid);
        else
            m_painter->fillRect(m_rect.left(), m_rect.top() + 1, 1, m_rect.height() - 2,
                                verticalGrid);
    }

    /// `count` lines from the side inward; returns `count`. The right and bottom sides begin one
    /// pixel further in: the edge itself belongs to the next cell. Lines are filled, because a pen
    /// is centred on its pixel and would leave the cell where pixels are scaled.
    int lines(Side side, int count, const QColor& color)
    {
        const QRect& r = m_rect;
        switch (side) {
        case Side::Top:
            m_painter->fillRect(r.left(), r.top(), r.width(), count, color);
            break;
        case Side::Left:
            m_painter->fillRect(r.left(), r.top(), count, r.height(), color);
            break;
        case Side::Right:
            m_painter->fillRect(r.right() - count, r.top(), count, r.height(), color);
            break;
        case Side::Bottom:
            m_painter->fillRect(r.left(), r.bottom() - count, r.width(), count, color);
            break;
        }
        return count;
    }

    int dragLine(Side side)
    {
        if (!touches(state().dragTo, m_row, m_col, side))
            return 0;
        m_painter->setPen(QPen(dragFrame, 2, Qt::DotLine));
        const QRect r = m_rect.adjusted(0, 0, -1, -1);
        switch (side) {
        case Side::Top:
            m_painter->drawLine(r.left(), r.top(), m_rect.right(), r.top());
            break;
        case Side::Left:
            m_painter->drawLine(r.left(), r.top(), r.left(), m_rect.bottom());
            break;
        case Side::Right:
            m_painter->drawLine(r.right(), r.top(), r.right(), m_rect.bottom());
            break;
        case Side::Bottom:
            m_painter->drawLine(r.left(), r.bottom(), m_rect.right(), r.bottom());
            break;
        }
        return 1;
    }

    Border borderAt(int32_t row, int32_t col, Side side) const
    {
        return borderOf(m_view.tableModel()->cellExtend(row, col), side);
    }

    bool isSelected(int32_t row, int32_t col) const
    {
        const QModelIndex index = m_view.tableModel()->index(row, col);
        return index.isValid() && m_view.selectionModel()->isSelected(index);
    }

    bool marksTouch(int32_t row, int32_t col, Side side) const
    {
        const auto& marks = state().marks;
        return std::any_of(marks.begin(), marks.end(),
                           [&](const xstd::XRect& mark) { return touches(mark, row, col, side); });
    }

    const XCellPaintState& state() const { return m_view.paintState(); }

    QPainter* m_painter;
    const XCellTableView& m_view;
    int32_t m_row;
    int32_t m_col;
    QRect m_rect;
};

} // namespace

QRect paintCellBorders(QPainter* painter, const XCellTableView& view, int32_t row, int32_t col,
                       const QRect& rect)
{
    return CellEdges(painter, view, row, col, rect).paint();
}
