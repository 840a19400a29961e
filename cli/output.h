#pragma once

#include <string>

/// Writes to standard output. Both throw a std::runtime_error if that fails.
void writeOutput(const std::string& text);
/// To be called when all is written: only then is it known that nothing was lost.
void flushOutput();
