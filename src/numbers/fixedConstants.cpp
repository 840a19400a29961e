#include "numbers/fixedConstants.h"

#include "common/XStop.h"
#include "numbers/limbVectors.h"
#include "numbers/limbsQuotient.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>
#include <utility>
#include <vector>

namespace huge {

namespace {

/// One summand of a formula of Machin's kind: factor times the inverse tangent of 1 / divisor, or
/// times its hyperbolic sister.
struct Summand {
    int factor;
    Limb divisor;
};

/// a + b, or a - b where b is less.
Limbs combined(Limbs a, const Limbs& b, bool subtract)
{
    a.resize(std::max(a.size(), b.size()) + 1);
    if (subtract)
        limbsSubFrom(a.data(), a.size(), b.data(), b.size());
    else
        limbsAddTo(a.data(), a.size(), b.data(), b.size());
    return std::move(trim(a));
}

/// The terms first to last - 1 of the sum of 1 / ((2 k + 1) * square^(k - first + 1)), the signs
/// alternating from plus on if asked for: sum / (odds * power).
struct Terms {
    Limbs power; // of square
    Limbs odds;  // the product of the odd numbers
    Limbs sum;
};

/// The sum of a series of rational terms, halved and halved again, so that long numbers are
/// multiplied by others as long (Brent, Fast multiple-precision evaluation of elementary functions,
/// 1976).
Terms termsOf(Limb square, Limb first, Limb last, bool alternating)
{
    if (last - first == 1)
        return {{square}, {2 * first + 1}, {1}};
    xstd::XStop::poll();
    const Limb middle = first + (last - first) / 2;
    const Terms low = termsOf(square, first, middle, alternating);
    const Terms high = termsOf(square, middle, last, alternating);
    return {product(low.power, high.power), product(low.odds, high.odds),
            combined(product(low.sum, product(high.power, high.odds)), product(low.odds, high.sum),
                     alternating && (middle - first) % 2 != 0)};
}

/// The fraction of w limbs that numerator / denominator is, which is below 1.
Limbs fractionOf(Limbs numerator, Limbs denominator, size_t w)
{
    numerator.resize(denominator.size());
    const unsigned shift = unsigned(__builtin_clzll(denominator.back()));
    limbsShlSmall(numerator.data(), numerator.size(), shift, numerator.data());
    limbsShlSmall(denominator.data(), denominator.size(), shift, denominator.data());
    const size_t used = std::min(denominator.size(), w + 2); // what is below changes no limb
    const size_t cut = denominator.size() - used;
    Limbs dividend(w + used);
    limbsCopy(dividend.data() + w, numerator.data() + cut, used);
    Limbs fraction(w);
    limbsQuotient(dividend.data(), dividend.size(), denominator.data() + cut, used,
                  fraction.data());
    return fraction;
}

/// The sum of 1 / (first * ... * k) for k from first to last - 1: sum / product.
struct InverseFactorials {
    Limbs product;
    Limbs sum;
};

InverseFactorials inverseFactorials(Limb first, Limb last)
{
    if (last - first == 1)
        return {{first}, {1}};
    xstd::XStop::poll();
    const Limb middle = first + (last - first) / 2;
    const InverseFactorials low = inverseFactorials(first, middle);
    const InverseFactorials high = inverseFactorials(middle, last);
    return {product(low.product, high.product),
            combined(product(low.sum, high.product), high.sum, false)};
}

/// The summand's size as a fraction of w limbs.
Limbs valueOf(const Summand& summand, bool alternating, size_t w)
{
    const double bitsPerTerm = 2 * std::log2(double(summand.divisor));
    const Limb count = Limb(64.0 * double(w) / bitsPerTerm) + 2;
    const Limb square = summand.divisor * summand.divisor;
    Terms terms = termsOf(square, 0, count, alternating);
    const Limb factor = Limb(std::abs(summand.factor)) * summand.divisor;
    return fractionOf(product(terms.sum, {factor}), product(terms.odds, terms.power), w);
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
            m_limbs = calculate(w + w / 8 + 4);
        return m_limbs.data() + (m_limbs.size() - w);
    }

private:
    /// The sum of the summands, a fraction of w limbs that is right to some units.
    Limbs calculate(size_t w) const
    {
        Limbs sum(w);
        for (const Summand& summand : m_formula) {
            const Limbs value = valueOf(summand, m_alternating, w);
            if (summand.factor < 0)
                limbsSubFrom(sum.data(), w, value.data(), w);
            else
                limbsAddTo(sum.data(), w, value.data(), w);
        }
        return sum;
    }

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

void fixedE(size_t w, Limb* r)
{
    // e - 2 is 1/2! + 1/3! + ..., and its first terms left out are below 2^(-64 w).
    Limb last = 2;
    while (std::lgamma(double(last) + 1) < 64.0 * double(w) * std::numbers::ln2)
        last += last / 8 + 1;
    InverseFactorials terms = inverseFactorials(2, last);
    const Limbs fraction = fractionOf(std::move(terms.sum), std::move(terms.product), w);
    limbsCopy(r, fraction.data(), w);
    r[w] = 2;
}

} // namespace huge
