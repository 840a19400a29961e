#include "numbers/sieveRelations.h"

#include "common/XStop.h"
#include "numbers/numberTheory.h"

#include <algorithm>
#include <utility>

namespace huge {

namespace {

constexpr size_t wordBits = 64;

size_t wordsOf(size_t bits) noexcept
{
    return (bits + wordBits - 1) / wordBits;
}

/// Bits in rows: for each relation the parities of its exponents, and behind them which relations
/// have been added up in the row.
class ParityRows {
public:
    ParityRows(const std::vector<SieveRelation>& relations, size_t columns)
        : m_count(relations.size()), m_columnWords(wordsOf(columns)),
          m_words(m_columnWords + wordsOf(m_count)), m_bits(m_count * m_words)
    {
        for (size_t i = 0; i < m_count; ++i) {
            for (const uint32_t place : relations[i].places)
                row(i)[place / wordBits] ^= uint64_t(1) << place % wordBits;
            row(i)[m_columnWords + i / wordBits] |= uint64_t(1) << i % wordBits;
        }
    }

    size_t count() const noexcept { return m_count; }

    /// Gaussian elimination column by column; gives the rows whose parities have all become even.
    std::vector<std::vector<uint64_t>> dependencies(size_t columns)
    {
        std::vector<size_t> open(m_count); // rows that are no pivot yet
        for (size_t i = 0; i < m_count; ++i)
            open[i] = i;
        for (size_t column = 0; column < columns; ++column) {
            xstd::XStop::poll();
            const size_t word = column / wordBits;
            const uint64_t bit = uint64_t(1) << column % wordBits;
            const auto pivot = std::find_if(open.begin(), open.end(),
                                            [&](size_t i) { return (row(i)[word] & bit) != 0; });
            if (pivot == open.end())
                continue;
            const size_t chosen = *pivot;
            *pivot = open.back();
            open.pop_back();
            for (const size_t i : open) {
                if ((row(i)[word] & bit) != 0)
                    addRow(i, chosen, word);
            }
        }
        std::vector<std::vector<uint64_t>> found;
        for (const size_t i : open)
            found.emplace_back(row(i) + m_columnWords, row(i) + m_words);
        return found;
    }

private:
    uint64_t* row(size_t i) noexcept { return m_bits.data() + i * m_words; }

    void addRow(size_t to, size_t from, size_t firstWord) noexcept
    {
        uint64_t* target = row(to);
        const uint64_t* source = row(from);
        for (size_t i = firstWord; i < m_words; ++i)
            target[i] ^= source[i];
    }

    size_t m_count;
    size_t m_columnWords;
    size_t m_words;
    std::vector<uint64_t> m_bits;
};

} // namespace

void SieveRelations::add(SieveRelation relation, uint64_t largePrime)
{
    if (largePrime != 1) {
        const auto [place, isNew] = m_partial.try_emplace(largePrime, relation);
        if (isNew)
            return;
        const SieveRelation& other = place->second;
        const HugeInteger prime = HugeInteger::fromUnsigned(largePrime);
        if (!gcd(prime, m_n).isOne())
            return;
        relation.x = mulMod(mulMod(relation.x, other.x, m_n), invMod(prime, m_n), m_n);
        relation.places.insert(relation.places.end(), other.places.begin(), other.places.end());
    }
    m_whole.push_back(std::move(relation));
}

HugeInteger SieveRelations::factorOf(const std::vector<uint64_t>& chosen,
                                     const std::vector<uint32_t>& primes) const
{
    HugeInteger x(1);
    std::vector<uint32_t> exponents(primes.size());
    for (size_t i = 0; i < m_whole.size(); ++i) {
        if ((chosen[i / wordBits] >> i % wordBits & 1) == 0)
            continue;
        x = mulMod(x, m_whole[i].x, m_n);
        for (const uint32_t place : m_whole[i].places)
            ++exponents[place];
    }
    HugeInteger y(1);
    for (size_t place = 1; place < primes.size(); ++place) {
        if (exponents[place] != 0)
            y = mulMod(y,
                       powMod(HugeInteger(int64_t(primes[place])),
                              HugeInteger(int64_t(exponents[place] / 2)), m_n),
                       m_n);
    }
    return gcd(x + y, m_n).abs();
}

HugeInteger SieveRelations::factor(const std::vector<uint32_t>& primes) const
{
    ParityRows rows(m_whole, primes.size());
    for (const std::vector<uint64_t>& chosen : rows.dependencies(primes.size())) {
        xstd::XStop::poll();
        HugeInteger found = factorOf(chosen, primes);
        if (!found.isOne() && found != m_n)
            return found;
    }
    return HugeInteger(0);
}

} // namespace huge
