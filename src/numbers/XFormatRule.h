#pragma once

#include "common/XString.h"

#include <cstddef>
#include <cstdint>

namespace huge {

/// How a number is shown. A cell keeps one with its style, and every call that makes text of a
/// number takes one. It is stored in documents as it lies in memory: 8 bytes, these widths.
struct XFormatRule {
    int16_t length = -1;   ///< kept with the rule; number text does not read it
    int16_t mantissa = -1; ///< digits behind the point; negative means as many as the value has
    uint8_t radix = 10;    ///< 2, 8, 16, 58 for Base58, 64 for Base64; everything else is decimal
    uint8_t breakchar = 0; ///< separator of digit groups; 0 groups nothing
    uint8_t breaksize : 7 = 0;     ///< digits in a group; 0 takes what is usual for the radix
    uint8_t trimmant : 1 = 0;      ///< strips trailing zeros of the fraction
    uint8_t chinese : 1 = 0;       ///< kept with the rule; number text does not read it
    uint8_t percent : 1 = 0;       ///< decimal only: the value times 100, with "%" behind it
    uint8_t mod : 1 = 0;           ///< a residue shows its modulus
    uint8_t sign : 1 = 0;          ///< a minus is shown in radix 2, 8 and 16 too
    uint8_t dateTimeStyle : 4 = 0; ///< kept with the rule; number text does not read it

    bool operator==(const XFormatRule&) const = default;
};
static_assert(sizeof(XFormatRule) == 8, "documents hold the rule in 8 bytes");

/// The rule of a cell without style: decimal, as many digits as the value has.
inline constexpr XFormatRule defaultFormatRule{};

/// Digits in a group of an integer's or a fraction's digits.
size_t groupSize(const XFormatRule& rule) noexcept;

/// Groups the digits of an integer, counted from the right; no digits at all become "0".
xstd::XString groupInteger(const xstd::XString& digits, const XFormatRule& rule);

/// The digits behind a point as the rule asks: without zeros at the end, or exactly as many as it
/// tells, cut or filled up; grouped from the left.
xstd::XString groupFraction(const xstd::XString& digits, const XFormatRule& rule);

/// What zero and every integer show behind their digits: a point and zeros where the rule asks
/// for a fixed count of digits behind the point, else nothing.
xstd::XString decimalTail(const XFormatRule& rule);

/// Groups Base58 or Base64 text, counted from the left.
xstd::XString groupText(const XFormatRule& rule, const xstd::XString& text);

} // namespace huge
