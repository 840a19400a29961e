#pragma once

#include "script/XBytecode.h"
#include "script/XScriptExtendData.h"
#include "values/HugeVariant.h"

#include <cstdint>
#include <forward_list>
#include <memory>
#include <vector>

namespace huge {

/// Where an operand's value comes from when its instruction runs.
enum class XOperandKind : uint8_t {
    Null,       ///< nothing: no operand, or a tag that stands for no value
    Slot,       ///< a slot of the frame
    Ax,         ///< the accumulator
    Literal,    ///< a value that was built when the program was decoded
    Residue,    ///< an integer, modulo what a slot of the frame holds
    ClosureVar, ///< a captured variable of the running closure
    Extend,     ///< a name for the environment
    Closure     ///< a new closure
};

/// A closure literal of a program.
struct XClosureRecord {
    uint32_t start = 0; ///< index of the body's first instruction
    od_closure operand; ///< as it stands in the image
};

/// An integer literal of a modulus scope.
struct XResidueRecord {
    uint32_t modulusSlot = 0;
    HugeInteger value;
};

/// What an operand points at, by its kind.
union XOperandValue {
    uint32_t index; ///< Slot, ClosureVar
    const HugeVariant* literal;
    const XResidueRecord* residue;
    const XScriptExtendData* extend;
    const XClosureRecord* closure;
};

/// An instruction ready to run.
struct XInstruction {
    uint8_t op = OP_NULL; ///< an xop_type, or opFault
    XOperandKind aKind = XOperandKind::Null;
    XOperandKind bKind = XOperandKind::Null;
    /// How far a jump goes, in instructions from this one; an argument count; a slot count; for
    /// opFault the index of the fault; 1 for a comparison that only decides the jump behind it, and
    /// for a sum or difference that only goes into the PUSH behind it.
    int32_t number = 0;
    uint32_t end = 0; ///< where the instruction ends in the image
    XOperandValue a{};
    XOperandValue b{};
};

/// Instructions that no image holds: what the decoder makes of others.
enum xop_inner : uint8_t {
    opPushAx = 50,     ///< PUSH ax where nobody reads ax again: its value is moved
    opTouch = 51,      ///< MOV ax, slot where nobody reads ax again: the slot comes into being
    opReturnSlot = 52, ///< MOV ax, slot and RETURN: the slot's value is moved
    opFault = 255      ///< fails when it is reached: the image is damaged there
};

/// Why an instruction cannot run.
struct XProgramFault {
    xstd::XString mess;
    uint32_t pos = 0;      ///< where reading the image ended
    bool isOpcode = false; ///< the byte before pos is no instruction
    uint8_t opcode = 0;
};

/// A compiled program, which nobody changes any more: its image, and the instructions in it,
/// decoded once at the first run. Runs, closures and cells share it by std::shared_ptr.
///
/// Any bytes will do as an image. What cannot be decoded becomes an instruction that fails when it
/// is reached, and so does the target of a jump into the middle of an instruction; nothing is ever
/// read outside the bytes. The last instruction always ends a run.
class XScriptProgram {
public:
    explicit XScriptProgram(std::vector<uint8_t> image) : m_code(std::move(image)) {}
    XScriptProgram(const XScriptProgram&) = delete;
    XScriptProgram& operator=(const XScriptProgram&) = delete;

    const std::vector<uint8_t>& code() const noexcept { return m_code; }
    /// The slots that the main frame needs, by the image's header.
    uint32_t maxStack() const noexcept
    {
        return m_code.size() < 2 ? 0 : uint32_t(m_code[0]) | uint32_t(m_code[1]) << 8;
    }
    /// The main program begins with the first.
    const std::vector<XInstruction>& instructions() const
    {
        if (m_instructions.empty())
            decode();
        return m_instructions;
    }
    const XProgramFault& fault(int32_t index) const { return m_faults[size_t(index)]; }

private:
    class Decoder;
    class Liveness;

    void decode() const;

    std::vector<uint8_t> m_code;
    // Filled by decode. Lists, because instructions point into them, and most programs are short.
    mutable std::vector<XInstruction> m_instructions;
    mutable std::forward_list<HugeVariant> m_literals;
    mutable std::forward_list<XResidueRecord> m_residues;
    mutable std::forward_list<XScriptExtendData> m_extends;
    mutable std::forward_list<XClosureRecord> m_closures;
    mutable std::vector<XProgramFault> m_faults;
};

} // namespace huge
