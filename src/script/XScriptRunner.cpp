#include "script/XScriptRunner.h"

#include "numbers/HugeMod.h"
#include "script/XScriptEnvBase.h"
#include "script/stackRoom.h"
#include "values/HugeVarModeler.h"

#include <stdexcept>

namespace huge {

namespace {

/// Machine stack that a run must find: it may call a function that runs a closure in its turn.
constexpr size_t neededStack = size_t(192) << 10;

/// The text of a value for a failure; some values have none.
xstd::XString textOf(const HugeVariant& value)
{
    try {
        return value.toString();
    } catch (const std::exception&) {
        return {};
    }
}

} // namespace

uint32_t XScriptRunner::s_depth = 0;

XScriptRunner::XScriptRunner(std::shared_ptr<const XScriptProgram> program,
                             std::shared_ptr<XScriptEnv> env)
    : m_program(std::move(program)), m_env(std::move(env))
{
    const size_t progSize = m_program == nullptr ? 0 : m_program->code().size();
    if (progSize < size_t(progHeaderSize)) {
        throw xstd::XExceptionItems().add(xstd::XExceptionItem(X_HERE, "scriptRuntime")
                                              .setMess("Not a script")
                                              .setExtend("progSize", uint64_t(progSize)));
    }
    if (m_env == nullptr)
        m_env = std::make_shared<XScriptEnv_base>();
    const XInstruction* start = m_program->instructions().data();
    openFrame(m_program->maxStack());
    m_frame.next = start;
}

XScriptRunner::XScriptRunner(XClosureBody* closure, HugeVariant* args, int argc)
{
    enter(closure, args, argc);
}

XScriptRunner::~XScriptRunner()
{
    while (m_openFrames != 0)
        closeFrame();
}

HugeVariant XScriptRunner::run()
{
    try {
        if (stackRoom() < neededStack)
            throw std::runtime_error(XScriptRunStack::tooDeep);
        loop();
        return takeResult();
    } catch (xstd::XExceptionItems& failure) {
        leaveFrames(failure);
        throw;
    } catch (const std::exception& cause) {
        XScriptValueFailure failure;
        failure.add(item(X_HERE, cause.what(), current()));
        closeFrame();
        leaveFrames(failure);
        throw failure;
    }
}

/// Adds the place of the running frame and of all its callers to a failure, and closes them.
void XScriptRunner::leaveFrames(xstd::XExceptionItems& failure) noexcept
{
    while (m_openFrames != 0) {
        // Making an item costs more than the chain's dropping it.
        if (failure.items().size() < xstd::XExceptionItems::maxItems)
            failure.add(item(X_HERE, "ScriptRuntime Error", current()));
        closeFrame();
    }
}

XScriptEnv& XScriptRunner::env() const noexcept
{
    return m_frame.closure ? *m_frame.closure->env : *m_env;
}

const XScriptProgram& XScriptRunner::program() const noexcept
{
    return m_frame.closure ? *m_frame.closure->program : *m_program;
}

/// The instruction that runs, or the first one before it does.
const XInstruction& XScriptRunner::current() const noexcept
{
    const XInstruction* first = program().instructions().data();
    return m_frame.next == first ? *first : m_frame.next[-1];
}

HugeVariant* XScriptRunner::rareOperand(XOperandKind kind, XOperandValue value, int index)
{
    if (kind == XOperandKind::ClosureVar && m_frame.closure) {
        std::vector<HugeVariant>& captured = m_frame.closure->closureVars;
        if (value.index < captured.size())
            return &captured[value.index];
    }
    HugeVariant& temp = m_temps[index];
    temp.clear_();
    m_tempsUsed = true;
    if (kind == XOperandKind::Extend)
        env().resolve(temp, *value.extend);
    else if (kind == XOperandKind::Residue)
        makeResidue(temp, *value.residue);
    else if (kind == XOperandKind::Closure)
        makeClosure(temp, *value.closure);
    return &temp.final();
}

void XScriptRunner::makeResidue(HugeVariant& out, const XResidueRecord& record)
{
    const HugeVariant& modulus = m_frame.stack.at(record.modulusSlot).final();
    if (!modulus.holds(HugeVarClass::Modeler)) // no compiler writes that
        throw xstd::XExceptionItems().add(
            item(X_HERE, "This is not a OD_MODINT operand!", current()));
    out.replace_(HugeVariant(
        HugeMod(record.value, static_cast<const HugeVarModeler*>(modulus.object())->value())));
}

void XScriptRunner::makeClosure(HugeVariant& out, const XClosureRecord& record)
{
    auto body = std::make_unique<XClosureBody>();
    body->program = m_frame.closure ? m_frame.closure->program : m_program;
    body->env = m_frame.closure ? m_frame.closure->env : m_env;
    body->record = &record;
    body->closureVars.reserve(record.operand.closureVars.size());
    for (const uint16_t slot : record.operand.closureVars)
        body->closureVars.emplace_back(
            static_cast<const HugeVariant&>(m_frame.stack.at(slot).final()));
    out.replace_(HugeVariant::make<XVarClosure>(XClosureHold(body.release())));
}

void XScriptRunner::failFault(const XInstruction& in) const
{
    const XProgramFault& fault = program().fault(in.number);
    if (!fault.isOpcode)
        throw xstd::XExceptionItems().add(item(X_HERE, fault.mess, in));
    const xstd::XString number = xstd::format("%d", int(fault.opcode));
    throw xstd::XExceptionItems().add(
        item(X_HERE, xstd::format("Unrecognized operation instruction '%s'", number.c_str()), in)
            .setExtend("operator", number));
}

void XScriptRunner::failRef(const char* mess, const HugeVariant& operand) const
{
    throw xstd::XExceptionItems().add(item(X_HERE, mess, current())
                                          .setExtend("operate", "OP_PUSH_REF")
                                          .setExtend("value", textOf(operand)));
}

/// An item of a failure with the place of an instruction.
xstd::XExceptionItem XScriptRunner::item(const xstd::XSourceLocation& location,
                                         const xstd::XString& mess, const XInstruction& in)
{
    return xstd::XExceptionItem(location, "scriptRunner")
        .setMess(mess)
        .setExtend("progPos", int64_t(in.end));
}

} // namespace huge
