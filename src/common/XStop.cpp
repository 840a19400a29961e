#include "common/XStop.h"

#include "common/XException.h"

#include <chrono>
#include <utility>

namespace xstd {

namespace {

constexpr auto handlerPause = std::chrono::milliseconds(20);

std::function<void()>& handlerSlot()
{
    static std::function<void()> handler;
    return handler;
}

} // namespace

void XStop::setHandler(std::function<void()> handler)
{
    s_hasHandler = static_cast<bool>(handler);
    handlerSlot() = std::move(handler);
}

bool XStop::isStop(const XExceptionItems& failure)
{
    for (const XExceptionItem& item : failure.items()) {
        if (item.type() == "stop")
            return true;
    }
    return false;
}

void XStop::raise()
{
    throw XExceptionItems().add(XExceptionItem(X_HERE, "stop").setMess("Calculation stopped"));
}

void XStop::look()
{
    using Clock = std::chrono::steady_clock;
    static Clock::time_point last = Clock::now();
    const Clock::time_point now = Clock::now();
    if (now - last < handlerPause)
        return;
    last = now;
    static bool running = false;
    if (running)
        return; // what the handler calls may poll in its turn
    const std::function<void()> handler = handlerSlot(); // it may set another one
    running = true;
    try {
        handler();
    } catch (...) {
        running = false;
        throw;
    }
    running = false;
    if (requested())
        raise();
}

} // namespace xstd
