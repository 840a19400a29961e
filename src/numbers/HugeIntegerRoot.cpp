#include "numbers/integerRoot.h"

#include "common/XStop.h"
#include "numbers/limbsProduct.h"
#include "numbers/limbsRoot.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>

namespace huge {

namespace {

size_t limbsOfBits(size_t bits) noexcept
{
    return (bits + 63) / 64;
}

/// Two factors that turn a value of so many bits into a first approximation of its root, as binary
/// fractions of 1,024 bits: 0.805... for an odd and 0.569... for an even count of bits. Their
/// quotient is the root of 2, and the approximation is off by less than a fifth.
struct RootFactors {
    static constexpr size_t bits = 1024;
    HugeInteger odd;
    HugeInteger even;
};

const RootFactors& rootFactors()
{
    static const RootFactors factors = [] {
        RootFactors made;
        made.odd.fromText_("0xCE2DABBEC3E9320DCF37F9560C27CD43B8F0BEFDC56498904E2BEFC2529EEA45"
                           "5E0C639D1A3B0F601EB4B8BDAEC583ECF67D841BD6449C92E0CE2FCE1FEE27FE"
                           "255C243947BA040408FC25451443D0313ECDC70F259922F03B4A5970ABEB7E5F"
                           "7ACC311552FD8CF14027AA093EB8ED5BC801F4DAAED4F88F85625F43AFC01028");
        made.even.fromText_("0x91CA4703C5DBC39BD863A9523FA70144D1221404F09D20DFF429B0D4F0FB0740"
                            "DEF52EA2D2A856ED1DF282D05BA5F0EFDC2BE5F08236F9C0A4A0907D49B1B2BC"
                            "B598364D33C0B4C591EFE7BA0D745C1C85EFD4C1FFFCD9D21452315491FF9E12"
                            "EF9DA6A679B563AD63B67A995087C70C176344C9FF9172D3A8528D020CB0B0C0");
        return made;
    }();
    return factors;
}

/// The first approximation of a root, without spare limbs.
HugeInteger firstRoot(const HugeInteger& a)
{
    const size_t bits = a.bitLength();
    const size_t width = limbsOfBits(std::min(bits, RootFactors::bits));
    const bool even = bits % 2 == 0;
    const HugeInteger& factor = even ? rootFactors().even : rootFactors().odd;
    const Limb* top = factor.limbs() + (factor.size() - width);
    const size_t nA = a.effectiveSize();
    const size_t n = nA + width; // may pass the limit of a number, before the shift brings it back
    LimbScratch product(n);
    limbsProduct(a.limbs(), nA, top, width, product);
    limbsShr(product, n, 64 * width + (even ? bits / 2 - 1 : (bits - 1) / 2));
    HugeInteger root;
    root.fromLimbs_(product, limbsEffective(product, n), 1);
    return root;
}

/// The limbs of a quotient of two numbers of so many bits, spare ones included.
size_t quotientLimbs(size_t bitsA, size_t bitsB) noexcept
{
    const size_t shift = (64 - bitsB % 64) % 64;
    const size_t dividend = shift == 0 ? limbsOfBits(bitsA) : limbsOfBits(bitsA + shift) + 1;
    return dividend - limbsOfBits(bitsB) + 1;
}

/// The leading bits of a, as a fraction of 2^bits.
double fractionOf(const HugeInteger& a, size_t bits)
{
    const size_t n = a.effectiveSize();
    const double top = double(a.limbs()[n - 1]) + double(a.limbs()[n - 2]) * 0x1p-64;
    return std::ldexp(top, int(64 * int64_t(n - 1) - int64_t(bits)));
}

/// The limbs that the root has at the end of the plain iteration: as many as the first
/// approximation or any quotient on the way has. Lengths change where an approximation reaches a
/// power of 2 that the root does not; only the first two can. Nothing where that is in doubt.
std::optional<size_t> limbsOfRoot(const HugeInteger& a, const HugeInteger& root)
{
    const size_t bits = a.bitLength();
    const size_t rootBits = root.bitLength();
    const HugeInteger first = firstRoot(a);
    const double ratio = fractionOf(first, rootBits);
    const double second = (ratio + fractionOf(a, 2 * rootBits) / ratio) / 2;
    constexpr double doubt = 1e-9;
    if (std::abs(second - 1) < doubt || fractionOf(root, rootBits) > 1 - doubt)
        return std::nullopt;
    const size_t secondBits = rootBits + (second > 1 ? 1 : 0);
    return std::max({first.size(), quotientLimbs(bits, first.bitLength()),
                     quotientLimbs(bits, secondBits), quotientLimbs(bits, rootBits)});
}

/// The whole part of the root, without spare limbs; `above` tells whether a is one less than the
/// next square.
HugeInteger wholeRoot(const HugeInteger& a, bool& above)
{
    const size_t n = limbsOfBits((a.bitLength() + 1) / 2); // limbs of the root
    const size_t nA = a.effectiveSize();
    const size_t shift = (128 * n - a.bitLength()) / 2 * 2;
    LimbScratch square(2 * n);
    limbsCopyExtend(square, a.limbs(), 2 * n, nA);
    limbsShl(square, 2 * n, shift);
    LimbScratch root(n);
    LimbScratch area(limbsRootArea(n));
    limbsRoot(square, n, root, area);
    limbsShr(root, n, shift / 2);
    HugeInteger whole;
    whole.fromLimbs_(root, limbsEffective(root, n));
    above = a - whole * whole == whole + whole;
    return whole;
}

} // namespace

HugeInteger plainRoot(const HugeInteger& a)
{
    HugeInteger x = firstRoot(a);
    for (;;) {
        xstd::XStop::poll();
        const HugeInteger previous = x;
        x = (x + a / x) >> 1;
        const HugeInteger change = x - previous;
        if (change.bitLength() <= 1)
            return x;
    }
}

HugeInteger HugeInteger::sqrt() const
{
    if (isNegative())
        throw std::runtime_error("Negative numbers cannot be squared");
    const size_t bits = bitLength();
    if (bits <= 1)
        return HugeInteger(int64_t(bits));
    if (effectiveSize() < recursiveRootLimbs)
        return plainRoot(*this);
    bool above = false;
    HugeInteger root = wholeRoot(*this, above);
    const std::optional<size_t> size = limbsOfRoot(*this, root);
    // Below the next square the iteration goes to and fro between the root and one more.
    if (above || !size)
        return plainRoot(*this);
    return std::move(root.setSize_(*size, true));
}

} // namespace huge
