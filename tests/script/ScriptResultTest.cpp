#include "common/XException.h"
#include "script/XScript.h"
#include "script/XScriptEnvBase.h"

#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <vector>

namespace huge {
namespace {

/// The text of a script's result, "null", or the first message of its failure.
xstd::XString resultOf(const xstd::XString& source)
{
    try {
        XScript script(source);
        script.compile();
        const HugeVariant result = script.run(std::make_shared<XScriptEnv_base>());
        EXPECT_FALSE(result.isRef());
        return result.isNull() ? xstd::XString("null") : result.toString();
    } catch (const xstd::XExceptionItems& failure) {
        return "failure: " + failure.mess();
    }
}

struct ScriptCase {
    const char* source;
    const char* result;
};
void PrintTo(const ScriptCase& row, std::ostream* out)
{
    *out << row.source;
}

class Script : public ::testing::TestWithParam<ScriptCase> {};

TEST_P(Script, Gives)
{
    EXPECT_EQ(resultOf(GetParam().source), GetParam().result) << GetParam().source;
}

// A program that names its accumulator runs as it stands, with no value left out or moved early.
TEST_P(Script, GivesTheSameWithoutShortCuts)
{
    const xstd::XString source = GetParam().source;
    const bool isEmpty = source.empty() || source.left(2) == "//";
    EXPECT_EQ(resultOf((isEmpty ? "" : "&max(1) + 1; ") + source), GetParam().result) << source;
}

using Rows = std::vector<ScriptCase>;

INSTANTIATE_TEST_SUITE_P(Results, Script,
                         ::testing::ValuesIn(Rows{{"", "null"},
                                                  {"// nothing", "null"},
                                                  {"5", "5"},
                                                  {"var a = 1, b = a + 1; b", "2"},
                                                  {"{ var a = 1; a }", "1"},
                                                  {"return;", "0"},
                                                  {"return 7; 8", "7"},
                                                  {"if (1) 5; else 6;", "5"},
                                                  {"if (0) 5; else 6;", "6"},
                                                  {"if (0) 1; else if (2) 22; else 3;", "22"},
                                                  {"if (var x = 4; x) x", "4"},
                                                  {"iif('', 1, 2)", "2"},
                                                  {"iif(1 < 2, 10, 1 / 0)", "10"},
                                                  {"1; if (0) { 2 }", "0"},
                                                  {"var a; a", "null"}}));

INSTANTIATE_TEST_SUITE_P(Operators, Script,
                         ::testing::ValuesIn(Rows{
                             {"1 + 2 * 3", "7"},
                             {"-2 ** 2", "-4"},
                             {"2 ** 3 ** 2", "64"},
                             {"2 ^ 10", "1024"},
                             {"7 / 2", "3"},
                             {"-7 % 3", "-1"},
                             {"2 ** 100 - 1", "1267650600228229401496703205375"},
                             {"5 | 6 & 3", "3"},
                             {"6 ^| 3", "5"},
                             {"1 << 4 >> 2", "4"},
                             {"~0 & 255", "255"},
                             {"!0", "true"},
                             {"!'x'", "false"},
                             {"1 == 1", "true"},
                             {"1 != 1", "false"},
                             {"3 > 2", "true"},
                             {"3 <= 2", "false"},
                             {"3 >= 3", "true"},
                             {"-1 < 1", "true"},
                             {"1 && 0", "false"},
                             {"2 && 3", "true"},
                             {"0 || 3", "true"},
                             {"0 || 0", "false"},
                             {"1 && 0 || 1", "true"},
                             {"0 && 1 / 0", "false"},
                             {"1 || 1 / 0", "true"},
                             {"'a' + 'b' * 2", "abb"},
                             {"3 * 'ab'", "ababab"},
                             {"'0x1F' + 0", "0x1F0"},
                             {"9223372036854775807 + 1", "9223372036854775808"},
                             {"4611686018427387904 + 4611686018427387904", "9223372036854775808"},
                             {"18446744073709551615 + 1", "18446744073709551616"},
                             {"0 - 9223372036854775808 - 9223372036854775808",
                              "-18446744073709551616"},
                             {"(3 * 4).size", "2"},
                             {"(3 + 4).size", "1"},
                             {"1 / 0", "failure: div with zero"},
                             {"true1 + 1", "true11"},
                             {"1 + -f", "failure: string is not suport neg"},
                             {"%(7) 5 + 4", "failure: residues are not available"},
                             {"%(){ 10 + 1 }", "11"},
                             {"2 ** (-1)", "failure: floats are not available"}}));

INSTANTIATE_TEST_SUITE_P(
    Assignments, Script,
    ::testing::ValuesIn(Rows{
        {"var a = 1; var b = a; b = 2; a", "1"},
        {"var a = 1; var b = &a; b = 2; a", "2"},
        {"var a = 1; var b = &a; a = 3; b", "3"},
        {"var a = 1; var b = &a; var c = &b; c += 5; a", "6"},
        {"var a = 1; var b = 2; a = b = 3; b", "2"},
        {"var a = 5; a += 2; a -= 3; a *= 6; a /= 5; a **= 3; a %= 10; a", "4"},
        {"var a = 12; a |= 3; a &= 9; a ^|= 1; a <<= 3; a >>= 1; a", "32"},
        {"var a; a += 5; a", "5"},
        {"var a; a -= 5; a", "-5"},
        {"var a; a *= 5; a", "null"},
        {"var a; a >>= 1; a", "null"},
        {"var s = 'x'; s += s; s += 1; s", "xx1"},
        {"var s = 'x'; var t = s; t += 'y'; s", "x"},
        {"var a = 4611686018427387903; a += a; a += a; a", "18446744073709551612"},
        {"5 += 3", "5"},
        {"var n = 0; for (var i = 0; i < 3; i += 1) { 5 += 3; n += 5; } n", "15"},
        {"var n = 0; n += 7 += 1; n", "8"},
        {"abc = 5; abc", "abc"},
        {"var a = 3; a = a; a", "3"},
        {"var a = 3; var r = &a; a = r; r = a; a", "3"}}));

INSTANTIATE_TEST_SUITE_P(
    Loops, Script,
    ::testing::ValuesIn(Rows{
        {"var s = 0; for (var i = 0; i < 10; i += 1) { s += i; } s", "45"},
        {"var s = 0; for (var i = 0; i < 3; i += 1) { if (i == 1) continue; s += i } s", "2"},
        {"var s = 0; for (var i = 0; i < 9; i += 1) { if (i == 4) break; s += 1 } s", "4"},
        {"var s = 0; for (var i = 0; i < 3; i += 1) for (var j = 0; j < 3; j += 1) s += j; s", "9"},
        {"var s = 0; for (var i = 0; i < 3; i += 1) { var t = i; var u = t; s += u } s", "3"},
        {"var f = [n] { for (var i = 0; i < 9; i += 1) { if (i == n) return i * 2; } }; f(4) + 1",
         "9"}}));

INSTANTIATE_TEST_SUITE_P(
    Closures, Script,
    ::testing::ValuesIn(Rows{
        {"var f = [x] { x * 2 }; f(21)", "42"},
        {"var f = [] { 1 }; f.typeName", "N4huge11XVarClosureE"},
        {"[x] { x + 1 }(4)", "5"},
        {"var f = [x] { return x + 1; }; f[4]", "5"},
        {"var f = [x] { x = 9 }; var a = 1; f(&a); a", "9"},
        {"var f = [x] { x = 9 }; var a = 1; f(a); a", "1"},
        {"var f = [x] { x = 9 }; f(&1)", "9"},
        {"var a = 1; var f = [] { a }; a = 2; f()", "1"},
        {"var c = 0; var f = [] { c += 1; c }; f(); f()", "2"},
        {"var c = 0; var f = [] { c += 1; c }; f(); f(); c", "0"},
        {"var c = 0; var f = [] { c += 1; c }; f(); var g = f; g(); g(); f()", "2"},
        {"var make = [x] { [y] { x + y } }; var add5 = make(5); add5(3)", "8"},
        {"var make = [x] { [y] { x + y } }; make(5)(3)", "8"},
        {"var f = [a, b] { a + b }; f(1)", "1"},
        {"var f = [a, b] { iif(b == 0, 'none', b) }; f(1)", "none"},
        {"var f = [a] { a }; f(1, 2, 3)", "1"},
        {"var f = [] { 7 }; f(1, 2)", "7"},
        {"var f = [a, b, c] { var d = 4; d }; f(1, 2, 3)", "4"},
        {"var f = [n, g] { iif(n == 0, 0, g(n - 1, &g) + 1) }; f(100, &f)", "100"},
        {"var f = [x] { return &x; }; var a = 4; var b = f(&a); b += 1; a", "4"},
        {"var t = 0; var add = [x, t] { t += x }; add(2, &t); add(3, &t); t", "5"},
        {"5(1)", "failure: HugeInteger is not suport exec()"},
        {"var n; n(1)", "failure: null is not suport exec()"}}));

INSTANTIATE_TEST_SUITE_P(
    Lifetimes, Script,
    ::testing::ValuesIn(Rows{
        {"var x = 3; &x", "3"},
        {"var x = 3; return &x;", "3"},
        {"{ var x = 3; &x }", "3"},
        {"var f = [] { var x = 3; return &x; }; var r = f(); var z = 9; r", "3"},
        {"var f = [] { var x = 3; iif(1, &x, 0) }; f() + f()", "6"},
        {"var x = 1; var r = iif(1, &x, &x); r = 5; x", "1"},
        {"var x = 1; { var p = 7; &iif(1, &x, &x) && &iif(1, &p, &p) && 1; } { var q = 8; } x",
         "7"},
        {"var f = [x] { var p = 7; &iif(1, &x, &x) && &iif(1, &p, &p) && 1; 0 };"
         "var o = 1; f(&o); f(&o); var q = 8; o",
         "7"},
        {"var f = [] { 1 }; var g = [f] { f = 5; f }; g(&f); f", "5"},
        {"var f = [h] { h = 1; var s = 'still here'; s }; f(&f)", "still here"},
        {"var t = 'kept'; var f = [h] { h = 1; t + '!' }; f(&f)", "kept!"},
        {"var f = [h, n] { h = 1; iif(n == 0, n, 5) }; f(&f, 0); f", "1"},
        {"var x = 2; var f = [a] { a + 1 }; &f(1) + f(5)", "12"},
        {"var a = 1; var f = [r] { var g = [q] { q += 10; }; g(&r); }; f(&a); a", "11"},
        {"var f = [a] { a = [] { 5 }; 0 }; var k = 1; f(&k); k()", "5"}}));

INSTANTIATE_TEST_SUITE_P(Members, Script,
                         ::testing::ValuesIn(Rows{
                             {"'abc'.left(2)", "ab"},
                             {"'abc'.reverse", "cba"},
                             {"'abc'.typeName", "string"},
                             {"17 .sqrt", "4"},
                             {"var x = 5; x.value + 1", "6"},
                             {"5 .value", "failure: HugeInteger is not suport value()"},
                             {"var x; x.size", "failure: null is not suport size()"},
                             {"'abc'.foo(1)", "failure: string is not suport foo()"},
                             {"'a-b-c'.find('-').typeName", "HugeInteger"}}));

INSTANTIATE_TEST_SUITE_P(
    Builtins, Script,
    ::testing::ValuesIn(Rows{
        {"undefinedName", "undefinedname"},
        {"True", "true"},
        {"Max(1, 3, 2)", "3"},
        {"max()", "0"},
        {"max('b', 'c', 'a')", "c"},
        {"min(4, -2, 3)", "-2"},
        {"min(4)", "4"},
        {"int('0x1F')", "31"},
        {"int('1.5e3')", "1500"},
        {"int()", "0"},
        {"int(abc)", "0"},
        {"gcd(12, 18)", "6"},
        {"gcd(7)", "7"},
        {"lcm(4, 6)", "12"},
        {"lcm(0, 0)", "failure: div with zero"},
        {"abs(-5)", "5"},
        {"abs('x')", "null"},
        {"sqrt(2)", "1"},
        {"sqrt(10 ** 40)", "100000000000000000000"},
        {"sqrt(-4)", "failure: complex numbers are not available"},
        {"sqrt('4')", "null"},
        {"exp()", "1"},
        {"exp(0)", "failure: floats are not available"},
        {"log()", "0"},
        {"log(0)", "failure: Zero can't be log"},
        {"log(10, 1000)", "failure: floats are not available"},
        {"ln()", "null"},
        {"ln(0)", "failure: Zero can't be log"},
        {"sin()", "0"},
        {"sin(0) + cos(0) + tan(0)", "1"},
        {"sin(1)", "failure: floats are not available"},
        {"acosh(0)", "failure: The definition domain of inverse hyperbolic cosine function is "
                     "[1, infinite)"},
        {"rand_int().typeName", "HugeInteger"},
        {"rand_bigint(100) < 2 ** 100", "true"},
        {"rand_bigint(0)", "0"},
        {"var sin = 1; sin", "1"},
        {"sin", "HugeVariant func(HugeVariant* _args, int _argc)"},
        {"sin == cos", "false"},
        {"sin == SIN", "true"},
        {"var f = max; f(1, 2)", "2"},
        {"var n = 5; var f = [x] { max(x, 3) }; f(n)", "5"},
        {"'x' * 5000000000", "failure: The text is too long"}}));

} // namespace
} // namespace huge
