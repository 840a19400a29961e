#include "numberTesting.h"
#include "numbers/limbsProduct.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

using namespace huge;

namespace {

using Limbs = std::vector<Limb>;
using huge::hashOf;

std::string hashOf(const Limbs& limbs)
{
    return hashOf(limbs.data(), limbs.size());
}

std::string hashOf(const HugeInteger& x)
{
    return hashOf(x.limbs(), x.size(), x.isNegative());
}

/// One line of the file: operands first, then what comes out.
class VectorLine {
public:
    explicit VectorLine(const std::string& line) : m_words(line) { m_words >> m_name; }
    const std::string& name() const { return m_name; }
    Limbs limbs()
    {
        char kind = 0;
        size_t n = 0;
        uint64_t seed = 0;
        m_words >> kind >> n >> seed;
        return recipeLimbs(kind, n, seed);
    }
    uint64_t number()
    {
        uint64_t value = 0;
        m_words >> value;
        return value;
    }
    std::string hash()
    {
        std::string word;
        m_words >> word;
        return word;
    }

private:
    std::istringstream m_words;
    std::string m_name;
};

void checkSumInPlace(const Limbs& a, const Limbs& b, const std::string& sum, bool reversed)
{
    Limbs inPlace = a;
    const Limb carry = limbsAddTo(inPlace.data(), a.size(), b.data(), b.size());
    inPlace.push_back(carry);
    EXPECT_EQ(hashOf(inPlace), sum);
    Limbs r(a.size());
    inPlace = a;
    EXPECT_EQ(limbsSubFrom(inPlace.data(), a.size(), b.data(), b.size()), Limb(reversed));
    limbsSub(a.data(), a.size(), b.data(), b.size(), r.data());
    EXPECT_EQ(inPlace, r);
}

void checkSum(VectorLine& line)
{
    const Limbs a = line.limbs();
    const Limbs b = line.limbs();
    const std::string sum = line.hash();
    const std::string difference = line.hash();
    const HugeInteger x = fromVector(a);
    const HugeInteger y = fromVector(b);
    Limbs r(std::max(a.size(), b.size()));
    r.push_back(limbsAdd(a.data(), a.size(), b.data(), b.size(), r.data()));
    EXPECT_EQ(hashOf(r), sum);
    if (a.size() >= b.size())
        checkSumInPlace(a, b, sum, x < y);
    EXPECT_EQ(hashOf(x + y), sum);
    EXPECT_EQ(hashOf(-(-x - y)), sum);
    EXPECT_EQ(hashOf(x - y), difference);
    EXPECT_EQ(hashOf(-(y - x)), difference);
    EXPECT_EQ(hashOf(x + -y), difference);
    HugeInteger z = x;
    EXPECT_EQ(hashOf(z += y), sum);
    EXPECT_EQ(z -= y, x);
    EXPECT_EQ(hashOf(z -= y), difference);
    EXPECT_EQ(x.compare(y), (x - y).isNegative() ? -1 : !(x - y).isZero());
    EXPECT_EQ((-x).compare(-y), -x.compare(y));
}

void checkProduct(VectorLine& line)
{
    const Limbs a = line.limbs();
    const Limbs b = line.limbs();
    const std::string product = line.hash();
    for (const bool swapped : {false, true}) {
        const Limbs& p = swapped ? b : a;
        const Limbs& q = swapped ? a : b;
        Limbs r(a.size() + b.size());
        limbsProduct(p.data(), p.size(), q.data(), q.size(), r.data());
        EXPECT_EQ(hashOf(r), product);
    }
    const HugeInteger x = fromVector(a);
    const HugeInteger y = fromVector(b);
    EXPECT_EQ(hashOf(x * y), product);
    EXPECT_EQ(-x * y, -(x * y));
    EXPECT_EQ((x * y).size(), x.isZero() || y.isZero() ? 1 : x.effectiveSize() + y.effectiveSize());
}

void checkDivision(VectorLine& line)
{
    const HugeInteger x = fromVector(line.limbs());
    const HugeInteger y = fromVector(line.limbs());
    const std::string quotient = line.hash();
    const std::string remainder = line.hash();
    EXPECT_EQ(hashOf(x / y), quotient);
    EXPECT_EQ(hashOf(x % y), remainder);
    EXPECT_EQ(-x / y * y + -x % y, -x);
    HugeInteger q = x;
    HugeInteger r = y;
    HugeInteger::divide(q, r, &q, &r); // the results take the operands' places
    EXPECT_EQ(q, x / y);
    EXPECT_EQ(r, x % y);
}

void checkLimb(VectorLine& line)
{
    const Limbs a = line.limbs();
    const Limbs b = line.limbs();
    const Limb m = line.number();
    const size_t n = a.size();
    Limbs r(n + 1);
    limbsMulLimb(a.data(), n, m, r.data());
    EXPECT_EQ(hashOf(r), line.hash());
    const std::string quotient = line.hash();
    const Limb rest = line.number();
    Limbs q(n);
    EXPECT_EQ(limbsDivLimb(a.data(), n, m, q.data()), rest);
    EXPECT_EQ(hashOf(q), quotient);
    q = a;
    EXPECT_EQ(limbsDivLimb(q.data(), n, m, q.data()), rest);
    EXPECT_EQ(hashOf(q), quotient);
    r = b;
    r.push_back(limbsAddMulLimb(r.data(), a.data(), n, m));
    EXPECT_EQ(hashOf(r), line.hash());
    r = b;
    const Limb taken = limbsSubMulLimb(r.data(), a.data(), n, m);
    EXPECT_EQ(hashOf(r), line.hash());
    EXPECT_EQ(taken, line.number());
}

void checkShift(VectorLine& line)
{
    const HugeInteger x = fromVector(line.limbs());
    const int64_t bits = int64_t(line.number());
    const std::string left = line.hash();
    const std::string right = line.hash();
    EXPECT_EQ(hashOf(x << bits), left);
    EXPECT_EQ(hashOf(x >> bits), right);
    EXPECT_EQ(hashOf(x >> -bits), left);
    EXPECT_EQ(hashOf(x << -bits), right);
}

void checkBits(VectorLine& line)
{
    const HugeInteger x = fromVector(line.limbs());
    const HugeInteger y = fromVector(line.limbs());
    EXPECT_EQ(hashOf(-x & y), line.hash());
    EXPECT_EQ(hashOf(x | -y), line.hash());
    EXPECT_EQ(hashOf(x ^ y), line.hash());
}

void checkText(VectorLine& line)
{
    const HugeInteger x = fromVector(line.limbs());
    for (const uint8_t radix : {10, 2, 8, 16}) {
        XFormatRule rule;
        rule.radix = radix;
        std::string text = x.fmt(rule);
        std::string expected = line.hash();
        if (text != "0") { // zero has no prefix
            EXPECT_EQ(hashOf(text), expected) << int(radix);
        }
        if (radix == 8 && text != "0")
            text[1] = 'o'; // the number reader's letter
        EXPECT_EQ(integer(text.c_str()), x) << int(radix);
    }
}

void checkGcd(VectorLine& line)
{
    HugeInteger x = fromVector(line.limbs());
    HugeInteger y = fromVector(line.limbs());
    const HugeInteger common = HugeInteger::fromUnsigned(line.number());
    x *= common;
    y *= common;
    EXPECT_EQ(hashOf(gcd(x, y)), line.hash());
    EXPECT_EQ(gcd(x, y), gcd(y, x));
    if (!x.isZero() && !y.isZero()) {
        EXPECT_EQ(lcm(x, y) * gcd(x, y), x * y);
    }
}

void checkRoot(VectorLine& line)
{
    const HugeInteger root = fromVector(line.limbs()).sqrt();
    const std::string exact = line.hash();
    EXPECT_TRUE(hashOf(root) == exact || hashOf(root - 1) == exact);
}

void checkPower(VectorLine& line)
{
    const HugeInteger x = fromVector(line.limbs());
    const int64_t exponent = int64_t(line.number());
    const HugeInteger power = x.pow(exponent);
    EXPECT_EQ(hashOf(power), line.hash());
    EXPECT_EQ((-x).pow(HugeInteger(exponent)), exponent % 2 != 0 ? -power : power);
}

} // namespace

TEST(IntegerVectors, AgreeWithIndependentArithmetic)
{
    const std::map<std::string, void (*)(VectorLine&)> checks = {
        {"sum", checkSum},     {"product", checkProduct}, {"division", checkDivision},
        {"limb", checkLimb},   {"shift", checkShift},     {"bits", checkBits},
        {"text", checkText},   {"gcd", checkGcd},         {"root", checkRoot},
        {"power", checkPower},
    };
    std::ifstream file(TAVIX_NUMBER_VECTORS);
    ASSERT_TRUE(file.is_open());
    size_t count = 0;
    for (std::string text; std::getline(file, text); ++count) {
        SCOPED_TRACE(text);
        VectorLine line(text);
        checks.at(line.name())(line);
    }
    EXPECT_GT(count, 900u);
}
