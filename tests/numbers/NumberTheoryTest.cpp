#include "numbers/numberTheory.h"

#include "numberTesting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

using namespace huge;

namespace {

HugeInteger hex(const std::string& digits)
{
    return integer(("0x" + digits).c_str());
}

HugeInteger randomNumber(Stream& stream, size_t limbs)
{
    return fromVector(recipeLimbs('r', limbs, stream.next()));
}

const char* const noModulus = "The modulus must be positive";
const char* const noInverse = "There is no inverse";
const char* const limitText = "Number size must less than 20800";

} // namespace

TEST(ModularVectors, AgreeWithIndependentArithmetic)
{
    std::ifstream file(TAVIX_THEORY_VECTORS);
    ASSERT_TRUE(file.is_open());
    size_t count = 0;
    for (std::string text; std::getline(file, text); ++count) {
        SCOPED_TRACE(text);
        std::istringstream words(text);
        std::string name, a, e, m, result;
        words >> name >> a;
        if (name == "power") {
            words >> e >> m >> result;
            EXPECT_EQ(powMod(hex(a), hex(e), hex(m)), hex(result));
            continue;
        }
        words >> m >> result;
        if (result == "none") {
            EXPECT_EQ(failureOf([&] { invMod(hex(a), hex(m)); }), noInverse);
        } else {
            EXPECT_EQ(invMod(hex(a), hex(m)), hex(result));
            EXPECT_EQ(powMod(hex(a), HugeInteger(-1), hex(m)), hex(result));
        }
    }
    EXPECT_GT(count, 200u);
}

TEST(InverseModulo, HoldsForSignsBigOperandsAndModulusOne)
{
    EXPECT_EQ(invMod(HugeInteger(-3), HugeInteger(7)), 2);
    EXPECT_EQ(invMod(HugeInteger(10), HugeInteger(7)), 5);
    EXPECT_EQ(invMod(HugeInteger(3), HugeInteger(8)), 3);
    EXPECT_EQ(invMod(HugeInteger(5), HugeInteger(1)), 0);
    EXPECT_EQ(invMod(HugeInteger(0), HugeInteger(1)), 0);
    const HugeInteger m = integer("0xffffffffffffffff");
    EXPECT_EQ(invMod(m - 1, m), m - 1);
    EXPECT_EQ(invMod(HugeInteger(2), m), integer("0x8000000000000000"));
    EXPECT_EQ(invMod(HugeInteger(3, 5), HugeInteger(7, 9)).size(), 9u);
}

TEST(InverseModulo, FailsWhereThereIsNone)
{
    for (const int a : {0, 2, 6, -4, 12})
        EXPECT_EQ(failureOf([&] { invMod(HugeInteger(a), HugeInteger(12)); }), noInverse) << a;
    EXPECT_EQ(failureOf([] { invMod(HugeInteger(), integer("0x10000000000000000")); }), noInverse);
}

TEST(InverseModulo, TimesTheNumberIsOne)
{
    Stream stream(7);
    for (int i = 0; i < 200; ++i) {
        const HugeInteger m = randomNumber(stream, 1 + stream.next() % 12);
        const HugeInteger a = randomNumber(stream, 1 + stream.next() % 14);
        if (gcd(a, m).isOne()) {
            const HugeInteger inverse = invMod(a, m);
            EXPECT_EQ(mulMod(a, inverse, m), 1);
            EXPECT_LT(inverse, m);
            EXPECT_EQ(invMod(-a, m), m - inverse);
        }
    }
}

TEST(PowerModulo, TakesExponentsAndSignsAsTheyAre)
{
    EXPECT_EQ(powMod(HugeInteger(2), HugeInteger(-1), HugeInteger(7)), 4);
    EXPECT_EQ(powMod(HugeInteger(3), HugeInteger(-2), HugeInteger(7)), 4);
    EXPECT_EQ(powMod(HugeInteger(0), HugeInteger(0), HugeInteger(7)), 1);
    EXPECT_EQ(powMod(HugeInteger(5), HugeInteger(), HugeInteger(1)), 1);
    EXPECT_EQ(powMod(HugeInteger(9), HugeInteger(1), HugeInteger(7)), 9); // not reduced
    EXPECT_EQ(powMod(HugeInteger(9), HugeInteger(2), HugeInteger(1)), 0);
    EXPECT_EQ(powMod(HugeInteger(-2), HugeInteger(3), HugeInteger(7)), -1);
    EXPECT_EQ(powMod(HugeInteger(-2), HugeInteger(4), HugeInteger(7)), 2);
    EXPECT_EQ(powMod(HugeInteger(), HugeInteger(5), integer("0x10000000000000001")), 0);
    EXPECT_EQ(failureOf([] { powMod(HugeInteger(2), HugeInteger(-3), HugeInteger(6)); }),
              noInverse);
}

TEST(ProductModulo, MayBeLongerThanANumberBeforeItIsReduced)
{
    constexpr size_t bits = LimbPool::maxBits / 2 + 64;
    HugeInteger m;
    m.setBits_(0, bits - 1, true); // 2^bits - 1 turns powers of 2 round
    HugeInteger a;
    a.setBit_(bits - 1, true);
    EXPECT_EQ(mulMod(a, HugeInteger(2), m), 1);
    EXPECT_EQ(mulMod(a, -a, m), -(a >> 1));
}

TEST(Modulus, IsRefusedWhereItIsNotPositive)
{
    const HugeInteger two(2);
    for (const HugeInteger& m : {HugeInteger(), HugeInteger(0, 3), HugeInteger(-7)}) {
        EXPECT_EQ(failureOf([&] { invMod(two, m); }), noModulus);
        EXPECT_EQ(failureOf([&] { mulMod(two, two, m); }), noModulus);
        EXPECT_EQ(failureOf([&] { powMod(two, two, m); }), noModulus);
        EXPECT_EQ(failureOf([&] { isQuadratic(two, m); }), noModulus);
    }
    EXPECT_EQ(failureOf([&] { sqrtMod(two, HugeInteger(-7)); }), noModulus);
    EXPECT_EQ(sqrtMod(two, HugeInteger(0)), 0);
}

TEST(RootModulo, IsFoundForEverySquareModuloAPrime)
{
    // 1 modulo 8 with long runs of twos, 3 and 7 and 5 modulo 8
    for (const int p : {2, 3, 5, 7, 11, 13, 17, 41, 73, 97, 113, 193, 257, 641, 769}) {
        std::vector<bool> isSquare(p);
        for (int x = 1; x < p; ++x)
            isSquare[x * x % p] = true;
        for (int a = -p; a < 2 * p; ++a) {
            const HugeInteger root = sqrtMod(HugeInteger(a), HugeInteger(p));
            const int reduced = ((a % p) + p) % p;
            EXPECT_EQ(isQuadratic(HugeInteger(a), HugeInteger(p)), isSquare[reduced]);
            EXPECT_EQ(!root.isZero(), isSquare[reduced]) << a << " modulo " << p;
            if (isSquare[reduced]) {
                EXPECT_EQ(mulMod(root, root, HugeInteger(p)), reduced);
            }
        }
    }
    EXPECT_EQ(sqrtMod(HugeInteger(2), HugeInteger(7)), 4);
    EXPECT_EQ(sqrtMod(HugeInteger(3), HugeInteger(7)), 0);
}

TEST(RootModulo, SquaresBackModuloLongPrimes)
{
    Stream stream(11);
    for (const char* text :
         {"0xffffffff00000001", // 2^64 - 2^32 + 1: 32 twos in p - 1
          "0xffffffffffffffffffffffffffffffff000000000000000000000001", // P-224
          "0x7fffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffed",
          "0xfffffffffffffffffffffffffffffffffffffffffffffffffffffffefffffc2f"}) {
        const HugeInteger p = integer(text);
        for (int i = 0; i < 4; ++i) {
            const HugeInteger x = randomNumber(stream, 4) % p;
            const HugeInteger root = sqrtMod(x * x, p);
            EXPECT_TRUE(root == x || root == p - x) << text;
        }
    }
}

TEST(RootModulo, EndsForCompositeModuliAndIsNeverWrong)
{
    for (const int m : {1, 4, 6, 8, 9, 15, 21, 25, 33, 49, 65, 81, 105, 121, 169, 289, 341, 561}) {
        for (int a = 0; a < m; ++a) {
            const HugeInteger root = sqrtMod(HugeInteger(a), HugeInteger(m));
            if (!root.isZero()) {
                EXPECT_EQ(root * root % HugeInteger(m), a) << a << " modulo " << m;
            }
        }
    }
}

TEST(Primality, FollowsThisProgramsTraditionForSmallNumbers)
{
    const std::vector<int> primes = {-3, -2, -1, 1, 2, 3, 5, 7, 11, 13, 17, 19, 23, 29, 31, 37};
    for (int n = -40; n < 41; ++n) {
        const bool expected = std::find(primes.begin(), primes.end(), n) != primes.end();
        EXPECT_EQ(isPrime(HugeInteger(n)), expected) << n;
    }
    EXPECT_FALSE(isPrime(HugeInteger()));
    EXPECT_TRUE(isPrime(HugeInteger(7, 12)));
    for (const int n : {1, 2, 3, 5, 7, 9, 21, 4, -7, 0})
        EXPECT_EQ(millerRabin(HugeInteger(n), 20), n > 0 && n != 9 && n != 21 && n != 4) << n;
}

TEST(Primality, HoldsForPublishedPrimes)
{
    for (const char* text :
         {"65537", "4294967291", "4294967311", "2305843009213693951", // 2^61 - 1
          "18446744073709551557", "18446744073709551629",             // beside 2^64
          "0xffffffffffffffffffffffffffffff61",                       // 2^128 - 159
          "0x7fffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffed",
          "0xffffffff00000001000000000000000000000000ffffffffffffffffffffffff"}) {
        EXPECT_TRUE(isPrime(integer(text))) << text;
    }
    for (const int exponent : {89, 107, 127, 521, 607, 1279}) {
        HugeInteger mersenne;
        mersenne.setBits_(0, size_t(exponent) - 1, true);
        EXPECT_TRUE(isPrime(mersenne)) << exponent;
        EXPECT_FALSE(isPrime(mersenne - 2)) << exponent;
    }
}

TEST(Primality, IsNotFooledByPseudoprimes)
{
    for (const char* text :
         {"561", "41041", "825265", "321197185", "4294967297",          // Carmichael, Fermat's F5
          "2047", "1373653", "25326001", "3215031751", "2152302898747", // strong to bases 2 to 11
          "3474749660383", "341550071728321", "3825123056546413051",    // to 13, 17, 31
          "318665857834031151167461", "3317044064679887385961981",      // to 37, 41
          "1195068768795265792518361315725116351898245581"}) {          // Arnault's number
        EXPECT_FALSE(isPrime(integer(text))) << text;
    }
}

TEST(RandomPrime, IsPrimeAndNotTooLong)
{
    EXPECT_EQ(randomPrime(1), 1);
    for (const int bits : {2, 3, 8, 31, 32, 33, 64, 65, 200}) {
        const HugeInteger p = randomPrime(bits);
        EXPECT_TRUE(isPrime(p));
        EXPECT_LE(p.bitLength(), size_t(bits));
    }
    EXPECT_EQ(failureOf([] { randomPrime(0); }), "A random prime needs at least one bit");
    EXPECT_EQ(failureOf([] { randomPrime(-5); }), "A random prime needs at least one bit");
    EXPECT_EQ(failureOf([] { randomPrime(10'000'000); }), limitText);
    EXPECT_EQ(failureOf([] { randomPrime(INT64_MAX); }), limitText);
}

// Products modulo a long number are formed by other ways than short ones.
TEST(PowerModulo, OfLongModuliIsThatOfDivisions)
{
    for (const size_t n : {39, 40, 119, 120, 121, 261}) {
        for (const char kind : {'r', 'o', 'x', 'u'}) {
            const auto number = [&](uint64_t seed) {
                const std::vector<Limb> limbs = recipeLimbs(kind, n, seed);
                HugeInteger x;
                return x.fromLimbs_(limbs.data(), n);
            };
            const HugeInteger m = number(n).setBit_(0, true).setBit_(64 * n - 1, true);
            const HugeInteger a = number(n + 1);
            const uint64_t exponent = 0xF19A5;
            HugeInteger expected(1);
            for (int bit = 19; bit >= 0; --bit) {
                expected = expected * expected % m;
                if ((exponent >> bit & 1) != 0)
                    expected = expected * a % m;
            }
            EXPECT_EQ(powMod(a, HugeInteger(int64_t(exponent)), m), expected) << n << kind;
        }
    }
}

// Two numbers of unlike signs are divided step by step, since the count of steps gives the sign;
// others are taken down by halves where they are long.
TEST(CommonDivisor, OfLongNumbersIsThatOfDivisions)
{
    for (const size_t n : {199, 200, 201, 320, 640, 1001}) {
        for (const char kind : {'r', 'o', 't', 'x', 'u'}) {
            const auto number = [kind](size_t limbs, uint64_t seed) {
                const std::vector<Limb> source = recipeLimbs(kind, limbs, seed);
                HugeInteger x;
                return x.fromLimbs_(source.data(), limbs).setBit_(64 * limbs - 1, true);
            };
            const HugeInteger a = number(n, n);
            const HugeInteger b = number(n, n + 1) + 2;
            const HugeInteger shorter = number(n - n / 5, n + 2) - 1;
            const HugeInteger common = number(40, n + 3);
            EXPECT_EQ(gcd(a, b), gcd(a, -b).abs());
            EXPECT_EQ(gcd(shorter, a), gcd(-shorter, a).abs());
            EXPECT_EQ(gcd(-a, -a), -a);
            EXPECT_TRUE((gcd(a * common, shorter * common) % common).isZero());
            const HugeInteger m = a.isEven() ? a + 1 : a;
            if (gcd(b, m).isOne())
                EXPECT_EQ(mulMod(invMod(b, m), b, m), 1) << n << kind;
            else
                EXPECT_EQ(failureOf([&] { invMod(b, m); }), noInverse);
        }
    }
}
