#include "values/HugeVarRef.h"

namespace huge {

const HugeVar& HugeVarRef::worker() const noexcept
{
    return m_target->object() == nullptr ? nothing() : *m_target->object();
}

size_t HugeVarRef::objectSize() const
{
    return worker().objectSize();
}

void* HugeVarRef::payload()
{
    return m_target->object() == nullptr ? nullptr : m_target->object()->payload();
}

HugeVariant HugeVarRef::exec(HugeVariant* args, int argc) const
{
    return m_target->exec(args, argc);
}

HugeVariant HugeVarRef::member(const xstd::XString& name, HugeVariant* args, int argc) const
{
    // A residue has a member of that name itself.
    if (name == "value" && !m_target->final().holds(HugeVarClass::Mod))
        return m_target->final();
    return m_target->member(name, args, argc);
}

HugeVariant HugeVarRef::clone() const
{
    return m_target->final();
}

HugeVariant HugeVarRef::move()
{
    return m_target->object() == nullptr ? HugeVariant() : m_target->object()->move();
}

HugeVariant HugeVarRef::asType(int typeCode) const
{
    return m_target->asType(typeCode);
}

HugeVariant HugeVarRef::neg() const
{
    return -m_target->final();
}

HugeVariant HugeVarRef::shr(const HugeVariant& value) const
{
    return m_target->shr(value);
}

HugeVariant HugeVarRef::shl(const HugeVariant& value) const
{
    return m_target->shl(value);
}

HugeVariant HugeVarRef::add(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().add(a, b);
}

HugeVariant HugeVarRef::sub(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().sub(a, b);
}

HugeVariant HugeVarRef::mul(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().mul(a, b);
}

HugeVariant HugeVarRef::div(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().div(a, b);
}

HugeVariant HugeVarRef::per(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().per(a, b);
}

HugeVariant HugeVarRef::pow(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().pow(a, b);
}

HugeVariant HugeVarRef::bitNot() const
{
    return ~m_target->final();
}

HugeVariant HugeVarRef::bitOr(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().bitOr(a, b);
}

HugeVariant HugeVarRef::bitAnd(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().bitAnd(a, b);
}

HugeVariant HugeVarRef::bitXor(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().bitXor(a, b);
}

bool HugeVarRef::equ(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().equ(a, b);
}

bool HugeVarRef::greate(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().greate(a, b);
}

bool HugeVarRef::greate_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().greate_equ(a, b);
}

bool HugeVarRef::less(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().less(a, b);
}

bool HugeVarRef::less_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return worker().less_equ(a, b);
}

} // namespace huge
