#pragma once

#include "cell/XCellExtend.h"

namespace huge {

/// The format record of a cell in a table without prototype: the image as it was read, so that a
/// document passes through a program that knows no fonts without losing its formats. Of the image
/// only the number format is understood.
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
    /// The image with the present number format in its place.
    std::vector<uint8_t> toBinary() const override;
    void fromBinary(const std::vector<uint8_t>& image) override;

private:
    std::vector<uint8_t> m_image;
};

} // namespace huge
