#pragma once

#include "common/XString.h"
#include "numbers/HugeInteger.h"
#include "numbers/XFormatRule.h"

#include <compare>
#include <cstdint>
#include <memory>

namespace huge {

/// An integer modulo a shared modulus: 0 <= value < modulus after every change. Without a modulus
/// it is a plain integer that takes one on from the first residue it meets. Of two moduli the
/// smaller one wins. Residues that come from one another share the modulus object.
class HugeMod {
public:
    HugeMod() noexcept = default;
    /// Throws std::runtime_error "The modulus must be positive" where it is not.
    HugeMod(HugeInteger value, std::shared_ptr<HugeInteger> modulus);
    /// Makes a modulus object of its own, and throws the same.
    HugeMod(HugeInteger value, const HugeInteger& modulusValue);

    const HugeInteger& value() const noexcept { return m_value; }
    /// Empty for a residue without modulus.
    const std::shared_ptr<HugeInteger>& modulus() const noexcept { return m_modulus; }
    bool hasModulus() const noexcept { return m_modulus != nullptr; }
    bool isNull() const noexcept { return m_value.isNull(); }
    bool isZero() const noexcept { return m_value.isZero(); }

    /// Brings the value into the modulus' range.
    HugeMod& normalise_();
    /// Takes other as modulus where there is none or where it is smaller; false for an empty one.
    /// Throws for one that is not positive.
    bool unifyModulus_(const std::shared_ptr<HugeInteger>& other);

    friend HugeMod operator+(const HugeMod& a, const HugeMod& b);
    friend HugeMod operator-(const HugeMod& a, const HugeMod& b);
    friend HugeMod operator*(const HugeMod& a, const HugeMod& b);
    /// With a modulus the product with the inverse, which throws where there is none; without one
    /// the integers' quotient.
    friend HugeMod operator/(const HugeMod& a, const HugeMod& b);
    friend HugeMod operator+(const HugeMod& a, const HugeInteger& b)
    {
        return a + HugeMod(b, a.m_modulus);
    }
    friend HugeMod operator-(const HugeMod& a, const HugeInteger& b)
    {
        return a - HugeMod(b, a.m_modulus);
    }
    friend HugeMod operator*(const HugeMod& a, const HugeInteger& b)
    {
        return a * HugeMod(b, a.m_modulus);
    }
    friend HugeMod operator/(const HugeMod& a, const HugeInteger& b)
    {
        return a / HugeMod(b, a.m_modulus);
    }
    friend HugeMod operator+(const HugeInteger& a, const HugeMod& b)
    {
        return HugeMod(a, b.m_modulus) + b;
    }
    friend HugeMod operator-(const HugeInteger& a, const HugeMod& b)
    {
        return HugeMod(a, b.m_modulus) - b;
    }
    friend HugeMod operator*(const HugeInteger& a, const HugeMod& b)
    {
        return HugeMod(a, b.m_modulus) * b;
    }
    friend HugeMod operator/(const HugeInteger& a, const HugeMod& b)
    {
        return HugeMod(a, b.m_modulus) / b;
    }
    HugeMod& operator+=(const HugeMod& b) { return *this = *this + b; }
    HugeMod& operator-=(const HugeMod& b) { return *this = *this - b; }
    HugeMod& operator*=(const HugeMod& b) { return *this = *this * b; }
    HugeMod& operator/=(const HugeMod& b) { return *this = *this / b; }
    HugeMod& operator+=(const HugeInteger& b) { return *this = *this + b; }
    HugeMod& operator-=(const HugeInteger& b) { return *this = *this - b; }
    HugeMod& operator*=(const HugeInteger& b) { return *this = *this * b; }
    HugeMod& operator/=(const HugeInteger& b) { return *this = *this / b; }
    HugeMod operator-() const;
    /// Shifts the value with one spare top limb; bits beyond that are lost. A negative count
    /// shifts the other way.
    HugeMod operator<<(int64_t bits) const;
    HugeMod operator>>(int64_t bits) const;

    /// Throws std::runtime_error "The residue has no modulus", or "There is no inverse".
    HugeMod inverse() const;
    /// The own modulus or, without one, the exponent's; without either the integers' power.
    HugeMod pow(const HugeMod& exponent) const;
    /// A negative exponent takes the inverse of the power; without modulus it fails as integers do.
    HugeMod pow(const HugeInteger& exponent) const;
    /// A root modulo a prime, 0 where there is none; without modulus the integer square root.
    HugeMod sqrt() const;
    /// Whether the value is a square modulo an odd prime; false without modulus.
    bool isSquare() const;

    /// By value alone: moduli are not looked at.
    friend bool operator==(const HugeMod& a, const HugeMod& b) noexcept
    {
        return a.m_value == b.m_value;
    }
    friend std::strong_ordering operator<=>(const HugeMod& a, const HugeMod& b) noexcept
    {
        return a.m_value <=> b.m_value;
    }
    friend bool operator==(const HugeMod& a, const HugeInteger& b) noexcept
    {
        return a.m_value == b;
    }
    friend std::strong_ordering operator<=>(const HugeMod& a, const HugeInteger& b) noexcept
    {
        return a.m_value <=> b;
    }

    /// The value, and with rule.mod the modulus behind it: "5 (mod 7)", or 0 where there is none.
    xstd::XString fmt(const XFormatRule& rule) const;
    xstd::XString toString() const { return fmt(defaultFormatRule); }

private:
    HugeInteger m_value;
    std::shared_ptr<HugeInteger> m_modulus;
};

/// The modulus of a result: an empty one gives way, of two the smaller is taken, a on a tie.
const std::shared_ptr<HugeInteger>& chooseModulus(const std::shared_ptr<HugeInteger>& a,
                                                  const std::shared_ptr<HugeInteger>& b) noexcept;

} // namespace huge
