#include "common/XTime.h"

#include "common/XPlatform.h"

namespace xstd {

namespace {

/// The remainder of a division that rounds down, never negative.
int64_t restOf(int64_t value, int64_t unit)
{
    return (value % unit + unit) % unit;
}

} // namespace

std::tm XTime::fields() const
{
    const int64_t seconds = ticks / ticksPerSecond - (ticks % ticksPerSecond < 0);
    return XPlatform::localTime(seconds);
}

int XTime::millisecond() const
{
    return static_cast<int>(restOf(ticks, ticksPerSecond) / 10'000);
}

int XTime::microsecond() const
{
    return static_cast<int>(restOf(ticks, 10'000) / 10);
}

XString XTime::toString() const
{
    const std::tm tm = fields();
    return format("%d-%d-%d %d:%d:%d.%d", tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour,
                  tm.tm_min, tm.tm_sec, microsecond());
}

} // namespace xstd
