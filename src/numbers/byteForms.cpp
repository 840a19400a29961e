#include "numbers/byteForms.h"

#include "hash/XBase64.h"
#include "numbers/longBase58.h"

namespace huge {

void appendWord(std::vector<uint8_t>& bytes, uint64_t word)
{
    for (size_t shift = 0; shift < limbBits; shift += 8)
        bytes.push_back(uint8_t(word >> shift));
}

void appendLimbs(std::vector<uint8_t>& bytes, const Limb* limbs, size_t count)
{
    bytes.reserve(bytes.size() + count * sizeof(Limb));
    for (size_t i = 0; i < count; ++i)
        appendWord(bytes, limbs[i]);
}

xstd::XString lastHexDigits(xstd::XString text, int64_t bytes)
{
    const size_t digits = text.size() - 2; // behind the 0x
    if (bytes > 0 && uint64_t(bytes) < digits && 2 * size_t(bytes) < digits)
        text.erase(2, digits - 2 * size_t(bytes));
    return text;
}

xstd::XString baseText(int radix, const uint8_t* bytes, size_t count)
{
    return radix == 58 ? longBase58(bytes, bytes + count)
                       : xstd::encodeBase64(bytes, bytes + count);
}

} // namespace huge
