#pragma once

#include "numbers/HugeFloat.h"
#include "values/HugeVariant.h"

#include <cstdint>

namespace huge {

// What integers and floats have in common: operations on a real number whose result may be a
// complex value.

/// The power on the limbs of the base. A negative base gives a complex value, whatever the
/// exponent.
HugeVariant realPower(const HugeFloat& base, const HugeFloat& exponent);

/// The square root, complex for a negative value.
HugeVariant realSqrt(const HugeFloat& x);

/// Logarithms: complex for a negative value, and for a negative or complex base. Zero throws
/// std::runtime_error "Zero can't be log".
HugeVariant realLn(const HugeFloat& x);
HugeVariant realLog(const HugeFloat& x, const HugeVariant& base);

/// The value cut to, or filled up to, so many limbs. Throws std::runtime_error "The precision must
/// be at least 1" or the limit's text.
HugeFloat toPrecision(const HugeFloat& x, int64_t limbCount);

} // namespace huge
