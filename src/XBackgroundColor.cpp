#include "XBackgroundColor.h"

XBackgroundColor::XBackgroundColor(const QString& file, QWidget* parent)
    : XBackgroundColor(file, QString(), IconOnly, 24, parent)
{}

XBackgroundColor::XBackgroundColor(const QString& file, const QString& text, Style style,
                                   int iconSize, QWidget* parent)
    : XToolColorButton(text, style, iconSize, parent), m_image(file)
{
    setColor(Qt::white);
}

QPixmap XBackgroundColor::drawIcon(const QColor& color) const
{
    return drawBar(m_image, color);
}
