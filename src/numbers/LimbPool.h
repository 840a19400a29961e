#pragma once

#include "numbers/limbs.h"

#include <cstddef>
#include <cstdint>

namespace huge {

#if defined(__SANITIZE_ADDRESS__)
#define HUGE_POOL_KEEPS_BLOCKS false
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define HUGE_POOL_KEEPS_BLOCKS false
#endif
#endif
#ifndef HUGE_POOL_KEEPS_BLOCKS
#define HUGE_POOL_KEEPS_BLOCKS true
#endif

/// Blocks of limbs for numbers and for the value objects that hold them. A handle is the address
/// of limb 0; directly in front of it stands one header word: limb count in the low 16 bits, sign
/// flag in the next 8, 8 bits unused, a signed exponent in the high 32. Every block has one owner.
///
/// Freed blocks are kept in one list per limb count, chained through their header words, so that
/// calculating with numbers of a steady size makes no call to the heap. What is kept is bounded
/// by maxFreeBytes; beyond that the longest blocks go back to the heap first. The pool works
/// before and after main, belongs to one thread and has no lock. Under the address sanitizer it
/// keeps nothing, so that the use of a freed block is found.
class LimbPool {
public:
    /// The first limb count that is refused.
    static constexpr size_t limit = 20800;
    /// Bits that the longest number has.
    static constexpr uint64_t maxBits = 64 * (limit - 1);
    /// Decimal digits of the greatest number.
    static constexpr size_t maxDigits = 400712;
    /// Free memory that the pool keeps at most.
    static constexpr size_t maxFreeBytes = size_t(64) << 20;

    /// A block of limbCount limbs that are not cleared; sign flag and exponent are 0. Throws
    /// std::runtime_error for limit and more limbs.
    static Limb* allocate(size_t limbCount)
    {
        if (limbCount >= limit)
            failLimit();
        if constexpr (HUGE_POOL_KEEPS_BLOCKS) {
            if (Limb* block = s_heads[limbCount]; block != nullptr) {
                s_heads[limbCount] = reinterpret_cast<Limb*>(block[-1]);
                s_freeBytes -= bytesOf(limbCount);
                block[-1] = limbCount;
                return block;
            }
        }
        return allocateFromHeap(limbCount);
    }

    /// Takes a block back; a null handle is ignored.
    static void release(Limb* block) noexcept
    {
        if (block == nullptr)
            return;
        if constexpr (HUGE_POOL_KEEPS_BLOCKS) {
            const size_t n = count(block);
            block[-1] = reinterpret_cast<Limb>(s_heads[n]);
            s_heads[n] = block;
            s_freeBytes += bytesOf(n);
            if (s_freeBytes > maxFreeBytes)
                shrink();
        } else {
            giveBack(block);
        }
    }

    /// The block with limbCount limbs. With keep the low limbs stay and further ones are cleared,
    /// a null handle giving a cleared block; without keep the limbs are not cleared. When the count
    /// changes, sign flag and exponent of the result are 0. A failure leaves the block alone.
    [[nodiscard]] static Limb* resize(Limb* block, size_t limbCount, bool keep);

    /// Limbs of a block.
    static size_t count(const Limb* block) noexcept { return block[-1] & 0xFFFF; }
    static bool isNegative(const Limb* block) noexcept { return (block[-1] & signMask) != 0; }
    static void setNegative(Limb* block, bool negative) noexcept
    {
        block[-1] = (block[-1] & ~signMask) | (Limb(negative) << signShift);
    }
    static int32_t exponent(const Limb* block) noexcept { return int32_t(block[-1] >> 32); }
    static void setExponent(Limb* block, int32_t exponent) noexcept
    {
        block[-1] = (block[-1] & 0xFFFFFFFFu) | (Limb(uint32_t(exponent)) << 32);
    }

    /// Bytes that lie in the free lists.
    static size_t freeBytes() noexcept { return s_freeBytes; }

    /// Throws the failure of a number that is too long: "Number size must less than 20800".
    [[noreturn]] static void failLimit();

private:
    static constexpr int signShift = 16;
    static constexpr Limb signMask = Limb(0xFF) << signShift;

    static size_t bytesOf(size_t limbCount) noexcept { return sizeof(Limb) * (limbCount + 1); }
    static Limb* allocateFromHeap(size_t limbCount);
    static void giveBack(Limb* block) noexcept;
    static void shrink() noexcept;

    static Limb* s_heads[limit];
    static size_t s_freeBytes;
};

/// Scratch limbs for the time of a scope, not cleared. Short ones come from the pool; they may be
/// longer than a number, since a product or a dividend needs spare room in the course of a work.
class LimbScratch {
public:
    explicit LimbScratch(size_t limbCount);
    ~LimbScratch();
    LimbScratch(const LimbScratch&) = delete;
    LimbScratch& operator=(const LimbScratch&) = delete;

    Limb* get() noexcept { return m_limbs; }
    operator Limb*() noexcept { return m_limbs; }

private:
    Limb* m_limbs;
    bool m_pooled;
};

} // namespace huge
