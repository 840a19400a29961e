#pragma once

#include "common/XStop.h"
#include "common/XString.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <vector>

/// What a target does with one input: a reader takes any bytes, so everything but an exception
/// that it throws on purpose is a fault.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace fuzz {

/// Stops calculations that take longer than a moment, for the time of a scope: a script may well
/// run for ever, and a reader may not.
class TimeLimit {
public:
    explicit TimeLimit(std::chrono::milliseconds limit)
        : m_end(std::chrono::steady_clock::now() + limit)
    {
        xstd::XStop::clear();
        xstd::XStop::setHandler([this] {
            if (std::chrono::steady_clock::now() > m_end)
                xstd::XStop::request();
        });
    }
    ~TimeLimit()
    {
        xstd::XStop::setHandler({});
        xstd::XStop::clear();
    }
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

private:
    std::chrono::steady_clock::time_point m_end;
};

/// Runs a step that may refuse its input; true where it did not.
template <class Step>
bool accepted(Step&& step)
{
    try {
        step();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

/// Ends the process: two things that must agree do not.
inline void require(bool agrees)
{
    if (!agrees)
        __builtin_trap();
}

inline xstd::XString textOf(const uint8_t* data, size_t size)
{
    return std::string(reinterpret_cast<const char*>(data), size);
}

inline std::vector<uint8_t> bytesOf(const uint8_t* data, size_t size)
{
    return {data, data + size};
}

} // namespace fuzz
