#include "cli/CliOptions.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>

namespace {

// A day's calculation is the longest that a limit makes sense for; the timer takes no more than
// its own integer seconds anyway.
constexpr double longestLimit = 86400.0 * 365;

std::optional<double> parseSeconds(const std::string& text)
{
    char* end = nullptr;
    const double seconds = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !std::isfinite(seconds) || seconds <= 0 ||
        seconds > longestLimit)
        return std::nullopt;
    return seconds;
}

/// How many arguments a command takes, and its own option.
struct Command {
    const char* name;
    size_t least;
    size_t most;
    bool takesCsv;
    bool takesOutput;
};

constexpr size_t any = std::numeric_limits<size_t>::max();
constexpr Command commands[] = {{"eval", 1, 1, false, false},
                                {"list", 1, 1, false, false},
                                {"show", 1, 2, true, false},
                                {"set", 2, any, false, true},
                                {"json", 1, 1, false, false}};

} // namespace

bool CliOptions::readOption(const std::vector<std::string>& words, size_t& i)
{
    if (words[i] == "--csv") {
        csv = true;
        return true;
    }
    const std::string& option = words[i];
    if (++i == words.size())
        return false;
    if (option == "-o") {
        output = words[i];
        return !output.empty();
    }
    const auto seconds = option == "--limit" ? parseSeconds(words[i]) : std::nullopt;
    limitSeconds = seconds.value_or(0);
    return seconds.has_value();
}

bool CliOptions::fits() const
{
    for (const Command& known : commands) {
        if (command == known.name)
            return arguments.size() >= known.least && arguments.size() <= known.most &&
                   (known.takesCsv || !csv) && (known.takesOutput || output.empty());
    }
    return false;
}

std::optional<CliOptions> CliOptions::parse(const std::vector<std::string>& words)
{
    CliOptions options;
    for (size_t i = 0; i < words.size(); ++i) {
        if (words[i].size() > 1 && words[i][0] == '-') {
            if (!options.readOption(words, i))
                return std::nullopt;
        } else if (options.command.empty()) {
            options.command = words[i];
        } else {
            options.arguments.push_back(words[i]);
        }
    }
    return options.fits() ? std::optional(std::move(options)) : std::nullopt;
}

const char* CliOptions::usage()
{
    return "usage: tavix-cli eval FILE|-\n"
           "    runs the script in FILE, or on standard input, and prints its result\n"
           "       tavix-cli list FILE|-\n"
           "    compiles the script and prints the listing of its program\n"
           "       tavix-cli show DOC [RANGE] [--csv]\n"
           "    calculates a document and prints the values of its cells, or of those in RANGE\n"
           "       tavix-cli set DOC CELL=TEXT... [-o OUT]\n"
           "    sets cells, calculates, and writes the document back, or to OUT\n"
           "       tavix-cli json DOC\n"
           "    prints a document as JSON\n"
           "With --limit SECONDS each of them stops after that time.\n";
}
