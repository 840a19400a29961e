#include "values/HugeVarFloat.h"

#include "numbers/HugeImag.h"
#include "numbers/HugeMod.h"
#include "numbers/byteForms.h"
#include "numbers/elementary.h"
#include "values/HugeVariant.h"
#include "values/operands.h"
#include "values/realFunctions.h"

namespace huge {

namespace {

using FloatOperand = Operand<HugeVarFloat, HugeVarClass::Float, &HugeVariant::toFloat>;

} // namespace

std::vector<uint8_t> HugeVarFloat::data() const
{
    std::vector<uint8_t> bytes;
    if (m_value.isNull())
        return bytes;
    bytes.reserve((m_value.limbCount() + 1) * sizeof(Limb));
    appendWord(bytes, m_value.headerWord());
    appendLimbs(bytes, m_value.limbs(), m_value.limbCount());
    return bytes;
}

HugeVariant HugeVarFloat::member(const xstd::XString& name, HugeVariant* args, int argc) const
{
    if (name == "asPrec")
        return toPrecision(m_value, argc == 0 ? 1 : args[0].asInt64());
    if (name == "abs")
        return m_value.abs();
    if (name == "sqrt")
        return realSqrt(m_value);
    if (name == "prec" || name == "size")
        return int64_t(m_value.limbCount());
    if (name == "inv")
        return HugeFloat(1) / m_value;
    if (name == "isSimilarZero")
        return m_value.isSimilarZero();
    if (name == "isSimilar")
        return isSimilar(args, argc);
    return HugeVar::member(name, args, argc);
}

bool HugeVarFloat::isSimilar(const HugeVariant* args, int argc) const
{
    if (argc == 0)
        return m_value.isSimilarZero();
    const HugeFloat difference = m_value - *FloatOperand(args[0]);
    return argc == 1 ? difference.isSimilarZero() : difference.abs() < *FloatOperand(args[1]);
}

HugeVariant HugeVarFloat::clone() const
{
    return HugeVariant::make<HugeVarFloat>(m_value);
}

HugeVariant HugeVarFloat::move()
{
    return HugeVariant::make<HugeVarFloat>(std::move(m_value));
}

HugeVariant HugeVarFloat::asType(int typeCode) const
{
    switch (typeCode) {
    case varBool:
        return !isZero();
    case varInt:
        return m_value.toInteger();
    case varFloat:
        return clone();
    case varImag:
        return HugeImag(m_value, HugeFloat(0));
    case varMod:
        return HugeMod(m_value.toInteger(), nullptr);
    case varString:
        return toString();
    default:
        return {};
    }
}

HugeVariant HugeVarFloat::neg() const
{
    return -m_value;
}

HugeVariant HugeVarFloat::shr(const HugeVariant& value) const
{
    return m_value.shiftExponent(shiftCount(value));
}

HugeVariant HugeVarFloat::shl(const HugeVariant& value) const
{
    return m_value.shiftExponent(-shiftCount(value));
}

HugeVariant HugeVarFloat::add(const HugeVariant& a, const HugeVariant& b) const
{
    return *FloatOperand(a) + *FloatOperand(b);
}

HugeVariant HugeVarFloat::sub(const HugeVariant& a, const HugeVariant& b) const
{
    return *FloatOperand(a) - *FloatOperand(b);
}

HugeVariant HugeVarFloat::mul(const HugeVariant& a, const HugeVariant& b) const
{
    return *FloatOperand(a) * *FloatOperand(b);
}

HugeVariant HugeVarFloat::div(const HugeVariant& a, const HugeVariant& b) const
{
    return *FloatOperand(a) / *FloatOperand(b);
}

HugeVariant HugeVarFloat::per(const HugeVariant& a, const HugeVariant& b) const
{
    return *FloatOperand(a) % *FloatOperand(b);
}

HugeVariant HugeVarFloat::pow(const HugeVariant& a, const HugeVariant& b) const
{
    return realPower(*FloatOperand(a), *FloatOperand(b));
}

// The functions. Some have an integer as their value at zero.

HugeVariant HugeVarFloat::sin() const
{
    return isZero() ? HugeVariant(0) : huge::sin(m_value);
}

HugeVariant HugeVarFloat::cos() const
{
    return isZero() ? HugeVariant(1) : huge::cos(m_value);
}

HugeVariant HugeVarFloat::tan() const
{
    return huge::tan(m_value);
}

HugeVariant HugeVarFloat::asin() const
{
    return huge::asin(m_value);
}

HugeVariant HugeVarFloat::acos() const
{
    return huge::acos(m_value);
}

HugeVariant HugeVarFloat::atan() const
{
    return isZero() ? HugeVariant(0) : huge::atan(m_value);
}

HugeVariant HugeVarFloat::sinh() const
{
    return huge::sinh(m_value);
}

HugeVariant HugeVarFloat::cosh() const
{
    return huge::cosh(m_value);
}

HugeVariant HugeVarFloat::tanh() const
{
    return huge::tanh(m_value);
}

HugeVariant HugeVarFloat::asinh() const
{
    return huge::asinh(m_value);
}

HugeVariant HugeVarFloat::acosh() const
{
    return huge::acosh(m_value);
}

HugeVariant HugeVarFloat::atanh() const
{
    return huge::atanh(m_value);
}

HugeVariant HugeVarFloat::exp() const
{
    return huge::exp(m_value);
}

HugeVariant HugeVarFloat::ln() const
{
    return realLn(m_value);
}

HugeVariant HugeVarFloat::log(const HugeVariant& base) const
{
    return realLog(m_value, base);
}

bool HugeVarFloat::equ(const HugeVariant& a, const HugeVariant& b) const
{
    return *FloatOperand(a) == *FloatOperand(b);
}

bool HugeVarFloat::greate(const HugeVariant& a, const HugeVariant& b) const
{
    return *FloatOperand(a) > *FloatOperand(b);
}

bool HugeVarFloat::greate_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return *FloatOperand(a) >= *FloatOperand(b);
}

bool HugeVarFloat::less(const HugeVariant& a, const HugeVariant& b) const
{
    return *FloatOperand(a) < *FloatOperand(b);
}

bool HugeVarFloat::less_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return *FloatOperand(a) <= *FloatOperand(b);
}

xstd::XString HugeVarFloat::hex(int64_t bytes) const
{
    if (isZero())
        return "0x0";
    XFormatRule rule;
    rule.radix = 16;
    return lastHexDigits(m_value.abs().fmt(rule), bytes);
}

} // namespace huge
