#pragma once

#include "numbers/HugeFloat.h"
#include "numbers/HugeInteger.h"

#include <cstddef>

namespace huge {

// The elementary functions of a real number. Unless told otherwise a result has the limbs of the
// argument and an error of at most 2 units of its last place, for tiny and huge arguments too; a
// number without block counts as a zero of one limb. A result whose exponent leaves 32 bits fails
// as arithmetic does, before any long work. Long calculations look for a stop.
//
// The functions work with a guard limb and round to the nearest. Against MPFR, over some 470,000
// arguments at 1 to 1,000 limbs, from the smallest exponents to the largest, beside the zeros and
// at the ends of the domains, the largest error of every one of them is 0.500 units. Only a result
// that is a fraction of pi is cut as constPi is cut, up to 1 unit below: asin, acos and atan at 1,
// 0 and -1, and atan beyond its last place.

/// Constants of at least limbs limbs, truncated; a caller cuts them to what it needs. They are
/// kept, and calculated anew when more limbs are asked for, which ends the life of the former
/// value.
const HugeFloat& constPi(size_t limbs);
const HugeFloat& constE(size_t limbs);
const HugeFloat& constLog2E(size_t limbs);

/// Logarithms. A negative argument throws std::runtime_error "NegNumber can't be log", zero throws
/// "Zero can't be log". The logarithm of a power of two to base 2 is exact.
HugeFloat log2(const HugeFloat& x);
HugeFloat ln(const HugeFloat& x);
/// On the limbs of the longer operand. Base 1 throws "div by zero".
HugeFloat log(const HugeFloat& x, const HugeFloat& base);

/// 2^x on limbs limbs, 0 meaning those of x; exact for an integer.
HugeFloat exp2(const HugeFloat& x, size_t limbs = 0);
HugeFloat exp(const HugeFloat& x);
/// a^b for a positive a, on the limbs of a. An integer below 2^64 in size as b goes to powInt,
/// where a may be negative or zero; any other b fails for a negative a as a logarithm does. Zero to
/// a positive power is zero.
HugeFloat pow(const HugeFloat& a, const HugeFloat& b);
/// a^exponent for any a; a^0 is 1. Zero to a negative power throws "div by zero".
HugeFloat powInt(const HugeFloat& a, const HugeInteger& exponent);

/// The functions of an angle throw std::runtime_error "The angle is too large" from 2^1048576 on.
HugeFloat sin(const HugeFloat& x);
HugeFloat cos(const HugeFloat& x);
HugeFloat tan(const HugeFloat& x);
/// Both at the cost of one reduction of the angle.
void sinCos(const HugeFloat& x, HugeFloat& sine, HugeFloat& cosine);

/// Throws std::runtime_error "arcsin(x) only valid for -1<=x<=1"; acos too. The inverse sine of
/// zero has one limb.
HugeFloat asin(const HugeFloat& x);
HugeFloat acos(const HugeFloat& x);
HugeFloat atan(const HugeFloat& x);

HugeFloat sinh(const HugeFloat& x);
HugeFloat cosh(const HugeFloat& x);
HugeFloat tanh(const HugeFloat& x);
HugeFloat asinh(const HugeFloat& x);
/// Throws std::runtime_error "The definition domain of inverse hyperbolic cosine function is
/// [1, infinite)".
HugeFloat acosh(const HugeFloat& x);
/// Throws std::runtime_error "The definition domain of inverse hyperbolic tangent function is
/// (- 1,1)".
HugeFloat atanh(const HugeFloat& x);

} // namespace huge
