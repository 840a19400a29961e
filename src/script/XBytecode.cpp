#include "script/XBytecode.h"

#include "common/XException.h"
#include "common/XTextForms.h"
#include "script/XScriptExtendData.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace huge {

namespace {

// Two of the bit instructions have no name of their own.
constexpr std::array<const char*, 50> opNames = {
    "NULL",        "MOV",       "REF",     "ADD",      "DEC",       "MUL",
    "DIV",         "POW",       "PERCENT", "MODELER",  "PUSH_NULL", "PUSH",
    "PUSH_REF",    "POP",       "POPTO",   "EXEC",     "INVOKE",    "NOT",
    "NEG",         "EQU",       "NOTEQU",  "LESS",     "GREAT",     "LESSEQU",
    "GREATEQU",    "AND",       "OR",      "BIT_OR",   "BIT_AND",   "BIT_NOT",
    "UNKNOWN",     "BIT_SHR",   "BIT_SHL", "ADD_TO",   "DEC_TO",    "MUL_TO",
    "DIV_TO",      "POW_TO",    "PER_TO",  "BITOR_TO", "BITAND_TO", "UNKNOWN",
    "BITSHR_TO",   "BITSHL_TO", "JMP",     "JMP_TRUE", "JMP_FALSE", "CLOSURE_BEGIN",
    "CLOSURE_END", "RETURN"};

constexpr std::array<const char*, 14> odNames = {
    "null",   "bool",   "int",      "modint", "offset",     "float",   "imag",
    "string", "extend", "stackvar", "stack",  "closurevar", "closure", "ax"};

constexpr size_t maxLength = 65535; // of what a 16-bit length stands in front of
constexpr size_t numberHeader = 8;

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>;

void append(std::vector<uint8_t>& bytes, uint64_t value, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        bytes.push_back(static_cast<uint8_t>(value >> (8 * i)));
}

void append(std::vector<uint8_t>& bytes, const void* data, size_t count)
{
    const auto* begin = static_cast<const uint8_t*>(data);
    bytes.insert(bytes.end(), begin, begin + count);
}

void requireLength(size_t length, const char* message)
{
    if (length > maxLength)
        throw xstd::XExceptionItems().add(
            xstd::XExceptionItem(X_HERE, "scriptBuilder")
                .setMess(message)
                .setExtend("dataSize", static_cast<uint64_t>(length)));
}

size_t magnitudeBytes(const HugeInteger& value)
{
    return (value.bitLength() + 7) / 8;
}

/// Length, whatever stands between it and the number, header word, magnitude.
void appendNumber(std::vector<uint8_t>& bytes, const HugeInteger& value, const int16_t* modIdx)
{
    const size_t magnitude = magnitudeBytes(value);
    const size_t length = magnitude + numberHeader + (modIdx != nullptr ? 2 : 0);
    requireLength(length, "The integer literal is too long, its operand holds at most 65535 bytes");
    append(bytes, length, 2);
    if (modIdx != nullptr)
        append(bytes, static_cast<uint16_t>(*modIdx), 2);
    append(bytes, value.headerWord(), numberHeader);
    for (size_t i = 0; i < magnitude; ++i)
        bytes.push_back(static_cast<uint8_t>(value.limbs()[i / 8] >> (8 * (i % 8))));
}

/// Bytes of the mantissa down to its lowest set bit.
size_t mantissaBytes(const HugeFloat& value)
{
    const size_t n = value.limbCount();
    for (size_t i = 0; i < n; ++i)
        if (value.limbs()[i] != 0)
            return (64 * (n - i) - size_t(std::countr_zero(value.limbs()[i])) + 7) / 8;
    return 0;
}

void appendFloat(std::vector<uint8_t>& bytes, const HugeFloat& value)
{
    const size_t mantissa = mantissaBytes(value);
    const size_t length = mantissa + numberHeader;
    requireLength(length, "The real literal is too long, its operand holds at most 65535 bytes");
    append(bytes, length, 2);
    append(bytes, value.headerWord(), numberHeader);
    for (size_t i = 8 * value.limbCount() - mantissa; i < 8 * value.limbCount(); ++i)
        bytes.push_back(static_cast<uint8_t>(value.limbs()[i / 8] >> (8 * (i % 8))));
}

/// The number of a real or imaginary literal; null for every other record.
const HugeFloat* floatOf(const prog_od::Value& value)
{
    if (const auto* real = std::get_if<od_float>(&value))
        return &real->value;
    const auto* imaginary = std::get_if<od_imag>(&value);
    return imaginary == nullptr ? nullptr : &imaginary->value;
}

xstd::XString slotOfModulus(int16_t modIdx)
{
    return xstd::format("(mod stack[%d])", modIdx);
}

xstd::XString closureText(const od_closure& od)
{
    xstd::XString slots;
    for (const uint16_t slot : od.closureVars)
        slots += xstd::format(slots.empty() ? "%d" : ", %d", slot);
    return xstd::format("entry:%u{maxStack:%d, paramCount:%d, closureVarCount:%zu, closureVars:[",
                        od.entry, od.maxStack, od.paramCount, od.closureVars.size()) +
           slots + "]}";
}

uint64_t headerOf(const uint8_t* bytes, size_t length)
{
    if (length < numberHeader)
        throw std::runtime_error("The number of an operand is cut off");
    uint64_t header = 0;
    std::memcpy(&header, bytes, numberHeader);
    return header;
}

} // namespace

const char* xopName(uint8_t op) noexcept
{
    return op < opNames.size() ? opNames[op] : "UNKNOWN";
}

int xopOperands(uint8_t op) noexcept
{
    switch (op) {
    case OP_NULL:
    case OP_PUSH_NULL:
    case OP_POP:
    case OP_CLOSURE_END:
    case OP_RETURN:
        return 0;
    case OP_PUSH:
    case OP_PUSH_REF:
    case OP_POPTO:
    case OP_NOT:
    case OP_NEG:
    case OP_BIT_NOT:
    case OP_JMP:
    case OP_CLOSURE_BEGIN:
        return 1;
    case OP_INVOKE:
        return 3;
    default:
        return op < opNames.size() ? 2 : 0;
    }
}

const char* xodName(uint8_t tag) noexcept
{
    return tag < odNames.size() ? odNames[tag] : "unknown";
}

void appendPayload(std::vector<uint8_t>& bytes, const od_bool& od)
{
    bytes.push_back(od.value ? 1 : 0);
}

void appendPayload(std::vector<uint8_t>& bytes, const od_int& od)
{
    appendNumber(bytes, od.value, nullptr);
}

void appendPayload(std::vector<uint8_t>& bytes, const od_modint& od)
{
    appendNumber(bytes, od.value, &od.modIdx);
}

void appendPayload(std::vector<uint8_t>& bytes, const od_offset& od)
{
    append(bytes, static_cast<uint32_t>(od.value), 4);
}

void appendPayload(std::vector<uint8_t>& bytes, const od_float& od)
{
    appendFloat(bytes, od.value);
}

void appendPayload(std::vector<uint8_t>& bytes, const od_imag& od)
{
    appendFloat(bytes, od.value);
}

void appendPayload(std::vector<uint8_t>& bytes, const od_str& od)
{
    requireLength(od.value.size(), "The string literal is too long, at most 65535 bytes are "
                                   "possible");
    append(bytes, od.value.size(), 2);
    append(bytes, od.value.data(), od.value.size());
}

void appendPayload(std::vector<uint8_t>& bytes, const XScriptExtendData& data)
{
    requireLength(data.size(), "The name is too long, its operand holds at most 65535 bytes");
    append(bytes, data.size(), 2);
    append(bytes, data.bytes().data(), data.size());
}

void appendPayload(std::vector<uint8_t>& bytes, const od_stackvar& od)
{
    append(bytes, od.idx, 2);
}

void appendPayload(std::vector<uint8_t>& bytes, const od_stack& od)
{
    append(bytes, od.idx, 2);
}

void appendPayload(std::vector<uint8_t>& bytes, const od_closurevar& od)
{
    append(bytes, od.idx, 2);
}

void appendPayload(std::vector<uint8_t>& bytes, const od_closure& od)
{
    append(bytes, od.entry, 4);
    append(bytes, od.maxStack, 2);
    append(bytes, od.paramCount, 2);
    append(bytes, od.closureVars.size(), 2);
    for (const uint16_t slot : od.closureVars)
        append(bytes, slot, 2);
}

HugeInteger integerFromPayload(const uint8_t* bytes, size_t length)
{
    return HugeInteger::fromHeaderAndBytes(headerOf(bytes, length), bytes + numberHeader,
                                           length - numberHeader);
}

HugeFloat floatFromPayload(const uint8_t* bytes, size_t length)
{
    const uint64_t header = headerOf(bytes, length);
    const size_t stored = length - numberHeader;
    const size_t limbs = header & 0xffff;
    if (limbs >= LimbPool::limit)
        LimbPool::failLimit();
    if (stored > 8 * limbs)
        throw std::runtime_error("A float's bytes don't fill its block");
    std::vector<uint8_t> mantissa(8 * limbs);
    std::copy_n(bytes + numberHeader, stored, mantissa.end() - std::ptrdiff_t(stored));
    return HugeFloat::fromHeaderAndBytes(header, mantissa.data(), mantissa.size());
}

void prog_od::requireKnownType() const
{
    if (type > OD_AX)
        throw xstd::XExceptionItems().add(
            xstd::XExceptionItem(X_HERE, "scriptBuilder")
                .setMess("Unknow prog_od data type")
                .setExtend("prog_od_data", static_cast<int32_t>(type)));
}

void prog_od::copyValue(const prog_od& other)
{
    other.requireKnownType();
    type = other.type;
    modIdx = other.modIdx;
    value = other.value;
}

void prog_od::data(std::vector<uint8_t>& bytes) const
{
    requireKnownType();
    std::visit(Overloaded{[](std::monostate) {},
                          [&](const od_extend& od) {
                              appendPayload(bytes, XScriptExtendData::fromName(od.name));
                          },
                          [&](const auto& od) { appendPayload(bytes, od); }},
               value);
}

int64_t prog_od::asInt64() const
{
    return std::visit(Overloaded{[](std::monostate) { return int64_t{0}; },
                                 [](const od_bool& od) { return int64_t{od.value}; },
                                 [](const od_int& od) { return od.value.asInt64(); },
                                 [](const od_modint& od) { return int64_t{od.modIdx}; },
                                 [](const od_offset& od) { return int64_t{od.value}; },
                                 [](const od_float& od) { return od.value.asInt64(); },
                                 [](const od_imag& od) { return od.value.asInt64(); },
                                 [](const od_str& od) {
                                     return int64_t{std::strtoll(od.value.c_str(), nullptr, 10)};
                                 },
                                 [](const od_extend&) { return int64_t{0}; },
                                 [](const od_closure& od) { return int64_t{od.entry}; },
                                 [](const auto& od) { return int64_t{od.idx}; }},
                      value);
}

double prog_od::asDouble() const
{
    if (const auto* number = std::get_if<od_int>(&value))
        return number->value.asDouble();
    if (const HugeFloat* number = floatOf(value))
        return number->asDouble();
    if (const auto* text = std::get_if<od_str>(&value))
        return std::strtod(text->value.c_str(), nullptr);
    return static_cast<double>(asInt64());
}

bool prog_od::asBool() const
{
    if (const auto* number = std::get_if<od_int>(&value))
        return !number->value.isZero();
    if (const HugeFloat* number = floatOf(value))
        return !number->isZero();
    if (const auto* text = std::get_if<od_str>(&value))
        return !text->value.empty();
    return asInt64() != 0;
}

xstd::XString prog_od::valueText() const
{
    return std::visit<xstd::XString>(
        Overloaded{
            [this](std::monostate) { return xstd::XString(type == OD_NULL ? "null" : ""); },
            [](const od_bool& od) { return xstd::XString(od.value ? "true" : "false"); },
            [](const od_int& od) { return od.value.toString(); },
            [](const od_modint& od) { return od.value.toString() + slotOfModulus(od.modIdx); },
            [](const od_offset& od) { return xstd::format("%d", od.value); },
            [](const od_float& od) { return od.value.toString(); },
            [](const od_imag& od) { return od.value.toString(); },
            [](const od_str& od) { return od.value; },
            [](const od_extend& od) {
                return od.name + xstd::format("{%d, %d}", od.textPos, od.textLen);
            },
            [](const od_closure& od) { return closureText(od); },
            [](const auto& od) { return xstd::format("%d", od.idx); }},
        value);
}

xstd::XString prog_od::toText() const
{
    const xstd::XString name = xodName(type);
    if (type == OD_STR)
        return name + "{ " + xstd::escapeText(std::get<od_str>(value).value) + " }";
    const bool isSlot = type == OD_STACKVAR || type == OD_STACK;
    xstd::XString result = name + (isSlot ? "[ " : "{ ") + valueText() + (isSlot ? " ]" : " }");
    if (isSlot && !text.empty())
        result = text + "{ " + result + " }";
    return modIdx < 0 ? result : result + slotOfModulus(modIdx);
}

} // namespace huge
