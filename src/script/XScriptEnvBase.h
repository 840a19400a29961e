#pragma once

#include "script/XScriptEnv.h"

#include <map>

namespace huge {

/// The environment of plain scripts: one table for the whole process, from names in lower case to
/// values, filled with the built-in functions. A name that it does not hold is a text: itself, in
/// lower case.
class XScriptEnv_base : public XScriptEnv {
public:
    /// The first one fills the table.
    XScriptEnv_base() { initVars(); }

    /// A reference on the table's value. The name is looked up as written, then in lower case, so
    /// that a program can offer names with capitals too. Anything but a plain name is null.
    void resolve(HugeVariant& out, const XScriptExtendData& data) override;

    /// These take the name as given.
    HugeVariant& setVar(const xstd::XString& name, const HugeVariant& value) override;
    const HugeVariant& getVar(const xstd::XString& name) override;
    /// While a run is under way the value itself stays, for those who refer to it.
    size_t removeVar(const xstd::XString& name) override;

    /// Enters the built-ins if the table is empty.
    static void initVars();

private:
    using Table = std::map<xstd::XString, HugeVariant>;

    static Table& table();
};

} // namespace huge
