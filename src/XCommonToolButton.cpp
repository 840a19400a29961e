#include "XCommonToolButton.h"

#include <utility>

namespace {

// The transparent border keeps the icon where it is while the pointer draws the border around it.
const char* const sheet =
    "QToolButton{background:transparent;border:1px solid transparent;border-radius:3px;}"
    "QToolButton:checked{border:1px solid rgb(200,200,255);background:rgb(240,240,255);}"
    "QToolButton:hover{border:1px solid rgb(150,200,230);background:rgb(250,250,255);}"
    "QToolButton:checked:hover{background:rgb(232,236,255);}"
    "QToolButton:pressed{background:rgb(225,232,250);}";

} // namespace

XCommonToolButton::XCommonToolButton(std::function<void(QObject*)> function, const QIcon& icon,
                                     const QString& text, const QString& toolTip,
                                     Qt::ToolButtonStyle style, QWidget* parent)
    : QToolButton(parent), func(std::move(function))
{
    setIcon(icon);
    setText(text);
    setToolTip(toolTip);
    setToolButtonStyle(style);
    setStyleSheet(sheet);
    connect(this, &QToolButton::clicked, this, &XCommonToolButton::onClicked);
}

void XCommonToolButton::onClicked(bool)
{
    if (func)
        func(this);
}
