#pragma once

#include <QAction>

#include <functional>

/// A menu entry that runs a callback when it is triggered. The callback gets the entry.
class XCommonAction : public QAction {
    Q_OBJECT

public:
    XCommonAction(std::function<void(QObject*)> func, const QIcon& icon, const QString& text,
                  QObject* parent);

    /// What a trigger runs; nothing happens while it is empty.
    std::function<void(QObject*)> func;

private slots:
    void onClick(bool checked);
};
