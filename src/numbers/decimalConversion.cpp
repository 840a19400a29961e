#include "numbers/decimalConversion.h"

#include "common/XStop.h"
#include "numbers/workLimbs.h"

#include <vector>

namespace huge {

namespace {

// The most decimal digits that a limb holds, and 10 to their power.
constexpr size_t decimalStep = 19;
constexpr Limb decimalUnit = 10'000'000'000'000'000'000u;

/// Numbers of at most so many limbs are printed and read in passes over their limbs. Measured.
constexpr size_t shortLimbs = 30;
constexpr size_t shortReadLimbs = 60;

/// 10^19 squared k times, k from 0 on.
class DecimalUnits {
public:
    const HugeInteger& at(size_t level)
    {
        while (m_units.size() <= level)
            m_units.push_back(m_units.empty() ? HugeInteger::fromUnsigned(decimalUnit)
                                              : (m_units.back() * m_units.back()).trim());
        return m_units[level];
    }
    static constexpr size_t digitsAt(size_t level) noexcept { return decimalStep << level; }

private:
    std::vector<HugeInteger> m_units;
};

/// Writes a number's digits in front of end, where zeros stand for all of its places.
void writeShort(const Limb* limbs, size_t n, char* end)
{
    WorkLimbs rest(n);
    limbsCopy(rest, limbs, n);
    n = limbsEffective(rest, n);
    for (; n > 0; end -= decimalStep) {
        Limb group = limbsDivLimb(rest, n, decimalUnit, rest);
        n = limbsEffective(rest, n);
        for (char* place = end; group != 0; group /= 10)
            *--place = char('0' + group % 10);
    }
}

/// The same for a value below the square of the unit of the level before.
void writeLong(const HugeInteger& value, DecimalUnits& units, size_t level, char* end)
{
    xstd::XStop::poll();
    if (level == 0 || value.effectiveSize() <= shortLimbs) {
        writeShort(value.limbs(), value.size(), end);
        return;
    }
    HugeInteger high;
    HugeInteger low;
    HugeInteger::divide(value, units.at(level - 1), &high, &low);
    writeLong(low, units, level - 1, end);
    writeLong(high, units, level - 1, end - DecimalUnits::digitsAt(level - 1));
}

Limb groupValue(const char* digits, size_t count) noexcept
{
    Limb value = 0;
    for (size_t i = 0; i < count; ++i)
        value = value * 10 + Limb(digits[i] - '0');
    return value;
}

HugeInteger readShort(const char* digits, size_t count)
{
    // 10^19 is below 2^64: every step needs a limb at most.
    WorkLimbs sum(count / decimalStep + 2);
    size_t n = 0;
    size_t step = count % decimalStep; // the first step takes the odd digits
    if (step == 0)
        step = decimalStep;
    for (size_t done = 0; done < count; done += step, step = decimalStep) {
        limbsMulLimb(sum, n, decimalUnit, sum);
        const Limb low = groupValue(digits + done, step);
        limbsAddTo(sum, n + 1, &low, 1);
        n = limbsEffective(sum, n + 1);
    }
    HugeInteger value;
    value.fromLimbs_(sum, n);
    return value;
}

HugeInteger readLong(const char* digits, size_t count, DecimalUnits& units)
{
    xstd::XStop::poll();
    if (count <= decimalStep * shortReadLimbs)
        return readShort(digits, count);
    size_t level = 0;
    while (DecimalUnits::digitsAt(level + 1) < count)
        ++level;
    const size_t upper = count - DecimalUnits::digitsAt(level);
    const HugeInteger high = readLong(digits, upper, units);
    const HugeInteger low = readLong(digits + upper, count - upper, units);
    return (high * units.at(level) + low).trim();
}

} // namespace

std::string decimalDigitsOf(const Limb* limbs, size_t n)
{
    n = limbsEffective(limbs, n);
    if (n <= shortLimbs) {
        std::string text(n * 20, '0');
        writeShort(limbs, n, text.data() + text.size());
        return text;
    }
    HugeInteger value;
    value.fromLimbs_(limbs, n);
    DecimalUnits units;
    size_t level = 1;
    // The last unit, squared once more, is longer than the value.
    while (2 * units.at(level - 1).effectiveSize() <= n + 1)
        ++level;
    std::string text(DecimalUnits::digitsAt(level), '0');
    writeLong(value, units, level, text.data() + text.size());
    return text;
}

HugeInteger fromDecimalDigits(const char* digits, size_t count)
{
    DecimalUnits units;
    return readLong(digits, count, units);
}

} // namespace huge
