#include "XScriptScan.h"

#include "cell/XCellDecoder.h"
#include "qtText.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace {

template <size_t n>
bool isOneOf(const std::array<std::string_view, n>& words, const xstd::XString& word)
{
    return std::find(words.begin(), words.end(), std::string_view(word)) != words.end();
}

constexpr std::array<std::string_view, 9> keywords = {"if",       "else",  "iif", "for",   "var",
                                                      "continue", "break", "ret", "return"};
constexpr std::array<std::string_view, 9> assignments = {
    "=", "+=", "*=", "/=", "-=", "%=", "&=", "|=", "^="};

bool isBracket(const xstd::XString& text)
{
    return text.size() == 1 && std::string_view("()[]{}").find(text[0]) != std::string_view::npos;
}

char openingOf(char bracket)
{
    return bracket == ')' ? '(' : bracket == ']' ? '[' : bracket == '}' ? '{' : bracket;
}

XScriptStyle styleOf(const xstd::XToken& token, bool isReference, bool isMember)
{
    switch (token.type) {
    case xstd::tokenLabel:
        return isReference                     ? XScriptStyle::Reference
               : isOneOf(keywords, token.text) ? XScriptStyle::Keyword
               : isMember                      ? XScriptStyle::Member
                                               : XScriptStyle::Identifier;
    case xstd::tokenOperator:
        return isBracket(token.text)              ? XScriptStyle::Bracket
               : isOneOf(assignments, token.text) ? XScriptStyle::Assignment
                                                  : XScriptStyle::Operator;
    case xstd::tokenInteger:
        return XScriptStyle::Integer;
    case xstd::tokenFloat:
        return XScriptStyle::Real;
    case xstd::tokenImag:
        return XScriptStyle::Imaginary;
    case xstd::tokenString:
        return XScriptStyle::String;
    default:
        return XScriptStyle::Other;
    }
}

/// Walks along bytes and characters at once: each token costs its own length.
class PlaceWalk {
public:
    explicit PlaceWalk(const QByteArray& bytes) : m_bytes(bytes) {}

    int at(int byte)
    {
        m_place += QString::fromUtf8(m_bytes.constData() + m_byte, byte - m_byte).size();
        m_byte = byte;
        return m_place;
    }

private:
    const QByteArray& m_bytes;
    int m_byte = 0;
    int m_place = 0;
};

} // namespace

bool isScriptWordCharacter(QChar c)
{
    const ushort u = c.unicode();
    return (u >= 'A' && u <= 'Z') || (u >= 'a' && u <= 'z') || (u >= '0' && u <= '9') || u == '_' ||
           u == '$' || u == ':';
}

bool isScriptIdentifier(const QString& word)
{
    static const QRegularExpression form("^[A-Za-z_][A-Za-z0-9_]*$");
    return form.match(word).hasMatch();
}

bool readScriptReference(const QString& word, huge::XCellRangeRef* out)
{
    static const QRegularExpression form("^\\$?[A-Z]+\\$?[0-9]+(:\\$?[A-Z]+\\$?[0-9]+)?$");
    huge::XCellRangeRef reference;
    if (!form.match(word).hasMatch() || !huge::XCellRangeRef::parse(toXString(word), reference) ||
        !reference.isCell())
        return false;
    if (out)
        *out = reference;
    return true;
}

XScriptScan::XScriptScan(const QString& text) : m_text(text), m_bytes(text.toUtf8())
{
    PlaceWalk places(m_bytes);
    std::vector<XBracketPair> open;
    QString lastName;
    bool afterPoint = false;
    int end = 0; // of the last token
    const auto addSpan = [&](int to, XScriptStyle style) {
        if (to > end)
            m_spans.push_back({end, to - end, style});
        end = std::max(end, to);
    };
    huge::XCellDecoder decoder(toXString(text));
    try {
        for (;;) {
            const xstd::XToken token = decoder.next();
            if (token.type == xstd::tokenNull)
                break;
            const int begin = places.at(token.cursor.pos);
            addSpan(begin, XScriptStyle::Comment);
            huge::XCellRangeRef reference;
            const bool isReference = token.type == xstd::tokenLabel &&
                                     readScriptReference(toQString(token.text), &reference);
            if (isReference) {
                reference.textPos = token.cursor.pos;
                reference.textLen = static_cast<uint16_t>(token.text.size());
                m_references.push_back(reference);
            }
            if (token.type == xstd::tokenOperator && isBracket(token.text))
                addBracket(open, token.text[0], begin, lastName);
            lastName.clear();
            if (token.type == xstd::tokenLabel)
                lastName = (afterPoint ? "." : "") + toQString(token.text);
            addSpan(places.at(decoder.cursor().pos), styleOf(token, isReference, afterPoint));
            afterPoint = token.type == xstd::tokenOperator && token.text == ".";
        }
        addSpan(m_text.size(), XScriptStyle::Comment);
    } catch (const std::exception&) {
        // Behind what no token begins with nothing can be told.
        int failed = end;
        while (failed < m_text.size() && m_text[failed].isSpace())
            ++failed;
        addSpan(failed, XScriptStyle::Comment);
        addSpan(m_text.size(), XScriptStyle::Error);
    }
    // Inner ones first here too: the first pair around the cursor is the innermost.
    m_brackets.insert(m_brackets.end(), open.rbegin(), open.rend());
}

void XScriptScan::addBracket(std::vector<XBracketPair>& open, char bracket, int place,
                             const QString& name)
{
    const char kind = openingOf(bracket);
    if (kind == bracket) {
        open.push_back({place, -1, kind, false, name});
    } else if (open.empty()) {
        m_brackets.push_back({-1, place, kind, false, QString()});
    } else if (open.back().kind != kind) {
        m_brackets.push_back({open.back().left, place, kind, false, QString()});
    } else {
        XBracketPair pair = open.back();
        open.pop_back();
        pair.right = place;
        pair.matched = true;
        m_brackets.push_back(pair);
    }
}

int XScriptScan::placeOf(int byte) const
{
    return QString::fromUtf8(m_bytes.left(byte)).size();
}

int XScriptScan::byteOf(int place) const
{
    return m_text.left(place).toUtf8().size();
}
