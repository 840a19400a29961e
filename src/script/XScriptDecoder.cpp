#include "script/XScriptDecoder.h"

#include <algorithm>
#include <string_view>

namespace huge {

namespace {

constexpr std::string_view threeByteOperators[] = {"**=", ">>=", "<<=", "^|="};
constexpr std::string_view twoByteOperators[] = {"*=", "**", ">=", ">>", "<=", "<<",
                                                 "^=", "^|", "==", "+=", "-=", "/=",
                                                 "%=", "!=", "|=", "||", "&=", "&&"};
constexpr std::string_view oneByteOperators = "~()[]{}?,;.:#*><^=+-/%!|&";

template <size_t N>
bool contains(const std::string_view (&operators)[N], std::string_view text)
{
    return std::find(std::begin(operators), std::end(operators), text) != std::end(operators);
}

/// The length of the longest operator that the text begins with, 0 for none.
int32_t operatorLength(std::string_view text)
{
    if (text.size() >= 3 && contains(threeByteOperators, text.substr(0, 3)))
        return 3;
    if (text.size() >= 2 && contains(twoByteOperators, text.substr(0, 2)))
        return 2;
    return !text.empty() && oneByteOperators.find(text[0]) != std::string_view::npos ? 1 : 0;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isLabelStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '@' || c == '$';
}

bool isLabelByte(char c)
{
    return isLabelStart(c) || isDigit(c);
}

} // namespace

XScriptDecoder::XScriptDecoder(const xstd::XString& text) : XStringDecoder(text) {}

int32_t XScriptDecoder::skipBlank()
{
    const int32_t begin = cursor().pos;
    skipSpace();
    for (;;) {
        if (isBytes("//", 2)) {
            skipLine();
        } else if (isBytes("/*", 2)) {
            skip(2); // a lone "/*/" is not its own end
            skipUntilString("*/");
            skip(2);
        } else {
            return cursor().pos - begin;
        }
        skipSpace();
    }
}

xstd::XToken XScriptDecoder::getLabel()
{
    xstd::XToken token = makeToken(xstd::tokenLabel);
    int32_t end = token.cursor.pos;
    while (end < size() && isLabelByte(text()[static_cast<size_t>(end)]))
        ++end;
    token.size = end - token.cursor.pos;
    token.text = take(token.size);
    return token;
}

xstd::XToken XScriptDecoder::next()
{
    skipBlank();
    if (isEnd())
        return makeToken(xstd::tokenNull);
    const char first = current();
    if (isDigit(first))
        return getNumber();
    if (first == '"' || first == '\'')
        return getString();
    if (isLabelStart(first))
        return getLabel();
    xstd::XToken token = makeToken(xstd::tokenOperator);
    const size_t begin = static_cast<size_t>(cursor().pos);
    token.size = operatorLength(std::string_view(text()).substr(begin, 3));
    if (token.size == 0) {
        ++cursor().pos;
        ++cursor().charPos;
        raise(X_HERE, xstd::XString("Unrecognized operator '") + first + "'");
    }
    token.text = take(token.size);
    return token;
}

void XScriptDecoder::raise(const xstd::XSourceLocation& location, const xstd::XString& message,
                           int32_t pos) const
{
    throw xstd::XExceptionItems().add(failureItem(location, "compile", "script", message, pos));
}

} // namespace huge
