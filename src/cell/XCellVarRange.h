#pragma once

#include "cell/XCellRange.h"
#include "values/HugeVariant.h"

namespace huge {

/// What a reference evaluates to: a live handle on a reference of a cell, which that cell owns.
/// Every operation is that of the value behind it, the top left cell's or the number, without a
/// copy of it; only functions that ask for a range see the rectangle. When the reference is deleted
/// or gone the value is invalid: it reads null, and what asks for cells gets an error value.
class XCellVarRange final : public HugeVar {
public:
    explicit XCellVarRange(XCellRange* range) noexcept { enlist(range); }
    XCellVarRange(const XCellVarRange& other) noexcept : HugeVar(other) { enlist(other.m_range); }
    XCellVarRange& operator=(const XCellVarRange&) = delete;
    ~XCellVarRange() override { withdraw(); }

    /// The range that a handle holds, references followed; null when it holds something else.
    static const XCellVarRange* from(const HugeVariant& value) noexcept;

    /// Null when the reference is gone.
    XCellRange* range() const noexcept { return m_range; }
    bool isValid() const noexcept { return m_range && !m_range->ref.isDeleted; }
    /// XCellRange::value; the error value when the reference is gone.
    const HugeVariant& value(HugeVariant& scratch) const;
    HugeVariant toValue() const;

    int typeId() const override { return varRange; }
    const std::type_info& typeInfo() const override { return typeid(XCellRange*); }
    xstd::XString typeName() const override { return "XCellRange*"; }
    size_t objectSize() const override { return sizeof(*this); }
    bool isNull() const override;
    bool isZero() const override;
    bool isRange() const override { return true; }
    void* payload() override { return &m_range; }
    std::vector<uint8_t> data() const override;

    /// The element at (row, col), offsets from the top left. An "r:" argument is the row and a "c:"
    /// argument the column, whatever their order. Failures are error values.
    HugeVariant exec(HugeVariant* args, int argc) const override;
    /// "name", "value", "height", "width", "top", "left", "bottom", "right", "text", "code"; any
    /// other member is the value's own.
    HugeVariant member(const xstd::XString& name, HugeVariant* args, int argc) const override;
    HugeVariant clone() const override { return HugeVariant::make<XCellVarRange>(m_range); }
    HugeVariant move() override { return HugeVariant::make<XCellVarRange>(m_range); }
    HugeVariant asType(int typeCode) const override;
    int64_t asInt64() const override;
    double asDouble() const override;

    HugeVariant neg() const override;
    HugeVariant bitNot() const override;
    HugeVariant shr(const HugeVariant& count) const override;
    HugeVariant shl(const HugeVariant& count) const override;
    HugeVariant log(const HugeVariant& base) const override;
    HugeVariant sin() const override { return apply(&HugeVariant::sin); }
    HugeVariant cos() const override { return apply(&HugeVariant::cos); }
    HugeVariant tan() const override { return apply(&HugeVariant::tan); }
    HugeVariant asin() const override { return apply(&HugeVariant::asin); }
    HugeVariant acos() const override { return apply(&HugeVariant::acos); }
    HugeVariant atan() const override { return apply(&HugeVariant::atan); }
    HugeVariant sinh() const override { return apply(&HugeVariant::sinh); }
    HugeVariant cosh() const override { return apply(&HugeVariant::cosh); }
    HugeVariant tanh() const override { return apply(&HugeVariant::tanh); }
    HugeVariant asinh() const override { return apply(&HugeVariant::asinh); }
    HugeVariant acosh() const override { return apply(&HugeVariant::acosh); }
    HugeVariant atanh() const override { return apply(&HugeVariant::atanh); }
    HugeVariant exp() const override { return apply(&HugeVariant::exp); }
    HugeVariant ln() const override { return apply(&HugeVariant::ln); }

    HugeVariant add(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant sub(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant mul(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant div(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant per(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant pow(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant bitOr(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant bitAnd(const HugeVariant& a, const HugeVariant& b) const override;
    HugeVariant bitXor(const HugeVariant& a, const HugeVariant& b) const override;
    bool equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate_equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool less(const HugeVariant& a, const HugeVariant& b) const override;
    bool less_equ(const HugeVariant& a, const HugeVariant& b) const override;

    /// "null" when invalid.
    xstd::XString fmt(const XFormatRule& rule) const override;
    /// What the top left cell shows; "null" when invalid or when there is no cell.
    xstd::XString toString() const override;

private:
    friend class XCellRange;

    void enlist(XCellRange* range) noexcept;
    void withdraw() noexcept;
    HugeVariant apply(HugeVariant (HugeVariant::*function)() const) const;
    template <class Operation>
    auto combine(const HugeVariant& a, const HugeVariant& b, Operation operation) const;

    XCellRange* m_range = nullptr;
    XCellVarRange* m_previous = nullptr; // neighbours among the values of the same reference
    XCellVarRange* m_next = nullptr;
};

/// Replaces a range by its value, also in the variables that a closure has captured, however deep:
/// what a cell keeps must not follow a reference after its run.
void stripRanges(HugeVariant& value);

} // namespace huge
