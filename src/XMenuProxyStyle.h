#pragma once

#include <QProxyStyle>

/// Gives menus icons of 24 pixels, the size in which the panels show the same commands.
class XMenuProxyStyle : public QProxyStyle {
    Q_OBJECT

public:
    using QProxyStyle::QProxyStyle;

    int pixelMetric(PixelMetric metric, const QStyleOption* option = nullptr,
                    const QWidget* widget = nullptr) const override;
};
