#include "cell/XCellVarError.h"
#include "cell/XCellVarRange.h"
#include "numbers/HugeFloat.h"

#include <stdexcept>

namespace huge {

namespace {

/// The error value in the handle, or in the cell that it refers to; null for anything else.
const XCellVarError* errorIn(const HugeVariant& value, HugeVariant& scratch)
{
    const XCellVarRange* range = XCellVarRange::from(value);
    const HugeVariant& plain = range ? range->value(scratch) : value.final();
    return dynamic_cast<const XCellVarError*>(plain.object());
}

template <class Compare>
bool compareErrors(const HugeVariant& a, const HugeVariant& b, Compare compare)
{
    HugeVariant scratchA;
    HugeVariant scratchB;
    const XCellVarError* left = errorIn(a, scratchA);
    const XCellVarError* right = errorIn(b, scratchB);
    return left && right && compare(left->errorType(), right->errorType());
}

} // namespace

HugeVariant XCellVarError::clone() const
{
    return HugeVariant::make<XCellVarError>(m_errorType, m_message);
}

HugeVariant XCellVarError::move()
{
    return HugeVariant::make<XCellVarError>(m_errorType, std::move(m_message));
}

HugeVariant XCellVarError::asType(int typeCode) const
{
    switch (typeCode) {
    case varBool:
        return HugeVariant(m_errorType != cellNoError);
    case varInt:
        return HugeVariant(int64_t(m_errorType));
    case varFloat:
        return HugeVariant(HugeFloat(int64_t(m_errorType)));
    case varString:
        return HugeVariant(toString());
    default:
        throw std::runtime_error("can't type convert");
    }
}

bool XCellVarError::equ(const HugeVariant& a, const HugeVariant& b) const
{
    return compareErrors(a, b, [](int32_t left, int32_t right) { return left == right; });
}

bool XCellVarError::greate(const HugeVariant& a, const HugeVariant& b) const
{
    return compareErrors(a, b, [](int32_t left, int32_t right) { return left > right; });
}

bool XCellVarError::greate_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return compareErrors(a, b, [](int32_t left, int32_t right) { return left >= right; });
}

bool XCellVarError::less(const HugeVariant& a, const HugeVariant& b) const
{
    return compareErrors(a, b, [](int32_t left, int32_t right) { return left < right; });
}

bool XCellVarError::less_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return compareErrors(a, b, [](int32_t left, int32_t right) { return left <= right; });
}

xstd::XString XCellVarError::toString() const
{
    switch (m_errorType) {
    case cellNoError:
        return "noerror";
    case cellValueError:
        return xstd::XString("valueError: " + m_message);
    case cellRefError:
        return xstd::XString("refError:" + m_message);
    case cellStoredText:
        return m_message;
    default:
        return xstd::XString("unknownError: " + m_message);
    }
}

HugeVariant invalidRange()
{
    return HugeVariant::make<XCellVarError>(cellRefError, "range is invalied");
}

} // namespace huge
