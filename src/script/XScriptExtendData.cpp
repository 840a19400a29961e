#include "script/XScriptExtendData.h"

#include "common/XException.h"
#include "common/XTextForms.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace huge {

namespace {

constexpr uint8_t nameFormat = 1;
constexpr size_t nameOffset = 3; // behind format and length
constexpr size_t maxBlock = 65535;

bool hasId(uint8_t format) noexcept
{
    return format >= 2 && format <= 5;
}

uint64_t integerAt(const uint8_t* bytes, size_t count) noexcept
{
    uint64_t value = 0;
    for (size_t i = count; i-- > 0;)
        value = value << 8 | bytes[i];
    return value;
}

} // namespace

XScriptExtendData::XScriptExtendData(std::vector<uint8_t> bytes) : m_bytes(std::move(bytes))
{
    refresh();
}

XScriptExtendData XScriptExtendData::fromName(const xstd::XString& name)
{
    XScriptExtendData result;
    result.write8(nameFormat);
    result.writeString(name);
    return result;
}

// What the accessors answer without looking at the bytes again.
void XScriptExtendData::refresh()
{
    m_id = -1;
    m_name.clear();
    m_lowerName.clear();
    if (hasId(format()) && size() >= 5)
        m_id = static_cast<int32_t>(integerAt(&m_bytes[1], 4));
    if (format() != nameFormat || size() < nameOffset)
        return;
    const size_t length = integerAt(&m_bytes[1], 2);
    if (length > size() - nameOffset)
        return;
    m_name.assign(reinterpret_cast<const char*>(m_bytes.data()) + nameOffset, length);
    m_lowerName = m_name;
    m_lowerName.lower_();
}

void XScriptExtendData::writeBytes(const void* data, size_t length, int32_t at)
{
    const size_t begin = static_cast<size_t>(at < 0 ? m_pos : at);
    m_bytes.resize(std::max(m_bytes.size(), begin + length));
    if (length != 0)
        std::memcpy(m_bytes.data() + begin, data, length);
    m_pos = static_cast<int32_t>(begin + length);
    refresh();
}

void XScriptExtendData::writeInteger(uint64_t value, size_t bytes, int32_t at)
{
    uint8_t buffer[8];
    for (size_t i = 0; i < bytes; ++i)
        buffer[i] = static_cast<uint8_t>(value >> (8 * i));
    writeBytes(buffer, bytes, at);
}

void XScriptExtendData::write8(uint8_t value, int32_t at)
{
    writeInteger(value, 1, at);
}

void XScriptExtendData::write16(uint16_t value, int32_t at)
{
    writeInteger(value, 2, at);
}

void XScriptExtendData::write32(uint32_t value, int32_t at)
{
    writeInteger(value, 4, at);
}

void XScriptExtendData::write64(uint64_t value, int32_t at)
{
    writeInteger(value, 8, at);
}

void XScriptExtendData::writeBlock(const void* data, size_t length, int32_t at)
{
    if (length > maxBlock)
        throw xstd::XExceptionItems().add(
            xstd::XExceptionItem(X_HERE, "scriptBuilder")
                .setMess("The name is too long, at most 65535 bytes are possible")
                .setExtend("dataSize", static_cast<uint64_t>(length)));
    write16(static_cast<uint16_t>(length), at);
    writeBytes(data, length, -1);
}

void XScriptExtendData::writeString(const xstd::XString& text, int32_t at)
{
    writeBlock(text.data(), text.size(), at);
}

const uint8_t* XScriptExtendData::readBytes(size_t length, int32_t at)
{
    const size_t begin = static_cast<size_t>(at < 0 ? m_pos : at);
    if (begin > m_bytes.size() || length > m_bytes.size() - begin)
        fail();
    m_pos = static_cast<int32_t>(begin + length);
    return m_bytes.data() + begin;
}

uint8_t XScriptExtendData::read8(int32_t at)
{
    return *readBytes(1, at);
}

uint16_t XScriptExtendData::read16(int32_t at)
{
    return static_cast<uint16_t>(integerAt(readBytes(2, at), 2));
}

uint32_t XScriptExtendData::read32(int32_t at)
{
    return static_cast<uint32_t>(integerAt(readBytes(4, at), 4));
}

uint64_t XScriptExtendData::read64(int32_t at)
{
    return integerAt(readBytes(8, at), 8);
}

std::vector<uint8_t> XScriptExtendData::readBlock(int32_t at)
{
    const size_t length = read16(at);
    const uint8_t* begin = readBytes(length, -1);
    return {begin, begin + length};
}

xstd::XString XScriptExtendData::readString(int32_t at)
{
    const std::vector<uint8_t> block = readBlock(at);
    return xstd::XString(std::string(block.begin(), block.end()));
}

void XScriptExtendData::fail() const
{
    throw xstd::XExceptionItems().add(
        xstd::XExceptionItem(X_HERE, "scriptBuilder")
            .setMess("Unrecognized external identification!")
            .setExtend("extendSize", static_cast<uint64_t>(m_bytes.size()))
            .setExtend("extendData", xstd::bytesToHex(m_bytes.data(), m_bytes.size())));
}

} // namespace huge
