#include "XTavixCellExtend.h"
#include "cell/XCellRawExtend.h"
#include "common/XByteCursor.h"

#include <gtest/gtest.h>

namespace {

XTavixCellExtend chineseFormat()
{
    XTavixCellExtend format{QFont("文泉驿", 12)};
    format.formatRule.mantissa = 2;
    format.fore = 0xff102030;
    format.borderTop = 0x80ffffff;
    format.borderLeft = 5;
    format.bold = format.multLine = true;
    format.align = XTavixCellExtend::AlignEnd;
    format.borderTopStyle = XTavixCellExtend::ThickBorder;
    format.borderLeftStyle = XTavixCellExtend::ThinBorder;
    return format;
}

TEST(CellExtend, ComesBackFromItsImageAndTheEngineReadsTheSame)
{
    const XTavixCellExtend format = chineseFormat();
    const std::vector<uint8_t> image = format.toBinary();
    EXPECT_EQ(image.size(), 46u + 9);
    XTavixCellExtend other{QFont()};
    other.fromBinary(image);
    EXPECT_EQ(other.fontName, QString("文泉驿"));
    EXPECT_EQ(other.background, 0u);
    EXPECT_EQ(other.borderTop, 0x80ffffffu);
    EXPECT_EQ(other.formatRule, format.formatRule);
    EXPECT_EQ(other.toBinary(), image);

    huge::XCellRawExtend engine;
    engine.fromBinary(image);
    EXPECT_EQ(engine.toJson().toJson(), format.toJson().toJson());
    other.fromJson(format.toJson());
    engine.fromJson(format.toJson());
    EXPECT_EQ(other.background, 0xff000000); // a colour in text is opaque
    EXPECT_EQ(engine.toBinary(), other.toBinary());
}

TEST(CellExtend, StaysAsItIsWhenAnImageIsCutOrACloneChanges)
{
    XTavixCellExtend format = chineseFormat();
    const std::vector<uint8_t> image = format.toBinary();
    for (size_t size = 0; size < image.size(); ++size) {
        const std::vector<uint8_t> cut(image.begin(), image.begin() + static_cast<long>(size));
        EXPECT_THROW(format.fromBinary(cut), std::runtime_error);
    }
    const auto clone = format.clone();
    static_cast<XTavixCellExtend&>(*clone).fontName = "other";
    clone->transpose();
    EXPECT_EQ(format.toBinary(), image);
    clone->transpose();
    static_cast<XTavixCellExtend&>(*clone).fontName = format.fontName;
    EXPECT_EQ(clone->toBinary(), image);
}

} // namespace
