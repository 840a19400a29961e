#include "numbers/longBase58.h"

#include "common/XStop.h"
#include "hash/XBase58.h"
#include "numbers/limbVectors.h"
#include "numbers/limbsQuotient.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace huge {

namespace {

/// Digits of a piece for the plain encoder, and its bytes at most. Measured.
constexpr size_t pieceDigits = 640;
constexpr size_t pieceBytes = 470;

constexpr char zeroDigit = '1';

/// A number from its bytes, the most significant first.
Limbs fromBytes(const uint8_t* first, const uint8_t* last)
{
    Limbs limbs(size_t(last - first + 7) / 8);
    for (size_t i = 0; last != first; ++i)
        limbs[i / 8] |= Limb(*--last) << (i % 8 * 8);
    return std::move(trim(limbs));
}

/// The other way, without zeros in front.
std::vector<uint8_t> toBytes(const Limbs& limbs)
{
    std::vector<uint8_t> bytes;
    bytes.reserve(8 * limbs.size());
    for (size_t i = 8 * limbs.size(); i-- > 0;) {
        const auto byte = uint8_t(limbs[i / 8] >> (i % 8 * 8));
        if (byte != 0 || !bytes.empty())
            bytes.push_back(byte);
    }
    return bytes;
}

/// 58 to the digits of a piece, squared k times.
class Units {
public:
    Units()
    {
        Limbs unit{1};
        for (size_t i = 0; i < pieceDigits; ++i) {
            unit.push_back(0);
            limbsMulLimb(unit.data(), unit.size() - 1, 58, unit.data());
            trim(unit);
        }
        m_units.push_back(std::move(unit));
    }
    const Limbs& at(size_t level)
    {
        while (m_units.size() <= level)
            m_units.push_back(product(m_units.back(), m_units.back()));
        return m_units[level];
    }
    static constexpr size_t digitsAt(size_t level) noexcept { return pieceDigits << level; }

private:
    std::vector<Limbs> m_units;
};

/// a / b and, in a, what is left.
Limbs divide(Limbs& a, const Limbs& b)
{
    const size_t n = b.size();
    if (a.size() < n)
        return {};
    const unsigned shift = unsigned(__builtin_clzll(b.back()));
    Limbs divisor(n);
    limbsShlSmall(b.data(), n, shift, divisor.data());
    a.push_back(0);
    limbsShlSmall(a.data(), a.size(), shift, a.data());
    Limbs quotient(a.size() - n + 1);
    quotient.back() = limbsQuotient(a.data(), a.size(), divisor.data(), n, quotient.data());
    limbsShrSmall(a.data(), n, shift, a.data());
    trim(a);
    return std::move(trim(quotient));
}

/// Writes the digits of a value below the unit of the level in front of end, where zeros stand for
/// all of its places.
void writeDigits(Limbs value, Units& units, size_t level, char* end)
{
    xstd::XStop::poll();
    if (value.empty())
        return;
    if (level == 0) {
        const std::vector<uint8_t> bytes = toBytes(value);
        const xstd::XString text = xstd::encodeBase58(bytes.data(), bytes.data() + bytes.size());
        std::copy(text.begin(), text.end(), end - text.size());
        return;
    }
    Limbs high = divide(value, units.at(level - 1));
    writeDigits(std::move(value), units, level - 1, end);
    writeDigits(std::move(high), units, level - 1, end - Units::digitsAt(level - 1));
}

bool isBlank(char c) noexcept
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// The text up to its first NUL, without the blanks around it.
xstd::XString bareText(const xstd::XString& text)
{
    const char* first = text.c_str();
    const char* last = first + std::strlen(first);
    first = std::find_if_not(first, last, isBlank);
    while (last != first && isBlank(last[-1]))
        --last;
    return std::string(first, last);
}

/// The pieces of a text as numbers, the last one first; false where a character is none of Base58.
bool readPieces(const xstd::XString& text, std::vector<Limbs>& pieces)
{
    for (size_t end = text.size(); end != 0;) {
        xstd::XStop::poll();
        const size_t count = std::min(end, pieceDigits);
        end -= count;
        std::vector<uint8_t> bytes;
        if (!xstd::decodeBase58(text.substr(end, count), bytes))
            return false;
        pieces.push_back(fromBytes(bytes.data(), bytes.data() + bytes.size()));
    }
    return true;
}

/// high * unit + low.
Limbs joined(const Limbs& high, const Limbs& unit, const Limbs& low)
{
    Limbs r = product(high, unit);
    r.resize(std::max(r.size(), low.size()) + 1);
    limbsAddTo(r.data(), r.size(), low.data(), low.size());
    return std::move(trim(r));
}

} // namespace

xstd::XString longBase58(const uint8_t* first, const uint8_t* last)
{
    if (last - first <= std::ptrdiff_t(pieceBytes))
        return xstd::encodeBase58(first, last);
    const uint8_t* start = std::find_if(first, last, [](uint8_t byte) { return byte != 0; });
    Limbs value = fromBytes(start, last);
    Units units;
    size_t level = 0;
    while (units.at(level).size() <= value.size())
        ++level;
    std::string text(Units::digitsAt(level), zeroDigit);
    writeDigits(std::move(value), units, level, text.data() + text.size());
    text.erase(0, std::min(text.find_first_not_of(zeroDigit), text.size()));
    text.insert(0, size_t(start - first), zeroDigit);
    return text;
}

bool fromLongBase58(const xstd::XString& text, std::vector<uint8_t>& out)
{
    const xstd::XString bare = bareText(text);
    if (bare.size() <= pieceDigits)
        return xstd::decodeBase58(bare, out);
    // A blank inside of the text would stand at the end of a piece.
    std::vector<Limbs> pieces;
    if (std::any_of(bare.begin(), bare.end(), isBlank) || !readPieces(bare, pieces))
        return false;
    Units units;
    for (size_t level = 0; pieces.size() > 1; ++level) {
        const Limbs& unit = units.at(level);
        for (size_t i = 0; i < pieces.size(); i += 2) {
            xstd::XStop::poll();
            pieces[i / 2] = i + 1 == pieces.size() ? std::move(pieces[i])
                                                   : joined(pieces[i + 1], unit, pieces[i]);
        }
        pieces.resize((pieces.size() + 1) / 2);
    }
    std::vector<uint8_t> bytes = toBytes(pieces.front());
    const size_t zeros = std::min(bare.find_first_not_of(zeroDigit), bare.size());
    bytes.insert(bytes.begin(), zeros, 0);
    out = std::move(bytes);
    return true;
}

xstd::XString longBase58Check(const std::vector<uint8_t>& bytes)
{
    std::vector<uint8_t> checked = bytes;
    xstd::appendChecksum(checked);
    return longBase58(checked.data(), checked.data() + checked.size());
}

bool fromLongBase58Check(const xstd::XString& text, std::vector<uint8_t>& out)
{
    out.clear();
    std::vector<uint8_t> bytes;
    if (!fromLongBase58(text, bytes) || !xstd::takeChecksum(bytes))
        return false;
    out = std::move(bytes);
    return true;
}

} // namespace huge
