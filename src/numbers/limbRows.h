#pragma once

#include "numbers/limbs.h"

namespace huge {

// The innermost loops: one row of a sum or of a product, n limbs, which may be 0. On x86-64 they
// are written in assembly, because compilers keep the carry flag in a register between two limbs,
// which halves the speed; the portable form gives the same results everywhere else. They are
// inline for limbs.cpp, where a call would cost as much as a row of four limbs.

// The rows in plain C++: for other processors, and for the few limbs beside the unrolled blocks.

inline Limb plainAdd(const Limb* a, const Limb* b, size_t n, Limb carry, Limb* r) noexcept
{
    for (size_t i = 0; i < n; ++i) {
        const Limb partial = a[i] + carry;
        carry = partial < carry;
        const Limb sum = partial + b[i];
        carry += sum < partial;
        r[i] = sum;
    }
    return carry;
}

inline Limb plainSub(const Limb* a, const Limb* b, size_t n, Limb borrow, Limb* r) noexcept
{
    for (size_t i = 0; i < n; ++i) {
        const Limb partial = a[i] - borrow;
        borrow = partial > a[i];
        const Limb limb = b[i]; // before r, which may be b, is written
        borrow += partial < limb;
        r[i] = partial - limb;
    }
    return borrow;
}

inline Limb plainMul(const Limb* a, size_t n, Limb m, Limb carry, Limb* r) noexcept
{
    for (size_t i = 0; i < n; ++i) {
        const Limb128 t = Limb128(a[i]) * m + carry;
        r[i] = Limb(t);
        carry = Limb(t >> 64);
    }
    return carry;
}

inline Limb plainAddMul(Limb* r, const Limb* a, size_t n, Limb m, Limb carry) noexcept
{
    for (size_t i = 0; i < n; ++i) {
        const Limb128 t = Limb128(a[i]) * m + r[i] + carry; // at most 2^128 - 1
        r[i] = Limb(t);
        carry = Limb(t >> 64);
    }
    return carry;
}

inline Limb plainSubMul(Limb* r, const Limb* a, size_t n, Limb m, Limb carry) noexcept
{
    for (size_t i = 0; i < n; ++i) {
        const Limb128 t = Limb128(a[i]) * m + carry;
        const Limb low = Limb(t);
        carry = Limb(t >> 64) + (r[i] < low);
        r[i] -= low;
    }
    return carry;
}

#if defined(__x86_64__)

inline const bool hasMulx = [] {
    __builtin_cpu_init();
    return __builtin_cpu_supports("bmi2") != 0;
}();

// Both rows of sums are the same loop but for the instruction; lea and dec leave the carry flag
// alone, so it lives through the whole row. Four limbs a turn.
#define HUGE_SUM_LIMB(OP, at)                                                                      \
    "mov " at "(%[pa]), %[t]\n\t" OP " " at "(%[pb]), %[t]\n\t"                                    \
    "mov %[t], " at "(%[pr])\n\t"

#define HUGE_SUM_ADVANCE                                                                           \
    "lea 32(%[pa]), %[pa]\n\t"                                                                     \
    "lea 32(%[pb]), %[pb]\n\t"                                                                     \
    "lea 32(%[pr]), %[pr]\n\t"                                                                     \
    "dec %[k]\n\t"                                                                                 \
    "jnz 1b\n\t"

#define HUGE_SUM_BLOCKS(OP, carry, a, b, r, blocks)                                                \
    Limb t;                                                                                        \
    __asm__ volatile("neg %[c]\n\t" /* carry flag = c != 0 */                                      \
                     ".p2align 4\n"                                                                \
                     "1:\n\t" HUGE_SUM_LIMB(OP, "") HUGE_SUM_LIMB(OP, "8") HUGE_SUM_LIMB(OP, "16") \
                         HUGE_SUM_LIMB(OP, "24") HUGE_SUM_ADVANCE "sbb %[c], %[c]\n\t"             \
                                                                  "neg %[c]"                       \
                     : [c] "+&r"(carry), [pa] "+&r"(a), [pb] "+&r"(b), [pr] "+&r"(r),              \
                       [k] "+&r"(blocks), [t] "=&r"(t)                                             \
                     :                                                                             \
                     : "cc", "memory")

// The rows of products: four products side by side, their high halves summed up into the next low
// ones, then the four digits added to or taken from r in a second chain.
#define HUGE_FOUR_PRODUCTS                                                                         \
    "mulx (%[pa]), %%r8, %%r9\n\t"                                                                 \
    "mulx 8(%[pa]), %%r10, %%r11\n\t"                                                              \
    "mulx 16(%[pa]), %%r12, %%r13\n\t"                                                             \
    "mulx 24(%[pa]), %%r14, %%rax\n\t"                                                             \
    "add %[c], %%r8\n\t"                                                                           \
    "adc %%r9, %%r10\n\t"                                                                          \
    "adc %%r11, %%r12\n\t"                                                                         \
    "adc %%r13, %%r14\n\t"                                                                         \
    "adc $0, %%rax\n\t"

#define HUGE_PRODUCT_BLOCKS(STORE, carry, a, m, r, blocks)                                         \
    __asm__ volatile(".p2align 4\n"                                                                \
                     "1:\n\t" HUGE_FOUR_PRODUCTS STORE "mov %%rax, %[c]\n\t"                       \
                     "add $32, %[pa]\n\t"                                                          \
                     "add $32, %[pr]\n\t"                                                          \
                     "dec %[k]\n\t"                                                                \
                     "jnz 1b"                                                                      \
                     : [c] "+&r"(carry), [pa] "+&r"(a), [pr] "+&r"(r), [k] "+&r"(blocks)           \
                     : "d"(m)                                                                      \
                     : "rax", "r8", "r9", "r10", "r11", "r12", "r13", "r14", "cc", "memory")

#define HUGE_STORE                                                                                 \
    "mov %%r8, (%[pr])\n\t"                                                                        \
    "mov %%r10, 8(%[pr])\n\t"                                                                      \
    "mov %%r12, 16(%[pr])\n\t"                                                                     \
    "mov %%r14, 24(%[pr])\n\t"

#define HUGE_ADD_STORE                                                                             \
    "add (%[pr]), %%r8\n\t"                                                                        \
    "adc 8(%[pr]), %%r10\n\t"                                                                      \
    "adc 16(%[pr]), %%r12\n\t"                                                                     \
    "adc 24(%[pr]), %%r14\n\t"                                                                     \
    "adc $0, %%rax\n\t" HUGE_STORE

#define HUGE_SUB_STORE                                                                             \
    "mov (%[pr]), %%r9\n\t"                                                                        \
    "mov 8(%[pr]), %%r11\n\t"                                                                      \
    "mov 16(%[pr]), %%r13\n\t"                                                                     \
    "sub %%r8, %%r9\n\t"                                                                           \
    "mov 24(%[pr]), %%r8\n\t"                                                                      \
    "sbb %%r10, %%r11\n\t"                                                                         \
    "sbb %%r12, %%r13\n\t"                                                                         \
    "sbb %%r14, %%r8\n\t"                                                                          \
    "adc $0, %%rax\n\t"                                                                            \
    "mov %%r9, (%[pr])\n\t"                                                                        \
    "mov %%r11, 8(%[pr])\n\t"                                                                      \
    "mov %%r13, 16(%[pr])\n\t"                                                                     \
    "mov %%r8, 24(%[pr])\n\t"

/// r = a + b + carry over n limbs; gives the carry out.
inline Limb rowAdd(const Limb* a, const Limb* b, size_t n, Limb carry, Limb* r) noexcept
{
    if (size_t blocks = n / 4; blocks != 0) {
        HUGE_SUM_BLOCKS("adc", carry, a, b, r, blocks);
    }
    return plainAdd(a, b, n % 4, carry, r);
}

/// r = a - b - borrow over n limbs; gives the borrow out.
inline Limb rowSub(const Limb* a, const Limb* b, size_t n, Limb borrow, Limb* r) noexcept
{
    if (size_t blocks = n / 4; blocks != 0) {
        HUGE_SUM_BLOCKS("sbb", borrow, a, b, r, blocks);
    }
    return plainSub(a, b, n % 4, borrow, r);
}

/// r = a * m + carry over n limbs; gives the limb above.
inline Limb rowMul(const Limb* a, size_t n, Limb m, Limb carry, Limb* r) noexcept
{
    size_t blocks = n / 4;
    if (blocks != 0 && hasMulx) {
        HUGE_PRODUCT_BLOCKS(HUGE_STORE, carry, a, m, r, blocks);
        n %= 4;
    }
    return plainMul(a, n, m, carry, r);
}

/// r += a * m over n limbs; gives the limb above.
inline Limb rowAddMul(Limb* r, const Limb* a, size_t n, Limb m) noexcept
{
    size_t blocks = n / 4;
    Limb carry = 0;
    if (blocks != 0 && hasMulx) {
        HUGE_PRODUCT_BLOCKS(HUGE_ADD_STORE, carry, a, m, r, blocks);
        n %= 4;
    }
    return plainAddMul(r, a, n, m, carry);
}

/// r -= a * m over n limbs; gives the limb to be taken off above.
inline Limb rowSubMul(Limb* r, const Limb* a, size_t n, Limb m) noexcept
{
    size_t blocks = n / 4;
    Limb carry = 0;
    if (blocks != 0 && hasMulx) {
        HUGE_PRODUCT_BLOCKS(HUGE_SUB_STORE, carry, a, m, r, blocks);
        n %= 4;
    }
    return plainSubMul(r, a, n, m, carry);
}

#else

inline Limb rowAdd(const Limb* a, const Limb* b, size_t n, Limb carry, Limb* r) noexcept
{
    return plainAdd(a, b, n, carry, r);
}

inline Limb rowSub(const Limb* a, const Limb* b, size_t n, Limb borrow, Limb* r) noexcept
{
    return plainSub(a, b, n, borrow, r);
}

inline Limb rowMul(const Limb* a, size_t n, Limb m, Limb carry, Limb* r) noexcept
{
    return plainMul(a, n, m, carry, r);
}

inline Limb rowAddMul(Limb* r, const Limb* a, size_t n, Limb m) noexcept
{
    return plainAddMul(r, a, n, m, 0);
}

inline Limb rowSubMul(Limb* r, const Limb* a, size_t n, Limb m) noexcept
{
    return plainSubMul(r, a, n, m, 0);
}

#endif

} // namespace huge
