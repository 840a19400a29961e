#include "numbers/HugeInteger.h"

#include "numbers/randomSource.h"

namespace huge {

namespace {

using LimbwiseKernel = void (*)(const Limb*, size_t, const Limb*, size_t, Limb*) noexcept;

/// One of | & ^: the kernels want the longer operand first.
HugeInteger limbwise(LimbwiseKernel kernel, const HugeInteger& a, const HugeInteger& b)
{
    const HugeInteger& longer = a.size() < b.size() ? b : a;
    const HugeInteger& shorter = a.size() < b.size() ? a : b;
    if (longer.size() == 0)
        return HugeInteger();
    Limb* r = LimbPool::allocate(longer.size());
    kernel(longer.limbs(), longer.size(), shorter.limbs(), shorter.size(), r);
    return HugeInteger::fromBlock(r);
}

void shiftLeft(Limb* a, size_t n, uint64_t bits) noexcept
{
    if (bits < 64)
        limbsShlSmall(a, n, unsigned(bits), a);
    else
        limbsShl(a, n, bits);
}

void shiftRight(Limb* a, size_t n, uint64_t bits) noexcept
{
    if (bits < 64)
        limbsShrSmall(a, n, unsigned(bits), a);
    else
        limbsShr(a, n, bits);
}

} // namespace

HugeInteger operator|(const HugeInteger& a, const HugeInteger& b)
{
    return limbwise(limbsOr, a, b);
}

HugeInteger operator&(const HugeInteger& a, const HugeInteger& b)
{
    return limbwise(limbsAnd, a, b);
}

HugeInteger operator^(const HugeInteger& a, const HugeInteger& b)
{
    return limbwise(limbsXor, a, b);
}

HugeInteger HugeInteger::operator~() const
{
    HugeInteger result(*this);
    limbsNot(result.m_limbs, result.size(), result.m_limbs);
    return std::move(result.setNegative_(isNegative()));
}

HugeInteger& HugeInteger::operator<<=(int64_t bits) noexcept
{
    if (bits < 0)
        shiftRight(m_limbs, size(), 0 - uint64_t(bits));
    else
        shiftLeft(m_limbs, size(), uint64_t(bits));
    return setNegative_(isNegative());
}

HugeInteger& HugeInteger::operator>>=(int64_t bits) noexcept
{
    if (bits < 0)
        shiftLeft(m_limbs, size(), 0 - uint64_t(bits));
    else
        shiftRight(m_limbs, size(), uint64_t(bits));
    return setNegative_(isNegative());
}

bool HugeInteger::testBit(size_t index) const noexcept
{
    return index / 64 < size() && ((m_limbs[index / 64] >> (index % 64)) & 1) != 0;
}

HugeInteger& HugeInteger::setBits_(size_t first, size_t last, bool value)
{
    if (first > last)
        return *this;
    if (value)
        grow_(last / 64 + 1);
    for (size_t i = first / 64; i < size() && i <= last / 64; ++i) {
        Limb mask = ~Limb(0);
        if (i == first / 64)
            mask &= ~Limb(0) << (first % 64);
        if (i == last / 64)
            mask &= ~Limb(0) >> (63 - last % 64);
        m_limbs[i] = value ? m_limbs[i] | mask : m_limbs[i] & ~mask;
    }
    return setNegative_(isNegative());
}

HugeInteger& HugeInteger::randomBits_(size_t bits, bool topSet)
{
    const size_t whole = bits / 64;
    const unsigned rest = unsigned(bits % 64);
    const size_t needed = whole + (rest != 0);
    if (size() < needed || m_limbs == nullptr)
        setSize_(needed, false);
    std::mt19937_64& source = randomSource().bits64;
    for (size_t i = 0; i < whole; ++i)
        m_limbs[i] = source();
    limbsZero(m_limbs + whole, size() - whole);
    if (rest != 0) {
        const Limb draw = source();
        m_limbs[whole] = (topSet ? draw | Limb(1) << 63 : draw) >> (64 - rest);
    } else if (topSet && whole != 0) {
        m_limbs[whole - 1] |= Limb(1) << 63;
    }
    return setNegative_(false);
}

} // namespace huge
