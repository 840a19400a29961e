#pragma once

#include "script/XBytecode.h"
#include "script/XDebugInfo.h"
#include "script/XScriptExtendData.h"
#include "script/XScriptToken.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace huge {

/// Writes a program image instruction by instruction, and reads it back. The bytes belong to the
/// script; the builder holds a cursor over them.
///
/// Every operation takes a position, with -1 for the cursor, and leaves the cursor behind what it
/// wrote or read. So a patch moves the cursor back: who patches sets it to the end again.
/// Failures are of type "scriptBuilder".
class XScriptBuilder {
public:
    /// Over an image that is owned elsewhere and outlives the builder.
    explicit XScriptBuilder(std::vector<uint8_t>* prog);
    virtual ~XScriptBuilder() = default;
    XScriptBuilder(const XScriptBuilder&) = delete;
    XScriptBuilder& operator=(const XScriptBuilder&) = delete;

    /// Empties the image for a new compilation. Who derives forgets here what it gathered.
    virtual void reset();

    /// The name behind the bytes of an extend operand. Fails with "Unrecognized external
    /// identification!" for a format that nobody knows; empty bytes give an empty record.
    virtual void decodeExtend(od_extend& out, const XScriptExtendData& data);

    /// The bytes of a name; the plain form 1 unless who derives knows more of it.
    virtual void encodeExtend(XScriptExtendData& out, const od_extend& name);

    /// Takes one finished line of a listing, without a line feed.
    using LineSink = std::function<void(const xstd::XString& line)>;
    /// Gives the line to the sink, or to standard output where there is none.
    static void putLine(const LineSink& sink, const xstd::XString& line);
    /// Takes one instruction with its operands in the order of reading.
    using InstructionSink = std::function<void(xop_type op, std::vector<prog_od> operands)>;

    /// Lists the image, a line for each instruction. With debug, which is not owned, each source
    /// line that is known goes in front of its instructions, and variables bear their names.
    /// Without a sink the lines go to standard output. Fails with "Not a script, program is too
    /// small" for an image without its header.
    virtual void decode(const XDebugInfo* debug, const LineSink& sink);
    /// Hands the instructions out one by one; fails like decode.
    virtual void decodeTo(const InstructionSink& sink);

    int32_t pos() const noexcept { return static_cast<int32_t>(m_pos); }
    int32_t size() const noexcept { return static_cast<int32_t>(m_size); }
    void setPos(int32_t pos) noexcept { m_pos = pos; }
    void seekEnd() noexcept { m_pos = m_size; }

    /// Grows the image with zeros as needed. An image ends at 2 GiB: beyond, "The program is too
    /// long".
    void write(const void* data, size_t length, int32_t at = -1);

    void writeOp(xop_type op, int32_t at = -1);
    /// By the operator's text; "_-", "_!" and "_~" are the prefix forms. Fails with "This is not a
    /// operand!" for a text that is no operator.
    void writeOp(const xstd::XString& text, int32_t at = -1);
    /// Note the source line, counted from 1, when it is another than the last one noted.
    void writeOp(XDebugInfo* debug, int32_t line, xop_type op, int32_t at = -1);
    void writeOp(XDebugInfo* debug, int32_t line, const xstd::XString& text, int32_t at = -1);

    /// Writes the token as an operand of its kind. Fails with "Unrecognized token!" for a kind that
    /// is no operand, and as the numbers do for one that is too large.
    void writeTok(XDebugInfo* debug, const XCStoken& token, int32_t at = -1);

    void writeBool(const od_bool& od, int32_t at = -1) { writeOperand(OD_BOOL, od, at); }
    void writeInt(const od_int& od, int32_t at = -1) { writeOperand(OD_INT, od, at); }
    void writeModint(const od_modint& od, int32_t at = -1) { writeOperand(OD_MODINT, od, at); }
    void writeOffset(int32_t offset, int32_t at = -1)
    {
        writeOperand(OD_OFFSET, od_offset{offset}, at);
    }
    void writeFloat(const od_float& od, int32_t at = -1) { writeOperand(OD_FLOAT, od, at); }
    void writeImag(const od_imag& od, int32_t at = -1) { writeOperand(OD_IMAG, od, at); }
    void writeStr(const od_str& od, int32_t at = -1) { writeOperand(OD_STR, od, at); }
    void writeExtend(const od_extend& od, int32_t at = -1);
    void writeStackVar(uint16_t idx, int32_t at = -1)
    {
        writeOperand(OD_STACKVAR, od_stackvar{idx}, at);
    }
    void writeStack(uint16_t idx, int32_t at = -1) { writeOperand(OD_STACK, od_stack{idx}, at); }
    void writeClosureVar(uint16_t idx, int32_t at = -1)
    {
        writeOperand(OD_CLOSUREVAR, od_closurevar{idx}, at);
    }
    void writeClosure(const od_closure& od, int32_t at = -1) { writeOperand(OD_CLOSURE, od, at); }
    /// The tag alone; any but OD_AX fails.
    void writeReg(xod_type tag, int32_t at = -1);

    /// OP_NULL at the end of the image.
    xop_type readOp(int32_t at = -1);

    /// Each fails with "This is not a OD_...  operand!" ("progPos", "dataSize") when another tag
    /// stands there or the image ends inside the operand.
    od_bool readBool(int32_t at = -1);
    od_int readInt(int32_t at = -1);
    od_modint readModint(int32_t at = -1);
    od_offset readOffset(int32_t at = -1);
    od_float readFloat(int32_t at = -1);
    od_imag readImag(int32_t at = -1);
    od_str readStr(int32_t at = -1);
    od_extend readExtend(int32_t at = -1);
    od_stackvar readStackVar(int32_t at = -1);
    od_stack readStack(int32_t at = -1);
    od_closurevar readClosureVar(int32_t at = -1);
    od_closure readClosure(int32_t at = -1);
    xod_type readReg(int32_t at = -1);

    /// The operand at the cursor, whatever its tag; with debug its source text too. A tag that no
    /// record belongs to gives OD_NULL and leaves the cursor where it is.
    prog_od readOperand(const XDebugInfo* debug = nullptr);

private:
    struct Reader;

    template <class Od>
    void writeOperand(xod_type tag, const Od& od, int32_t at);
    void writeScratch(int32_t at) { write(m_scratch.data(), m_scratch.size(), at); }
    void requireHeader() const;
    std::vector<prog_od> readOperands(xop_type op, const XDebugInfo* debug);
    void noteLine(XDebugInfo* debug, int32_t line, int32_t at);
    int32_t place(int32_t at) const noexcept { return at < 0 ? pos() : at; }
    HugeFloat readNumber(xod_type tag, int32_t at);
    uint16_t readIndex(xod_type tag, int32_t at);

    std::vector<uint8_t>* m_prog;
    std::vector<uint8_t> m_scratch; // one operand, kept so that writing one costs no allocation
    int64_t m_size;
    int64_t m_pos = 0;
    int32_t m_lastLine = -1;
};

template <class Od>
void XScriptBuilder::writeOperand(xod_type tag, const Od& od, int32_t at)
{
    m_scratch.assign(1, tag);
    appendPayload(m_scratch, od);
    writeScratch(at);
}

} // namespace huge
