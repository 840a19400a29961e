#pragma once

#include "common/XCharSet.h"
#include "common/XException.h"
#include "common/XString.h"

#include <cstdint>
#include <vector>

namespace xstd {

/// A position of a scanner.
struct XTextCursor {
    int32_t row = 0;      // line breaks passed
    int32_t rowStart = 0; // byte position of the line's first byte
    int32_t pos = 0;      // byte position
    int32_t charPos = 0;  // characters passed

    int32_t line() const { return row + 1; }
    int32_t column() const { return pos - rowStart; }
};

/// What a token is.
enum XTokenType : uint32_t {
    tokenNull = 0,
    tokenOperator = 1,
    tokenBool = 2,
    tokenInteger = 3,
    tokenFloat = 4,
    tokenImag = 5,
    tokenString = 6,
    tokenLabel = 7
};

/// A piece of a text: what it says (a string already unescaped), what it is, where it stands.
struct XToken {
    XString text;
    uint32_t type = tokenNull;
    XTextCursor cursor;
    int32_t size = 0; // bytes of source that it covers

    XToken() = default;
    XToken(XString tokenText, uint32_t tokenType, const XTextCursor& place)
        : text(std::move(tokenText)), type(tokenType), cursor(place)
    {}
    XToken(const XToken&) = default;
    XToken(XToken&&) noexcept = default;
    XToken& operator=(const XToken&) = default;
    XToken& operator=(XToken&&) noexcept = default;
    virtual ~XToken() = default;

    XString toString() const;
    const char* typeName() const;
    bool isTrue() const { return type == tokenBool && text == "true"; }
};

/// The character-level scanner: a cursor over a text that knows row, column and byte, and every
/// low-level step that a reader of text needs. A reader derives from it and replaces what a blank,
/// a label, a token or a failure is. Steps that track lines move over a character of UTF-8 by its
/// real length; counted steps move byte by byte.
class XStringDecoder {
public:
    XStringDecoder() = default;
    /// Holds a copy of the text, of at most 2^31 - 1 bytes; a longer one is refused through raise.
    explicit XStringDecoder(const XString& text) { setText(text); }
    XStringDecoder(const XStringDecoder&) = default;
    XStringDecoder& operator=(const XStringDecoder&) = default;
    virtual ~XStringDecoder() = default;

    /// Replaces the text and starts at its beginning; saved cursors stay.
    void setText(const XString& text);
    const XString& text() const { return m_text; }
    int32_t size() const { return m_size; }

    virtual bool isEnd() const { return m_cursor.pos >= m_size; }
    virtual int32_t newLines() const { return m_newLines; }
    virtual XStringDecoder& clearNewLines();
    /// The byte at the cursor, 0 at the end.
    virtual char current() const { return isEnd() ? '\0' : m_text[at()]; }
    virtual bool isIn(const XCharSet& set) const { return !isEnd() && set.has(current()); }
    virtual bool isText(const XString& text) const;
    virtual bool isBytes(const char* bytes, int32_t count) const;
    virtual bool isCStr(const char* text) const;
    virtual bool isChar(char c) const { return !isEnd() && current() == c; }

    /// Position of the first occurrence at or behind the cursor, or -1; with `sameLine` none behind
    /// the end of the line counts. The cursor does not move.
    virtual int32_t find(const XString& text, bool sameLine) const;
    virtual int32_t find(const char* text, bool sameLine) const;
    virtual int32_t find(const char* text, int32_t length, bool sameLine) const;
    virtual int32_t findChar(char c, bool sameLine) const;

    virtual const XTextCursor& cursor() const { return m_cursor; }
    virtual XTextCursor& cursor() { return m_cursor; }
    /// A stack of saved cursors.
    virtual void pushCursor(const XTextCursor& cursor) { m_saved.push_back(cursor); }
    virtual void pushCursor() { m_saved.push_back(m_cursor); }
    virtual void popCursor();
    /// Moves to the cursor saved last and drops it; false if there is none.
    virtual bool restoreCursor();
    virtual void setCursor(const XTextCursor& cursor) { m_cursor = cursor; }

    /// Moves n characters on, tracking lines, at most to the end.
    virtual void skip(int32_t n);
    /// Moves one byte on, tracking lines; returns the characters passed.
    virtual int32_t nextChar();
    // The following return the bytes skipped.
    virtual int32_t skipSpace();
    virtual int32_t skipLine();
    virtual int32_t skipHexDigits();
    virtual int32_t skipOctDigits();
    virtual int32_t skipBinDigits();
    virtual int32_t skipDecDigits();
    virtual int32_t skipLabelChars();
    /// From one quote, which may be any byte, over the next one like it that no backslash escapes.
    virtual int32_t skipString();
    /// What separates tokens; subclasses add comments.
    virtual int32_t skipBlank() { return skipSpace(); }
    virtual int32_t skipCharset(const XCharSet& set);
    virtual int32_t skipUntilChar(char c);
    virtual int32_t skipUntilCharset(const XCharSet& set);
    virtual int32_t skipUntilString(const XString& text);

    /// The text between two byte positions, from the cursor to one, of the next n bytes, which it
    /// moves over; of what a skipUntil passes.
    virtual XString substr(int32_t begin, int32_t end) const;
    virtual XString substrTo(int32_t end) const { return substr(m_cursor.pos, end); }
    virtual XString take(int32_t n);
    virtual XString takeUntilChar(char c);
    virtual XString takeUntilCharset(const XCharSet& set);
    virtual XString takeUntilString(const XString& text);

    /// From `open`, if it stands here, over the next `close`, both included; else a null token.
    virtual XToken getBetween(const XString& open, const XString& close);
    virtual XToken getBetweenChars(char open, char close);
    /// A quoted text; further ones with the same quote and blanks between belong to it.
    virtual XToken getString();
    virtual XToken getLabel();
    virtual XToken getNumber();
    virtual XToken next();

    /// "row: %d, col: %d" of the cursor, or of a byte position in its line.
    virtual XString positionText(int32_t pos = 0) const;
    virtual XString messageAt(const XString& message, int32_t pos = 0) const;
    virtual XToken makeToken(uint32_t type) const { return {XString(), type, m_cursor}; }
    /// Throws the failure of this reader, with the place in it.
    [[noreturn]] virtual void raise(const XSourceLocation& location, const XString& message,
                                    int32_t pos = 0) const;

protected:
    /// The item that raise throws, for a reader that only changes type and names of the keys:
    /// `prefix` stands before Pos, Line and Col.
    XExceptionItem failureItem(const XSourceLocation& location, const XString& type,
                               const XString& prefix, const XString& message, int32_t pos) const;

private:
    size_t at() const { return static_cast<size_t>(m_cursor.pos); }
    void step();
    template <class Goes>
    int32_t skipCounted(Goes goes);
    template <class Goes>
    int32_t skipTracked(Goes goes);
    int32_t appendStringPart(XString& text);

    XString m_text;
    int32_t m_size = 0;
    std::vector<XTextCursor> m_saved;
    XTextCursor m_cursor;
    int32_t m_newLines = 0;
};

} // namespace xstd
