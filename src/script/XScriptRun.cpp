#include "script/XScript.h"

#include "script/XScriptProgram.h"
#include "script/XScriptRunner.h"

namespace huge {

std::shared_ptr<const XScriptProgram> XScript_base::program()
{
    if (m_program == nullptr)
        m_program =
            std::make_shared<const XScriptProgram>(m_compiled ? m_prog : std::vector<uint8_t>());
    return m_program;
}

HugeVariant XScript_base::run(const std::shared_ptr<XScriptEnv>& env)
{
    return XScriptRunner(program(), env).run();
}

} // namespace huge
