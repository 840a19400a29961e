#include "numbers/montgomery.h"

#include "common/XStop.h"
#include "numbers/limbRows.h"
#include "numbers/limbsProduct.h"
#include "numbers/limbsQuotient.h"
#include "numbers/slidingWindows.h"
#include "numbers/wordModular.h"

#include <algorithm>
#include <cassert>

namespace huge {

namespace {

/// From so many limbs on a product is formed by halves, and from so many on it is reduced by two
/// more products. Measured.
constexpr size_t longProduct = 40;
constexpr size_t longModulus = 120;

Limb low(Limb128 x) noexcept
{
    return Limb(x);
}

Limb high(Limb128 x) noexcept
{
    return Limb(x >> 64);
}

/// r = 2^(128 n) modulo the n limbs of m.
void squareOfRadix(const Limb* m, size_t n, Limb* r)
{
    const unsigned shift = unsigned(__builtin_clzll(m[n - 1]));
    LimbScratch den(n + 1);
    LimbScratch num(2 * n + 1);
    LimbScratch quotient(n + 1);
    limbsShlGrow(m, n, shift, den);
    limbsZero(num, 2 * n);
    num[2 * n] = Limb(1) << shift;
    limbsQuotient(num, 2 * n + 1, den, n, quotient);
    limbsShrSmall(num, n, shift, r);
}

/// x = -1 / m modulo 2^(64 n): each step of Newton's iteration doubles the right limbs. The area
/// holds 4 n limbs and what a product of n needs.
void negativeInverse(const Limb* m, size_t n, Limb* x, Limb* area)
{
    x[0] = negativeInverse64(m[0]);
    for (size_t right = 1; right < n;) {
        const size_t next = std::min(2 * right, n);
        Limb* factor = area; // 2 + m * x
        Limb* product = area + 2 * n;
        limbsZero(x + right, next - right);
        limbsProduct(m, next, x, next, factor, product);
        const Limb two = 2;
        limbsAddTo(factor, next, &two, 1);
        limbsProduct(factor, next, x, next, product, product + 2 * n);
        limbsCopy(x, product, next);
        right = next;
    }
}

void multiplyOne(Limb a, Limb b, Limb m, Limb inverse, Limb* r) noexcept
{
    const Limb128 product = Limb128(a) * b;
    const Limb128 multiple = Limb128(low(product) * inverse) * m;
    // The low halves cancel out; they carry whenever they are not 0.
    const Limb128 sum = Limb128(high(product)) + high(multiple) + (low(product) != 0);
    r[0] = sum >= m ? low(sum - m) : low(sum);
}

/// Rows of products and of multiples of m in turn, so that only three limbs are alive.
void multiplyTwo(const Limb* a, const Limb* b, const Limb* m, Limb inverse, Limb* r) noexcept
{
    Limb t0 = 0, t1 = 0, t2 = 0;
    for (int i = 0; i < 2; ++i) {
        Limb128 p = Limb128(a[0]) * b[i] + t0;
        t0 = low(p);
        p = Limb128(a[1]) * b[i] + t1 + high(p);
        t1 = low(p);
        const Limb128 top = Limb128(t2) + high(p);
        const Limb q = t0 * inverse;
        p = Limb128(q) * m[0] + t0;
        p = Limb128(q) * m[1] + t1 + high(p);
        t0 = low(p);
        p = top + high(p);
        t1 = low(p);
        t2 = high(p);
    }
    const Limb128 value = (Limb128(t1) << 64) | t0;
    const Limb128 modulus = (Limb128(m[1]) << 64) | m[0];
    const Limb128 reduced = t2 != 0 || value >= modulus ? value - modulus : value;
    r[0] = low(reduced);
    r[1] = high(reduced);
}

} // namespace

Montgomery::Montgomery(const HugeInteger& modulus)
    : m_size(modulus.effectiveSize()), m_limbs(10 * m_size + limbsProductArea(m_size, m_size)),
      m_modulus(m_limbs.get()), m_one(m_modulus + m_size), m_square(m_one + m_size),
      m_longInverse(m_square + m_size), m_product(m_longInverse + m_size),
      m_area(m_product + 2 * m_size), m_negativeInverse(negativeInverse64(modulus.limbs()[0]))
{
    assert(!modulus.isEven() && modulus.bitLength() > 1);
    limbsCopy(m_modulus, modulus.limbs(), m_size);
    squareOfRadix(m_modulus, m_size, m_square);
    if (m_size >= longModulus)
        negativeInverse(m_modulus, m_size, m_longInverse, m_area);
    limbsZero(m_one, m_size);
    m_one[0] = 1;
    multiply(m_one, m_square, m_one);
}

void Montgomery::enter(const HugeInteger& a, Limb* r) const
{
    HugeInteger modulus;
    modulus.fromLimbs_(m_modulus, m_size);
    HugeInteger reduced = a % modulus;
    if (reduced.isNegative())
        reduced += modulus;
    limbsCopyExtend(r, reduced.limbs(), m_size, reduced.effectiveSize());
    multiply(r, m_square, r);
}

HugeInteger Montgomery::leave(const Limb* a) const
{
    LimbScratch r(m_size);
    limbsZero(r, m_size);
    r[0] = 1;
    multiply(a, r, r);
    HugeInteger result;
    result.fromLimbs_(r, m_size);
    return result;
}

void Montgomery::multiply(const Limb* a, const Limb* b, Limb* r) const
{
    const size_t n = m_size;
    if (n == 1) {
        multiplyOne(a[0], b[0], m_modulus[0], m_negativeInverse, r);
        return;
    }
    if (n == 2) {
        multiplyTwo(a, b, m_modulus, m_negativeInverse, r);
        return;
    }
    Limb* t = m_product;
    if (n >= longProduct) {
        limbsProduct(a, n, b, n, t, m_area);
        reduceProduct(r);
        return;
    }
    t[n] = rowMul(a, n, b[0], 0, t);
    for (size_t i = 1; i < n; ++i)
        t[n + i] = rowAddMul(t + i, a, n, b[i]);
    reduceProduct(r);
}

/// Adds multiples of the modulus until the low half of the product is 0; the high half is the
/// result, but for one subtraction.
void Montgomery::reduceProduct(Limb* r) const
{
    const size_t n = m_size;
    Limb* t = m_product;
    Limb carry = 0;
    if (n >= longModulus) {
        // All multiples at once, as one number of n limbs. The low halves cancel out; they carry
        // whenever they are not 0.
        Limb* multiple = m_area;
        Limb* sum = m_area + 2 * n;
        limbsProduct(t, n, m_longInverse, n, multiple, sum + 2 * n);
        limbsProduct(multiple, n, m_modulus, n, sum, sum + 2 * n);
        const Limb lowCarry = limbsIsZero(t, n) ? 0 : 1;
        carry = rowAdd(t + n, sum + n, n, lowCarry, r);
    } else {
        for (size_t i = 0; i < n; ++i) {
            // The limb becomes 0: its place keeps what the row carries into the high half.
            t[i] = rowAddMul(t + i, m_modulus, n, t[i] * m_negativeInverse);
        }
        carry = rowAdd(t + n, t, n, 0, r);
    }
    if (carry != 0 || limbsCompare(r, m_modulus, n) >= 0)
        rowSub(r, m_modulus, n, 0, r);
}

void Montgomery::add(const Limb* a, const Limb* b, Limb* r) const noexcept
{
    if (rowAdd(a, b, m_size, 0, r) != 0 || limbsCompare(r, m_modulus, m_size) >= 0)
        rowSub(r, m_modulus, m_size, 0, r);
}

void Montgomery::subtract(const Limb* a, const Limb* b, Limb* r) const noexcept
{
    if (rowSub(a, b, m_size, 0, r) != 0)
        rowAdd(r, m_modulus, m_size, 0, r);
}

void Montgomery::power(const Limb* base, const HugeInteger& exponent, Limb* r) const
{
    const size_t n = m_size;
    const unsigned width = windowWidth(exponent.bitLength());
    const size_t entries = size_t(1) << (width - 1);
    LimbScratch odd(n * entries); // base, base^3, base^5 ...
    LimbScratch square(n);
    limbsCopy(odd, base, n);
    if (entries > 1)
        multiply(base, base, square);
    for (size_t i = 1; i < entries; ++i)
        multiply(odd + n * (i - 1), square, odd + n * i);
    bool isSet = false;
    walkWindows(
        exponent, width,
        [&](size_t count) {
            xstd::XStop::poll();
            for (; count != 0; --count)
                multiply(r, r, r);
        },
        [&](size_t i) {
            if (isSet)
                multiply(r, odd + n * i, r);
            else
                limbsCopy(r, odd + n * i, n);
            isSet = true;
        });
}

} // namespace huge
