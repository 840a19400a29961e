#include "script/XScriptToken.h"

#include <array>

namespace huge {

namespace {

constexpr std::array<const char*, 16> kindNames = {
    "null",   "operator", "ax",    "stackvar", "stack",  "bool",   "label",   "int",
    "modint", "offset",   "float", "imag",     "string", "extend", "closure", "closurevar"};

XTokenKind kindOfType(uint32_t type) noexcept
{
    constexpr std::array<XTokenKind, 8> kinds = {TK_NULL,  TK_OPERATOR, TK_BOOL,   TK_INT,
                                                 TK_FLOAT, TK_IMAG,     TK_STRING, TK_LABEL};
    return type < kinds.size() ? kinds[type] : TK_UNKNOWN;
}

uint32_t typeOfKind(uint8_t kind) noexcept
{
    switch (kind) {
    case TK_NULL:
        return xstd::tokenNull;
    case TK_OPERATOR:
        return xstd::tokenOperator;
    case TK_BOOL:
        return xstd::tokenBool;
    case TK_LABEL:
        return xstd::tokenLabel;
    case TK_INT:
    case TK_MODINT:
    case TK_OFFSET:
        return xstd::tokenInteger;
    case TK_FLOAT:
        return xstd::tokenFloat;
    case TK_IMAG:
        return xstd::tokenImag;
    case TK_STRING:
        return xstd::tokenString;
    default:
        return xstd::tokenLabel + 1; // a value that no text stands for
    }
}

xstd::XString quoted(const char* label, const xstd::XString& text)
{
    xstd::XString result(label);
    result += text;
    result += '\'';
    return result;
}

} // namespace

const char* tokenKindName(uint8_t kind) noexcept
{
    return kind < kindNames.size() ? kindNames[kind] : "unknown";
}

XCStoken::XCStoken(const xstd::XToken& token) : XToken(token), kind(kindOfType(token.type)) {}

XCStoken::XCStoken(XTokenKind tokenKind, uint16_t tokenIdx) : idx(tokenIdx)
{
    setKind(tokenKind);
}

void XCStoken::setKind(XTokenKind tokenKind) noexcept
{
    kind = tokenKind;
    type = typeOfKind(tokenKind);
}

bool XCStoken::isOperator(const char* operatorText) const
{
    return kind == TK_OPERATOR && text == operatorText;
}

bool XCStoken::isLabel(const char* labelText) const
{
    return kind == TK_LABEL && text == labelText;
}

xstd::XString XCStoken::toString(bool detail) const
{
    xstd::XString result("type: ");
    result += tokenKindName(kind);
    if (kind == TK_AX)
        return result;
    if (!detail)
        result =
            xstd::format("row: %d, col: %d, %s", cursor.line(), cursor.column(), result.c_str());
    if (kind == TK_STACKVAR || kind == TK_STACK)
        result += xstd::format(", idx: '%d'", idx);
    else
        result += quoted(", token: '", text);
    return result;
}

xstd::XString XCStoken::shortText() const
{
    if (kind == TK_AX)
        return tokenKindName(kind);
    if (kind == TK_STACK)
        return xstd::format("stack[%d]", idx);
    xstd::XString result(tokenKindName(kind));
    result += ':';
    result += text;
    return result;
}

xstd::XString XCStoken::debugText() const
{
    xstd::XString result = xstd::format("line:%d, col:%d, tok: ", cursor.line(), cursor.column());
    result += text;
    return result;
}

bool operator==(const XCStoken& a, const XCStoken& b)
{
    return a.kind == b.kind && a.text == b.text && a.data == b.data;
}

} // namespace huge
