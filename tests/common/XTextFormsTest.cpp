#include "common/XTextForms.h"

#include "common/XPlatform.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <limits>

using namespace xstd;

namespace {

template <class F>
std::string errorOf(F run)
{
    try {
        run();
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
    return "no error";
}

} // namespace

TEST(TextOfBytes, OfOneByte)
{
    EXPECT_EQ(hexByte(0xAF), "AF");
    EXPECT_EQ(hexByte(5), "05");
    EXPECT_EQ(octByte(8), "010");
    EXPECT_EQ(octByte(255), "377");
    EXPECT_EQ(hexValue("aF"), 0xAF);
    EXPECT_EQ(octValue("377"), 255);
}

TEST(TextOfBytes, RefusesOtherLengthsAndDigits)
{
    EXPECT_EQ(errorOf([] { hexValue("abc"); }), "[abc] is not a hexstr!");
    EXPECT_EQ(errorOf([] { hexValue(""); }), "[] is not a hexstr!");
    EXPECT_EQ(errorOf([] { octValue("400"); }), "[400] is not a octstr!");
    EXPECT_EQ(errorOf([] { octValue("18"); }), "[18] is not a octstr!");
    EXPECT_EQ(errorOf([] { octValue("081"); }), "[081] is not a octstr!");
}

TEST(TextOfBytes, ReadsHexadecimalInBothOrders)
{
    EXPECT_EQ(hexToBytes(""), XBytes{});
    EXPECT_EQ(hexToBytes("0xABC"), (XBytes{0x0A, 0xBC}));
    EXPECT_EQ(hexToBytes("12g4"), (XBytes{0x12}));
    EXPECT_EQ(hexToBytesReversed("0XABC"), (XBytes{0xBC, 0x0A}));
    EXPECT_EQ(octToBytes("1777"), (XBytes{0xFF, 0x03})); // 1023
    EXPECT_EQ(binToBytes("1100000001"), (XBytes{0x01, 0x03}));
}

TEST(TextOfBytes, WritesThem)
{
    const uint8_t bytes[] = {0x0A, 0xB1};
    EXPECT_EQ(bytesToBin(bytes, 2), "0000101010110001");
    EXPECT_EQ(bytesToHex(bytes, 2), "0ab1");
    EXPECT_EQ(bytesToHexReversed(bytes, 2), "b10a");
    EXPECT_EQ(bytesToOct(bytes, 2), "130412"); // 0xB10A
    EXPECT_EQ(bytesToHex(bytes, 0), "");
}

struct Int64Case {
    int64_t value;
    const char* hex;
    const char* oct;
    const char* bin;
};

TEST(Int64Text, HasPrefixAndNoLeadingZeros)
{
    const Int64Case cases[] = {
        {0, "0x", "0c", "0b"},
        {10, "0xa", "0c12", "0b1010"},
        {-9, "-0x9", "-0c11", "-0b1001"},
        {std::numeric_limits<int64_t>::min(), "-0x8000000000000000", "-0c1000000000000000000000",
         "-0b1000000000000000000000000000000000000000000000000000000000000000"}};
    for (const Int64Case& row : cases) {
        EXPECT_EQ(int64ToHex(row.value), row.hex);
        EXPECT_EQ(int64ToOct(row.value), row.oct);
        EXPECT_EQ(int64ToBin(row.value), row.bin);
    }
}

TEST(Int64Text, ReadsTheLowEightBytes)
{
    EXPECT_EQ(hexToInt64(""), 0);
    EXPECT_EQ(hexToInt64("0x1234"), 0x1234);
    EXPECT_EQ(hexToInt64("ff0000000000000001"), 1);
    EXPECT_EQ(hexToInt64("0xffffffffffffffff"), -1);
    EXPECT_EQ(octToInt64("0c17"), 15);
    EXPECT_EQ(binToInt64("0b100000001"), 257);
}

TEST(EscapedText, KnowsEveryByteOfTheTable)
{
    EXPECT_EQ(escapeText("a\n\r\t\"'\a\b\f\v\\z"), "\"a\\n\\r\\t\\\"\\'\\a\\b\\f\\v\\\\z\"");
    EXPECT_EQ(escapeChar(1), "01");
    EXPECT_EQ(escapeText("\xE6\x95\xB0"), "\"\xE6\x95\xB0\"");
}

TEST(EscapedText, ReadsBackWhatItWrote)
{
    for (const char* text : {"", "\"", "\"\"", "\\", "a\\\"", "say \"hi\"", "line\n\ttab", "'"})
        EXPECT_EQ(unescapeText(escapeText(text)), text);
}

struct UnescapeCase {
    const char* text;
    const char* bytes;
};

TEST(EscapedText, Unescapes)
{
    const UnescapeCase cases[] = {{"\"abc\"", "abc"},     {"abc", "abc"},   {"\"", ""},
                                  {"a\\x41b", "aAb"},     {"\\x9", "\t"},   {"\\x9.", "\t."},
                                  {"a\\xb", "a\x0b"},     {"\\x", ""},      {"\\x.", "."},
                                  {"\\101", "A"},         {"\\12z", "\nz"}, {"\\1234", "S4"},
                                  {"\\q5", "5"},          {"\\8", ""},      {"say \\\"", "say \""},
                                  {"end\\\\\"", "end\\"}, {"a\\", "a"},     {"\\xzz", "\x53"}};
    for (const UnescapeCase& row : cases)
        EXPECT_EQ(unescapeText(row.text), row.bytes) << row.text;
}

TEST(Encodings, AreTold)
{
    for (const char* text : {"", "abc", "\xC3\xA4", "\xE6\x95\xB0", "\xF0\x9F\x98\x80"})
        EXPECT_TRUE(isUtf8Text(text)) << text;
    for (const char* text : {"\x80", "\xC3", "\xC3(", "\xE6\x95", "\xE6\x95z"})
        EXPECT_FALSE(isUtf8Text(text)) << text;
    EXPECT_TRUE(isGbkText("a\xCA\xFD"));
    EXPECT_FALSE(isGbkText("\xCA"));
    EXPECT_FALSE(isGbkText("\x80\x40"));
    EXPECT_FALSE(isGbkText("\x81\x3F"));
    EXPECT_FALSE(isGbkText("\x81\xFF"));
    EXPECT_EQ(utf8Length('a'), 1);
    EXPECT_EQ(utf8Length('\xE6'), 3);
    EXPECT_EQ(utf8Length('\x95'), 1);
}

TEST(Encodings, WideTextGoesThereAndBack)
{
    const XString text = "a\xC3\xA4\xE6\x95\xB0\xF0\x9F\x98\x80";
    EXPECT_EQ(localToWide(text), L"a\u00E4\u6570\U0001F600");
    EXPECT_EQ(wideToLocal(localToWide(text)), text);
    EXPECT_EQ(localToWide("\xE6\x95x\xED\xA0\x80"), L"\uFFFD\uFFFDx\uFFFD"); // cut; a surrogate
    EXPECT_EQ(wideToLocal(std::wstring(1, wchar_t(0xD800))), "\xEF\xBF\xBD");
}

TEST(SmallPrime, CountsOneAndFindsSquares)
{
    for (const int64_t n : {int64_t(1), int64_t(2), int64_t(3), int64_t(5), int64_t(7),
                            int64_t(2147483647), int64_t(1000000007)})
        EXPECT_TRUE(isSmallPrime(n)) << n;
    for (const int64_t n : {int64_t(-7), int64_t(0), int64_t(4), int64_t(9), int64_t(25),
                            int64_t(49), int64_t(2147483647) * 3, int64_t(46337) * 46337})
        EXPECT_FALSE(isSmallPrime(n)) << n;
}

TEST(DoubleText, IsFixed)
{
    EXPECT_EQ(doubleText(std::nan(""), 3), "Nan");
    EXPECT_EQ(doubleText(-0.0, 3), "0");
    EXPECT_EQ(doubleText(1.5, 3), "1.500");
    EXPECT_EQ(doubleText(1e20, 0), "100000000000000000000");
}

TEST(Platform, KnowsTheProgramAndTheUser)
{
    EXPECT_EQ(moduleFileName().right(19), "/tavix_common_tests");
    EXPECT_EQ(moduleDir() + "/tavix_common_tests", moduleFileName());
    EXPECT_FALSE(XPlatform::userName().empty());
    setenv("XDG_DATA_HOME", "/there", 1);
    unsetenv("APPDATA");
    EXPECT_EQ(XPlatform::userDataDir(), "/there");
    setenv("APPDATA", "/first", 1);
    EXPECT_EQ(XPlatform::userDataDir(), "/first");
    unsetenv("APPDATA");
    unsetenv("XDG_DATA_HOME");
    setenv("HOME", "/home/one", 1);
    EXPECT_EQ(XPlatform::userDataDir(), "/home/one/.local/share");
    EXPECT_GT(XPlatform::clockTicks(), int64_t(1600000000) * 10000000);
    EXPECT_THROW(XPlatform::localTime(std::numeric_limits<int64_t>::max()), std::runtime_error);
    errno = ENOENT;
    EXPECT_EQ(errnoText(), "(ErrNo: 2): No such file or directory");
}
