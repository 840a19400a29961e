#include "common/XException.h"
#include "script/XScriptBuilder.h"

#include <cstdio>

namespace huge {

namespace {

using Operands = std::vector<prog_od>;

xstd::XString joined(const Operands& operands)
{
    xstd::XString text;
    for (const prog_od& od : operands)
        text += (text.empty() ? "" : ", ") + od.toText();
    return text;
}

/// Writes the lines of a listing. It follows the stack of each open closure, the innermost last, as
/// straight-line code would leave it.
class ListingWriter {
public:
    explicit ListingWriter(const XScriptBuilder::LineSink& sink) : m_sink(sink) {}

    void line(const xstd::XString& text) const { XScriptBuilder::putLine(m_sink, text); }

    void heading(const xstd::XString& source) const
    {
        if (source.empty())
            return;
        line("\ncode: " + source);
        line(xstd::XString(source.size() + 6, '-'));
    }

    void instruction(int32_t opPos, xop_type op, const Operands& operands)
    {
        const xstd::XString start = xstd::format("%5d %-12s", opPos, xopName(op));
        switch (op) {
        case OP_PUSH_NULL: {
            const int64_t before = m_depths.back()++;
            line(start +
                 xstd::format("\t{stacksize: %lld -> %lld", size(before), size(before + 1)));
            break;
        }
        case OP_PUSH:
        case OP_PUSH_REF:
            line(start + " " + joined(operands) +
                 xstd::format(op == OP_PUSH ? "\t{ -> stack[%lld]}" : "\t{ -> stack[%lld]",
                              size(m_depths.back()++)));
            break;
        case OP_POP: {
            const int64_t before = m_depths.back()--;
            line(xstd::format("%d %-12s\t{stacksize: %lld -> %lld}", opPos, xopName(op),
                              size(before), size(before - 1)));
            break;
        }
        case OP_POPTO: {
            const int64_t before = m_depths.back();
            m_depths.back() = operands[0].asInt64();
            line(start + " " + joined(operands) +
                 xstd::format("\t{stacksize: %lld -> %lld}", size(before), size(m_depths.back())));
            break;
        }
        case OP_EXEC:
            line(start + " " + operands[0].toText() + ", param:" + operands[1].toText());
            break;
        case OP_INVOKE:
            line(start + " " + operands[0].toText() + ", name:" + operands[1].toText() +
                 ", param:" + operands[2].toText());
            break;
        case OP_CLOSURE_BEGIN:
            m_depths.push_back(operands[0].asInt64());
            line(start + xstd::format(" params: %lld", size(m_depths.back())));
            break;
        case OP_CLOSURE_END:
            if (m_depths.size() > 1) // a damaged image may end what it never began
                m_depths.pop_back();
            line(start);
            break;
        default:
            if (op <= OP_RETURN)
                line(start + (operands.empty() ? "" : " " + joined(operands)));
            break;
        }
    }

private:
    static long long size(int64_t value) { return static_cast<long long>(value); }

    const XScriptBuilder::LineSink& m_sink;
    std::vector<int64_t> m_depths{0};
};

} // namespace

void XScriptBuilder::putLine(const LineSink& sink, const xstd::XString& line)
{
    if (sink)
        sink(line);
    else
        std::printf("%s\n", line.c_str());
}

void XScriptBuilder::requireHeader() const
{
    if (m_size < progHeaderSize)
        throw xstd::XExceptionItems().add(xstd::XExceptionItem(X_HERE, "scriptBuilder")
                                              .setMess("Not a script, program is too small")
                                              .setExtend("progSize", m_size));
}

std::vector<prog_od> XScriptBuilder::readOperands(xop_type op, const XDebugInfo* debug)
{
    Operands operands(static_cast<size_t>(xopOperands(op)));
    for (prog_od& od : operands)
        od = readOperand(debug);
    return operands;
}

void XScriptBuilder::decode(const XDebugInfo* debug, const LineSink& sink)
{
    requireHeader();
    ListingWriter writer(sink);
    const auto source = [&] { return debug ? debug->lineText(pos()) : xstd::XString(); };
    writer.line(xstd::format("MAXSTACK\t%d", (*m_prog)[0] | (*m_prog)[1] << 8));
    setPos(progHeaderSize);
    writer.heading(source());
    for (;;) {
        const int32_t opPos = pos();
        const xop_type op = readOp();
        if (op == OP_NULL)
            break;
        writer.instruction(opPos, op, readOperands(op, debug));
        writer.heading(source());
    }
}

void XScriptBuilder::decodeTo(const InstructionSink& sink)
{
    requireHeader();
    setPos(progHeaderSize);
    for (xop_type op = readOp(); op != OP_NULL; op = readOp())
        sink(op, readOperands(op, nullptr));
}

} // namespace huge
