#pragma once

#include "numbers/HugeMod.h"
#include "values/HugeVar.h"

#include <utility>

namespace huge {

/// A residue. Next to any other number it does the work: the other operand becomes a residue
/// without modulus, so that this one's modulus governs. Comparisons look at values alone. A complex
/// operand is no residue and counts as 0.
class HugeVarMod final : public HugeVar {
public:
    explicit HugeVarMod(const HugeMod& value) : HugeVar(HugeVarClass::Mod), m_value(value) {}
    explicit HugeVarMod(HugeMod&& value) noexcept
        : HugeVar(HugeVarClass::Mod), m_value(std::move(value))
    {}

    const HugeMod& value() const noexcept { return m_value; }
    HugeMod& value() noexcept { return m_value; }

    int typeId() const override { return varMod; }
    const std::type_info& typeInfo() const override { return typeid(HugeMod); }
    xstd::XString typeName() const override { return "HugeMod"; }
    size_t objectSize() const override { return sizeof(*this); }
    bool isNull() const override { return m_value.isNull(); }
    bool isZero() const override { return m_value.isZero(); }
    void* payload() override { return &m_value; }
    /// The limbs of the value, then those of the modulus.
    std::vector<uint8_t> data() const override;
    HugeVariant member(const xstd::XString& name, HugeVariant* args, int argc) const override;
    HugeVariant clone() const override;
    HugeVariant move() override;
    HugeVariant asType(int typeCode) const override;

    HugeVariant neg() const override;
    HugeVariant shr(const HugeVariant& value) const override;
    HugeVariant shl(const HugeVariant& value) const override;
    HugeVariant add(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant sub(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant mul(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant div(const HugeVariant& a, const HugeVariant& b) const override;
    /// The remainder of the two values as an integer.
    HugeVariant per(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant pow(const HugeVariant& a, const HugeVariant& b) const override;

    bool equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate_equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool less(const HugeVariant& a, const HugeVariant& b) const override;
    bool less_equ(const HugeVariant& a, const HugeVariant& b) const override;

    /// The value; fmt shows the modulus too where the rule asks for it.
    xstd::XString fmt(const XFormatRule& rule) const override { return m_value.fmt(rule); }
    xstd::XString toString() const override { return m_value.toString(); }

private:
    HugeMod m_value;
};

} // namespace huge
