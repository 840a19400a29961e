#include "numbers/longBase58.h"
#include "hash/XBase58.h"
#include "numberTesting.h"

#include <gtest/gtest.h>

using namespace huge;

namespace {

using Bytes = std::vector<uint8_t>;

/// Bytes of the stream, or one repeated, behind so many zeros.
Bytes data(size_t count, size_t zeros, int repeated)
{
    Stream stream(count);
    Bytes bytes(zeros);
    while (bytes.size() < count)
        bytes.push_back(uint8_t(repeated < 0 ? stream.next() : uint64_t(repeated)));
    return bytes;
}

} // namespace

TEST(LongBase58, IsThatOfThePlainEncoder)
{
    for (const size_t count : {0, 1, 469, 470, 471, 936, 937, 938, 1872, 3000, 5001}) {
        for (const size_t zeros : {0, 1, 700}) {
            for (const int repeated : {-1, 0, 1, 255}) {
                const Bytes bytes = data(count, std::min(count, zeros), repeated);
                const xstd::XString text = longBase58(bytes.data(), bytes.data() + bytes.size());
                ASSERT_EQ(text, xstd::encodeBase58(bytes.data(), bytes.data() + bytes.size()));
                Bytes back{7};
                ASSERT_TRUE(fromLongBase58(" \t" + text + "\n", back));
                ASSERT_EQ(back, bytes) << count << " bytes";
                ASSERT_TRUE(fromLongBase58Check(longBase58Check(bytes), back));
                ASSERT_EQ(back, bytes);
            }
        }
    }
}

TEST(LongBase58, RefusesWhatIsNone)
{
    const Bytes bytes = data(3000, 0, -1);
    const xstd::XString text = longBase58(bytes.data(), bytes.data() + bytes.size());
    Bytes out{7};
    // A bad character at both ends, inside, and as a blank at the border of two pieces.
    for (const size_t place : {size_t(0), size_t(640), text.size() - 641, text.size() - 1}) {
        for (const char bad : {'0', 'l', '\x80'}) {
            xstd::XString broken = text;
            broken[place] = bad;
            EXPECT_FALSE(fromLongBase58(broken, out));
        }
    }
    xstd::XString blank = text;
    blank.insert(text.size() - 640, 1, ' ');
    EXPECT_FALSE(fromLongBase58(blank, out));
    EXPECT_EQ(out, Bytes{7});
    EXPECT_FALSE(fromLongBase58Check(text, out));
    EXPECT_EQ(out, Bytes());
}
