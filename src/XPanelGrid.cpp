#include "XPanelGrid.h"

#include "XCommonToolButton.h"

#include <QFrame>

#include <algorithm>
#include <utility>

namespace {

constexpr int rowCount = 2;
constexpr int smallIcon = 24;
constexpr int tallIcon = 32;

// The buttons' own size leaves so much room around icon and text that the panel would not fit a
// window of 1,200 pixels.
constexpr int smallSide = 26;
constexpr int tallHeight = 56;

int widthOf(const XCommonToolButton& button)
{
    return button.fontMetrics().horizontalAdvance(button.text()) + 6;
}

} // namespace

XPanelGrid::XPanelGrid(QFrame* frame) : m_frame(frame), m_grid(new QGridLayout(frame))
{
    frame->setStyleSheet("QFrame{background:white;}");
    m_grid->setContentsMargins(1, 1, 1, 1);
    m_grid->setSpacing(0);
}

void XPanelGrid::startGroup()
{
    auto* line = new QFrame(m_frame);
    line->setObjectName("line1");
    line->setFixedWidth(6);
    line->setStyleSheet("QFrame{border:1px solid rgb(240,240,240);margin:2px;}");
    const int column = m_grid->columnCount();
    m_grid->addWidget(line, 0, column, rowCount, 1);
    m_first = column + 1;
}

void XPanelGrid::finish()
{
    m_grid->addItem(new QSpacerItem(0, 0, QSizePolicy::Expanding, QSizePolicy::Minimum), 0,
                    m_grid->columnCount());
}

XCommonToolButton* XPanelGrid::addSmall(int row, int column, const Look& look, Command command)
{
    XCommonToolButton* button =
        makeButton(look, std::move(command), Qt::ToolButtonIconOnly, smallIcon);
    button->setFixedSize(smallSide, smallSide);
    add(button, row, column, 1, 1);
    return button;
}

XCommonToolButton* XPanelGrid::addState(int row, int column, const Look& look, Command command)
{
    XCommonToolButton* button = addSmall(row, column, look, std::move(command));
    button->setCheckable(true);
    return button;
}

XCommonToolButton* XPanelGrid::addTall(int column, const Look& look, Command command)
{
    XCommonToolButton* button =
        makeButton(look, std::move(command), Qt::ToolButtonTextUnderIcon, tallIcon);
    button->setFixedSize(std::max(tallIcon + 4, widthOf(*button)), tallHeight);
    add(button, 0, column, rowCount, 1);
    return button;
}

XCommonToolButton* XPanelGrid::addWide(int row, int column, const Look& look, Command command)
{
    XCommonToolButton* button =
        makeButton(look, std::move(command), Qt::ToolButtonTextBesideIcon, smallIcon);
    button->setFixedSize(smallIcon + widthOf(*button), smallSide);
    add(button, row, column, 1, 2);
    return button;
}

void XPanelGrid::add(QWidget* control, int row, int column, int rows, int columns)
{
    m_grid->addWidget(control, row, m_first + column, rows, columns, Qt::AlignCenter);
}

XCommonToolButton* XPanelGrid::makeButton(const Look& look, Command command,
                                          Qt::ToolButtonStyle style, int iconSize)
{
    const QIcon icon(QString("./icons/%1.png").arg(look.icon));
    auto* button = new XCommonToolButton([command = std::move(command)](QObject*) { command(); },
                                         icon, look.text, look.tip, style, m_frame);
    button->setIconSize(QSize(iconSize, iconSize));
    return button;
}
