#pragma once

#include "values/HugeVar.h"

#include <utility>

namespace huge {

/// A text of any bytes. Operators take the other operand as text, so 5 + "a" is "5a"; * repeats,
/// - takes a suffix off, / joins paths. An empty text is null.
class HugeVarString final : public HugeVar {
public:
    explicit HugeVarString(const xstd::XString& text) : HugeVar(HugeVarClass::String), m_text(text)
    {}
    explicit HugeVarString(xstd::XString&& text) noexcept
        : HugeVar(HugeVarClass::String), m_text(std::move(text))
    {}

    /// Bytes that a text made by an operator or a member may have; a longer one fails with "The
    /// text is too long" before it is allocated.
    static constexpr size_t maxBytes = size_t(1) << 28;

    const xstd::XString& text() const noexcept { return m_text; }
    /// Appends in place, at a cost by what is appended.
    void append(const xstd::XString& text);

    int typeId() const override { return varString; }
    const std::type_info& typeInfo() const override { return typeid(xstd::XString); }
    xstd::XString typeName() const override { return "string"; }
    size_t objectSize() const override { return sizeof(*this); }
    bool isNull() const override { return m_text.empty(); }
    bool isZero() const override { return m_text.empty(); }
    void* payload() override { return &m_text; }
    std::vector<uint8_t> data() const override { return {m_text.begin(), m_text.end()}; }
    HugeVariant member(const xstd::XString& name, HugeVariant* args, int argc) const override;
    HugeVariant clone() const override;
    HugeVariant move() override;
    HugeVariant asType(int typeCode) const override;
    /// The number that the text begins with; ' between digits is dropped, 0x and 0b are understood.
    int64_t asInt64() const override;
    double asDouble() const override;

    HugeVariant add(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant sub(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant mul(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant div(const HugeVariant& a, const HugeVariant& b) const override;
    bool equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate_equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool less(const HugeVariant& a, const HugeVariant& b) const override;
    bool less_equ(const HugeVariant& a, const HugeVariant& b) const override;

    xstd::XString hex(int64_t bytes) const override;
    xstd::XString fmt(const XFormatRule& rule) const override;
    xstd::XString toString() const override { return m_text; }

private:
    xstd::XString m_text;
};

} // namespace huge
