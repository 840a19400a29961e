#pragma once

#include "common/XString.h"
#include "numbers/HugeInteger.h"
#include "numbers/LimbPool.h"
#include "numbers/XFormatRule.h"

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace huge {

/// A binary floating-point number: a mantissa of up to 20,799 limbs, an exponent of 32 bits and a
/// sign in one block of the pool, which the number owns alone. With n limbs that read as the
/// integer M the value is M * 2^(exponent - 64 * n + 1); the top bit of a value that is not zero is
/// set, so 2^exponent <= |value| < 2^(exponent + 1).
///
/// Precision is the limb count and travels with the values: a result has the limbs of the longer
/// operand, and a zero as left operand those that each operation tells. Arithmetic truncates. A
/// number without block ("null") is zero; a zero has exponent 0 and no sign. There is no infinity
/// and no other special value: a result whose exponent leaves 32 bits throws std::runtime_error
/// "HugeFloat exponent is out of range", one past the limb limit the limit's text, and a failed
/// operation changes nothing.
class HugeFloat {
public:
    HugeFloat() noexcept = default;
    /// The value on limbCount limbs, at least one.
    template <std::signed_integral T>
    explicit HugeFloat(T value, size_t limbCount = 1)
        : HugeFloat(fromMagnitude(value < 0 ? 0 - uint64_t(value) : uint64_t(value), value < 0,
                                  limbCount))
    {}
    /// A double that is not finite throws std::runtime_error "A float must be finite".
    template <std::floating_point T>
    explicit HugeFloat(T value, size_t limbCount = 1) : HugeFloat(fromDouble(value, limbCount))
    {}
    static HugeFloat fromUnsigned(uint64_t value, size_t limbCount = 1)
    {
        return fromMagnitude(value, false, limbCount);
    }
    /// The integer's value with the limbs of its block as precision; a null integer gives null.
    explicit HugeFloat(const HugeInteger& value);
    explicit HugeFloat(HugeInteger&& value);

    HugeFloat(const HugeFloat& other) : m_limbs(copyBlock(other.m_limbs)) {}
    HugeFloat(HugeFloat&& other) noexcept : m_limbs(std::exchange(other.m_limbs, nullptr)) {}
    ~HugeFloat() { LimbPool::release(m_limbs); }
    HugeFloat& operator=(const HugeFloat& other);
    HugeFloat& operator=(HugeFloat&& other) noexcept
    {
        if (this != &other)
            LimbPool::release(std::exchange(m_limbs, std::exchange(other.m_limbs, nullptr)));
        return *this;
    }
    void swap(HugeFloat& other) noexcept { std::swap(m_limbs, other.m_limbs); }

    /// Takes over a block of the pool whose header tells sign and exponent: null, zero, or a
    /// mantissa with its top bit set.
    static HugeFloat fromBlock(Limb* block) noexcept
    {
        HugeFloat result;
        result.m_limbs = block;
        return result;
    }
    /// The number on a block as the header word tells, with byteCount bytes as its mantissa. Throws
    /// std::runtime_error where the bytes don't fill the block exactly, where the top bit of a
    /// value that is not zero is clear, or by the limit.
    static HugeFloat fromHeaderAndBytes(uint64_t headerWord, const uint8_t* bytes,
                                        size_t byteCount);
    /// The number from an integer part of nInt limbs and a fraction of nFrac limbs, limb 0 lowest
    /// in both, truncated to limbCount limbs; 0 keeps all limbs.
    static HugeFloat fromLimbs_(const Limb* intLimbs, size_t nInt, const Limb* fracLimbs,
                                size_t nFrac, size_t limbCount);
    /// Reads a number, truncated to limbCount limbs; 0 takes as many as the text asks for or its
    /// digits need. A text without digits is zero.
    static HugeFloat fromText_(const xstd::XString& text, size_t limbCount = 0);

    // The block

    /// Limb 0 of the mantissa, or null for a number without block.
    Limb* limbs() noexcept { return m_limbs; }
    const Limb* limbs() const noexcept { return m_limbs; }
    /// The precision: limbs of the mantissa, 0 for null.
    size_t limbCount() const noexcept { return m_limbs == nullptr ? 0 : LimbPool::count(m_limbs); }
    int32_t exponent() const noexcept
    {
        return m_limbs == nullptr ? 0 : LimbPool::exponent(m_limbs);
    }
    /// Limb count, sign flag and exponent as program images hold them; 0 for null.
    uint64_t headerWord() const noexcept { return m_limbs == nullptr ? 0 : m_limbs[-1]; }

    // Questions

    bool isNull() const noexcept { return m_limbs == nullptr; }
    bool isZero() const noexcept { return m_limbs == nullptr || m_limbs[limbCount() - 1] == 0; }
    bool isNegative() const noexcept { return m_limbs != nullptr && LimbPool::isNegative(m_limbs); }
    bool isInteger() const noexcept;
    bool isOne() const noexcept;
    bool isMinusOne() const noexcept;
    /// Whether the value is zero within the last 4 bits of a number of size 1.
    bool isSimilarZero() const noexcept;

    // Sign and size

    HugeFloat& setSign(bool negative) noexcept
    {
        if (m_limbs != nullptr)
            LimbPool::setNegative(m_limbs, negative && !isZero());
        return *this;
    }
    HugeFloat& negate_() noexcept { return setSign(!isNegative()); }
    HugeFloat negate() const { return std::move(HugeFloat(*this).negate_()); }
    HugeFloat operator-() const { return negate(); }
    HugeFloat abs() const { return std::move(HugeFloat(*this).setSign(false)); }
    /// Makes the value 0 and keeps the precision.
    HugeFloat& zero_() noexcept;
    /// The value divided by 2^count, exactly; a negative count multiplies.
    HugeFloat shiftExponent(int64_t count) const;
    /// The value on limbCount limbs. What is cut off is dropped, or with round carried by its
    /// highest bit into what stays.
    HugeFloat resize(size_t limbCount, bool round) const;
    /// The same in place, truncating; without keepValue the limbs are not cleared.
    HugeFloat& resize_(size_t limbCount, bool keepValue);

    // Conversion

    /// The value without its fraction, at the same precision.
    HugeFloat trunc() const { return std::move(HugeFloat(*this).trunc_()); }
    HugeFloat& trunc_() noexcept;
    /// The value without its fraction, on exponent / 64 + 1 limbs; a value below 1 in size gives 0
    /// on one limb.
    HugeInteger toInteger() const;
    /// Limb 0 of toInteger, with the sign.
    int64_t asInt64() const;
    /// The nearest double towards zero; infinite beyond its range.
    double asDouble() const noexcept;

    // Arithmetic

    friend HugeFloat operator+(const HugeFloat& a, const HugeFloat& b)
    {
        return sumOf(a, b, false);
    }
    friend HugeFloat operator-(const HugeFloat& a, const HugeFloat& b) { return sumOf(a, b, true); }
    friend HugeFloat operator*(const HugeFloat& a, const HugeFloat& b) { return productOf(a, b); }
    /// Throws std::runtime_error "div by zero".
    friend HugeFloat operator/(const HugeFloat& a, const HugeFloat& b) { return quotientOf(a, b); }
    /// a - trunc(a / b) * b, each step truncating; throws like a division.
    friend HugeFloat operator%(const HugeFloat& a, const HugeFloat& b);
    HugeFloat& operator+=(const HugeFloat& b) { return *this = *this + b; }
    HugeFloat& operator-=(const HugeFloat& b) { return *this = *this - b; }
    HugeFloat& operator*=(const HugeFloat& b) { return *this = *this * b; }
    HugeFloat& operator/=(const HugeFloat& b) { return *this = *this / b; }

    /// The square root, truncated: its mantissa is right to the last bit. Throws
    /// std::runtime_error "Negative numbers cannot be squared".
    HugeFloat sqrt() const;

    // Order: by value, whatever the precisions.

    /// -1, 0 or 1 as the number is below, equal to or above b.
    int compare(const HugeFloat& b) const noexcept;
    friend bool operator==(const HugeFloat& a, const HugeFloat& b) noexcept
    {
        return a.compare(b) == 0;
    }
    friend std::strong_ordering operator<=>(const HugeFloat& a, const HugeFloat& b) noexcept
    {
        return a.compare(b) <=> 0;
    }

    // Text

    /// The text for a rule; in decimal the shortest that reads back to the same value at the same
    /// precision, rounded to the rule's digits.
    xstd::XString fmt(const XFormatRule& rule) const;
    xstd::XString toString() const { return fmt(defaultFormatRule); }

private:
    static Limb* copyBlock(const Limb* block);
    static HugeFloat fromMagnitude(uint64_t magnitude, bool negative, size_t limbCount);
    static HugeFloat fromDouble(double value, size_t limbCount);
    static HugeFloat sumOf(const HugeFloat& a, const HugeFloat& b, bool negateB);
    static HugeFloat productOf(const HugeFloat& a, const HugeFloat& b);
    static HugeFloat quotientOf(const HugeFloat& a, const HugeFloat& b);

    Limb* m_limbs = nullptr;
};

/// Throws the failure of a result whose exponent leaves 32 bits.
[[noreturn]] void failFloatExponent();
/// The exponent, if it fits 32 bits; throws that failure otherwise.
int32_t floatExponent(int64_t exponent);

} // namespace huge
