#include "common/XException.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace xstd {

namespace {

XTextStyle style(uint32_t rgb, int32_t size, bool bold)
{
    XTextStyle result;
    result.red = static_cast<uint8_t>(rgb >> 16);
    result.green = static_cast<uint8_t>(rgb >> 8);
    result.blue = static_cast<uint8_t>(rgb);
    result.size = size;
    result.bold = bold;
    return result;
}

const XTextStyle titleStyle = style(0xFF0000, 16, true);
const XTextStyle frameStyle = style(0x646464, 16, false);
const XTextStyle labelStyle = style(0x646464, 14, false);
const XTextStyle redValueStyle = style(0xFF0000, 14, true);
const XTextStyle keyStyle = style(0x646464, 14, false);
const XTextStyle keyValueStyle = style(0xFF0080, 14, false);
const XTextStyle placeLabelStyle = style(0xA0A0A0, 12, false);
const XTextStyle placeValueStyle = style(0x000080, 12, false);

// What comes from a user must not turn into markup.
XString shown(const XString& text, const XTextStyle& textStyle)
{
    return styledSpan(htmlEscaped(text), textStyle);
}

void addLine(XString& text, const XString& line)
{
    if (!text.empty())
        text += "\n";
    text += line;
}

int64_t truncated(double value)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (std::isnan(value))
        return 0;
    if (value >= limit)
        return std::numeric_limits<int64_t>::max();
    return value < -limit ? std::numeric_limits<int64_t>::min() : static_cast<int64_t>(value);
}

// The start of a text that fills at most `most` bytes and ends between two characters.
size_t wholeCharacters(const XString& text, size_t most)
{
    while (most > 0 && (text[most] & 0xC0) == 0x80)
        --most;
    return most;
}

} // namespace

int64_t XExceptValue::asInt64() const
{
    if (isInt())
        return std::get<int64_t>(m_value);
    if (isDouble())
        return truncated(std::get<double>(m_value));
    return isString() ? std::atoll(std::get<XString>(m_value).c_str()) : 0;
}

double XExceptValue::asDouble() const
{
    if (isInt())
        return static_cast<double>(std::get<int64_t>(m_value));
    if (isDouble())
        return std::get<double>(m_value);
    return isString() ? std::atof(std::get<XString>(m_value).c_str()) : 0.0;
}

XString XExceptValue::asString() const
{
    if (isInt())
        return XString(std::to_string(std::get<int64_t>(m_value)));
    if (isDouble())
        return format("%f", std::get<double>(m_value));
    return isString() ? std::get<XString>(m_value) : XString();
}

XString XSourceLocation::toString() const
{
    return "file: " + file + "\nline: " + std::to_string(line) + "\nfuncName: " + func;
}

XString XSourceLocation::toHtml() const
{
    return "<span>" + shown("file: ", placeLabelStyle) + shown(file, placeValueStyle) +
           shown("(line: ", placeLabelStyle) + shown(std::to_string(line), placeValueStyle) +
           shown(")", placeLabelStyle) + shown(", func: ", placeLabelStyle) +
           shown(func, placeValueStyle) + "</span>";
}

XString XTextStyle::css() const
{
    XString text;
    if (!family.empty())
        text += "font-family:'" + family + "';";
    text += format("color:#%02X%02X%02X;", red, green, blue);
    text += format("font-size:%dpx;", size);
    text += bold ? "font-weight: bold;" : "font-weight: lighter;";
    text += italic ? "font-style:italic;" : "font-style:normal;";
    text += underline ? "text-decoration:underline;" : "text-decoration:normal;";
    return text;
}

XString styledSpan(const XString& text, const XTextStyle& textStyle)
{
    return "<span style=\"" + textStyle.css() + "\">" + text + "</span>";
}

XString htmlEscaped(const XString& text)
{
    XString escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

XExceptionItem::XExceptionItem(XSourceLocation location, XString type)
    : m_type(std::move(type)), m_location(std::move(location))
{}

XExceptionItem::XExceptionItem(XSourceLocation location, const std::exception& failure)
    : m_type("exception"), m_mess(failure.what()), m_location(std::move(location))
{}

XExceptionItem& XExceptionItem::setExtend(const XString& key, const XExceptValue& value)
{
    const auto entry = std::find_if(m_extend.begin(), m_extend.end(),
                                    [&key](const Extend& pair) { return pair.first == key; });
    if (entry != m_extend.end())
        entry->second = value;
    else
        m_extend.emplace_back(key, value);
    return *this;
}

XExceptionItem& XExceptionItem::setExtend(const XString& key, const XString& value)
{
    return setExtend(key, XExceptValue(value));
}

XExceptionItem& XExceptionItem::setExtend(const XString& key, double value)
{
    return setExtend(key, XExceptValue(value));
}

XExceptionItem& XExceptionItem::setExtend(const XString& key, uint64_t value)
{
    return setExtend(key, XExceptValue(static_cast<int64_t>(value)));
}

XExceptionItem& XExceptionItem::setExtend(const XString& key, int64_t value)
{
    return setExtend(key, XExceptValue(value));
}

XExceptionItem& XExceptionItem::setExtend(const XString& key, int32_t value)
{
    return setExtend(key, XExceptValue(static_cast<int64_t>(value)));
}

XExceptionItem& XExceptionItem::setExtend(const XString& key, const char* value)
{
    return setExtend(key, XExceptValue(XString(value)));
}

XExceptValue XExceptionItem::extend(const XString& key) const
{
    const XExceptValue* value = find(key);
    return value ? *value : XExceptValue();
}

XExceptionItem& XExceptionItem::setType(const XString& type)
{
    m_type = type;
    return *this;
}

XExceptionItem& XExceptionItem::setDetail(const XString& detail)
{
    m_detail = detail;
    return *this;
}

XExceptionItem& XExceptionItem::setMess(const XString& mess)
{
    m_mess = mess;
    return *this;
}

XString XExceptionItem::toString() const
{
    XString text;
    if (!m_mess.empty())
        addLine(text, "mess: " + m_mess);
    if (!m_type.empty())
        addLine(text, "type: " + m_type);
    if (!m_detail.empty())
        addLine(text, "detail: " + m_detail);
    if (m_extend.empty())
        return text;
    addLine(text, "extend{");
    for (size_t i = 0; i < m_extend.size(); ++i)
        text += (i > 0 ? "," : "") + m_extend[i].first + ":" + m_extend[i].second.asString();
    text += "}";
    return text;
}

XString XExceptionItem::toHtml() const
{
    XString html = "<table>"
                   "<tr style=\"padding:0px;line-height:125%;border-width:0px;\"></div>"
                   "<td style=\"padding:0px;background-color:red;color:red;border-width:0px;"
                   "width:5px;\">-</td>"
                   "<td style=\"padding:5px;line-height:125%;border-width:0px;\">";
    html += shown(m_mess, titleStyle);
    html += "<hr style=\"height:1px;border:none;border-top:1px dotted #d0d0d0;\"/>"
            "<div style=\"margin-left:2em;line-height:150%;background-color:transparent;\">";
    html += shown("type:", labelStyle) + shown(m_type, redValueStyle);
    if (!m_detail.empty())
        html += "<br>" + shown("detail:", labelStyle) + shown(m_detail, redValueStyle);
    html +=
        "<br>" + shown("progInfo: {", frameStyle) + m_location.toHtml() + shown("}", frameStyle);
    html += "<br>" + shown("extend Info{", frameStyle);
    for (size_t i = 0; i < m_extend.size(); ++i) {
        if (i > 0)
            html += shown(", ", keyStyle);
        html += shown(m_extend[i].first + ":", keyStyle);
        html += shown(m_extend[i].second.asString(), keyValueStyle);
    }
    return html + shown("}", frameStyle) + "</td></tr></table>";
}

const XExceptValue* XExceptionItem::find(const XString& key) const
{
    for (const Extend& entry : m_extend) {
        if (entry.first == key)
            return &entry.second;
    }
    return nullptr;
}

XString XExceptionItems::toString() const
{
    XString text;
    for (size_t i = 0; i < m_items.size(); ++i)
        text += (i > 0 ? "\n" : "") + m_items[i].toString();
    return text;
}

XExceptionItems& XExceptionItems::add(const XExceptionItem& item)
{
    if (m_items.size() >= maxItems)
        return *this;
    m_items.push_back(item);
    if (m_text.size() >= maxText)
        return *this;
    addLine(m_text, item.toString());
    if (m_text.size() > maxText) {
        m_text.resize(wholeCharacters(m_text, maxText));
        m_text += "...";
    }
    return *this;
}

XString XExceptionItems::toHtml() const
{
    XString html = "<table>";
    for (const XExceptionItem& item : m_items)
        html += "<tr><td style=\"padding:0px;line-height:125%;border:#d0d0d0;border-style:solid;"
                "border-width:1px;\">" +
                item.toHtml() + "</td></tr>";
    return html + "</table>";
}

XString XExceptionItems::mess() const
{
    for (const XExceptionItem& item : m_items) {
        if (!item.mess().empty())
            return item.mess();
    }
    return {};
}

int64_t XExceptionItems::extendInt(const XString& type, const XString& key) const
{
    return extend(&type, key).asInt64();
}

double XExceptionItems::extendDouble(const XString& type, const XString& key) const
{
    return extend(&type, key).asDouble();
}

XString XExceptionItems::extendText(const XString& type, const XString& key) const
{
    return extend(&type, key).asString();
}

const XExceptionItem* XExceptionItems::find(const XString* type, const XString& key) const
{
    for (const XExceptionItem& item : m_items) {
        if ((!type || item.type() == *type) && item.hasExtend(key))
            return &item;
    }
    return nullptr;
}

XExceptValue XExceptionItems::extend(const XString* type, const XString& key) const
{
    const XExceptionItem* item = find(type, key);
    return item ? item->extend(key) : XExceptValue();
}

} // namespace xstd
