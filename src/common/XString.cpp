#include "common/XString.h"

#include "common/XCharSet.h"
#include "common/XTextForms.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>

namespace xstd {

namespace {

bool isBlank(char c)
{
    return static_cast<uint8_t>(c) <= 32;
}

template <class Goes>
void trimLeftWhere(XString& text, Goes goes)
{
    text.erase(text.begin(), std::find_if_not(text.begin(), text.end(), goes));
}

template <class Goes>
void trimRightWhere(XString& text, Goes goes)
{
    text.erase(std::find_if_not(text.rbegin(), text.rend(), goes).base(), text.end());
}

template <class Goes>
void removeWhere(XString& text, Goes goes)
{
    text.erase(std::remove_if(text.begin(), text.end(), goes), text.end());
}

auto isBlankOrIn(const XCharSet& set)
{
    return [&set](char c) { return isBlank(c) || set.has(c); };
}

char toUpper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

char toLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

} // namespace

XString& XString::trim_()
{
    return trimRight_().trimLeft_();
}

XString& XString::trimLeft_()
{
    trimLeftWhere(*this, isBlank);
    return *this;
}

XString& XString::trimRight_()
{
    trimRightWhere(*this, isBlank);
    return *this;
}

XString& XString::trim_(const XCharSet& set)
{
    return trimRight_(set).trimLeft_(set);
}

XString& XString::trimLeft_(const XCharSet& set)
{
    trimLeftWhere(*this, isBlankOrIn(set));
    return *this;
}

XString& XString::trimRight_(const XCharSet& set)
{
    trimRightWhere(*this, isBlankOrIn(set));
    return *this;
}

XString& XString::upper_()
{
    std::transform(begin(), end(), begin(), toUpper);
    return *this;
}

XString& XString::lower_()
{
    std::transform(begin(), end(), begin(), toLower);
    return *this;
}

XString& XString::keep_(const XCharSet& set)
{
    removeWhere(*this, [&set](char c) { return !set.has(c); });
    return *this;
}

XString& XString::keep_(const XString& chars)
{
    return keep_(XCharSet(chars));
}

XString& XString::remove_(const XCharSet& set)
{
    removeWhere(*this, [&set](char c) { return set.has(c); });
    return *this;
}

XString& XString::remove_(const XString& chars)
{
    return remove_(XCharSet(chars));
}

XString& XString::removeBlanks_()
{
    removeWhere(*this, isBlank);
    return *this;
}

XString& XString::removeSuffix_(const XString& suffix)
{
    if (size() >= suffix.size() && compare(size() - suffix.size(), npos, suffix) == 0)
        resize(size() - suffix.size());
    return *this;
}

XString& XString::appendPath_(const XString& path)
{
    if (empty() || (back() != '/' && back() != '\\'))
        push_back('/');
    append(path);
    return *this;
}

XString XString::left(size_t n) const
{
    return substr(0, n);
}

XString XString::right(size_t n) const
{
    return n >= size() ? *this : XString(substr(size() - n));
}

XString XString::leadingIn(const XCharSet& set) const
{
    const auto last = std::find_if_not(begin(), end(), [&](char c) { return set.has(c); });
    return std::string(begin(), last);
}

XString XString::trailingIn(const XCharSet& set) const
{
    const auto first = std::find_if_not(rbegin(), rend(), [&](char c) { return set.has(c); });
    return std::string(first.base(), end());
}

XString XString::between(const XString& open, const XString& close) const
{
    const size_t opened = open.empty() ? npos : find(open);
    const size_t closed = close.empty() ? npos : rfind(close);
    const size_t first = opened == npos ? 0 : opened + open.size();
    const size_t last = closed == npos ? size() : closed;
    return first < last ? XString(substr(first, last - first)) : XString();
}

XString XString::center(size_t width, char fill) const
{
    if (size() >= width)
        return left(width);
    const size_t front = (width - size()) / 2;
    return XString(front, fill) + *this + XString(width - size() - front, fill);
}

XString XString::alignRight(size_t width, char fill) const
{
    return size() >= width ? *this : XString(XString(width - size(), fill) + *this);
}

XString XString::alignLeft(size_t width, char fill) const
{
    return size() >= width ? *this : XString(*this + XString(width - size(), fill));
}

int64_t XString::findFirstIn(const XCharSet& set, size_t start) const
{
    for (size_t i = start; i < size(); ++i) {
        if (set.has((*this)[i]))
            return static_cast<int64_t>(i);
    }
    return -1;
}

int64_t XString::findLastIn(const XCharSet& set, size_t start) const
{
    const size_t last = start == 0 || start >= size() ? size() : start + 1;
    for (size_t i = last; i-- > 0;) {
        if (set.has((*this)[i]))
            return static_cast<int64_t>(i);
    }
    return -1;
}

bool XString::isUtf8() const
{
    return isUtf8Text(c_str());
}

bool XString::isGbk() const
{
    return isGbkText(c_str());
}

bool XString::isIntegerText(bool signAllowed) const
{
    const bool hasSign = signAllowed && !empty() && (front() == '+' || front() == '-');
    return size() > (hasSign ? 1 : 0) && std::all_of(begin() + (hasSign ? 1 : 0), end(), isDigit);
}

bool XString::isFloatText() const
{
    const size_t mark = find_first_of("Ee");
    const XString number = substr(0, mark);
    if (mark != npos && !XString(substr(mark + 1)).isIntegerText(true))
        return false;
    const size_t point = number.find('.');
    if (point == npos)
        return number.isIntegerText(true);
    return XString(number.substr(0, point)).isIntegerText(true) &&
           XString(number.substr(point + 1)).isIntegerText(false);
}

bool XString::isHexText() const
{
    const auto isAlnum = [](char c) { return isDigit(c) || toUpper(c) != toLower(c); };
    return size() > 2 && (*this)[0] == '0' && toLower((*this)[1]) == 'x' &&
           std::all_of(begin() + 2, end(), isAlnum);
}

std::vector<XString> XString::split(char separator) const
{
    return split(XString(1, separator));
}

std::vector<XString> XString::split(const XString& separator) const
{
    std::vector<XString> pieces;
    if (separator.empty())
        return {*this};
    size_t first = 0;
    for (size_t next; (next = find(separator, first)) != npos; first = next + separator.size())
        pieces.push_back(substr(first, next - first));
    pieces.push_back(substr(first));
    return pieces;
}

XString format(const char* fmt, ...)
{
    char buffer[4096];
    va_list args;
    va_start(args, fmt);
    va_list again;
    va_copy(again, args);
    const int length = std::vsnprintf(buffer, sizeof buffer, fmt, args);
    va_end(args);
    XString text;
    if (length >= 0 && static_cast<size_t>(length) < sizeof buffer) {
        text.assign(buffer, static_cast<size_t>(length));
    } else if (length >= 0) {
        text.resize(static_cast<size_t>(length) + 1);
        std::vsnprintf(text.data(), text.size(), fmt, again);
        text.pop_back();
    }
    va_end(again);
    return text;
}

} // namespace xstd
