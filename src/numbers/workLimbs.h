#pragma once

#include "numbers/LimbPool.h"
#include "numbers/limbs.h"

#include <cstddef>

namespace huge {

/// Limbs of working room for the time of a scope, not cleared: on the stack as long as they are
/// few, which they are for most numbers.
class WorkLimbs {
public:
    explicit WorkLimbs(size_t count) : m_long(count > shortCount ? count : 0)
    {
        m_limbs = count > shortCount ? m_long.get() : m_short;
    }
    WorkLimbs(const WorkLimbs&) = delete;
    WorkLimbs& operator=(const WorkLimbs&) = delete;

    operator Limb*() noexcept { return m_limbs; }

private:
    static constexpr size_t shortCount = 72;

    Limb m_short[shortCount];
    LimbScratch m_long;
    Limb* m_limbs;
};

} // namespace huge
