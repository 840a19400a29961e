#pragma once

#include <optional>
#include <string>
#include <vector>

/// What the command line of the console tool asks for.
struct CliOptions {
    std::string command;
    std::vector<std::string> arguments; // of the command, options taken out
    double limitSeconds = 0;            // 0: no limit
    bool csv = false;                   // of "show"
    std::string output;                 // of "set"; empty: back to the document

    /// Reads the words behind the program's name. Nothing for a command that does not exist, a
    /// wrong count of arguments, an option that is unknown or not of this command, or a limit that
    /// is no positive number of seconds.
    static std::optional<CliOptions> parse(const std::vector<std::string>& words);
    /// The text that explains the command line, with its last line feed.
    static const char* usage();

private:
    bool readOption(const std::vector<std::string>& words, size_t& i);
    bool fits() const;
};
