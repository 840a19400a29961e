#include "values/HugeVar.h"

#include "values/HugeVariant.h"

#include <array>
#include <stdexcept>
#include <string>

namespace huge {

namespace {

struct FunctionMember {
    const char* name;
    HugeVariant (HugeVar::*function)() const;
};

constexpr std::array<FunctionMember, 14> functionMembers{{
    {"sin", &HugeVar::sin},
    {"cos", &HugeVar::cos},
    {"tan", &HugeVar::tan},
    {"asin", &HugeVar::asin},
    {"acos", &HugeVar::acos},
    {"atan", &HugeVar::atan},
    {"sinh", &HugeVar::sinh},
    {"cosh", &HugeVar::cosh},
    {"tanh", &HugeVar::tanh},
    {"asinh", &HugeVar::asinh},
    {"acosh", &HugeVar::acosh},
    {"atanh", &HugeVar::atanh},
    {"exp", &HugeVar::exp},
    {"ln", &HugeVar::ln},
}};

/// The base class as it stands.
class Nothing final : public HugeVar {};

} // namespace

const HugeVar& HugeVar::nothing() noexcept
{
    static const Nothing object;
    return object;
}

HugeVar* HugeVar::destroy() noexcept
{
    this->~HugeVar();
    return this;
}

void HugeVar::failUnsupported(const char* operation) const
{
    throw std::runtime_error(typeName() + " is not suport " + operation);
}

int HugeVar::typeId() const
{
    return varNull;
}

const std::type_info& HugeVar::typeInfo() const
{
    return typeid(HugeVar);
}

xstd::XString HugeVar::typeName() const
{
    return "null";
}

size_t HugeVar::objectSize() const
{
    return 0;
}

bool HugeVar::isNull() const
{
    return true;
}

bool HugeVar::isZero() const
{
    return true;
}

bool HugeVar::isRef() const
{
    return false;
}

bool HugeVar::isNegative() const
{
    return false;
}

bool HugeVar::isRange() const
{
    return false;
}

bool HugeVar::isClosure() const
{
    return false;
}

HugeVariant* HugeVar::refTarget() const
{
    return nullptr;
}

void* HugeVar::payload()
{
    return nullptr;
}

std::vector<uint8_t> HugeVar::data() const
{
    return {};
}

HugeVariant HugeVar::exec(HugeVariant*, int) const
{
    failUnsupported("exec()");
}

HugeVariant HugeVar::member(const xstd::XString& name, HugeVariant* args, int argc) const
{
    for (const FunctionMember& known : functionMembers) {
        if (name == known.name)
            return (this->*known.function)();
    }
    if (name == "typeName")
        return typeName();
    if (name == "log")
        return argc >= 1 ? log(args[0]) : ln();
    if (name == "hex")
        return hex(argc >= 1 ? args[0].asInt64() : 0);
    if (name == "data")
        return data();
    failUnsupported((name + "()").c_str());
}

HugeVariant HugeVar::clone() const
{
    return {};
}

HugeVariant HugeVar::move()
{
    return {};
}

HugeVariant HugeVar::asType(int) const
{
    failUnsupported("asType()");
}

int64_t HugeVar::asInt64() const
{
    failUnsupported("asInt64()");
}

double HugeVar::asDouble() const
{
    failUnsupported("asDouble()");
}

HugeVariant HugeVar::neg() const
{
    failUnsupported("neg");
}

HugeVariant HugeVar::shr(const HugeVariant&) const
{
    failUnsupported("shr(>>)");
}

HugeVariant HugeVar::shl(const HugeVariant&) const
{
    failUnsupported("shl(<<)");
}

HugeVariant HugeVar::add(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("add(+)");
}

HugeVariant HugeVar::sub(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("sub(-)");
}

HugeVariant HugeVar::mul(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("mul(*)");
}

HugeVariant HugeVar::div(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("div(/)");
}

HugeVariant HugeVar::per(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("per(%)");
}

HugeVariant HugeVar::pow(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("pow(^)");
}

HugeVariant HugeVar::bitNot() const
{
    failUnsupported("bitNot(~)");
}

HugeVariant HugeVar::bitOr(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("bitOr(|)");
}

HugeVariant HugeVar::bitAnd(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("bitAnd(&)");
}

HugeVariant HugeVar::bitXor(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("bitXor(xor)");
}

HugeVariant HugeVar::sin() const
{
    failUnsupported("sin()");
}

HugeVariant HugeVar::cos() const
{
    failUnsupported("cos()");
}

HugeVariant HugeVar::tan() const
{
    failUnsupported("tan()");
}

HugeVariant HugeVar::asin() const
{
    failUnsupported("asin()");
}

HugeVariant HugeVar::acos() const
{
    failUnsupported("acos()");
}

HugeVariant HugeVar::atan() const
{
    failUnsupported("atan()");
}

HugeVariant HugeVar::sinh() const
{
    failUnsupported("sinh()");
}

HugeVariant HugeVar::cosh() const
{
    failUnsupported("cosh()");
}

HugeVariant HugeVar::tanh() const
{
    failUnsupported("tanh()");
}

HugeVariant HugeVar::asinh() const
{
    failUnsupported("asinh()");
}

HugeVariant HugeVar::acosh() const
{
    failUnsupported("acosh()");
}

HugeVariant HugeVar::atanh() const
{
    failUnsupported("atanh()");
}

HugeVariant HugeVar::exp() const
{
    failUnsupported("exp()");
}

HugeVariant HugeVar::ln() const
{
    failUnsupported("ln()");
}

HugeVariant HugeVar::log(const HugeVariant&) const
{
    failUnsupported("log(base)");
}

bool HugeVar::equ(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("equ(==)");
}

bool HugeVar::greate(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("greate(>)");
}

bool HugeVar::greate_equ(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("greate_equ(>=)");
}

bool HugeVar::less(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("less(<)");
}

bool HugeVar::less_equ(const HugeVariant&, const HugeVariant&) const
{
    failUnsupported("less_equ(<=)");
}

xstd::XString HugeVar::hex(int64_t) const
{
    failUnsupported("hex()");
}

xstd::XString HugeVar::fmt(const XFormatRule&) const
{
    failUnsupported("fmt()");
}

xstd::XString HugeVar::toString() const
{
    failUnsupported("toString()");
}

} // namespace huge
