#include "numbers/HugeInteger.h"

#include <bit>
#include <limits>
#include <stdexcept>

namespace huge {

HugeInteger& HugeInteger::operator=(const HugeInteger& other)
{
    if (this == &other)
        return *this;
    if (m_limbs != nullptr && size() == other.size()) {
        m_limbs[-1] = other.m_limbs[-1];
        limbsCopy(m_limbs, other.m_limbs, size());
        return *this;
    }
    Limb* copy = copyBlock(other.m_limbs);
    LimbPool::release(m_limbs);
    m_limbs = copy;
    return *this;
}

HugeInteger HugeInteger::fromUnsigned(uint64_t value)
{
    HugeInteger result(0);
    result.m_limbs[0] = value;
    return result;
}

HugeInteger HugeInteger::fromHeaderAndBytes(uint64_t headerWord, const uint8_t* bytes,
                                            size_t byteCount)
{
    const size_t limbCount = headerWord & 0xFFFF;
    if (byteCount > sizeof(Limb) * limbCount)
        throw std::runtime_error("A number has more bytes than its limb count allows");
    HugeInteger result;
    result.fromBytes_(bytes, byteCount, limbCount);
    result.m_limbs[-1] = headerWord;
    result.setNegative_(result.isNegative());
    return result;
}

HugeInteger& HugeInteger::setSize_(size_t limbCount, bool keep)
{
    const bool negative = keep && isNegative();
    m_limbs = LimbPool::resize(m_limbs, limbCount, keep);
    return setNegative_(negative);
}

HugeInteger& HugeInteger::grow_(size_t limbCount)
{
    if (size() < limbCount)
        setSize_(limbCount, true);
    return *this;
}

HugeInteger HugeInteger::trim() const
{
    const size_t n = effectiveSize();
    HugeInteger result;
    result.fromLimbs_(m_limbs, n, 1);
    result.setNegative_(isNegative());
    return result;
}

HugeInteger& HugeInteger::clear_() noexcept
{
    LimbPool::release(std::exchange(m_limbs, nullptr));
    return *this;
}

HugeInteger& HugeInteger::zeroLimbs_() noexcept
{
    limbsZero(m_limbs, size());
    return setNegative_(false);
}

HugeInteger& HugeInteger::fromLimbs_(const Limb* limbs, size_t count, size_t minCount)
{
    const size_t n = count < minCount ? minCount : count;
    // The source may lie in the own block: the old block goes last.
    Limb* block = LimbPool::allocate(n);
    limbsCopyExtend(block, limbs, n, count);
    LimbPool::release(std::exchange(m_limbs, block));
    return *this;
}

HugeInteger& HugeInteger::fromBytes_(const uint8_t* bytes, size_t byteCount, size_t minLimbs)
{
    const size_t count = byteCount / 8 + (byteCount % 8 != 0);
    const size_t n = count < minLimbs ? minLimbs : count;
    Limb* block = LimbPool::allocate(n);
    limbsZero(block, n);
    for (size_t i = 0; i < byteCount; ++i)
        block[i / 8] |= Limb(bytes[i]) << (i % 8 * 8);
    LimbPool::release(std::exchange(m_limbs, block));
    return *this;
}

void HugeInteger::setWide(int64_t value, size_t limbCount)
{
    const size_t n = limbCount == 0 ? 1 : limbCount;
    m_limbs = LimbPool::allocate(n);
    limbsZero(m_limbs, n);
    m_limbs[0] = value < 0 ? 0 - uint64_t(value) : uint64_t(value);
    LimbPool::setNegative(m_limbs, value < 0);
}

bool HugeInteger::fitsInt64() const noexcept
{
    if (effectiveSize() > 1)
        return false;
    const Limb magnitude = size() == 0 ? 0 : m_limbs[0];
    return magnitude >> 63 == 0 || (isNegative() && magnitude == Limb(1) << 63);
}

double HugeInteger::asDouble() const noexcept
{
    const size_t bits = bitLength();
    if (bits == 0)
        return 0.0;
    if (bits > 1024) {
        const double infinite = std::numeric_limits<double>::infinity();
        return isNegative() ? -infinite : infinite;
    }
    // The 64 bits from the highest set one down; that one itself is not stored.
    const size_t n = effectiveSize();
    const unsigned shift = unsigned(64 * n - bits);
    Limb top = m_limbs[n - 1] << shift;
    if (shift != 0 && n > 1)
        top |= m_limbs[n - 2] >> (64 - shift);
    const uint64_t fraction = (top << 1) >> 12;
    const uint64_t exponent = uint64_t(bits - 1 + 1023) << 52;
    return std::bit_cast<double>(uint64_t(isNegative()) << 63 | exponent | fraction);
}

HugeInteger HugeInteger::abs() const
{
    HugeInteger result(*this);
    result.setNegative_(false);
    return result;
}

HugeInteger HugeInteger::addSigned(const Operand& a, const Operand& b, bool negativeB)
{
    const size_t n = a.size < b.size ? b.size : a.size;
    if (n == 0)
        return HugeInteger();
    HugeInteger result = fromBlock(LimbPool::allocate(n));
    if (a.negative != negativeB) {
        const Limb reversed = limbsSub(a.limbs, a.size, b.limbs, b.size, result.m_limbs);
        return std::move(result.setNegative_(a.negative != (reversed != 0)));
    }
    if (limbsAdd(a.limbs, a.size, b.limbs, b.size, result.m_limbs) != 0) {
        result.grow_(n + 1);
        result.m_limbs[n] = 1;
    }
    return std::move(result.setNegative_(a.negative));
}

HugeInteger HugeInteger::sumOf(const Operand& a, const Operand& b)
{
    return addSigned(a, b, b.negative);
}

HugeInteger HugeInteger::differenceOf(const Operand& a, const Operand& b)
{
    return addSigned(a, b, !b.negative);
}

HugeInteger& HugeInteger::addInPlace(const Operand& b, bool subtract)
{
    const size_t n = size();
    const bool negative = isNegative();
    const bool negativeB = b.negative != subtract;
    // A number of full length takes the way aside: should its sum not fit, it must be left whole.
    if (n < b.size || n + 1 >= LimbPool::limit || n == 0)
        return *this = addSigned(*this, b, negativeB);
    if (negative != negativeB) {
        const Limb reversed = limbsSubFrom(m_limbs, n, b.limbs, b.size);
        return setNegative_(negative != (reversed != 0));
    }
    if (limbsAddTo(m_limbs, n, b.limbs, b.size) != 0) {
        grow_(n + 1);
        m_limbs[n] = 1;
        LimbPool::setNegative(m_limbs, negative);
    }
    return *this;
}

HugeInteger& HugeInteger::operator++() noexcept
{
    limbsInc(m_limbs, size());
    return setNegative_(isNegative());
}

HugeInteger& HugeInteger::operator--() noexcept
{
    limbsDec(m_limbs, size());
    return setNegative_(isNegative());
}

HugeInteger HugeInteger::operator++(int)
{
    HugeInteger before(*this);
    ++*this;
    return before;
}

HugeInteger HugeInteger::operator--(int)
{
    HugeInteger before(*this);
    --*this;
    return before;
}

int HugeInteger::compareAny(const HugeInteger& b) const noexcept
{
    const bool negative = isNegative() && !isZero();
    const bool negativeB = b.isNegative() && !b.isZero();
    if (negative != negativeB)
        return negative ? -1 : 1; // a positive zero is above every negative number too
    const int order = limbsCompareLow(m_limbs, size(), b.m_limbs, b.size());
    return negative ? -order : order;
}

int HugeInteger::compare(int64_t b) const noexcept
{
    if (!fitsInt64())
        return isNegative() ? -1 : 1;
    const int64_t a = asInt64();
    return a < b ? -1 : a != b;
}

} // namespace huge
