#pragma once

#include "script/XScriptExtendData.h"
#include "values/HugeVariant.h"

#include <cstddef>

namespace huge {

/// What the names mean that a script does not define itself. Runs and closures hold it by
/// std::shared_ptr.
class XScriptEnv {
public:
    virtual ~XScriptEnv() = default;

    /// Gives out the value of a name. A reference must stand on a handle that lives as long as any
    /// run is under way.
    virtual void resolve(HugeVariant& out, const XScriptExtendData& data) = 0;

    /// Makes or replaces a variable and gives the stored value.
    virtual HugeVariant& setVar(const xstd::XString& name, const HugeVariant& value) = 0;
    /// The stored value, or a shared null value.
    virtual const HugeVariant& getVar(const xstd::XString& name) = 0;
    /// Gives how many entries went.
    virtual size_t removeVar(const xstd::XString& name) = 0;
};

} // namespace huge
