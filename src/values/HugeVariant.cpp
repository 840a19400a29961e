#include "values/HugeVariant.h"

#include "values/HugeVarBool.h"
#include "values/HugeVarData.h"
#include "values/HugeVarFloat.h"
#include "values/HugeVarFunc.h"
#include "values/HugeVarImag.h"
#include "values/HugeVarInt.h"
#include "values/HugeVarMod.h"
#include "values/HugeVarRef.h"
#include "values/HugeVarString.h"
#include "values/HugeVarTime.h"

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
    // Two of a kind need no codes: this is what most operations are.
    if (b.holds(a.object()->varClass()) && !b.holds(HugeVarClass::Other))
        return *a.object();
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

/// The object behind all references as a T, the class that varClass names.
template <class T>
const T& objectAs(const HugeVariant& value, HugeVarClass varClass, const char* expected)
{
    const HugeVariant& end = value.final();
    if (!end.holds(varClass))
        failType(end, expected);
    return static_cast<const T&>(*end.object());
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

HugeVariant::HugeVariant(const HugeFloat& value) : HugeVariant(make<HugeVarFloat>(value)) {}

HugeVariant::HugeVariant(HugeFloat&& value) : HugeVariant(make<HugeVarFloat>(std::move(value))) {}

HugeVariant::HugeVariant(const HugeImag& value) : HugeVariant(make<HugeVarImag>(value)) {}

HugeVariant::HugeVariant(HugeImag&& value) : HugeVariant(make<HugeVarImag>(std::move(value))) {}

HugeVariant::HugeVariant(const HugeMod& value) : HugeVariant(make<HugeVarMod>(value)) {}

HugeVariant::HugeVariant(HugeMod&& value) : HugeVariant(make<HugeVarMod>(std::move(value))) {}

HugeVariant::HugeVariant(const xstd::XString& text) : HugeVariant(make<HugeVarString>(text)) {}

HugeVariant::HugeVariant(xstd::XString&& text) : HugeVariant(make<HugeVarString>(std::move(text)))
{}

HugeVariant::HugeVariant(const char* text) : HugeVariant(xstd::XString(text)) {}

HugeVariant::HugeVariant(const std::vector<uint8_t>& bytes) : HugeVariant(make<HugeVarData>(bytes))
{}

HugeVariant::HugeVariant(std::vector<uint8_t>&& bytes)
    : HugeVariant(make<HugeVarData>(std::move(bytes)))
{}

HugeVariant::HugeVariant(const xstd::XTime& time) : HugeVariant(make<HugeVarTime>(time)) {}

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

HugeVariant HugeVariant::fromDouble(double value)
{
    return make<HugeVarFloat>(value);
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
    else if (object->varClass() == HugeVarClass::Float)
        static_cast<HugeVarFloat*>(object)->~HugeVarFloat();
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
    return objectAs<HugeVarBool>(*this, HugeVarClass::Bool, "bool").value();
}

const HugeInteger& HugeVariant::asInt() const
{
    static const HugeInteger zero(0);
    return isNull() ? zero : objectAs<HugeVarInt>(*this, HugeVarClass::Int, "int").value();
}

const HugeFloat& HugeVariant::asFloat() const
{
    static const HugeFloat zero(0);
    return isNull() ? zero : objectAs<HugeVarFloat>(*this, HugeVarClass::Float, "float").value();
}

const HugeImag& HugeVariant::asImag() const
{
    static const HugeImag zero{HugeFloat(0), HugeFloat(0)};
    return isNull() ? zero : objectAs<HugeVarImag>(*this, HugeVarClass::Imag, "imag").value();
}

const HugeMod& HugeVariant::asMod() const
{
    static const HugeMod zero(HugeInteger(0), nullptr);
    return isNull() ? zero : objectAs<HugeVarMod>(*this, HugeVarClass::Mod, "mod").value();
}

const xstd::XString& HugeVariant::asStr() const
{
    static const xstd::XString empty;
    return isNull() ? empty : objectAs<HugeVarString>(*this, HugeVarClass::String, "string").text();
}

const HugeFunction& HugeVariant::asFunc() const
{
    return objectAs<HugeVarFunc>(*this, HugeVarClass::Func, "functional").function();
}

const xstd::XTime& HugeVariant::asTime() const
{
    return objectAs<HugeVarTime>(*this, HugeVarClass::Time, "time").value();
}

HugeInteger HugeVariant::toInteger() const
{
    const HugeVariant& value = final();
    return value.holds(HugeVarClass::Int) ? value.asInt() : value.asType(varInt).asInt();
}

HugeFloat HugeVariant::toFloat() const
{
    const HugeVariant& value = final();
    return value.holds(HugeVarClass::Float) ? value.asFloat() : value.asType(varFloat).asFloat();
}

HugeImag HugeVariant::toImag() const
{
    const HugeVariant& value = final();
    return value.holds(HugeVarClass::Imag) ? value.asImag() : value.asType(varImag).asImag();
}

HugeMod HugeVariant::toMod() const
{
    const HugeVariant& value = final();
    return value.holds(HugeVarClass::Mod) ? value.asMod() : value.asType(varMod).asMod();
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

xstd::XTime HugeVariant::toTime() const
{
    const HugeVariant& value = final();
    if (value.holds(HugeVarClass::Time))
        return value.asTime();
    const HugeVariant converted = value.asType(varTime);
    return converted.isNull() ? xstd::XTime() : converted.asTime();
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
