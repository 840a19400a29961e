#pragma once

#include "numbers/HugeInteger.h"

#include <cstddef>

namespace huge {

/// The greatest width of a window for an exponent of so many bits: a table of 2^(width - 1) odd
/// powers costs less than the products that it saves.
inline unsigned windowWidth(size_t bits) noexcept
{
    return bits > 671 ? 6 : bits > 239 ? 5 : bits > 79 ? 4 : bits > 23 ? 3 : bits > 6 ? 2 : 1;
}

/// Walks a positive exponent from its top bit down in windows that begin and end with a set bit
/// (Menezes, van Oorschot and Vanstone, Handbook of Applied Cryptography, 14.85). For each window
/// first square(count) is called and then multiply(i), which stands for the odd power 2 * i + 1;
/// zeros at the end are one last square(count). The first call of all is multiply: it sets.
template <class Square, class Multiply>
void walkWindows(const HugeInteger& exponent, unsigned width, Square square, Multiply multiply)
{
    size_t squares = 0;
    for (size_t left = exponent.bitLength(); left != 0;) {
        if (!exponent.testBit(left - 1)) {
            ++squares;
            --left;
            continue;
        }
        size_t low = left < width ? 0 : left - width;
        while (!exponent.testBit(low))
            ++low;
        size_t window = 0;
        for (size_t i = left; i-- > low;)
            window = 2 * window + exponent.testBit(i);
        squares += left - low;
        if (left != exponent.bitLength())
            square(squares);
        multiply(window / 2);
        squares = 0;
        left = low;
    }
    if (squares != 0)
        square(squares);
}

} // namespace huge
