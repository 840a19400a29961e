#pragma once

#include "common/XString.h"
#include "numbers/LimbPool.h"
#include "numbers/XFormatRule.h"

#include <cstddef>
#include <cstdint>

namespace huge {

/// An integer on its way into or out of text: a block of limbs, which it owns, and a sign. Each
/// radix has a class of its own below. The readers take digits of their radix only and check
/// nothing: the number reader has sorted out everything else.
class XRadixInt {
public:
    XRadixInt() = default;
    virtual ~XRadixInt();
    XRadixInt(const XRadixInt&) = delete;
    XRadixInt& operator=(const XRadixInt&) = delete;

    /// No block, or a block of 0 limbs.
    virtual bool isEmpty() const;
    virtual XRadixInt& clear_();
    virtual size_t bitLength() const;
    virtual XRadixInt& setInt_(uint64_t value);
    virtual XRadixInt& setLimbs_(const Limb* source, size_t count);
    /// Fills count limbs of target from the low limbs, or with fromTop from the high ones where
    /// there are more than count; what is left of target is cleared.
    virtual void copyTo(Limb* target, size_t count, bool fromTop = false) const;
    /// Reads an optional sign, the radix's prefix if it has one, and digits. No text clears.
    virtual XRadixInt& parse_(const xstd::XString& text) = 0;
    /// The digits without sign and prefix, grouped as the rule asks; "0" for zero.
    virtual xstd::XString print(const XFormatRule& rule) const;
    virtual xstd::XString group(const xstd::XString& digits, const XFormatRule& rule) const;
    /// The digits without leading zeros; none for zero.
    virtual xstd::XString digits() const = 0;

    const Limb* limbs() const noexcept { return m_limbs; }
    size_t size() const noexcept { return m_limbs == nullptr ? 0 : LimbPool::count(m_limbs); }
    bool neg() const noexcept { return m_neg != 0; }
    /// Gives the block away: the object is empty afterwards. The caller owns the block.
    Limb* takeLimbs() noexcept;

protected:
    /// Makes the block count cleared limbs long.
    void makeCleared(size_t count);
    /// Notes a leading sign and gives the place behind it and behind a prefix of 0 and a letter,
    /// of which mark is the lower-case form; mark 0 means that the radix has no prefix.
    size_t skipSignAndPrefix(const xstd::XString& text, char mark);

    Limb* m_limbs = nullptr;
    uint8_t m_neg = 0;
};

/// Binary digits, prefix "0b".
class XRadixInt2 final : public XRadixInt {
public:
    XRadixInt2& parse_(const xstd::XString& text) override;
    xstd::XString digits() const override;
};

/// Octal digits, prefix "0c".
class XRadixInt8 final : public XRadixInt {
public:
    XRadixInt8& parse_(const xstd::XString& text) override;
    xstd::XString digits() const override;
};

/// Hexadecimal digits, prefix "0x"; letters are printed in upper case.
class XRadixInt16 final : public XRadixInt {
public:
    XRadixInt16& parse_(const xstd::XString& text) override;
    xstd::XString digits() const override;
};

/// Decimal digits. Both ways look for a stop of the calculation.
class XRadixInt10 final : public XRadixInt {
public:
    XRadixInt10& parse_(const xstd::XString& text) override;
    xstd::XString digits() const override;
};

} // namespace huge
