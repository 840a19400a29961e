#include "cli/CliOptions.h"
#include "cli/documentCommands.h"
#include "cli/scriptCommands.h"
#include "cli/stopSignals.h"

#include <cstdio>
#include <exception>

namespace {

constexpr int exitFailure = 1;
constexpr int exitUsage = 2;
constexpr int exitInterrupted = 130; // 128 + SIGINT, as a shell reports it

void run(const CliOptions& options)
{
    const std::vector<std::string>& arguments = options.arguments;
    if (options.command == "eval")
        evalCommand(arguments[0]);
    else if (options.command == "list")
        listCommand(arguments[0]);
    else if (options.command == "show")
        showCommand(arguments[0], arguments.size() > 1 ? arguments[1] : "", options.csv);
    else if (options.command == "set")
        setCommand(arguments[0], {arguments.begin() + 1, arguments.end()}, options.output);
    else
        jsonCommand(arguments[0]);
}

} // namespace

int main(int argc, char** argv)
{
    const auto options = CliOptions::parse({argv + 1, argv + argc});
    if (!options) {
        std::fputs(CliOptions::usage(), stderr);
        return exitUsage;
    }
    installStopSignals(options->limitSeconds);
    try {
        run(*options);
        return 0;
    } catch (const std::exception& failure) {
        std::fflush(stdout);
        std::fprintf(stderr, "%s\n", failure.what());
        return wasInterrupted() ? exitInterrupted : exitFailure;
    }
}
