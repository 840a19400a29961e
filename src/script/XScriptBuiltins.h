#pragma once

#include "values/HugeVariant.h"

#include <vector>

namespace huge {

/// A function of the language under its name.
struct ScriptBuiltin {
    const char* name;
    HugeFunction function;
};

/// All functions of the language. None changes its arguments; extra arguments are ignored. Those
/// whose result would be a float or a complex number fail as the operation on the value does.
const std::vector<ScriptBuiltin>& scriptBuiltins();

} // namespace huge
