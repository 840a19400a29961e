#pragma once

#include "values/HugeVariant.h"

#include <cstdint>
#include <type_traits>
#include <utility>

namespace huge {

/// An operand as the number of the class that carries the operation out, without a copy of one that
/// is of this class already. Any other is converted by convert, a member of HugeVariant.
template <class Object, HugeVarClass varClass, auto convert>
class Operand {
public:
    using Number = std::remove_cvref_t<decltype(std::declval<const Object&>().value())>;

    explicit Operand(const HugeVariant& value)
    {
        const HugeVariant& end = value.final();
        if (end.holds(varClass))
            m_value = &static_cast<const Object*>(end.object())->value();
        else
            m_converted = (end.*convert)();
    }
    Operand(const Operand&) = delete;
    Operand& operator=(const Operand&) = delete;

    const Number& operator*() const noexcept { return m_value == nullptr ? m_converted : *m_value; }
    const Number* operator->() const noexcept { return &**this; }

private:
    Number m_converted;
    const Number* m_value = nullptr;
};

/// The count of a shift: the value without its fraction. One beyond 64 bits counts as the greatest
/// there is, with its sign: either shifts everything away. The count negated fits 64 bits too.
int64_t shiftCount(const HugeVariant& value);

} // namespace huge
