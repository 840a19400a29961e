#include "values/HugeVariant.h"

#include "values/HugeVarBool.h"
#include "values/HugeVarFunc.h"
#include "values/HugeVarInt.h"
#include "values/HugeVarRef.h"
#include "values/HugeVarString.h"

#include <stdexcept>

namespace huge {

namespace {

const HugeVar& objectOf(const HugeVariant& value)
{
    return value.object() == nullptr ? HugeVar::nothing() : *value.object();
}

using Operation = HugeVariant (HugeVar::*)(const HugeVariant&, const HugeVariant&) const;
using Comparison = bool (HugeVar::*)(const HugeVariant&, const HugeVariant&) const;

/// The object that carries out an operator of a and b; a is not null.
const HugeVar& worker(const HugeVariant& a, const HugeVariant& b)
{
    return a.typeId() < b.typeId() ? *b.object() : *a.object();
}

HugeVariant operate(const HugeVariant& a, const HugeVariant& b, Operation operation)
{
    return (worker(a, b).*operation)(a, b);
}

bool compare(const HugeVariant& a, const HugeVariant& b, Comparison comparison)
{
    return (worker(a, b).*comparison)(a, b);
}

[[noreturn]] void failType(const HugeVariant& value, const char* expected)
{
    throw std::runtime_error(value.typeName() + " is not " + expected);
}

XFormatRule withRadix(XFormatRule rule, uint8_t radix)
{
    rule.radix = radix;
    return rule;
}

/// The integer object that a handle holds with a number in it, else null.
HugeVarInt* integerIn(const HugeVariant& value)
{
    if (!value.holds(HugeVarClass::Int) || value.object()->isNull())
        return nullptr;
    return static_cast<HugeVarInt*>(value.object());
}

HugeVarString* textIn(const HugeVariant& value)
{
    return value.holds(HugeVarClass::String) ? static_cast<HugeVarString*>(value.object())
                                             : nullptr;
}

} // namespace

// Making and owning

HugeVariant::HugeVariant(const HugeInteger& value) : HugeVariant(make<HugeVarInt>(value)) {}

HugeVariant::HugeVariant(HugeInteger&& value) : HugeVariant(make<HugeVarInt>(std::move(value))) {}

HugeVariant::HugeVariant(const xstd::XString& text) : HugeVariant(make<HugeVarString>(text)) {}

HugeVariant::HugeVariant(xstd::XString&& text) : HugeVariant(make<HugeVarString>(std::move(text)))
{}

HugeVariant::HugeVariant(const char* text) : HugeVariant(xstd::XString(text)) {}

HugeVariant::HugeVariant(HugeFunction function)
    : HugeVariant(make<HugeVarFunc>(std::move(function)))
{}

HugeVariant::HugeVariant(const HugeVar& object) : HugeVariant(object.clone()) {}

HugeVariant::HugeVariant(HugeVar&& object) : HugeVariant(object.move()) {}

HugeVariant HugeVariant::fromBool(bool value)
{
    return make<HugeVarBool>(value);
}

HugeVariant HugeVariant::fromInt64(int64_t value)
{
    return make<HugeVarInt>(value);
}

HugeVar* HugeVariant::cloneObject(const HugeVar& object)
{
    HugeVariant copy = object.varClass() == HugeVarClass::Int
                           ? make<HugeVarInt>(static_cast<const HugeVarInt&>(object).value())
                           : object.clone();
    return std::exchange(copy.m_object, nullptr);
}

void HugeVariant::drop(HugeVar* object) noexcept
{
    // Numbers and references are most of what comes and goes, and need no virtual call.
    if (object->varClass() == HugeVarClass::Int)
        static_cast<HugeVarInt*>(object)->~HugeVarInt();
    else if (object->varClass() != HugeVarClass::Ref)
        object->destroy();
    LimbPool::release(reinterpret_cast<Limb*>(object));
}

HugeVariant& HugeVariant::operator=(const HugeVariant& other)
{
    return *this = HugeVariant(other);
}

HugeVariant& HugeVariant::operator=(HugeVariant&& other) noexcept
{
    HugeVariant& target = final();
    if (&target != &other)
        target.replace_(std::move(other));
    return *this;
}

HugeVariant& HugeVariant::followRefs() noexcept
{
    HugeVariant* handle = this;
    while (handle->holds(HugeVarClass::Ref))
        handle = static_cast<HugeVarRef*>(handle->m_object)->target();
    return *handle;
}

HugeVariant& HugeVariant::setRef(HugeVariant& target)
{
    HugeVariant& end = target.final();
    if (&end == this)
        return *this;
    return replace_(make<HugeVarRef>(&end));
}

HugeVariant& HugeVariant::replace_(HugeVariant&& value) noexcept
{
    // The old object goes last: its end may run code that looks at this handle.
    HugeVar* old = std::exchange(m_object, std::exchange(value.m_object, nullptr));
    if (old != nullptr)
        drop(old);
    return *this;
}

HugeVariant& HugeVariant::clear_() noexcept
{
    if (HugeVar* old = std::exchange(m_object, nullptr); old != nullptr)
        drop(old);
    return *this;
}

// Questions and conversions

const std::type_info& HugeVariant::typeInfo() const
{
    return objectOf(*this).typeInfo();
}

xstd::XString HugeVariant::typeName() const
{
    return isNull() ? HugeVar::nothing().typeName() : m_object->typeName();
}

std::vector<uint8_t> HugeVariant::data() const
{
    return objectOf(*this).data();
}

bool HugeVariant::asBool() const
{
    const HugeVariant& value = final();
    if (!value.holds(HugeVarClass::Bool))
        failType(value, "bool");
    return static_cast<const HugeVarBool*>(value.m_object)->value();
}

const HugeInteger& HugeVariant::asInt() const
{
    static const HugeInteger zero(0);
    const HugeVariant& value = final();
    if (value.isNull())
        return zero;
    if (!value.holds(HugeVarClass::Int))
        failType(value, "int");
    return static_cast<const HugeVarInt*>(value.m_object)->value();
}

const xstd::XString& HugeVariant::asStr() const
{
    static const xstd::XString empty;
    const HugeVariant& value = final();
    if (value.isNull())
        return empty;
    if (!value.holds(HugeVarClass::String))
        failType(value, "string");
    return static_cast<const HugeVarString*>(value.m_object)->text();
}

const HugeFunction& HugeVariant::asFunc() const
{
    const HugeVariant& value = final();
    if (!value.holds(HugeVarClass::Func))
        failType(value, "functional");
    return static_cast<const HugeVarFunc*>(value.m_object)->function();
}

HugeInteger HugeVariant::toInteger() const
{
    const HugeVariant& value = final();
    return value.holds(HugeVarClass::Int) ? value.asInt() : value.asType(varInt).asInt();
}

xstd::XString HugeVariant::toXString() const
{
    const HugeVariant& value = final();
    return value.holds(HugeVarClass::String) ? value.asStr() : value.asType(varString).asStr();
}

HugeFunction HugeVariant::toFunc() const
{
    const HugeVariant converted = asType(varFunc);
    return converted.isNull() ? HugeFunction() : converted.asFunc();
}

int64_t HugeVariant::asInt64() const
{
    return isNull() ? 0 : m_object->asInt64();
}

double HugeVariant::asDouble() const
{
    return isNull() ? 0.0 : m_object->asDouble();
}

HugeVariant HugeVariant::asType(int typeCode) const
{
    return isNull() ? HugeVariant() : m_object->asType(typeCode);
}

HugeVariant HugeVariant::exec(HugeVariant* args, int argc) const
{
    return objectOf(*this).exec(args, argc);
}

HugeVariant HugeVariant::member(const xstd::XString& name, HugeVariant* args, int argc) const
{
    return objectOf(*this).member(name, args, argc);
}

// Operators. Operands are looked at behind all references; the rules for a null left operand stand
// here, the rest is the objects'.

HugeVariant HugeVariant::operator-() const
{
    return m_object == nullptr ? HugeVariant() : m_object->neg();
}

HugeVariant HugeVariant::operator~() const
{
    return m_object == nullptr ? HugeVariant() : m_object->bitNot();
}

HugeVariant HugeVariant::shr(const HugeVariant& count) const
{
    return m_object == nullptr ? HugeVariant() : m_object->shr(count.final());
}

HugeVariant HugeVariant::shl(const HugeVariant& count) const
{
    return m_object == nullptr ? HugeVariant() : m_object->shl(count.final());
}

HugeVariant operator+(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    const HugeVariant& right = b.final();
    return left.isNull() ? right : operate(left, right, &HugeVar::add);
}

HugeVariant operator-(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    const HugeVariant& right = b.final();
    return left.isNull() ? -right : operate(left, right, &HugeVar::sub);
}

HugeVariant operator*(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    return left.isNull() ? HugeVariant() : operate(left, b.final(), &HugeVar::mul);
}

HugeVariant operator/(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    return left.isNull() ? HugeVariant() : operate(left, b.final(), &HugeVar::div);
}

HugeVariant operator%(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    return left.isNull() ? HugeVariant() : operate(left, b.final(), &HugeVar::per);
}

HugeVariant pow(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    return left.isNull() ? HugeVariant() : operate(left, b.final(), &HugeVar::pow);
}

HugeVariant bitOr(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    const HugeVariant& right = b.final();
    return left.isNull() ? right : operate(left, right, &HugeVar::bitOr);
}

HugeVariant bitAnd(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    return left.isNull() ? HugeVariant() : operate(left, b.final(), &HugeVar::bitAnd);
}

HugeVariant bitXor(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    const HugeVariant& right = b.final();
    return left.isNull() ? right : operate(left, right, &HugeVar::bitXor);
}

bool operator==(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    const HugeVariant& right = b.final();
    return left.isNull() ? right.isZero() : compare(left, right, &HugeVar::equ);
}

bool operator!=(const HugeVariant& a, const HugeVariant& b)
{
    return !(a == b);
}

bool operator>(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    return !left.isNull() && compare(left, b.final(), &HugeVar::greate);
}

bool operator>=(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    const HugeVariant& right = b.final();
    return left.isNull() ? right.isNull() : compare(left, right, &HugeVar::greate_equ);
}

bool operator<(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    return !left.isNull() && compare(left, b.final(), &HugeVar::less);
}

bool operator<=(const HugeVariant& a, const HugeVariant& b)
{
    const HugeVariant& left = a.final();
    const HugeVariant& right = b.final();
    return left.isNull() ? right.isNull() : compare(left, right, &HugeVar::less_equ);
}

HugeVariant& HugeVariant::operator+=(const HugeVariant& b)
{
    HugeVariant& left = final();
    const HugeVariant& right = b.final();
    // A text that grows by appending would otherwise be copied at every step.
    if (HugeVarString* text = textIn(left); text != nullptr && textIn(right) != nullptr)
        text->append(textIn(right)->text());
    else if (integerIn(left) != nullptr && integerIn(right) != nullptr)
        integerIn(left)->value() += integerIn(right)->value();
    else
        left.replace_(left + right);
    return *this;
}

HugeVariant& HugeVariant::operator-=(const HugeVariant& b)
{
    HugeVariant& left = final();
    const HugeVariant& right = b.final();
    if (integerIn(left) != nullptr && integerIn(right) != nullptr)
        integerIn(left)->value() -= integerIn(right)->value();
    else
        left.replace_(left - right);
    return *this;
}

HugeVariant& HugeVariant::operator>>=(const HugeVariant& count)
{
    return m_object == nullptr ? *this : *this = shr(count);
}

HugeVariant& HugeVariant::operator<<=(const HugeVariant& count)
{
    return m_object == nullptr ? *this : *this = shl(count);
}

// Functions and text

HugeVariant HugeVariant::apply(HugeVariant (HugeVar::*function)() const) const
{
    const HugeVariant& value = final();
    return value.m_object == nullptr ? HugeVariant(0) : (value.m_object->*function)();
}

HugeVariant HugeVariant::log(const HugeVariant& base) const
{
    const HugeVariant& value = final();
    return value.m_object == nullptr ? HugeVariant(0) : value.m_object->log(base);
}

xstd::XString HugeVariant::fmt(const XFormatRule& rule) const
{
    return isNull() ? xstd::XString() : m_object->fmt(rule);
}

xstd::XString HugeVariant::dec(const XFormatRule& rule) const
{
    return isNull() ? xstd::XString("0") : m_object->fmt(withRadix(rule, 10));
}

xstd::XString HugeVariant::bin(const XFormatRule& rule) const
{
    return isNull() ? xstd::XString("0b0") : m_object->fmt(withRadix(rule, 2));
}

xstd::XString HugeVariant::oct(const XFormatRule& rule) const
{
    return isNull() ? xstd::XString("0") : m_object->fmt(withRadix(rule, 8));
}

xstd::XString HugeVariant::hexFmt(const XFormatRule& rule) const
{
    return isNull() ? xstd::XString("0x0") : m_object->fmt(withRadix(rule, 16));
}

xstd::XString HugeVariant::hex(int64_t bytes) const
{
    return isNull() ? xstd::XString() : final().m_object->hex(bytes);
}

xstd::XString HugeVariant::toString() const
{
    return isNull() ? xstd::XString() : m_object->toString();
}

} // namespace huge
