#pragma once

#include <QColor>
#include <QString>

#include <cstdint>
#include <functional>

/// What becomes of a modified page that is closed.
enum class SaveAnswer : uint8_t { Save, Discard, Cancel };

/// The answers to what the program asks. Each function stands in for the dialog of its name; an
/// empty one means that the dialog is shown. Tests set them, the program never does.
struct UserPrompts {
    std::function<QString(const QString& html, const QString& title)> error;
    std::function<QString(const QString& text, const QString& title)> info;
    std::function<QString(const QString& version)> exit;
    std::function<void(const QString& text)> fullText;
    std::function<QString(const QString& title)> openFile; ///< empty: none was chosen
    std::function<QString(const QString& title, const QString& name)> saveFile; ///< the same
    std::function<SaveAnswer(const QString& pageName)> saveChanges;
    std::function<bool(const QString& path)> overwrite;
    std::function<QColor(const QColor& current)> color; ///< an invalid colour: none was chosen
};

/// The one set of answers of the process.
UserPrompts& userPrompts();
