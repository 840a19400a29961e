#pragma once

#include "numbers/HugeInteger.h"

#include <cstddef>

namespace huge {

/// Pairs of at least this many limbs are taken down by halfGcd. Measured.
constexpr size_t halfGcdLimbs = 200;

/// Steps of Euclid's algorithm taken together, entries not negative and of determinant 1: the pair
/// before is the matrix times the pair after.
struct EuclidMatrix {
    HugeInteger m00{1}, m01{0}, m10{0}, m11{1};

    bool isOne() const { return m01.isZero() && m10.isZero(); }
    /// x and y, the pair before, become the pair after. They may be negative: whatever goes along
    /// with the pair is taken along by the same call.
    void takeOff(HugeInteger& x, HugeInteger& y) const;
};

/// Takes steps of Euclid's algorithm off the pair x, y of natural numbers as long as both stay
/// above 2^(64 s), s being half of the limbs of the longer one, and one more. The steps may differ
/// from those of plain divisions: the numbers are in no order afterwards. Gives the steps. They are
/// found on the upper halves first, and the rest is brought up by products (Möller, On Schönhage's
/// algorithm and subquadratic integer gcd computation, 2008). Cost: that of a product times the
/// logarithm of the length. Looks for a stop of the calculation.
EuclidMatrix halfGcd(HugeInteger& x, HugeInteger& y);

/// The same for the upper limbs from cut on, and the pair brought up as a whole.
EuclidMatrix halfGcdAbove(HugeInteger& x, HugeInteger& y, size_t cut);

} // namespace huge
