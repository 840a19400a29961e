#pragma once

#include <atomic>
#include <cstdint>
#include <functional>

namespace xstd {

class XExceptionItems;

/// How a calculation that runs long is stopped. Whatever can run long calls poll() again and again;
/// while the flag is up, poll throws. The flag stays up until clear(), which the entry points call
/// before they begin (an action that runs, the console tool).
class XStop {
public:
    /// Throws an XExceptionItems of type "stop", message "Calculation stopped", while the flag is
    /// up. Calls the handler, if there is one, at most every 20 ms; the handler may raise the flag.
    static void poll()
    {
        if (s_flag.load(std::memory_order_relaxed)) [[unlikely]]
            raise();
        if (s_hasHandler && ++s_count % pollsPerLook == 0) [[unlikely]]
            look();
    }

    /// Raises the flag. Safe in a signal handler and from another thread.
    static void request() noexcept { s_flag.store(true, std::memory_order_relaxed); }
    static void clear() noexcept { s_flag.store(false, std::memory_order_relaxed); }
    static bool requested() noexcept { return s_flag.load(std::memory_order_relaxed); }

    /// What poll() calls from time to time; an empty function for none.
    static void setHandler(std::function<void()> handler);

    /// Whether this failure is a stop.
    static bool isStop(const XExceptionItems& failure);

private:
    // The clock is looked at once in so many polls; a poll may stand in a loop of a few
    // nanoseconds as well as in one of some microseconds.
    static constexpr uint32_t pollsPerLook = 16;

    [[noreturn]] static void raise();
    static void look();

    static inline std::atomic<bool> s_flag{false};
    static inline bool s_hasHandler = false;
    static inline uint32_t s_count = 0;
};

/// Lowers the stop flag when a piece of work begins and when it ends, however that is: a stop that
/// came too late for the work before must not end this one, and painting after a stopped one must
/// not stop as well.
struct XStopScope {
    XStopScope() { XStop::clear(); }
    ~XStopScope() { XStop::clear(); }
    XStopScope(const XStopScope&) = delete;
    XStopScope& operator=(const XStopScope&) = delete;
};

} // namespace xstd
