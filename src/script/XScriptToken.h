#pragma once

#include "common/XStringDecoder.h"

#include <cstdint>
#include <variant>
#include <vector>

namespace huge {

/// What the compiler takes a token for.
enum XTokenKind : uint8_t {
    TK_NULL = 0,
    TK_OPERATOR = 1,
    TK_AX = 2,       ///< the accumulator
    TK_STACKVAR = 3, ///< a named variable of the frame
    TK_STACK = 4,    ///< a nameless temporary of the frame
    TK_BOOL = 5,
    TK_LABEL = 6, ///< a name that is not settled yet
    TK_INT = 7,
    TK_MODINT = 8, ///< an integer literal inside a modulus scope
    TK_OFFSET = 9,
    TK_FLOAT = 10,
    TK_IMAG = 11,
    TK_STRING = 12,
    TK_EXTEND = 13, ///< a name that the environment settles at run time
    TK_CLOSURE = 14,
    TK_CLOSUREVAR = 15, ///< a captured variable
    TK_UNKNOWN = 16
};

/// The name of a kind in texts; "unknown" from TK_UNKNOWN on.
const char* tokenKindName(uint8_t kind) noexcept;

/// A token as the compiler works with it: what the scanner read, and what it was found to stand
/// for. It doubles as the description of a value: where an expression's result is to be found.
class XCStoken : public xstd::XToken {
public:
    using DataItem = std::variant<int64_t, xstd::XString>;

    XCStoken() = default;

    /// The kind follows the scanner's type.
    explicit XCStoken(const xstd::XToken& token);

    /// A token of no place in the source, such as a stack slot.
    explicit XCStoken(XTokenKind tokenKind, uint16_t tokenIdx = 0);

    /// Sets the kind, and the scanner's type that fits it.
    void setKind(XTokenKind tokenKind) noexcept;

    bool isNull() const noexcept { return kind == TK_NULL; }
    bool isOperator(const char* operatorText) const;
    bool isLabel(const char* labelText) const;

    /// "type: ..., token: '...'" or, for slots, the index; without detail the place leads.
    xstd::XString toString(bool detail) const;

    /// Short form for listings: "int:5", "stack[2]", "ax".
    xstd::XString shortText() const;

    /// "line:%d, col:%d, tok: %s", line from 1, column from 0.
    xstd::XString debugText() const;

    uint8_t kind = TK_NULL;
    bool byRef = false;         ///< taken by reference, with the prefix &
    uint16_t idx = 0;           ///< slot, or place among the captured variables
    int16_t modIdx = -1;        ///< modulus slot of a literal; -1 none, -2 switched off
    int16_t prec = 0;           ///< operator precedence
    std::vector<DataItem> data; ///< closures: entry, maxStack, paramCount, count, captured slots
};

/// Equal in kind, text and data: the place in the source does not count.
bool operator==(const XCStoken& a, const XCStoken& b);
inline bool operator!=(const XCStoken& a, const XCStoken& b)
{
    return !(a == b);
}

} // namespace huge
