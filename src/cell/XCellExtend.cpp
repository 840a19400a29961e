#include "cell/XCellExtend.h"

#include "common/XByteCursor.h"

namespace huge {

namespace {

constexpr uint8_t trimmantBit = 0x80;
constexpr uint8_t chineseBit = 0x01;
constexpr uint8_t percentBit = 0x02;
constexpr uint8_t modBit = 0x04;
constexpr uint8_t signBit = 0x08;

int64_t intAt(const xstd::XKVNode& node, const char* key)
{
    const xstd::XKVNode* entry = node.at(key);
    return entry ? entry->asInt64() : 0;
}

bool boolAt(const xstd::XKVNode& node, const char* key)
{
    const xstd::XKVNode* entry = node.at(key);
    return entry && entry->asBool();
}

} // namespace

xstd::XJson XCellExtend::ruleToJson() const
{
    xstd::XJson node;
    node["length"] = int64_t(static_cast<uint16_t>(formatRule.length));
    node["mantissa"] = int64_t(static_cast<uint16_t>(formatRule.mantissa));
    node["radix"] = int(formatRule.radix);
    node["breakchar"] = int(formatRule.breakchar);
    node["breaksize"] = int(formatRule.breaksize);
    node["trimmant"] = bool(formatRule.trimmant);
    node["chinese"] = bool(formatRule.chinese);
    node["percent"] = bool(formatRule.percent);
    node["mod"] = bool(formatRule.mod);
    node["sign"] = bool(formatRule.sign);
    node["dateTimeStyle"] = int(formatRule.dateTimeStyle);
    return node;
}

void XCellExtend::ruleFromJson(const xstd::XKVNode& node)
{
    formatRule.length = static_cast<int16_t>(intAt(node, "length"));
    formatRule.mantissa = static_cast<int16_t>(intAt(node, "mantissa"));
    formatRule.radix = static_cast<uint8_t>(intAt(node, "radix"));
    formatRule.breakchar = static_cast<uint8_t>(intAt(node, "breakchar"));
    formatRule.breaksize = static_cast<uint8_t>(intAt(node, "breaksize") & 0x7f);
    formatRule.trimmant = boolAt(node, "trimmant");
    formatRule.chinese = boolAt(node, "chinese");
    formatRule.percent = boolAt(node, "percent");
    formatRule.mod = boolAt(node, "mod");
    formatRule.sign = boolAt(node, "sign");
    formatRule.dateTimeStyle = static_cast<uint8_t>(intAt(node, "dateTimeStyle") & 0x0f);
}

std::vector<uint8_t> XCellExtend::ruleToBinary() const
{
    xstd::XByteWriter image;
    image.putU16(static_cast<uint16_t>(formatRule.length));
    image.putU16(static_cast<uint16_t>(formatRule.mantissa));
    image.putU8(formatRule.radix);
    image.putU8(formatRule.breakchar);
    image.putU8(
        static_cast<uint8_t>(formatRule.breaksize | (formatRule.trimmant ? trimmantBit : 0)));
    image.putU8(
        static_cast<uint8_t>((formatRule.chinese ? chineseBit : 0) |
                             (formatRule.percent ? percentBit : 0) | (formatRule.mod ? modBit : 0) |
                             (formatRule.sign ? signBit : 0) | (formatRule.dateTimeStyle << 4)));
    return image.take();
}

void XCellExtend::ruleFromBinary(const std::vector<uint8_t>& bytes)
{
    xstd::XByteCursor image(bytes);
    XFormatRule rule;
    rule.length = static_cast<int16_t>(image.getU16("number format"));
    rule.mantissa = static_cast<int16_t>(image.getU16("number format"));
    rule.radix = image.getU8("number format");
    rule.breakchar = image.getU8("number format");
    const uint8_t group = image.getU8("number format");
    rule.breaksize = group & 0x7f;
    rule.trimmant = group >> 7;
    const uint8_t flags = image.getU8("number format");
    rule.chinese = (flags & chineseBit) != 0;
    rule.percent = (flags & percentBit) != 0;
    rule.mod = (flags & modBit) != 0;
    rule.sign = (flags & signBit) != 0;
    rule.dateTimeStyle = flags >> 4;
    formatRule = rule;
}

} // namespace huge
