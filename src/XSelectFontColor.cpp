#include "XSelectFontColor.h"

XSelectFontColor::XSelectFontColor(const QString& file, QWidget* parent)
    : XToolColorButton(QString(), IconOnly, 24, parent), m_image(file)
{
    setColor(Qt::black);
}

QPixmap XSelectFontColor::drawIcon(const QColor& color) const
{
    return drawBar(m_image, color);
}
