#include "XCommonAction.h"

#include <utility>

XCommonAction::XCommonAction(std::function<void(QObject*)> function, const QIcon& icon,
                             const QString& text, QObject* parent)
    : QAction(icon, text, parent), func(std::move(function))
{
    connect(this, &QAction::triggered, this, &XCommonAction::onClick);
}

void XCommonAction::onClick(bool)
{
    if (func)
        func(this);
}
