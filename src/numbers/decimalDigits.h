#pragma once

#include "common/XString.h"
#include "numbers/HugeFloat.h"

#include <cstdint>

namespace huge {

/// A decimal number 0.d1 d2 d3... * 10^point; neither the first nor the last digit is 0. Zero has
/// no digits.
struct DecimalDigits {
    xstd::XString digits;
    int64_t point = 0;

    static DecimalDigits fromInteger(const HugeInteger& value);
    /// Rounds half up to so many places behind the point.
    void round_(int64_t places);
    /// Cuts behind so many places.
    void truncate_(int64_t places);
    /// The digit at a place behind the point, counted from 1.
    char digitAt(int64_t place) const noexcept;
    /// The digits in front of the point, none for a number below 1, and those behind it.
    xstd::XString integerPart() const;
    xstd::XString fraction() const;
};

/// The shortest decimal that, read with the limbs of x and truncated to them, gives |x| again, and
/// of several the one nearest to |x|. x is not 0. The time does not depend on the exponent. Of a
/// number within ten limbs of the limit the last few limbs are left out: there is no room to work
/// on them.
DecimalDigits shortestDecimal(const HugeFloat& x);

} // namespace huge
