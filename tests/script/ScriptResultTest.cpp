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
                             {"%(){ 10 + 1 }", "11"}}));

INSTANTIATE_TEST_SUITE_P(
    Floats, Script,
    ::testing::ValuesIn(Rows{
        {"1.5", "1.5"},
        {"0.1", "0.1"},
        {"1.995", "1.995"},
        {"1.5e3", "1500"},
        {"1e3", "1000"},
        {"(1e3).typeName", "HugeInteger"},
        {"(1.5e3).typeName", "HugeFloat"},
        {"0x1.8 + 0b0.1", "2"},
        {"1'000.2'5 * 4", "4001"},
        {"-1.5 + 2", "0.5"},
        {"1.5 ** 2", "2.25"},
        {"2 ** (-1)", "0.5"},
        {"7.5 % 2", "1.5"},
        {"7 / 2.0", "3.5"},
        {"1.5 << 2", "6"},
        {"3.0 >> 2", "0.75"},
        {"1.5 == 1.5", "true"},
        {"1.5 > 1", "true"},
        {"1.5 == 1.5..9", "true"},
        {"var a = 0.5; a += 1; a *= 4; a -= 0.5; a /= 11; a", "0.5"},
        {"iif(0.0, 1, 2)", "2"},
        {"!0.0", "true"},
        {"var t = 0.0; for (var n = 0; n < 10; n += 1) t += 0.25; t", "2.5"},
        {"[x] { x + 1.5 }(2)", "3.5"},
        {"~1.5", "failure: HugeFloat is not suport bitNot(~)"},
        {"1.5 / 0", "failure: div by zero"},
        {"1.5(1)", "failure: HugeFloat is not suport exec()"},
        {"1.5..20800", "failure: Number size must less than 20800"},
        {"1.5..99999999999999999999", "failure: Number size must less than 20800"},
        // The first 64 bits of the two constants.
        {"pi() == 0x3.243F6A8885A308D", "true"},
        {"e() == 0x2.B7E151628AED2A68", "true"},
        {"pi(2) - pi() > 0 && pi(2) - pi() < 1 >> 61", "false"},
        {"pi(2) - pi() > 0 && pi(2) - pi() < 1.0 >> 61", "true"},
        {"sin(pi(3)) < 1.0 >> 180", "true"},
        {"pi(0)", "failure: The precision must be at least 1"},
        {"pi(-1)", "failure: The precision must be at least 1"},
        {"e(10 ** 9)", "failure: Number size must less than 20800"},
        {"pi(10 ** 30)", "failure: Number size must less than 20800"},
        {"float()", "0"},
        {"float(3).typeName", "HugeFloat"},
        {"float('2.5') * 2", "5"},
        {"int(2.7)", "2"},
        {"int(-2.7)", "-2"},
        {"abs(-2.5)", "2.5"},
        {"sqrt(2.25)", "1.5"},
        {"sqrt(2.0) ** 2 - 2 < 1.0 >> 60", "true"},
        {"max(1, 2.5, 2)", "2.5"},
        {"min(1, 0.5, 2)", "0.5"},
        {"log(10, 1000)", "3"},
        {"log(2, 0.5)", "-1"},
        {"exp(0)", "1"},
        {"exp(ln(2.5..3)) - 2.5 < 1.0 >> 180", "true"},
        {"sin(1) ** 2 + cos(1) ** 2 - 1 < 1.0 >> 60", "true"},
        {"asin(2.0)", "failure: arcsin(x) only valid for -1<=x<=1"},
        {"atanh(1)", "failure: The definition domain of inverse hyperbolic tangent function is "
                     "(- 1,1)"}}));

INSTANTIATE_TEST_SUITE_P(ComplexNumbers, Script,
                         ::testing::ValuesIn(Rows{
                             {"2i", "2i"},
                             {"1.5i", "1.5i"},
                             {"3 + 4i", "3 + 4i"},
                             {"3 - 4i", "3 - 4i"},
                             {"i", "1i"},
                             {"I * i", "-1"},
                             {"(1 + 2i) * (3 - 1i)", "5 + 5i"},
                             {"(5 + 5i) / (1 + 2i)", "3 - 1i"},
                             {"-(1 + 2i)", "-1 - 2i"},
                             {"(1 + 2i) == 1 + 2i", "true"},
                             {"(1 + 2i) != 1 + 3i", "true"},
                             {"(1 + 1i) ** 2", "2i"},
                             {"(-8) ^ 2", "64"},
                             {"((-8) ^ 2).typeName", "HugeImag"},
                             {"sqrt(-4)", "2i"},
                             {"sqrt(-2.25)", "1.5i"},
                             {"sqrt(2i)", "1 + 1i"},
                             {"abs(3 + 4i)", "5"},
                             {"abs(3 + 4i).typeName", "HugeFloat"},
                             {"imag()", "0"},
                             {"imag(3).typeName", "HugeImag"},
                             {"imag(1, 2)", "1 + 2i"},
                             {"imag(1.5, 0)", "1.5"},
                             {"ln(-1) - pi() * 1i == 0", "true"},
                             {"ln(i) == pi() * 0.5i", "true"},
                             {"var z = 1i; z *= z; z", "-1"},
                             {"1i < 2i", "failure: HugeImag is not suport less(<)"},
                             {"1i / 0", "failure: div by zero"},
                             {"'z' + 2i", "z2i"}}));

INSTANTIATE_TEST_SUITE_P(Residues, Script,
                         ::testing::ValuesIn(Rows{
                             {"%(7) 5 + 4", "2"},
                             {"%(7) 5 * 3", "1"},
                             {"%(7) 3 - 5", "5"},
                             {"%(7) 1 / 3", "5"},
                             {"%(7) -1", "6"},
                             {"%(7){ 3 ** 6 }", "1"},
                             {"%(7) 10", "3"},
                             {"%(7) 12.9", "5"},
                             {"%(7) 2i", "2i"},
                             {"(%(7) 5).typeName", "HugeMod"},
                             {"(%(7) 5).mod", "7"},
                             {"var m = 11; %(m + 2) 5 * 5", "12"},
                             {"%(7){ %(){ 10 } }", "10"},
                             {"%(7){ %(5) 9 }", "4"},
                             {"%(7){ var s = 0; for (var n = 0; n < 6; n += 1) s += 3; s }", "4"},
                             {"%(7){ [x] { x + 20 } }(1)", "21"},
                             {"var r = %(7) 5; r + 9", "0"},
                             {"var r = %(7) 5; r += 3; r", "1"},
                             {"%(10) 1 / 4", "failure: There is no inverse"},
                             {"%(0) 5", "failure: The modulus must be positive"},
                             {"%(-3) 5", "failure: The modulus must be positive"},
                             {"mod(20, 7)", "6"},
                             {"mod(-1, 7) + 1", "0"},
                             {"mod(2, 7) ** 100", "2"},
                             {"sqrt(mod(2, 7)) ** 2", "2"},
                             {"abs(mod(5, 7))", "null"},
                             {"mod(5)", "failure: mod(value,modeleter) function need two args! "},
                             {"mod(5, 7, 1)",
                              "failure: mod(value,modeleter) function need two args! "},
                             {"mod(5, 0)", "failure: The modulus must be positive"},
                             {"randprime(2) < 4", "true"},
                             {"randprime().isPrime", "true"},
                             {"randprime(0)", "failure: A random prime needs at least one bit"},
                             {"randprime(10 ** 9)", "failure: Number size must less than 20800"}}));

// The digests of "abc" and the empty text are those of two other implementations.
INSTANTIATE_TEST_SUITE_P(BytesAndTimes, Script,
                         ::testing::ValuesIn(Rows{
                             {"hash256('abc')",
                              "0x4f8b42c22dd3729b519ba6f68d2da7cc5b2d606d05daed5ad5128cc03e6c6358"},
                             {"hash160('')", "0xb472a266d0bd89c13706a4132ccfb16f7c3b9fcb"},
                             {"hash256('abc').typeName", "data"},
                             {"hash256() + 1", "1"},
                             {"hash160().typeName", "string"},
                             {"base58('Hello World!')", "2NEpo7TZRRrLZSi2U"},
                             {"base58check('abc')", "4h3c6K3eix"},
                             {"base64('fo')", "Zm8="},
                             {"base64() + 1", "1"},
                             {"decbase58('2NEpo7TZRRrLZSi2U').typeName", "data"},
                             {"decbase58str('2NEpo7TZRRrLZSi2U')", "Hello World!"},
                             {"decbase58check('4h3c6K3eix')", "0x616263"},
                             {"decbase58checkstr('4h3c6K3eix')", "abc"},
                             {"decbase64('Zm9v')", "0x666f6f"},
                             {"decbase64str('Zm9v') + 1", "foo1"},
                             {"decbase58('0')", "failure: not a base58 string"},
                             {"decbase58str('l')", "failure: not a base58 string"},
                             {"decbase58check('4h3c6K3eiy')", "failure: not a base58check string"},
                             {"decbase58checkstr('')", "failure: not a base58check string"},
                             {"decbase64('!')", "failure: not a base64 string"},
                             {"decbase64str('Zg')", "failure: not a base64 string"},
                             {"time(2026, 2, 3, 4, 5, 6)", "2026-2-3 4:5:6.0"},
                             {"time(2026, 14, 1)", "2027-2-1 0:0:0.0"},
                             {"time(2026, 1, 1) < time(2026, 1, 2)", "true"},
                             {"time() > time(2020, 1, 1)", "true"},
                             {"time().typeName", "time"},
                             {"time(10 ** 12)", "failure: time is out of range"},
                             {"time(300000, 1, 1)", "failure: time is out of range"}}));

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
        {"sqrt('4')", "null"},
        {"exp()", "1"},
        {"log()", "0"},
        {"log(0)", "failure: Zero can't be log"},
        {"ln()", "null"},
        {"ln(0)", "failure: Zero can't be log"},
        {"sin()", "0"},
        {"sin(0) + cos(0) + tan(0)", "1"},
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
