#include "numbers/HugeImag.h"

namespace huge {

namespace {

/// A part without block is 0.
xstd::XString partText(const HugeFloat& part, const XFormatRule& rule)
{
    return part.isNull() ? HugeFloat(0).fmt(rule) : part.fmt(rule);
}

} // namespace

xstd::XString HugeImag::fmt(const XFormatRule& rule) const
{
    if (re.isZero())
        return partText(im, rule) + "i";
    if (im.isZero())
        return partText(re, rule);
    if (im.isNegative())
        return partText(re, rule) + " - " + partText(-im, rule) + "i";
    return partText(re, rule) + " + " + partText(im, rule) + "i";
}

} // namespace huge
