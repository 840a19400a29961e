#pragma once

#include "common/XTime.h"
#include "values/HugeVar.h"

namespace huge {

/// A point in time. It compares with other times and tells its fields in local time; it calculates
/// nothing. Its conversions give whole seconds since 1970, truncated.
class HugeVarTime final : public HugeVar {
public:
    explicit HugeVarTime(const xstd::XTime& time) noexcept
        : HugeVar(HugeVarClass::Time), m_time(time)
    {}

    /// Throws std::runtime_error "time is out of range" where the ticks don't fit 64 bits.
    static HugeVariant fromSeconds(int64_t seconds);

    const xstd::XTime& value() const noexcept { return m_time; }

    int typeId() const override { return varTime; }
    const std::type_info& typeInfo() const override { return typeid(xstd::XTime); }
    xstd::XString typeName() const override { return "time"; }
    size_t objectSize() const override { return sizeof(*this); }
    bool isNull() const override { return false; }
    bool isZero() const override { return asInt64() == 0; }
    void* payload() override { return &m_time; }
    /// The eight bytes of the tick count, the lowest first.
    std::vector<uint8_t> data() const override;
    HugeVariant member(const xstd::XString& name, HugeVariant* args, int argc) const override;
    HugeVariant clone() const override;
    HugeVariant move() override;
    /// The seconds as an integer; the integer 0 for every other type.
    HugeVariant asType(int typeCode) const override;
    int64_t asInt64() const override { return m_time.ticks / m_time.ticksPerSecond; }
    double asDouble() const override { return double(asInt64()); }

    /// An operand that is no time throws std::runtime_error "null is not time".
    bool equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate_equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool less(const HugeVariant& a, const HugeVariant& b) const override;
    bool less_equ(const HugeVariant& a, const HugeVariant& b) const override;

    /// The ticks' bytes in radix 2, 8, 16, 58 and 64; else the date and time.
    xstd::XString fmt(const XFormatRule& rule) const override;
    /// Date and local time, as in "2026-1-5 9:3:7.12".
    xstd::XString toString() const override { return m_time.toString(); }

private:
    xstd::XTime m_time;
};

} // namespace huge
