#include "cell/XCellRawExtend.h"
#include "cell/XCellStyle.h"
#include "common/XJsonDecoder.h"
#include "imageTesting.h"

#include <gtest/gtest.h>

namespace {

using huge::XCellRawExtend;

/// A format image with every field set.
Bytes fullFormat()
{
    return block({0xfe, 0xff, 3, 0, 16, '_', 0x84, 0x5a}) + textBytes("文泉驿") +
           int32Bytes(0x11223344) + int32Bytes(0) + int32Bytes(-1) + int32Bytes(1) + int32Bytes(2) +
           int32Bytes(3) + Bytes{0x5d, 0, 12, 0, 0xe4, 0};
}

TEST(CellFormat, ARuleOfDefaultsAndOneWithEveryBit)
{
    XCellRawExtend format;
    EXPECT_EQ(format.ruleToBinary(), (Bytes{0xff, 0xff, 0xff, 0xff, 10, 0, 0, 0}));
    EXPECT_EQ(format.ruleToJson().at("length")->asInt64(), 65535);
    format.rule().breaksize = 127;
    format.rule().trimmant = 1;
    EXPECT_EQ(format.ruleToBinary()[6], 255);
    const Bytes odd = {1, 2, 3, 4, 58, ',', 0x83, 0xb5};
    format.ruleFromBinary(odd + Bytes{9, 9});
    EXPECT_EQ(format.rule().length, 0x201);
    EXPECT_EQ(format.rule().breaksize, 3);
    EXPECT_EQ(format.rule().dateTimeStyle, 11);
    EXPECT_EQ(format.ruleToBinary(), odd);
    XCellRawExtend fromText;
    fromText.ruleFromJson(format.ruleToJson());
    EXPECT_EQ(fromText.formatRule, format.formatRule);
    EXPECT_EQ(failureOf([&] {
                  format.ruleFromBinary({1, 2, 3});
              }),
              "The image ends inside the number format at offset 2");
    EXPECT_EQ(format.ruleToBinary(), odd);
}

TEST(CellFormat, AnImagePassesThroughWithoutAPrototype)
{
    Sheet sheet;
    const Bytes unknown = block({1, 0, 2, 0, 8, 0, 0, 0}) + Bytes{9, 8, 7};
    const Bytes image = smallHeader(1, 1) + cellRecord(0, 0, "255", "255", {0, 0}, fullFormat()) +
                        cellRecord(1, 1, "", "", {0, 0}, unknown);
    load(sheet, image);
    EXPECT_EQ(sheet.value("A1"), "0xFF");
    EXPECT_EQ(sheet.table.toVector(), image);
    sheet.cell("A1")->extend()->rule().radix = 10;
    sheet.cell("A1")->clearDisplayText();
    Bytes changed = fullFormat();
    changed[8] = 10;
    EXPECT_EQ(sheet.cell("A1")->extend()->toBinary(), changed);
}

TEST(CellFormat, JsonTellsEverythingButTheAlpha)
{
    XCellRawExtend format;
    format.fromBinary(fullFormat());
    const char* text =
        "{colors: {background: \"#000000\", borderBottom: \"#000002\", borderLeft: \"#000001\", "
        "borderRight: \"#000003\", borderTop: \"#ffffff\", fore: \"#223344\"}, extFlags: {align: "
        "1, bold: true, borderBottom: 2, borderLeft: 1, borderRight: 3, borderTop: 0, fontSize: "
        "12, italic: false, multLine: true, underLine: true, valign: 1}, fontName: \"文泉驿\", "
        "formatRule: {breakchar: 95, breaksize: 4, chinese: false, dateTimeStyle: 5, length: "
        "65534, mantissa: 3, mod: false, percent: true, radix: 16, sign: true, trimmant: true}}";
    EXPECT_EQ(format.toJson().toJson(), text);
    XCellRawExtend back;
    back.fromJson(xstd::XJsonDecoder().parse(text));
    Bytes opaque = fullFormat();
    const size_t colors = 16 + 9;
    for (size_t i = 0; i < 6; ++i)
        opaque[colors + 4 * i + 3] = 0xff;
    EXPECT_EQ(back.toBinary(), opaque);
}

TEST(CellFormat, EveryCutImageIsRefused)
{
    huge::XCellStyle style;
    Bytes image = fullFormat();
    image.erase(image.begin(), image.begin() + 12);
    for (size_t size = 0; size < image.size(); ++size) {
        xstd::XByteCursor cut(image.data(), size, 12);
        EXPECT_NE(failureOf([&] { style.fromBinary(cut); }).find(" at offset "), std::string::npos);
        EXPECT_EQ(style, huge::XCellStyle());
    }
    xstd::XByteWriter written;
    style.toBinary(written);
    EXPECT_EQ(written.bytes().size(), 34u); // with the number format 46 in all
}

} // namespace
