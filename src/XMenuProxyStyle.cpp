#include "XMenuProxyStyle.h"

int XMenuProxyStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                                 const QWidget* widget) const
{
    return metric == PM_SmallIconSize ? 24 : QProxyStyle::pixelMetric(metric, option, widget);
}
