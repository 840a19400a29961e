#include "common/XStringDecoder.h"

#include "common/XNumberText.h"
#include "common/XTextForms.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace xstd {

namespace {

bool isDecDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

} // namespace

XString XToken::toString() const
{
    XString shown = text;
    if (type == tokenString)
        shown = "\"" + text + "\"";
    else if (type == tokenImag)
        shown = text + "i";
    return format("type: %s, token: ", typeName()) + shown +
           format(", line: %d, col: %d, pos: %d, size: %d", cursor.line(), cursor.column(),
                  cursor.pos, size);
}

const char* XToken::typeName() const
{
    static const char* const names[] = {"Null",  "Operator", "Bool",   "Integer",
                                        "float", "Imag",     "String", "Label"};
    return type <= tokenLabel ? names[type] : "Unknown";
}

void XStringDecoder::setText(const XString& text)
{
    m_cursor = {};
    m_newLines = 0;
    m_size = 0;
    m_text.clear();
    if (text.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max()))
        raise(X_HERE, "The text is too long");
    m_text = text;
    m_size = static_cast<int32_t>(text.size());
}

XStringDecoder& XStringDecoder::clearNewLines()
{
    m_newLines = 0;
    return *this;
}

bool XStringDecoder::isText(const XString& text) const
{
    return isBytes(text.data(), static_cast<int32_t>(text.size()));
}

bool XStringDecoder::isBytes(const char* bytes, int32_t count) const
{
    return count <= m_size - m_cursor.pos &&
           std::memcmp(m_text.data() + at(), bytes, static_cast<size_t>(count)) == 0;
}

bool XStringDecoder::isCStr(const char* text) const
{
    return isBytes(text, static_cast<int32_t>(std::strlen(text)));
}

int32_t XStringDecoder::find(const XString& text, bool sameLine) const
{
    return find(text.data(), static_cast<int32_t>(text.size()), sameLine);
}

int32_t XStringDecoder::find(const char* text, bool sameLine) const
{
    return find(text, static_cast<int32_t>(std::strlen(text)), sameLine);
}

int32_t XStringDecoder::find(const char* text, int32_t length, bool sameLine) const
{
    for (int32_t pos = m_cursor.pos; int64_t(pos) + length < m_size; ++pos) {
        if (std::memcmp(m_text.data() + pos, text, static_cast<size_t>(length)) == 0)
            return pos;
        if (sameLine && m_text[static_cast<size_t>(pos) + static_cast<size_t>(length)] == '\n')
            return -1;
    }
    return -1;
}

int32_t XStringDecoder::findChar(char c, bool sameLine) const
{
    for (int32_t pos = m_cursor.pos; pos < m_size; ++pos) {
        const char here = m_text[static_cast<size_t>(pos)];
        if (here == c)
            return pos;
        if (sameLine && here == '\n')
            return -1;
    }
    return -1;
}

void XStringDecoder::popCursor()
{
    if (!m_saved.empty())
        m_saved.pop_back();
}

bool XStringDecoder::restoreCursor()
{
    if (m_saved.empty())
        return false;
    m_cursor = m_saved.back();
    m_saved.pop_back();
    return true;
}

// One character on. A lead byte whose tail is cut short moves over what is there.
void XStringDecoder::step()
{
    const int length = utf8Length(m_text[at()]);
    XStringDecoder::nextChar();
    for (int i = 1; i < length && !isEnd() && (m_text[at()] & 0xC0) == 0x80; ++i)
        ++m_cursor.pos;
}

template <class Goes>
int32_t XStringDecoder::skipCounted(Goes goes)
{
    const int32_t start = m_cursor.pos;
    while (m_cursor.pos < m_size && goes(m_text[at()]))
        ++m_cursor.pos;
    m_cursor.charPos += m_cursor.pos - start;
    return m_cursor.pos - start;
}

template <class Goes>
int32_t XStringDecoder::skipTracked(Goes goes)
{
    const int32_t start = m_cursor.pos;
    while (m_cursor.pos < m_size && goes(m_text[at()]))
        step();
    return m_cursor.pos - start;
}

void XStringDecoder::skip(int32_t n)
{
    for (int32_t i = 0; i < n && !isEnd(); ++i)
        step();
}

int32_t XStringDecoder::nextChar()
{
    if (isEnd())
        return m_cursor.charPos;
    const char here = m_text[at()];
    ++m_cursor.pos;
    ++m_cursor.charPos;
    if (here == '\n') {
        ++m_cursor.row;
        ++m_newLines;
        m_cursor.rowStart = m_cursor.pos;
    }
    return m_cursor.charPos;
}

int32_t XStringDecoder::skipSpace()
{
    return skipTracked([](char c) { return static_cast<uint8_t>(c) <= 32; });
}

int32_t XStringDecoder::skipLine()
{
    const int32_t start = m_cursor.pos;
    skipTracked([](char c) { return c != '\n'; });
    skip(1);
    return m_cursor.pos - start;
}

int32_t XStringDecoder::skipHexDigits()
{
    return skipCounted([](char c) {
        return c == '\'' || isDecDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    });
}

int32_t XStringDecoder::skipOctDigits()
{
    return skipCounted([](char c) { return c == '\'' || (c >= '0' && c <= '7'); });
}

int32_t XStringDecoder::skipBinDigits()
{
    return skipCounted([](char c) { return c == '\'' || c == '0' || c == '1'; });
}

int32_t XStringDecoder::skipDecDigits()
{
    return skipCounted([](char c) { return c == '\'' || isDecDigit(c); });
}

int32_t XStringDecoder::skipLabelChars()
{
    return skipCounted([](char c) { return c == '_' || isDecDigit(c) || isLetter(c); });
}

int32_t XStringDecoder::skipString()
{
    const int32_t start = m_cursor.pos;
    const char quote = current();
    nextChar();
    while (!isEnd() && m_text[at()] != quote) {
        if (m_text[at()] == '\\')
            nextChar();
        if (!isEnd())
            step();
    }
    if (isEnd())
        raise(X_HERE, "Closing quote not found for string");
    nextChar();
    return m_cursor.pos - start;
}

int32_t XStringDecoder::skipCharset(const XCharSet& set)
{
    return skipTracked([&set](char c) { return set.has(c); });
}

int32_t XStringDecoder::skipUntilChar(char c)
{
    return skipTracked([c](char here) { return here != c; });
}

int32_t XStringDecoder::skipUntilCharset(const XCharSet& set)
{
    if (set.isEmpty())
        raise(X_HERE, "The parameter named '_chars' size is Zero");
    return skipTracked([&set](char c) { return !set.has(c); });
}

int32_t XStringDecoder::skipUntilString(const XString& text)
{
    if (text.empty())
        raise(X_HERE, "The parameter named _str size is Zero");
    const int32_t start = m_cursor.pos;
    const int32_t found = find(text, false);
    const int32_t end = found < 0 ? m_size : found;
    while (m_cursor.pos < end)
        step();
    return m_cursor.pos - start;
}

XString XStringDecoder::substr(int32_t begin, int32_t end) const
{
    begin = std::clamp(begin, 0, m_size);
    end = std::clamp(end, begin, m_size);
    return m_text.substr(static_cast<size_t>(begin), static_cast<size_t>(end - begin));
}

XString XStringDecoder::take(int32_t n)
{
    const int32_t end = m_cursor.pos + std::clamp(n, 0, m_size - m_cursor.pos);
    XString taken = substr(m_cursor.pos, end);
    while (m_cursor.pos < end)
        nextChar();
    return taken;
}

XString XStringDecoder::takeUntilChar(char c)
{
    const int32_t start = m_cursor.pos;
    skipUntilChar(c);
    return substr(start, m_cursor.pos);
}

XString XStringDecoder::takeUntilCharset(const XCharSet& set)
{
    const int32_t start = m_cursor.pos;
    skipUntilCharset(set);
    return substr(start, m_cursor.pos);
}

XString XStringDecoder::takeUntilString(const XString& text)
{
    const int32_t start = m_cursor.pos;
    skipUntilString(text);
    return substr(start, m_cursor.pos);
}

XToken XStringDecoder::getBetween(const XString& open, const XString& close)
{
    if (!isText(open))
        return makeToken(tokenNull);
    XToken token = makeToken(tokenString);
    take(static_cast<int32_t>(open.size()));
    skipUntilString(close);
    take(static_cast<int32_t>(close.size()));
    token.text = substr(token.cursor.pos, m_cursor.pos);
    token.size = m_cursor.pos - token.cursor.pos;
    return token;
}

XToken XStringDecoder::getBetweenChars(char open, char close)
{
    if (!isChar(open))
        return makeToken(tokenNull);
    XToken token = makeToken(tokenString);
    nextChar();
    skipUntilChar(close);
    skip(1);
    token.text = substr(token.cursor.pos, m_cursor.pos);
    token.size = m_cursor.pos - token.cursor.pos;
    return token;
}

// Appends the unescaped text between the quotes here, returns the position behind.
int32_t XStringDecoder::appendStringPart(XString& text)
{
    const int32_t start = m_cursor.pos;
    skipString();
    // The inner bytes get double quotes around them, so that unescaping takes off just these.
    text += unescapeText("\"" + substr(start + 1, m_cursor.pos - 1) + "\"");
    return m_cursor.pos;
}

XToken XStringDecoder::getString()
{
    XToken token = makeToken(tokenString);
    const char quote = current();
    int32_t end = appendStringPart(token.text);
    skipBlank();
    while (isChar(quote)) {
        end = appendStringPart(token.text);
        skipBlank();
    }
    token.size = end - token.cursor.pos;
    return token;
}

XToken XStringDecoder::getLabel()
{
    XToken token = makeToken(tokenLabel);
    token.size = skipLabelChars();
    token.text = substr(token.cursor.pos, m_cursor.pos);
    return token;
}

XToken XStringDecoder::getNumber()
{
    XToken token = makeToken(tokenInteger);
    const XNumberText number =
        XNumberText::parse(m_text.data() + at(), static_cast<size_t>(m_size - m_cursor.pos));
    m_cursor.pos += number.size;
    m_cursor.charPos += number.size;
    if (number.isEmpty())
        raise(X_HERE, "Here could be a number");
    if (number.imag)
        token.type = tokenImag;
    else if (!number.mantissa.empty())
        token.type = tokenFloat;
    token.text = number.normalText();
    token.size = number.size;
    return token;
}

XToken XStringDecoder::next()
{
    skipBlank();
    if (isEnd())
        return makeToken(tokenNull);
    const char here = current();
    if (here == '"' || here == '\'')
        return getString();
    if (isDecDigit(here))
        return getNumber();
    if (isLetter(here) || here == '_')
        return getLabel();
    XToken token = makeToken(tokenOperator);
    token.text = XString(1, here);
    token.size = 1;
    ++m_cursor.pos;
    ++m_cursor.charPos;
    return token;
}

XString XStringDecoder::positionText(int32_t pos) const
{
    return format("row: %d, col: %d", m_cursor.line(),
                  (pos != 0 ? pos : m_cursor.pos) - m_cursor.rowStart);
}

XString XStringDecoder::messageAt(const XString& message, int32_t pos) const
{
    return positionText(pos) + ": " + message;
}

void XStringDecoder::raise(const XSourceLocation& location, const XString& message,
                           int32_t pos) const
{
    throw XExceptionItems().add(failureItem(location, "stringDecoder", "string", message, pos));
}

XExceptionItem XStringDecoder::failureItem(const XSourceLocation& location, const XString& type,
                                           const XString& prefix, const XString& message,
                                           int32_t pos) const
{
    const int32_t place = pos != 0 ? pos : m_cursor.pos;
    return XExceptionItem(location, type)
        .setMess(message)
        .setExtend(prefix + "Pos", int64_t(place))
        .setExtend(prefix + "Line", m_cursor.line())
        .setExtend(prefix + "Col", place - m_cursor.rowStart);
}

} // namespace xstd
