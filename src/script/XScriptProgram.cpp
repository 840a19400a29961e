#include "script/XScriptProgram.h"

#include "numbers/HugeImag.h"

#include <algorithm>
#include <exception>
#include <limits>
#include <string_view>

namespace huge {

namespace {

/// Thrown while one instruction is decoded; never leaves the decoder.
struct DecodeFault {
    xstd::XString mess;
};

const char* operandFailure(uint8_t tag)
{
    switch (tag) {
    case OD_BOOL:
        return "This is not a OD_BOOL operand!";
    case OD_INT:
        return "This is not a OD_INT operand!";
    case OD_MODINT:
        return "This is not a OD_MODINT operand!";
    case OD_OFFSET:
        return "This is not a OD_OFFSET operand!";
    case OD_FLOAT:
        return "This is not a OD_DOU operand!";
    case OD_IMAG:
        return "This is not a OD_IMAG operand!";
    case OD_STR:
        return "This is not a OD_STR operand!";
    case OD_EXTEND:
        return "This is not a OD_EXTEND operand!";
    case OD_STACKVAR:
        return "This is not a OD_STACKVAR operand!";
    case OD_STACK:
        return "This is not a OD_STACK operand!";
    case OD_CLOSUREVAR:
        return "This is not a OD_CLOSUREVAR operand!";
    case OD_CLOSURE:
        return "This is not a OD_CLOSURE operand!";
    default:
        return "This is not a OD_AX operand!";
    }
}

/// How many operands of any kind an instruction begins with.
int generalOperands(uint8_t op)
{
    switch (op) {
    case OP_PUSH:
    case OP_PUSH_REF:
    case OP_EXEC:
    case OP_INVOKE:
    case OP_NOT:
    case OP_NEG:
    case OP_BIT_NOT:
    case OP_JMP_TRUE:
    case OP_JMP_FALSE:
        return 1;
    case OP_NULL:
    case OP_PUSH_NULL:
    case OP_POP:
    case OP_POPTO:
    case OP_JMP:
    case OP_CLOSURE_BEGIN:
    case OP_CLOSURE_END:
    case OP_RETURN:
        return 0;
    default:
        return 2;
    }
}

} // namespace

/// Where the accumulator's value is still needed. What puts a value there that nobody reads need
/// not do so; most statements leave one, and most comparisons only decide a jump.
class XScriptProgram::Liveness {
public:
    explicit Liveness(std::vector<XInstruction>& instructions)
        : m_instructions(instructions), m_before(instructions.size())
    {}

    void shorten()
    {
        if (isAxNamed() || !settle())
            return;
        for (size_t i = m_instructions.size(); i-- > 0;) {
            XInstruction& in = m_instructions[i];
            if (isComparison(in.op))
                in.number = decidesJump(i);
            else if (in.op == OP_ADD || in.op == OP_DEC)
                in.number = m_instructions[i + 1].op == opPushAx;
            else if (isLiveAfter(i))
                continue;
            else if (in.op == OP_PUSH && in.aKind == XOperandKind::Ax)
                in.op = opPushAx;
            else if (in.op == OP_MOV && in.aKind == XOperandKind::Ax &&
                     in.bKind == XOperandKind::Slot)
                in.op = opTouch;
        }
    }

private:
    static bool isComparison(uint8_t op) { return op >= OP_EQU && op <= OP_GREATEQU; }
    static bool isConditional(uint8_t op) { return op == OP_JMP_TRUE || op == OP_JMP_FALSE; }

    /// Whether the accumulator can be read under another name.
    bool isAxNamed() const
    {
        return std::any_of(m_instructions.begin(), m_instructions.end(), [](const auto& in) {
            return (in.op == OP_PUSH_REF && in.aKind == XOperandKind::Ax) ||
                   (in.op == OP_REF && in.bKind == XOperandKind::Ax);
        });
    }

    /// Backwards over the program until nothing changes. Each round settles one more level of
    /// loops; a program that is never done keeps all its values.
    bool settle()
    {
        for (int round = 0; round < 100; ++round) {
            bool changed = false;
            for (size_t i = m_instructions.size(); i-- > 0;) {
                const bool live =
                    reads(m_instructions[i]) || (!writes(m_instructions[i]) && isLiveAfter(i));
                changed |= live != m_before[i];
                m_before[i] = live;
            }
            if (!changed)
                return true;
        }
        return false;
    }

    bool isLiveAfter(size_t i) const
    {
        const XInstruction& in = m_instructions[i];
        if (in.op == OP_NULL || in.op == OP_RETURN || in.op >= opReturnSlot)
            return false;
        const bool atTarget =
            in.op >= OP_JMP && in.op <= OP_JMP_FALSE && m_before[size_t(int64_t(i) + in.number)];
        return atTarget || (in.op != OP_JMP && m_before[i + 1]);
    }

    static bool reads(const XInstruction& in)
    {
        if (in.op == OP_NULL || in.op == OP_RETURN)
            return true;
        const bool isTarget = in.op == OP_MOV || in.op == OP_REF;
        return (in.aKind == XOperandKind::Ax && !isTarget) || in.bKind == XOperandKind::Ax;
    }

    static bool writes(const XInstruction& in)
    {
        if (in.op == opReturnSlot)
            return true;
        if (in.op == OP_MOV || in.op == OP_REF)
            return in.aKind == XOperandKind::Ax;
        return (in.op >= OP_ADD && in.op <= OP_PERCENT) ||
               (in.op >= OP_EXEC && in.op <= OP_BIT_SHL);
    }

    /// Whether the jump behind a comparison is all that its result is for.
    bool decidesJump(size_t i) const
    {
        const XInstruction& jump = m_instructions[i + 1];
        return isConditional(jump.op) && jump.aKind == XOperandKind::Ax && !isLiveAfter(i + 1);
    }

    std::vector<XInstruction>& m_instructions;
    std::vector<bool> m_before; ///< whether the value is needed before each instruction
};

/// Goes through an image once, from its first instruction to its end.
class XScriptProgram::Decoder {
public:
    explicit Decoder(const XScriptProgram& program)
        : m_program(program), m_code(program.m_code), m_pos(progHeaderSize)
    {}

    void run()
    {
        while (m_pos < m_code.size() && decodeInstruction()) {
        }
        m_starts.push_back(uint32_t(m_pos));
        add({}); // the end of the image ends a run, as OP_NULL does
        m_program.m_instructions.back().end = uint32_t(m_code.size());
        settleTargets();
        shortenReturns();
        Liveness(m_program.m_instructions).shorten();
    }

private:
    /// False where the image cannot be read on.
    bool decodeInstruction()
    {
        m_starts.push_back(uint32_t(m_pos));
        XInstruction in;
        in.op = m_code[m_pos++];
        bool goesOn = true;
        try {
            if (in.op > OP_RETURN) {
                fault(in, {{}, uint32_t(m_pos), true, m_code[m_pos - 1]});
                goesOn = false;
            } else {
                decodeOperands(in);
            }
        } catch (const DecodeFault& failure) {
            fault(in, {failure.mess, uint32_t(m_pos), false, 0});
            goesOn = false;
        }
        in.end = uint32_t(m_pos);
        add(in);
        return goesOn;
    }

    void decodeOperands(XInstruction& in)
    {
        const int general = generalOperands(in.op);
        if (general >= 1)
            decodeOperand(in.aKind, in.a);
        if (general == 2)
            decodeOperand(in.bKind, in.b);
        switch (in.op) {
        case OP_INVOKE: {
            in.bKind = XOperandKind::Literal;
            expect(OD_STR);
            in.b.literal = literal(xstd::XString(std::string(block())));
            in.number = count();
            break;
        }
        case OP_EXEC:
        case OP_POPTO:
            in.number = count();
            break;
        case OP_JMP:
        case OP_JMP_TRUE:
        case OP_JMP_FALSE:
            expect(OD_OFFSET);
            in.number = int32_t(read32(OD_OFFSET));
            m_jumps.push_back(m_program.m_instructions.size());
            break;
        case OP_CLOSURE_BEGIN:
            expect(OD_OFFSET);
            read32(OD_OFFSET);
            break;
        default:
            break;
        }
    }

    void decodeOperand(XOperandKind& kind, XOperandValue& value)
    {
        if (m_pos == m_code.size())
            return;
        m_tag = m_code[m_pos];
        if (m_tag < OD_BOOL || m_tag > OD_AX)
            return; // no value, and nothing read
        ++m_pos;
        kind = XOperandKind::Literal;
        switch (m_tag) {
        case OD_BOOL:
            value.literal = literal(bytes(1)[0] != 0);
            break;
        case OD_INT:
            value.literal = literal(number(&integerFromPayload, block()));
            break;
        case OD_OFFSET:
            value.literal = literal(int64_t(int32_t(read32(m_tag))));
            break;
        case OD_STR:
            value.literal = literal(xstd::XString(std::string(block())));
            break;
        case OD_MODINT:
            kind = XOperandKind::Residue;
            value.residue = residue();
            break;
        case OD_FLOAT:
            value.literal = literal(number(&floatFromPayload, block()));
            break;
        case OD_IMAG:
            value.literal = literal(HugeImag(HugeFloat(0), number(&floatFromPayload, block())));
            break;
        case OD_STACKVAR:
        case OD_STACK:
            kind = XOperandKind::Slot;
            break;
        case OD_CLOSUREVAR:
            kind = XOperandKind::ClosureVar;
            break;
        case OD_AX:
            kind = XOperandKind::Ax;
            break;
        case OD_EXTEND:
            kind = XOperandKind::Extend;
            value.extend = extend();
            break;
        default:
            kind = XOperandKind::Closure;
            value.closure = closure();
            break;
        }
        if (kind == XOperandKind::Slot || kind == XOperandKind::ClosureVar)
            value.index = read16(m_tag);
    }

    template <class Number>
    Number number(Number (*read)(const uint8_t*, size_t), std::string_view payload)
    {
        try {
            return read(reinterpret_cast<const uint8_t*>(payload.data()), payload.size());
        } catch (const std::exception&) {
            throw DecodeFault{operandFailure(m_tag)};
        }
    }

    const XResidueRecord* residue()
    {
        const size_t length = read16(m_tag);
        const uint16_t slot = read16(m_tag);
        if (length < 2 || slot > uint16_t(std::numeric_limits<int16_t>::max()))
            throw DecodeFault{operandFailure(m_tag)};
        const auto* first = reinterpret_cast<const char*>(bytes(length - 2));
        return &m_program.m_residues.emplace_front(
            XResidueRecord{slot, number(&integerFromPayload, {first, length - 2})});
    }

    /// An integer operand that counts slots.
    int32_t count()
    {
        expect(OD_INT);
        const HugeInteger value = number(&integerFromPayload, block());
        const int64_t limit = std::numeric_limits<uint16_t>::max();
        if (value.compare(0) < 0)
            return 0;
        return int32_t(value.compare(limit) > 0 ? limit : value.asInt64());
    }

    const XScriptExtendData* extend()
    {
        const std::string_view payload = block();
        return &m_program.m_extends.emplace_front(
            std::vector<uint8_t>(payload.begin(), payload.end()));
    }

    const XClosureRecord* closure()
    {
        od_closure operand;
        operand.entry = read32(OD_CLOSURE);
        operand.maxStack = read16(OD_CLOSURE);
        operand.paramCount = read16(OD_CLOSURE);
        operand.closureVars.resize(read16(OD_CLOSURE));
        for (uint16_t& slot : operand.closureVars)
            slot = read16(OD_CLOSURE);
        return &m_program.m_closures.emplace_front(XClosureRecord{0, std::move(operand)});
    }

    template <class T>
    const HugeVariant* literal(T&& value)
    {
        return &m_program.m_literals.emplace_front(std::forward<T>(value));
    }

    void expect(uint8_t tag)
    {
        if (m_pos == m_code.size() || m_code[m_pos] != tag)
            throw DecodeFault{operandFailure(tag)};
        m_tag = tag;
        ++m_pos;
    }

    const uint8_t* bytes(size_t length)
    {
        if (m_code.size() - m_pos < length)
            throw DecodeFault{operandFailure(m_tag)};
        m_pos += length;
        return m_code.data() + m_pos - length;
    }
    uint16_t read16(uint8_t tag)
    {
        m_tag = tag;
        const uint8_t* b = bytes(2);
        return uint16_t(b[0] | b[1] << 8);
    }
    uint32_t read32(uint8_t tag)
    {
        const uint32_t low = read16(tag);
        return low | uint32_t(read16(tag)) << 16;
    }
    std::string_view block()
    {
        const size_t length = read16(m_tag);
        return {reinterpret_cast<const char*>(bytes(length)), length};
    }

    void add(const XInstruction& in) { m_program.m_instructions.push_back(in); }

    void fault(XInstruction& in, XProgramFault why)
    {
        in = XInstruction();
        in.op = opFault;
        in.number = int32_t(m_program.m_faults.size());
        m_program.m_faults.push_back(std::move(why));
    }

    /// Turns offsets into indexes. A target inside an instruction becomes a fault of its own.
    void settleTargets()
    {
        for (const size_t jump : m_jumps) {
            if (m_program.m_instructions[jump].op != opFault) {
                const uint32_t target = indexOf(uint32_t(m_program.m_instructions[jump].number));
                m_program.m_instructions[jump].number = int32_t(target) - int32_t(jump);
            }
        }
        for (XClosureRecord& record : m_program.m_closures)
            record.start = indexOf(record.operand.entry);
    }

    /// What only leads to the end of a run ends it at once: cutting slots, which go then anyway,
    /// moving the accumulator to itself, and jumps.
    void shortenReturns()
    {
        std::vector<XInstruction>& all = m_program.m_instructions;
        const auto ends = [&](size_t i) { return all[i].op == OP_RETURN || all[i].op == OP_NULL; };
        // A frame's end does what these do.
        for (size_t i = all.size(); i-- > 0;) {
            const XInstruction& in = all[i];
            const bool isIdle =
                in.op == OP_POPTO || in.op == OP_CLOSURE_END ||
                (in.op == OP_MOV && in.aKind == XOperandKind::Ax && in.bKind == XOperandKind::Ax);
            if (in.op == OP_MOV && in.aKind == XOperandKind::Ax && in.bKind == XOperandKind::Slot &&
                ends(i + 1))
                all[i] = XInstruction{.op = opReturnSlot, .end = in.end, .a = in.b};
            else if (isIdle ? ends(i + 1) : in.op == OP_JMP && ends(size_t(int64_t(i) + in.number)))
                all[i] = XInstruction{.op = OP_RETURN, .end = in.end};
        }
    }

    uint32_t indexOf(uint32_t offset)
    {
        if (offset >= m_code.size())
            return uint32_t(m_starts.size() - 1); // the end of the image
        const auto found = std::lower_bound(m_starts.begin(), m_starts.end(), offset);
        if (found != m_starts.end() && *found == offset)
            return uint32_t(found - m_starts.begin());
        XInstruction in;
        fault(in, {{}, offset + 1, true, m_code[offset]});
        in.end = offset + 1;
        add(in);
        return uint32_t(m_program.m_instructions.size() - 1);
    }

    const XScriptProgram& m_program;
    const std::vector<uint8_t>& m_code;
    size_t m_pos;
    uint8_t m_tag = 0;
    std::vector<uint32_t> m_starts; ///< where each instruction begins, rising
    std::vector<size_t> m_jumps;    ///< instructions whose number is still an offset
};

void XScriptProgram::decode() const
{
    Decoder(*this).run();
}

} // namespace huge
