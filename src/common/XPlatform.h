#pragma once

#include "common/XString.h"

#include <cstdint>
#include <ctime>

namespace xstd {

/// What the program asks of the system that it runs on.
class XPlatform {
public:
    /// The path of the running program, and its folder; empty where the system does not tell.
    static XString programPath();
    static XString programDir();
    /// The name of the user who runs the program.
    static XString userName();
    /// The folder for the user's own data: APPDATA, else XDG_DATA_HOME, else .local/share at home.
    static XString userDataDir();
    /// The system clock, in ticks of 100 nanoseconds since 1970-01-01 00:00 UTC.
    static int64_t clockTicks();
    /// The calendar fields of the local time, for seconds since 1970. Throws std::runtime_error
    /// for a time that has none.
    static std::tm localTime(int64_t seconds);
};

} // namespace xstd
