#include "numbers/transformProduct.h"

#include "common/XStop.h"
#include "numbers/numberTheoreticTransform.h"
#include "numbers/wordModular.h"

#include <bit>
#include <cassert>

namespace huge {

namespace {

using Transform = NumberTheoreticTransform;

constexpr size_t digitsOf(size_t limbs, unsigned bits) noexcept
{
    return (64 * limbs + bits - 1) / bits;
}

/// How a product is cut up: digits of so many bits, and a length of whole coefficients, which is
/// a power of 2 and a tail of a quarter or a half of that, or none.
struct Shape {
    unsigned bits;
    size_t whole;
    size_t tail;

    size_t length() const noexcept { return whole + tail; }
    /// The node of the tree of factors next to the whole one, of the tail's length.
    size_t tailNode() const noexcept { return tail == 0 ? 0 : whole / tail; }
};

/// The most bits of a digit for which the sum of so many products stays below 2^124, with a margin
/// for what the product of both primes lacks of that.
unsigned bitsOfDigit(size_t limbs) noexcept
{
    unsigned bits = 57;
    while (digitsOf(limbs, bits) >= (size_t(63) << (124 - 2 * bits)) / 64)
        --bits;
    return bits;
}

Shape shapeOf(size_t nA, size_t nB) noexcept
{
    Shape shape{bitsOfDigit(nB), 0, 0};
    const size_t digits = digitsOf(nA, shape.bits) + digitsOf(nB, shape.bits);
    shape.whole = std::bit_floor(digits);
    if (digits > shape.whole + shape.whole / 2)
        shape.whole *= 2;
    else if (digits > shape.whole + shape.whole / 4)
        shape.tail = shape.whole / 2;
    else if (digits > shape.whole)
        shape.tail = shape.whole / 4;
    return shape;
}

/// Cuts a number into digits, and fills up with zeros.
void cutDigits(const Limb* a, size_t n, const Shape& shape, Limb* digits) noexcept
{
    const Limb mask = (Limb(1) << shape.bits) - 1;
    const size_t count = digitsOf(n, shape.bits);
    for (size_t i = 0; i < count; ++i) {
        const size_t place = i * shape.bits;
        const size_t limb = place / 64;
        const unsigned shift = unsigned(place % 64);
        Limb digit = a[limb] >> shift;
        if (shift + shape.bits > 64 && limb + 1 < n)
            digit |= a[limb + 1] << (64 - shift);
        digits[i] = digit & mask;
    }
    limbsZero(digits + count, shape.length() - count);
}

/// The remainder of the first `count` pieces of a polynomial, of tail coefficients each, at place i
/// modulo x^tail - constant.
Limb tailRemainder(const Transform& field, const Limb* x, size_t count, const Shape& shape,
                   size_t i, const Transform::Factor& constant) noexcept
{
    Limb sum = x[(count - 1) * shape.tail + i];
    for (size_t piece = count - 1; piece-- > 0;)
        sum = field.multiply(sum, constant) + x[piece * shape.tail + i];
    return sum;
}

/// The constant of the tail's node: the root of the node above it.
const Transform::Factor& tailConstant(const Transform& field, const Shape& shape) noexcept
{
    return field.rootOf(shape.tailNode() / 2);
}

/// The digits of a number to their remainders modulo every factor, in place.
void evaluate(const Transform& field, const Shape& shape, Limb* x) noexcept
{
    for (size_t i = 0; i < shape.tail; ++i) {
        const Limb low = x[i] + x[shape.whole + i];
        x[shape.whole + i] = tailRemainder(field, x, shape.length() / shape.tail, shape, i,
                                           tailConstant(field, shape));
        x[i] = low;
    }
    field.forward(x, shape.whole, 0);
    if (shape.tail != 0)
        field.forward(x + shape.whole, shape.tail, shape.tailNode());
}

/// x * factor over n values, reduced to below p.
void scale(const Transform& field, Limb* x, size_t n, const Transform::Factor& factor) noexcept
{
    for (size_t i = 0; i < n; ++i)
        x[i] = field.reduce(field.multiply(x[i], factor));
}

/// 2^64 / n modulo p: takes back what the reduced products and the way back of n values bring in.
Transform::Factor scaleOf(const Transform& field, size_t n) noexcept
{
    const Limb p = field.prime();
    const Limb radix = Limb((Limb128(1) << 64) % p);
    const Limb inverse = p - (p - 1) / n; // n divides p - 1
    return field.factorOf(mulMod64(radix, inverse, p));
}

/// From the remainders of a product to its coefficients, each below p, in place.
void interpolate(const Transform& field, const Shape& shape, Limb* x) noexcept
{
    field.inverse(x, shape.whole, 0);
    scale(field, x, shape.whole, scaleOf(field, shape.whole));
    if (shape.tail == 0)
        return;
    field.inverse(x + shape.whole, shape.tail, shape.tailNode());
    scale(field, x + shape.whole, shape.tail, scaleOf(field, shape.tail));

    // With A known modulo x^whole - 1 and B modulo the tail's factor, where x^whole is -1, the
    // polynomial is A + (x^whole - 1) D, and D = (A - B) / 2 there.
    const Limb p = field.prime();
    const Transform::Factor half = field.factorOf((p + 1) / 2);
    for (size_t i = 0; i < shape.tail; ++i) {
        const Limb remainder =
            tailRemainder(field, x, shape.whole / shape.tail, shape, i, tailConstant(field, shape));
        const Limb d = field.reduce(field.multiply(remainder + p - x[shape.whole + i], half));
        x[shape.whole + i] = d;
        x[i] = x[i] - d + (x[i] < d ? p : 0);
    }
}

/// The coefficients of a * b modulo one prime, in x; y is spare room of as many values.
void multiplyModulo(const Transform& field, const Shape& shape, const Limb* a, size_t nA,
                    const Limb* b, size_t nB, Limb* x, Limb* y)
{
    const bool square = a == b && nA == nB;
    xstd::XStop::poll();
    cutDigits(a, nA, shape, x);
    evaluate(field, shape, x);
    xstd::XStop::poll();
    if (!square) {
        cutDigits(b, nB, shape, y);
        evaluate(field, shape, y);
        xstd::XStop::poll();
    }
    const Limb* other = square ? x : y;
    for (size_t i = 0; i < shape.length(); ++i)
        x[i] = field.multiplyReduced(x[i], other[i]);
    interpolate(field, shape, x);
}

/// r = the sum of the coefficients times 2^(bits * i), each known modulo both primes.
void joinDigits(const Shape& shape, const Limb* first, const Limb* second, Limb* r, size_t n)
{
    const Transform& one = Transform::of(0, shape.length());
    const Transform& two = Transform::of(1, shape.length());
    static const Transform::Factor inverse =
        two.factorOf(powMod64(one.prime(), two.prime() - 2, two.prime()));

    Limb128 sum = 0; // what stands above the bits that are done
    Limb limb = 0;   // the one that is being filled
    unsigned filled = 0;
    size_t place = 0;
    for (size_t i = 0; place < n; ++i) {
        if (i < shape.length()) {
            const Limb above =
                two.reduce(two.multiply(second[i] + 2 * two.prime() - first[i], inverse));
            sum += Limb128(above) * one.prime() + first[i];
        }
        const Limb digit = Limb(sum) & ((Limb(1) << shape.bits) - 1);
        sum >>= shape.bits;
        limb |= digit << filled;
        filled += shape.bits;
        if (filled >= 64) {
            r[place++] = limb;
            filled -= 64;
            limb = filled == 0 ? 0 : digit >> (shape.bits - filled);
        }
    }
}

} // namespace

bool fitsTransform(size_t nA, size_t nB) noexcept
{
    return shapeOf(nA, nB).length() <= Transform::maxLength;
}

size_t transformProductArea(size_t nA, size_t nB) noexcept
{
    return 3 * shapeOf(nA, nB).length();
}

void transformProduct(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r, Limb* area)
{
    assert(nA >= nB && nB >= 1 && fitsTransform(nA, nB));
    const Shape shape = shapeOf(nA, nB);
    Limb* first = area;
    Limb* second = area + shape.length();
    Limb* spare = area + 2 * shape.length();
    multiplyModulo(Transform::of(0, shape.length()), shape, a, nA, b, nB, first, spare);
    multiplyModulo(Transform::of(1, shape.length()), shape, a, nA, b, nB, second, spare);
    joinDigits(shape, first, second, r, nA + nB);
}

} // namespace huge
