#include "numberTesting.h"
#include "numbers/integerRoot.h"
#include "numbers/karatsubaProduct.h"
#include "numbers/limbsProduct.h"
#include "numbers/limbsQuotient.h"
#include "numbers/limbsRoot.h"
#include "numbers/plainProduct.h"
#include "numbers/recursiveQuotient.h"
#include "numbers/transformProduct.h"
#include "numbers/wordModular.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

// The fast ways to multiply, divide and take roots, against the plain ones over operands that make
// carries run: at, below and above the lengths where the ways change, and near the limb limit.

using namespace huge;

namespace {

using Limbs = std::vector<Limb>;

constexpr char kinds[] = {'r', 'o', 't', 'u', 'x'};

/// n limbs by a recipe of the vectors, with the top bit set.
Limbs operand(char kind, size_t n)
{
    static uint64_t seed = 0;
    Limbs limbs = recipeLimbs(kind, n, ++seed);
    limbs.back() |= Limb(1) << 63;
    return limbs;
}

Limbs plain(const Limbs& a, const Limbs& b)
{
    Limbs r(a.size() + b.size());
    const bool swapped = a.size() < b.size();
    const Limbs& longer = swapped ? b : a;
    const Limbs& shorter = swapped ? a : b;
    plainProduct(longer.data(), longer.size(), shorter.data(), shorter.size(), r.data());
    return r;
}

/// Modulo 2^61 - 1, where 2^64 is 8: independent of every way to multiply.
uint64_t residue(const Limbs& a)
{
    constexpr uint64_t prime = (uint64_t(1) << 61) - 1;
    uint64_t r = 0;
    for (size_t i = a.size(); i-- > 0;)
        r = uint64_t((Limb128(r) * 8 + a[i]) % prime);
    return r;
}

struct Lengths {
    size_t nA;
    size_t nB;
};

} // namespace

TEST(FastProduct, EqualsThePlainProduct)
{
    const Lengths lengths[] = {{1, 1},       {2, 1},       {29, 29},     {30, 30},     {31, 31},
                               {43, 43},     {44, 44},     {61, 60},     {90, 31},     {127, 127},
                               {200, 64},    {333, 30},    {1199, 7},    {1199, 1199}, {1200, 1200},
                               {1201, 1200}, {2900, 1300}, {5000, 1201}, {64, 1500}};
    for (const Lengths& n : lengths) {
        for (const char first : kinds) {
            for (const char second : kinds) {
                const Limbs a = operand(first, n.nA);
                const Limbs b = operand(second, n.nB);
                Limbs r(n.nA + n.nB, 0xABCD);
                limbsProduct(a.data(), n.nA, b.data(), n.nB, r.data());
                ASSERT_EQ(r, plain(a, b)) << n.nA << " by " << n.nB << " limbs";
            }
        }
    }
    Limbs r(3, 1);
    limbsProduct(r.data(), 0, nullptr, 0, r.data());
    limbsProduct(operand('o', 3).data(), 3, nullptr, 0, r.data());
    EXPECT_EQ(r, Limbs(3));
}

TEST(FastProduct, ASquareIsTheProductOfANumberWithItself)
{
    for (const size_t n : {1, 2, 3, 43, 44, 45, 89, 300, 1199, 1200, 2047}) {
        for (const char kind : kinds) {
            const Limbs a = operand(kind, n);
            Limbs r(2 * n, 7);
            limbsProduct(a.data(), n, a.data(), n, r.data());
            ASSERT_EQ(r, plain(a, a)) << n;
            plainSquare(a.data(), n, r.data());
            ASSERT_EQ(r, plain(a, a)) << n;
        }
    }
}

// Each shape of a transform: without a tail, with one of a quarter and of a half, and each count of
// bits of a digit at the length where it changes.
TEST(TransformProduct, AgreesWithOtherWaysForEveryShape)
{
    for (size_t n : {1, 2, 5, 9, 40, 130, 160, 200, 250, 910, 911, 912, 913, 3580, 3590}) {
        const Limbs ones = operand('o', n);
        for (const char kind : {'r', 'o', 'x'}) {
            const Limbs a = operand(kind, n);
            Limbs area(transformProductArea(n, n));
            Limbs r(2 * n);
            Limbs other(2 * n);
            Limbs spare(karatsubaArea(n));
            transformProduct(a.data(), n, ones.data(), n, r.data(), area.data());
            karatsubaProduct(a.data(), ones.data(), n, other.data(), spare.data());
            ASSERT_EQ(r, other) << n;
        }
    }
}

TEST(TransformProduct, LongProductsAgreeModuloAMersennePrime)
{
    constexpr uint64_t prime = (uint64_t(1) << 61) - 1;
    for (const Lengths& n :
         {Lengths{14000, 7000}, {13900, 14100}, {20850, 20850}, {20850, 20000}}) {
        for (const char kind : {'r', 'o', 'u'}) {
            const Limbs a = operand(kind, n.nA);
            const Limbs b = operand(kind, n.nB);
            Limbs r(n.nA + n.nB);
            limbsProduct(a.data(), n.nA, b.data(), n.nB, r.data());
            EXPECT_EQ(residue(r), mulMod64(residue(a), residue(b), prime));
        }
    }
}

TEST(FastQuotient, EqualsThePlainQuotient)
{
    const Lengths lengths[] = {{2, 1},      {127, 63},   {128, 64},  {129, 65},
                               {200, 64},   {300, 100},  {700, 65},  {400, 330},
                               {1000, 930}, {1031, 515}, {2000, 900}};
    for (const Lengths& n : lengths) {
        for (const char first : kinds) {
            for (const char second : kinds) {
                Limbs num = operand(first, n.nA);
                const Limbs den = operand(second, n.nB);
                // The top limbs of both alike: every trial digit is the largest.
                if (first == 'x')
                    std::copy(den.begin(), den.end(), num.end() - std::ptrdiff_t(n.nB));
                Limbs plainNum = num;
                Limbs digits(n.nA - n.nB);
                Limbs plainDigits(n.nA - n.nB);
                const Limb top = limbsQuotient(num.data(), n.nA, den.data(), n.nB, digits.data());
                const Limb plainTop =
                    limbsDiv(plainNum.data(), n.nA, den.data(), n.nB, plainDigits.data());
                ASSERT_EQ(top, plainTop);
                ASSERT_EQ(digits, plainDigits) << n.nA << " by " << n.nB << " limbs";
                ASSERT_EQ(num, plainNum);
            }
        }
    }
}

TEST(FastQuotient, TakenTimesTheDivisorWithTheRemainderGivesTheDividend)
{
    constexpr uint64_t prime = (uint64_t(1) << 61) - 1;
    for (const Lengths& n : {Lengths{20000, 10000}, {20800, 5001}, {20800, 15000}, {9000, 64}}) {
        for (const char kind : kinds) {
            Limbs num = operand(kind, n.nA);
            const Limbs den = operand('r', n.nB);
            const uint64_t expected = residue(num);
            Limbs digits(n.nA - n.nB + 1);
            digits.back() = limbsQuotient(num.data(), n.nA, den.data(), n.nB, digits.data());
            EXPECT_LT(limbsCompare(num.data(), den.data(), n.nB), 0);
            EXPECT_TRUE(limbsIsZero(num.data() + n.nB, n.nA - n.nB));
            EXPECT_EQ((mulMod64(residue(digits), residue(den), prime) + residue(num)) % prime,
                      expected);
        }
    }
}

TEST(FastRoot, SquaredWithTheRestGivesTheNumber)
{
    constexpr uint64_t prime = (uint64_t(1) << 61) - 1;
    for (const size_t n : {1, 2, 3, 127, 128, 129, 500, 5000, 10400}) {
        for (const char kind : kinds) {
            Limbs number = operand(kind, 2 * n);
            const uint64_t expected = residue(number);
            Limbs root(n);
            Limbs area(limbsRootArea(n));
            const Limb above = limbsRoot(number.data(), n, root.data(), area.data());
            Limbs rest(number.begin(), number.begin() + std::ptrdiff_t(n));
            rest.push_back(above);
            EXPECT_EQ((mulMod64(residue(root), residue(root), prime) + residue(rest)) % prime,
                      expected);
            // The rest is at most twice the root.
            Limbs twice(n + 1);
            limbsShlGrow(root.data(), n, 1, twice.data());
            EXPECT_LE(limbsCompare(rest.data(), twice.data(), n + 1), 0) << n;
        }
    }
}

// Limb counts are part of the result, and so is the one more below the next square.
TEST(FastRoot, OfAnIntegerIsThatOfThePlainIteration)
{
    Stream stream(11);
    for (int round = 0; round < 300; ++round) {
        const int64_t bits = int64_t(64 * 12 + stream.next() % 2000);
        HugeInteger random;
        random.randomBits_(size_t(bits), true);
        const HugeInteger root = random.sqrt();
        const HugeInteger power = HugeInteger(2).pow(bits);
        for (const HugeInteger& x :
             {random, root * root, root * root - 1, root * root + root * 2, power, power - 1,
              power - HugeInteger(2).pow(int64_t(stream.next() % uint64_t(bits - 1)))}) {
            const HugeInteger fast = x.sqrt();
            const HugeInteger plain = plainRoot(x);
            ASSERT_EQ(fast, plain);
            ASSERT_EQ(fast.size(), plain.size()) << x.bitLength() << " bits";
        }
    }
}
