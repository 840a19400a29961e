#pragma once

#include <QToolButton>

#include <functional>

/// A flat button of the tool bar or of a panel that runs a callback when it is clicked. The
/// callback gets the button.
class XCommonToolButton : public QToolButton {
    Q_OBJECT

public:
    XCommonToolButton(std::function<void(QObject*)> func, const QIcon& icon, const QString& text,
                      const QString& toolTip, Qt::ToolButtonStyle style, QWidget* parent);

    /// What a click runs; nothing happens while it is empty.
    std::function<void(QObject*)> func;

private slots:
    void onClicked(bool checked);
};
