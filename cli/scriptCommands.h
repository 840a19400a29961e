#pragma once

#include <string>

/// Runs one script and prints the text of its result and a line feed to standard output, nothing
/// for a null result. `path` names the script's file, "-" standard input. Throws what the script
/// throws, and a std::runtime_error if the script can't be read or the result not be written.
void evalCommand(const std::string& path);
/// Compiles one script and prints the listing of its program, in which references are relative to
/// A1; fails like evalCommand.
void listCommand(const std::string& path);
