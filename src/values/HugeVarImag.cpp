#include "values/HugeVarImag.h"

#include "numbers/byteForms.h"
#include "values/HugeVariant.h"
#include "values/operands.h"

namespace huge {

namespace {

using ImagOperand = Operand<HugeVarImag, HugeVarClass::Imag, &HugeVariant::toImag>;

/// A part as a value of its own: one without block is 0, not nothing.
HugeVariant partOf(const HugeFloat& part)
{
    return part.isNull() ? HugeFloat(0) : part;
}

} // namespace

std::vector<uint8_t> HugeVarImag::data() const
{
    std::vector<uint8_t> bytes;
    appendLimbs(bytes, m_value.re.limbs(), m_value.re.limbCount());
    appendLimbs(bytes, m_value.im.limbs(), m_value.im.limbCount());
    return bytes;
}

HugeVariant HugeVarImag::member(const xstd::XString& name, HugeVariant* args, int argc) const
{
    if (name == "re")
        return partOf(m_value.re);
    if (name == "im")
        return partOf(m_value.im);
    if (name == "abs" || name == "model")
        return m_value.abs();
    if (name == "sqrt")
        return huge::sqrt(m_value);
    if (name == "conj")
        return m_value.conj();
    if (name == "angle" || name == "radian")
        return m_value.angle();
    return HugeVar::member(name, args, argc);
}

HugeVariant HugeVarImag::clone() const
{
    return m_value;
}

HugeVariant HugeVarImag::move()
{
    return std::move(m_value);
}

HugeVariant HugeVarImag::asType(int typeCode) const
{
    switch (typeCode) {
    case varBool:
        return !isZero();
    case varInt:
        return m_value.re.toInteger();
    case varFloat:
        return partOf(m_value.re);
    case varImag:
        return clone();
    case varString:
        return toString();
    default:
        return {};
    }
}

int64_t HugeVarImag::asInt64() const
{
    return m_value.re.asInt64();
}

double HugeVarImag::asDouble() const
{
    return m_value.re.asDouble();
}

HugeVariant HugeVarImag::neg() const
{
    return m_value.neg();
}

HugeVariant HugeVarImag::shr(const HugeVariant& value) const
{
    return m_value.shiftExponent(shiftCount(value.asType(varInt)));
}

HugeVariant HugeVarImag::shl(const HugeVariant& value) const
{
    // The least count has no opposite; either end shifts every exponent out of its range.
    const int64_t count = shiftCount(value.asType(varInt));
    return m_value.shiftExponent(count == INT64_MIN ? INT64_MAX : -count);
}

HugeVariant HugeVarImag::add(const HugeVariant& a, const HugeVariant& b) const
{
    return *ImagOperand(a) + *ImagOperand(b);
}

HugeVariant HugeVarImag::sub(const HugeVariant& a, const HugeVariant& b) const
{
    return *ImagOperand(a) - *ImagOperand(b);
}

HugeVariant HugeVarImag::mul(const HugeVariant& a, const HugeVariant& b) const
{
    return *ImagOperand(a) * *ImagOperand(b);
}

HugeVariant HugeVarImag::div(const HugeVariant& a, const HugeVariant& b) const
{
    return *ImagOperand(a) / *ImagOperand(b);
}

HugeVariant HugeVarImag::pow(const HugeVariant& a, const HugeVariant& b) const
{
    return huge::pow(*ImagOperand(a), *ImagOperand(b));
}

HugeVariant HugeVarImag::sin() const
{
    return huge::sin(m_value);
}

HugeVariant HugeVarImag::cos() const
{
    return huge::cos(m_value);
}

HugeVariant HugeVarImag::tan() const
{
    return huge::tan(m_value);
}

HugeVariant HugeVarImag::asin() const
{
    return huge::asin(m_value);
}

HugeVariant HugeVarImag::acos() const
{
    return huge::acos(m_value);
}

HugeVariant HugeVarImag::atan() const
{
    return huge::atan(m_value);
}

HugeVariant HugeVarImag::sinh() const
{
    return huge::sinh(m_value);
}

HugeVariant HugeVarImag::cosh() const
{
    return huge::cosh(m_value);
}

HugeVariant HugeVarImag::tanh() const
{
    return huge::tanh(m_value);
}

HugeVariant HugeVarImag::asinh() const
{
    return huge::asinh(m_value);
}

HugeVariant HugeVarImag::acosh() const
{
    return huge::acosh(m_value);
}

HugeVariant HugeVarImag::atanh() const
{
    return huge::atanh(m_value);
}

HugeVariant HugeVarImag::exp() const
{
    return huge::exp(m_value);
}

HugeVariant HugeVarImag::ln() const
{
    return huge::ln(m_value);
}

HugeVariant HugeVarImag::log(const HugeVariant& base) const
{
    return huge::log(m_value, *ImagOperand(base));
}

bool HugeVarImag::equ(const HugeVariant& a, const HugeVariant& b) const
{
    return *ImagOperand(a) == *ImagOperand(b);
}

} // namespace huge
