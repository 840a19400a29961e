#pragma once

#include "cell/XCellExtend.h"

namespace huge {

/// The format record of a cell in a table without prototype: the image as it was read, so that a
/// document passes through a program that knows no fonts without losing its formats. Only the
/// number format acts; the JSON form is made of what the image says.
class XCellRawExtend final : public XCellExtend {
public:
    std::unique_ptr<XCellExtend> clone() const override
    {
        return std::make_unique<XCellRawExtend>(*this);
    }
    void assign(const XCellExtend& other) override
    {
        *this = static_cast<const XCellRawExtend&>(other);
    }
    /// The object of the whole format, or of the number format alone if that is all that can be
    /// read of the image.
    xstd::XJson toJson() const override;
    /// The image with the present number format in its place.
    std::vector<uint8_t> toBinary() const override;
    void fromJson(const xstd::XKVNode& node) override;
    void fromBinary(const std::vector<uint8_t>& image) override;

private:
    std::vector<uint8_t> m_image;
};

} // namespace huge
