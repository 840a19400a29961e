#pragma once

#include "common/XString.h"
#include "numbers/LimbPool.h"
#include "numbers/XFormatRule.h"

#include <cstddef>

namespace huge {

/// A fraction on its way into or out of text: a block of limbs, which it owns. The top bit of the
/// top limb stands for 1/2. Each radix has a class of its own below. The readers take digits of
/// their radix only and check nothing: the number reader has sorted out everything else.
class XRadixMantissa {
public:
    XRadixMantissa() = default;
    virtual ~XRadixMantissa() { LimbPool::release(m_limbs); }
    XRadixMantissa(const XRadixMantissa&) = delete;
    XRadixMantissa& operator=(const XRadixMantissa&) = delete;

    /// No block, or a block of 0 limbs.
    bool isEmpty() const noexcept { return size() == 0; }
    XRadixMantissa& clear_() noexcept;
    /// Bits down to the lowest one that is set.
    size_t bitLength() const noexcept;
    XRadixMantissa& setLimbs_(const Limb* source, size_t count);
    /// Fills the top of target, of count limbs, with the top limbs; what is left is cleared.
    void copyTo(Limb* target, size_t count) const noexcept;
    /// Reads the digits behind a point, truncated to limbCount limbs, 0 meaning as many as they
    /// need. Zero clears.
    virtual XRadixMantissa& parse_(const xstd::XString& digits, size_t limbCount) = 0;

    const Limb* limbs() const noexcept { return m_limbs; }
    size_t size() const noexcept { return m_limbs == nullptr ? 0 : LimbPool::count(m_limbs); }

protected:
    Limb* m_limbs = nullptr;
};

/// What the radixes 2, 8 and 16 share: digits of a fixed width in bits.
class XRadixMantissaBits : public XRadixMantissa {
public:
    XRadixMantissaBits& parse_(const xstd::XString& digits, size_t limbCount) override;
    /// The digits behind the point, as many as all bits need, made as long as the rule asks and
    /// grouped.
    virtual xstd::XString print(const XFormatRule& rule) const;

protected:
    explicit XRadixMantissaBits(unsigned width) : m_width(width) {}

private:
    unsigned m_width;
};

class XRadixMantissa2 final : public XRadixMantissaBits {
public:
    XRadixMantissa2() : XRadixMantissaBits(1) {}
};

class XRadixMantissa8 final : public XRadixMantissaBits {
public:
    XRadixMantissa8() : XRadixMantissaBits(3) {}
};

/// A fraction that is zero prints "0" where the rule leaves the count of digits open.
class XRadixMantissa16 final : public XRadixMantissaBits {
public:
    XRadixMantissa16() : XRadixMantissaBits(4) {}
    xstd::XString print(const XFormatRule& rule) const override;
};

/// Decimal digits; the way out is shortestDecimal, which looks at the whole number.
class XRadixMantissa10 final : public XRadixMantissa {
public:
    /// The limbs are all right, by a division by the power of ten.
    XRadixMantissa10& parse_(const xstd::XString& digits, size_t limbCount) override;
};

} // namespace huge
