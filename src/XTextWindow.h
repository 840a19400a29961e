#pragma once

#include <QDialog>

/// A window that shows one long text whole: read only, to be scrolled, searched by eye and copied.
class XTextWindow : public QDialog {
    Q_OBJECT

public:
    explicit XTextWindow(const QString& text, QWidget* parent = nullptr);
};
