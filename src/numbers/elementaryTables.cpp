#include "numbers/elementaryTables.h"

#include "numbers/LimbPool.h"
#include "numbers/fixedFunctions.h"
#include "numbers/fixedPoint.h"
#include "numbers/fixedSeries.h"

#include <algorithm>

namespace huge {

namespace {

/// Table lengths are few, so that a table is built seldom; each length costs a multiple of the one
/// before.
size_t roundedLength(size_t w)
{
    size_t limbs = 4;
    while (limbs < w)
        limbs *= 2;
    return std::min(limbs, tableLimbs);
}

/// Powers 0 to 255 of e^(2^-bits), halved once and shifted right by extra more bits.
std::vector<Limb> expSteps(size_t bits, unsigned extra, size_t w)
{
    std::vector<Limb> table(tableSteps * w);
    LimbScratch scratch(2 * w + fixedMulArea(w));
    Limb* base = scratch;
    Limb* area = scratch + 2 * w;
    limbsZero(base, w);
    base[w - 1] = Limb(1) << (64 - bits);
    seriesExp(base, w, base);
    table[w - 1] = Limb(1) << (63 - extra);
    for (size_t i = 1; i < tableSteps; ++i) {
        Limb* entry = table.data() + i * w;
        fixedMul(entry - w, base, w, entry, area);
        limbsShlSmall(entry, w, 1, entry); // the product of two halves is a quarter
    }
    return table;
}

/// Half the sine and half the cosine of 0 to 255 times 2^-bits, one behind the other.
std::vector<Limb> trigSteps(size_t bits, size_t w)
{
    std::vector<Limb> table(2 * tableSteps * w);
    LimbScratch scratch(5 * w + fixedMulArea(w));
    const HalfAngle base{scratch, scratch + w};
    Limb* angle = scratch + 2 * w;
    Limb* area = scratch + 3 * w;
    limbsZero(angle, w);
    angle[w - 1] = Limb(1) << (64 - bits);
    seriesSinCos(angle, w, base.sine, base.cosine);
    table[2 * w - 1] = Limb(1) << 63; // the cosine of 0
    for (size_t i = 1; i < tableSteps; ++i) {
        Limb* entry = table.data() + 2 * i * w;
        limbsCopy(entry, entry - 2 * w, 2 * w);
        const HalfAngle sum{entry, entry + w};
        addAngle(sum, base.sine, base.cosine, w, area);
        limbsShlSmall(sum.sine, w, 1, sum.sine);
        limbsShlSmall(sum.cosine, w, 1, sum.cosine);
    }
    return table;
}

} // namespace

const XExpTable& XExpTable::forLimbs(size_t w)
{
    static XExpTable table;
    if (table.m_limbs < w)
        table.build(roundedLength(w));
    return table;
}

void XExpTable::build(size_t limbs)
{
    std::vector<Limb> coarse = expSteps(8, 1, limbs);
    std::vector<Limb> fine = expSteps(16, 0, limbs);
    m_coarse.swap(coarse);
    m_fine.swap(fine);
    m_limbs = limbs;
}

const XTrigTable& XTrigTable::forLimbs(size_t w)
{
    static XTrigTable table;
    if (table.m_limbs < w)
        table.build(roundedLength(w));
    return table;
}

void XTrigTable::build(size_t limbs)
{
    std::vector<Limb> coarse = trigSteps(8, limbs);
    std::vector<Limb> fine = trigSteps(16, limbs);
    m_coarse.swap(coarse);
    m_fine.swap(fine);
    m_limbs = limbs;
}

} // namespace huge
