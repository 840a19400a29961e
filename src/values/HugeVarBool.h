#pragma once

#include "values/HugeVar.h"

namespace huge {

/// A truth value. It calculates nothing itself: any number next to it outranks it and does the
/// work, so true + 1 is the integer 2, while true + true fails as every missing operation does.
class HugeVarBool final : public HugeVar {
public:
    explicit HugeVarBool(bool value) noexcept : HugeVar(HugeVarClass::Bool), m_value(value) {}

    bool value() const noexcept { return m_value; }
    void setValue(bool value) noexcept { m_value = value; }

    int typeId() const override { return varBool; }
    const std::type_info& typeInfo() const override { return typeid(bool); }
    xstd::XString typeName() const override { return "boolean"; }
    size_t objectSize() const override { return sizeof(*this); }
    bool isNull() const override { return false; }
    bool isZero() const override { return !m_value; }
    void* payload() override { return &m_value; }
    std::vector<uint8_t> data() const override { return {uint8_t(m_value ? 1 : 0)}; }
    HugeVariant clone() const override;
    HugeVariant move() override;
    HugeVariant asType(int typeCode) const override;
    int64_t asInt64() const override { return m_value ? 1 : 0; }
    double asDouble() const override { return m_value ? 1.0 : 0.0; }
    xstd::XString fmt(const XFormatRule&) const override { return toString(); }
    xstd::XString toString() const override { return m_value ? "true" : "false"; }

private:
    bool m_value;
};

} // namespace huge
