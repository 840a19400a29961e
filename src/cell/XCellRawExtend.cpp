#include "cell/XCellRawExtend.h"
#include "common/XByteCursor.h"

#include <cstring>

namespace huge {

std::vector<uint8_t> XCellRawExtend::toBinary() const
{
    std::vector<uint8_t> image = m_image;
    if (image.size() >= 4 + sizeof(XFormatRule))
        std::memcpy(image.data() + 4, &formatRule, sizeof(XFormatRule));
    return image;
}

void XCellRawExtend::fromBinary(const std::vector<uint8_t>& image)
{
    xstd::XByteCursor rule = xstd::XByteCursor(image).getBlock("number format");
    std::memcpy(&formatRule, rule.getRaw(sizeof(XFormatRule), "number format"),
                sizeof(XFormatRule));
    m_image = image;
}

} // namespace huge
