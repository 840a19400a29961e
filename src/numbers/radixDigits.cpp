#include "numbers/radixDigits.h"

#include <array>

namespace huge {

namespace {

constexpr std::array<uint8_t, 256> makeDigitValues()
{
    std::array<uint8_t, 256> values{};
    values.fill(255);
    for (uint8_t i = 0; i < 10; ++i)
        values[size_t('0' + i)] = i;
    for (uint8_t i = 0; i < 6; ++i) {
        values[size_t('A' + i)] = uint8_t(10 + i);
        values[size_t('a' + i)] = uint8_t(10 + i);
    }
    return values;
}

constexpr std::array<uint8_t, 256> digitValues = makeDigitValues();
constexpr char digitTexts[] = "0123456789ABCDEF";

} // namespace

uint8_t digitValue(char digit) noexcept
{
    return digitValues[uint8_t(digit)];
}

void packDigits(const std::string& text, size_t begin, unsigned width, Limb* limbs) noexcept
{
    size_t bit = 0;
    for (size_t i = text.size(); i-- > begin; bit += width) {
        const Limb value = digitValue(text[i]) & ((Limb(1) << width) - 1);
        limbs[bit / 64] |= value << (bit % 64);
        // An octal digit can lie across two limbs. The upper one exists if the part is not zero or
        // more digits follow; the count of limbs covers every bit of every digit.
        if (bit % 64 + width > 64)
            limbs[bit / 64 + 1] |= value >> (64 - bit % 64);
    }
}

std::string unpackDigits(const Limb* limbs, size_t n, size_t bits, unsigned width)
{
    const size_t count = (bits + width - 1) / width;
    std::string digits(count, '0');
    for (size_t i = 0; i < count; ++i) {
        const size_t bit = i * width;
        Limb value = limbs[bit / 64] >> (bit % 64);
        if (bit % 64 + width > 64 && bit / 64 + 1 < n)
            value |= limbs[bit / 64 + 1] << (64 - bit % 64);
        digits[count - 1 - i] = digitTexts[value & ((Limb(1) << width) - 1)];
    }
    return digits;
}

} // namespace huge
