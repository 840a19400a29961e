#include "cell/XCellRawExtend.h"

#include "cell/XCellStyle.h"
#include "common/XByteCursor.h"

#include <algorithm>
#include <stdexcept>

namespace huge {

xstd::XJson XCellRawExtend::toJson() const
{
    xstd::XJson node;
    node["formatRule"] = ruleToJson();
    try {
        xstd::XByteCursor image(m_image);
        image.getBlock("number format");
        XCellStyle style;
        style.fromBinary(image);
        style.toJson(node);
    } catch (const std::runtime_error&) {
        // The bytes are kept whatever they are; here only what is understood can be told.
    }
    return node;
}

std::vector<uint8_t> XCellRawExtend::toBinary() const
{
    std::vector<uint8_t> image = m_image;
    const std::vector<uint8_t> rule = ruleToBinary();
    if (image.size() >= 4 + rule.size())
        std::copy(rule.begin(), rule.end(), image.begin() + 4);
    return image;
}

void XCellRawExtend::fromJson(const xstd::XKVNode& node)
{
    if (const xstd::XKVNode* rule = node.at("formatRule"))
        ruleFromJson(*rule);
    XCellStyle style;
    style.fromJson(node);
    xstd::XByteWriter image;
    image.putBytes(ruleToBinary());
    style.toBinary(image);
    m_image = image.take();
}

void XCellRawExtend::fromBinary(const std::vector<uint8_t>& image)
{
    ruleFromBinary(xstd::XByteCursor(image).getBytes("number format"));
    m_image = image;
}

} // namespace huge
