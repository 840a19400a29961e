#pragma once

#include "numbers/limbs.h"

#include <cstddef>
#include <vector>

namespace huge {

// Tables for arguments below 1, which is taken apart into its first 8 bits, the next 8 bits and a
// rest below 2^-16. They hold fractions of one limb count, of which a caller takes the top limbs;
// they are built at first use and built anew when more limbs are asked for.

/// Fractions longer than this are worked out without tables, whose building would cost more than
/// it saves.
constexpr size_t tableLimbs = 72;
constexpr size_t tableSteps = 256;

/// Powers of e.
class XExpTable {
public:
    /// The table for fractions of w limbs, w at most tableLimbs.
    static const XExpTable& forLimbs(size_t w);

    /// e^(i / 2^8) / 4 on w limbs.
    const Limb* coarse(size_t i, size_t w) const noexcept { return entry(m_coarse, i, w); }
    /// e^(i / 2^16) / 2 on w limbs.
    const Limb* fine(size_t i, size_t w) const noexcept { return entry(m_fine, i, w); }

private:
    void build(size_t limbs);
    const Limb* entry(const std::vector<Limb>& table, size_t i, size_t w) const noexcept
    {
        return table.data() + (i + 1) * m_limbs - w;
    }

    size_t m_limbs = 0;
    std::vector<Limb> m_coarse;
    std::vector<Limb> m_fine;
};

/// Sines and cosines, each halved.
class XTrigTable {
public:
    /// The table for fractions of w limbs, w at most tableLimbs.
    static const XTrigTable& forLimbs(size_t w);

    /// Half the sine and half the cosine of i / 2^8, on w limbs.
    const Limb* coarseSin(size_t i, size_t w) const noexcept { return entry(m_coarse, 2 * i, w); }
    const Limb* coarseCos(size_t i, size_t w) const noexcept
    {
        return entry(m_coarse, 2 * i + 1, w);
    }
    /// The same of i / 2^16.
    const Limb* fineSin(size_t i, size_t w) const noexcept { return entry(m_fine, 2 * i, w); }
    const Limb* fineCos(size_t i, size_t w) const noexcept { return entry(m_fine, 2 * i + 1, w); }

private:
    void build(size_t limbs);
    const Limb* entry(const std::vector<Limb>& table, size_t i, size_t w) const noexcept
    {
        return table.data() + (i + 1) * m_limbs - w;
    }

    size_t m_limbs = 0;
    std::vector<Limb> m_coarse;
    std::vector<Limb> m_fine;
};

} // namespace huge
