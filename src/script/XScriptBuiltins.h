#pragma once

#include "values/HugeVariant.h"

#include <vector>

namespace huge {

/// A function or constant of the language under its name.
struct ScriptBuiltin {
    const char* name;
    HugeVariant value;
};

/// All functions and constants of the language. No function changes its arguments; extra arguments
/// are ignored where nothing else is told. They fail as the operations on the values do; a count of
/// limbs below 1 throws std::runtime_error "The precision must be at least 1", one beyond the limit
/// its text.
const std::vector<ScriptBuiltin>& scriptBuiltins();

} // namespace huge
