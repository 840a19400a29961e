#pragma once

#include "values/HugeVar.h"

#include <utility>

namespace huge {

/// Bytes. Beside another value they join and compare with that value's byte form; called like a
/// function they give a part of themselves. Empty data is null. Offsets and counts from outside
/// clip: a negative one is 0, one past the end gives empty data.
class HugeVarData final : public HugeVar {
public:
    explicit HugeVarData(const std::vector<uint8_t>& bytes)
        : HugeVar(HugeVarClass::Data), m_bytes(bytes)
    {}
    explicit HugeVarData(std::vector<uint8_t>&& bytes) noexcept
        : HugeVar(HugeVarClass::Data), m_bytes(std::move(bytes))
    {}

    /// Bytes that joined data may have; more fails with "The data is too long" before it is
    /// allocated.
    static constexpr size_t maxBytes = size_t(1) << 28;

    const std::vector<uint8_t>& value() const noexcept { return m_bytes; }

    int typeId() const override { return varBool; }
    const std::type_info& typeInfo() const override { return typeid(std::vector<uint8_t>); }
    xstd::XString typeName() const override { return "data"; }
    size_t objectSize() const override { return sizeof(*this); }
    bool isNull() const override { return m_bytes.empty(); }
    bool isZero() const override { return m_bytes.empty(); }
    void* payload() override { return &m_bytes; }
    std::vector<uint8_t> data() const override { return m_bytes; }
    /// The part from args[0] on, of args[1] bytes where there are two arguments.
    HugeVariant exec(HugeVariant* args, int argc) const override;
    HugeVariant member(const xstd::XString& name, HugeVariant* args, int argc) const override;
    HugeVariant clone() const override;
    HugeVariant move() override;
    HugeVariant asType(int typeCode) const override;

    HugeVariant add(const HugeVariant& a, const HugeVariant& b) const override;
    bool equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate_equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool less(const HugeVariant& a, const HugeVariant& b) const override;
    bool less_equ(const HugeVariant& a, const HugeVariant& b) const override;

    /// In lower case; bytes above 0 keeps the first bytes only.
    xstd::XString hex(int64_t bytes) const override;
    /// Radix 2, 8, 58 and 64; every other one gives hexadecimal.
    xstd::XString fmt(const XFormatRule& rule) const override;
    xstd::XString toString() const override { return hex(0); }

private:
    HugeVariant part(const HugeVariant* args, int argc) const;

    std::vector<uint8_t> m_bytes;
};

} // namespace huge
