#pragma once

#include <string>
#include <vector>

// The commands on a document. Each loads and calculates it; what was damaged or closes a ring of
// references is named on standard error. All throw a std::runtime_error for a file that can't be
// read, and what a stop raises.

/// Prints the values of the cells in `range` ("A1", "A1:C9"; empty for all that are used), a row a
/// line. Between columns stands a tab, and a value with a tab or a line feed in it is quoted with
/// escapes; with `csv` a comma, and quotes as usual there. Throws for a range that is none.
void showCommand(const std::string& path, const std::string& range, bool csv);

/// Sets cells, each given as "A1=TEXT", one after another, and writes the document to `output`,
/// or back if that is empty. Throws, and writes nothing, if a text fails or closes a ring.
void setCommand(const std::string& path, const std::vector<std::string>& texts,
                const std::string& output);

/// Prints the JSON image of the table.
void jsonCommand(const std::string& path);
