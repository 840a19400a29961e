#include "common/XByteCursor.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

using xstd::XByteCursor;

namespace {

template <class F>
std::string failureOf(F&& read)
{
    try {
        read();
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
    return "";
}

} // namespace

TEST(ByteCursor, ElementsStandLittleEndianBehindEachOther)
{
    xstd::XByteWriter writer;
    writer.putInt(-2);
    writer.putU16(0x1234);
    writer.putU8(0xff);
    writer.putU64(0x0102030405060708);
    writer.putString("ab");
    writer.putBytes({7});
    const std::vector<uint8_t> image = writer.take();
    EXPECT_EQ(image,
              (std::vector<uint8_t>{0xfe, 0xff, 0xff, 0xff, 0x34, 0x12, 0xff, 8,   7, 6, 5, 4, 3,
                                    2,    1,    2,    0,    0,    0,    'a',  'b', 1, 0, 0, 0, 7}));
    EXPECT_TRUE(writer.bytes().empty());

    XByteCursor cursor(image);
    EXPECT_EQ(cursor.getInt("int"), -2);
    EXPECT_EQ(cursor.getU16("word"), 0x1234);
    EXPECT_EQ(cursor.getU8("byte"), 0xff);
    EXPECT_EQ(cursor.getU64("long"), 0x0102030405060708u);
    EXPECT_EQ(cursor.getString("text"), "ab");
    XByteCursor block = cursor.getBlock("block");
    EXPECT_TRUE(cursor.atEnd());
    EXPECT_EQ(block.offset(), 25u);
    EXPECT_EQ(block.getU8("byte"), 7);
}

TEST(ByteCursor, WhatDoesNotFitIsNamedAndLeavesThePosition)
{
    const std::vector<uint8_t> image = {3, 0, 0, 0, 'a', 'b'};
    XByteCursor cursor(image);
    EXPECT_EQ(failureOf([&] { cursor.getString("name"); }),
              "The length of the name does not fit: 3 at offset 0");
    EXPECT_EQ(failureOf([&] { cursor.getU64("digest"); }),
              "The image ends inside the digest at offset 0");
    EXPECT_EQ(failureOf([&] { cursor.getIntIn(4, 9, "row"); }),
              "The row is out of range: 3 at offset 0");
    EXPECT_EQ(cursor.getIntIn(3, 3, "row"), 3);
    EXPECT_EQ(failureOf([&] { cursor.getBytes("block"); }),
              "The image ends inside the block at offset 4");
    EXPECT_EQ(cursor.left(), 2u);
    const std::vector<uint8_t> negative = {0xff, 0xff, 0xff, 0xff};
    EXPECT_EQ(failureOf([&] { XByteCursor(negative).getBytes("block"); }),
              "The length of the block does not fit: -1 at offset 0");
}
