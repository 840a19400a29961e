#include "script/XScriptEnvBase.h"

#include "script/XScriptBuiltins.h"
#include "script/XScriptRunStack.h"

#include <vector>

namespace huge {

XScriptEnv_base::Table& XScriptEnv_base::table()
{
    static Table instance;
    return instance;
}

void XScriptEnv_base::initVars()
{
    if (!table().empty())
        return;
    for (const ScriptBuiltin& builtin : scriptBuiltins())
        table().emplace(builtin.name, builtin.value);
}

void XScriptEnv_base::resolve(HugeVariant& out, const XScriptExtendData& data)
{
    if (data.format() != 1) {
        out.clear_();
        return;
    }
    auto found = table().find(data.name());
    if (found == table().end())
        found = table().find(data.lowerName());
    if (found != table().end())
        out.setRef(found->second);
    else
        out.replace_(HugeVariant(data.lowerName()));
}

HugeVariant& XScriptEnv_base::setVar(const xstd::XString& name, const HugeVariant& value)
{
    HugeVariant& stored = table()[name];
    stored = value;
    return stored;
}

const HugeVariant& XScriptEnv_base::getVar(const xstd::XString& name)
{
    static const HugeVariant nothing;
    const auto found = table().find(name);
    return found == table().end() ? nothing : found->second;
}

size_t XScriptEnv_base::removeVar(const xstd::XString& name)
{
    // Entries that a run may still refer to. They go with the first removal outside of a run.
    static std::vector<Table::node_type> removed;
    if (!XScriptRunStack::anyOpen())
        removed.clear();
    Table::node_type entry = table().extract(name);
    if (entry.empty())
        return 0;
    if (XScriptRunStack::anyOpen())
        removed.push_back(std::move(entry));
    return 1;
}

} // namespace huge
