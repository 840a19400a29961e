#pragma once

#include "values/HugeVariant.h"

#include <memory>

namespace huge {

/// A native function as a value. Copies share the callable, and a call keeps it alive, so that a
/// function may replace or remove the value that holds it while it runs.
class HugeVarFunc final : public HugeVar {
public:
    explicit HugeVarFunc(HugeFunction function);

    const HugeFunction& function() const noexcept { return *m_function; }

    int typeId() const override { return varFunc; }
    const std::type_info& typeInfo() const override { return typeid(HugeFunction); }
    xstd::XString typeName() const override;
    size_t objectSize() const override { return sizeof(*this); }
    bool isNull() const override { return !*m_function; }
    bool isZero() const override { return !*m_function; }
    void* payload() override;
    /// An empty callable gives null.
    HugeVariant exec(HugeVariant* args, int argc) const override;
    HugeVariant clone() const override;
    HugeVariant move() override;
    HugeVariant asType(int typeCode) const override;
    /// Functions are equal when their callables are of one type.
    bool equ(const HugeVariant& a, const HugeVariant& b) const override;
    xstd::XString fmt(const XFormatRule&) const override { return toString(); }
    xstd::XString toString() const override;

private:
    std::shared_ptr<const HugeFunction> m_function;
};

} // namespace huge
