#pragma once

#include "numbers/HugeInteger.h"
#include "numbers/LimbPool.h"
#include "values/HugeVar.h"

#include <concepts>
#include <functional>
#include <new>
#include <utility>

namespace xstd {
struct XTime;
}

namespace huge {

class HugeFloat;
class HugeMod;
class HugeVariant;
struct HugeImag;

/// What a native function looks like: args[0] is the first of argc arguments.
using HugeFunction = std::function<HugeVariant(HugeVariant* args, int argc)>;

/// A value: one pointer to an object that the handle owns alone, or null. Copying clones the
/// object, moving passes it on and leaves null.
///
/// Assignment goes through references: a handle that holds a reference passes whatever is assigned
/// on to the handle that it refers to. replace_, clear_ and setRef act on the handle itself. Chains
/// of references always end, since setRef never closes a ring.
///
/// Operators are carried out by the operand with the higher type code, the left one where codes are
/// equal; a null left operand has rules of its own. A failed operator leaves its operands alone.
class HugeVariant {
public:
    HugeVariant() noexcept = default;
    template <std::same_as<bool> B>
    HugeVariant(B value) : HugeVariant(fromBool(value))
    {}
    template <std::signed_integral T>
    HugeVariant(T value) : HugeVariant(fromInt64(value))
    {}
    HugeVariant(const HugeInteger& value);
    HugeVariant(HugeInteger&& value);
    /// A float of one limb.
    template <std::floating_point T>
    HugeVariant(T value) : HugeVariant(fromDouble(double(value)))
    {}
    HugeVariant(const HugeFloat& value);
    HugeVariant(HugeFloat&& value);
    HugeVariant(const HugeImag& value);
    HugeVariant(HugeImag&& value);
    HugeVariant(const HugeMod& value);
    HugeVariant(HugeMod&& value);
    HugeVariant(const xstd::XString& text);
    HugeVariant(xstd::XString&& text);
    HugeVariant(const char* text);
    HugeVariant(const std::vector<uint8_t>& bytes);
    HugeVariant(std::vector<uint8_t>&& bytes);
    HugeVariant(const xstd::XTime& time);
    HugeVariant(HugeFunction function);
    explicit HugeVariant(const HugeVar& object);
    explicit HugeVariant(HugeVar&& object);

    HugeVariant(const HugeVariant& other)
        : m_object(other.m_object == nullptr ? nullptr : cloneObject(*other.m_object))
    {}
    HugeVariant(HugeVariant&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ~HugeVariant()
    {
        if (m_object != nullptr)
            drop(m_object);
    }

    HugeVariant& operator=(const HugeVariant& other);
    HugeVariant& operator=(HugeVariant&& other) noexcept;

    /// Places a T into a block of the pool. This is how objects of every class are made.
    template <class T, class... A>
    static HugeVariant make(A&&... args)
    {
        static_assert(alignof(T) <= alignof(Limb), "blocks are aligned for limbs");
        constexpr size_t limbs = (sizeof(T) + sizeof(Limb) - 1) / sizeof(Limb);
        Limb* block = LimbPool::allocate(limbs);
        HugeVariant result;
        try {
            result.m_object = ::new (static_cast<void*>(block)) T(std::forward<A>(args)...);
        } catch (...) {
            LimbPool::release(block);
            throw;
        }
        return result;
    }

    /// The object itself, references not followed; null for a null handle.
    HugeVar* object() const noexcept { return m_object; }
    /// Whether the object is of this class, references not followed.
    bool holds(HugeVarClass varClass) const noexcept
    {
        return m_object != nullptr && m_object->varClass() == varClass;
    }

    /// Makes this handle a reference on target, or on what target refers to in the end. Nothing
    /// happens when that is this handle.
    HugeVariant& setRef(HugeVariant& target);
    /// The handle at the end of the references, this one if it holds none.
    HugeVariant& final() noexcept { return holds(HugeVarClass::Ref) ? followRefs() : *this; }
    const HugeVariant& final() const noexcept { return const_cast<HugeVariant*>(this)->final(); }
    /// Gives this handle another object; a reference in it is dropped, not written through.
    HugeVariant& replace_(HugeVariant&& value) noexcept;
    /// Makes this handle null; a reference in it is dropped, not written through.
    HugeVariant& clear_() noexcept;

    // Questions, all of them null-safe

    bool isNull() const { return m_object == nullptr || m_object->isNull(); }
    bool isZero() const { return m_object == nullptr || m_object->isZero(); }
    /// The type code; 0 when isNull.
    int typeId() const { return isNull() ? int(varNull) : m_object->typeId(); }
    const std::type_info& typeInfo() const;
    /// "null" when isNull.
    xstd::XString typeName() const;
    bool isRef() const { return m_object != nullptr && m_object->isRef(); }
    bool isNegative() const { return m_object != nullptr && m_object->isNegative(); }
    bool isRange() const { return m_object != nullptr && m_object->isRange(); }
    bool isClosure() const { return m_object != nullptr && m_object->isClosure(); }
    HugeVariant* refTarget() const { return m_object == nullptr ? nullptr : m_object->refTarget(); }
    std::vector<uint8_t> data() const;

    // The payload, by reference. Another type throws its name and " is not bool" and so on; a null
    // value reads as zero or the empty text where there is one.

    bool asBool() const;
    const HugeInteger& asInt() const;
    const HugeFloat& asFloat() const;
    const HugeImag& asImag() const;
    const HugeMod& asMod() const;
    const xstd::XString& asStr() const;
    const HugeFunction& asFunc() const;
    const xstd::XTime& asTime() const;

    // Conversions by value; null gives the empty form

    HugeInteger toInteger() const;
    HugeFloat toFloat() const;
    HugeImag toImag() const;
    HugeMod toMod() const;
    xstd::XString toXString() const;
    HugeFunction toFunc() const;
    xstd::XTime toTime() const;
    int64_t asInt64() const;
    double asDouble() const;
    HugeVariant asType(int typeCode) const;

    // Calls; a null handle fails as "null is not suport exec()"

    HugeVariant exec(HugeVariant* args, int argc) const;
    HugeVariant member(const xstd::XString& name, HugeVariant* args, int argc) const;

    // Operators

    HugeVariant operator-() const;
    HugeVariant operator~() const;
    HugeVariant shr(const HugeVariant& count) const;
    HugeVariant shl(const HugeVariant& count) const;
    HugeVariant operator>>(const HugeVariant& count) const { return shr(count); }
    HugeVariant operator<<(const HugeVariant& count) const { return shl(count); }
    friend HugeVariant operator+(const HugeVariant& a, const HugeVariant& b);
    friend HugeVariant operator-(const HugeVariant& a, const HugeVariant& b);
    friend HugeVariant operator*(const HugeVariant& a, const HugeVariant& b);
    friend HugeVariant operator/(const HugeVariant& a, const HugeVariant& b);
    friend HugeVariant operator%(const HugeVariant& a, const HugeVariant& b);
    friend HugeVariant pow(const HugeVariant& a, const HugeVariant& b);
    friend HugeVariant bitOr(const HugeVariant& a, const HugeVariant& b);
    friend HugeVariant bitAnd(const HugeVariant& a, const HugeVariant& b);
    friend HugeVariant bitXor(const HugeVariant& a, const HugeVariant& b);
    friend bool operator==(const HugeVariant& a, const HugeVariant& b);
    friend bool operator!=(const HugeVariant& a, const HugeVariant& b);
    friend bool operator>(const HugeVariant& a, const HugeVariant& b);
    friend bool operator>=(const HugeVariant& a, const HugeVariant& b);
    friend bool operator<(const HugeVariant& a, const HugeVariant& b);
    friend bool operator<=(const HugeVariant& a, const HugeVariant& b);

    // Compound forms: the operator, then an assignment, which goes through a reference. Integers
    // and texts are worked on in place.

    HugeVariant& operator+=(const HugeVariant& b);
    HugeVariant& operator-=(const HugeVariant& b);
    HugeVariant& operator*=(const HugeVariant& b) { return *this = *this * b; }
    HugeVariant& operator/=(const HugeVariant& b) { return *this = *this / b; }
    HugeVariant& operator%=(const HugeVariant& b) { return *this = *this % b; }
    /// The power, as in scripts.
    HugeVariant& operator^=(const HugeVariant& b) { return *this = pow(*this, b); }
    /// A null handle stays null.
    HugeVariant& operator>>=(const HugeVariant& count);
    HugeVariant& operator<<=(const HugeVariant& count);

    // Functions; a null handle gives the integer 0

    HugeVariant sin() const { return apply(&HugeVar::sin); }
    HugeVariant cos() const { return apply(&HugeVar::cos); }
    HugeVariant tan() const { return apply(&HugeVar::tan); }
    HugeVariant asin() const { return apply(&HugeVar::asin); }
    HugeVariant acos() const { return apply(&HugeVar::acos); }
    HugeVariant atan() const { return apply(&HugeVar::atan); }
    HugeVariant sinh() const { return apply(&HugeVar::sinh); }
    HugeVariant cosh() const { return apply(&HugeVar::cosh); }
    HugeVariant tanh() const { return apply(&HugeVar::tanh); }
    HugeVariant asinh() const { return apply(&HugeVar::asinh); }
    HugeVariant acosh() const { return apply(&HugeVar::acosh); }
    HugeVariant atanh() const { return apply(&HugeVar::atanh); }
    HugeVariant exp() const { return apply(&HugeVar::exp); }
    HugeVariant ln() const { return apply(&HugeVar::ln); }
    HugeVariant log(const HugeVariant& base) const;

    // Text

    xstd::XString fmt(const XFormatRule& rule) const;
    /// fmt with another radix; null gives "0", "0b0", "0", "0x0".
    xstd::XString dec(const XFormatRule& rule) const;
    xstd::XString bin(const XFormatRule& rule) const;
    xstd::XString oct(const XFormatRule& rule) const;
    xstd::XString hexFmt(const XFormatRule& rule) const;
    xstd::XString hex(int64_t bytes) const;
    xstd::XString toString() const;

private:
    static HugeVariant fromBool(bool value);
    static HugeVariant fromInt64(int64_t value);
    static HugeVariant fromDouble(double value);
    static HugeVar* cloneObject(const HugeVar& object);
    static void drop(HugeVar* object) noexcept;
    HugeVariant& followRefs() noexcept;
    HugeVariant apply(HugeVariant (HugeVar::*function)() const) const;

    HugeVar* m_object = nullptr;
};

} // namespace huge
