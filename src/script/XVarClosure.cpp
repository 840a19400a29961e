#include "script/XVarClosure.h"

#include "script/XScriptEnv.h"
#include "script/XScriptRunner.h"

#include <stdexcept>

namespace huge {

namespace {

/// One level of closures within closures, for as long as it lives. Copies and texts of them go
/// through all levels by recursion.
class NestingLevel {
public:
    NestingLevel()
    {
        if (s_depth == XVarClosure::maxNesting)
            throw std::runtime_error("Closures are nested too deep");
        ++s_depth;
    }
    ~NestingLevel() { --s_depth; }
    NestingLevel(const NestingLevel&) = delete;
    NestingLevel& operator=(const NestingLevel&) = delete;

private:
    static inline int s_depth = 0;
};

unsigned shortAddress(const void* pointer)
{
    return unsigned(reinterpret_cast<uintptr_t>(pointer));
}

} // namespace

void XClosureHold::dispose(XClosureBody* body) noexcept
{
    static XClosureBody* dead = nullptr;
    static bool isDeleting = false;
    body->nextDead = dead;
    dead = body;
    if (isDeleting)
        return; // inside the loop below, which comes to this one
    isDeleting = true;
    while (dead != nullptr) {
        XClosureBody* next = dead;
        dead = next->nextDead;
        delete next;
    }
    isDeleting = false;
}

xstd::XString XVarClosure::typeName() const
{
    return typeid(XVarClosure).name();
}

HugeVariant XVarClosure::exec(HugeVariant* args, int argc) const
{
    return XScriptRunner(m_body.get(), args, argc).run();
}

HugeVariant XVarClosure::clone() const
{
    const NestingLevel level;
    auto copy = std::make_unique<XClosureBody>();
    copy->program = m_body->program;
    copy->env = m_body->env;
    copy->record = m_body->record;
    copy->closureVars = m_body->closureVars;
    return HugeVariant::make<XVarClosure>(XClosureHold(copy.release()));
}

HugeVariant XVarClosure::move()
{
    return clone();
}

xstd::XString XVarClosure::toString() const
{
    const NestingLevel level;
    const od_closure& operand = m_body->record->operand;
    xstd::XString text =
        xstd::format("prog: %x, maxStack: %d, env_: %x, start: %d, params: %d, ",
                     shortAddress(m_body->program.get()), int(operand.maxStack),
                     shortAddress(m_body->env.get()), int(operand.entry), int(operand.paramCount));
    text.append("closureVars: [");
    for (size_t i = 0; i < m_body->closureVars.size(); ++i) {
        if (i != 0)
            text.append(", ");
        text.append(m_body->closureVars[i].toString());
    }
    text.append("]");
    return text;
}

} // namespace huge
