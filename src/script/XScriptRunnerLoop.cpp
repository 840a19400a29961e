#include "script/XScriptRunner.h"

#include "common/XStop.h"
#include "values/HugeVarBool.h"
#include "values/HugeVarInt.h"
#include "values/HugeVarModeler.h"
#include "values/HugeVarRef.h"

#include <stdexcept>

namespace huge {

// The loop, and all that it does often. What is forced into line here is what a short instruction
// consists of: as calls they would cost as much again.

namespace {

/// Slots of a closure's frame beyond those that its body names: what calls with other counts of
/// arguments shift the rest by.
constexpr size_t spareSlots = 10;

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

} // namespace

// Frames

/// Puts a new frame on top; the running one waits among the callers.
void XScriptRunner::openFrame(size_t slots)
{
    if (s_depth >= maxDepth)
        throw std::runtime_error(XScriptRunStack::tooDeep);
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

void XScriptRunner::closeFrame() noexcept
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
void XScriptRunner::enter(XClosureBody* closure, HugeVariant* args, int32_t argc)
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

/// MODELER a, b: a holds b as the modulus of a scope. All residues of the scope share it.
void XScriptRunner::runModeler(const XInstruction& in)
{
    HugeVariant* slot = target(in);
    HugeInteger modulus = operandB(in)->toInteger();
    assign(in, *slot,
           HugeVariant::make<HugeVarModeler>(std::make_shared<HugeInteger>(std::move(modulus))));
}

[[gnu::always_inline]] inline void XScriptRunner::runPush(const XInstruction& in)
{
    HugeVariant* value = operandA(in);
    if (value == &m_temps[0])
        m_frame.stack.push_move(std::move(*value));
    else
        m_frame.stack.push(*value);
}

/// Puts a slot's value into the accumulator where the frame ends. The slot goes with it.
[[gnu::always_inline]] inline void XScriptRunner::returnSlot(const XInstruction& in)
{
    HugeVariant& slot = m_frame.stack.at(in.a.index);
    if (slot.holds(HugeVarClass::Ref) || XScriptRunStack::anyUpward())
        setAx(HugeVariant(static_cast<const HugeVariant&>(slot)));
    else
        setAx(std::move(slot));
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
            item(X_HERE, "A call takes more arguments than there are", in));
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

/// A sum or a difference: of small integers without the values' help, and into a slot at once
/// where a PUSH is all that follows. Gives the instruction to go on with.
template <class F>
[[gnu::always_inline]] inline const XInstruction*
XScriptRunner::calculateSmall(const XInstruction& in, F operation)
{
    const HugeVariant* a = operandA(in);
    const HugeVariant* b = operandB(in);
    int64_t x = 0;
    int64_t y = 0;
    const bool areSmall = isSmall(*a, x) && isSmall(*b, y);
    if (in.number != 0) {
        m_frame.stack.push_move(areSmall ? HugeVariant(operation(x, y)) : operation(*a, *b));
        return &in + 2;
    }
    if (areSmall)
        setAxInt(operation(x, y));
    else
        setAx(operation(*a, *b));
    return &in + 1;
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
        switch (in.op) {
        case opReturnSlot:
            returnSlot(in);
            [[fallthrough]];
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
        case OP_ADD:
            next = calculateSmall(in, [](const auto& a, const auto& b) { return a + b; });
            break;
        case OP_DEC:
            next = calculateSmall(in, [](const auto& a, const auto& b) { return a - b; });
            break;
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
            runModeler(in);
            break;
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
