#include "numbers/randomSource.h"

#include <chrono>
#include <cstdint>
#include <ratio>

namespace huge {

RandomSource& randomSource()
{
    static RandomSource source = [] {
        using Ticks = std::chrono::duration<int64_t, std::ratio<1, 10'000'000>>; // 100 ns each
        const auto now = std::chrono::system_clock::now().time_since_epoch();
        const uint64_t ticks = uint64_t(std::chrono::duration_cast<Ticks>(now).count());
        return RandomSource{std::mt19937(uint32_t(ticks)), std::mt19937_64(ticks)};
    }();
    return source;
}

} // namespace huge
