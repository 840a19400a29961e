#include "numbers/limbsProduct.h"

#include "common/XStop.h"
#include "numbers/karatsubaProduct.h"
#include "numbers/plainProduct.h"
#include "numbers/transformProduct.h"
#include "numbers/workLimbs.h"

#include <algorithm>

namespace huge {

namespace {

/// An operand of more than so many times the other's length is cut into pieces for transforms.
constexpr size_t transformRatio = 4;

bool takesTransform(size_t nA, size_t nB) noexcept
{
    return nB >= transformLimbs && nA <= transformRatio * nB && fitsTransform(nA, nB);
}

/// The length of the pieces of the longer operand, for which the product is formed in one go.
size_t pieceOf(size_t nA, size_t nB) noexcept
{
    if (nB >= transformLimbs && fitsTransform(transformRatio * nB / 2, nB))
        return std::min(nA, transformRatio * nB / 2);
    return nB;
}

/// r = a * b where a is the longer operand: piece by piece, each added to what stands.
void productInPieces(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r, Limb* area)
{
    const size_t piece = pieceOf(nA, nB);
    Limb* product = area;
    Limb* rest = area + piece + nB;
    limbsProduct(a, piece, b, nB, r, rest);
    for (size_t done = piece; done < nA; done += piece) {
        xstd::XStop::poll();
        const size_t count = std::min(piece, nA - done);
        limbsProduct(a + done, count, b, nB, product, rest);
        limbsCopy(r + done + nB, product + nB, count);
        const Limb carry = limbsAdd(r + done, nB, product, nB, r + done);
        if (carry != 0)
            limbsInc(r + done + nB, count);
    }
}

} // namespace

size_t limbsProductArea(size_t nA, size_t nB) noexcept
{
    if (nA < nB)
        std::swap(nA, nB);
    if (nB < karatsubaLimbs)
        return 0;
    if (takesTransform(nA, nB))
        return transformProductArea(nA, nB);
    if (nA == nB)
        return karatsubaArea(nB);
    const size_t piece = pieceOf(nA, nB);
    const size_t last = nA % piece;
    return piece + nB +
           std::max(limbsProductArea(piece, nB), last == 0 ? 0 : limbsProductArea(last, nB));
}

void limbsProduct(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r, Limb* area)
{
    if (nA < nB) {
        std::swap(a, b);
        std::swap(nA, nB);
    }
    if (nB == 0)
        limbsZero(r, nA);
    else if (takesTransform(nA, nB))
        transformProduct(a, nA, b, nB, r, area);
    else if (a == b && nA == nB)
        karatsubaSquare(a, nA, r, area);
    else if (nB < karatsubaLimbs)
        plainProduct(a, nA, b, nB, r);
    else if (nA == nB)
        karatsubaProduct(a, b, nA, r, area);
    else
        productInPieces(a, nA, b, nB, r, area);
}

void limbsProduct(const Limb* a, size_t nA, const Limb* b, size_t nB, Limb* r)
{
    WorkLimbs area(limbsProductArea(nA, nB));
    limbsProduct(a, nA, b, nB, r, area);
}

} // namespace huge
