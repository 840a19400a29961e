#include "cell/XCellVarRange.h"
#include "cell/XCell.h"
#include "cell/XCellVarError.h"
#include "script/XVarClosure.h"

#include <vector>

namespace huge {

namespace {

uint8_t kindOf(const HugeVariant& argument)
{
    const XCellVarRange* range = XCellVarRange::from(argument);
    return range && range->range() ? range->range()->ref.start.kind : XCellPos::kindCell;
}

/// Whether the first of two element indexes is the row.
bool firstIsRow(uint8_t first, uint8_t second)
{
    if (first == second || first == XCellPos::kindRow)
        return true;
    return second != XCellPos::kindRow && first != XCellPos::kindCol;
}

int32_t elementIndex(const HugeVariant& argument)
{
    return static_cast<int32_t>(argument.asInt64());
}

/// The number of a rectangle that the member names; false for any other name.
bool rectMember(const xstd::XString& name, const xstd::XRect& rect, int64_t& out)
{
    if (name == "height")
        out = rect.height();
    else if (name == "width")
        out = rect.width();
    else if (name == "top")
        out = rect.top;
    else if (name == "left")
        out = rect.left;
    else if (name == "bottom")
        out = rect.bottom;
    else if (name == "right")
        out = rect.right;
    else
        return false;
    return true;
}

// Operators without a sign. Inside the class their names mean its own operations.

HugeVariant powOf(const HugeVariant& a, const HugeVariant& b)
{
    return pow(a, b);
}

HugeVariant orOf(const HugeVariant& a, const HugeVariant& b)
{
    return bitOr(a, b);
}

HugeVariant andOf(const HugeVariant& a, const HugeVariant& b)
{
    return bitAnd(a, b);
}

HugeVariant xorOf(const HugeVariant& a, const HugeVariant& b)
{
    return bitXor(a, b);
}

} // namespace

const XCellVarRange* XCellVarRange::from(const HugeVariant& value) noexcept
{
    const HugeVar* object = value.final().object();
    return object && object->isRange() ? static_cast<const XCellVarRange*>(object) : nullptr;
}

void XCellVarRange::enlist(XCellRange* range) noexcept
{
    m_range = range;
    if (!range)
        return;
    m_next = range->m_values;
    if (m_next)
        m_next->m_previous = this;
    range->m_values = this;
}

void XCellVarRange::withdraw() noexcept
{
    if (!m_range)
        return;
    (m_previous ? m_previous->m_next : m_range->m_values) = m_next;
    if (m_next)
        m_next->m_previous = m_previous;
    m_range = nullptr;
}

const HugeVariant& XCellVarRange::value(HugeVariant& scratch) const
{
    return m_range ? m_range->value(scratch) : scratch.replace_(invalidRange());
}

HugeVariant XCellVarRange::toValue() const
{
    return m_range ? m_range->toValue() : invalidRange();
}

bool XCellVarRange::isNull() const
{
    HugeVariant scratch;
    return !isValid() || value(scratch).isNull();
}

bool XCellVarRange::isZero() const
{
    HugeVariant scratch;
    return !isValid() || value(scratch).isZero();
}

std::vector<uint8_t> XCellVarRange::data() const
{
    HugeVariant scratch;
    return isValid() ? value(scratch).data() : std::vector<uint8_t>();
}

HugeVariant XCellVarRange::exec(HugeVariant* args, int argc) const
{
    if (!isValid())
        return invalidRange();
    if (argc != 2)
        return HugeVariant::make<XCellVarError>(cellValueError, "here should 2 args");
    const bool rowFirst = firstIsRow(kindOf(args[0]), kindOf(args[1]));
    return m_range->valueAt(elementIndex(args[rowFirst ? 0 : 1]),
                            elementIndex(args[rowFirst ? 1 : 0]));
}

HugeVariant XCellVarRange::member(const xstd::XString& name, HugeVariant* args, int argc) const
{
    if (!isValid())
        return invalidRange();
    if (name == "name")
        return HugeVariant(m_range->ref.toText(false));
    if (name == "value")
        return toValue();
    int64_t number = 0;
    if (rectMember(name, m_range->rect(), number))
        return HugeVariant(number);
    const XCell* cell = m_range->firstCell();
    if (name == "text")
        return HugeVariant(cell ? cell->valueText() : xstd::XString());
    if (name == "code")
        return HugeVariant(cell ? cell->scriptText(false) : xstd::XString());
    // The call may run a script, so it gets a value of its own.
    const HugeVariant called = toValue();
    return called.isNull() ? called : called.member(name, args, argc);
}

HugeVariant XCellVarRange::asType(int typeCode) const
{
    HugeVariant scratch;
    return isValid() ? value(scratch).asType(typeCode) : HugeVariant();
}

int64_t XCellVarRange::asInt64() const
{
    HugeVariant scratch;
    return isValid() ? value(scratch).asInt64() : 0;
}

double XCellVarRange::asDouble() const
{
    HugeVariant scratch;
    return isValid() ? value(scratch).asDouble() : 0.0;
}

HugeVariant XCellVarRange::apply(HugeVariant (HugeVariant::*function)() const) const
{
    HugeVariant scratch;
    return isValid() ? (value(scratch).*function)() : HugeVariant();
}

HugeVariant XCellVarRange::neg() const
{
    return apply(&HugeVariant::operator-);
}

HugeVariant XCellVarRange::bitNot() const
{
    return apply(&HugeVariant::operator~);
}

HugeVariant XCellVarRange::shr(const HugeVariant& count) const
{
    HugeVariant scratch;
    return isValid() ? value(scratch).shr(count) : HugeVariant();
}

HugeVariant XCellVarRange::shl(const HugeVariant& count) const
{
    HugeVariant scratch;
    return isValid() ? value(scratch).shl(count) : HugeVariant();
}

HugeVariant XCellVarRange::log(const HugeVariant& base) const
{
    HugeVariant scratch;
    return isValid() ? value(scratch).log(base) : HugeVariant();
}

template <class Operation>
auto XCellVarRange::combine(const HugeVariant& a, const HugeVariant& b, Operation operation) const
{
    using Result = decltype(operation(a, b));
    if (!isValid())
        return Result();
    HugeVariant scratch;
    const HugeVariant& own = value(scratch);
    // One of the operands is this object; the operator starts anew on the value in its place.
    return a.final().object() == this ? operation(own, b) : operation(a, own);
}

HugeVariant XCellVarRange::add(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, [](const auto& left, const auto& right) { return left + right; });
}

HugeVariant XCellVarRange::sub(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, [](const auto& left, const auto& right) { return left - right; });
}

HugeVariant XCellVarRange::mul(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, [](const auto& left, const auto& right) { return left * right; });
}

HugeVariant XCellVarRange::div(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, [](const auto& left, const auto& right) { return left / right; });
}

HugeVariant XCellVarRange::per(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, [](const auto& left, const auto& right) { return left % right; });
}

HugeVariant XCellVarRange::pow(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, powOf);
}

HugeVariant XCellVarRange::bitOr(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, orOf);
}

HugeVariant XCellVarRange::bitAnd(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, andOf);
}

HugeVariant XCellVarRange::bitXor(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, xorOf);
}

bool XCellVarRange::equ(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, [](const auto& left, const auto& right) { return left == right; });
}

bool XCellVarRange::greate(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, [](const auto& left, const auto& right) { return left > right; });
}

bool XCellVarRange::greate_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, [](const auto& left, const auto& right) { return left >= right; });
}

bool XCellVarRange::less(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, [](const auto& left, const auto& right) { return left < right; });
}

bool XCellVarRange::less_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return combine(a, b, [](const auto& left, const auto& right) { return left <= right; });
}

xstd::XString XCellVarRange::fmt(const XFormatRule& rule) const
{
    HugeVariant scratch;
    return isValid() ? value(scratch).fmt(rule) : xstd::XString("null");
}

xstd::XString XCellVarRange::toString() const
{
    if (!isValid())
        return "null";
    if (!m_range->ref.isCell())
        return toValue().toString();
    const XCell* cell = m_range->firstCell();
    return cell ? cell->valueText() : xstd::XString("null");
}

void stripRanges(HugeVariant& value)
{
    // A list instead of recursion: closures may capture closures to any depth.
    std::vector<HugeVariant*> open{&value};
    while (!open.empty()) {
        HugeVariant& current = *open.back();
        open.pop_back();
        if (current.isRef())
            continue; // another handle's value, which is looked at where that handle stands
        if (current.isRange()) {
            current.replace_(static_cast<const XCellVarRange*>(current.object())->toValue());
        } else if (current.holds(HugeVarClass::Closure)) {
            for (HugeVariant& captured : static_cast<XVarClosure*>(current.object())->closureVars())
                open.push_back(&captured);
        }
    }
}

} // namespace huge
