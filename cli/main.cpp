#include "cli/CliOptions.h"
#include "cli/evalCommand.h"
#include "cli/stopSignals.h"

#include <cstdio>
#include <exception>

namespace {

constexpr int exitFailure = 1;
constexpr int exitUsage = 2;
constexpr int exitInterrupted = 130; // 128 + SIGINT, as a shell reports it

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
        evalCommand(options->arguments.front());
        return 0;
    } catch (const std::exception& failure) {
        std::fflush(stdout);
        std::fprintf(stderr, "%s\n", failure.what());
        return wasInterrupted() ? exitInterrupted : exitFailure;
    }
}
