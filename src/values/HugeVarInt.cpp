#include "values/HugeVarInt.h"

#include "values/HugeVariant.h"
#include "values/unavailable.h"

#include <stdexcept>

namespace huge {

namespace {

/// An operand as an integer, without copying one that is an integer already.
class Operand {
public:
    explicit Operand(const HugeVariant& value)
    {
        const HugeVariant& end = value.final();
        if (end.holds(HugeVarClass::Int))
            m_value = &static_cast<const HugeVarInt*>(end.object())->value();
        else
            m_converted = end.toInteger();
    }
    Operand(const Operand&) = delete;
    Operand& operator=(const Operand&) = delete;

    const HugeInteger& operator*() const noexcept
    {
        return m_value == nullptr ? m_converted : *m_value;
    }
    const HugeInteger* operator->() const noexcept { return &**this; }

private:
    HugeInteger m_converted;
    const HugeInteger* m_value = nullptr;
};

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
    bytes.reserve(m_value.size() * sizeof(Limb));
    for (size_t i = 0; i < m_value.size(); ++i) {
        for (size_t shift = 0; shift < limbBits; shift += 8)
            bytes.push_back(uint8_t(m_value.limbs()[i] >> shift));
    }
    return bytes;
}

HugeVariant HugeVarInt::member(const xstd::XString& name, HugeVariant* args, int argc) const
{
    if (name == "abs")
        return m_value.abs();
    if (name == "sqrt")
        return sqrt();
    if (name == "isSquare")
        return isSquare();
    if (name == "size" || name == "prec")
        return int64_t(m_value.size());
    if (name == "inv")
        return inv();
    return HugeVar::member(name, args, argc);
}

HugeVariant HugeVarInt::sqrt() const
{
    if (isNegative())
        failComplex();
    return m_value.sqrt();
}

bool HugeVarInt::isSquare() const
{
    const HugeInteger root = m_value.sqrt();
    return root * root == m_value;
}

HugeVariant HugeVarInt::inv() const
{
    if (isZero())
        throw std::runtime_error("div by zero");
    failFloat();
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
        failFloat();
    case varImag:
        failComplex();
    case varMod:
        failResidue();
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
    return m_value >> value.asInt64();
}

HugeVariant HugeVarInt::shl(const HugeVariant& value) const
{
    return m_value << value.asInt64();
}

HugeVariant HugeVarInt::add(const HugeVariant& a, const HugeVariant& b) const
{
    return *Operand(a) + *Operand(b);
}

HugeVariant HugeVarInt::sub(const HugeVariant& a, const HugeVariant& b) const
{
    return *Operand(a) - *Operand(b);
}

HugeVariant HugeVarInt::mul(const HugeVariant& a, const HugeVariant& b) const
{
    return *Operand(a) * *Operand(b);
}

HugeVariant HugeVarInt::div(const HugeVariant& a, const HugeVariant& b) const
{
    return *Operand(a) / *Operand(b);
}

HugeVariant HugeVarInt::per(const HugeVariant& a, const HugeVariant& b) const
{
    return *Operand(a) % *Operand(b);
}

HugeVariant HugeVarInt::pow(const HugeVariant& a, const HugeVariant& b) const
{
    const Operand base(a);
    const Operand exponent(b);
    if (base->isNegative())
        failComplex();
    if (exponent->isNegative())
        failFloat();
    return base->pow(*exponent);
}

HugeVariant HugeVarInt::bitNot() const
{
    return ~m_value;
}

HugeVariant HugeVarInt::bitOr(const HugeVariant& a, const HugeVariant& b) const
{
    requireIntegers(a, b, "bitOr(|) only for Integer");
    return *Operand(a) | *Operand(b);
}

HugeVariant HugeVarInt::bitAnd(const HugeVariant& a, const HugeVariant& b) const
{
    requireIntegers(a, b, "bitAnd(|) only for Integer");
    return *Operand(a) & *Operand(b);
}

HugeVariant HugeVarInt::bitXor(const HugeVariant& a, const HugeVariant& b) const
{
    requireIntegers(a, b, "bitXor(|) only for Integer");
    return *Operand(a) ^ *Operand(b);
}

// The functions. An integer result exists where the argument is zero, and only for some of them;
// the domain is checked where the function has one among the whole numbers.

HugeVariant HugeVarInt::sin() const
{
    if (!isZero())
        failFloat();
    return 0;
}

HugeVariant HugeVarInt::cos() const
{
    if (!isZero())
        failFloat();
    return 1;
}

HugeVariant HugeVarInt::tan() const
{
    return sin();
}

HugeVariant HugeVarInt::asin() const
{
    failFloat();
}

HugeVariant HugeVarInt::acos() const
{
    failFloat();
}

HugeVariant HugeVarInt::atan() const
{
    return sin();
}

HugeVariant HugeVarInt::sinh() const
{
    failFloat();
}

HugeVariant HugeVarInt::cosh() const
{
    failFloat();
}

HugeVariant HugeVarInt::tanh() const
{
    failFloat();
}

HugeVariant HugeVarInt::asinh() const
{
    failFloat();
}

HugeVariant HugeVarInt::acosh() const
{
    if (m_value.compare(1) < 0) {
        throw std::runtime_error("The definition domain of inverse hyperbolic cosine function is "
                                 "[1, infinite)");
    }
    failFloat();
}

HugeVariant HugeVarInt::atanh() const
{
    if (!isZero()) {
        throw std::runtime_error("The definition domain of inverse hyperbolic tangent function is "
                                 "(- 1,1)");
    }
    failFloat();
}

HugeVariant HugeVarInt::exp() const
{
    failFloat();
}

HugeVariant HugeVarInt::ln() const
{
    if (isZero())
        throw std::runtime_error("Zero can't be log");
    if (isNegative())
        failComplex();
    failFloat();
}

HugeVariant HugeVarInt::log(const HugeVariant& base) const
{
    if (isNegative() || base.isNegative())
        failComplex();
    if (isZero())
        throw std::runtime_error("Zero can't be log");
    failFloat();
}

bool HugeVarInt::equ(const HugeVariant& a, const HugeVariant& b) const
{
    return *Operand(a) == *Operand(b);
}

bool HugeVarInt::greate(const HugeVariant& a, const HugeVariant& b) const
{
    return *Operand(a) > *Operand(b);
}

bool HugeVarInt::greate_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return *Operand(a) >= *Operand(b);
}

bool HugeVarInt::less(const HugeVariant& a, const HugeVariant& b) const
{
    return *Operand(a) < *Operand(b);
}

bool HugeVarInt::less_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return *Operand(a) <= *Operand(b);
}

xstd::XString HugeVarInt::hex(int64_t bytes) const
{
    if (isZero())
        return "0x0";
    XFormatRule rule;
    rule.radix = 16;
    xstd::XString text = m_value.fmt(rule);
    const size_t digits = text.size() - 2; // behind the 0x
    if (bytes > 0 && uint64_t(bytes) < digits && 2 * size_t(bytes) < digits)
        text.erase(2, digits - 2 * size_t(bytes));
    return text;
}

} // namespace huge
