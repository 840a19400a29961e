#include "values/HugeVarMod.h"

#include "numbers/HugeFloat.h"
#include "numbers/HugeImag.h"
#include "numbers/byteForms.h"
#include "values/HugeVariant.h"
#include "values/operands.h"

namespace huge {

namespace {

using ModOperand = Operand<HugeVarMod, HugeVarClass::Mod, &HugeVariant::toMod>;

} // namespace

std::vector<uint8_t> HugeVarMod::data() const
{
    std::vector<uint8_t> bytes;
    appendLimbs(bytes, m_value.value().limbs(), m_value.value().size());
    if (m_value.hasModulus())
        appendLimbs(bytes, m_value.modulus()->limbs(), m_value.modulus()->size());
    return bytes;
}

HugeVariant HugeVarMod::member(const xstd::XString& name, HugeVariant* args, int argc) const
{
    if (name == "value")
        return m_value.value();
    if (name == "mod")
        return m_value.hasModulus() ? HugeVariant(*m_value.modulus()) : HugeVariant(0);
    if (name == "sqrt")
        return m_value.sqrt();
    if (name == "inv")
        return m_value.inverse();
    if (name == "isSquare" || name == "canSqrt")
        return m_value.isSquare();
    return HugeVar::member(name, args, argc);
}

HugeVariant HugeVarMod::clone() const
{
    return m_value;
}

HugeVariant HugeVarMod::move()
{
    return std::move(m_value);
}

HugeVariant HugeVarMod::asType(int typeCode) const
{
    switch (typeCode) {
    case varBool:
        return !isZero();
    case varInt:
        return m_value.value();
    case varFloat:
        return HugeFloat(m_value.value());
    case varImag:
        return HugeImag(HugeFloat(m_value.value()), HugeFloat(0));
    case varMod:
        return HugeMod(m_value.value(), nullptr);
    case varString:
        return toString();
    default:
        return {};
    }
}

HugeVariant HugeVarMod::neg() const
{
    return -m_value;
}

HugeVariant HugeVarMod::shr(const HugeVariant& value) const
{
    return m_value >> shiftCount(value.asType(varInt));
}

HugeVariant HugeVarMod::shl(const HugeVariant& value) const
{
    return m_value << shiftCount(value.asType(varInt));
}

HugeVariant HugeVarMod::add(const HugeVariant& a, const HugeVariant& b) const
{
    return *ModOperand(a) + *ModOperand(b);
}

HugeVariant HugeVarMod::sub(const HugeVariant& a, const HugeVariant& b) const
{
    return *ModOperand(a) - *ModOperand(b);
}

HugeVariant HugeVarMod::mul(const HugeVariant& a, const HugeVariant& b) const
{
    return *ModOperand(a) * *ModOperand(b);
}

HugeVariant HugeVarMod::div(const HugeVariant& a, const HugeVariant& b) const
{
    return *ModOperand(a) / *ModOperand(b);
}

HugeVariant HugeVarMod::per(const HugeVariant& a, const HugeVariant& b) const
{
    return ModOperand(a)->value() % ModOperand(b)->value();
}

HugeVariant HugeVarMod::pow(const HugeVariant& a, const HugeVariant& b) const
{
    const ModOperand base(a);
    // An exponent that is no residue is an integer with its sign, which has powers of its own.
    if (!b.final().holds(HugeVarClass::Mod))
        return base->pow(b.toInteger());
    return base->pow(*ModOperand(b));
}

bool HugeVarMod::equ(const HugeVariant& a, const HugeVariant& b) const
{
    return *ModOperand(a) == *ModOperand(b);
}

bool HugeVarMod::greate(const HugeVariant& a, const HugeVariant& b) const
{
    return *ModOperand(a) > *ModOperand(b);
}

bool HugeVarMod::greate_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return *ModOperand(a) >= *ModOperand(b);
}

bool HugeVarMod::less(const HugeVariant& a, const HugeVariant& b) const
{
    return *ModOperand(a) < *ModOperand(b);
}

bool HugeVarMod::less_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return *ModOperand(a) <= *ModOperand(b);
}

} // namespace huge
