#pragma once

#include "cell/XCellRangeRef.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <vector>

/// How a piece of a script is shown. The numbers are those of the editor's formats.
enum class XScriptStyle : uint8_t {
    Other = 0,
    Keyword = 1,
    Reference = 2,
    HoveredReference = 3,
    Identifier = 4,
    Member = 5,
    Reserved = 6,
    Real = 7,
    Integer = 8,
    Assignment = 9,
    Imaginary = 10,
    Operator = 11,
    Bracket = 12,
    String = 13,
    ActiveBracket = 14,
    Error = 15,
    Comment = 16
};
constexpr int scriptStyleCount = 17;

/// An opening and a closing bracket of a script, by their places in the document; -1 for one that
/// is missing.
struct XBracketPair {
    int32_t left = -1;
    int32_t right = -1;
    char kind = 0;        ///< '(', '[' or '{'; 0 for no pair at all
    bool matched = false; ///< correctly closed
    QString name;         ///< the word in front of the opening one, with the "." in front of that

    bool operator==(const XBracketPair&) const = default;
};

/// What a script editor has to know of its text, from one pass over the tokens. A text that is no
/// script is read as far as it goes. Places are characters of the document, but for those of the
/// references, which are bytes of the UTF-8 text, as the engine and the grid count them.
class XScriptScan {
public:
    struct Span {
        int begin;
        int length;
        XScriptStyle style;
    };

    explicit XScriptScan(const QString& text = QString());

    /// In rising order and without gaps but for blanks that nothing is behind.
    const std::vector<Span>& spans() const { return m_spans; }
    /// Those that are closed stand in the order of their closing, so inner ones come first; the
    /// ones that are not closed stand last.
    const std::vector<XBracketPair>& brackets() const { return m_brackets; }
    const std::vector<huge::XCellRangeRef>& references() const { return m_references; }

    /// The place in the document of a byte of the text, and the other way.
    int placeOf(int byte) const;
    int byteOf(int place) const;

private:
    void addBracket(std::vector<XBracketPair>& open, char bracket, int place, const QString& name);

    QString m_text;
    QByteArray m_bytes;
    std::vector<Span> m_spans;
    std::vector<XBracketPair> m_brackets;
    std::vector<huge::XCellRangeRef> m_references;
};

/// The word characters of scripts: letters, digits, "_", "$" and ":", so that a whole reference is
/// one word.
bool isScriptWordCharacter(QChar c);
bool isScriptIdentifier(const QString& word);
/// Whether the word is one cell or range and nothing else; `out` gets it, without its place.
bool readScriptReference(const QString& word, huge::XCellRangeRef* out = nullptr);
