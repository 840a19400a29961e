#include "scriptListing.h"

#include "script/XScript.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

namespace {

using huge::XCStoken;
using huge::XScript;

std::string listingOf(const xstd::XString& source)
{
    XScript script(source);
    script.compile();
    return ScriptListing(script.prog()).text();
}

std::string repeated(size_t count, const std::string& text)
{
    std::string result;
    for (size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

/// The first message of the failure, "" when the text compiles.
std::string failureOf(const xstd::XString& source)
{
    try {
        XScript script(source);
        script.compile();
        return "";
    } catch (const xstd::XExceptionItems& failure) {
        return failure.mess();
    }
}

// --- code layout ---

struct CodeCase {
    const char* source;
    const char* listing;
};

class Code : public ::testing::TestWithParam<CodeCase> {};

TEST_P(Code, LiesAsLaidDown)
{
    EXPECT_EQ(listingOf(GetParam().source), GetParam().listing) << GetParam().source;
}

INSTANTIATE_TEST_SUITE_P(
    Operators, Code,
    ::testing::ValuesIn(std::vector<CodeCase>{
        {"", "0:"},
        {" // nothing\n;,", "0:"},
        {"1 + 2 * 3", "0: MUL 2 3; ADD 1 ax"},
        {"-2 ** 2", "0: POW 2 2; NEG ax"},
        {"2 ** (-3)", "0: NEG 3; POW 2 ax"},
        {"2 * -3", "0: NEG 3; MUL 2 ax"},
        {"2 ** 3 ** 2", "1: POW 2 3; PUSH ax; POW s0 2; POPTO 0"},
        {"a | b % c", "1: BIT_OR a b; PUSH ax; PERCENT s0 c; POPTO 0"},
        {"a % b * c", "1: PERCENT a b; PUSH ax; MUL s0 c; POPTO 0"},
        {"1 + 2 + 3 + 4", "1: ADD 1 2; PUSH ax; ADD s0 3; MOV s0 ax; ADD s0 4; POPTO 0"},
        {"(1 + 2) * (3 + 4)", "1: ADD 1 2; PUSH ax; ADD 3 4; MUL s0 ax; POPTO 0"},
        {"!a == b", "1: NOT a; PUSH ax; EQU s0 b; POPTO 0"},
        {"+a", "0: MOV ax a"},
        {"0x10 + 1e3", "0: ADD 16 1000"},
        {"'a' 'b' + 'c'", "0: ADD 'ab' 'c'"},
        {"a ^| b << 1", "0: BIT_SHL b 1; UNKNOWN a ax"},
        {"a ^ b", "0: POW a b"},
        {"var a, b = 2; a = b = 1",
         "2: PUSH_NULL; PUSH 2; MOV v0 v1; MOV v0 1; MOV ax v0; POPTO 0"},
        {"a += 1", "0: ADD_TO a 1; MOV ax a"},
        {"a ^|= 1", "0: UNKNOWN a 1; MOV ax a"},
        {"a **= 2", "0: POW_TO a 2; MOV ax a"},
        {"x = f(1) * 2",
         "1: PUSH 1; EXEC f 1; POPTO 0; PUSH ax; MUL s0 2; POPTO 0; MOV x ax; MOV ax x"},
        {"()", "0:"},
    }));

INSTANTIATE_TEST_SUITE_P(
    Calls, Code,
    ::testing::ValuesIn(std::vector<CodeCase>{
        {"f()", "0: EXEC f 0"},
        {"f(1)(2)", "2: PUSH 1; EXEC f 1; POPTO 0; PUSH ax; PUSH 2; EXEC s0 1; POPTO 0"},
        {"f[1, g()]", "2: PUSH 1; EXEC g 0; PUSH ax; EXEC f 2; POPTO 0"},
        {"f(1,)", "1: PUSH 1; EXEC f 1; POPTO 0"},
        {"x.y", "0: INVOKE x 'y' 0"},
        {"x.y(1).z[2]",
         "2: PUSH 1; INVOKE x 'y' 1; POPTO 0; PUSH ax; PUSH 2; INVOKE s0 'z' 1; POPTO 0"},
        {"x.y = 3", "1: INVOKE x 'y' 0; PUSH ax; MOV s0 3; MOV ax s0; POPTO 0"},
        {"-x.y", "0: INVOKE x 'y' 0; NEG ax"},
        {"5 .a", "0: INVOKE 5 'a' 0"},
        {"var a = 1; var b = &a; f(&a, &1)",
         "4: PUSH 1; PUSH_REF v0; PUSH_REF v0; PUSH 1; EXEC f 2; POPTO 2; POPTO 0"},
        {"var a; &a", "1: PUSH_NULL; REF ax v0; POPTO 0"},
    }));

INSTANTIATE_TEST_SUITE_P(
    ShortCircuit, Code,
    ::testing::ValuesIn(std::vector<CodeCase>{
        {"a && b", "0: JMP_FALSE a @4; JMP_FALSE b @4; MOV ax true; JMP @5; MOV ax false"},
        {"a || b", "0: JMP_TRUE a @2; JMP_FALSE b @4; MOV ax true; JMP @5; MOV ax false"},
        {"a && b && c", "0: JMP_FALSE a @5; JMP_FALSE b @5; JMP_FALSE c @5; MOV ax true; JMP @6; "
                        "MOV ax false"},
        {"a && b || c",
         "1: JMP_FALSE a @4; JMP_FALSE b @4; MOV ax true; JMP @5; MOV ax false; PUSH ax; "
         "JMP_TRUE s0 @8; JMP_FALSE c @10; MOV ax true; JMP @11; MOV ax false; POPTO 0"},
        {"a || b && c",
         "0: JMP_TRUE a @7; JMP_FALSE b @5; JMP_FALSE c @5; MOV ax true; JMP @6; MOV ax false; "
         "JMP_FALSE ax @9; MOV ax true; JMP @10; MOV ax false"},
        {"a == 1 && b", "1: EQU a 1; PUSH ax; JMP_FALSE s0 @6; JMP_FALSE b @6; MOV ax true; "
                        "JMP @7; MOV ax false; POPTO 0"},
    }));

INSTANTIATE_TEST_SUITE_P(
    Modulus, Code,
    ::testing::ValuesIn(std::vector<CodeCase>{
        {"%(7) 5 + 4", "1: PUSH_NULL; MODELER s0 7; ADD 5%0 4%0; POPTO 0"},
        {"%(7) 5.5 + 1i", "1: PUSH_NULL; MODELER s0 7; ADD 5%0 1i; POPTO 0"},
        {"1.5 + 2.5i", "0: ADD 1.5 2.5i"},
        {"%(7) 5", "1: PUSH_NULL; MODELER s0 7; MOV ax 5%0; POPTO 0"},
        {"%(7){ 5 }", "1: PUSH_NULL; MODELER s0 7; MOV ax 5%0; POPTO 0"},
        {"(%(7) 5)", "1: PUSH_NULL; MODELER s0 7; MOV ax 5%0; POPTO 0"},
        {"1 + %(7) 5", "1: PUSH_NULL; MODELER s0 7; MOV ax 5%0; POPTO 0; ADD 1 ax"},
        {"%(7){ %(){ 10 } }", "1: PUSH_NULL; MODELER s0 7; MOV ax 10; POPTO 0"},
        {"%(7) f(%() 10, 5)",
         "3: PUSH_NULL; MODELER s0 7; PUSH 10; PUSH 5%0; EXEC f 2; POPTO 1; POPTO 0"},
        {"%{ 5 }", "0: MOV ax 5"},
        {"%(3 + 4) 5", "1: ADD 3 4; PUSH_NULL; MODELER s0 ax; MOV ax 5%0; POPTO 0"},
        {"%(7) %(5) 3",
         "2: PUSH_NULL; MODELER s0 7; PUSH_NULL; MODELER s1 5; MOV ax 3%1; POPTO 1; POPTO 0"},
        {"%(7) 5; 6", "1: PUSH_NULL; MODELER s0 7; MOV ax 5%0; POPTO 0; MOV ax 6"},
        {"%(7){ [] 5 }", "1: PUSH_NULL; MODELER s0 7; JMP @7; CLOSURE_BEGIN 0; MOV ax 5; RETURN; "
                         "CLOSURE_END; MOV ax fn(@4,0,0,[]); POPTO 0"},
    }));

INSTANTIATE_TEST_SUITE_P(
    Variables, Code,
    ::testing::ValuesIn(std::vector<CodeCase>{
        {"var a = 1, b = a + 1; b", "2: PUSH 1; ADD v0 1; PUSH ax; MOV ax v1; POPTO 0"},
        {"var x = x", "1: PUSH x; MOV ax v0; POPTO 0"},
        {"{ var a = 1; a }", "1: PUSH 1; MOV ax v0; POPTO 0"},
        {"var a; { var a; a } a",
         "2: PUSH_NULL; PUSH_NULL; MOV ax v1; POPTO 1; MOV ax v0; POPTO 0"},
        {"var a; A", "1: PUSH_NULL; MOV ax A; POPTO 0"},
        {"{ var a; } a", "1: PUSH_NULL; MOV ax v0; POPTO 0; MOV ax a"},
        {"var a; ) a", "1: PUSH_NULL; MOV ax v0; POPTO 0; MOV ax a"},
        {"return;", "0: MOV ax 0; RETURN"},
        {"5; return 6;", "0: MOV ax 6; RETURN"},
        {"var a = 1; ret a + 1;", "1: PUSH 1; ADD v0 1; POPTO 0; RETURN"},
        {"x = VAR a = 1;", "1: PUSH 1; MOV ax v0; POPTO 0; MOV x ax; MOV ax x"},
    }));

INSTANTIATE_TEST_SUITE_P(
    Branches, Code,
    ::testing::ValuesIn(std::vector<CodeCase>{
        {"if (a) { } else { }", "0: MOV ax a; JMP_FALSE ax @3; JMP @4; JMP @4; POPTO 0"},
        {"if (a) 1;", "0: MOV ax a; JMP_FALSE ax @4; MOV ax 1; JMP @4; POPTO 0"},
        {"if (var x = 1; x) x",
         "1: PUSH 1; MOV ax v0; JMP_FALSE ax @5; MOV ax v0; JMP @5; POPTO 0"},
        {"if (a) 1; else if (b) { 2 } else 3; 4",
         "0: MOV ax a; JMP_FALSE ax @4; MOV ax 1; JMP @10; MOV ax b; JMP_FALSE ax @8; MOV ax 2; "
         "JMP @10; MOV ax 3; JMP @10; POPTO 0; MOV ax 4"},
        {"if (var x = a; x) 1; else x",
         "1: PUSH a; MOV ax v0; JMP_FALSE ax @5; MOV ax 1; JMP @8; POPTO 0; MOV ax x; JMP @8; "
         "POPTO 0"},
        {"iif(a, 1, f())", "0: JMP_FALSE a @3; MOV ax 1; JMP @5; EXEC f 0; MOV ax ax"},
        {"1 + IIF(a, 1, 2)", "0: JMP_FALSE a @3; MOV ax 1; JMP @4; MOV ax 2; ADD 1 ax"},
    }));

INSTANTIATE_TEST_SUITE_P(
    Loops, Code,
    ::testing::ValuesIn(std::vector<CodeCase>{
        {"for (var i = 0; i < 3; i += 1) { if (i == 1) continue; s += i }",
         "1: PUSH 0; MOV ax v0; POPTO 1; LESS v0 3; JMP_FALSE ax @18; JMP @9; POPTO 1; "
         "ADD_TO v0 1; JMP @2; POPTO 1; EQU v0 1; JMP_FALSE ax @14; JMP @6; JMP @14; POPTO 1; "
         "ADD_TO s v0; MOV ax s; JMP @6; POPTO 0"},
        {"for (; a; ) break;", "0: POPTO 0; JMP_FALSE a @8; JMP @5; POPTO 0; JMP @0; POPTO 0; "
                               "JMP @8; JMP @3; POPTO 0"},
        {"for (; a; b;) ;", "0: POPTO 0; JMP_FALSE a @7; JMP @5; POPTO 0; JMP @0; POPTO 0; "
                            "JMP @3; POPTO 0"},
    }));

INSTANTIATE_TEST_SUITE_P(
    Closures, Code,
    ::testing::ValuesIn(std::vector<CodeCase>{
        {"var f = [x] { x * 2 }; f(21)",
         "2: JMP @5; CLOSURE_BEGIN 1; MUL v0 2; RETURN; CLOSURE_END; PUSH fn(@2,1,1,[]); PUSH 21; "
         "EXEC v0 1; POPTO 1; POPTO 0"},
        {"var a = 1; var b; var f = [] { b + a + b }; a",
         "3: PUSH 1; PUSH_NULL; JMP @10; CLOSURE_BEGIN 0; ADD c0 c1; PUSH ax; ADD s0 c0; POPTO 0; "
         "RETURN; CLOSURE_END; PUSH fn(@4,1,0,[1,0]); MOV ax v0; POPTO 0"},
        {"[x] [y] x + y",
         "0: JMP @10; CLOSURE_BEGIN 1; JMP @7; CLOSURE_BEGIN 1; ADD c0 v0; RETURN; CLOSURE_END; "
         "MOV ax fn(@4,1,1,[0]); RETURN; CLOSURE_END; MOV ax fn(@2,1,1,[])"},
        {"var a; [] [] a",
         "1: PUSH_NULL; JMP @11; CLOSURE_BEGIN 0; JMP @8; CLOSURE_BEGIN 0; MOV ax a; RETURN; "
         "CLOSURE_END; MOV ax fn(@5,0,0,[]); RETURN; CLOSURE_END; MOV ax fn(@3,0,0,[]); POPTO 0"},
        {"[] 1", "0: JMP @5; CLOSURE_BEGIN 0; MOV ax 1; RETURN; CLOSURE_END; MOV ax fn(@2,0,0,[])"},
        {"f = [x] { x }", "0: JMP @5; CLOSURE_BEGIN 1; MOV ax v0; RETURN; CLOSURE_END; "
                          "MOV f fn(@2,1,1,[]); MOV ax f"},
        {"[a, b] { for (;a;) { return b; } }",
         "0: JMP @14; CLOSURE_BEGIN 2; POPTO 2; JMP_FALSE v0 @11; JMP @7; POPTO 2; JMP @2; "
         "POPTO 2; MOV ax v1; RETURN; JMP @5; POPTO 2; RETURN; CLOSURE_END; MOV ax fn(@2,2,2,[])"},
    }));

TEST(CodeBytes, OfASmallProgramStandAsTheyAreStored)
{
    XScript script("var a = 258; a + b");
    script.compile();
    const std::vector<uint8_t> expected = {
        1,  0,                                        // one slot
        11, 2, 10, 0, 1, 0, 0, 0, 0, 0, 0,   0, 2, 1, // PUSH 258
        3,  9, 0,  0, 8, 4, 0, 1, 1, 0, 'b',          // ADD a, b
        14, 2, 8,  0, 1, 0, 0, 0, 0, 0, 0,   0,       // POPTO 0
    };
    EXPECT_EQ(script.prog(), expected);
}

TEST(CompileResult, IsNullOrTheAccumulator)
{
    EXPECT_TRUE(XScript("").compile().isNull());
    EXPECT_TRUE(XScript("if (a) b").compile().isNull());
    EXPECT_EQ(XScript("a").compile().kind, huge::TK_AX);
    EXPECT_EQ(XScript("var a").compile().kind, huge::TK_AX);
}

TEST(Compiling, CanBeDoneAgain)
{
    XScript script("var a = 1; [x] { x } ; f(a)");
    script.compile();
    const std::vector<uint8_t> first = script.prog();
    script.compile();
    EXPECT_EQ(script.prog(), first);
    XScript failing("var a; for (var b;;) { [x] { %(7) { 1 +");
    EXPECT_THROW(failing.compile(), xstd::XExceptionItems);
    EXPECT_THROW(failing.compile(), xstd::XExceptionItems);
}

TEST(Compiling, NotesLinesAndTokens)
{
    XScript script("var a;\na = b");
    huge::XDebugInfo debug;
    script.compile(&debug);
    EXPECT_EQ(debug.lineAt(2), 1); // PUSH_NULL
    EXPECT_EQ(debug.lineAt(3), 2); // MOV a, b
    EXPECT_EQ(debug.tokenText(2), "a");
    EXPECT_EQ(debug.tokenText(4), "a");
    EXPECT_EQ(debug.describe(7), "line:2, col:4, tok: b");
}

// --- failures ---

struct FailureCase {
    const char* source;
    const char* message;
    int64_t pos;
    int64_t line;
    int64_t col;
    const char* key;
    const char* value;
};

class Failures : public ::testing::TestWithParam<FailureCase> {};

TEST_P(Failures, SayWhatAndWhere)
{
    const FailureCase& row = GetParam();
    XScript script(row.source);
    try {
        script.compile();
        FAIL() << row.source;
    } catch (const xstd::XExceptionItems& failure) {
        const xstd::XExceptionItem& cause = failure.items().front();
        EXPECT_EQ(cause.mess(), row.message) << row.source;
        EXPECT_EQ(cause.type(), "compile");
        EXPECT_EQ(cause.extendInt("scriptPos"), row.pos) << row.source;
        EXPECT_EQ(cause.extendInt("scriptLine"), row.line) << row.source;
        EXPECT_EQ(cause.extendInt("scriptCol"), row.col) << row.source;
        if (row.key != nullptr) {
            EXPECT_EQ(cause.extendText(row.key), row.value) << row.source;
        }
        const xstd::XExceptionItem& outer = failure.items().back();
        EXPECT_EQ(failure.items().size(), 2u);
        EXPECT_EQ(outer.mess(), "ScriptCompile Error");
        EXPECT_EQ(outer.type(), "compile");
        EXPECT_TRUE(outer.hasExtend("scriptPos") && outer.hasExtend("scriptLine") &&
                    outer.hasExtend("scriptCol"));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Expressions, Failures,
    ::testing::ValuesIn(std::vector<FailureCase>{
        {"1 + *", "here should be a operator data", 4, 1, 4, nullptr, nullptr},
        {"() + 5", "here should be a operator data", 3, 1, 3, nullptr, nullptr},
        {"().a", "here should be a operator data", 2, 1, 2, nullptr, nullptr},
        {"a b", "This must be an operator, but it is:[type: label, token: 'b']", 2, 1, 2, "token",
         "type: label, token: 'b'"},
        {"1\n+ 2 3", "This must be an operator, but it is:[type: int, token: '3']", 6, 2, 4,
         "token", "type: int, token: '3'"},
        {"(a;", "This must be an operator ')', but it is:[type: operator, token: ';']", 2, 1, 2,
         "token", "type: operator, token: ';'"},
        {"% 5", "This should be a bracket '(' or '{' ", 2, 1, 2, nullptr, nullptr},
        {"%(5 ] 1", "This should be a bracket ')' ", 4, 1, 4, nullptr, nullptr},
        {"x.5", "A member name is expected here", 2, 1, 2, nullptr, nullptr},
        {"x.", "A member name is expected here", 2, 1, 2, nullptr, nullptr},
        {"f(1;",
         "[type: operator, token: ')'] is expected here, but it's actually [row: 1, col: 3, type: "
         "operator, token: ';']",
         3, 1, 3, "actualTok", "type: operator, token: ';'"},
        {"f[1)",
         "[type: operator, token: ']'] is expected here, but it's actually [row: 1, col: 3, type: "
         "operator, token: ')']",
         3, 1, 3, "expectToks", "type: operator, token: ']'"},
        {"a + `", "Unrecognized operator '`'", 5, 1, 5, nullptr, nullptr},
        {"a = 'x", "Closing quote not found for string", 6, 1, 6, nullptr, nullptr},
    }));

INSTANTIATE_TEST_SUITE_P(
    Statements, Failures,
    ::testing::ValuesIn(std::vector<FailureCase>{
        {"if a", "If statement must be followed by a condition", 3, 1, 3, nullptr, nullptr},
        {"if (a) b; else if c", "If statement must be followed by a condition", 18, 1, 18, nullptr,
         nullptr},
        {"if (a) b else c", "This must be an operator, but it is:[type: label, token: 'else']", 9,
         1, 9, nullptr, nullptr},
        {"iif(a, b)", "IIF (condition, value_1, value_2) requires three parameters", 8, 1, 8,
         "token", "type: operator, token: ')'"},
        {"iif(a)", "IIF (condition, value_1, value_2) requires three parameters", 5, 1, 5, "token",
         "type: operator, token: ')'"},
        {"iif(a, b, c, d)", "IIF (condition, value_1, value_2) requires three parameters", 11, 1,
         11, "token", "type: operator, token: ','"},
        {"var 5",
         "Variable name is expected here, but it is: [row: 1, col: 4, type: int, token: "
         "'5']",
         4, 1, 4, "token", "type: int, token: '5'"},
        {"var a, ;",
         "Variable name is expected here, but it is: [row: 1, col: 7, type: operator, "
         "token: ';']",
         7, 1, 7, "token", "type: operator, token: ';'"},
        {"for (i = 0; i < 3; i += 1) {}",
         "This should be a [;], but it's actually a [row: 1, col: 4, type: operator, token: '(']",
         4, 1, 4, nullptr, nullptr},
        {"for (; a) {}",
         "This should be a [;], but it's actually a [row: 1, col: 8, type: operator, token: ')']",
         8, 1, 8, nullptr, nullptr},
        {"for a",
         "[type: operator, token: '('] is expected here, but it's actually [row: 1, col: "
         "4, type: label, token: 'a']",
         4, 1, 4, nullptr, nullptr},
        {"[x y] 1",
         "The list of closure parameters must end with ']' and the data at the current "
         "location is: [row: 1, col: 3, type: label, token: 'y']",
         3, 1, 3, nullptr, nullptr},
        {"[x,] 1",
         "The list of closure parameters must end with ']' and the data at the current "
         "location is: [row: 1, col: 3, type: operator, token: ']']",
         3, 1, 3, nullptr, nullptr},
        {"break;", "break is not inside a loop", 0, 1, 0, nullptr, nullptr},
        {"a;\ncontinue;", "continue is not inside a loop", 3, 2, 0, nullptr, nullptr},
        {"for (;a;) { [] { break; } }", "break is not inside a loop", 17, 1, 17, nullptr, nullptr},
        {"for (;a;) { break }",
         "[type: operator, token: ';'] is expected here, but it's actually "
         "[row: 1, col: 18, type: operator, token: '}']",
         18, 1, 18, nullptr, nullptr},
        {"{ a",
         "[type: operator, token: '}'] is expected here, but it's actually [row: 1, col: 3, "
         "type: null, token: '']",
         3, 1, 3, nullptr, nullptr},
        {"{ return 1 }",
         "[type: operator, token: '}'] is expected here, but it's actually [row: "
         "1, col: 12, type: null, token: '']",
         12, 1, 12, nullptr, nullptr},
        {"var f = [] a; a = 2", "This must be an operator, but it is:[type: label, token: 'a']", 14,
         1, 14, nullptr, nullptr},
    }));

TEST(MissingOperands, AreRefusedByTheBuilder)
{
    for (const char* source : {"- -x", "!!x", "2 ** -3", "a = ", "a &&", "var a = ;", "if () a",
                               "for (;;) a", "iif", "return", "%(;) 1", "f(+)(-)"})
        EXPECT_EQ(failureOf(source), "Unrecognized token!") << source;
    EXPECT_EQ(failureOf("a { b }"), "This is not a operand!");
}

TEST(NumbersBeyondTheLimit, FailWithTheLimitsText)
{
    try {
        XScript("a + 1e999999999").compile();
        FAIL() << "no failure";
    } catch (const xstd::XExceptionItems& failure) {
        EXPECT_EQ(failure.mess(), "Number size must less than 20800");
        EXPECT_EQ(failure.items().size(), 1u);
        EXPECT_EQ(failure.items()[0].type(), "compile");
        EXPECT_EQ(failure.extendInt("scriptLine"), 1);
    }
}

// --- limits ---

TEST(Limits, OfStringLiterals)
{
    const std::string text(65535, 'x');
    EXPECT_EQ(failureOf("'" + text + "'"), "");
    EXPECT_EQ(failureOf("'" + text + "x'"),
              "The string literal is too long, at most 65535 bytes are possible");
}

TEST(Limits, OfIntegerLiterals)
{
    const std::string digits(2 * 65527, 'f');
    EXPECT_EQ(failureOf("0x" + digits), "");
    EXPECT_EQ(failureOf("0x1" + digits),
              "The integer literal is too long, its operand holds at most 65535 bytes");
    EXPECT_EQ(failureOf("1e200000"),
              "The integer literal is too long, its operand holds at most 65535 bytes");
}

TEST(Limits, OfSlotsInAFrame)
{
    const std::string message = "A frame holds at most 32767 variables and temporaries";
    const std::string most = "var " + repeated(32766, "a,") + "a";
    XScript script(most);
    script.compile();
    EXPECT_EQ(script.prog()[0], 0xff);
    EXPECT_EQ(script.prog()[1], 0x7f);
    EXPECT_EQ(failureOf(most + ",a"), message);
    EXPECT_EQ(failureOf("f(" + repeated(32768, "1,") + ")"), message);
    EXPECT_EQ(failureOf("[" + repeated(32767, "a,") + "a] 1"), message);
    EXPECT_EQ(failureOf("[" + repeated(32766, "a,") + "a] 1"), "");
}

struct NestingCase {
    const char* open;
    const char* middle;
    const char* close;
    size_t levels = 500; // less where one level holds many expressions or brackets
};

const std::vector<NestingCase>& nestingCases()
{
    static const std::vector<NestingCase> cases = {
        {"(", "1", ")"},
        {"{", "1;", "}"},
        {"f(", "1", ")"},
        {"x.y[", "1", "]"},
        {"[] {", "1", "}"},
        {"[x] ", "1", ""},
        {"if (a) {", "1", "}"},
        {"if (", "1", ") a; b"},
        {"if (a) ", "1;", ""},
        {"iif(a, ", "1", ", b)"},
        {"for (;a;) {", "1", "}"},
        {"%(7) ", "1", ""},
        {"%(7) {", "1", "}"},
        {"%(", "7", ") 1"},
        {"x = VAR a = ", "1", ""},
        {"a || b && c == d + e * f % g | h >> i ** (", "1", ")", 200},
        {"x.y(iif([a] { if (a && (", "1", ")) 1; }, 1, 2))", 100},
    };
    return cases;
}

std::string nested(const NestingCase& row, size_t levels)
{
    return repeated(levels, row.open) + row.middle + repeated(levels, row.close);
}

TEST(Nesting, OfHundredsOfLevelsCompiles)
{
    for (const NestingCase& row : nestingCases())
        EXPECT_EQ(failureOf(nested(row, row.levels)), "") << row.open;
}

TEST(Nesting, BeyondItsBoundFails)
{
    for (const NestingCase& row : nestingCases())
        for (const size_t levels : {2500u, 50000u})
            EXPECT_EQ(failureOf(nested(row, levels)), "The script is nested too deep") << row.open;
}

TEST(Nesting, FailsInAnOrderlyWayOnASmallStack)
{
    const auto body = [](void* result) -> void* {
        for (const NestingCase& row : nestingCases()) {
            const std::string message = failureOf(nested(row, 50000));
            if (message != "The script is nested too deep")
                *static_cast<std::string*>(result) += row.open + message;
        }
        return nullptr;
    };
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 1024 * 1024), 0);
    std::string failures;
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, body, &failures), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    EXPECT_EQ(failures, "");
}

// --- texts of any kind ---

TEST(AnyText, CompilesOrFailsWithTheOuterItem)
{
    const char* const pieces[] = {"a",      "b",         "var ", "if", "else ", "for",  "return ",
                                  "break;", "continue;", "iif(", "(",  ")",     "[",    "]",
                                  "{",      "}",         ";",    ",",  "=",     "==",   "+",
                                  "-",      "**",        "&&",   "||", "!",     "&",    ".",
                                  "%(7)",   "%()",       "%{",   "1",  "'s'",   "0x1f", "/*",
                                  "*/",     "//",        "\n",   "\"", "1.5",   "\xff", "#",
                                  "[x] ",   "f(",        "x.y",  "~",  "?",     "\\"};
    std::mt19937 random(20240611);
    for (int round = 0; round < 20000; ++round) {
        xstd::XString text;
        for (uint32_t i = random() % 40; i > 0; --i) {
            if (random() % 16 == 0)
                text += static_cast<char>(random());
            else
                text += pieces[random() % std::size(pieces)];
        }
        XScript script(text);
        try {
            script.compile();
            ScriptListing(script.prog()).text();
        } catch (const xstd::XExceptionItems& failure) {
            ASSERT_EQ(failure.items().back().type(), "compile") << text;
        }
    }
}

TEST(AnyText, OfAMegabyteIsReadInLinearTime)
{
    const size_t megabyte = 1 << 20;
    EXPECT_EQ(failureOf(repeated(megabyte / 4, "a+b;")), "");
    EXPECT_EQ(failureOf(repeated(megabyte / 4, "1 + ") + "1"), "");
    EXPECT_EQ(failureOf(repeated(megabyte / 2, "a.") + "b"), "");
    EXPECT_EQ(failureOf(repeated(megabyte / 5, "a && ") + "b"), "");
    EXPECT_EQ(failureOf(repeated(megabyte / 4, "f();")), "");
    EXPECT_EQ(failureOf(repeated(megabyte / 10, "[x] { x };")), "");
    EXPECT_EQ(failureOf(repeated(megabyte / 12, "if (a) b; else ") + "c"), "");
    EXPECT_EQ(failureOf("'" + repeated(megabyte, "x")), "Closing quote not found for string");
    EXPECT_EQ(failureOf(repeated(megabyte / 3, "/* ")), "");
    EXPECT_EQ(failureOf(repeated(megabyte, ")")), "");
    EXPECT_EQ(failureOf(repeated(megabyte, ";")), "");
    // Every name is looked up in a full frame.
    std::string names = "var x";
    for (int i = 0; i < 30000; ++i)
        names += ",n" + std::to_string(i);
    EXPECT_EQ(failureOf(names + ";" + repeated(megabyte / 4, "x+y;")), "");
}

// --- the token at a place ---

TEST(TokenAt, GivesTheTokenThatEndsBehindThePlace)
{
    XScript script("ab + 12;\n 'c' d");
    EXPECT_EQ(script.tokenAt(0).shortText(), "label:ab");
    EXPECT_EQ(script.tokenAt(1).shortText(), "label:ab");
    EXPECT_EQ(script.tokenAt(2).shortText(), "operator:+");
    EXPECT_EQ(script.tokenAt(5).shortText(), "int:12");
    EXPECT_EQ(script.tokenAt(0, 6).shortText(), "int:12");
    EXPECT_EQ(script.tokenAt(1, 1).shortText(), "string:c");
    EXPECT_EQ(script.tokenAt(1, 5).shortText(), "label:d");
    EXPECT_TRUE(script.tokenAt(-1).isNull());
    EXPECT_TRUE(script.tokenAt(15).isNull());
    EXPECT_TRUE(script.tokenAt(16).isNull());
    EXPECT_TRUE(script.tokenAt(0, -1).isNull());
    EXPECT_TRUE(script.tokenAt(-1, 0).isNull());
    EXPECT_TRUE(script.tokenAt(9, 0).isNull());
}

TEST(TokenAt, LeavesTheCompilerWhereItIs)
{
    XScript script("a `");
    EXPECT_THROW(script.tokenAt(2), xstd::XExceptionItems);
    EXPECT_EQ(script.tokenAt(0).text, "a");
    EXPECT_EQ(XScript("a").compile().kind, huge::TK_AX);
}

} // namespace
