#pragma once

#include "common/XString.h"

#include <concepts>
#include <cstdint>
#include <exception>
#include <utility>
#include <variant>
#include <vector>

/// The place where it stands: file, line and function.
#define X_HERE                                                                                     \
    xstd::XSourceLocation                                                                          \
    {                                                                                              \
        __FILE__, __LINE__, __PRETTY_FUNCTION__                                                    \
    }

namespace xstd {

/// The value of one detail of a failure: nothing, an integer, a double or a text.
class XExceptValue {
public:
    XExceptValue() = default;
    XExceptValue(int64_t value) : m_value(value) {}
    XExceptValue(double value) : m_value(value) {}
    XExceptValue(XString value) : m_value(std::move(value)) {}

    bool isEmpty() const { return m_value.index() == 0; }
    bool isInt() const { return m_value.index() == 1; }
    bool isDouble() const { return m_value.index() == 2; }
    bool isString() const { return m_value.index() == 3; }

    /// Conversions; nothing gives 0 or an empty text, a text is read as far as it is a number. A
    /// double past the range of integers gives the nearest one, and 0 if it is no number.
    int64_t asInt64() const;
    double asDouble() const;
    XString asString() const;

private:
    std::variant<std::monostate, int64_t, double, XString> m_value;
};

/// Where in the source a failure was raised.
struct XSourceLocation {
    XString file;
    int32_t line = 0;
    XString func;

    XString toString() const;
    XString toHtml() const;
};

/// How a piece of text looks in HTML.
struct XTextStyle {
    XString family;
    uint8_t red = 0;
    uint8_t green = 0;
    uint8_t blue = 0;
    uint8_t alpha = 255;
    int32_t size = 12; // pixels
    bool bold = false;
    bool italic = false;
    bool underline = false;

    XString css() const;
};

/// The text in a span of that style. The text is put in as it stands: a caller that does not mean
/// markup escapes it first.
XString styledSpan(const XString& text, const XTextStyle& style);
/// The text with the characters that HTML gives a meaning to written as entities.
XString htmlEscaped(const XString& text);

/// One link of a chain of failures: which subsystem raised it, what it says, where, and details
/// under keys.
class XExceptionItem {
public:
    using Extend = std::pair<XString, XExceptValue>;

    XExceptionItem() = default;
    XExceptionItem(XSourceLocation location, XString type);
    /// Takes over the text of a caught exception, as type "exception".
    XExceptionItem(XSourceLocation location, const std::exception& failure);
    XExceptionItem(const XExceptionItem&) = default;
    XExceptionItem(XExceptionItem&&) noexcept = default;
    XExceptionItem& operator=(const XExceptionItem&) = default;
    XExceptionItem& operator=(XExceptionItem&&) noexcept = default;
    virtual ~XExceptionItem() = default;

    /// Sets a detail; a second value under a key takes the place of the first.
    virtual XExceptionItem& setExtend(const XString& key, const XExceptValue& value);
    virtual XExceptionItem& setExtend(const XString& key, const XString& value);
    virtual XExceptionItem& setExtend(const XString& key, double value);
    virtual XExceptionItem& setExtend(const XString& key, uint64_t value);
    virtual XExceptionItem& setExtend(const XString& key, int64_t value);
    virtual XExceptionItem& setExtend(const XString& key, int32_t value);
    XExceptionItem& setExtend(const XString& key, const char* value);
    /// The integer types without an overload of their own.
    template <std::integral T>
    XExceptionItem& setExtend(const XString& key, T value)
    {
        return setExtend(key, XExceptValue(static_cast<int64_t>(value)));
    }
    /// The value under the key, an empty one if there is none.
    virtual XExceptValue extend(const XString& key) const;
    virtual XExceptionItem& setType(const XString& type);
    virtual XString type() const { return m_type; }
    virtual XExceptionItem& setDetail(const XString& detail);
    virtual XString detail() const { return m_detail; }
    virtual XExceptionItem& setMess(const XString& mess);
    virtual XString mess() const { return m_mess; }
    /// Message, type, detail and details, a line each; what is empty is left out.
    virtual XString toString() const;
    virtual XString toHtml() const;

    bool hasExtend(const XString& key) const { return find(key) != nullptr; }
    bool extendIsInt(const XString& key) const { return extend(key).isInt(); }
    bool extendIsDouble(const XString& key) const { return extend(key).isDouble(); }
    bool extendIsString(const XString& key) const { return extend(key).isString(); }
    int64_t extendInt(const XString& key) const { return extend(key).asInt64(); }
    double extendDouble(const XString& key) const { return extend(key).asDouble(); }
    XString extendText(const XString& key) const { return extend(key).asString(); }
    const std::vector<Extend>& extendList() const { return m_extend; }
    const XSourceLocation& location() const { return m_location; }

private:
    const XExceptValue* find(const XString& key) const;

    XString m_type;
    XString m_mess;
    XString m_detail;
    XSourceLocation m_location;
    std::vector<Extend> m_extend;
};

/// What the program's own code throws: a chain of items, the cause first. A level that knows more
/// adds an item and throws the chain on. What it keeps is bounded, because the failure of one cell
/// becomes part of the failure of each cell that reads it: items beyond maxItems are dropped, and
/// the text ends at maxText bytes.
class XExceptionItems : public std::exception {
public:
    static constexpr size_t maxItems = 100;
    static constexpr size_t maxText = 65536;

    XExceptionItems() = default;
    ~XExceptionItems() override = default;
    XExceptionItems(const XExceptionItems&) = default;
    XExceptionItems& operator=(const XExceptionItems&) = default;

    /// The texts of all items, a line feed between them.
    const char* what() const noexcept override { return m_text.c_str(); }
    virtual XString toString() const;

    XExceptionItems& add(const XExceptionItem& item);
    XString toHtml() const;
    /// The first message of the chain that is not empty.
    XString mess() const;

    /// Details, looked for in all items, or in those of one type; the first that has the key
    /// counts.
    bool has(const XString& key) const { return find(nullptr, key) != nullptr; }
    bool has(const XString& type, const XString& key) const { return find(&type, key) != nullptr; }
    int64_t extendInt(const XString& key) const { return extend(nullptr, key).asInt64(); }
    double extendDouble(const XString& key) const { return extend(nullptr, key).asDouble(); }
    XString extendText(const XString& key) const { return extend(nullptr, key).asString(); }
    int64_t extendInt(const XString& type, const XString& key) const;
    double extendDouble(const XString& type, const XString& key) const;
    XString extendText(const XString& type, const XString& key) const;
    const std::vector<XExceptionItem>& items() const { return m_items; }

private:
    const XExceptionItem* find(const XString* type, const XString& key) const;
    XExceptValue extend(const XString* type, const XString& key) const;

    std::vector<XExceptionItem> m_items;
    XString m_text;
};

} // namespace xstd
