#include "XToolColorButton.h"

#include "FrmSelectColor.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QStyleOption>

#include <algorithm>

namespace {

const char* const sheet =
    "XToolColorButton{background:transparent;border:1px solid transparent;border-radius:3px;"
    "qproperty-actColor:rgb(150,200,230);}"
    "XToolColorButton:hover{border:1px solid rgb(150,200,230);background:rgb(250,250,255);}";

constexpr int arrowHeight = 4;
constexpr int barHeight = 4;

} // namespace

XToolColorButton::XToolColorButton(const QString& text, Style style, int iconSize, QWidget* parent)
    : QWidget(parent), m_text(text), m_iconSize(iconSize), m_style(style)
{
    setStyleSheet(sheet);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

XToolColorButton::~XToolColorButton() = default;

void XToolColorButton::setColor(const QColor& color)
{
    m_color = color;
    m_icon = QIcon(drawIcon(color));
    update();
}

QPixmap XToolColorButton::drawIcon(const QColor& color) const
{
    QPixmap pixmap(24, 24);
    pixmap.fill(color);
    return pixmap;
}

QPixmap XToolColorButton::drawBar(const QIcon& picture, const QColor& color) const
{
    const qreal ratio = devicePixelRatioF();
    QPixmap pixmap(QSize(m_iconSize, m_iconSize) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    picture.paint(&painter, 0, 0, m_iconSize, m_iconSize);
    const int foot = m_style == TextUnderIcon ? 6 : 5;
    const QRect bar(4, m_iconSize - 1 - foot, m_iconSize - 8, barHeight);
    painter.fillRect(bar, color);
    // No colour is a colour to choose as well: its bar is an empty frame.
    if (color.alpha() == 0) {
        painter.setPen(QColor(170, 175, 190));
        painter.drawRect(bar.adjusted(0, 0, -1, -1));
    }
    return pixmap;
}

int XToolColorButton::textWidth() const
{
    return m_style == IconOnly ? 0 : fontMetrics().horizontalAdvance(m_text);
}

QSize XToolColorButton::sizeHint() const
{
    const int icon = m_iconSize + m_margin;
    const int text = textWidth();
    const int below = std::max(fontMetrics().height(), m_arrowWidth);
    switch (m_style) {
    case TextOnly:
        return {text + m_arrowWidth + m_margin, std::max(icon, below)};
    case TextUnderIcon:
        return {std::max(icon, text + m_arrowWidth + 2 * m_margin), icon + below};
    default:
        return {icon + text + m_arrowWidth + m_margin, std::max(icon, below)};
    }
}

QRect XToolColorButton::iconRect() const
{
    const int side = m_iconSize + m_margin;
    switch (m_style) {
    case TextOnly:
        return {};
    case TextUnderIcon:
        return {0, 0, width(), side};
    default:
        return {0, 0, side, height()};
    }
}

QRect XToolColorButton::arrowRect() const
{
    const QRect icon = iconRect();
    return m_style == TextUnderIcon ? rect().adjusted(0, icon.height(), 0, 0)
                                    : rect().adjusted(icon.width(), 0, 0, 0);
}

void XToolColorButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);

    const QRect icon = iconRect();
    const QRect arrow = arrowRect();
    if (m_inIcon)
        painter.fillRect(icon, m_actColor);
    if (m_inArrow)
        painter.fillRect(arrow, m_actColor);
    QRect picture(0, 0, m_iconSize, m_iconSize);
    picture.moveCenter(icon.center());
    m_icon.paint(&painter, picture);

    const int text = textWidth();
    const int used = text + m_arrowWidth;
    const QRect words(arrow.left() + (arrow.width() - used) / 2, arrow.top(), text, arrow.height());
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(words, Qt::AlignCenter, m_style == IconOnly ? QString() : m_text);
    drawArrow(painter, QPoint(words.right() + 1 + m_arrowWidth / 2,
                              arrow.center().y() - arrowHeight / 2 + 1));
}

void XToolColorButton::drawArrow(QPainter& painter, QPoint top) const
{
    painter.setPen(m_inArrow ? QColor(100, 100, 255) : QColor(Qt::black));
    for (int i = 0; i < arrowHeight; ++i) {
        const int half = arrowHeight - 1 - i;
        painter.drawLine(top.x() - half, top.y() + i, top.x() + half, top.y() + i);
    }
}

void XToolColorButton::setInside(bool inside, const QPoint& position)
{
    const bool inArrow = inside && arrowRect().contains(position);
    const bool inIcon = inside && iconRect().contains(position);
    const bool changed = inside != m_inside || inArrow != m_inArrow || inIcon != m_inIcon;
    m_inside = inside;
    m_inArrow = inArrow;
    m_inIcon = inIcon;
    if (changed)
        update();
}

void XToolColorButton::enterEvent(QEvent* event)
{
    m_inside = true;
    QWidget::enterEvent(event);
}

void XToolColorButton::leaveEvent(QEvent* event)
{
    setInside(false, QPoint());
    QWidget::leaveEvent(event);
}

void XToolColorButton::mouseMoveEvent(QMouseEvent* event)
{
    setInside(true, event->pos());
}

void XToolColorButton::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && arrowRect().contains(event->pos()))
        openPopup();
}

void XToolColorButton::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && iconRect().contains(event->pos()))
        emit onColorSelected(m_color, FromIcon);
}

void XToolColorButton::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    QWidget::changeEvent(event);
}

void XToolColorButton::openPopup()
{
    if (!m_popup) {
        m_popup = std::make_unique<FrmSelectColor>(this);
        connect(m_popup.get(), &FrmSelectColor::onColorSelected, this,
                &XToolColorButton::__onColorSelected);
    }
    const QRect screen = this->screen()->availableGeometry();
    m_popup->fitInto(screen.size());
    const QSize size = m_popup->sizeHint();
    const QPoint corner = mapToGlobal(arrowRect().bottomRight());
    const int lowest = screen.bottom() + 1 - size.height();
    m_popup->move(std::max(screen.left(), corner.x() + 1 - size.width()),
                  std::max(screen.top(), std::min(corner.y() + 1, lowest)));
    m_popup->exec();
    // The popup took the pointer: no leave event tells that it has gone elsewhere meanwhile.
    setInside(rect().contains(mapFromGlobal(QCursor::pos())), mapFromGlobal(QCursor::pos()));
}

void XToolColorButton::__onColorSelected(const QColor& _color)
{
    setColor(_color);
    emit onColorSelected(_color, FromPopup);
}
