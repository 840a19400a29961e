#include "common/XStringDecoder.h"

#include <gtest/gtest.h>

using namespace xstd;

namespace {

template <class F>
XExceptionItems failureOf(F run)
{
    try {
        run();
    } catch (const XExceptionItems& failure) {
        return failure;
    }
    return {};
}

} // namespace

TEST(ScannerLook, SeesNothingAtTheEnd)
{
    XStringDecoder scanner("a");
    EXPECT_TRUE(scanner.isChar('a'));
    EXPECT_FALSE(scanner.isText("ab"));
    EXPECT_EQ(scanner.nextChar(), 1);
    EXPECT_TRUE(scanner.isEnd());
    EXPECT_EQ(scanner.current(), '\0');
    EXPECT_FALSE(scanner.isChar('\0'));
    EXPECT_FALSE(scanner.isIn(XCharSet(std::string(1, '\0'))));
}

TEST(ScannerFind, LeavesTheCursorAndStopsAtTheLine)
{
    XStringDecoder scanner("one two\nthree four");
    scanner.skip(1);
    EXPECT_EQ(scanner.find("two", true), 4);
    EXPECT_EQ(scanner.find("three", false), 8);
    EXPECT_EQ(scanner.find("three", true), -1);
    EXPECT_EQ(scanner.find("four", false), -1); // it ends with the text
    EXPECT_EQ(scanner.findChar('r', false), 10);
    EXPECT_EQ(scanner.findChar('r', true), -1);
    EXPECT_EQ(scanner.cursor().pos, 1);
}

struct StepCase {
    const char* character;
    int32_t bytes;
};

TEST(ScannerStep, GoesByTheRealLengthOfACharacter)
{
    for (const StepCase& row :
         {StepCase{"a", 1}, StepCase{"\xC3\xA4", 2}, StepCase{"\xE6\x95\xB0", 3},
          StepCase{"\xF0\x9F\x98\x80", 4}, StepCase{"\x95", 1}, StepCase{"\xE6\x95", 2}}) {
        XStringDecoder scanner(XString(row.character) + "zz");
        scanner.skip(1);
        EXPECT_EQ(scanner.cursor().pos, row.bytes) << row.character;
        EXPECT_EQ(scanner.cursor().charPos, 1);
    }
}

TEST(ScannerStep, CountsLines)
{
    XStringDecoder scanner("a\n\xE6\x95\xB0\r\n  b");
    scanner.skipUntilChar('b');
    EXPECT_EQ(scanner.cursor().row, 2);
    EXPECT_EQ(scanner.cursor().rowStart, 7);
    EXPECT_EQ(scanner.cursor().pos, 9);
    EXPECT_EQ(scanner.cursor().charPos, 7);
    EXPECT_EQ(scanner.newLines(), 2);
    EXPECT_EQ(scanner.clearNewLines().newLines(), 0);
    EXPECT_EQ(scanner.positionText(), "row: 3, col: 2");
    EXPECT_EQ(scanner.positionText(8), "row: 3, col: 1");
    EXPECT_EQ(scanner.messageAt("bad"), "row: 3, col: 2: bad");
}

TEST(ScannerSkip, TakesItsOwnKindAndNoMore)
{
    XStringDecoder scanner("12'3Fz");
    EXPECT_EQ(scanner.skipBinDigits(), 1);
    EXPECT_EQ(scanner.skipOctDigits(), 3);
    EXPECT_EQ(scanner.skipDecDigits(), 0);
    EXPECT_EQ(scanner.skipHexDigits(), 1);
    EXPECT_EQ(scanner.skipLabelChars(), 1);

    scanner.setText("\xE6\x95\xB0 line\nnext");
    EXPECT_EQ(scanner.skipLine(), 9);
    EXPECT_EQ(scanner.takeUntilCharset(XCharSet("xt")), "ne");
    EXPECT_EQ(scanner.skipCharset(XCharSet("x")), 1);
    EXPECT_EQ(scanner.take(9), "t");
    EXPECT_EQ(scanner.skipLine(), 0);
}

TEST(ScannerSkip, DoesNotSeeATerminatorThatEndsTheText)
{
    XStringDecoder scanner("ab*/");
    EXPECT_EQ(scanner.skipUntilString("*/"), 4);
    scanner.setText("ab*/ ");
    EXPECT_EQ(scanner.takeUntilString("*/"), "ab");
    EXPECT_TRUE(scanner.isText("*/"));
}

TEST(ScannerCursor, IsSavedOnAStack)
{
    XStringDecoder scanner("abc");
    EXPECT_FALSE(scanner.restoreCursor());
    scanner.pushCursor();
    scanner.skip(1);
    scanner.pushCursor();
    scanner.skip(1);
    scanner.popCursor();
    EXPECT_TRUE(scanner.restoreCursor());
    EXPECT_EQ(scanner.cursor().pos, 0);
    EXPECT_FALSE(scanner.restoreCursor());
    EXPECT_EQ(scanner.cursor().pos, 0);
}

struct StringCase {
    const char* source;
    const char* text;
    int32_t size;
    int32_t restsAt;
};

TEST(ScannerString, JoinsNeighboursWithTheSameQuote)
{
    const StringCase cases[] = {{R"("ab" "cd")", "abcd", 9, 9},
                                {R"("ab" 'cd')", "ab", 4, 5},
                                {R"("ab"  x)", "ab", 4, 6},
                                {R"('say "hi"' )", R"(say "hi")", 10, 11},
                                {R"('"q"')", R"("q")", 5, 5},
                                {R"("a\"")", R"(a")", 5, 5},
                                {R"("a\\")", R"(a\)", 5, 5},
                                {R"("\n\x41" "\102")", "\nAB", 15, 15},
                                {R"("")", "", 2, 2}};
    for (const StringCase& row : cases) {
        XStringDecoder scanner(row.source);
        const XToken token = scanner.next();
        EXPECT_EQ(token.text, row.text) << row.source;
        EXPECT_EQ(token.type, tokenString);
        EXPECT_EQ(token.size, row.size) << row.source;
        EXPECT_EQ(scanner.cursor().pos, row.restsAt) << row.source;
    }
}

TEST(ScannerTokens, OfEveryKind)
{
    XStringDecoder scanner(" a_1 12 1.5 2i 1e3 +");
    EXPECT_EQ(scanner.next().toString(),
              "type: Label, token: a_1, line: 1, col: 1, pos: 1, size: 3");
    EXPECT_EQ(scanner.next().toString(),
              "type: Integer, token: 12, line: 1, col: 5, pos: 5, size: 2");
    EXPECT_EQ(scanner.next().typeName(), std::string("float"));
    EXPECT_EQ(scanner.next().toString(),
              "type: Imag, token: 2ii, line: 1, col: 12, pos: 12, size: 2");
    EXPECT_EQ(scanner.next().type, tokenInteger);
    const XToken plus = scanner.next();
    EXPECT_EQ(plus.type, tokenOperator);
    EXPECT_EQ(plus.text, "+");
    EXPECT_EQ(plus.size, 1);
    EXPECT_EQ(scanner.next().type, tokenNull);
}

TEST(ScannerTokens, NameTheirTypes)
{
    XToken token;
    token.text = "true";
    const char* names[] = {"Null", "Operator", "Bool",  "Integer", "float",
                           "Imag", "String",   "Label", "Unknown"};
    for (uint32_t type = 0; type < 9; ++type) {
        token.type = type;
        EXPECT_STREQ(token.typeName(), names[type]);
        EXPECT_EQ(token.isTrue(), type == tokenBool);
    }
    token.type = tokenString;
    EXPECT_EQ(token.toString(), "type: String, token: \"true\", line: 1, col: 0, pos: 0, size: 0");
}

TEST(ScannerBetween, KeepsBothDelimiters)
{
    XStringDecoder scanner("/*/ x */ y");
    EXPECT_EQ(scanner.getBetween("(", ")").type, tokenNull);
    EXPECT_EQ(scanner.getBetween("/*", "*/").text, "/*/ x */"); // no end inside the start
    EXPECT_EQ(scanner.cursor().pos, 8);
    scanner.setText("[a[b]c");
    const XToken token = scanner.getBetweenChars('[', ']');
    EXPECT_EQ(token.text, "[a[b]");
    EXPECT_EQ(token.size, 5);
    scanner.setText("[abc");
    EXPECT_EQ(scanner.getBetweenChars('[', ']').text, "[abc");
}

TEST(ScannerFailure, NamesThePlace)
{
    XStringDecoder scanner("a\n \"open\\\"");
    scanner.next();
    const XExceptionItems open = failureOf([&] { scanner.next(); });
    EXPECT_EQ(open.mess(), "Closing quote not found for string");
    EXPECT_EQ(open.extendInt("stringDecoder", "stringPos"), 10);
    EXPECT_EQ(open.extendInt("stringLine"), 2);
    EXPECT_EQ(open.extendInt("stringCol"), 8);

    scanner.setText("xyz");
    EXPECT_EQ(failureOf([&] { scanner.getNumber(); }).mess(), "Here could be a number");
    EXPECT_EQ(failureOf([&] { scanner.skipUntilString(""); }).mess(),
              "The parameter named _str size is Zero");
    EXPECT_EQ(failureOf([&] { scanner.skipUntilCharset(XCharSet()); }).mess(),
              "The parameter named '_chars' size is Zero");
    EXPECT_EQ(failureOf([&] { scanner.raise(X_HERE, "m", 2); }).extendInt("stringPos"), 2);
    EXPECT_EQ(scanner.cursor().pos, 0);
}
