#include "XTavixCellExtend.h"

#include <utility>

XTavixCellExtend::XTavixCellExtend(const QFont& font)
    : fontName(font.family()), bold(font.bold()), italic(font.italic()),
      underLine(font.underline()), fontSize(static_cast<int16_t>(font.pointSize()))
{}

std::unique_ptr<huge::XCellExtend> XTavixCellExtend::clone() const
{
    return std::make_unique<XTavixCellExtend>(*this);
}

void XTavixCellExtend::assign(const huge::XCellExtend& other)
{
    *this = static_cast<const XTavixCellExtend&>(other);
}

void XTavixCellExtend::transpose()
{
    std::swap(borderTop, borderLeft);
    std::swap(borderBottom, borderRight);
    std::swap(borderTopStyle, borderLeftStyle);
    std::swap(borderBottomStyle, borderRightStyle);
}

QFont XTavixCellExtend::font() const
{
    QFont result(fontName);
    result.setBold(bold);
    result.setItalic(italic);
    result.setUnderline(underLine);
    if (fontSize > 0)
        result.setPointSize(fontSize);
    return result;
}
