#include "numbers/fixedConstants.h"

#include "common/XStop.h"
#include "numbers/limbRows.h"

#include <span>
#include <vector>

namespace huge {

namespace {

using Limbs = std::vector<Limb>;

/// One summand of a formula of Machin's kind: factor times the inverse tangent of 1 / divisor, or
/// times its hyperbolic sister.
struct Summand {
    int64_t factor;
    Limb divisor;
};

/// sum += or -= factor * value, of which the low count limbs are not 0.
void addTimes(Limbs& sum, const Limbs& value, size_t count, Limb factor, bool subtract)
{
    const size_t above = sum.size() - count;
    if (subtract) {
        Limb borrow = rowSubMul(sum.data(), value.data(), count, factor);
        limbsSubFrom(sum.data() + count, above, &borrow, above == 0 ? 0 : 1);
    } else {
        Limb carry = rowAddMul(sum.data(), value.data(), count, factor);
        limbsAddTo(sum.data() + count, above, &carry, above == 0 ? 0 : 1);
    }
}

/// Adds factor * sum of (+-1)^k / ((2 k + 1) * divisor^(2 k + 1)).
void addInverseTangent(Limbs& sum, const Summand& summand, bool alternating)
{
    const bool negative = summand.factor < 0;
    const Limb factor = Limb(negative ? -summand.factor : summand.factor);
    const Limb square = summand.divisor * summand.divisor;
    Limbs power(sum.size());
    Limbs term(sum.size());
    power.back() = 1; // the sums below stand on one limb above the fraction
    limbsDivLimb(power.data(), power.size(), summand.divisor, power.data());
    size_t count = limbsEffective(power.data(), power.size());
    for (Limb k = 0; count != 0; ++k) {
        xstd::XStop::poll();
        limbsDivLimb(power.data(), count, 2 * k + 1, term.data());
        addTimes(sum, term, count, factor, negative != (alternating && k % 2 != 0));
        limbsDivLimb(power.data(), count, square, power.data());
        count = limbsEffective(power.data(), count);
    }
}

/// The sum of the formula's summands, a fraction of w limbs, with guard limbs below it dropped.
Limbs machinSum(size_t w, std::span<const Summand> formula, bool alternating)
{
    constexpr size_t guard = 1;
    Limbs sum(w + guard + 1);
    for (const Summand& summand : formula)
        addInverseTangent(sum, summand, alternating);
    sum.pop_back();
    sum.erase(sum.begin(), sum.begin() + guard);
    return sum;
}

/// A constant that is kept at the greatest length asked for so far.
class KeptConstant {
public:
    KeptConstant(std::span<const Summand> formula, bool alternating)
        : m_formula(formula), m_alternating(alternating)
    {}

    const Limb* limbs(size_t w)
    {
        // Somewhat longer than asked for: a precision that grows step by step must not pay for the
        // whole constant at every step.
        if (m_limbs.size() < w)
            m_limbs = machinSum(w + w / 8 + 4, m_formula, m_alternating);
        return m_limbs.data() + (m_limbs.size() - w);
    }

private:
    std::span<const Summand> m_formula;
    bool m_alternating;
    Limbs m_limbs;
};

} // namespace

const Limb* fixedLn2(size_t w)
{
    static constexpr Summand formula[] = {{18, 26}, {-2, 4801}, {8, 8749}};
    static KeptConstant constant(formula, false);
    return constant.limbs(w);
}

const Limb* fixedQuarterPi(size_t w)
{
    // (Størmer, Sur l'application de la théorie des nombres entiers complexes, 1896)
    static constexpr Summand formula[] = {{12, 49}, {32, 57}, {-5, 239}, {12, 110443}};
    static KeptConstant constant(formula, true);
    return constant.limbs(w);
}

} // namespace huge
