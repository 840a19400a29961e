#include "numberTesting.h"
#include "numbers/HugeFloat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>

using namespace huge;

namespace {

constexpr const char* exponentFailure = "HugeFloat exponent is out of range";
constexpr const char* limitFailure = "Number size must less than 20800";
constexpr int32_t highest = std::numeric_limits<int32_t>::max();
constexpr int32_t lowest = std::numeric_limits<int32_t>::min();

/// Sign, limb count, exponent and mantissa: everything that a float holds.
std::string shown(const HugeFloat& x)
{
    std::string digits;
    for (size_t i = x.limbCount(); i-- > 0;) {
        char text[17];
        std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(x.limbs()[i]));
        digits += text;
    }
    const size_t first = digits.find_first_not_of('0');
    return (x.isNegative() ? "- " : "+ ") + std::to_string(x.limbCount()) + " " +
           std::to_string(x.exponent()) + " " +
           (first == std::string::npos ? "0" : digits.substr(first));
}

HugeFloat readFloat(std::istringstream& words)
{
    std::string sign, digits;
    size_t n = 0;
    int32_t exponent = 0;
    words >> sign >> n >> exponent >> digits;
    HugeFloat x(0, n);
    if (digits == "0")
        return x;
    digits.insert(0, 16 * n - digits.size(), '0');
    for (size_t i = 0; i < n; ++i)
        x.limbs()[n - 1 - i] = std::stoull(digits.substr(16 * i, 16), nullptr, 16);
    LimbPool::setExponent(x.limbs(), exponent);
    return std::move(x.setSign(sign == "-"));
}

HugeFloat withExponent(double value, int64_t exponent, size_t limbCount = 1)
{
    return HugeFloat(value, limbCount).shiftExponent(-exponent);
}

HugeFloat calculate(const std::string& name, const HugeFloat& a, const HugeFloat& b)
{
    if (name == "add")
        return a + b;
    if (name == "sub")
        return a - b;
    if (name == "mul")
        return a * b;
    return name == "div" ? a / b : a % b;
}

HugeFloat calculateInPlace(const std::string& name, HugeFloat a, const HugeFloat& b)
{
    if (name == "add")
        return a += b;
    if (name == "sub")
        return a -= b;
    if (name == "mul")
        return a *= b;
    return name == "div" ? a /= b : a % b;
}

template <class Call>
std::string outcome(Call&& call)
{
    try {
        return shown(call());
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
}

/// What the call of a line gives; a plain operation also has to agree with its form in place.
std::string outcomeOf(const std::string& name, std::istringstream& words)
{
    const HugeFloat a = readFloat(words);
    if (name == "sqrt")
        return outcome([&] { return a.sqrt(); });
    if (name == "trunc")
        return outcome([&] { return a.trunc(); });
    if (name == "cut" || name == "round") {
        size_t n = 0;
        words >> n;
        return outcome([&] { return a.resize(n, name == "round"); });
    }
    const HugeFloat b = readFloat(words);
    const std::string plain = outcome([&] { return calculate(name, a, b); });
    EXPECT_EQ(outcome([&] { return calculateInPlace(name, a, b); }), plain);
    return plain;
}

} // namespace

TEST(FloatVectors, AgreeBitByBit)
{
    std::ifstream file(TAVIX_FLOAT_VECTORS);
    size_t count = 0;
    for (std::string line; std::getline(file, line); ++count) {
        SCOPED_TRACE(line);
        std::istringstream words(line);
        std::string name, expected;
        words >> name;
        const std::string found = outcomeOf(name, words);
        std::getline(words >> std::ws, expected);
        ASSERT_EQ(found, expected == "range" ? exponentFailure : expected);
    }
    EXPECT_GT(count, 1000u);
}

TEST(FloatConstruction, PlacesIntegersAndDoubles)
{
    const struct {
        HugeFloat value;
        const char* expected;
    } rows[] = {
        {HugeFloat(0, 3), "+ 3 0 0"},
        {HugeFloat(-0.0), "+ 1 0 0"},
        {HugeFloat(1, 2), "+ 2 0 80000000000000000000000000000000"},
        {HugeFloat(-5), "- 1 2 a000000000000000"},
        {HugeFloat(std::numeric_limits<int64_t>::min()), "- 1 63 8000000000000000"},
        {HugeFloat::fromUnsigned(~uint64_t(0)), "+ 1 63 ffffffffffffffff"},
        {HugeFloat(0.1), "+ 1 -4 ccccccccccccd000"},
        {HugeFloat(-std::numeric_limits<double>::max()), "- 1 1023 fffffffffffff800"},
        {HugeFloat(integer("0x1'00000000'00000001")), "+ 2 64 80000000000000008000000000000000"},
        {HugeFloat(integer("-3")), "- 1 1 c000000000000000"},
        {HugeFloat(HugeInteger(0)), "+ 1 0 0"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(shown(row.value), row.expected);
    EXPECT_TRUE(HugeFloat(HugeInteger()).isNull());
    for (const double value : {HUGE_VAL, -HUGE_VAL, std::nan("")})
        EXPECT_EQ(failureOf([&] { HugeFloat{value}; }), "A float must be finite");
    EXPECT_EQ(failureOf([] { HugeFloat(1, LimbPool::limit); }), limitFailure);
}

TEST(FloatConversion, GivesDoublesBack)
{
    for (const double value : {0.0, 1.0, -0.1, 1e308, 2.2250738585072014e-308, 5e-324, -3e-310})
        EXPECT_EQ(HugeFloat(value, 2).asDouble(), value);
    EXPECT_EQ(withExponent(1, 1024).asDouble(), HUGE_VAL);
    EXPECT_EQ(withExponent(-1, highest).asDouble(), -HUGE_VAL);
    EXPECT_EQ(withExponent(1, lowest).asDouble(), 0.0);
    EXPECT_EQ(HugeFloat::fromUnsigned(~uint64_t(0)).asDouble(), 0x1.fffffffffffffp63); // truncated
}

TEST(FloatConversion, GivesWholeParts)
{
    const auto whole = [](const HugeFloat& x) { return x.toInteger().toString(); };
    EXPECT_EQ(whole(HugeFloat(-2.75, 3)), "-2");
    EXPECT_EQ(whole(HugeFloat(0.999)), "0");
    EXPECT_EQ(HugeFloat(0.5, 4).toInteger().size(), 1u);
    EXPECT_EQ(withExponent(1.5, 128).toInteger(), integer("0x1'8000000000000000'0000000000000000"));
    EXPECT_EQ(withExponent(1.5, 128).toInteger().size(), 3u);
    EXPECT_EQ(HugeFloat(-7.9).asInt64(), -7);
    for (const int64_t exponent : {int64_t(64 * 20799), int64_t(highest)}) {
        const HugeFloat x = withExponent(1, exponent);
        EXPECT_EQ(failureOf([&] { x.toInteger(); }), limitFailure);
        EXPECT_EQ(failureOf([&] { x.asInt64(); }), limitFailure);
    }
}

TEST(FloatPrecision, OfZerosFollowsTheOperation)
{
    const HugeFloat zero(0), x(3, 5);
    const struct {
        HugeFloat result;
        size_t limbs;
    } rows[] = {{zero + x, 5}, {x + zero, 5}, {zero - x, 5}, {HugeFloat(1) + HugeFloat(0, 5), 1},
                {zero * x, 1}, {x * zero, 5}, {zero / x, 1}, {HugeFloat(1) * HugeFloat(0, 5), 5},
                {x - x, 5},    {x + -x, 5},   {zero % x, 1}, {HugeFloat(0, 7).sqrt(), 7}};
    for (const auto& row : rows)
        EXPECT_EQ(row.result.limbCount(), row.limbs);
    EXPECT_EQ(shown(zero - x), "- 5 1 c" + std::string(79, '0'));
    EXPECT_EQ(shown((-x) - (-x)), "+ 5 0 0");
    EXPECT_EQ(shown((-HugeFloat(4)).zero_().negate_()), "+ 1 0 0");
}

TEST(FloatArithmetic, TruncatesWithoutGuardBits)
{
    EXPECT_EQ(shown(HugeFloat(1) + withExponent(1, -200)), "+ 1 0 8000000000000000");
    EXPECT_EQ(shown(HugeFloat(1) - withExponent(1, -200)), "+ 1 0 8000000000000000");
    EXPECT_EQ(shown(HugeFloat(1) / HugeFloat(3)), "+ 1 -2 aaaaaaaaaaaaaaaa");
    EXPECT_EQ(shown(HugeFloat(-7.5) % HugeFloat(2)), "- 1 0 c000000000000000");
}

TEST(FloatArithmetic, TakesOneNumberTwice)
{
    HugeFloat x(1.5, 3);
    EXPECT_EQ(x += x, HugeFloat(3));
    EXPECT_EQ(x *= x, HugeFloat(9));
    EXPECT_EQ(x /= x, HugeFloat(1));
    EXPECT_EQ(shown(x -= x), "+ 3 0 0");
}

TEST(FloatArithmetic, Fails)
{
    const HugeFloat top = withExponent(1.75, highest, 2), bottom = withExponent(1, lowest, 2);
    EXPECT_EQ(failureOf([&] { top / HugeFloat(0); }), "div by zero");
    EXPECT_EQ(failureOf([&] { top % HugeFloat(0); }), "div by zero");
    EXPECT_EQ(failureOf([] { HugeFloat(-1).sqrt(); }), "Negative numbers cannot be squared");
    EXPECT_EQ(failureOf([&] { top + top; }), exponentFailure);
    EXPECT_EQ(failureOf([&] { bottom - HugeFloat(1.5).shiftExponent(1LL << 31); }),
              exponentFailure);
    EXPECT_EQ(failureOf([&] { top.shiftExponent(-1); }), exponentFailure);
    EXPECT_EQ(failureOf([&] { top.shiftExponent(std::numeric_limits<int64_t>::min()); }),
              exponentFailure);
    EXPECT_EQ(failureOf([&] { top.resize(LimbPool::limit, false); }), limitFailure);
    HugeFloat kept = top;
    EXPECT_EQ(failureOf([&] { kept *= top; }), exponentFailure);
    EXPECT_EQ(shown(kept), shown(top));
    // A quotient of billions of bits is never written out.
    EXPECT_TRUE((withExponent(1, highest) % HugeFloat(3)).exponent() < highest);
}

TEST(FloatRoot, IsTheTruncatedRootAtEveryLength)
{
    for (const size_t n : {24u, 63u, 64u, 65u, 301u}) {
        for (const char kind : {'o', 't', 'r', 'x'}) {
            SCOPED_TRACE(std::string(1, kind) + std::to_string(n));
            std::vector<Limb> limbs = recipeLimbs(kind, n, n);
            limbs.back() |= Limb(1) << 63;
            const HugeFloat x = HugeFloat(fromVector(limbs)).shiftExponent(1); // an even exponent
            const HugeInteger root = x.sqrt().shiftExponent(-32 * int64_t(n)).toInteger();
            const HugeInteger square = x.shiftExponent(-64 * int64_t(n)).toInteger();
            EXPECT_LE(root * root, square);
            EXPECT_GT((root + HugeInteger(1)) * (root + HugeInteger(1)), square);
        }
    }
}

TEST(FloatOrder, IsByValueWhateverThePrecision)
{
    const HugeFloat rising[] = {
        withExponent(-1, highest), HugeFloat(-2),   HugeFloat(-1.5, 3), HugeFloat(0, 2),
        HugeFloat(1e-9),           HugeFloat(1, 5), HugeFloat(1.5)};
    for (size_t i = 0; i < std::size(rising); ++i) {
        for (size_t k = 0; k < std::size(rising); ++k) {
            EXPECT_EQ(rising[i] < rising[k], i < k);
            EXPECT_EQ(rising[i] >= rising[k], i >= k);
            EXPECT_EQ(rising[i] == rising[k], i == k);
        }
    }
    EXPECT_EQ(HugeFloat(1), HugeFloat(1, 5));
    EXPECT_EQ(HugeFloat(), HugeFloat(0, 5));
}

TEST(FloatQuestions, TellOnesIntegersAndSimilarZeros)
{
    EXPECT_TRUE(HugeFloat(1, 3).isOne() && HugeFloat(-1, 3).isMinusOne());
    EXPECT_FALSE(HugeFloat(2).isOne() || HugeFloat(-1).isOne() || HugeFloat().isOne());
    EXPECT_TRUE(HugeFloat(3, 2).isInteger() && HugeFloat(0).isInteger());
    EXPECT_TRUE(withExponent(1, highest).isInteger());
    EXPECT_FALSE(HugeFloat(3.5).isInteger() || HugeFloat(0.5).isInteger());
    EXPECT_TRUE(HugeFloat(0).isSimilarZero() && withExponent(1, -61).isSimilarZero());
    EXPECT_FALSE(withExponent(1, -60).isSimilarZero());
}
