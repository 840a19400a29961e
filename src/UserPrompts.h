#pragma once

#include <QColor>
#include <QString>

#include <functional>

/// The answers to what the program asks. Each function stands in for the dialog of its name; an
/// empty one means that the dialog is shown. Tests set them, the program never does.
struct UserPrompts {
    std::function<QString(const QString& html, const QString& title)> error;
    std::function<QString(const QString& text, const QString& title)> info;
    std::function<QString(const QString& version)> exit;
    std::function<void(const QString& text)> fullText;
    std::function<QColor(const QColor& current)> color; ///< an invalid colour: none was chosen
};

/// The one set of answers of the process.
UserPrompts& userPrompts();
