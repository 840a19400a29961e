#pragma once

#include "common/XException.h"
#include "script/XScriptEnv.h"
#include "script/XScriptProgram.h"
#include "script/XScriptRunStack.h"
#include "script/XVarClosure.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace huge {

/// The failure of a run that began in a value (a division by zero, an operation that a type lacks)
/// rather than in the engine. Who calculates many scripts keeps it as the result of this one.
class XScriptValueFailure final : public xstd::XExceptionItems {};

/// Runs a program once. Closures that the program calls run in the same loop, on frames of its own
/// making, so that a call costs no machine stack.
///
/// A failure leaves as a chain: the cause, then an item of type "scriptRunner" for each frame that
/// it passed, with the place in the image under "progPos". The result is never a reference.
class XScriptRunner {
public:
    /// Closure calls that may be open at a time, in all runs together.
    static constexpr uint32_t maxDepth = 10000;

    /// Runs the main program. Throws "Not a script" ("scriptRuntime") for an image of fewer than
    /// two bytes. Without an environment it makes one.
    XScriptRunner(std::shared_ptr<const XScriptProgram> program, std::shared_ptr<XScriptEnv> env);
    /// Runs a closure's body; the arguments are moved from.
    XScriptRunner(XClosureBody* closure, HugeVariant* args, int argc);
    ~XScriptRunner();
    XScriptRunner(const XScriptRunner&) = delete;
    XScriptRunner& operator=(const XScriptRunner&) = delete;

    /// Runs to the end and gives the accumulator's value. To be called once.
    HugeVariant run();

private:
    struct Frame {
        XScriptRunStack stack;
        const XInstruction* next = nullptr; ///< the instruction to run next
        XClosureBody* closure = nullptr;    ///< held; none in the main program
    };

    void loop();
    void enter(XClosureBody* closure, HugeVariant* args, int32_t argc);
    void openFrame(size_t slots);
    void closeFrame() noexcept;
    bool returnToCaller();
    HugeVariant takeResult();
    HugeVariant& ax() const noexcept { return m_frame.stack.ax(); }
    XScriptEnv& env() const noexcept;
    const XScriptProgram& program() const noexcept;
    const XInstruction& current() const noexcept;
    static xstd::XExceptionItem item(const xstd::XSourceLocation& location,
                                     const xstd::XString& mess, const XInstruction& in);
    void leaveFrames(xstd::XExceptionItems& failure) noexcept;

    // Operands: a pointer to the handle at the end of all references. index is 0 or 1, for the
    // temporary that is used where the operand is a value of its own.
    HugeVariant* operand(XOperandKind kind, XOperandValue value, int index);
    HugeVariant* rareOperand(XOperandKind kind, XOperandValue value, int index);
    HugeVariant* operandA(const XInstruction& in);
    HugeVariant* operandB(const XInstruction& in);
    HugeVariant* target(const XInstruction& in);
    bool isReference(XOperandKind kind, const HugeVariant* operand, int index) const noexcept;
    void makeResidue(HugeVariant& out, const XResidueRecord& record);
    void makeClosure(HugeVariant& out, const XClosureRecord& record);

    void setAx(HugeVariant&& value) noexcept;
    void setAxResult(HugeVariant&& value);
    void setAxBool(bool value);
    void setAxInt(int64_t value);
    void runMov(const XInstruction& in);
    void runModeler(const XInstruction& in);
    void runRef(const XInstruction& in);
    void runPush(const XInstruction& in);
    void returnSlot(const XInstruction& in);
    void runPushAx();
    void runPushRef(const XInstruction& in);
    void runExec(const XInstruction& in);
    void runAddTo(const XInstruction& in);
    void runDecTo(const XInstruction& in);
    void runInvoke(const XInstruction& in);
    HugeVariant* callArgs(const XInstruction& in) const;
    void assign(const XInstruction& in, HugeVariant& target, HugeVariant&& value);
    template <class F>
    void calculate(const XInstruction& in, F operation);
    template <class F>
    const XInstruction* calculateSmall(const XInstruction& in, F operation);
    template <class F>
    const XInstruction* compare(const XInstruction& in, F operation);
    template <class F>
    void calculateTo(const XInstruction& in, F operation);
    static const XInstruction* jump(const XInstruction& in);
    [[noreturn]] void failFault(const XInstruction& in) const;
    [[noreturn]] void failRef(const char* mess, const HugeVariant& operand) const;

    std::shared_ptr<const XScriptProgram> m_program;
    std::shared_ptr<XScriptEnv> m_env;
    Frame m_frame; ///< the running one
    std::vector<Frame> m_callers;
    HugeVariant m_temps[2];
    bool m_tempsUsed = false;
    uint32_t m_openFrames = 0; ///< m_frame is one of them

    static uint32_t s_depth; ///< open frames of all runs
};

} // namespace huge
