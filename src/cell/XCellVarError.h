#pragma once

#include "values/HugeVariant.h"

#include <cstdint>
#include <utility>

namespace huge {

/// Kinds of error values. Others are legal and read "unknownError".
enum ECellVarErrorType : int32_t {
    cellNoError = 0,
    cellValueError = 1, ///< a text or a run that failed, a wrong count of arguments
    cellRefError = 2,   ///< a reference to what is gone or outside
    cellStoredText = 3  ///< the text of a value that has not been calculated since it was stored
};

/// What a failed cell holds and what a reference to nothing gives. It has the highest type code, so
/// every binary operation next to it is its own; it calculates nothing, and so a failure goes on to
/// each cell that calculates with it. Comparisons go by the kinds' numbers, also where an operand
/// is a reference to a cell, and are false next to any other value.
class XCellVarError final : public HugeVar {
public:
    XCellVarError(ECellVarErrorType type, xstd::XString message)
        : m_errorType(type), m_message(std::move(message))
    {}

    ECellVarErrorType errorType() const noexcept { return m_errorType; }
    const xstd::XString& message() const noexcept { return m_message; }

    int typeId() const override { return varError; }
    const std::type_info& typeInfo() const override { return typeid(ECellVarErrorType); }
    xstd::XString typeName() const override { return "ECellVarErrorType"; }
    size_t objectSize() const override { return sizeof(*this); }
    bool isNull() const override { return m_errorType == cellNoError; }
    bool isZero() const override { return m_errorType == cellNoError; }
    void* payload() override { return &m_errorType; }
    HugeVariant clone() const override;
    HugeVariant move() override;
    /// Boolean, integer, float and text; anything else throws "can't type convert".
    HugeVariant asType(int typeCode) const override;

    bool equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate(const HugeVariant& a, const HugeVariant& b) const override;
    bool greate_equ(const HugeVariant& a, const HugeVariant& b) const override;
    bool less(const HugeVariant& a, const HugeVariant& b) const override;
    bool less_equ(const HugeVariant& a, const HugeVariant& b) const override;

    xstd::XString fmt(const XFormatRule&) const override { return toString(); }
    /// "valueError: ..." and so on with the message; "noerror" for none, a stored text alone.
    xstd::XString toString() const override;

private:
    ECellVarErrorType m_errorType;
    xstd::XString m_message;
};

/// The error value of a reference that reads nothing: "range is invalied".
HugeVariant invalidRange();

} // namespace huge
