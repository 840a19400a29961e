#include "common/XException.h"
#include "common/XStop.h"
#include "numberTesting.h"
#include "numbers/numberTheory.h"
#include "numbers/quadraticSieve.h"

#include <gtest/gtest.h>

#include <numeric>
#include <utility>
#include <vector>

using namespace huge;

namespace {

std::string factorsOf(const HugeInteger& n)
{
    return factorText(primeFactors(n));
}

HugeInteger number(int64_t value)
{
    return HugeInteger(value);
}

const char* const limitText = "Number size must less than 20800";

} // namespace

TEST(Factors, AreTheKnownOnes)
{
    const std::pair<const char*, const char*> rows[] = {
        {"0", ""},
        {"1", ""},
        {"2", "2"},
        {"360", "2^3 * 3^2 * 5"},
        {"120", "2^3 * 3 * 5"},
        {"97", "97"},
        {"0x10000000000000000", "2^64"},
        {"16801801", "4099^2"}, // the first prime that trial division leaves
        {"16850989", "4099 * 4111"},
        {"18446744400127067027", "4294967311 * 4294967357"}, // primes beside 2^32
        {"18446744030759878681", "4294967291^2"},
        {"79228163344367823809576701231", "4294967311^3"},
        {"340282366920938461286658806734041124249", "18446744073709551557^2"},
        {"18446744073709551617", "274177 * 67280421310721"}, // 2^64 + 1
        {"340282366920938463463374607431768211457",          // 2^128 + 1
         "59649589127497217 * 5704689200685129054721"},
        {"2535301200456458802993406410751", "7432339208719 * 341117531003194129"}, // 2^101 - 1
    };
    for (const auto& [n, text] : rows) {
        EXPECT_EQ(factorsOf(integer(n)), text);
        EXPECT_EQ(factorsOf(-integer(n)), text);
    }
}

TEST(Factors, OfAFactorialAreThoseOfLegendre)
{
    const FactorTable table = primeFactors(factorial(number(6000)));
    EXPECT_EQ(table.size(), 783u);
    for (const auto& [prime, exponent] : table) {
        uint32_t expected = 0;
        for (int64_t rest = 6000 / prime.asInt64(); rest != 0; rest /= prime.asInt64())
            expected += uint32_t(rest);
        EXPECT_EQ(exponent, expected) << prime.toString();
    }
}

TEST(Factors, AreFoundWithHighExponents)
{
    const HugeInteger mersenne = number((int64_t(1) << 61) - 1);
    const HugeInteger n = number(10007 * 65537).pow(20) * mersenne.pow(6);
    EXPECT_EQ(factorsOf(n), "10007^20 * 65537^20 * 2305843009213693951^6");
    EXPECT_EQ(factorsOf(number(4294967291).pow(210)), "4294967291^210");
}

TEST(Factors, MultiplyBackAndArePrime)
{
    Stream stream(3);
    for (int i = 0; i < 60; ++i) {
        const HugeInteger n = fromVector(recipeLimbs('r', 1, stream.next())) >> (i % 40);
        HugeInteger product(1);
        for (const auto& [prime, exponent] : primeFactors(n)) {
            EXPECT_TRUE(isPrime(prime) && prime > 1);
            product *= prime.pow(int64_t(exponent));
        }
        EXPECT_EQ(product, n);
    }
}

TEST(Factors, AreAddedToATable)
{
    FactorTable table = primeFactors(number(12));
    factorize(number(-18), table);
    EXPECT_EQ(factorText(table), "2^3 * 3^3");
}

TEST(OneFactor, DividesACompositeNumberProperly)
{
    for (const int64_t n :
         std::vector<int64_t>{4, 6, 9, 15, 49, 16801801, 16850989, 4294967291 * 2147483647}) {
        const HugeInteger factor = pollardFactor(number(n));
        EXPECT_TRUE(factor > 1 && factor < number(n)) << n;
        EXPECT_EQ(number(n) % factor, 0) << n;
    }
    for (const int64_t n : {-15, 0, 1, 2, 3, 5, 65537})
        EXPECT_EQ(failureOf([&] { pollardFactor(number(n)); }),
                  "Only a composite number has a factor");
}

TEST(Totient, CountsWhatIsCoprime)
{
    for (int n = 1; n < 150; ++n) {
        int count = 0;
        for (int k = 1; k <= n; ++k)
            count += std::gcd(k, n) == 1;
        EXPECT_EQ(euler(number(n)), count) << n;
        EXPECT_EQ(euler(number(-n)), count) << n;
    }
    EXPECT_EQ(euler(HugeInteger()), 0);
    EXPECT_EQ(euler(integer("600851475143000")), integer("236477700480000"));
    EXPECT_EQ(euler(number(12), primeFactors(number(12))), 4);
}

TEST(Order, IsTheLeastExponent)
{
    for (int m = 1; m < 60; ++m) {
        for (int a = -m; a < 2 * m; ++a) {
            int expected = 0;
            if (std::gcd(m, a) == 1) {
                const int reduced = ((a % m) + m) % m;
                int power = reduced;
                for (expected = 1; power % m != 1 % m; ++expected)
                    power = power * reduced % m;
            }
            EXPECT_EQ(order(number(m), number(a)), expected) << a << " modulo " << m;
        }
    }
}

TEST(Order, IsRightForLongModuli)
{
    const HugeInteger ten(10);
    EXPECT_EQ(order(ten.pow(30) + 57, number(3)), integer("41666666666666666666666666669"));
    EXPECT_EQ(order(ten.pow(20), number(7)), integer("500000000000000000"));
    EXPECT_EQ(order(number(2).pow(89) - 1, number(2)), 89);
    EXPECT_EQ(order(number(2).pow(130), number(5)), number(2).pow(128));
    for (const int64_t m : {0, -7})
        EXPECT_EQ(failureOf([&] { order(number(m), number(3)); }), "The modulus must be positive");
}

TEST(PrimitiveRoot, IsTheLeastOneAndZeroWhereNothingIsPrime)
{
    const std::pair<const char*, int> rows[] = {
        {"2", 1},          {"3", 2},          {"5", 2},
        {"7", 3},          {"17", 3},         {"23", 5},
        {"41", 6},         {"71", 7},         {"191", 19},
        {"409", 21},       {"5881", 31},      {"36061", 2},
        {"4294967291", 2}, {"1000000007", 5}, {"18446744073709551557", 2},
        {"1", 0},          {"0", 0},          {"9", 0},
        {"561", 0},        {"4294967297", 0},
    };
    for (const auto& [p, root] : rows)
        EXPECT_EQ(primeRoot(integer(p)), root) << p;
    EXPECT_EQ(primeRoot(number(-7)), 0);
    EXPECT_EQ(primeRoot(number(-2)), 0);
}

TEST(Factorial, IsExactUpToTheLimit)
{
    for (const int n : {-5, 0, 1})
        EXPECT_EQ(factorial(number(n)), 1) << n;
    EXPECT_EQ(factorial(number(2)), 2);
    EXPECT_EQ(factorial(number(5)), 120);
    EXPECT_EQ(factorial(integer("25")), integer("15511210043330985984000000"));
    EXPECT_EQ(factorial(number(30)), integer("265252859812191058636308480000000"));
    // lb 88770! = 1331123.64...
    EXPECT_EQ(factorial(number(88770)).bitLength(), 1331124u);
    for (const char* n : {"88771", "1000000", "1000001", "0x10000000000000002"})
        EXPECT_EQ(failureOf([&] { factorial(integer(n)); }), limitText) << n;
    EXPECT_EQ(factorial(integer("-0x10000000000000002")), 1);
}

TEST(NumberTheory, StopsWhenItIsAskedTo)
{
    HugeInteger n;
    n.setBits_(0, 1022, true); // 2^1023 - 1
    const auto isStopped = [](auto&& work) {
        xstd::XStop::request();
        bool stopped = false;
        try {
            work();
        } catch (const xstd::XExceptionItems& failure) {
            stopped = xstd::XStop::isStop(failure);
        }
        xstd::XStop::clear();
        return stopped;
    };
    EXPECT_TRUE(isStopped([&] { primeFactors(n); }));
    EXPECT_TRUE(isStopped([&] { powMod(n, n, n + 2); }));
    EXPECT_TRUE(isStopped([&] { powMod(n, n, n + 1); }));
    EXPECT_TRUE(isStopped([&] { invMod(n - 1, n); }));
    EXPECT_TRUE(isStopped([&] { millerRabin(n, 20); }));
    EXPECT_TRUE(isStopped([&] { randomPrime(1000); }));
    EXPECT_TRUE(isStopped([&] { factorial(number(1000)); }));
}

// Two primes of equal length, where nothing but the length of the number counts.
TEST(QuadraticSieve, SplitsProductsOfTwoPrimes)
{
    struct Product {
        const char* p;
        const char* q;
    };
    // The next primes behind the powers of 2 and of 3 near these lengths.
    const Product products[] = {{"4294967311", "3486784409"},
                                {"1099511627791", "847288609457"},
                                {"281474976710677", "205891132094653"},
                                {"18446744073709551629", "12157665459056928919"}};
    for (const Product& product : products) {
        const HugeInteger p = integer(product.p);
        const HugeInteger q = integer(product.q);
        ASSERT_TRUE(isPrime(p) && isPrime(q)) << product.p;
        const HugeInteger found = sieveFactor((p * q).trim());
        EXPECT_TRUE(found == p || found == q) << found.toString();
    }
}
