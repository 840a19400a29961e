#pragma once

#include "numbers/HugeImag.h"
#include "values/HugeVar.h"

#include <utility>

namespace huge {

/// A complex number. Next to a real number or a truth value it does the work; it has no order and
/// no remainder. It comes from an imaginary literal, and from real operations whose result is not
/// real: the root, the power or the logarithm of a negative number.
class HugeVarImag final : public HugeVar {
public:
    explicit HugeVarImag(const HugeImag& value) : HugeVar(HugeVarClass::Imag), m_value(value) {}
    explicit HugeVarImag(HugeImag&& value) noexcept
        : HugeVar(HugeVarClass::Imag), m_value(std::move(value))
    {}

    const HugeImag& value() const noexcept { return m_value; }
    HugeImag& value() noexcept { return m_value; }

    int typeId() const override { return varImag; }
    const std::type_info& typeInfo() const override { return typeid(HugeImag); }
    xstd::XString typeName() const override { return "HugeImag"; }
    size_t objectSize() const override { return sizeof(*this); }
    bool isNull() const override { return m_value.isNull(); }
    bool isZero() const override { return m_value.isZero(); }
    void* payload() override { return &m_value; }
    /// The limbs of the real part, then those of the imaginary part; without signs and exponents.
    std::vector<uint8_t> data() const override;
    HugeVariant member(const xstd::XString& name, HugeVariant* args, int argc) const override;
    HugeVariant clone() const override;
    HugeVariant move() override;
    HugeVariant asType(int typeCode) const override;
    /// Those of the real part.
    int64_t asInt64() const override;
    double asDouble() const override;

    HugeVariant neg() const override;
    HugeVariant shr(const HugeVariant& value) const override;
    HugeVariant shl(const HugeVariant& value) const override;
    HugeVariant add(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant sub(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant mul(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant div(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant pow(const HugeVariant& a, const HugeVariant& b) const override;

    HugeVariant sin() const override;
    HugeVariant cos() const override;
    HugeVariant tan() const override;
    HugeVariant asin() const override;
    HugeVariant acos() const override;
    HugeVariant atan() const override;
    HugeVariant sinh() const override;
    HugeVariant cosh() const override;
    HugeVariant tanh() const override;
    HugeVariant asinh() const override;
    HugeVariant acosh() const override;
    HugeVariant atanh() const override;
    HugeVariant exp() const override;
    HugeVariant ln() const override;
    HugeVariant log(const HugeVariant& base) const override;

    /// Both parts equal.
    bool equ(const HugeVariant& a, const HugeVariant& b) const override;

    xstd::XString fmt(const XFormatRule& rule) const override { return m_value.fmt(rule); }
    xstd::XString toString() const override { return m_value.toString(); }

private:
    HugeImag m_value;
};

} // namespace huge
