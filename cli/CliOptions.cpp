#include "cli/CliOptions.h"

#include <cmath>
#include <cstdlib>

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

} // namespace

std::optional<CliOptions> CliOptions::parse(const std::vector<std::string>& words)
{
    CliOptions options;
    for (size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "--limit") {
            const auto seconds = i + 1 < words.size() ? parseSeconds(words[i + 1]) : std::nullopt;
            if (!seconds)
                return std::nullopt;
            options.limitSeconds = *seconds;
            ++i;
        } else if (word.size() > 1 && word[0] == '-') {
            return std::nullopt;
        } else if (options.command.empty()) {
            options.command = word;
        } else {
            options.arguments.push_back(word);
        }
    }
    if (options.command != "eval" || options.arguments.size() != 1)
        return std::nullopt;
    return options;
}

const char* CliOptions::usage()
{
    return "usage: tavix-cli eval [--limit SECONDS] FILE|-\n"
           "    runs the script in FILE, or on standard input, and prints its result\n";
}
