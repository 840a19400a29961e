#pragma once

#include "XToolColorButton.h"

/// The colour button of texts: a letter over a bar of the colour.
class XSelectFontColor : public XToolColorButton {
    Q_OBJECT

public:
    /// The picture of `file` may be missing: the bar stands alone then.
    XSelectFontColor(const QString& file, QWidget* parent);

protected:
    QPixmap drawIcon(const QColor& color) const override;

private:
    QIcon m_image; // an icon, so that the picture is as sharp as the screen allows
};
