#include "script/XScriptRunner.h"

#include "common/XStop.h"
#include "script/XScriptEnvBase.h"
#include "script/stackRoom.h"
#include "values/HugeVarBool.h"
#include "values/HugeVarInt.h"
#include "values/HugeVarRef.h"
#include "values/unavailable.h"

#include <algorithm>
#include <stdexcept>

namespace huge {

namespace {

/// Slots of a closure's frame beyond those that its body names: what calls with other counts of
/// arguments shift the rest by.
constexpr size_t spareSlots = 10;

/// Machine stack that a run must find: it may call a function that runs a closure in its turn.
constexpr size_t neededStack = size_t(192) << 10;

constexpr const char* nestedTooDeep = "Closure calls are nested too deep";

/// Whether a value is an integer of one limb and some bits less, so that sums and differences of
/// two such have one limb too, as the integers' own would.
[[gnu::always_inline]] inline bool isSmall(const HugeVariant& value, int64_t& number) noexcept
{
    if (!value.holds(HugeVarClass::Int))
        return false;
    const Limb* limbs = static_cast<const HugeVarInt*>(value.object())->value().limbs();
    if (limbs == nullptr || LimbPool::count(limbs) != 1 || limbs[0] >> 62 != 0)
        return false;
    number = LimbPool::isNegative(limbs) ? -int64_t(limbs[0]) : int64_t(limbs[0]);
    return true;
}

/// HugeVariant::final, with the usual case of one step in line.
[[gnu::always_inline]] inline HugeVariant* endOf(HugeVariant* handle) noexcept
{
    if (!handle->holds(HugeVarClass::Ref))
        return handle;
    HugeVariant* target = static_cast<HugeVarRef*>(handle->object())->target();
    return target->holds(HugeVarClass::Ref) ? &target->final() : target;
}

/// Puts a one-limb integer into a handle that is no reference, in place where one stands already.
[[gnu::always_inline]] inline void putInt(HugeVariant& handle, int64_t number)
{
    if (handle.holds(HugeVarClass::Int))
        static_cast<HugeVarInt*>(handle.object())->value() = number;
    else
        handle.replace_(HugeVariant(number));
}

[[gnu::always_inline]] inline bool isFalse(const HugeVariant& value)
{
    return value.holds(HugeVarClass::Bool)
               ? !static_cast<const HugeVarBool*>(value.object())->value()
               : value.isZero();
}

xstd::XExceptionItem runnerItem(const xstd::XSourceLocation& location, const xstd::XString& mess,
                                const XInstruction& in)
{
    return xstd::XExceptionItem(location, "scriptRunner")
        .setMess(mess)
        .setExtend("progPos", int64_t(in.end));
}

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

// Making, running, frames

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
            throw std::runtime_error(nestedTooDeep);
        loop();
        return takeResult();
    } catch (xstd::XExceptionItems& failure) {
        leaveFrames(failure);
        throw;
    } catch (const std::exception& cause) {
        XScriptValueFailure failure;
        failure.add(runnerItem(X_HERE, cause.what(), current()));
        closeFrame();
        leaveFrames(failure);
        throw failure;
    }
}

/// Puts a new frame on top; the running one waits among the callers.
inline void XScriptRunner::openFrame(size_t slots)
{
    if (s_depth >= maxDepth)
        throw std::runtime_error(nestedTooDeep);
    // Everything that can fail comes first: from here on the frame counts as open.
    if (m_callers.size() == m_callers.capacity() && m_openFrames != 0)
        m_callers.reserve(2 * m_callers.size() + 16);
    Frame frame;
    frame.stack.open(slots);
    if (m_openFrames != 0)
        m_callers.push_back(m_frame);
    m_frame = frame;
    ++m_openFrames;
    ++s_depth;
}

inline void XScriptRunner::closeFrame() noexcept
{
    m_frame.stack.close();
    if (XClosureBody* closure = std::exchange(m_frame.closure, nullptr); closure != nullptr)
        XClosureHold::release(closure);
    --s_depth;
    if (--m_openFrames != 0) {
        m_frame = m_callers.back();
        m_callers.pop_back();
    }
}

/// Opens the frame of a closure's body, its arguments in the first slots.
inline void XScriptRunner::enter(XClosureBody* closure, HugeVariant* args, int32_t argc)
{
    const size_t count = argc < 0 ? 0 : size_t(argc);
    const XInstruction* start = closure->program->instructions().data() + closure->record->start;
    openFrame(closure->record->operand.maxStack + count + spareSlots);
    ++closure->holders; // first: an argument may be what owns the closure
    m_frame.closure = closure;
    m_frame.next = start;
    for (size_t i = 0; i < count; ++i)
        m_frame.stack.push_move(std::move(args[i]));
}

/// The accumulator's value, behind a reference a copy: slots that it could stand on go now.
HugeVariant XScriptRunner::takeResult()
{
    if (ax().holds(HugeVarClass::Ref))
        return HugeVariant(static_cast<const HugeVariant&>(ax().final()));
    return std::move(ax());
}

/// False in the frame that the run began with.
bool XScriptRunner::returnToCaller()
{
    if (m_openFrames == 1)
        return false;
    HugeVariant result = takeResult();
    closeFrame();
    ax().replace_(std::move(result));
    return true;
}

/// Adds the place of the running frame and of all its callers to a failure, and closes them.
void XScriptRunner::leaveFrames(xstd::XExceptionItems& failure) noexcept
{
    while (m_openFrames != 0) {
        // Making an item costs more than the chain's dropping it.
        if (failure.items().size() < xstd::XExceptionItems::maxItems)
            failure.add(runnerItem(X_HERE, "ScriptRuntime Error", current()));
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

// Operands

[[gnu::always_inline]] inline HugeVariant* XScriptRunner::operand(XOperandKind kind,
                                                                  XOperandValue value, int index)
{
    if (kind == XOperandKind::Slot)
        return endOf(&m_frame.stack.at(value.index));
    if (kind == XOperandKind::Literal)
        return const_cast<HugeVariant*>(value.literal); // who writes asks target()
    if (kind == XOperandKind::Ax)
        return endOf(&ax());
    return rareOperand(kind, value, index);
}

[[gnu::always_inline]] inline HugeVariant* XScriptRunner::operandA(const XInstruction& in)
{
    return operand(in.aKind, in.a, 0);
}

[[gnu::always_inline]] inline HugeVariant* XScriptRunner::operandB(const XInstruction& in)
{
    return operand(in.bKind, in.b, 1);
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
    else if (kind == XOperandKind::Closure)
        makeClosure(temp, *value.closure);
    return &temp.final();
}

/// The first operand as something that is written to: a literal is written to in a copy that is
/// lost.
[[gnu::always_inline]] inline HugeVariant* XScriptRunner::target(const XInstruction& in)
{
    if (in.aKind != XOperandKind::Literal)
        return operandA(in);
    m_tempsUsed = true;
    m_temps[0] = *in.a.literal;
    return &m_temps[0];
}

inline bool XScriptRunner::isReference(XOperandKind kind, const HugeVariant* operand,
                                       int index) const noexcept
{
    return kind == XOperandKind::Slot || kind == XOperandKind::Ax ||
           (kind != XOperandKind::Literal && operand != &m_temps[index]);
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

// What goes into the accumulator takes the place of a reference that stands there.

[[gnu::always_inline]] inline void XScriptRunner::setAx(HugeVariant&& value) noexcept
{
    ax().replace_(std::move(value));
}

/// What a native function gives; one that gives a reference gives what it stands for.
[[gnu::always_inline]] inline void XScriptRunner::setAxResult(HugeVariant&& value)
{
    if (value.holds(HugeVarClass::Ref))
        setAx(HugeVariant(static_cast<const HugeVariant&>(value)));
    else
        setAx(std::move(value));
}

[[gnu::always_inline]] inline void XScriptRunner::setAxBool(bool value)
{
    HugeVariant& accumulator = ax();
    if (accumulator.holds(HugeVarClass::Bool))
        static_cast<HugeVarBool*>(accumulator.object())->setValue(value);
    else
        accumulator.replace_(HugeVariant(value));
}

[[gnu::always_inline]] inline void XScriptRunner::setAxInt(int64_t value)
{
    putInt(ax(), value);
}

[[gnu::always_inline]] inline void XScriptRunner::assign(const XInstruction& in,
                                                         HugeVariant& target, HugeVariant&& value)
{
    if (in.aKind == XOperandKind::Ax)
        setAx(std::move(value));
    else
        target.replace_(std::move(value));
}

// Instructions

[[gnu::always_inline]] inline void XScriptRunner::runMov(const XInstruction& in)
{
    HugeVariant* dst = target(in);
    HugeVariant* src = operandB(in);
    if (src == &m_temps[1]) {
        assign(in, *dst, std::move(*src));
        return;
    }
    int64_t number = 0;
    if (isSmall(*src, number))
        putInt(in.aKind == XOperandKind::Ax ? ax() : *dst, number);
    else
        assign(in, *dst, HugeVariant(static_cast<const HugeVariant&>(*src)));
}

/// REF a, b: from here on a's handle is another name for b's.
void XScriptRunner::runRef(const XInstruction& in)
{
    HugeVariant* named = operandA(in);
    HugeVariant* source = operandB(in);
    if (!isReference(in.aKind, named, 0))
        failRef("Can't asign a refvalue to a const var", *named);
    if (!isReference(in.bKind, source, 1))
        failRef("Can't reference to a const var", *source);
    // The accumulator is bound anew; any other name keeps standing for its handle.
    if (in.aKind == XOperandKind::Ax && ax().holds(HugeVarClass::Ref)) {
        ax().clear_();
        named = &ax();
    }
    m_frame.stack.bind(*named, *source);
}

[[gnu::always_inline]] inline void XScriptRunner::runPush(const XInstruction& in)
{
    HugeVariant* value = operandA(in);
    if (value == &m_temps[0])
        m_frame.stack.push_move(std::move(*value));
    else
        m_frame.stack.push(*value);
}

[[gnu::always_inline]] inline void XScriptRunner::runPushAx()
{
    if (ax().holds(HugeVarClass::Ref))
        m_frame.stack.push(ax().final());
    else
        m_frame.stack.push_move(std::move(ax()));
}

[[gnu::always_inline]] inline void XScriptRunner::runPushRef(const XInstruction& in)
{
    HugeVariant* value = operandA(in);
    if (!isReference(in.aKind, value, 0))
        failRef("This is not a refred value", *value);
    m_frame.stack.push_refOn(*value);
}

/// The arguments of a call; null for none.
inline HugeVariant* XScriptRunner::callArgs(const XInstruction& in) const
{
    if (size_t(in.number) > m_frame.stack.size()) {
        throw xstd::XExceptionItems().add(
            runnerItem(X_HERE, "A call takes more arguments than there are", in));
    }
    return m_frame.stack.args(size_t(in.number));
}

[[gnu::always_inline]] inline void XScriptRunner::runExec(const XInstruction& in)
{
    HugeVariant* function = operandA(in);
    HugeVariant* args = callArgs(in);
    xstd::XStop::poll();
    if (ax().holds(HugeVarClass::Ref))
        ax().clear_();
    if (function->holds(HugeVarClass::Closure)) {
        enter(static_cast<const XVarClosure*>(function->object())->body().get(), args, in.number);
        return;
    }
    setAxResult(function->exec(args, in.number));
}

void XScriptRunner::runInvoke(const XInstruction& in)
{
    HugeVariant* object = operandA(in);
    HugeVariant* args = callArgs(in);
    xstd::XStop::poll();
    const bool isNamed = isReference(in.aKind, object, 0);
    if (ax().holds(HugeVarClass::Ref))
        ax().clear_();
    const xstd::XString& name = in.b.literal->asStr();
    // A variable has a member more than its value has.
    setAxResult(isNamed ? HugeVarRef(object).member(name, args, in.number)
                        : object->member(name, args, in.number));
}

template <class F>
inline void XScriptRunner::calculate(const XInstruction& in, F operation)
{
    const HugeVariant* a = operandA(in);
    const HugeVariant* b = operandB(in);
    setAx(operation(*a, *b));
}

template <class F>
inline void XScriptRunner::calculateTo(const XInstruction& in, F operation)
{
    HugeVariant* a = target(in);
    const HugeVariant* b = operandB(in);
    assign(in, *a, operation(*a, *b));
}

/// Gives the instruction to go on with.
template <class F>
[[gnu::always_inline]] inline const XInstruction* XScriptRunner::compare(const XInstruction& in,
                                                                         F operation)
{
    const HugeVariant* a = operandA(in);
    const HugeVariant* b = operandB(in);
    int64_t x = 0;
    int64_t y = 0;
    const bool result = isSmall(*a, x) && isSmall(*b, y) ? operation(x, y) : operation(*a, *b);
    const XInstruction& behind = (&in)[1];
    if (in.number == 0) {
        setAxBool(result);
        return &behind;
    }
    return result == (behind.op == OP_JMP_TRUE) ? jump(behind) : &behind + 1;
}

[[gnu::always_inline]] inline void XScriptRunner::runAddTo(const XInstruction& in)
{
    HugeVariant* a = target(in);
    const HugeVariant* b = operandB(in);
    int64_t x = 0;
    int64_t y = 0;
    if (in.aKind == XOperandKind::Ax)
        setAx(*a + *b);
    else if (isSmall(*a, x) && isSmall(*b, y))
        putInt(*a, x + y);
    else
        *a += *b;
}

[[gnu::always_inline]] inline void XScriptRunner::runDecTo(const XInstruction& in)
{
    HugeVariant* a = target(in);
    const HugeVariant* b = operandB(in);
    int64_t x = 0;
    int64_t y = 0;
    if (in.aKind == XOperandKind::Ax)
        setAx(*a - *b);
    else if (isSmall(*a, x) && isSmall(*b, y))
        putInt(*a, x - y);
    else
        *a -= *b;
}

inline const XInstruction* XScriptRunner::jump(const XInstruction& in)
{
    if (in.number <= 0)
        xstd::XStop::poll();
    return &in + in.number;
}

void XScriptRunner::failFault(const XInstruction& in) const
{
    const XProgramFault& fault = program().fault(in.number);
    if (fault.isValue)
        throw std::runtime_error(fault.mess);
    if (!fault.isOpcode)
        throw xstd::XExceptionItems().add(runnerItem(X_HERE, fault.mess, in));
    const xstd::XString number = xstd::format("%d", int(fault.opcode));
    throw xstd::XExceptionItems().add(
        runnerItem(X_HERE, xstd::format("Unrecognized operation instruction '%s'", number.c_str()),
                   in)
            .setExtend("operator", number));
}

void XScriptRunner::failRef(const char* mess, const HugeVariant& operand) const
{
    throw xstd::XExceptionItems().add(runnerItem(X_HERE, mess, current())
                                          .setExtend("operate", "OP_PUSH_REF")
                                          .setExtend("value", textOf(operand)));
}

void XScriptRunner::loop()
{
    using V = const HugeVariant&;
    const XInstruction* next = m_frame.next;
    for (;;) {
        if (m_tempsUsed) [[unlikely]] {
            m_temps[0].clear_();
            m_temps[1].clear_();
            m_tempsUsed = false;
        }
        // next is the loop's own; the frame's copy says where a failure happened.
        const XInstruction& in = *next++;
        m_frame.next = next;
        int64_t x = 0;
        int64_t y = 0;
        switch (in.op) {
        case OP_NULL:
        case OP_RETURN:
            if (!returnToCaller())
                return;
            next = m_frame.next;
            break;
        case OP_MOV:
            runMov(in);
            break;
        case OP_REF:
            runRef(in);
            break;
        case OP_ADD: {
            const HugeVariant* a = operandA(in);
            const HugeVariant* b = operandB(in);
            if (isSmall(*a, x) && isSmall(*b, y))
                setAxInt(x + y);
            else
                setAx(*a + *b);
            break;
        }
        case OP_DEC: {
            const HugeVariant* a = operandA(in);
            const HugeVariant* b = operandB(in);
            if (isSmall(*a, x) && isSmall(*b, y))
                setAxInt(x - y);
            else
                setAx(*a - *b);
            break;
        }
        case OP_MUL:
            calculate(in, [](V a, V b) { return a * b; });
            break;
        case OP_DIV:
            calculate(in, [](V a, V b) { return a / b; });
            break;
        case OP_POW:
            calculate(in, [](V a, V b) { return pow(a, b); });
            break;
        case OP_PERCENT:
            calculate(in, [](V a, V b) { return a % b; });
            break;
        case OP_MODELER:
            failResidue();
        case OP_PUSH_NULL:
            m_frame.stack.push_null();
            break;
        case OP_PUSH:
            runPush(in);
            break;
        case OP_PUSH_REF:
            runPushRef(in);
            break;
        case OP_POP:
            m_frame.stack.pop();
            break;
        case OP_POPTO:
            m_frame.stack.resize(size_t(in.number));
            break;
        case OP_EXEC:
            runExec(in);
            next = m_frame.next;
            break;
        case OP_INVOKE:
            runInvoke(in);
            break;
        case OP_NOT:
            setAxBool(operandA(in)->isZero());
            break;
        case OP_NEG:
            setAx(-*operandA(in));
            break;
        case OP_EQU:
            next = compare(in, [](const auto& a, const auto& b) { return a == b; });
            break;
        case OP_NOTEQU:
            next = compare(in, [](const auto& a, const auto& b) { return a != b; });
            break;
        case OP_LESS:
            next = compare(in, [](const auto& a, const auto& b) { return a < b; });
            break;
        case OP_GREAT:
            next = compare(in, [](const auto& a, const auto& b) { return a > b; });
            break;
        case OP_LESSEQU:
            next = compare(in, [](const auto& a, const auto& b) { return a <= b; });
            break;
        case OP_GREATEQU:
            next = compare(in, [](const auto& a, const auto& b) { return a >= b; });
            break;
        case OP_AND:
            calculate(in, [](V a, V b) { return !a.isZero() && !b.isZero(); });
            break;
        case OP_OR:
            calculate(in, [](V a, V b) { return !a.isZero() || !b.isZero(); });
            break;
        case OP_BIT_OR:
            calculate(in, [](V a, V b) { return bitOr(a, b); });
            break;
        case OP_BIT_AND:
            calculate(in, [](V a, V b) { return bitAnd(a, b); });
            break;
        case OP_BIT_NOT:
            setAx(~*operandA(in));
            break;
        case OP_BIT_XOR:
            calculate(in, [](V a, V b) { return bitXor(a, b); });
            break;
        case OP_BIT_SHR:
            calculate(in, [](V a, V b) { return a >> b; });
            break;
        case OP_BIT_SHL:
            calculate(in, [](V a, V b) { return a << b; });
            break;
        case OP_ADD_TO:
            runAddTo(in);
            break;
        case OP_DEC_TO:
            runDecTo(in);
            break;
        case OP_MUL_TO:
            calculateTo(in, [](V a, V b) { return a * b; });
            break;
        case OP_DIV_TO:
            calculateTo(in, [](V a, V b) { return a / b; });
            break;
        case OP_POW_TO:
            calculateTo(in, [](V a, V b) { return pow(a, b); });
            break;
        case OP_PER_TO:
            calculateTo(in, [](V a, V b) { return a % b; });
            break;
        case OP_BITOR_TO:
            calculateTo(in, [](V a, V b) { return bitOr(a, b); });
            break;
        case OP_BITAND_TO:
            calculateTo(in, [](V a, V b) { return bitAnd(a, b); });
            break;
        case OP_BITXOR_TO:
            calculateTo(in, [](V a, V b) { return bitXor(a, b); });
            break;
        case OP_BITSHR_TO:
            calculateTo(in, [](V a, V b) { return a >> b; });
            break;
        case OP_BITSHL_TO:
            calculateTo(in, [](V a, V b) { return a << b; });
            break;
        case OP_JMP:
            next = jump(in);
            break;
        case OP_JMP_TRUE:
            if (!isFalse(*operandA(in)))
                next = jump(in);
            break;
        case OP_JMP_FALSE:
            if (isFalse(*operandA(in)))
                next = jump(in);
            break;
        case OP_CLOSURE_BEGIN:
        case OP_CLOSURE_END:
            break;
        case opPushAx:
            runPushAx();
            break;
        case opTouch:
            m_frame.stack.at(in.b.index);
            break;
        default:
            failFault(in);
        }
    }
}

} // namespace huge
