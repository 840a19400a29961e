#include "numbers/XFormatRule.h"

#include <string>

namespace huge {

namespace {

/// Puts the separator behind every size characters, none at the end. first is the length of the
/// first group.
std::string joinGroups(const std::string& text, size_t first, size_t size, char separator)
{
    std::string result;
    result.reserve(text.size() + text.size() / size + 1);
    size_t end = first;
    for (size_t begin = 0; begin < text.size(); begin = end, end += size) {
        if (begin != 0)
            result += separator;
        result.append(text, begin, end - begin);
    }
    return result;
}

} // namespace

size_t groupSize(const XFormatRule& rule) noexcept
{
    if (rule.breaksize != 0)
        return rule.breaksize;
    return rule.radix == 2 ? 8 : rule.radix == 16 ? 4 : 3;
}

xstd::XString groupInteger(const xstd::XString& digits, const XFormatRule& rule)
{
    if (digits.empty())
        return "0";
    if (rule.breakchar == 0)
        return digits;
    const size_t size = groupSize(rule);
    const size_t first = (digits.size() - 1) % size + 1;
    return joinGroups(digits, first, size, char(rule.breakchar));
}

xstd::XString groupFraction(const xstd::XString& digits, const XFormatRule& rule)
{
    xstd::XString text = digits;
    if (rule.trimmant != 0 || rule.mantissa < 1)
        text.erase(text.find_last_not_of('0') + 1);
    else
        text.resize(size_t(rule.mantissa), '0');
    if (rule.breakchar == 0)
        return text;
    const size_t size = groupSize(rule);
    return joinGroups(text, size, size, char(rule.breakchar));
}

xstd::XString decimalTail(const XFormatRule& rule)
{
    const xstd::XString zeros = groupFraction("", rule);
    return zeros.empty() ? zeros : xstd::XString("." + zeros);
}

xstd::XString groupText(const XFormatRule& rule, const xstd::XString& text)
{
    if (rule.breakchar == 0)
        return text;
    size_t size = rule.breaksize;
    if (size == 0)
        size = rule.radix == 2 ? 8 : rule.radix == 8 ? 3 : 4;
    return joinGroups(text, size, size, char(rule.breakchar));
}

} // namespace huge
