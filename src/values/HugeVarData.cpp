#include "values/HugeVarData.h"

#include "common/XTextForms.h"
#include "numbers/byteForms.h"
#include "values/HugeVariant.h"

#include <algorithm>
#include <compare>
#include <stdexcept>

namespace huge {

namespace {

using Bytes = std::vector<uint8_t>;

/// The bytes in between, which may be asked for beyond both ends.
Bytes slice(const Bytes& bytes, int64_t first, int64_t count)
{
    const int64_t size = int64_t(bytes.size());
    first = std::clamp<int64_t>(first, 0, size);
    count = std::clamp<int64_t>(count, 0, size - first);
    return Bytes(bytes.begin() + first, bytes.begin() + first + count);
}

/// The bytes of an operand: data without a copy, those of any other value in a vector of its own.
class DataOperand {
public:
    explicit DataOperand(const HugeVariant& value)
    {
        const HugeVariant& end = value.final();
        if (end.holds(HugeVarClass::Data))
            m_bytes = &static_cast<const HugeVarData*>(end.object())->value();
        else
            m_converted = end.data();
    }
    DataOperand(const DataOperand&) = delete;
    DataOperand& operator=(const DataOperand&) = delete;

    const Bytes& operator*() const noexcept { return m_bytes == nullptr ? m_converted : *m_bytes; }
    const Bytes* operator->() const noexcept { return &**this; }

private:
    Bytes m_converted;
    const Bytes* m_bytes = nullptr;
};

/// By the bytes over the shorter length, then the shorter one first.
std::strong_ordering compared(const HugeVariant& a, const HugeVariant& b)
{
    return *DataOperand(a) <=> *DataOperand(b);
}

} // namespace

HugeVariant HugeVarData::part(const HugeVariant* args, int argc) const
{
    if (argc == 0)
        return m_bytes;
    return slice(m_bytes, args[0].asInt64(),
                 argc == 1 ? int64_t(m_bytes.size()) : args[1].asInt64());
}

HugeVariant HugeVarData::exec(HugeVariant* args, int argc) const
{
    return part(args, argc);
}

HugeVariant HugeVarData::member(const xstd::XString& name, HugeVariant* args, int argc) const
{
    const int64_t size = int64_t(m_bytes.size());
    if (name == "size")
        return size;
    if (name == "mid" || name == "subdata")
        return part(args, argc);
    if (name == "left" || name == "right") {
        const int64_t wanted = argc == 0 ? size : args[0].asInt64();
        const int64_t count = std::clamp<int64_t>(wanted, 0, size);
        return slice(m_bytes, name == "left" ? 0 : size - count, count);
    }
    if (name == "reverse")
        return Bytes(m_bytes.rbegin(), m_bytes.rend());
    return HugeVar::member(name, args, argc);
}

HugeVariant HugeVarData::clone() const
{
    return HugeVariant::make<HugeVarData>(m_bytes);
}

HugeVariant HugeVarData::move()
{
    return HugeVariant::make<HugeVarData>(std::move(m_bytes));
}

HugeVariant HugeVarData::asType(int typeCode) const
{
    switch (typeCode) {
    case varBool:
        return !m_bytes.empty();
    case varString:
        return toString();
    default:
        return {};
    }
}

HugeVariant HugeVarData::add(const HugeVariant& a, const HugeVariant& b) const
{
    const DataOperand head(a);
    const DataOperand tail(b);
    if (head->size() + tail->size() > maxBytes)
        throw std::runtime_error("The data is too long");
    Bytes joined;
    joined.reserve(head->size() + tail->size());
    joined.insert(joined.end(), head->begin(), head->end());
    joined.insert(joined.end(), tail->begin(), tail->end());
    return joined;
}

bool HugeVarData::equ(const HugeVariant& a, const HugeVariant& b) const
{
    return compared(a, b) == 0;
}

bool HugeVarData::greate(const HugeVariant& a, const HugeVariant& b) const
{
    return compared(a, b) > 0;
}

bool HugeVarData::greate_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return compared(a, b) >= 0;
}

bool HugeVarData::less(const HugeVariant& a, const HugeVariant& b) const
{
    return compared(a, b) < 0;
}

bool HugeVarData::less_equ(const HugeVariant& a, const HugeVariant& b) const
{
    return compared(a, b) <= 0;
}

xstd::XString HugeVarData::hex(int64_t bytes) const
{
    if (m_bytes.empty())
        return {};
    const bool cut = bytes > 0 && uint64_t(bytes) < m_bytes.size();
    return "0x" + xstd::bytesToHex(m_bytes.data(), cut ? size_t(bytes) : m_bytes.size());
}

xstd::XString HugeVarData::fmt(const XFormatRule& rule) const
{
    if (m_bytes.empty())
        return {};
    const uint8_t* bytes = m_bytes.data();
    switch (rule.radix) {
    case 2:
        return "0b" + groupText(rule, xstd::bytesToBin(bytes, m_bytes.size()));
    case 8:
        return "0c" + groupText(rule, xstd::bytesToOct(bytes, m_bytes.size()));
    case 58:
    case 64:
        return groupText(rule, baseText(rule.radix, bytes, m_bytes.size()));
    default:
        return "0x" + groupText(rule, xstd::bytesToHex(bytes, m_bytes.size()));
    }
}

} // namespace huge
