#include "numbers/decimalDigits.h"

#include "common/XStop.h"
#include "numbers/elementary.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

namespace huge {

namespace {

/// The last bits of a product or quotient of floats that may be wrong.
constexpr int64_t doubtfulBits = 8;

/// The longest number that leaves room for guard limbs below the limit.
constexpr size_t maxWorkedLimbs = LimbPool::limit - 10;

/// 5^places needs fewer bits than this.
int64_t bitsOfPower5(int64_t places)
{
    return int64_t(double(places) * 2.3219281) + 2;
}

/// 5^places for places >= 0: exact where p limbs hold it, else on p limbs with its last bits in
/// doubt. It stays in the range of exponents wherever a float is brought near its unit.
HugeFloat powerOf5(int64_t places, size_t p)
{
    if (bitsOfPower5(places) <= 64 * int64_t(p))
        return HugeFloat(HugeInteger(5).pow(places).trim());
    return powInt(HugeFloat(5, p), HugeInteger(places));
}

/// The least integer that is not below the exact number of which value is an approximation, or
/// nothing where that is in doubt. whole tells that the exact number is an integer.
std::optional<HugeInteger> ceilingOf(const HugeFloat& value, bool whole)
{
    const HugeInteger floor = value.toInteger();
    const HugeFloat rest = value - value.trunc();
    if (whole)
        return rest.exponent() == -1 && !rest.isZero() ? floor + 1 : floor;
    const int64_t lastBit = int64_t(value.exponent()) - 64 * int64_t(value.limbCount()) + 1;
    const HugeFloat doubt = HugeFloat(1).shiftExponent(-(lastBit + doubtfulBits));
    if (rest < doubt || HugeFloat(1, value.limbCount()) - rest < doubt)
        return std::nullopt;
    return floor + 1;
}

/// Whether mantissa * 2^exponent * 10^places is an integer; it is far above 1.
bool isWhole(const HugeInteger& mantissa, int64_t exponent, int64_t places)
{
    if (places >= 0)
        return int64_t(mantissa.trailingZeroBits()) >= -(exponent + places);
    return bitsOfPower5(-places) <= int64_t(mantissa.bitLength()) + 4 &&
           (mantissa % HugeInteger(5).pow(-places)).isZero();
}

/// The multiples of 10^-places that lie in [x, x + unit of the last place): from first on, and
/// more of them up to first + more.
struct Candidates {
    HugeInteger first;
    int64_t more;
    int64_t places;
};

std::optional<Candidates> candidatesOn(size_t p, const HugeFloat& x, int64_t places)
{
    HugeInteger mantissa;
    mantissa.fromLimbs_(x.limbs(), x.limbCount());
    const int64_t unit = int64_t(x.exponent()) - 64 * int64_t(x.limbCount()) + 1;
    const HugeFloat power = powerOf5(std::abs(places), p);
    const auto scaled = [&](const HugeFloat& value, int64_t exponent) {
        return (places < 0 ? value / power : value * power).shiftExponent(-(exponent + places));
    };
    // Both with the exponent put off to the end: the unit itself may lie below its range.
    const HugeFloat significand = x.abs().shiftExponent(x.exponent());
    const HugeFloat low = scaled(significand.resize(p, false), x.exponent());
    const HugeFloat step = scaled(HugeFloat(1, p), unit);
    const std::optional<HugeInteger> first = ceilingOf(low, isWhole(mantissa, unit, places));
    const std::optional<HugeInteger> end =
        ceilingOf(low + step, isWhole(mantissa + 1, unit, places));
    if (!first || !end)
        return std::nullopt;
    return Candidates{*first, (*end - *first).asInt64() - 1, places};
}

Candidates candidatesFor(const HugeFloat& x)
{
    constexpr double log10Of2 = 0.30102999566398119521;
    const size_t n = x.limbCount();
    const int64_t unit = int64_t(x.exponent()) - 64 * int64_t(n) + 1;
    // The unit of the last place holds more than ten and at most some hundred multiples.
    const int64_t places = int64_t(std::floor(double(-unit) * log10Of2)) + 2;
    for (size_t guard = 2;; guard *= 2) {
        xstd::XStop::poll();
        if (const auto found = candidatesOn(n + guard, x, places))
            return *found;
    }
}

/// digits + amount, digits - 1
void increase(std::string& digits, uint64_t amount)
{
    for (size_t i = digits.size(); i-- > 0 && amount != 0; amount /= 10) {
        amount += uint64_t(digits[i] - '0');
        digits[i] = char('0' + amount % 10);
    }
    if (amount != 0)
        digits.insert(0, std::to_string(amount));
}

void decrease(std::string& digits)
{
    for (size_t i = digits.size(); i-- > 0;) {
        if (digits[i]-- != '0')
            return;
        digits[i] = '9';
    }
}

DecimalDigits normalized(std::string digits, int64_t point)
{
    const size_t first = std::min(digits.find_first_not_of('0'), digits.size());
    digits.erase(0, first);
    digits.erase(digits.find_last_not_of('0') + 1);
    return {digits, digits.empty() ? 0 : point - int64_t(first)};
}

} // namespace

DecimalDigits DecimalDigits::fromInteger(const HugeInteger& value)
{
    const xstd::XString digits = value.abs().toString();
    return normalized(digits, int64_t(digits.size()));
}

char DecimalDigits::digitAt(int64_t place) const noexcept
{
    const int64_t index = point + place - 1;
    return index >= 0 && index < int64_t(digits.size()) ? digits[size_t(index)] : '0';
}

void DecimalDigits::truncate_(int64_t places)
{
    const int64_t kept = std::clamp<int64_t>(point + places, 0, int64_t(digits.size()));
    *this = normalized(digits.substr(0, size_t(kept)), point);
}

void DecimalDigits::round_(int64_t places)
{
    if (point + places >= int64_t(digits.size()))
        return;
    const bool up = digitAt(places + 1) >= '5';
    const int64_t last = point + places; // digits that stay
    std::string kept = digits.substr(0, size_t(std::max<int64_t>(last, 0)));
    if (up) {
        const size_t before = kept.size();
        increase(kept, 1);
        point += int64_t(kept.size() - before);
    }
    *this = normalized(std::move(kept), point);
}

xstd::XString DecimalDigits::integerPart() const
{
    if (point <= 0)
        return {};
    std::string text = digits.substr(0, size_t(point));
    text.resize(size_t(point), '0');
    return text;
}

xstd::XString DecimalDigits::fraction() const
{
    if (point >= int64_t(digits.size()))
        return {};
    return point >= 0 ? std::string(digits.substr(size_t(point)))
                      : std::string(size_t(-point), '0') + digits;
}

DecimalDigits shortestDecimal(const HugeFloat& x)
{
    if (x.limbCount() > maxWorkedLimbs)
        return shortestDecimal(x.resize(maxWorkedLimbs, false));
    const Candidates candidates = candidatesFor(x);
    std::string first = candidates.first.toString();
    std::string last = first;
    increase(last, uint64_t(candidates.more));
    std::string below = first;
    decrease(below);
    const size_t size = last.size();
    first.insert(0, size - first.size(), '0');
    below.insert(0, size - below.size(), '0');
    // Cut behind the digit in which the ends differ, last is still above below; cut further it is
    // not. So many digits are the fewest, and the least such number is the nearest.
    const size_t kept =
        size_t(std::mismatch(below.begin(), below.end(), last.begin()).first - below.begin()) + 1;
    const bool exact = first.find_first_not_of('0', kept) == std::string::npos;
    first.resize(kept);
    if (!exact)
        increase(first, 1);
    const int64_t dropped = int64_t(size - kept);
    return normalized(first, int64_t(first.size()) + dropped - candidates.places);
}

} // namespace huge
