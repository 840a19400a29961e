#include "XPanelScroller.h"

#include <QResizeEvent>
#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>

namespace {

constexpr int edgeWidth = 18;

const char* const edgeSheet =
    "QToolButton{background:rgb(246,248,252);border:1px solid rgb(225,230,240);}"
    "QToolButton:hover{background:rgb(230,237,250);border-color:rgb(150,200,230);}";

} // namespace

XPanelScroller::XPanelScroller(QWidget* parent)
    : QScrollArea(parent), m_left(addEdge(Qt::LeftArrow, -1)), m_right(addEdge(Qt::RightArrow, 1))
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &XPanelScroller::showEdges);
    connect(horizontalScrollBar(), &QScrollBar::rangeChanged, this, &XPanelScroller::showEdges);
}

QToolButton* XPanelScroller::addEdge(Qt::ArrowType arrow, int direction)
{
    auto* edge = new QToolButton(this);
    edge->setArrowType(arrow);
    edge->setAutoRepeat(true);
    edge->setFocusPolicy(Qt::NoFocus);
    edge->setStyleSheet(edgeSheet);
    edge->hide();
    connect(edge, &QToolButton::clicked, this,
            [this, direction] { scroll(direction * viewport()->width() / 2); });
    return edge;
}

void XPanelScroller::scroll(int pixels)
{
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + pixels);
}

void XPanelScroller::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    m_left->setGeometry(0, 0, edgeWidth, height());
    m_right->setGeometry(width() - edgeWidth, 0, edgeWidth, height());
    showEdges();
}

void XPanelScroller::wheelEvent(QWheelEvent* event)
{
    const QPoint turned = event->angleDelta();
    scroll(-(turned.x() != 0 ? turned.x() : turned.y()));
    event->accept();
}

void XPanelScroller::showEdges()
{
    const QScrollBar* bar = horizontalScrollBar();
    m_left->setVisible(bar->value() > bar->minimum());
    m_right->setVisible(bar->value() < bar->maximum());
    m_left->raise();
    m_right->raise();
}
