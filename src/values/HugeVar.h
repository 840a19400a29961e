#pragma once

#include "common/XString.h"
#include "numbers/XFormatRule.h"

#include <cstddef>
#include <cstdint>
#include <typeinfo>
#include <vector>

namespace huge {

class HugeVariant;

/// The class of a value object, for those who treat some classes on a shorter road. Every class
/// that other folders add is Other.
enum class HugeVarClass : uint8_t {
    Other,
    Bool,
    Data,
    Int,
    Float,
    Imag,
    Mod,
    Time,
    String,
    Ref,
    Func,
    Closure,
    Modeler
};

/// Type codes, the answers of typeId. Of two operands the one with the higher code does the work.
enum HugeVarType : int {
    varNull = 0,
    varBool = 1, ///< of data too, which stands beside a number as a boolean does
    varInt = 2,
    varFloat = 3,
    varImag = 4,
    varMod = 5,
    varTime = 6,
    varString = 7,
    varFunc = 8,
    varClosure = 9,
    varRange = 10,
    varModeler = 11,
    varError = 13
};

/// A value object: what a HugeVariant owns. The class itself stands for "no value": it answers
/// every question as null does, and every operation fails with the type's name and what it lacks. A
/// class of values overrides what it can do.
///
/// Objects live in blocks of the limb pool, made by HugeVariant::make. A binary operation is called
/// on the operand that carries it out and gets both operands in their order, so this is one of a
/// and b, not always a. All failures are std::runtime_error.
class HugeVar {
public:
    virtual ~HugeVar() = default;

    /// The object that answers for a null handle.
    static const HugeVar& nothing() noexcept;

    /// Ends the object's life in place; its block stays with the caller. Returns the address.
    HugeVar* destroy() noexcept;

    HugeVarClass varClass() const noexcept { return m_class; }

    virtual int typeId() const;
    virtual const std::type_info& typeInfo() const;
    virtual xstd::XString typeName() const;
    virtual size_t objectSize() const;
    virtual bool isNull() const;
    virtual bool isZero() const;
    virtual bool isRef() const;
    virtual bool isNegative() const;
    virtual bool isRange() const;
    virtual bool isClosure() const;
    /// The handle that a reference stands for; null for everything else.
    virtual HugeVariant* refTarget() const;
    /// The address of the value inside the object.
    virtual void* payload();
    /// The value as bytes, without type and length.
    virtual std::vector<uint8_t> data() const;

    /// Calls the value with argc arguments, which may be moved from.
    virtual HugeVariant exec(HugeVariant* args, int argc) const;
    /// Calls a member by name. A class compares its own names first and leaves the rest to this.
    virtual HugeVariant member(const xstd::XString& name, HugeVariant* args, int argc) const;
    virtual HugeVariant clone() const;
    virtual HugeVariant move();
    /// The value as another type; a null handle where there is no such conversion.
    virtual HugeVariant asType(int typeCode) const;
    virtual int64_t asInt64() const;
    virtual double asDouble() const;

    virtual HugeVariant neg() const;
    virtual HugeVariant shr(const HugeVariant& value) const;
    virtual HugeVariant shl(const HugeVariant& value) const;
    virtual HugeVariant add(const HugeVariant& a, const HugeVariant& b) const;
    virtual HugeVariant sub(const HugeVariant& a, const HugeVariant& b) const;
    virtual HugeVariant mul(const HugeVariant& a, const HugeVariant& b) const;
    virtual HugeVariant div(const HugeVariant& a, const HugeVariant& b) const;
    virtual HugeVariant per(const HugeVariant& a, const HugeVariant& b) const;
    virtual HugeVariant pow(const HugeVariant& a, const HugeVariant& b) const;
    virtual HugeVariant bitNot() const;
    virtual HugeVariant bitOr(const HugeVariant& a, const HugeVariant& b) const;
    virtual HugeVariant bitAnd(const HugeVariant& a, const HugeVariant& b) const;
    virtual HugeVariant bitXor(const HugeVariant& a, const HugeVariant& b) const;

    virtual HugeVariant sin() const;
    virtual HugeVariant cos() const;
    virtual HugeVariant tan() const;
    virtual HugeVariant asin() const;
    virtual HugeVariant acos() const;
    virtual HugeVariant atan() const;
    virtual HugeVariant sinh() const;
    virtual HugeVariant cosh() const;
    virtual HugeVariant tanh() const;
    virtual HugeVariant asinh() const;
    virtual HugeVariant acosh() const;
    virtual HugeVariant atanh() const;
    virtual HugeVariant exp() const;
    virtual HugeVariant ln() const;
    virtual HugeVariant log(const HugeVariant& base) const;

    virtual bool equ(const HugeVariant& a, const HugeVariant& b) const;
    virtual bool greate(const HugeVariant& a, const HugeVariant& b) const;
    virtual bool greate_equ(const HugeVariant& a, const HugeVariant& b) const;
    virtual bool less(const HugeVariant& a, const HugeVariant& b) const;
    virtual bool less_equ(const HugeVariant& a, const HugeVariant& b) const;

    /// Hexadecimal form; bytes above 0 keeps the last digits only.
    virtual xstd::XString hex(int64_t bytes) const;
    /// What a cell displays and stores.
    virtual xstd::XString fmt(const XFormatRule& rule) const;
    /// The text where no format applies.
    virtual xstd::XString toString() const;

protected:
    explicit HugeVar(HugeVarClass varClass = HugeVarClass::Other) noexcept : m_class(varClass) {}
    HugeVar(const HugeVar&) noexcept = default;
    HugeVar(HugeVar&&) noexcept = default;

    /// Throws std::runtime_error: the type's name, " is not suport " and the operation.
    [[noreturn]] void failUnsupported(const char* operation) const;

private:
    const HugeVarClass m_class;
};

} // namespace huge
