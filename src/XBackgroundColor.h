#pragma once

#include "XToolColorButton.h"

/// The colour button of fills and lines: a picture over a bar of the colour.
class XBackgroundColor : public XToolColorButton {
    Q_OBJECT

public:
    /// The picture of `file` may be missing: the bar stands alone then.
    XBackgroundColor(const QString& file, QWidget* parent);
    XBackgroundColor(const QString& file, const QString& text, Style style, int iconSize,
                     QWidget* parent);

protected:
    QPixmap drawIcon(const QColor& color) const override;

private:
    QIcon m_image; // an icon, so that the picture is as sharp as the screen allows
};
