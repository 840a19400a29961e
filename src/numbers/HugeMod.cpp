#include "numbers/HugeMod.h"

#include "numbers/numberTheory.h"

#include <stdexcept>
#include <utility>

namespace huge {

HugeMod::HugeMod(HugeInteger value, std::shared_ptr<HugeInteger> modulus)
    : m_value(std::move(value)), m_modulus(std::move(modulus))
{
    normalise_();
}

HugeMod::HugeMod(HugeInteger value, const HugeInteger& modulusValue)
    : HugeMod(std::move(value), std::make_shared<HugeInteger>(modulusValue))
{}

HugeMod& HugeMod::normalise_()
{
    if (m_modulus == nullptr)
        return *this;
    requireModulus(*m_modulus);
    if (!m_value.isNegative() && m_value < *m_modulus)
        return *this;
    m_value %= *m_modulus;
    if (m_value.isNegative())
        m_value += *m_modulus;
    return *this;
}

bool HugeMod::unifyModulus_(const std::shared_ptr<HugeInteger>& other)
{
    if (other == nullptr)
        return false;
    *this = HugeMod(m_value, chooseModulus(m_modulus, other));
    return true;
}

HugeMod operator+(const HugeMod& a, const HugeMod& b)
{
    return HugeMod(a.m_value + b.m_value, chooseModulus(a.m_modulus, b.m_modulus));
}

HugeMod operator-(const HugeMod& a, const HugeMod& b)
{
    return HugeMod(a.m_value - b.m_value, chooseModulus(a.m_modulus, b.m_modulus));
}

HugeMod operator*(const HugeMod& a, const HugeMod& b)
{
    const std::shared_ptr<HugeInteger>& m = chooseModulus(a.m_modulus, b.m_modulus);
    return HugeMod(m == nullptr ? a.m_value * b.m_value : mulMod(a.m_value, b.m_value, *m), m);
}

HugeMod operator/(const HugeMod& a, const HugeMod& b)
{
    const std::shared_ptr<HugeInteger>& m = chooseModulus(a.m_modulus, b.m_modulus);
    if (m == nullptr)
        return HugeMod(a.m_value / b.m_value, m);
    return HugeMod(mulMod(a.m_value, invMod(b.m_value, *m), *m), m);
}

HugeMod HugeMod::operator-() const
{
    return HugeMod(m_modulus == nullptr ? -m_value : *m_modulus - m_value, m_modulus);
}

HugeMod HugeMod::operator<<(int64_t bits) const
{
    return HugeMod(m_value * 1 << bits, m_modulus); // a product has one spare limb
}

HugeMod HugeMod::operator>>(int64_t bits) const
{
    return HugeMod(m_value * 1 >> bits, m_modulus);
}

HugeMod HugeMod::inverse() const
{
    if (m_modulus == nullptr)
        throw std::runtime_error("The residue has no modulus");
    return HugeMod(invMod(m_value, *m_modulus), m_modulus);
}

HugeMod HugeMod::pow(const HugeMod& exponent) const
{
    if (m_modulus == nullptr && exponent.m_modulus != nullptr)
        return HugeMod(m_value, exponent.m_modulus).pow(exponent.m_value);
    return pow(exponent.m_value);
}

HugeMod HugeMod::pow(const HugeInteger& exponent) const
{
    if (m_modulus == nullptr)
        return HugeMod(m_value.pow(exponent), m_modulus);
    return HugeMod(powMod(m_value, exponent, *m_modulus), m_modulus);
}

HugeMod HugeMod::sqrt() const
{
    return HugeMod(m_modulus == nullptr ? m_value.sqrt() : sqrtMod(m_value, *m_modulus), m_modulus);
}

bool HugeMod::isSquare() const
{
    return m_modulus != nullptr && isQuadratic(m_value, *m_modulus);
}

xstd::XString HugeMod::fmt(const XFormatRule& rule) const
{
    xstd::XString text = m_value.fmt(rule);
    if (!rule.mod)
        return text;
    text += " (mod ";
    text += m_modulus == nullptr ? xstd::XString("0") : m_modulus->fmt(rule);
    text += ")";
    return text;
}

const std::shared_ptr<HugeInteger>& chooseModulus(const std::shared_ptr<HugeInteger>& a,
                                                  const std::shared_ptr<HugeInteger>& b) noexcept
{
    if (a == nullptr)
        return b;
    return b == nullptr || *a <= *b ? a : b;
}

} // namespace huge
