#include "common/XKVNode.h"
#include "common/XTextForms.h"

#include <charconv>
#include <cmath>
#include <stdexcept>

namespace xstd {

namespace {

// The shortest digits that read back to the same number, with a point, so that they stay a real.
XString realText(double value)
{
    if (!std::isfinite(value))
        throw std::runtime_error("A number that is not finite has no text");
    char digits[800]; // the smallest numbers have some 770 of them
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed);
    XString text(std::string(digits, end.ptr));
    return text.find('.') == text.npos ? XString(text + ".0") : text;
}

// As escapeText, which writes a control byte without an escape as two bare digits: in a document it
// has to come back as the byte that it was.
XString quotedText(const XString& text)
{
    XString quoted = "\"";
    for (const char c : text) {
        const XString shown = escapeChar(static_cast<uint8_t>(c));
        if (static_cast<uint8_t>(c) < 32 && shown[0] != '\\')
            quoted += "\\x";
        quoted += shown;
    }
    return quoted + "\"";
}

// The reader takes a bare word for a key; any other key needs quotes to come back.
XString keyText(const XString& key)
{
    const bool startsAsLabel = !key.empty() && (key[0] < '0' || key[0] > '9');
    for (const char c : key) {
        if (c != '_' && (c < '0' || c > '9') && (c < 'a' || c > 'z') && (c < 'A' || c > 'Z'))
            return quotedText(key);
    }
    return startsAsLabel ? key : quotedText(key);
}

void appendLine(XString& text, int level, int width)
{
    if (width <= 0)
        return;
    text += '\n';
    text.append(static_cast<size_t>(level) * static_cast<size_t>(width), ' ');
}

void appendIniLine(XString& text, const XString& key, const XKVNode& value)
{
    text += (text.empty() ? "" : "\n") + keyText(key) + " = " + value.toText();
}

void appendIniSection(XString& text, const XString& name, const XKVNode& section)
{
    text += (text.empty() ? "[" : "\n[") + name + "]";
    for (const auto& [key, value] : section.entries()) {
        if (value.isArray() || value.isObject())
            throw std::runtime_error("Ini profile does not support multi-level grouping");
        appendIniLine(text, key, value);
    }
}

} // namespace

XString XKVNode::toText() const
{
    switch (type()) {
    case typeInt:
        return std::to_string(asInt64());
    case typeReal:
        return realText(asDouble());
    case typeTime:
        return std::get<XTime>(m_value).toString();
    case typeString:
        return std::get<XString>(m_value);
    default:
        return {};
    }
}

XString XKVNode::toJson(int level, int width) const
{
    XString text;
    appendJson(text, level, width);
    return text;
}

void XKVNode::appendJson(XString& text, int level, int width) const
{
    const char* separator = "";
    switch (type()) {
    case typeNull:
        text += "null";
        return;
    case typeBool:
        text += asBool() ? "true" : "false";
        return;
    case typeString:
        text += quotedText(std::get<XString>(m_value));
        return;
    case typeArray:
        text += '[';
        for (const XKVNode& element : elements()) {
            text += std::exchange(separator, ", ");
            appendLine(text, level + 1, width);
            element.appendJson(text, level + 1, width);
        }
        appendLine(text, level, width);
        text += ']';
        return;
    case typeObject:
        text += '{';
        for (const auto& [key, value] : entries()) {
            text += std::exchange(separator, ", ");
            appendLine(text, level + 1, width);
            text += keyText(key) + ": ";
            value.appendJson(text, level + 1, width);
        }
        appendLine(text, level, width);
        text += '}';
        return;
    default:
        text += toText();
    }
}

XString XKVNode::toIni() const
{
    if (!isObject())
        throw std::runtime_error("INI file configuration entry must be a value of key = value");
    XString text;
    for (const auto& [key, value] : entries()) {
        if (value.isArray())
            throw std::runtime_error("Ini profile does not support array");
        if (value.isObject())
            appendIniSection(text, key, value);
        else
            appendIniLine(text, key, value);
    }
    return text;
}

} // namespace xstd
