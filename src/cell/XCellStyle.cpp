#include "cell/XCellStyle.h"

#include "common/XByteCursor.h"
#include "common/XTextForms.h"

namespace huge {

namespace {

constexpr const char* colorNames[] = {"fore",       "background",   "borderTop",
                                      "borderLeft", "borderBottom", "borderRight"};
constexpr uint32_t XCellStyle::*colors[] = {&XCellStyle::fore,         &XCellStyle::background,
                                            &XCellStyle::borderTop,    &XCellStyle::borderLeft,
                                            &XCellStyle::borderBottom, &XCellStyle::borderRight};
constexpr size_t colorCount = sizeof colors / sizeof colors[0];
constexpr uint32_t opaque = 0xff000000;

constexpr const char* what = "cell format";

void putColor(xstd::XByteWriter& image, uint32_t color)
{
    image.putU16(static_cast<uint16_t>(color));
    image.putU16(static_cast<uint16_t>(color >> 16));
}

xstd::XString colorText(uint32_t color)
{
    static constexpr char digits[] = "0123456789abcdef";
    xstd::XString text("#");
    for (int shift = 20; shift >= 0; shift -= 4)
        text.push_back(digits[color >> shift & 0xf]);
    return text;
}

uint32_t colorOf(const xstd::XString& text)
{
    uint32_t color = 0;
    if (text.size() != 7 || text[0] != '#')
        return opaque;
    for (size_t i = 1; i < text.size(); ++i) {
        const int digit = xstd::hexDigitValue(text[i]);
        if (digit < 0)
            return opaque;
        color = color << 4 | static_cast<uint32_t>(digit);
    }
    return color | opaque;
}

/// A field of two bits, from a number that may be anything.
uint8_t twoBits(int64_t value)
{
    return static_cast<uint8_t>(value & 3);
}

} // namespace

void XCellStyle::toBinary(xstd::XByteWriter& image) const
{
    image.putString(fontName);
    for (const auto color : colors)
        putColor(image, this->*color);
    image.putU8(static_cast<uint8_t>((bold ? 0x01 : 0) | (italic ? 0x02 : 0) |
                                     (underLine ? 0x04 : 0) | (multLine ? 0x08 : 0) |
                                     twoBits(valign) << 4 | twoBits(align) << 6));
    image.putU8(0);
    image.putU16(static_cast<uint16_t>(fontSize));
    image.putU8(static_cast<uint8_t>(twoBits(borderTopStyle) | twoBits(borderLeftStyle) << 2 |
                                     twoBits(borderBottomStyle) << 4 |
                                     twoBits(borderRightStyle) << 6));
    image.putU8(0);
}

void XCellStyle::fromBinary(xstd::XByteCursor& image)
{
    XCellStyle read;
    read.fontName = image.getString("font name");
    for (const auto color : colors)
        read.*color = static_cast<uint32_t>(image.getInt(what));
    const uint8_t flags = image.getU8(what);
    image.getU8(what);
    read.bold = (flags & 0x01) != 0;
    read.italic = (flags & 0x02) != 0;
    read.underLine = (flags & 0x04) != 0;
    read.multLine = (flags & 0x08) != 0;
    read.valign = twoBits(flags >> 4);
    read.align = twoBits(flags >> 6);
    read.fontSize = static_cast<int16_t>(image.getU16(what));
    const uint8_t styles = image.getU8(what);
    image.getU8(what);
    read.borderTopStyle = twoBits(styles);
    read.borderLeftStyle = twoBits(styles >> 2);
    read.borderBottomStyle = twoBits(styles >> 4);
    read.borderRightStyle = twoBits(styles >> 6);
    *this = std::move(read);
}

void XCellStyle::toJson(xstd::XKVNode& node) const
{
    node["fontName"] = fontName;
    xstd::XKVNode& texts = node["colors"];
    for (size_t i = 0; i < colorCount; ++i)
        texts[colorNames[i]] = colorText(this->*colors[i]);
    xstd::XKVNode& flags = node["extFlags"];
    flags["bold"] = bold;
    flags["italic"] = italic;
    flags["underLine"] = underLine;
    flags["multLine"] = multLine;
    flags["valign"] = int(valign);
    flags["align"] = int(align);
    flags["fontSize"] = int(fontSize);
    flags["borderTop"] = int(borderTopStyle);
    flags["borderLeft"] = int(borderLeftStyle);
    flags["borderBottom"] = int(borderBottomStyle);
    flags["borderRight"] = int(borderRightStyle);
}

void XCellStyle::fromJson(const xstd::XKVNode& node)
{
    static const xstd::XKVNode missing;
    const auto entry = [&](const char* path) -> const xstd::XKVNode& {
        const xstd::XKVNode* found = node.at(path);
        return found ? *found : missing;
    };
    fontName = entry("fontName").toText();
    for (size_t i = 0; i < colorCount; ++i)
        this->*colors[i] =
            colorOf(entry((std::string("colors.") + colorNames[i]).c_str()).toText());
    bold = entry("extFlags.bold").asBool();
    italic = entry("extFlags.italic").asBool();
    underLine = entry("extFlags.underLine").asBool();
    multLine = entry("extFlags.multLine").asBool();
    valign = twoBits(entry("extFlags.valign").asInt64());
    align = twoBits(entry("extFlags.align").asInt64());
    fontSize = static_cast<int16_t>(entry("extFlags.fontSize").asInt64());
    borderTopStyle = twoBits(entry("extFlags.borderTop").asInt64());
    borderLeftStyle = twoBits(entry("extFlags.borderLeft").asInt64());
    borderBottomStyle = twoBits(entry("extFlags.borderBottom").asInt64());
    borderRightStyle = twoBits(entry("extFlags.borderRight").asInt64());
}

} // namespace huge
