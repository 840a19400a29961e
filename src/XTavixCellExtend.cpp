#include "XTavixCellExtend.h"

#include "common/XByteCursor.h"
#include "qtText.h"

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

xstd::XJson XTavixCellExtend::toJson() const
{
    xstd::XJson node;
    node["formatRule"] = ruleToJson();
    style().toJson(node);
    return node;
}

std::vector<uint8_t> XTavixCellExtend::toBinary() const
{
    xstd::XByteWriter image;
    image.putBytes(ruleToBinary());
    style().toBinary(image);
    return image.take();
}

void XTavixCellExtend::fromJson(const xstd::XKVNode& node)
{
    if (const xstd::XKVNode* rule = node.at("formatRule"))
        ruleFromJson(*rule);
    huge::XCellStyle read;
    read.fromJson(node);
    setStyle(read);
}

void XTavixCellExtend::fromBinary(const std::vector<uint8_t>& image)
{
    xstd::XByteCursor cursor(image);
    const std::vector<uint8_t> rule = cursor.getBytes("number format");
    huge::XCellStyle read;
    read.fromBinary(cursor);
    ruleFromBinary(rule);
    setStyle(read);
}

huge::XCellStyle XTavixCellExtend::style() const
{
    huge::XCellStyle result;
    result.fontName = toXString(fontName);
    result.fore = fore;
    result.background = background;
    result.borderTop = borderTop;
    result.borderLeft = borderLeft;
    result.borderBottom = borderBottom;
    result.borderRight = borderRight;
    result.bold = bold;
    result.italic = italic;
    result.underLine = underLine;
    result.multLine = multLine;
    result.valign = valign;
    result.align = align;
    result.fontSize = fontSize;
    result.borderTopStyle = borderTopStyle;
    result.borderLeftStyle = borderLeftStyle;
    result.borderBottomStyle = borderBottomStyle;
    result.borderRightStyle = borderRightStyle;
    return result;
}

void XTavixCellExtend::setStyle(const huge::XCellStyle& style)
{
    fontName = toQString(style.fontName);
    fore = style.fore;
    background = style.background;
    borderTop = style.borderTop;
    borderLeft = style.borderLeft;
    borderBottom = style.borderBottom;
    borderRight = style.borderRight;
    bold = style.bold;
    italic = style.italic;
    underLine = style.underLine;
    multLine = style.multLine;
    valign = style.valign;
    align = style.align;
    fontSize = style.fontSize;
    borderTopStyle = style.borderTopStyle;
    borderLeftStyle = style.borderLeftStyle;
    borderBottomStyle = style.borderBottomStyle;
    borderRightStyle = style.borderRightStyle;
}
