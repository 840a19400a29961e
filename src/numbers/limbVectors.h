#pragma once

#include "numbers/limbs.h"
#include "numbers/limbsProduct.h"

#include <utility>
#include <vector>

namespace huge {

/// A natural number of any length, without zero limbs at its top. Unlike those of cells it has no
/// limit: work in between may need numbers that no cell can hold.
using Limbs = std::vector<Limb>;

inline Limbs& trim(Limbs& a)
{
    a.resize(limbsEffective(a.data(), a.size()));
    return a;
}

inline Limbs product(const Limbs& a, const Limbs& b)
{
    Limbs r(a.size() + b.size());
    limbsProduct(a.data(), a.size(), b.data(), b.size(), r.data());
    return std::move(trim(r));
}

} // namespace huge
