#pragma once

#include "numbers/limbs.h"

namespace huge {

// The innermost loops: one row of a sum or of a product. On x86-64 they are written in assembly,
// because compilers keep the carry flag in a register between two limbs, which halves the speed;
// the portable form gives the same results everywhere else. n may be 0.

/// r = a + b + carry over n limbs; gives the carry out.
Limb rowAdd(const Limb* a, const Limb* b, size_t n, Limb carry, Limb* r) noexcept;
/// r = a - b - borrow over n limbs; gives the borrow out.
Limb rowSub(const Limb* a, const Limb* b, size_t n, Limb borrow, Limb* r) noexcept;
/// r = a * m + carry over n limbs; gives the limb above.
Limb rowMul(const Limb* a, size_t n, Limb m, Limb carry, Limb* r) noexcept;
/// r += a * m over n limbs; gives the limb above.
Limb rowAddMul(Limb* r, const Limb* a, size_t n, Limb m) noexcept;
/// r -= a * m over n limbs; gives the limb to be taken off above.
Limb rowSubMul(Limb* r, const Limb* a, size_t n, Limb m) noexcept;

} // namespace huge
