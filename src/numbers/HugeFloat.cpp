#include "numbers/HugeFloat.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace huge {

void failFloatExponent()
{
    throw std::runtime_error("HugeFloat exponent is out of range");
}

int32_t floatExponent(int64_t exponent)
{
    if (exponent < std::numeric_limits<int32_t>::min() ||
        exponent > std::numeric_limits<int32_t>::max())
        failFloatExponent();
    return int32_t(exponent);
}

Limb* HugeFloat::copyBlock(const Limb* block)
{
    if (block == nullptr)
        return nullptr;
    const size_t n = LimbPool::count(block);
    Limb* copy = LimbPool::allocate(n);
    copy[-1] = block[-1];
    limbsCopy(copy, block, n);
    return copy;
}

HugeFloat& HugeFloat::operator=(const HugeFloat& other)
{
    return *this = HugeFloat(other);
}

HugeFloat HugeFloat::fromMagnitude(uint64_t magnitude, bool negative, size_t limbCount)
{
    const size_t n = std::max<size_t>(limbCount, 1);
    Limb* block = LimbPool::allocate(n);
    limbsZero(block, n);
    if (magnitude != 0) {
        const int leading = __builtin_clzll(magnitude);
        block[n - 1] = magnitude << leading;
        LimbPool::setExponent(block, 63 - leading);
        LimbPool::setNegative(block, negative);
    }
    return fromBlock(block);
}

HugeFloat HugeFloat::fromDouble(double value, size_t limbCount)
{
    if (!std::isfinite(value))
        throw std::runtime_error("A float must be finite");
    int exponent = 0;
    const double fraction = std::frexp(std::fabs(value), &exponent); // from 1/2 to below 1, or 0
    HugeFloat result = fromMagnitude(uint64_t(std::ldexp(fraction, 64)), value < 0, limbCount);
    if (!result.isZero())
        LimbPool::setExponent(result.m_limbs, exponent - 1);
    return result;
}

HugeFloat::HugeFloat(const HugeInteger& value) : HugeFloat(HugeInteger(value)) {}

HugeFloat::HugeFloat(HugeInteger&& value)
{
    if (value.isNull())
        return;
    m_limbs = std::move(value).releaseBlock();
    const size_t n = limbCount();
    const bool negative = LimbPool::isNegative(m_limbs);
    const size_t leading = limbsLeadingZeros(m_limbs, n);
    m_limbs[-1] = n;
    if (leading == 64 * n)
        return;
    limbsShl(m_limbs, n, leading);
    LimbPool::setExponent(m_limbs, int32_t(64 * n - leading - 1));
    LimbPool::setNegative(m_limbs, negative);
}

HugeFloat HugeFloat::fromHeaderAndBytes(uint64_t headerWord, const uint8_t* bytes, size_t byteCount)
{
    const size_t n = headerWord & 0xFFFF;
    if (n == 0 && byteCount == 0)
        return {};
    if (n * 8 != byteCount)
        throw std::runtime_error("A float's bytes don't fill its block");
    Limb* r = LimbPool::allocate(n);
    HugeFloat x = fromBlock(r);
    for (size_t i = 0; i < n; ++i) {
        r[i] = 0;
        for (size_t k = 8; k-- > 0;)
            r[i] = r[i] << 8 | bytes[8 * i + k];
    }
    if (limbsIsZero(r, n))
        return x;
    if (r[n - 1] >> 63 == 0)
        throw std::runtime_error("A float's top bit is clear");
    LimbPool::setExponent(r, int32_t(headerWord >> 32));
    LimbPool::setNegative(r, (headerWord >> 16 & 0xFF) != 0);
    return x;
}

bool HugeFloat::isInteger() const noexcept
{
    if (isZero())
        return true;
    if (exponent() < 0)
        return false;
    return limbsTrailingZeros(m_limbs, limbCount()) + size_t(exponent()) + 1 >= 64 * limbCount();
}

bool HugeFloat::isOne() const noexcept
{
    return !isNegative() && !isZero() && exponent() == 0 &&
           limbsTrailingZeros(m_limbs, limbCount()) == 64 * limbCount() - 1;
}

bool HugeFloat::isMinusOne() const noexcept
{
    return isNegative() && exponent() == 0 &&
           limbsTrailingZeros(m_limbs, limbCount()) == 64 * limbCount() - 1;
}

bool HugeFloat::isSimilarZero() const noexcept
{
    return isZero() || exponent() < 4 - 64 * int64_t(limbCount());
}

HugeFloat& HugeFloat::zero_() noexcept
{
    if (m_limbs != nullptr) {
        limbsZero(m_limbs, limbCount());
        m_limbs[-1] = limbCount();
    }
    return *this;
}

HugeFloat HugeFloat::shiftExponent(int64_t count) const
{
    HugeFloat r = *this;
    if (r.isZero())
        return r;
    int64_t e;
    if (__builtin_sub_overflow(int64_t(exponent()), count, &e))
        failFloatExponent();
    LimbPool::setExponent(r.m_limbs, floatExponent(e));
    return r;
}

HugeFloat HugeFloat::resize(size_t count, bool round) const
{
    const size_t n = limbCount();
    count = std::max<size_t>(count, 1);
    if (count == n || m_limbs == nullptr)
        return *this;
    Limb* r = LimbPool::allocate(count);
    HugeFloat x = fromBlock(r);
    if (count > n) {
        limbsZero(r, count - n);
        limbsCopy(r + (count - n), m_limbs, n);
    } else {
        limbsCopy(r, m_limbs + (n - count), count);
    }
    int64_t e = exponent();
    if (count < n && round && m_limbs[n - count - 1] >> 63 != 0 && limbsInc(r, count) != 0) {
        r[count - 1] = Limb(1) << 63;
        ++e;
    }
    LimbPool::setExponent(r, floatExponent(e));
    LimbPool::setNegative(r, isNegative());
    return x;
}

HugeFloat& HugeFloat::resize_(size_t count, bool keep)
{
    if (keep)
        return *this = resize(count, false);
    m_limbs = LimbPool::resize(m_limbs, std::max<size_t>(count, 1), false);
    return *this;
}

HugeFloat& HugeFloat::trunc_() noexcept
{
    if (isZero())
        return *this;
    const int64_t e = exponent();
    if (e < 0)
        return zero_();
    const size_t bits = 64 * limbCount();
    if (size_t(e) + 1 >= bits)
        return *this;
    const size_t drop = bits - size_t(e) - 1;
    limbsZero(m_limbs, drop / 64);
    if (drop % 64 != 0)
        m_limbs[drop / 64] &= ~Limb(0) << (drop % 64);
    return *this;
}

HugeInteger HugeFloat::toInteger() const
{
    if (isZero() || exponent() < 0)
        return HugeInteger(0);
    const size_t n = limbCount();
    const size_t size = size_t(exponent()) / 64 + 1;
    const size_t used = std::min(n, size);
    Limb* block = LimbPool::allocate(size);
    limbsZero(block, size - used);
    limbsCopy(block + (size - used), m_limbs + (n - used), used);
    limbsShr(block, size, 64 * size - size_t(exponent()) - 1);
    LimbPool::setNegative(block, isNegative());
    return HugeInteger::fromBlock(block);
}

int64_t HugeFloat::asInt64() const
{
    return toInteger().asInt64();
}

double HugeFloat::asDouble() const noexcept
{
    if (isZero())
        return 0;
    const double m = double(m_limbs[limbCount() - 1] >> 11);
    const double r = std::ldexp(m, std::clamp(exponent(), -5000, 5000) - 52);
    return isNegative() ? -r : r;
}

int HugeFloat::compare(const HugeFloat& b) const noexcept
{
    if (isZero() || b.isZero()) {
        if (isZero() && b.isZero())
            return 0;
        return isZero() ? (b.isNegative() ? 1 : -1) : (isNegative() ? -1 : 1);
    }
    if (isNegative() != b.isNegative())
        return isNegative() ? -1 : 1;
    int c = exponent() < b.exponent() ? -1 : exponent() > b.exponent();
    if (c == 0)
        c = limbsCompareTop(m_limbs, limbCount(), b.m_limbs, b.limbCount());
    return isNegative() ? -c : c;
}

} // namespace huge
