#include "cell/pastedSource.h"
#include "cell/XCellEnv.h"
#include "cell/XCellScript.h"
#include "common/XTextForms.h"

#include <algorithm>
#include <memory>

namespace huge {

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

xstd::XString withoutReturns(const xstd::XString& field)
{
    xstd::XString text;
    text.reserve(field.size());
    for (size_t i = 0; i < field.size(); ++i) {
        if (field[i] != '\r' || i + 1 == field.size() || field[i + 1] != '\n')
            text += field[i];
    }
    return text;
}

/// Whether the text is an integer or a decimal number whose digits before the point are grouped in
/// threes by commas.
bool isGroupedNumber(const xstd::XString& text)
{
    size_t i = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
    const auto digits = [&] {
        const size_t begin = i;
        while (i < text.size() && isDigit(text[i]))
            ++i;
        return i - begin;
    };
    const size_t head = digits();
    if (head == 0 || head > 3)
        return false;
    size_t groups = 0;
    for (; i < text.size() && text[i] == ','; ++groups) {
        ++i;
        if (digits() != 3)
            return false;
    }
    if (i < text.size() && text[i] == '.') {
        ++i;
        digits();
    }
    return groups > 0 && i == text.size();
}

/// Whether a comma stands between digits, outside of brackets and quotes.
bool hasNumberComma(const xstd::XString& text)
{
    int depth = 0;
    char quote = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quote != 0) {
            if (c == '\\')
                ++i;
            else if (c == quote)
                quote = 0;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '(' || c == '[' || c == '{') {
            ++depth;
        } else if (c == ')' || c == ']' || c == '}') {
            --depth;
        } else if (c == ',' && depth == 0 && i > 0 && isDigit(text[i - 1]) && i + 1 < text.size() &&
                   isDigit(text[i + 1])) {
            return true;
        }
    }
    return false;
}

bool isWord(const xstd::XString& text)
{
    return !text.empty() && !isDigit(text[0]) && std::all_of(text.begin(), text.end(), [](char c) {
        return isDigit(c) || c == '_' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
               static_cast<unsigned char>(c) >= 0x80;
    });
}

/// Whether the text can be the source of a cell and means something: a word that nobody knows
/// evaluates to itself in lower case.
bool isSource(const xstd::XString& text)
{
    try {
        XCellScript script(text, 0, 0);
        script.compile();
        if (!script.ranges.empty() || !isWord(text))
            return true;
        const HugeVariant value = script.run(std::make_shared<XCellEnv>(nullptr));
        return !value.holds(HugeVarClass::String);
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace

xstd::XString pastedSource(const xstd::XString& field)
{
    const xstd::XString text = withoutReturns(field);
    if (text.empty() || text[0] == '=' || std::all_of(text.begin(), text.end(), isDigit))
        return text;
    xstd::XString bare = text;
    bare.trim_();
    if (isGroupedNumber(bare)) {
        xstd::XString number = bare;
        number.erase(std::remove(number.begin(), number.end(), ','), number.end());
        return number;
    }
    return hasNumberComma(text) || !isSource(bare) ? xstd::escapeText(text) : text;
}

} // namespace huge
