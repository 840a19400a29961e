#include "numbers/HugeFloat.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace huge {

void failFloatExponent()
{
    throw std::runtime_error("HugeFloat exponent is out of range");
}

namespace {

int32_t checked(int64_t exponent)
{
    if (exponent < std::numeric_limits<int32_t>::min() ||
        exponent > std::numeric_limits<int32_t>::max())
        failFloatExponent();
    return int32_t(exponent);
}

} // namespace

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

HugeFloat HugeFloat::fromMagnitude(uint64_t m, bool negative, size_t n)
{
    Limb* r = LimbPool::allocate(std::max<size_t>(n, 1));
    const size_t k = LimbPool::count(r);
    limbsZero(r, k);
    if (m != 0) {
        const unsigned lz = unsigned(__builtin_clzll(m));
        r[k - 1] = m << lz;
        LimbPool::setExponent(r, int32_t(63 - lz));
        LimbPool::setNegative(r, negative);
    }
    return fromBlock(r);
}

HugeFloat HugeFloat::fromDouble(double v, size_t n)
{
    if (!std::isfinite(v))
        throw std::runtime_error("A float must be finite");
    int e = 0;
    const double f = std::frexp(std::fabs(v), &e);
    HugeFloat r = fromMagnitude(uint64_t(std::ldexp(f, 64)), v < 0, n);
    if (!r.isZero())
        LimbPool::setExponent(r.m_limbs, e - 1);
    return r;
}

HugeFloat::HugeFloat(const HugeInteger& value) : HugeFloat(HugeInteger(value)) {}

HugeFloat::HugeFloat(HugeInteger&& value)
{
    if (value.isNull())
        return;
    const size_t n = value.size();
    Limb* r = LimbPool::allocate(n);
    limbsCopy(r, value.limbs(), n);
    const size_t lz = value.leadingZeroBits();
    if (!value.isZero()) {
        limbsShl(r, n, lz);
        LimbPool::setExponent(r, int32_t(64 * n - lz - 1));
        LimbPool::setNegative(r, value.isNegative());
    }
    m_limbs = r;
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
    LimbPool::setExponent(r.m_limbs, checked(e));
    return r;
}

HugeFloat HugeFloat::resize(size_t count, bool round) const
{
    const size_t n = limbCount();
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
    LimbPool::setExponent(r, checked(e));
    LimbPool::setNegative(r, isNegative());
    return x;
}

HugeFloat& HugeFloat::resize_(size_t count, bool keep)
{
    if (keep)
        return *this = resize(count, false);
    m_limbs = LimbPool::resize(m_limbs, count, false);
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
    const size_t m = size_t(exponent()) / 64 + 1;
    if (m >= LimbPool::limit)
        LimbPool::failLimit();
    LimbScratch t(std::max(n, m));
    if (m >= n) {
        limbsZero(t, m - n);
        limbsCopy(t + (m - n), m_limbs, n);
    } else {
        limbsCopy(t, m_limbs + (n - m), m);
    }
    limbsShr(t, m, 64 * m - size_t(exponent()) - 1);
    HugeInteger r;
    r.fromLimbs_(t, m);
    return std::move(r.setNegative_(isNegative()));
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

HugeFloat HugeFloat::sumOf(const HugeFloat& a, const HugeFloat& b, bool negateB)
{
    if (b.isZero())
        return a;
    if (a.isZero())
        return negateB ? b.negate() : b;
    const size_t n = std::max(a.limbCount(), b.limbCount());
    HugeFloat x = a.resize(n, false), y = b.resize(n, false);
    if (negateB)
        y.negate_();
    const int64_t d = int64_t(x.exponent()) - y.exponent();
    int64_t e = std::max(x.exponent(), y.exponent());
    if (d > 0)
        limbsShr(y.m_limbs, n, size_t(d));
    else if (d < 0)
        limbsShr(x.m_limbs, n, size_t(-d));
    bool negative = x.isNegative();
    if (negative == y.isNegative()) {
        if (limbsAddTo(x.m_limbs, n, y.m_limbs, n) != 0) {
            limbsShr(x.m_limbs, n, 1);
            x.m_limbs[n - 1] |= Limb(1) << 63;
            ++e;
        }
    } else {
        if (limbsSubFrom(x.m_limbs, n, y.m_limbs, n) != 0)
            negative = !negative;
        if (limbsIsZero(x.m_limbs, n))
            return std::move(x.zero_());
        const size_t lz = limbsLeadingZeros(x.m_limbs, n);
        limbsShl(x.m_limbs, n, lz);
        e -= int64_t(lz);
    }
    LimbPool::setExponent(x.m_limbs, checked(e));
    LimbPool::setNegative(x.m_limbs, negative);
    return x;
}

HugeFloat HugeFloat::productOf(const HugeFloat& a, const HugeFloat& b)
{
    if (a.isZero())
        return a;
    const size_t nA = a.limbCount(), nB = b.limbCount(), n = std::max(nA, nB);
    if (b.isZero())
        return HugeFloat(0, n);
    LimbScratch t(nA + nB);
    limbsZero(t, nA + nB); // a product is added up in its array
    limbsMul(a.m_limbs, nA, b.m_limbs, nB, t);
    int64_t e = int64_t(a.exponent()) + b.exponent() + 1;
    if (t[nA + nB - 1] >> 63 == 0) {
        limbsShl(t, nA + nB, 1);
        --e;
    }
    Limb* r = LimbPool::allocate(n);
    HugeFloat x = fromBlock(r);
    limbsCopy(r, t + (nA + nB - n), n);
    LimbPool::setExponent(r, checked(e));
    LimbPool::setNegative(r, a.isNegative() != b.isNegative());
    return x;
}

HugeFloat HugeFloat::quotientOf(const HugeFloat& a, const HugeFloat& b)
{
    if (a.isZero())
        return a;
    if (b.isZero())
        throw std::runtime_error("div by zero");
    const size_t nA = a.limbCount(), nB = b.limbCount(), n = std::max(nA, nB);
    LimbScratch num(n + nB), q(n);
    limbsZero(num, n + nB - nA);
    limbsCopy(num + (n + nB - nA), a.m_limbs, nA);
    int64_t e = int64_t(a.exponent()) - b.exponent() - 1;
    if (limbsDiv(num, n + nB, b.m_limbs, nB, q) != 0) {
        limbsShr(q, n, 1);
        q[n - 1] |= Limb(1) << 63;
        ++e;
    }
    Limb* r = LimbPool::allocate(n);
    HugeFloat x = fromBlock(r);
    limbsCopy(r, q, n);
    LimbPool::setExponent(r, checked(e));
    LimbPool::setNegative(r, a.isNegative() != b.isNegative());
    return x;
}

HugeFloat operator%(const HugeFloat& a, const HugeFloat& b)
{
    return a - (a / b).trunc() * b;
}

HugeFloat HugeFloat::sqrt() const
{
    if (isNegative())
        throw std::runtime_error("Negative numbers cannot be squared");
    if (isZero() || isOne())
        return *this;
    const size_t n = limbCount();
    HugeInteger m;
    m.fromLimbs_(m_limbs, n);
    m.grow_(2 * n + 2);
    // root of m * 2^k with k chosen so that the exponent is even and the root has 64 n bits or more
    int64_t x = int64_t(exponent()) - 64 * int64_t(n) + 1;
    int64_t k = 64 * int64_t(n);
    if ((x - k) & 1)
        ++k;
    m <<= k;
    HugeInteger r = m.sqrt();
    while (r * r > m)
        r -= HugeInteger(1);
    while ((r + HugeInteger(1)) * (r + HugeInteger(1)) <= m)
        r += HugeInteger(1);
    HugeFloat f(r.trim());
    const int64_t e = f.exponent() + (x - k) / 2;
    f.resize_(n, true);
    LimbPool::setExponent(f.m_limbs, checked(e));
    return f;
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
