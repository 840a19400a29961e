#pragma once

#include "numbers/HugeInteger.h"
#include "values/HugeVar.h"

#include <utility>

namespace huge {

class HugeFloat;

/// A whole number of any length. Next to a boolean it does the work; what leaves the whole numbers
/// (negative exponents, most functions) gives a float, or a complex value where there is no real
/// one.
class HugeVarInt final : public HugeVar {
public:
    explicit HugeVarInt(int64_t value) : HugeVar(HugeVarClass::Int), m_value(value) {}
    explicit HugeVarInt(const HugeInteger& value) : HugeVar(HugeVarClass::Int), m_value(value) {}
    explicit HugeVarInt(HugeInteger&& value) noexcept
        : HugeVar(HugeVarClass::Int), m_value(std::move(value))
    {}

    const HugeInteger& value() const noexcept { return m_value; }
    HugeInteger& value() noexcept { return m_value; }

    int typeId() const override { return varInt; }
    const std::type_info& typeInfo() const override { return typeid(HugeInteger); }
    xstd::XString typeName() const override { return "HugeInteger"; }
    size_t objectSize() const override { return sizeof(*this); }
    bool isNull() const override { return m_value.isNull(); }
    bool isZero() const override { return m_value.isZero(); }
    bool isNegative() const override { return m_value.isNegative(); }
    void* payload() override { return &m_value; }
    /// All limbs of the block, each least significant byte first; the sign is left out.
    std::vector<uint8_t> data() const override;
    HugeVariant member(const xstd::XString& name, HugeVariant* args, int argc) const override;
    HugeVariant clone() const override;
    HugeVariant move() override;
    HugeVariant asType(int typeCode) const override;
    int64_t asInt64() const override { return m_value.asInt64(); }
    double asDouble() const override { return m_value.asDouble(); }

    HugeVariant neg() const override;
    HugeVariant shr(const HugeVariant& value) const override;
    HugeVariant shl(const HugeVariant& value) const override;
    HugeVariant add(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant sub(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant mul(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant div(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant per(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant pow(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant bitNot() const override;
    HugeVariant bitOr(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant bitAnd(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant bitXor(const HugeVariant& a, const HugeVariant& b) const override;

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

    bool equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate_equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool less(const HugeVariant& a, const HugeVariant& b) const override;
    bool less_equ(const HugeVariant& a, const HugeVariant& b) const override;

    xstd::XString hex(int64_t bytes) const override;
    xstd::XString fmt(const XFormatRule& rule) const override { return m_value.fmt(rule); }
    xstd::XString toString() const override { return m_value.toString(); }

private:
    bool isSquare() const;
    /// The number that the functions calculate with.
    HugeFloat real() const;

    HugeInteger m_value;
};

} // namespace huge
