#pragma once

#include "common/XString.h"
#include "numbers/LimbPool.h"
#include "numbers/XFormatRule.h"
#include "numbers/limbs.h"

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace huge {

/// A whole number of up to 20,799 limbs: magnitude and sign in one block of the pool, which the
/// number owns alone. Copying copies the block, moving takes it and leaves a null number.
///
/// A value has many shapes and every operation takes them all: a number without block ("null") and
/// a block of zeros are zero, and the top limbs of a block may be zero. Limb counts are part of a
/// result where they show (complement, shifts, Base64 text), so operations say which they give. A
/// zero never carries the sign flag. What needs more limbs than there can be throws
/// std::runtime_error "Number size must less than 20800"; a failed operation changes nothing.
class HugeInteger {
public:
    HugeInteger() noexcept = default;
    /// The value on a block of limbCount limbs, at least one.
    template <std::signed_integral T>
    explicit HugeInteger(T value, size_t limbCount = 1)
    {
        if (limbCount == 1)
            setOneLimb(value);
        else
            setWide(value, limbCount);
    }
    HugeInteger(const HugeInteger& other) : m_limbs(copyBlock(other.m_limbs)) {}
    HugeInteger(HugeInteger&& other) noexcept : m_limbs(std::exchange(other.m_limbs, nullptr)) {}
    ~HugeInteger() { LimbPool::release(m_limbs); }

    HugeInteger& operator=(const HugeInteger& other);
    HugeInteger& operator=(HugeInteger&& other) noexcept
    {
        if (this != &other)
            LimbPool::release(std::exchange(m_limbs, std::exchange(other.m_limbs, nullptr)));
        return *this;
    }
    /// The value on one limb.
    template <std::signed_integral T>
    HugeInteger& operator=(T value)
    {
        setOneLimb(value);
        return *this;
    }
    /// The value on one limb.
    static HugeInteger fromUnsigned(uint64_t value);
    /// Takes over a block of the pool, which may be null.
    static HugeInteger fromBlock(Limb* block) noexcept
    {
        HugeInteger result;
        result.m_limbs = block;
        return result;
    }

    /// Gives the block away: the number is null afterwards, and the caller owns the block.
    Limb* releaseBlock() && noexcept { return std::exchange(m_limbs, nullptr); }

    void swap(HugeInteger& other) noexcept { std::swap(m_limbs, other.m_limbs); }

    // The block

    /// Limb 0, or null for a number without block.
    Limb* limbs() noexcept { return m_limbs; }
    const Limb* limbs() const noexcept { return m_limbs; }
    /// Limbs of the block, spare ones at the top included.
    size_t size() const noexcept { return m_limbs == nullptr ? 0 : LimbPool::count(m_limbs); }
    /// Limb count, sign flag and exponent as documents and program images hold them; 0 for null.
    uint64_t headerWord() const noexcept { return m_limbs == nullptr ? 0 : m_limbs[-1]; }
    /// The number on a block as the header word tells, with byteCount bytes as its low limbs and
    /// the rest cleared. Throws std::runtime_error where the bytes exceed the block, or by the
    /// limit.
    static HugeInteger fromHeaderAndBytes(uint64_t headerWord, const uint8_t* bytes,
                                          size_t byteCount);

    /// Makes the block limbCount limbs long. With keep the value stays as far as it fits, the sign
    /// too; without it the limbs are not cleared and the sign is positive.
    HugeInteger& setSize_(size_t limbCount, bool keep);
    /// Makes the block longer if it is shorter than limbCount; the value stays.
    HugeInteger& grow_(size_t limbCount);
    /// A copy without spare limbs at the top; zero keeps one limb.
    HugeInteger trim() const;
    /// Gives the block back: the number is null.
    HugeInteger& clear_() noexcept;
    /// Makes the value 0 and keeps the block.
    HugeInteger& zeroLimbs_() noexcept;
    /// Copies limbs or little-endian bytes in; the block has at least minCount limbs, and the sign
    /// is positive.
    HugeInteger& fromLimbs_(const Limb* limbs, size_t count, size_t minCount = 0);
    HugeInteger& fromBytes_(const uint8_t* bytes, size_t byteCount, size_t minLimbs = 0);

    // Questions

    bool isNull() const noexcept { return m_limbs == nullptr; }
    bool isZero() const noexcept
    {
        if (m_limbs == nullptr)
            return true;
        const size_t n = LimbPool::count(m_limbs);
        return n == 1 ? m_limbs[0] == 0 : limbsIsZero(m_limbs, n);
    }
    bool isOne() const noexcept
    {
        return m_limbs != nullptr && !isNegative() && limbsIsOne(m_limbs, size());
    }
    bool isEven() const noexcept { return size() == 0 || (m_limbs[0] & 1) == 0; }
    bool isNegative() const noexcept { return m_limbs != nullptr && LimbPool::isNegative(m_limbs); }
    /// Whether the value is in the range of a signed 64-bit integer.
    bool fitsInt64() const noexcept;
    size_t bitLength() const noexcept { return 64 * size() - leadingZeroBits(); }
    size_t effectiveSize() const noexcept { return limbsEffective(m_limbs, size()); }
    size_t leadingZeroBits() const noexcept { return limbsLeadingZeros(m_limbs, size()); }
    size_t trailingZeroBits() const noexcept { return limbsTrailingZeros(m_limbs, size()); }
    /// Limb 0 with the sign applied; further limbs are not looked at.
    int64_t asInt64() const noexcept
    {
        if (size() == 0)
            return 0;
        return LimbPool::isNegative(m_limbs) ? int64_t(0 - m_limbs[0]) : int64_t(m_limbs[0]);
    }
    /// The nearest double towards zero; infinite for a value of more than 1,024 bits.
    double asDouble() const noexcept;

    // Sign

    HugeInteger& setNegative_(bool negative) noexcept
    {
        if (m_limbs != nullptr)
            LimbPool::setNegative(m_limbs, negative && !isZero());
        return *this;
    }
    HugeInteger& negate_() noexcept { return setNegative_(!isNegative()); }
    HugeInteger abs() const;
    HugeInteger operator-() const { return std::move(HugeInteger(*this).negate_()); }

    // Arithmetic. A sum or difference has the limbs of the longer operand, and one more if a carry
    // needs it.

    friend HugeInteger operator+(const HugeInteger& a, const HugeInteger& b)
    {
        int64_t x, y, sum;
        if (a.isSmall(x) && b.isSmall(y) && !__builtin_add_overflow(x, y, &sum))
            return HugeInteger(sum);
        return sumOf(a, b);
    }
    friend HugeInteger operator-(const HugeInteger& a, const HugeInteger& b)
    {
        int64_t x, y, difference;
        if (a.isSmall(x) && b.isSmall(y) && !__builtin_sub_overflow(x, y, &difference))
            return HugeInteger(difference);
        return differenceOf(a, b);
    }
    friend HugeInteger operator+(const HugeInteger& a, int64_t b)
    {
        int64_t x, sum;
        if (a.isSmall(x) && !__builtin_add_overflow(x, b, &sum))
            return HugeInteger(sum);
        return sumOf(a, b);
    }
    friend HugeInteger operator-(const HugeInteger& a, int64_t b)
    {
        int64_t x, difference;
        if (a.isSmall(x) && !__builtin_sub_overflow(x, b, &difference))
            return HugeInteger(difference);
        return differenceOf(a, b);
    }
    HugeInteger& operator+=(const HugeInteger& b)
    {
        int64_t x, y, sum;
        if (!isSmall(x) || !b.isSmall(y) || __builtin_add_overflow(x, y, &sum))
            return addInPlace(b, false);
        setOneLimb(sum);
        return *this;
    }
    HugeInteger& operator-=(const HugeInteger& b)
    {
        int64_t x, y, difference;
        if (!isSmall(x) || !b.isSmall(y) || __builtin_sub_overflow(x, y, &difference))
            return addInPlace(b, true);
        setOneLimb(difference);
        return *this;
    }
    HugeInteger& operator+=(int64_t b)
    {
        int64_t x, sum;
        if (!isSmall(x) || __builtin_add_overflow(x, b, &sum))
            return addInPlace(b, false);
        setOneLimb(sum);
        return *this;
    }
    HugeInteger& operator-=(int64_t b)
    {
        int64_t x, difference;
        if (!isSmall(x) || __builtin_sub_overflow(x, b, &difference))
            return addInPlace(b, true);
        setOneLimb(difference);
        return *this;
    }

    /// A product has as many limbs as its operands without their spare limbs together, unless only
    /// a spare top limb would pass the limit.
    friend HugeInteger operator*(const HugeInteger& a, const HugeInteger& b)
    {
        int64_t x, y;
        if (a.isSmall(x) && b.isSmall(y) && x != 0 && y != 0)
            return twoLimbProduct(x, y);
        return productOf(a, b);
    }
    friend HugeInteger operator*(const HugeInteger& a, int64_t b)
    {
        int64_t x;
        if (a.isSmall(x) && x != 0)
            return twoLimbProduct(x, b);
        return productOf(a, b);
    }
    HugeInteger& operator*=(const HugeInteger& b) { return *this = *this * b; }
    HugeInteger& operator*=(int64_t b) { return *this = *this * b; }

    /// Division truncates; the remainder has the dividend's sign. A divisor of 0 throws
    /// std::runtime_error "div with zero".
    friend HugeInteger operator/(const HugeInteger& a, const HugeInteger& b)
    {
        int64_t x, y;
        if (a.isSmall(x) && b.isSmall(y) && y != 0)
            return HugeInteger(x / y);
        return quotientOf(a, b);
    }
    friend HugeInteger operator%(const HugeInteger& a, const HugeInteger& b)
    {
        int64_t x, y;
        if (a.isSmall(x) && b.isSmall(y) && y != 0)
            return HugeInteger(x % y);
        return remainderOf(a, b);
    }
    friend HugeInteger operator/(const HugeInteger& a, int64_t b)
    {
        int64_t x;
        if (a.isSmall(x) && b != 0)
            return HugeInteger(x / b); // x is never the lowest 64-bit integer
        return quotientOf(a, b);
    }
    friend HugeInteger operator%(const HugeInteger& a, int64_t b)
    {
        int64_t x;
        if (a.isSmall(x) && b != 0)
            return HugeInteger(x % b);
        return remainderOf(a, b);
    }
    HugeInteger& operator/=(const HugeInteger& b) { return *this = *this / b; }
    HugeInteger& operator%=(const HugeInteger& b) { return *this = *this % b; }
    HugeInteger& operator/=(int64_t b) { return *this = *this / b; }
    HugeInteger& operator%=(int64_t b) { return *this = *this % b; }
    /// Quotient and remainder at the cost of one division; either pointer may be null.
    static void divide(const HugeInteger& a, const HugeInteger& b, HugeInteger* quotient,
                       HugeInteger* remainder);

    /// Adds or subtracts 1 from the magnitude, whatever the sign; a carry out of the block is lost.
    HugeInteger& operator++() noexcept;
    HugeInteger& operator--() noexcept;
    HugeInteger operator++(int);
    HugeInteger operator--(int);

    /// Throws std::runtime_error "Power exponent can't be negative!" where it is, and the limit's
    /// text before it calculates where the power cannot fit.
    HugeInteger pow(int64_t exponent) const;
    HugeInteger pow(const HugeInteger& exponent) const;
    /// The square root without its fraction, or one more. Throws std::runtime_error "Negative
    /// numbers cannot be squared".
    HugeInteger sqrt() const;

    // Bits. Limb arrays as they stand: signs are not looked at, and | & ^ give a positive result
    // with the limbs of the longer operand, the shorter one going on with its top bit.

    friend HugeInteger operator|(const HugeInteger& a, const HugeInteger& b);
    friend HugeInteger operator&(const HugeInteger& a, const HugeInteger& b);
    friend HugeInteger operator^(const HugeInteger& a, const HugeInteger& b);
    HugeInteger& operator|=(const HugeInteger& b) { return *this = *this | b; }
    HugeInteger& operator&=(const HugeInteger& b) { return *this = *this & b; }
    HugeInteger& operator^=(const HugeInteger& b) { return *this = *this ^ b; }
    /// Complements every bit of the block; the sign stays.
    HugeInteger operator~() const;
    /// Shifts inside the block: the limb count stays and bits that leave it are lost. A negative
    /// count shifts the other way.
    HugeInteger operator<<(int64_t bits) const { return std::move(HugeInteger(*this) <<= bits); }
    HugeInteger operator>>(int64_t bits) const { return std::move(HugeInteger(*this) >>= bits); }
    HugeInteger& operator<<=(int64_t bits) noexcept;
    HugeInteger& operator>>=(int64_t bits) noexcept;
    /// Bits above the block read as 0.
    bool testBit(size_t index) const noexcept;
    /// Sets or clears bits, first and last included. Setting a bit above the block makes it longer.
    HugeInteger& setBit_(size_t index, bool value) { return setBits_(index, index, value); }
    HugeInteger& setBits_(size_t first, size_t last, bool value);
    /// Makes the number random: bits bits, the highest of them set with topSet. A block that is
    /// too short becomes longer, a longer one keeps its size.
    HugeInteger& randomBits_(size_t bits, bool topSet);
    /// Makes all bits of the block random.
    HugeInteger& randomFull_(bool topSet) { return randomBits_(64 * size(), topSet); }

    // Order

    /// -1, 0 or 1 as the number is below, equal to or above b.
    int compare(const HugeInteger& b) const noexcept
    {
        if (size() == 1 && b.size() == 1 && !isNegative() && !b.isNegative())
            return m_limbs[0] < b.m_limbs[0] ? -1 : m_limbs[0] != b.m_limbs[0];
        return compareAny(b);
    }
    int compare(int64_t b) const noexcept;
    friend bool operator==(const HugeInteger& a, const HugeInteger& b) noexcept
    {
        return a.compare(b) == 0;
    }
    friend bool operator==(const HugeInteger& a, int64_t b) noexcept { return a.compare(b) == 0; }
    friend std::strong_ordering operator<=>(const HugeInteger& a, const HugeInteger& b) noexcept
    {
        return a.compare(b) <=> 0;
    }
    friend std::strong_ordering operator<=>(const HugeInteger& a, int64_t b) noexcept
    {
        return a.compare(b) <=> 0;
    }

    // Text

    /// The text for a rule.
    xstd::XString fmt(const XFormatRule& rule) const;
    /// All decimal digits.
    xstd::XString toString() const { return fmt(defaultFormatRule); }
    /// Takes the number that the text begins with, a literal in radix 2, 8, 10 or 16; an exponent
    /// acts, and what stands behind the point after that is dropped. No number gives 0 on one limb.
    HugeInteger& fromText_(const xstd::XString& text);

private:
    static Limb* copyBlock(const Limb* block)
    {
        if (block == nullptr)
            return nullptr;
        const size_t n = LimbPool::count(block);
        Limb* copy = LimbPool::allocate(n);
        copy[-1] = block[-1];
        if (n == 1)
            copy[0] = block[0];
        else
            limbsCopy(copy, block, n);
        return copy;
    }
    void setOneLimb(int64_t value)
    {
        if (size() != 1) {
            Limb* block = LimbPool::allocate(1);
            LimbPool::release(m_limbs);
            m_limbs = block;
        }
        m_limbs[-1] = 1; // sign flag and exponent are 0
        m_limbs[0] = value < 0 ? 0 - uint64_t(value) : uint64_t(value);
        LimbPool::setNegative(m_limbs, value < 0);
    }
    void setWide(int64_t value, size_t limbCount);
    /// Whether the number lies on one limb below 2^63, and its value. Most numbers of a sheet do:
    /// the operators calculate with these where they stand, without a call.
    bool isSmall(int64_t& value) const noexcept
    {
        if (size() != 1 || m_limbs[0] >> 63 != 0)
            return false;
        value = asInt64();
        return true;
    }
    static HugeInteger twoLimbProduct(int64_t x, int64_t y)
    {
        Limb* r = LimbPool::allocate(2);
        const Limb128 product = Limb128(x < 0 ? 0 - uint64_t(x) : uint64_t(x)) *
                                (y < 0 ? 0 - uint64_t(y) : uint64_t(y));
        r[0] = Limb(product);
        r[1] = Limb(product >> 64);
        LimbPool::setNegative(r, (x < 0) != (y < 0) && product != 0);
        return fromBlock(r);
    }

    /// A number as the slow paths read it: limbs and sign, from a block or from a plain integer.
    struct Operand {
        Operand(const HugeInteger& x) noexcept
            : limbs(x.m_limbs), size(x.size()), negative(x.isNegative())
        {}
        Operand(int64_t x) noexcept
            : limbs(&own), size(1), negative(x < 0), own(x < 0 ? 0 - uint64_t(x) : uint64_t(x))
        {}
        Operand(const Operand&) = delete;
        Operand& operator=(const Operand&) = delete;

        const Limb* limbs;
        size_t size;
        bool negative;
        Limb own = 0;
    };
    static HugeInteger addSigned(const Operand& a, const Operand& b, bool negativeB);
    static HugeInteger sumOf(const Operand& a, const Operand& b);
    static HugeInteger differenceOf(const Operand& a, const Operand& b);
    static HugeInteger productOf(const Operand& a, const Operand& b);
    static HugeInteger quotientOf(const Operand& a, const Operand& b);
    static HugeInteger remainderOf(const Operand& a, const Operand& b);
    static void divideAny(const Operand& a, const Operand& b, HugeInteger* quotient,
                          HugeInteger* remainder);
    HugeInteger& addInPlace(const Operand& b, bool subtract);
    int compareAny(const HugeInteger& b) const noexcept;

    Limb* m_limbs = nullptr;
};

/// The greatest common divisor, with the sign that the last remainder of Euclid's algorithm has.
HugeInteger gcd(const HugeInteger& a, const HugeInteger& b);
/// The least common multiple, a * b / gcd(a, b); fails like a division when both are 0.
HugeInteger lcm(const HugeInteger& a, const HugeInteger& b);

} // namespace huge
