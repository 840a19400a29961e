#pragma once

#include "common/XString.h"
#include "numbers/HugeFloat.h"
#include "numbers/HugeInteger.h"

#include <cstdint>
#include <variant>
#include <vector>

namespace huge {

class XScriptExtendData;

/// The instructions of a program image. Each is one byte, followed by its operands. Value 0 is no
/// instruction: it ends a run.
enum xop_type : uint8_t {
    OP_NULL = 0,
    OP_MOV = 1,     ///< dst, src
    OP_REF = 2,     ///< dst, src: dst becomes another name of src's slot
    OP_ADD = 3,     ///< a, b; like all that calculate, into the accumulator
    OP_DEC = 4,     ///< a, b
    OP_MUL = 5,     ///< a, b
    OP_DIV = 6,     ///< a, b
    OP_POW = 7,     ///< a, b
    OP_PERCENT = 8, ///< a, b
    OP_MODELER = 9, ///< dst, modulus
    OP_PUSH_NULL = 10,
    OP_PUSH = 11,     ///< value
    OP_PUSH_REF = 12, ///< value
    OP_POP = 13,
    OP_POPTO = 14,         ///< int: the slots that stay
    OP_EXEC = 15,          ///< function, int: argument count
    OP_INVOKE = 16,        ///< object, string: member name, int: argument count
    OP_NOT = 17,           ///< a
    OP_NEG = 18,           ///< a
    OP_EQU = 19,           ///< a, b
    OP_NOTEQU = 20,        ///< a, b
    OP_LESS = 21,          ///< a, b
    OP_GREAT = 22,         ///< a, b
    OP_LESSEQU = 23,       ///< a, b
    OP_GREATEQU = 24,      ///< a, b
    OP_AND = 25,           ///< a, b
    OP_OR = 26,            ///< a, b
    OP_BIT_OR = 27,        ///< a, b
    OP_BIT_AND = 28,       ///< a, b
    OP_BIT_NOT = 29,       ///< a
    OP_BIT_XOR = 30,       ///< a, b
    OP_BIT_SHR = 31,       ///< a, b
    OP_BIT_SHL = 32,       ///< a, b
    OP_ADD_TO = 33,        ///< dst, b
    OP_DEC_TO = 34,        ///< dst, b
    OP_MUL_TO = 35,        ///< dst, b
    OP_DIV_TO = 36,        ///< dst, b
    OP_POW_TO = 37,        ///< dst, b
    OP_PER_TO = 38,        ///< dst, b
    OP_BITOR_TO = 39,      ///< dst, b
    OP_BITAND_TO = 40,     ///< dst, b
    OP_BITXOR_TO = 41,     ///< dst, b
    OP_BITSHR_TO = 42,     ///< dst, b
    OP_BITSHL_TO = 43,     ///< dst, b
    OP_JMP = 44,           ///< offset
    OP_JMP_TRUE = 45,      ///< condition, offset
    OP_JMP_FALSE = 46,     ///< condition, offset
    OP_CLOSURE_BEGIN = 47, ///< offset: parameter count
    OP_CLOSURE_END = 48,
    OP_RETURN = 49
};

/// The tags of operands: one byte in front of each operand's payload.
enum xod_type : uint8_t {
    OD_NULL = 0,        ///< never written
    OD_BOOL = 1,        ///< 1 byte, 0 or 1
    OD_INT = 2,         ///< 2 bytes length, 8 bytes number header, magnitude bytes
    OD_MODINT = 3,      ///< 2 bytes length, 2 bytes modulus slot, then as OD_INT
    OD_OFFSET = 4,      ///< 4 bytes
    OD_FLOAT = 5,       ///< 2 bytes length, 8 bytes number header, mantissa bytes
    OD_IMAG = 6,        ///< as OD_FLOAT
    OD_STR = 7,         ///< 2 bytes length, the bytes
    OD_EXTEND = 8,      ///< 2 bytes length, the bytes of an XScriptExtendData
    OD_STACKVAR = 9,    ///< 2 bytes slot: a named variable
    OD_STACK = 10,      ///< 2 bytes slot: a nameless temporary
    OD_CLOSUREVAR = 11, ///< 2 bytes place among the closure's captured variables
    OD_CLOSURE = 12,    ///< entry, maxStack, paramCount, count of captured slots, the slots
    OD_AX = 13          ///< the accumulator, no payload
};

/// Bytes in front of the first instruction: the image's highest slot count, 16 bits.
constexpr int32_t progHeaderSize = 2;

/// The name of an instruction in listings; "UNKNOWN" for one that has none.
const char* xopName(uint8_t op) noexcept;

/// How many operands follow an instruction; 0 for what is none.
int xopOperands(uint8_t op) noexcept;

/// The name of an operand tag; "unknown" for one that is none.
const char* xodName(uint8_t tag) noexcept;

struct od_bool {
    bool value = false;
};

struct od_int {
    HugeInteger value;
};

/// An integer literal inside a modulus scope; the slot modIdx holds the modulus.
struct od_modint {
    int16_t modIdx = -1;
    HugeInteger value;
};

struct od_offset {
    int32_t value = 0;
};

struct od_float {
    HugeFloat value;
};

/// An imaginary literal: the number in front of the i.
struct od_imag {
    HugeFloat value;
};

struct od_str {
    xstd::XString value;
};

struct od_stackvar {
    uint16_t idx = 0;
};

struct od_stack {
    uint16_t idx = 0;
};

struct od_closurevar {
    uint16_t idx = 0;
};

/// A closure literal: where its body starts, the slots that its frame needs, and the slots of the
/// enclosing frame that it captures.
struct od_closure {
    uint32_t entry = 0;
    uint16_t maxStack = 0;
    uint16_t paramCount = 0;
    std::vector<uint16_t> closureVars;
};

/// A name that the environment settles. textPos and textLen say where it stands in the source, in
/// bytes; format is 0 for a name that comes from a token.
struct od_extend {
    int32_t format = 0;
    int32_t textPos = 0;
    int32_t textLen = 0;
    xstd::XString name;
};

/// One operand in memory. value holds the record that belongs to type, nothing for OD_NULL and
/// OD_AX.
struct prog_od {
    using Value =
        std::variant<std::monostate, od_bool, od_int, od_modint, od_offset, od_float, od_imag,
                     od_str, od_extend, od_stackvar, od_stack, od_closurevar, od_closure>;

    xod_type type = OD_NULL;
    xstd::XString text;  ///< the source text of the operand, "" without debug information
    int16_t modIdx = -1; ///< the modulus slot of an od_modint
    Value value;

    /// Takes over type, modIdx and value, not the text. Fails with "Unknow prog_od data type" when
    /// other's type has no record.
    void copyValue(const prog_od& other);

    /// Appends the payload, without the tag, as it stands in an image. Nothing for OD_NULL and
    /// OD_AX; fails like copyValue.
    void data(std::vector<uint8_t>& bytes) const;

    /// The operand as a scalar: a literal's value (texts are parsed), else the index, the offset, a
    /// residue's modulus slot or a closure's entry; 0 where there is none of them.
    int64_t asInt64() const;
    double asDouble() const;
    /// True when the scalar is not zero, for a string when it is not empty.
    bool asBool() const;

    /// The value alone, for listings: numbers in decimal, texts as they are, what names have
    /// beside their text, and all parts of a closure.
    xstd::XString valueText() const;
    /// The operand in a listing: its type and value, behind the source text where a variable has
    /// one, and in front of the modulus slot of a residue.
    xstd::XString toText() const;

private:
    void requireKnownType() const;
};

/// The payload encodings. Each appends to bytes; the tag in front of it is the caller's.
/// A text, number or name that its 16-bit length cannot hold is refused ("scriptBuilder").
void appendPayload(std::vector<uint8_t>& bytes, const od_bool& od);
void appendPayload(std::vector<uint8_t>& bytes, const od_int& od);
void appendPayload(std::vector<uint8_t>& bytes, const od_modint& od);
void appendPayload(std::vector<uint8_t>& bytes, const od_offset& od);
void appendPayload(std::vector<uint8_t>& bytes, const od_float& od);
void appendPayload(std::vector<uint8_t>& bytes, const od_imag& od);
void appendPayload(std::vector<uint8_t>& bytes, const od_str& od);
void appendPayload(std::vector<uint8_t>& bytes, const XScriptExtendData& data);
void appendPayload(std::vector<uint8_t>& bytes, const od_stackvar& od);
void appendPayload(std::vector<uint8_t>& bytes, const od_stack& od);
void appendPayload(std::vector<uint8_t>& bytes, const od_closurevar& od);
void appendPayload(std::vector<uint8_t>& bytes, const od_closure& od);

/// The number inside an OD_INT payload: length bytes of number header and magnitude. Limbs that
/// are not stored read as 0. std::runtime_error when the bytes are fewer
/// than a header or more than its limbs.
HugeInteger integerFromPayload(const uint8_t* bytes, size_t length);

/// The number inside an OD_FLOAT or OD_IMAG payload: length bytes of number header and the high
/// bytes of the mantissa. Low bytes that are not stored read as 0. Fails as integerFromPayload
/// does, and for a mantissa whose top bit is clear.
HugeFloat floatFromPayload(const uint8_t* bytes, size_t length);

} // namespace huge
