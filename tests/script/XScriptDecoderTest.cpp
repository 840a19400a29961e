#include "script/XScriptDecoder.h"
#include "script/XScriptToken.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using huge::XCStoken;
using huge::XScriptDecoder;

/// All tokens as "kind text", separated by blanks and "|".
std::string tokensOf(const xstd::XString& text)
{
    XScriptDecoder decoder(text);
    std::string result;
    for (XCStoken token(decoder.next()); !token.isNull(); token = XCStoken(decoder.next())) {
        result += result.empty() ? "" : " | ";
        result += std::string(huge::tokenKindName(token.kind)) + " " + token.text;
    }
    return result;
}

struct TokensCase {
    const char* text;
    const char* tokens;
};

class Tokens : public ::testing::TestWithParam<TokensCase> {};

TEST_P(Tokens, AreCutByTheLongestMatch)
{
    EXPECT_EQ(tokensOf(GetParam().text), GetParam().tokens);
}

INSTANTIATE_TEST_SUITE_P(Blanks, Tokens,
                         ::testing::ValuesIn(std::vector<TokensCase>{
                             {"", ""},
                             {" \t\r\n // all\n /* of it */ ", ""},
                             {"a /* no end", "label a"},
                             {"a /*/ b */ c", "label a | label c"},
                             {"a /* /* */ b", "label a | label b"},
                             {"a // b\nc", "label a | label c"},
                             {"a /**/", "label a"},
                         }));

INSTANTIATE_TEST_SUITE_P(
    Operators, Tokens,
    ::testing::ValuesIn(std::vector<TokensCase>{
        {"a**=2", "label a | operator **= | int 2"},
        {"x>>=1", "label x | operator >>= | int 1"},
        {"a^|b", "label a | operator ^| | label b"},
        {"a^|=b^=c", "label a | operator ^|= | label b | operator ^= | label c"},
        {"a<-b", "label a | operator < | operator - | label b"},
        {"<<=<<<=<", "operator <<= | operator << | operator <= | operator <"},
        {"===", "operator == | operator ="},
        {"!=!", "operator != | operator !"},
        {"|||=&&&=", "operator || | operator |= | operator && | operator &="},
        {"~()[]{}", "operator ~ | operator ( | operator ) | operator [ | operator ] | operator { "
                    "| operator }"},
        {"?,;.:#", "operator ? | operator , | operator ; | operator . | operator : | operator #"},
        {"+=-=*=/=%=", "operator += | operator -= | operator *= | operator /= | operator %="},
        {"*", "operator *"},
        {"**", "operator **"},
        {"^|", "operator ^|"},
    }));

INSTANTIATE_TEST_SUITE_P(Words, Tokens,
                         ::testing::ValuesIn(std::vector<TokensCase>{
                             {"@x1 $y _z A1", "label @x1 | label $y | label _z | label A1"},
                             {"var true null", "label var | label true | label null"},
                             {"'ab' 'cd'", "string abcd"},
                             {"'ab' /* and */ 'cd' \"e\"", "string abcd | string e"},
                             {"\"a\\n\"", "string a\n"},
                             {"''", "string "},
                         }));

INSTANTIATE_TEST_SUITE_P(Numbers, Tokens,
                         ::testing::ValuesIn(std::vector<TokensCase>{
                             {"007", "int 007"},
                             {"0xFf 0O17 0b101", "int 0xFf | int 0o17 | int 0b101"},
                             {"1'000_000", "int 1000000"},
                             {"1.e", "int 1 | operator . | label e"},
                             {"1.5", "float 1.5"},
                             {"1e3 1.5e3", "int 1e3 | float 1.5e3"},
                             {"2i", "imag 2i"},
                             {"1.5..100", "float 1.5..100"},
                             {".5", "operator . | int 5"},
                             {"-5", "operator - | int 5"},
                         }));

TEST(TokenPlaces, CountBytesFromZeroAndLinesFromOne)
{
    XScriptDecoder decoder("a\n  bcd /* \n */ 'x' 'y' ;");
    decoder.next();
    const XCStoken word(decoder.next());
    EXPECT_EQ(word.debugText(), "line:2, col:2, tok: bcd");
    EXPECT_EQ(word.cursor.pos, 4);
    EXPECT_EQ(word.size, 3);
    const XCStoken text(decoder.next());
    EXPECT_EQ(text.cursor.line(), 3);
    EXPECT_EQ(text.size, 7); // both literals and the blank between them
}

struct BadByteCase {
    const char* text;
    char byte;
    int line;
};

class BadBytes : public ::testing::TestWithParam<BadByteCase> {};

TEST_P(BadBytes, FailWithTypeMessageAndPlace)
{
    XScriptDecoder decoder(GetParam().text);
    try {
        while (decoder.next().type != xstd::tokenNull) {
        }
        FAIL() << "no failure";
    } catch (const xstd::XExceptionItems& failure) {
        EXPECT_EQ(failure.mess(), std::string("Unrecognized operator '") + GetParam().byte + "'");
        EXPECT_EQ(failure.items().at(0).type(), "compile");
        EXPECT_EQ(failure.extendInt("scriptLine"), GetParam().line);
        EXPECT_EQ(failure.extendInt("scriptPos"), decoder.cursor().pos);
        EXPECT_TRUE(failure.has("compile", "scriptCol"));
    }
}

INSTANTIATE_TEST_SUITE_P(Any, BadBytes,
                         ::testing::Values(BadByteCase{"`", '`', 1},
                                           BadByteCase{"a\nb \\", '\\', 2},
                                           BadByteCase{"a\xe4\xb8\xad", '\xe4', 1}));

TEST(ScannerFailures, ComeAsCompileFailures)
{
    XScriptDecoder decoder("'open");
    try {
        decoder.next();
        FAIL() << "no failure";
    } catch (const xstd::XExceptionItems& failure) {
        EXPECT_EQ(failure.mess(), "Closing quote not found for string");
        EXPECT_EQ(failure.items().at(0).type(), "compile");
    }
}

// --- the compiler's token ---

TEST(TokenKind, FollowsTheTypeAndGivesItBack)
{
    const uint8_t kinds[] = {0, 1, 5, 7, 10, 11, 12, 6, 16, 16};
    for (uint32_t type = 0; type < 10; ++type)
        EXPECT_EQ(XCStoken(xstd::XToken("", type, {})).kind, kinds[type]) << type;
    const uint32_t types[] = {0, 1, 8, 8, 8, 2, 7, 3, 3, 3, 4, 5, 6, 8, 8, 8, 8};
    for (int kind = 0; kind <= 16; ++kind)
        EXPECT_EQ(XCStoken(static_cast<huge::XTokenKind>(kind)).type, types[kind]) << kind;
}

TEST(TokenKind, StartsWithoutSlotModulusAndReference)
{
    const XCStoken token(xstd::XToken("x", xstd::tokenLabel, {}));
    EXPECT_EQ(token.idx, 0);
    EXPECT_EQ(token.modIdx, -1);
    EXPECT_EQ(token.prec, 0);
    EXPECT_FALSE(token.byRef);
}

struct TokenTextCase {
    uint8_t kind;
    const char* detailed;
    const char* placed;
    const char* brief;
};

class TokenText : public ::testing::TestWithParam<TokenTextCase> {};

TEST_P(TokenText, ShowsWhatItsKindCallsFor)
{
    XCStoken token(xstd::XToken("x", xstd::tokenLabel, {2, 10, 14, 14}));
    token.kind = GetParam().kind;
    token.idx = 3;
    EXPECT_EQ(token.toString(true), GetParam().detailed);
    EXPECT_EQ(token.toString(false), GetParam().placed);
    EXPECT_EQ(token.shortText(), GetParam().brief);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, TokenText,
    ::testing::Values(TokenTextCase{2, "type: ax", "type: ax", "ax"},
                      TokenTextCase{3, "type: stackvar, idx: '3'",
                                    "row: 3, col: 4, type: stackvar, idx: '3'", "stackvar:x"},
                      TokenTextCase{4, "type: stack, idx: '3'",
                                    "row: 3, col: 4, type: stack, idx: '3'", "stack[3]"},
                      TokenTextCase{15, "type: closurevar, token: 'x'",
                                    "row: 3, col: 4, type: closurevar, token: 'x'", "closurevar:x"},
                      TokenTextCase{8, "type: modint, token: 'x'",
                                    "row: 3, col: 4, type: modint, token: 'x'", "modint:x"},
                      TokenTextCase{16, "type: unknown, token: 'x'",
                                    "row: 3, col: 4, type: unknown, token: 'x'", "unknown:x"}));

TEST(TokenEquality, LooksAtKindTextAndData)
{
    XCStoken a(xstd::XToken(")", xstd::tokenOperator, {0, 0, 5, 5}));
    XCStoken b(xstd::XToken(")", xstd::tokenOperator, {1, 6, 9, 9}));
    b.idx = 4;
    EXPECT_EQ(a, b);
    b.data = {int64_t{1}};
    EXPECT_NE(a, b);
    a.data = {int64_t{1}};
    EXPECT_EQ(a, b);
    a.setKind(huge::TK_STRING);
    EXPECT_NE(a, b);
}

} // namespace
