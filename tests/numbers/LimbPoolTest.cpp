#include "numberTesting.h"
#include "numbers/wordModular.h"

#include <gtest/gtest.h>

using namespace huge;

TEST(LimbPool, ABlockBeginsWithItsLimbCountAlone)
{
    Limb* block = LimbPool::allocate(3);
    LimbPool::setNegative(block, true);
    LimbPool::setExponent(block, -7);
    EXPECT_EQ(LimbPool::count(block), 3u);
    EXPECT_TRUE(LimbPool::isNegative(block));
    EXPECT_EQ(LimbPool::exponent(block), -7);
    LimbPool::release(block);
    block = LimbPool::allocate(3);
    EXPECT_EQ(block[-1], 3u);
    LimbPool::release(block);
    LimbPool::release(nullptr);
    LimbPool::release(LimbPool::allocate(0));
}

TEST(LimbPool, ResizeKeepsTheLowLimbsAndClearsTheRest)
{
    Limb* block = LimbPool::resize(nullptr, 2, true);
    EXPECT_TRUE(limbsIsZero(block, 2));
    limbsFill(block, 2, 7);
    block = LimbPool::resize(block, 4, true);
    EXPECT_TRUE(block[0] == 7 && block[1] == 7 && block[2] == 0 && block[3] == 0);
    LimbPool::setNegative(block, true);
    EXPECT_EQ(LimbPool::resize(block, 4, false), block);
    block = LimbPool::resize(block, 1, true);
    EXPECT_TRUE(block[-1] == 1 && block[0] == 7);
    EXPECT_EQ(failureOf([&] { block = LimbPool::resize(block, 20800, true); }),
              "Number size must less than 20800");
    EXPECT_EQ(block[0], 7u);
    LimbPool::release(block);
}

TEST(LimbPool, KeepsABoundedAmountOfFreeMemory)
{
    std::vector<Limb*> blocks;
    for (size_t n = 20000; n < 20800; ++n) // 130 MB of sizes that are asked for once
        blocks.push_back(LimbPool::allocate(n));
    for (Limb* block : blocks)
        LimbPool::release(block);
    EXPECT_LE(LimbPool::freeBytes(), LimbPool::maxFreeBytes);
    if (HUGE_POOL_KEEPS_BLOCKS) {
        EXPECT_GE(LimbPool::freeBytes(), LimbPool::maxFreeBytes / 4);
    }
}

TEST(LimbPool, AReleasedBlockIsTheNextOne)
{
    if (!HUGE_POOL_KEEPS_BLOCKS)
        return;
    Limb* block = LimbPool::allocate(5);
    LimbPool::release(block);
    Limb* again = LimbPool::allocate(5);
    EXPECT_EQ(again, block);
    LimbPool::release(again);
}

TEST(LimbKernels, CompareFractionsFromTheTop)
{
    const Limb half[] = {Limb(1) << 63};
    const Limb longHalf[] = {0, 0, Limb(1) << 63};
    const Limb more[] = {1, 0, Limb(1) << 63};
    EXPECT_EQ(limbsCompareTop(half, 1, longHalf, 3), 0);
    EXPECT_EQ(limbsCompareTop(half, 1, more, 3), -1);
    EXPECT_EQ(limbsCompareTop(more, 3, half, 1), 1);
    EXPECT_EQ(limbsCompareTop(half, 0, more, 3), -1);
}

TEST(LimbKernels, CountZeroBitsAndLimbs)
{
    const Limb x[] = {0, 8, 0};
    EXPECT_EQ(limbsTrailingZeros(x, 3), 67u);
    EXPECT_EQ(limbsLeadingZeros(x, 3), 124u);
    EXPECT_EQ(limbsEffective(x, 3), 2u);
    EXPECT_EQ(limbsTrailingZeros(x, 1), 64u);
    EXPECT_EQ(limbsLeadingZeros(x, 1), 64u);
    EXPECT_EQ(limbsLeadingZeros(x, 0), 0u);
    EXPECT_EQ(bitLength64(0), 0u);
    EXPECT_EQ(bitLength64(~uint64_t(0)), 64u);
    EXPECT_EQ(mulMod64(~uint64_t(0), ~uint64_t(0), 1000000007), 114944269u);
}

TEST(LimbKernels, FillsAndStepsCarry)
{
    Limb x[3];
    limbsOnes(x, 3);
    EXPECT_TRUE(limbsIsOnes(x, 3));
    EXPECT_EQ(limbsInc(x, 3), 1u);
    EXPECT_TRUE(limbsIsZero(x, 3));
    EXPECT_EQ(limbsDec(x, 3), 1u);
    EXPECT_EQ(limbsInc(x, 0), 1u);
    Limb grown[4];
    limbsShlGrow(x, 3, 5, grown);
    EXPECT_EQ(grown[3], 31u);
    limbsShlGrow(x, 3, 0, grown);
    EXPECT_EQ(grown[3], 0u);
    Limb one[] = {1, 0};
    EXPECT_TRUE(limbsIsOne(one, 2) && !limbsIsOne(x, 3));
}
