#pragma once

#include <random>

namespace huge {

/// The process's random numbers, seeded once from the clock, so that they differ from run to run.
struct RandomSource {
    std::mt19937 bits32;
    std::mt19937_64 bits64;
};

/// The one source of the process; it is made at the first call.
RandomSource& randomSource();

} // namespace huge
