#include "numbers/numberTheoreticTransform.h"

#include "numbers/wordModular.h"

#include <bit>
#include <cassert>

namespace huge {

namespace {

/// Nodes of so few coefficients are worked level by level, as they stay in the nearest cache.
constexpr size_t nearLength = 2048;

} // namespace

const NumberTheoreticTransform& NumberTheoreticTransform::of(size_t kind, size_t length)
{
    static NumberTheoreticTransform transforms[kinds] = {
        {0x3FFFFFFFFEB00001, 0x25F89E017E7CE1CA},
        {0x3FFFFFFFFA000001, 0x146621EA4C40B146},
    };
    assert(length <= maxLength);
    transforms[kind].makeRoots(std::bit_ceil(length) / 2);
    return transforms[kind];
}

NumberTheoreticTransform::NumberTheoreticTransform(Limb prime, Limb rootOfTwoToTwenty)
    : m_prime(prime), m_rootOfTwoToTwenty(rootOfTwoToTwenty), m_twice(2 * prime),
      m_negativeInverse(negativeInverse64(prime)), m_roots{factorOf(1)}
{}

void NumberTheoreticTransform::makeRoots(size_t count)
{
    // The nodes of one bit more are those before, times a root of twice the order.
    while (m_roots.size() < count) {
        const size_t first = m_roots.size();
        const Factor step =
            factorOf(powMod64(m_rootOfTwoToTwenty, (Limb(1) << 20) / (4 * first), m_prime));
        m_roots.reserve(2 * first);
        for (size_t i = 0; i < first; ++i)
            m_roots.push_back(factorOf(reduce(multiply(m_roots[i].value, step))));
    }
}

NumberTheoreticTransform::Factor NumberTheoreticTransform::factorOf(Limb value) const noexcept
{
    return {value, Limb((Limb128(value) << 64) / m_prime)};
}

/// -1 / rootOf(node), which is a root as well: that of the node at the same place from the end of
/// the nodes with as many bits.
inline const NumberTheoreticTransform::Factor&
NumberTheoreticTransform::negatedInverseOf(size_t node) const noexcept
{
    return m_roots[3 * std::bit_floor(node) - 1 - node];
}

void NumberTheoreticTransform::forwardByTwo(Limb* x, size_t n, size_t node) const noexcept
{
    const Factor root = m_roots[node];
    const size_t half = n / 2;
    for (size_t i = 0; i < half; ++i) {
        const Limb a = x[i] - (x[i] >= m_twice ? m_twice : 0);
        const Limb b = multiply(x[i + half], root);
        x[i] = a + b;
        x[i + half] = a - b + m_twice;
    }
}

/// Two levels at once: a node and both that it falls into.
void NumberTheoreticTransform::forwardByFour(Limb* x, size_t n, size_t node) const noexcept
{
    const Factor root = m_roots[node];
    const Factor left = m_roots[2 * node];
    const Factor right = m_roots[2 * node + 1];
    const size_t quarter = n / 4;
    const auto halved = [this](Limb v) { return v - (v >= m_twice ? m_twice : 0); };
    for (size_t i = 0; i < quarter; ++i) {
        const Limb x0 = halved(x[i]);
        const Limb x1 = halved(x[i + quarter]);
        const Limb t2 = multiply(x[i + 2 * quarter], root);
        const Limb t3 = multiply(x[i + 3 * quarter], root);
        const Limb y0 = halved(x0 + t2);
        const Limb y2 = halved(x0 - t2 + m_twice);
        const Limb t1 = multiply(x1 + t3, left);
        const Limb u3 = multiply(x1 - t3 + m_twice, right);
        x[i] = y0 + t1;
        x[i + quarter] = y0 - t1 + m_twice;
        x[i + 2 * quarter] = y2 + u3;
        x[i + 3 * quarter] = y2 - u3 + m_twice;
    }
}

void NumberTheoreticTransform::forward(Limb* x, size_t n, size_t node) const noexcept
{
    assert(std::has_single_bit(n));
    if (n > nearLength) {
        forwardByFour(x, n, node);
        for (size_t i = 0; i < 4; ++i)
            forward(x + i * (n / 4), n / 4, 4 * node + i);
        return;
    }
    size_t length = n;
    size_t count = 1;
    if (std::countr_zero(n) % 2 != 0) {
        forwardByTwo(x, n, node);
        length /= 2;
        count = 2;
    }
    for (; length > 1; length /= 4, count *= 4) {
        for (size_t i = 0; i < count; ++i)
            forwardByFour(x + i * length, length, node * count + i);
    }
}

void NumberTheoreticTransform::inverseByTwo(Limb* x, size_t n, size_t node) const noexcept
{
    const size_t half = n / 2;
    if (node == 0) {
        for (size_t i = 0; i < half; ++i) {
            const Limb sum = x[i] + x[i + half];
            const Limb difference = x[i] - x[i + half] + m_twice;
            x[i] = sum - (sum >= m_twice ? m_twice : 0);
            x[i + half] = difference - (difference >= m_twice ? m_twice : 0);
        }
        return;
    }
    const Factor root = negatedInverseOf(node);
    for (size_t i = 0; i < half; ++i) {
        const Limb sum = x[i] + x[i + half];
        x[i + half] = multiply(x[i + half] - x[i] + m_twice, root);
        x[i] = sum - (sum >= m_twice ? m_twice : 0);
    }
}

void NumberTheoreticTransform::inverseByFour(Limb* x, size_t n, size_t node) const noexcept
{
    if (node == 0) { // its own root and that of its left part are 1
        inverseByTwo(x, n / 2, 0);
        inverseByTwo(x + n / 2, n / 2, 1);
        inverseByTwo(x, n, 0);
        return;
    }
    const Factor root = negatedInverseOf(node);
    const Factor left = negatedInverseOf(2 * node);
    const Factor right = negatedInverseOf(2 * node + 1);
    const size_t quarter = n / 4;
    const auto halved = [this](Limb v) { return v - (v >= m_twice ? m_twice : 0); };
    for (size_t i = 0; i < quarter; ++i) {
        const Limb x0 = x[i];
        const Limb x1 = x[i + quarter];
        const Limb x2 = x[i + 2 * quarter];
        const Limb x3 = x[i + 3 * quarter];
        const Limb y0 = halved(x0 + x1);
        const Limb y2 = halved(x2 + x3);
        const Limb y1 = multiply(x1 - x0 + m_twice, left);
        const Limb y3 = multiply(x3 - x2 + m_twice, right);
        x[i] = halved(y0 + y2);
        x[i + quarter] = halved(y1 + y3);
        x[i + 2 * quarter] = multiply(y2 - y0 + m_twice, root);
        x[i + 3 * quarter] = multiply(y3 - y1 + m_twice, root);
    }
}

void NumberTheoreticTransform::inverse(Limb* x, size_t n, size_t node) const noexcept
{
    assert(std::has_single_bit(n));
    if (n > nearLength) {
        for (size_t i = 0; i < 4; ++i)
            inverse(x + i * (n / 4), n / 4, 4 * node + i);
        inverseByFour(x, n, node);
        return;
    }
    const bool odd = std::countr_zero(n) % 2 != 0;
    const size_t whole = odd ? n / 2 : n;
    for (size_t length = 4; length <= whole; length *= 4) {
        const size_t count = n / length;
        for (size_t i = 0; i < count; ++i)
            inverseByFour(x + i * length, length, node * count + i);
    }
    if (odd)
        inverseByTwo(x, n, node);
}

} // namespace huge
