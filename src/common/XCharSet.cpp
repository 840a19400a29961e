#include "common/XCharSet.h"

#include "common/XTextForms.h"

namespace xstd {

XCharSet::XCharSet(const std::string& chars)
{
    for (const char c : chars)
        add_(c);
}

XCharSet& XCharSet::add_(char c)
{
    m_bits.set(static_cast<uint8_t>(c));
    return *this;
}

XString XCharSet::toString() const
{
    XString text = "[";
    for (int first = 0; first < 256; ++first) {
        if (!m_bits[static_cast<size_t>(first)])
            continue;
        int last = first;
        while (last < 255 && m_bits[static_cast<size_t>(last) + 1])
            ++last;
        text += escapeChar(static_cast<uint8_t>(first));
        if (last - first > 1)
            text += "-";
        if (last > first)
            text += escapeChar(static_cast<uint8_t>(last));
        first = last;
    }
    return text + "]";
}

} // namespace xstd
