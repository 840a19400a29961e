#pragma once

#include <cstdint>
#include <initializer_list>

namespace xstd {

/// A set of small integers, 0 to 63, passed by value. What a number means is up to the operation
/// that reads it; numbers beyond 63 are not kept.
class XOptions {
public:
    constexpr XOptions() = default;
    constexpr XOptions(std::initializer_list<int> values)
    {
        for (const int value : values)
            m_bits |= bit(value);
    }

    constexpr bool has(int value) const { return (m_bits & bit(value)) != 0; }
    constexpr bool hasAny(std::initializer_list<int> values) const
    {
        return (m_bits & XOptions(values).m_bits) != 0;
    }

private:
    static constexpr uint64_t bit(int value)
    {
        return value >= 0 && value < 64 ? uint64_t(1) << value : 0;
    }

    uint64_t m_bits = 0;
};

} // namespace xstd
