#pragma once

#include "common/XString.h"

#include <cstdint>

namespace xstd {

/// The split form of a number literal: what stands before and behind the point, the exponent, the
/// precision, without the digit separators ' and _.
struct XNumberText {
    XString intPart;
    XString mantissa;
    XString exponent;
    XString precision;
    int8_t radix = 10; // 10, 2, 8 or 16
    bool imag = false;
    bool negative = false;
    int32_t size = 0; // bytes of the input that the number takes

    /// Reads the number at the start of `text`, blanks in front skipped.
    static XNumberText parse(const char* text, size_t length);
    static XNumberText parse(const XString& text) { return parse(text.data(), text.size()); }

    /// The literal without separators and blanks; empty if it has no digits.
    XString normalText() const;
    /// The precision, in the radix of the literal, as a number if there is one, otherwise the limbs
    /// that the digits need. A precision of too many digits gives the largest number there is.
    int64_t toInt64() const;
    /// The number as a 64-bit integer; false, and value is left alone, where it has a fraction or
    /// does not fit. Without digits it is 0.
    bool toInteger(int64_t& value) const;
    /// The nearest double; infinite beyond its range.
    double toDouble() const;
    bool isEmpty() const { return intPart.empty() && mantissa.empty(); }
};

} // namespace xstd
