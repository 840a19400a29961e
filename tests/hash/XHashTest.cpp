#include "hash/XHash.h"

#include "common/XException.h"
#include "hash/XRipemd160.h"
#include "hash/XSha256.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using xstd::h160;
using xstd::h256;

template <class Context>
std::string digestHex(const std::string& message, size_t pieceSize)
{
    Context context;
    const auto* bytes = reinterpret_cast<const uint8_t*>(message.data());
    for (size_t pos = 0; pos < message.size(); pos += pieceSize)
        context.write(bytes + pos, std::min(pieceSize, message.size() - pos));
    std::array<uint8_t, Context::digestSize> out;
    context.finish(out.data());
    std::string hex;
    for (const uint8_t byte : out)
        hex += xstd::format("%02x", byte);
    return hex;
}

struct DigestCase {
    std::string message;
    const char* sha256;
    const char* ripemd160;
};

// The messages and digests that the two algorithms were published with; the lengths of 55 to 64
// bytes, around the end of a padded block, were calculated with another implementation.
const std::vector<DigestCase> digestCases = {
    {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855",
     "9c1185a5c5e9fc54612808977ee8f548b2258d31"},
    {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad",
     "8eb208f7e05d987a9b044a8e98c6b087f15a0bfc"},
    {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
     "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1",
     "12a053384a9c0c88e405a06c27dcf49ada62eb2b"},
    {std::string(55, 'x'), "d5e285683cd4efc02d021a5c62014694958901005d6f71e89e0989fac77e4072",
     "c35538a4ab9792cab98479aa3ae2cc435c699b64"},
    {std::string(63, 'x'), "75220b47218278e656f2013bb8f0c455a25eaf01e86c64924e9d48d89776d6f2",
     "9a195cb1828886c55c6dfe9e042399833dfbcd00"},
    {std::string(64, 'x'), "7ce100971f64e7001e8fe5a51973ecdfe1ced42befe7ee8d5fd6219506b5393c",
     "bab3f04cc25d952a882718636600f5b22307ac41"},
    {std::string(1000000, 'a'), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0",
     "52783243c1697bdbe16d37f97f68f08325dc1528"},
};

TEST(Digests, GiveThePublishedValuesWhateverThePiecesAre)
{
    for (const DigestCase& row : digestCases) {
        for (const size_t pieceSize : {size_t(1000000), size_t(64), size_t(7)}) {
            EXPECT_EQ(digestHex<xstd::XSha256>(row.message, pieceSize), row.sha256)
                << row.message.size();
            EXPECT_EQ(digestHex<xstd::XRipemd160>(row.message, pieceSize), row.ripemd160)
                << row.message.size();
        }
    }
}

TEST(Digests, RunTheirTwoStages)
{
    // RIPEMD-160 of SHA-256, and SHA-256 of SHA-256, of nothing; read from the last byte on.
    EXPECT_EQ(xstd::hash160("").toHex(), "cb9f3b7c6fb1cf2c13a40637c189bdd066a272b4");
    EXPECT_EQ(xstd::hash256("").toHex(),
              "56944c5d3f98413ef45cf54545538103cc9f298e0575820ad3591376e2e0f65d");
}

TEST(Digests, TakeBytesInAnyShape)
{
    const xstd::XString text = "The quick brown fox";
    const std::vector<uint8_t> bytes(text.begin(), text.end());
    const uint8_t* first = bytes.data();
    const h256 digest = xstd::hash256(text);
    EXPECT_EQ(xstd::hash256(bytes), digest);
    EXPECT_EQ(xstd::hash256(first, bytes.size()), digest);
    EXPECT_EQ(xstd::hash256(first, first + bytes.size()), digest);
    EXPECT_EQ(xstd::hash160(first, first + bytes.size()), xstd::hash160(text));
    EXPECT_EQ(xstd::hash160(first, bytes.size()), xstd::hash160(bytes));

    xstd::XHash256 pieces256;
    xstd::XHash160 pieces160;
    h256 read256;
    h160 read160;
    for (int round = 0; round < 2; ++round) { // a context can be used again
        pieces256.reset();
        pieces160.reset();
        for (const uint8_t& byte : bytes) {
            pieces256.write(&byte, 1);
            pieces160.write(&byte, 1);
        }
        pieces256.finish(read256);
        pieces160.finish(read160);
        EXPECT_EQ(read256, digest);
        EXPECT_EQ(read160, xstd::hash160(text));
    }
}

TEST(DigestText, RunsFromTheLastByteToTheFirst)
{
    h256 value;
    value.bytes[0] = 1;
    EXPECT_EQ(value.toHex(), std::string(62, '0') + "01");
    EXPECT_EQ(h256().fromHex_(value.toHex()), value);
    EXPECT_EQ(h160().fromHex_("0x01").bytes[0], 1);
    EXPECT_EQ(h160().fromHex_(""), h160());
    std::ostringstream out;
    out << h160().fromHex_("0x01");
    EXPECT_EQ(out.str(), std::string(38, '0') + "01");
    // Digits in front of the value's own are neither read nor checked.
    EXPECT_EQ(h256().fromHex_("zz!!zz" + value.toHex()), value);
}

struct BadHexCase {
    const char* text;
    const char* message;
    const char* key;
};

TEST(DigestText, RefusesWhatIsNoHexadecimalText)
{
    const std::vector<BadHexCase> cases = {
        {"123", "Not a hex string, the length of hex string should be even", "stringSize"},
        {"12g4", "Not a hex string, Unexpected 'g' character occurred", "charIndex"}};
    for (const BadHexCase& row : cases) {
        h160 value = h160().fromHex_("77");
        try {
            value.fromHex_(row.text);
            ADD_FAILURE() << row.text;
        } catch (const xstd::XExceptionItems& failure) {
            EXPECT_EQ(failure.mess(), row.message);
            EXPECT_TRUE(failure.has("h256", row.key));
        }
        EXPECT_EQ(value, h160().fromHex_("77"));
    }
}

} // namespace
