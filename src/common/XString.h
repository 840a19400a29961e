#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace xstd {

class XCharSet;

/// The byte string of the whole engine, in practice UTF-8. Lengths and positions are in bytes. A
/// trailing underscore marks an operation that changes the string and returns it.
class XString : public std::string {
public:
    XString() = default;
    XString(const char* text) : std::string(text ? text : "") {}
    XString(const std::string& text) : std::string(text) {}
    XString(std::string&& text) noexcept : std::string(std::move(text)) {}
    XString(size_t count, char c) : std::string(count, c) {}
    XString(const XString&) = default;
    XString(XString&&) noexcept = default;
    XString& operator=(const XString&) = default;
    XString& operator=(XString&&) noexcept = default;
    virtual ~XString() = default;

    /// Removes blanks (bytes up to 32) at both ends, the start, the end.
    XString& trim_();
    XString& trimLeft_();
    XString& trimRight_();
    /// The same for blanks and members of the set, in any mixture.
    XString& trim_(const XCharSet& set);
    XString& trimLeft_(const XCharSet& set);
    XString& trimRight_(const XCharSet& set);
    /// ASCII letters only.
    XString& upper_();
    XString& lower_();
    /// Keeps, or removes, all members of the set, or of the set of the string's bytes.
    XString& keep_(const XCharSet& set);
    XString& keep_(const XString& chars);
    XString& remove_(const XCharSet& set);
    XString& remove_(const XString& chars);
    XString kept(const XCharSet& set) const { return XString(*this).keep_(set); }
    XString kept(const XString& chars) const { return XString(*this).keep_(chars); }
    XString removed(const XCharSet& set) const { return XString(*this).remove_(set); }
    XString removed(const XString& chars) const { return XString(*this).remove_(chars); }
    /// Removes every byte up to 32, anywhere.
    XString& removeBlanks_();
    /// Cuts the suffix off if the string ends with it.
    XString& removeSuffix_(const XString& suffix);
    /// Appends "/" unless the string ends in a slash or backslash, then the argument.
    XString& appendPath_(const XString& path);

    /// The first or last n bytes; the whole string when n is not smaller than its length.
    XString left(size_t n) const;
    XString right(size_t n) const;
    /// The longest prefix or suffix made of members of the set.
    XString leadingIn(const XCharSet& set) const;
    XString trailingIn(const XCharSet& set) const;
    /// The text behind the first `open` and before the last `close`. One that is empty or not found
    /// counts as the start or the end of the string.
    XString between(const XString& open, const XString& close) const;
    /// Pads to `width` bytes. A longer string stays whole, but center cuts it to `width`.
    XString center(size_t width, char fill) const;
    XString alignRight(size_t width, char fill) const;
    XString alignLeft(size_t width, char fill) const;
    /// Index of the first member of the set from `start` on, or of the last one at or before it
    /// (0 stands for the last byte); -1 if there is none.
    int64_t findFirstIn(const XCharSet& set, size_t start = 0) const;
    int64_t findLastIn(const XCharSet& set, size_t start = 0) const;

    bool isUtf8() const;
    bool isGbk() const;
    /// Only digits, with an optional sign in front where that is allowed.
    bool isIntegerText(bool signAllowed) const;
    /// An integer, a fraction, an exponent, each of them in turn.
    bool isFloatText() const;
    /// A 0x or 0X, then at least one letter or digit of ASCII and nothing else.
    bool isHexText() const;

    /// The pieces between the separators; an empty separator gives the whole string.
    std::vector<XString> split(char separator) const;
    std::vector<XString> split(const XString& separator) const;
};

/// A string that names a file.
class XFileName : public XString {
public:
    using XString::XString;
};

/// printf-style formatting, of any length.
XString format(const char* fmt, ...) __attribute__((format(printf, 1, 2)));

} // namespace xstd
