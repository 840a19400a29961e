#include "values/HugeVarInt.h"

#include "numbers/HugeFloat.h"
#include "numbers/HugeImag.h"
#include "numbers/HugeMod.h"
#include "numbers/byteForms.h"
#include "numbers/elementary.h"
#include "numbers/numberTheory.h"
#include "values/HugeVariant.h"
#include "values/operands.h"
#include "values/realFunctions.h"

#include <stdexcept>

namespace huge {

namespace {

using IntOperand = Operand<HugeVarInt, HugeVarClass::Int, &HugeVariant::toInteger>;

/// Bit operations have no meaning next to a boolean or a null value.
void requireIntegers(const HugeVariant& a, const HugeVariant& b, const char* failure)
{
    if (!a.final().holds(HugeVarClass::Int) || !b.final().holds(HugeVarClass::Int))
        throw std::runtime_error(failure);
}

} // namespace

std::vector<uint8_t> HugeVarInt::data() const
{
    std::vector<uint8_t> bytes;
    appendLimbs(bytes, m_value.limbs(), m_value.size());
    return bytes;
}

HugeVariant HugeVarInt::member(const xstd::XString& name, HugeVariant* args, int argc) const
{
    if (name == "abs")
        return m_value.abs();
    if (name == "sqrt")
        return isNegative() ? realSqrt(real()) : m_value.sqrt();
    if (name == "isSquare")
        return isSquare();
    if (name == "size" || name == "prec")
        return int64_t(m_value.size());
    if (name == "inv")
        return HugeFloat(1) / real();
    if (name == "factorial")
        return factorial(m_value);
    if (name == "isPrime")
        return isPrime(m_value);
    if (name == "euler")
        return euler(m_value);
    if (name == "order")
        return argc == 0 ? HugeVariant(0) : order(m_value, *IntOperand(args[0]));
    if (name == "primeRoot")
        return primeRoot(m_value);
    if (name == "factors")
        return factorText(primeFactors(m_value));
    return HugeVar::member(name, args, argc);
}

bool HugeVarInt::isSquare() const
{
    const HugeInteger root = m_value.sqrt();
    return root * root == m_value;
}

HugeFloat HugeVarInt::real() const
{
    return HugeFloat(m_value);
}

HugeVariant HugeVarInt::clone() const
{
    return HugeVariant::make<HugeVarInt>(m_value);
}

HugeVariant HugeVarInt::move()
{
    return HugeVariant::make<HugeVarInt>(std::move(m_value));
}

HugeVariant HugeVarInt::asType(int typeCode) const
{
    switch (typeCode) {
    case varBool:
        return HugeVariant(!isZero());
    case varInt:
        return clone();
    case varFloat:
        return real();
    case varImag:
        return HugeImag(real(), HugeFloat(0));
    case varMod:
        return HugeMod(m_value, nullptr);
    case varString:
        return HugeVariant(toString());
    default:
        return {};
    }
}

HugeVariant HugeVarInt::neg() const
{
    return -m_value;
}

HugeVariant HugeVarInt::shr(const HugeVariant& value) const
{
    return m_value >> shiftCount(value);
}

HugeVariant HugeVarInt::shl(const HugeVariant& value) const
{
    return m_value << shiftCount(value);
}

HugeVariant HugeVarInt::add(const HugeVariant& a, const HugeVariant& b) const
{
    return *IntOperand(a) + *IntOperand(b);
}

HugeVariant HugeVarInt::sub(const HugeVariant& a, const HugeVariant& b) const
{
    return *IntOperand(a) - *IntOperand(b);
}

HugeVariant HugeVarInt::mul(const HugeVariant& a, const HugeVariant& b) const
{
    return *IntOperand(a) * *IntOperand(b);
}

HugeVariant HugeVarInt::div(const HugeVariant& a, const HugeVariant& b) const
{
    return *IntOperand(a) / *IntOperand(b);
}

HugeVariant HugeVarInt::per(const HugeVariant& a, const HugeVariant& b) const
{
    return *IntOperand(a) % *IntOperand(b);
}

HugeVariant HugeVarInt::pow(const HugeVariant& a, const HugeVariant& b) const
{
    const IntOperand base(a);
    const IntOperand exponent(b);
    if (base->isNegative() || exponent->isNegative())
        return realPower(HugeFloat(*base), HugeFloat(*exponent));
    return base->pow(*exponent);
}

HugeVariant HugeVarInt::bitNot() const
{
    return ~m_value;
}

HugeVariant HugeVarInt::bitOr(const HugeVariant& a, const HugeVariant& b) const
{
    requireIntegers(a, b, "bitOr(|) only for Integer");
    return *IntOperand(a) | *IntOperand(b);
}

HugeVariant HugeVarInt::bitAnd(const HugeVariant& a, const HugeVariant& b) const
{
    requireIntegers(a, b, "bitAnd(|) only for Integer");
    return *IntOperand(a) & *IntOperand(b);
}

HugeVariant HugeVarInt::bitXor(const HugeVariant& a, const HugeVariant& b) const
{
    requireIntegers(a, b, "bitXor(|) only for Integer");
    return *IntOperand(a) ^ *IntOperand(b);
}

// The functions are those of the float with the integer's limbs. Some have an integer as their
// value at zero.

HugeVariant HugeVarInt::sin() const
{
    return isZero() ? HugeVariant(0) : huge::sin(real());
}

HugeVariant HugeVarInt::cos() const
{
    return isZero() ? HugeVariant(1) : huge::cos(real());
}

HugeVariant HugeVarInt::tan() const
{
    return isZero() ? HugeVariant(0) : huge::tan(real());
}

HugeVariant HugeVarInt::asin() const
{
    return huge::asin(real());
}

HugeVariant HugeVarInt::acos() const
{
    return huge::acos(real());
}

HugeVariant HugeVarInt::atan() const
{
    return isZero() ? HugeVariant(0) : huge::atan(real());
}

HugeVariant HugeVarInt::sinh() const
{
    return huge::sinh(real());
}

HugeVariant HugeVarInt::cosh() const
{
    return huge::cosh(real());
}

HugeVariant HugeVarInt::tanh() const
{
    return huge::tanh(real());
}

HugeVariant HugeVarInt::asinh() const
{
    return huge::asinh(real());
}

HugeVariant HugeVarInt::acosh() const
{
    return huge::acosh(real());
}

HugeVariant HugeVarInt::atanh() const
{
    return huge::atanh(real());
}

HugeVariant HugeVarInt::exp() const
{
    return huge::exp(real());
}

HugeVariant HugeVarInt::ln() const
{
    return realLn(real());
}

HugeVariant HugeVarInt::log(const HugeVariant& base) const
{
    return realLog(real(), base);
}

bool HugeVarInt::equ(const HugeVariant& a, const HugeVariant& b) const
{
    return *IntOperand(a) == *IntOperand(b);
}

bool HugeVarInt::greate(const HugeVariant& a, const HugeVariant& b) const
{
    return *IntOperand(a) > *IntOperand(b);
}

bool HugeVarInt::greate_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return *IntOperand(a) >= *IntOperand(b);
}

bool HugeVarInt::less(const HugeVariant& a, const HugeVariant& b) const
{
    return *IntOperand(a) < *IntOperand(b);
}

bool HugeVarInt::less_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return *IntOperand(a) <= *IntOperand(b);
}

xstd::XString HugeVarInt::hex(int64_t bytes) const
{
    if (isZero())
        return "0x0";
    XFormatRule rule;
    rule.radix = 16;
    return lastHexDigits(m_value.fmt(rule), bytes);
}

} // namespace huge
