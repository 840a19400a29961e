#pragma once

#include "script/XScriptProgram.h"
#include "values/HugeVariant.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace huge {

class XScriptEnv;

/// What a closure value consists of. It shares the program and the environment, so that a closure
/// may outlive the script that made it. A run that executes the body holds it too: the captured
/// variables stay, even if the value that owns them is replaced meanwhile.
struct XClosureBody {
    std::shared_ptr<const XScriptProgram> program;
    std::shared_ptr<XScriptEnv> env;
    const XClosureRecord* record = nullptr; ///< in program
    std::vector<HugeVariant> closureVars;   ///< the captured values; never references
    uint32_t holders = 0;                   ///< counted by XClosureHold
    XClosureBody* nextDead = nullptr;       ///< while several wait to be deleted
};

/// Counts a holder of a closure's body; the last one deletes it. For one thread.
class XClosureHold {
public:
    XClosureHold() noexcept = default;
    explicit XClosureHold(XClosureBody* body) noexcept : m_body(body)
    {
        if (m_body != nullptr)
            ++m_body->holders;
    }
    XClosureHold(const XClosureHold& other) noexcept : XClosureHold(other.m_body) {}
    XClosureHold(XClosureHold&& other) noexcept : m_body(std::exchange(other.m_body, nullptr)) {}
    XClosureHold& operator=(XClosureHold other) noexcept
    {
        std::swap(m_body, other.m_body);
        return *this;
    }
    ~XClosureHold()
    {
        if (m_body != nullptr)
            release(m_body);
    }

    /// Takes away one holder of a body that was counted by hand.
    static void release(XClosureBody* body) noexcept
    {
        if (--body->holders == 0)
            dispose(body);
    }

    XClosureBody* get() const noexcept { return m_body; }
    XClosureBody* operator->() const noexcept { return m_body; }
    explicit operator bool() const noexcept { return m_body != nullptr; }

private:
    /// Deletes without recursion, however deep closures capture closures.
    static void dispose(XClosureBody* body) noexcept;

    XClosureBody* m_body = nullptr;
};

/// A closure: the body of a closure literal with the values that it captured. Copies have captured
/// variables of their own.
class XVarClosure final : public HugeVar {
public:
    explicit XVarClosure(XClosureHold body) noexcept
        : HugeVar(HugeVarClass::Closure), m_body(std::move(body))
    {}

    /// Closures may capture closures this deep; copying a deeper one fails with "Closures are
    /// nested too deep".
    static constexpr int maxNesting = 500;

    const XClosureHold& body() const noexcept { return m_body; }
    std::vector<HugeVariant>& closureVars() noexcept { return m_body->closureVars; }

    int typeId() const override { return varClosure; }
    const std::type_info& typeInfo() const override { return typeid(XClosureBody); }
    xstd::XString typeName() const override;
    size_t objectSize() const override { return sizeof(*this); }
    bool isNull() const override { return false; }
    bool isZero() const override { return false; }
    bool isClosure() const override { return true; }
    void* payload() override { return m_body.get(); }
    /// Runs the body in a run of its own; the arguments are moved into its frame.
    HugeVariant exec(HugeVariant* args, int argc) const override;
    HugeVariant clone() const override;
    HugeVariant move() override;
    xstd::XString fmt(const XFormatRule&) const override { return toString(); }
    xstd::XString toString() const override;

private:
    XClosureHold m_body;
};

} // namespace huge
