#include "numbers/HugeFloat.h"
#include "numbers/HugeImag.h"
#include "numbers/HugeMod.h"
#include "valueTesting.h"
#include "values/HugeVariant.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace huge {
namespace {

HugeVariant residue(int64_t value)
{
    return HugeMod(HugeInteger(value), HugeInteger(7));
}

// One value of each numeric class, all of them 1, in the order of the type codes.
std::vector<HugeVariant> ones()
{
    return {true, 1, 1.0, HugeImag(HugeFloat(1), HugeFloat(0)), residue(1)};
}

const char* const typeNames[] = {"boolean", "HugeInteger", "HugeFloat", "HugeImag", "HugeMod"};

struct Operator {
    const char* name;
    HugeVariant (*call)(const HugeVariant&, const HugeVariant&);
    bool isComparison;
};

const Operator operators[] = {
    {"add(+)", [](const HugeVariant& a, const HugeVariant& b) { return a + b; }, false},
    {"sub(-)", [](const HugeVariant& a, const HugeVariant& b) { return a - b; }, false},
    {"mul(*)", [](const HugeVariant& a, const HugeVariant& b) { return a * b; }, false},
    {"div(/)", [](const HugeVariant& a, const HugeVariant& b) { return a / b; }, false},
    {"per(%)", [](const HugeVariant& a, const HugeVariant& b) { return a % b; }, false},
    {"pow(^)", [](const HugeVariant& a, const HugeVariant& b) { return pow(a, b); }, false},
    {"equ(==)", [](const HugeVariant& a, const HugeVariant& b) { return HugeVariant(a == b); },
     true},
    {"greate(>)", [](const HugeVariant& a, const HugeVariant& b) { return HugeVariant(a > b); },
     true},
    {"greate_equ(>=)",
     [](const HugeVariant& a, const HugeVariant& b) { return HugeVariant(a >= b); }, true},
    {"less(<)", [](const HugeVariant& a, const HugeVariant& b) { return HugeVariant(a < b); },
     true},
    {"less_equ(<=)", [](const HugeVariant& a, const HugeVariant& b) { return HugeVariant(a <= b); },
     true},
};

/// What 1 and 1 of the classes a and b give, the higher class doing the work.
std::string expected(const Operator& op, size_t a, size_t b)
{
    const std::string name = op.name;
    const size_t worker = std::max(a, b);
    const bool isOrdering = op.isComparison && name != "equ(==)";
    if (worker == 0 || (worker == 3 && (isOrdering || name == "per(%)")))
        return std::string("failure: ") + typeNames[worker] + " is not suport " + name;
    // A complex operand is no residue and counts as 0.
    const int left = worker == 4 && a == 3 ? 0 : 1;
    const int right = worker == 4 && b == 3 ? 0 : 1;
    if (op.isComparison) {
        const bool result = name == "equ(==)"          ? left == right
                            : name == "greate(>)"      ? left > right
                            : name == "greate_equ(>=)" ? left >= right
                            : name == "less(<)"        ? left < right
                                                       : left <= right;
        return std::string("boolean: ") + (result ? "true" : "false");
    }
    if (right == 0 && name == "div(/)")
        return "failure: There is no inverse";
    if (right == 0 && name == "per(%)")
        return "failure: div with zero";
    // The remainder of residues is an integer, and 0 to the power 1 is what a complex base gives.
    const int result = name == "add(+)"   ? left + right
                       : name == "sub(-)" ? (left - right + 7) % 7
                       : name == "mul(*)" ? left * right
                       : name == "div(/)" ? left
                       : name == "per(%)" ? left % right
                       : right == 0       ? 1
                                          : left;
    const std::string type = worker == 4 && name == "per(%)" ? "HugeInteger" : typeNames[worker];
    return type + ": " + (worker == 3 && result == 0 ? "0i" : std::to_string(result));
}

TEST(Promotion, GivesTheWorkToTheHigherClassInBothOrders)
{
    const std::vector<HugeVariant> values = ones();
    for (const Operator& op : operators) {
        for (size_t a = 0; a < values.size(); ++a) {
            for (size_t b = 0; b < values.size(); ++b) {
                EXPECT_EQ(shown([&] { return op.call(values[a], values[b]); }), expected(op, a, b))
                    << typeNames[a] << " " << op.name << " " << typeNames[b];
            }
        }
    }
}

TEST(Promotion, TakesZeroForWhatHasNoConversion)
{
    const HugeVariant bytes(std::vector<uint8_t>{1, 2});
    EXPECT_EQ(shown([&] { return bytes + HugeVariant(5); }), "HugeInteger: 5");
    EXPECT_EQ(shown([&] { return HugeVariant(5) - bytes; }), "HugeInteger: 5");
    EXPECT_EQ(shown([&] { return bytes + HugeVariant(2.5); }), "HugeFloat: 2.5");
    EXPECT_EQ(shown([&] { return bytes + residue(3); }), "HugeMod: 3");
    EXPECT_EQ(shown([&] { return HugeVariant(2.5) + HugeVariant(); }), "HugeFloat: 2.5");
    EXPECT_EQ(shown([&] { return HugeVariant(2.5) / HugeVariant(); }), "failure: div by zero");
}

TEST(Promotion, HasNoBitOperationsBesideIntegers)
{
    const HugeVariant one(1);
    const HugeVariant real(1.0);
    EXPECT_EQ(shown([&] { return bitOr(HugeVariant(true), one); }),
              "failure: bitOr(|) only for Integer");
    EXPECT_EQ(shown([&] { return bitOr(one, real); }), "failure: HugeFloat is not suport bitOr(|)");
    EXPECT_EQ(shown([&] { return bitAnd(real, one); }),
              "failure: HugeFloat is not suport bitAnd(&)");
    EXPECT_EQ(shown([&] { return bitXor(real, real); }),
              "failure: HugeFloat is not suport bitXor(xor)");
    EXPECT_EQ(shown([&] { return ~real; }), "failure: HugeFloat is not suport bitNot(~)");
}

TEST(Promotion, ComparesByValueWhateverThePrecision)
{
    const HugeVariant wide(HugeInteger().fromText_("100000000000000000000000000000000000001"));
    const HugeVariant real = wide.asType(varFloat);
    EXPECT_TRUE(real == wide);
    EXPECT_TRUE(wide > HugeVariant(1e38));
    EXPECT_TRUE(HugeVariant(2.5) > HugeVariant(2));
    EXPECT_TRUE(HugeVariant(-3) < HugeVariant(-2.5));
    EXPECT_TRUE(residue(10) == HugeVariant(3));
}

} // namespace
} // namespace huge
