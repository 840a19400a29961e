#pragma once

#include "common/XString.h"

#include <cstdint>
#include <ctime>

namespace xstd {

/// A moment: ticks of 100 nanoseconds since 1970-01-01 00:00:00 UTC. The calendar fields of a
/// moment before that count forward from the second before it, so that the parts of a second are
/// never negative.
struct XTime {
    static constexpr int64_t ticksPerSecond = 10'000'000;

    int64_t ticks = 0;

    bool operator==(const XTime&) const = default;

    /// The fields of the local time. Throws std::runtime_error for a time that has none.
    std::tm fields() const;
    /// Milliseconds within the second, microseconds within the millisecond.
    int millisecond() const;
    int microsecond() const;
    /// Date and local time without padding, the microseconds within the millisecond behind the
    /// point: "2026-1-5 9:3:7.12". Throws like fields.
    XString toString() const;
};

} // namespace xstd
