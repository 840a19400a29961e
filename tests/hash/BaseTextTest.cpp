#include "common/XException.h"
#include "common/XStop.h"
#include "hash/XBase58.h"
#include "hash/XBase64.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using xstd::XString;
using Bytes = std::vector<uint8_t>;

Bytes bytesOf(const std::string& text)
{
    return Bytes(text.begin(), text.end());
}

struct BaseCase {
    std::string bytes;
    const char* text;
};

// From "The Base58 Encoding Scheme"; zero bytes in front are a digit each.
const std::vector<BaseCase> base58Cases = {
    {"", ""},
    {std::string(1, '\0'), "1"},
    {std::string(2, '\0'), "11"},
    {"Hello World!", "2NEpo7TZRRrLZSi2U"},
    {"The quick brown fox jumps over the lazy dog.",
     "USm3fpXnKG5EUBx2ndxBDMPVciP5hGey2Jh4NDv6gmeo1LkMeiKrLJUUBk6Z"},
    {std::string("\x00\x00\x28\x7f\xb4\xcd", 6), "11233QC4"}};

TEST(Base58, WritesAndReadsThePublishedValues)
{
    for (const BaseCase& row : base58Cases) {
        const Bytes bytes = bytesOf(row.bytes);
        EXPECT_EQ(xstd::encodeBase58(bytes.data(), bytes.data() + bytes.size()), row.text);
        Bytes read = {7};
        EXPECT_TRUE(xstd::decodeBase58(row.text, read));
        EXPECT_EQ(read, bytes) << row.text;
    }
}

TEST(Base58, ReadsATextBetweenBlanksUpToItsNul)
{
    Bytes read;
    EXPECT_TRUE(xstd::decodeBase58(" \t1\n ", read));
    EXPECT_EQ(read, Bytes{0});
    EXPECT_TRUE(xstd::decodeBase58(XString(std::string("11\0!!", 5)), read));
    EXPECT_EQ(read, (Bytes{0, 0}));
    for (const char* bad : {"0", "O", "I", "l", "2 2", "1 1", "2-", "\xe4\xb8\xad"})
        EXPECT_FALSE(xstd::decodeBase58(bad, read)) << bad;
    EXPECT_EQ(read, (Bytes{0, 0}));
}

// The plain way: one digit and one byte at a time.
std::string plainBase58(const Bytes& bytes)
{
    static const char alphabet[] = "123456789ABCDEFGHJKLMNPQRSTUVWXYZabcdefghijkmnopqrstuvwxyz";
    Bytes digits;
    for (const uint8_t byte : bytes) {
        uint32_t carry = byte;
        for (uint8_t& digit : digits) {
            carry += 256u * digit;
            digit = uint8_t(carry % 58);
            carry /= 58;
        }
        for (; carry != 0; carry /= 58)
            digits.push_back(uint8_t(carry % 58));
    }
    std::string text;
    for (size_t i = 0; i < bytes.size() && bytes[i] == 0; ++i)
        text.push_back('1');
    for (size_t i = digits.size(); i-- > 0;)
        text.push_back(alphabet[digits[i]]);
    return text;
}

TEST(Base58, AgreesWithTheDigitByDigitWay)
{
    std::mt19937 random(58);
    for (size_t length = 0; length < 300; ++length) {
        Bytes bytes(length);
        for (uint8_t& byte : bytes)
            byte = uint8_t(length % 3 == 0 ? 255 : random());
        std::fill_n(bytes.begin(), std::min<size_t>(length, random() % 4), uint8_t(0));
        const XString text = xstd::encodeBase58(bytes.data(), bytes.data() + length);
        EXPECT_EQ(text, plainBase58(bytes));
        Bytes read;
        EXPECT_TRUE(xstd::decodeBase58(text, read));
        EXPECT_EQ(read, bytes);
    }
}

TEST(Base58, CanBeStopped)
{
    const Bytes bytes(1000, 1);
    xstd::XStop::request();
    EXPECT_THROW(xstd::encodeBase58(bytes.data(), bytes.data() + bytes.size()),
                 xstd::XExceptionItems);
    Bytes read;
    EXPECT_THROW(xstd::decodeBase58(XString(1000, 'z'), read), xstd::XExceptionItems);
    xstd::XStop::clear();
}

// Calculated with another implementation.
const std::vector<BaseCase> checkedCases = {{"", "x4Luh"},
                                            {std::string(1, '\0'), "16ifi61"},
                                            {"abc", "4h3c6K3eix"},
                                            {std::string("\0\0hello", 7), "112L5B5yqsrHgJ8"}};

TEST(Base58Check, CarriesTheHashOfItsBytes)
{
    for (const BaseCase& row : checkedCases) {
        EXPECT_EQ(xstd::encodeBase58Check(bytesOf(row.bytes)), row.text);
        Bytes read = {7};
        EXPECT_TRUE(xstd::decodeBase58Check(row.text, read));
        EXPECT_EQ(read, bytesOf(row.bytes));
        std::string damaged = row.text;
        damaged.back() = damaged.back() == 'z' ? 'y' : 'z';
        EXPECT_FALSE(xstd::decodeBase58Check(damaged, read));
        EXPECT_TRUE(read.empty());
    }
    for (const char* bad : {"", "111", "0", "2NEpo7TZRRrLZSi2U"}) {
        Bytes read = {7};
        EXPECT_FALSE(xstd::decodeBase58Check(bad, read)) << bad;
        EXPECT_TRUE(read.empty());
    }
}

// RFC 4648, section 10, and every digit of the alphabet.
const std::vector<BaseCase> base64Cases = {
    {"", ""},
    {"f", "Zg=="},
    {"fo", "Zm8="},
    {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="},
    {"fooba", "Zm9vYmE="},
    {"foobar", "Zm9vYmFy"},
    {std::string("\x00\x10\x83\x10\x51\x87\x20\x92\x8b\x30\xd3\x8f\x41\x14\x93\x51"
                 "\x55\x97\x61\x96\x9b\x71\xd7\x9f\x82\x18\xa3\x92\x59\xa7\xa2\x9a"
                 "\xab\xb2\xdb\xaf\xc3\x1c\xb3\xd3\x5d\xb7\xe3\x9e\xbb\xf3\xdf\xbf",
                 48),
     "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"}};

TEST(Base64, WritesAndReadsThePublishedValues)
{
    for (const BaseCase& row : base64Cases) {
        const Bytes bytes = bytesOf(row.bytes);
        EXPECT_EQ(xstd::encodeBase64(bytes.data(), bytes.data() + bytes.size()), row.text);
        Bytes read;
        EXPECT_TRUE(xstd::decodeBase64(row.text, read));
        EXPECT_EQ(read, bytes) << row.text;
    }
}

TEST(Base64, RefusesStrayCharactersAndCutGroups)
{
    for (const char* bad : {"Z", "Zg", "Zg=", "Zg== ", "Zm9v\n", "Zm9-", "Zm9_", "Z\xc3\xa9=",
                            "===="
                            "="}) {
        Bytes read = {7};
        EXPECT_FALSE(xstd::decodeBase64(bad, read)) << bad;
        EXPECT_EQ(read, Bytes{7});
    }
}

TEST(Base64, TakesStrayPaddingForAZeroDigit)
{
    Bytes read;
    EXPECT_TRUE(xstd::decodeBase64("Zg==Zg==", read));
    EXPECT_EQ(read, bytesOf("ff"));
    EXPECT_TRUE(xstd::decodeBase64("=m9v", read)); // as Am9v, appended
    EXPECT_EQ(read, (Bytes{'f', 'f', 0x02, 0x6f, 0x6f}));
    read.clear();
    EXPECT_TRUE(xstd::decodeBase64("Zm=v", read)); // the second byte is left out, the third stays
    EXPECT_EQ(read, (Bytes{0x66, 0x2f}));
    read.clear();
    EXPECT_TRUE(xstd::decodeBase64(XString(std::string("Zg==\0!", 6)), read));
    EXPECT_EQ(read, bytesOf("f"));
}

TEST(Base64, ReadsBackWhatItWrites)
{
    std::mt19937 random(64);
    for (size_t length = 0; length < 200; ++length) {
        Bytes bytes(length);
        for (uint8_t& byte : bytes)
            byte = uint8_t(random());
        Bytes read;
        EXPECT_TRUE(
            xstd::decodeBase64(xstd::encodeBase64(bytes.data(), bytes.data() + length), read));
        EXPECT_EQ(read, bytes);
    }
}

} // namespace
