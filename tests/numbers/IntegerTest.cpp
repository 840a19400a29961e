#include "common/XException.h"
#include "common/XStop.h"
#include "numberTesting.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace huge;

namespace {

const char limitText[] = "Number size must less than 20800";
constexpr int64_t lowest = std::numeric_limits<int64_t>::min();

/// 2^(64 * limbs) - 1: every limb is all ones.
HugeInteger allOnes(size_t limbs)
{
    HugeInteger x(0, limbs);
    return x.setBits_(0, 64 * limbs - 1, true);
}

} // namespace

TEST(IntegerZero, HasManyShapesThatAreEqual)
{
    const HugeInteger null;
    const HugeInteger one(0);
    const HugeInteger ten(0, 10);
    EXPECT_TRUE(null.isNull() && !one.isNull());
    EXPECT_EQ(ten.size(), 10u);
    for (const HugeInteger* zero : {&null, &one, &ten}) {
        EXPECT_TRUE(zero->isZero());
        EXPECT_EQ(*zero, null);
        EXPECT_EQ(*zero, 0);
        EXPECT_EQ(zero->bitLength(), 0u);
        EXPECT_EQ(zero->toString(), "0");
        EXPECT_EQ(zero->asDouble(), 0.0);
        EXPECT_EQ(zero->asInt64(), 0);
        EXPECT_EQ((*zero * HugeInteger(5)).size(), 1u);
        EXPECT_EQ(*zero + HugeInteger(-5), -5);
        EXPECT_EQ(HugeInteger(5) - *zero, 5);
        EXPECT_FALSE((-*zero).isNegative());
        EXPECT_GT(*zero, HugeInteger(-1));
        EXPECT_LT(*zero, HugeInteger(1));
    }
}

TEST(IntegerZero, NeverKeepsTheSign)
{
    const HugeInteger x = integer("-123456789012345678901234567890");
    EXPECT_FALSE((x - x).isNegative());
    EXPECT_FALSE((x / x - 1).isNegative());
    EXPECT_FALSE((x % x).isNegative());
    HugeInteger y = x;
    EXPECT_FALSE((y -= x).isNegative());
    y = -1;
    EXPECT_FALSE((y >>= 1).isNegative());
    y = -1;
    EXPECT_FALSE((--y).isNegative());
}

struct DivisionCase {
    const char* a;
    const char* b;
    const char* quotient;
    const char* remainder;
};
class Division : public ::testing::TestWithParam<DivisionCase> {};

TEST_P(Division, TruncatesAndTheRemainderTakesTheDividendsSign)
{
    const DivisionCase& row = GetParam();
    EXPECT_EQ(integer(row.a) / integer(row.b), integer(row.quotient));
    EXPECT_EQ(integer(row.a) % integer(row.b), integer(row.remainder));
}

INSTANTIATE_TEST_SUITE_P(Signs, Division,
                         ::testing::ValuesIn(std::vector<DivisionCase>{
                             {"-7", "2", "-3", "-1"},
                             {"7", "-2", "-3", "1"},
                             {"-7", "-2", "3", "-1"},
                             {"-5", "7", "0", "-5"},
                             {"-0x10000000000000000", "0x8000000000000000", "-2", "0"},
                             {"0x10000000000000000", "-3", "-0x5555555555555555", "1"}}));
INSTANTIATE_TEST_SUITE_P(
    TrialDigit, Division,
    ::testing::ValuesIn(std::vector<DivisionCase>{
        {"0x7fffffffffffffffffffffffffffffff0000000000000000", "0x8000000000000000ffffffffffffffff",
         "0xfffffffffffffffe", "0x1fffffffffffffffe"},
        {"0x800000000000000000000000000000000000000000000000",
         "0x800000000000000000000000000000010000000000000001", "0",
         "0x800000000000000000000000000000000000000000000000"},
        {"0x8000000000000000000000000000000100000000000000000000000000000000",
         "0x800000000000000000000000000000010000000000000001", "0xffffffffffffffff",
         "0x800000000000000000000000000000000000000000000001"}}));

TEST(IntegerDivision, RemaindersHaveTheDivisorsLimbs)
{
    const HugeInteger a = integer("0x1234567890abcdef00000000000000000000000000000001");
    EXPECT_EQ((a / HugeInteger(7)).size(), 3u);
    EXPECT_EQ((a % HugeInteger(7)).size(), 1u);
    HugeInteger divisor = integer("0x10000000000000000");
    divisor.grow_(9);
    EXPECT_EQ((a % divisor).size(), 2u); // its effective limbs, spare ones do not count
    EXPECT_EQ((HugeInteger(5, 8) % divisor).size(), 1u);
    EXPECT_EQ((HugeInteger(5, 8) / divisor).size(), 1u);
}

TEST(IntegerWithPlainOperand, TakesTheLowestInteger)
{
    const HugeInteger x = integer("9223372036854775808");
    for (const int64_t plain : {lowest, int64_t(-1), int64_t(1), int64_t(10), -(lowest + 1)}) {
        const HugeInteger y(plain);
        for (const HugeInteger& a : {x, -x, HugeInteger(3), HugeInteger(-3), x * x}) {
            EXPECT_EQ(a + plain, a + y);
            EXPECT_EQ(a - plain, a - y);
            EXPECT_EQ(a * plain, a * y);
            EXPECT_EQ(a / plain, a / y);
            EXPECT_EQ(a % plain, a % y);
            EXPECT_EQ(a.compare(plain), a.compare(y));
            HugeInteger z = a;
            EXPECT_EQ((z += plain) -= plain, a);
        }
    }
    EXPECT_EQ(-x, lowest);
    EXPECT_EQ((-x).toString(), "-9223372036854775808");
    EXPECT_EQ((-x).asInt64(), lowest);
    EXPECT_EQ((-x) / int64_t(-1), x);
}

TEST(IntegerOrder, ReversesBelowZero)
{
    const HugeInteger small = integer("-0x30000000000000000");
    EXPECT_LT(HugeInteger(-5), HugeInteger(-3));
    EXPECT_FALSE(HugeInteger(-3) < HugeInteger(-5));
    EXPECT_LT(small, HugeInteger(-5));
    EXPECT_GT(-small, HugeInteger(5, 12));
    EXPECT_LT(small, int64_t(-5));
    EXPECT_GE(HugeInteger(7, 3), 7);
    EXPECT_NE(HugeInteger(7), HugeInteger(-7));
}

TEST(IntegerSum, GrowsOnlyForACarry)
{
    EXPECT_EQ((allOnes(3) + 1).size(), 4u);
    EXPECT_EQ((allOnes(3) - 1).size(), 3u);
    EXPECT_EQ((HugeInteger(1, 5) + 1).size(), 5u);
    HugeInteger x = allOnes(1);
    EXPECT_EQ((x += x), integer("0x1fffffffffffffffe"));
    EXPECT_EQ((x -= x), 0);
    x = -5;
    EXPECT_EQ((x += allOnes(2)), integer("0xfffffffffffffffffffffffffffffffa"));
}

TEST(IntegerStep, ActsOnTheMagnitudeAndDropsTheCarry)
{
    HugeInteger x(-3);
    EXPECT_EQ(++x, -4);
    EXPECT_EQ(x--, -4);
    EXPECT_EQ(x, -3);
    x = allOnes(2);
    EXPECT_EQ(++x, 0);
    EXPECT_EQ(--x, allOnes(2));
}

TEST(IntegerBits, KeepTheLimbCount)
{
    EXPECT_EQ(HugeInteger(1) << 64, 0);
    EXPECT_EQ(HugeInteger(1, 2) << 64, integer("0x10000000000000000"));
    EXPECT_EQ(HugeInteger(-5) << 1, -10);
    EXPECT_EQ(HugeInteger(5) << lowest, 0);
    EXPECT_EQ(HugeInteger(5) >> lowest, 0);
    EXPECT_EQ(~HugeInteger(5), integer("0xFFFFFFFFFFFFFFFA"));
    EXPECT_EQ((~HugeInteger(5, 3)).bitLength(), 192u);
    EXPECT_EQ(HugeInteger(-6) & HugeInteger(-3), 2);
    EXPECT_EQ(HugeInteger() | HugeInteger(5), 5);
    EXPECT_EQ(HugeInteger() & HugeInteger(5), 0);
    HugeInteger x(0, 2);
    x.setBits_(60, 67, true).setBit_(63, false);
    EXPECT_EQ(x, integer("0xf7000000000000000"));
    EXPECT_TRUE(x.testBit(67) && !x.testBit(63) && !x.testBit(68) && !x.testBit(1000));
    EXPECT_EQ(x.setBit_(200, true).size(), 4u);
    EXPECT_EQ(x.setBits_(61, 100000, false), integer("0x1000000000000000"));
}

TEST(IntegerDouble, TruncatesAndSaturates)
{
    EXPECT_EQ(HugeInteger(1).asDouble(), 1.0);
    EXPECT_EQ(HugeInteger(-1, 4).asDouble(), -1.0);
    EXPECT_EQ(integer("0x3fffffffffffff").asDouble(), 18014398509481982.0); // 2^54 - 2
    EXPECT_EQ(HugeInteger(2).pow(1023).asDouble(), std::ldexp(1.0, 1023));
    EXPECT_EQ(allOnes(16).asDouble(), std::numeric_limits<double>::max());
    EXPECT_EQ(allOnes(17).asDouble(), std::numeric_limits<double>::infinity());
    EXPECT_EQ((-HugeInteger(2).pow(1024)).asDouble(), -std::numeric_limits<double>::infinity());
}

TEST(IntegerPower, FollowsParityAndStopsAtTheLastBit)
{
    EXPECT_EQ(HugeInteger(0).pow(0), 1);
    EXPECT_EQ(HugeInteger().pow(5), 0);
    EXPECT_EQ(HugeInteger(-2).pow(3), -8);
    EXPECT_EQ(HugeInteger(-2).pow(10), 1024);
    EXPECT_EQ(HugeInteger(-1).pow(std::numeric_limits<int64_t>::max()), -1);
    EXPECT_EQ(HugeInteger(-1).pow(integer("0x10000000000000001")), -1);
    EXPECT_EQ(HugeInteger(-1).pow(integer("0x10000000000000000")), 1);
    EXPECT_EQ(HugeInteger(2).pow(1048576).bitLength(), 1048577u);
    EXPECT_EQ(failureOf([] { HugeInteger(2).pow(-1); }), "Power exponent can't be negative!");
    EXPECT_EQ(failureOf([] { HugeInteger(2).pow(integer("-0x10000000000000001")); }),
              "Power exponent can't be negative!");
}

TEST(IntegerRoot, IsExactForSquares)
{
    for (const char* text : {"4", "9", "144", "1000000000000", "0x40000000000000000000000000"}) {
        const HugeInteger root = integer(text).sqrt();
        EXPECT_EQ(root * root, integer(text)) << text;
    }
    EXPECT_EQ(HugeInteger(0, 3).sqrt(), 0);
    EXPECT_EQ(HugeInteger(1).sqrt(), 1);
    EXPECT_EQ(failureOf([] { HugeInteger(-4).sqrt(); }), "Negative numbers cannot be squared");
}

TEST(IntegerLimit, IsReachedAndRefusedByEveryRoad)
{
    const HugeInteger longest = allOnes(20799);
    EXPECT_EQ(longest.size(), 20799u);
    EXPECT_EQ(failureOf([] { HugeInteger(1, 20800); }), limitText);
    EXPECT_EQ(failureOf([&] { return longest + 1; }), limitText);
    EXPECT_EQ(failureOf([&] { return longest * 2; }), limitText);
    EXPECT_EQ(failureOf([&] { return longest * longest; }), limitText);
    EXPECT_EQ(failureOf([&] { return longest.pow(2); }), limitText);
    HugeInteger x = longest;
    EXPECT_EQ(failureOf([&] { x += HugeInteger(1); }), limitText);
    EXPECT_EQ(failureOf([&] { x += x; }), limitText);
    EXPECT_EQ(failureOf([&] { x.grow_(20800); }), limitText);
    EXPECT_EQ(failureOf([&] { x.setBit_(1331136, true); }), limitText);
    EXPECT_EQ(failureOf([&] { x.randomBits_(~size_t(0), true); }), limitText);
    EXPECT_TRUE(x == longest); // a failure leaves the number whole
    EXPECT_EQ(HugeInteger(2).pow(1331135).bitLength(), 1331136u);
    EXPECT_EQ(failureOf([] { HugeInteger(2).pow(1331136); }), limitText);
    EXPECT_EQ(failureOf([] { HugeInteger(3).pow(int64_t(1) << 62); }), limitText);
    EXPECT_EQ(failureOf([] { HugeInteger(-2).pow(integer("0x10000000000000000")); }), limitText);
}

TEST(IntegerLimit, ASpareTopLimbOfAProductDoesNotFail)
{
    HugeInteger x(1, 10400);
    x <<= 64 * 10399;
    const HugeInteger square = x * x; // 20,800 limbs by the rule, of which the top one is spare
    EXPECT_EQ(square.size(), 20799u);
    EXPECT_EQ(square.bitLength(), 64u * 20798 + 1);
    EXPECT_TRUE(square / x == x);
    EXPECT_TRUE((square * 1).size() == 20799u);
}

TEST(IntegerFailure, DivisionByZeroChangesNothing)
{
    HugeInteger x(5);
    for (const HugeInteger& zero : {HugeInteger(), HugeInteger(0), HugeInteger(0, 4)}) {
        EXPECT_EQ(failureOf([&] { x /= zero; }), "div with zero");
        EXPECT_EQ(failureOf([&] { x %= zero; }), "div with zero");
    }
    EXPECT_EQ(failureOf([&] { x /= 0; }), "div with zero");
    EXPECT_EQ(failureOf([&] { return lcm(HugeInteger(0), HugeInteger(0)); }), "div with zero");
    EXPECT_EQ(x, 5);
}

TEST(IntegerStop, LeavesALongProduct)
{
    const HugeInteger x = allOnes(3000);
    xstd::XStop::request();
    EXPECT_THROW(x * x, xstd::XExceptionItems);
    EXPECT_THROW(x.toString(), xstd::XExceptionItems);
    EXPECT_EQ(HugeInteger(2) + 2, 4); // short work is not disturbed
    xstd::XStop::clear();
    EXPECT_EQ((x * x).bitLength(), 64u * 6000);
}

TEST(IntegerGcd, KeepsTheSignOfTheLastRemainder)
{
    EXPECT_EQ(gcd(HugeInteger(-4), HugeInteger(6)), 2);
    EXPECT_EQ(gcd(HugeInteger(4), HugeInteger(-6)), -2);
    EXPECT_EQ(gcd(HugeInteger(-12), HugeInteger(0)), -12);
    EXPECT_EQ(gcd(HugeInteger(0), HugeInteger(12)), 12);
    EXPECT_EQ(lcm(HugeInteger(4), HugeInteger(6)), 12);
}

TEST(IntegerGcd, AgreesWithStepByStepRemainders)
{
    Stream stream(7);
    for (int i = 0; i < 400; ++i) {
        HugeInteger x = fromVector(recipeLimbs(i % 2 ? 'r' : 'x', stream.next() % 12 + 1, i));
        HugeInteger y = fromVector(recipeLimbs(i % 3 ? 'r' : 'x', stream.next() % 12 + 1, i + 999));
        x.setNegative_(stream.next() % 2 != 0);
        y.setNegative_(stream.next() % 2 != 0);
        const HugeInteger fast = gcd(x, y);
        while (!y.isZero()) {
            x %= y;
            x.swap(y);
        }
        EXPECT_EQ(fast, x) << i;
    }
}

TEST(IntegerRandom, HasTheBitsAskedFor)
{
    HugeInteger x;
    EXPECT_EQ(x.randomBits_(70, true).bitLength(), 70u);
    EXPECT_EQ(x.size(), 2u);
    EXPECT_EQ(x.randomBits_(64, true).bitLength(), 64u);
    EXPECT_EQ(x.size(), 2u); // a longer block stays
    EXPECT_EQ(x.setSize_(3, false).randomFull_(true).bitLength(), 192u);
    for (int i = 0; i < 100; ++i)
        EXPECT_LE(x.randomBits_(5, false).bitLength(), 5u);
    EXPECT_EQ(x.randomBits_(0, true), 0);
}

TEST(IntegerImage, IsReadBackAsItWasWritten)
{
    HugeInteger x = integer("-0x123456789abcdef01");
    x.grow_(4);
    EXPECT_EQ(x.headerWord(), 0x10004u);
    const uint8_t bytes[] = {0x01, 0xef, 0xcd, 0xab, 0x89, 0x67, 0x45, 0x23, 0x01};
    const HugeInteger back = HugeInteger::fromHeaderAndBytes(x.headerWord(), bytes, sizeof bytes);
    EXPECT_EQ(back, x);
    EXPECT_EQ(back.headerWord(), x.headerWord());
    EXPECT_EQ(HugeInteger::fromHeaderAndBytes(0x10001, bytes, 0).isNegative(), false);
    EXPECT_EQ(failureOf([&] { HugeInteger::fromHeaderAndBytes(1, bytes, 9); }),
              "A number has more bytes than its limb count allows");
    EXPECT_EQ(failureOf([&] { HugeInteger::fromHeaderAndBytes(0xFFFF, bytes, 9); }), limitText);
}

TEST(IntegerCopy, StandsAlone)
{
    HugeInteger x = integer("0x10000000000000001");
    HugeInteger copy = x;
    copy += 1;
    EXPECT_NE(copy, x);
    const HugeInteger moved = std::move(copy);
    EXPECT_TRUE(copy.isNull()); // NOLINT: a moved number is null, by contract
    EXPECT_EQ(moved, x + 1);
    HugeInteger& self = x;
    x = self;
    EXPECT_EQ(x, moved - 1);
    EXPECT_EQ(HugeInteger(3, 9).trim().size(), 1u);
    EXPECT_EQ(x.fromLimbs_(x.limbs() + 1, 1, 3), 1);
}
