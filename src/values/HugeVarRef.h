#pragma once

#include "values/HugeVariant.h"

namespace huge {

/// Another name for a handle, which it does not own and must not outlive. Every operation is the
/// target's, cloning too: a copy of a reference is a copy of the value. Only the functions from sin
/// to log, and hex, are not passed on; called as members they reach the target. The member "value"
/// is the value that the target holds, for a residue its own member of that name.
class HugeVarRef final : public HugeVar {
public:
    explicit HugeVarRef(HugeVariant* target) noexcept : HugeVar(HugeVarClass::Ref), m_target(target)
    {}

    HugeVariant* target() const noexcept { return m_target; }

    int typeId() const override { return m_target->typeId(); }
    const std::type_info& typeInfo() const override { return m_target->typeInfo(); }
    xstd::XString typeName() const override { return m_target->typeName(); }
    size_t objectSize() const override;
    bool isNull() const override { return m_target->isNull(); }
    bool isZero() const override { return m_target->isZero(); }
    bool isRef() const override { return true; }
    bool isNegative() const override { return m_target->isNegative(); }
    bool isRange() const override { return m_target->isRange(); }
    bool isClosure() const override { return m_target->isClosure(); }
    HugeVariant* refTarget() const override { return m_target; }
    void* payload() override;
    std::vector<uint8_t> data() const override { return m_target->data(); }

    HugeVariant exec(HugeVariant* args, int argc) const override;
    HugeVariant member(const xstd::XString& name, HugeVariant* args, int argc) const override;
    HugeVariant clone() const override;
    HugeVariant move() override;
    HugeVariant asType(int typeCode) const override;
    int64_t asInt64() const override { return m_target->asInt64(); }
    double asDouble() const override { return m_target->asDouble(); }

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
    bool equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate_equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool less(const HugeVariant& a, const HugeVariant& b) const override;
    bool less_equ(const HugeVariant& a, const HugeVariant& b) const override;
    xstd::XString fmt(const XFormatRule& rule) const override { return m_target->fmt(rule); }
    xstd::XString toString() const override { return m_target->toString(); }

private:
    /// The object that does the work; a null object's base class where the target is null.
    const HugeVar& worker() const noexcept;

    HugeVariant* m_target;
};

} // namespace huge
