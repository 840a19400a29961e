#include "values/HugeVarFunc.h"

#include <utility>

namespace huge {

HugeVarFunc::HugeVarFunc(HugeFunction function)
    : HugeVar(HugeVarClass::Func),
      m_function(std::make_shared<const HugeFunction>(std::move(function)))
{}

xstd::XString HugeVarFunc::typeName() const
{
    return "functinal: HugeVariant(HugeVariant* _args, int argc)";
}

void* HugeVarFunc::payload()
{
    return const_cast<HugeFunction*>(m_function.get());
}

HugeVariant HugeVarFunc::exec(HugeVariant* args, int argc) const
{
    const std::shared_ptr<const HugeFunction> running = m_function;
    return *running ? (*running)(args, argc) : HugeVariant();
}

HugeVariant HugeVarFunc::clone() const
{
    return HugeVariant::make<HugeVarFunc>(*this);
}

HugeVariant HugeVarFunc::move()
{
    return clone();
}

HugeVariant HugeVarFunc::asType(int typeCode) const
{
    return typeCode == varFunc ? clone() : HugeVariant();
}

bool HugeVarFunc::equ(const HugeVariant& a, const HugeVariant& b) const
{
    return a.toFunc().target_type() == b.toFunc().target_type();
}

xstd::XString HugeVarFunc::toString() const
{
    return "HugeVariant func(HugeVariant* _args, int _argc)";
}

} // namespace huge
