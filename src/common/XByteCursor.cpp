#include "common/XByteCursor.h"

#include <limits>
#include <stdexcept>
#include <string>
#include <utility>

namespace xstd {

namespace {

template <class Integer>
Integer littleEndian(const uint8_t* bytes)
{
    Integer value = 0;
    for (size_t i = sizeof(Integer); i > 0; --i)
        value = static_cast<Integer>(uint64_t(value) << 8 | bytes[i - 1]);
    return value;
}

} // namespace

void XByteCursor::fail(const XString& text, size_t offset)
{
    throw std::runtime_error(text + " at offset " + std::to_string(offset));
}

const uint8_t* XByteCursor::getRaw(size_t size, const char* what)
{
    if (size > left())
        fail(XString("The image ends inside the ") + what, offset());
    const uint8_t* begin = m_bytes + m_pos;
    m_pos += size;
    return begin;
}

uint8_t XByteCursor::getU8(const char* what)
{
    return *getRaw(1, what);
}

uint16_t XByteCursor::getU16(const char* what)
{
    return littleEndian<uint16_t>(getRaw(2, what));
}

int32_t XByteCursor::getInt(const char* what)
{
    return static_cast<int32_t>(littleEndian<uint32_t>(getRaw(4, what)));
}

uint64_t XByteCursor::getU64(const char* what)
{
    return littleEndian<uint64_t>(getRaw(8, what));
}

int32_t XByteCursor::getIntIn(int32_t least, int32_t most, const char* what)
{
    const size_t begin = offset();
    const int32_t value = getInt(what);
    if (value >= least && value <= most)
        return value;
    m_pos -= 4;
    fail(XString("The ") + what + " is out of range: " + std::to_string(value), begin);
}

XByteCursor XByteCursor::getBlock(const char* what)
{
    const size_t begin = m_pos;
    const int32_t size = getInt(what);
    if (size >= 0 && static_cast<size_t>(size) <= left()) {
        m_pos += static_cast<size_t>(size);
        return XByteCursor(m_bytes + begin + 4, static_cast<size_t>(size), m_base + begin + 4);
    }
    m_pos = begin;
    fail(XString("The length of the ") + what + " does not fit: " + std::to_string(size), offset());
}

XString XByteCursor::getString(const char* what)
{
    const XByteCursor block = getBlock(what);
    return block.m_size == 0
               ? XString()
               : XString(std::string(reinterpret_cast<const char*>(block.m_bytes), block.m_size));
}

std::vector<uint8_t> XByteCursor::getBytes(const char* what)
{
    const XByteCursor block = getBlock(what);
    return std::vector<uint8_t>(block.m_bytes, block.m_bytes + block.m_size);
}

void XByteWriter::putU16(uint16_t value)
{
    for (int shift = 0; shift < 16; shift += 8)
        m_bytes.push_back(static_cast<uint8_t>(value >> shift));
}

void XByteWriter::putInt(int32_t value)
{
    for (int shift = 0; shift < 32; shift += 8)
        m_bytes.push_back(static_cast<uint8_t>(static_cast<uint32_t>(value) >> shift));
}

void XByteWriter::putU64(uint64_t value)
{
    for (int shift = 0; shift < 64; shift += 8)
        m_bytes.push_back(static_cast<uint8_t>(value >> shift));
}

void XByteWriter::putRaw(const void* bytes, size_t size)
{
    const uint8_t* begin = static_cast<const uint8_t*>(bytes);
    m_bytes.insert(m_bytes.end(), begin, begin + size);
}

void XByteWriter::putBlock(const void* bytes, size_t size)
{
    if (size > static_cast<size_t>(std::numeric_limits<int32_t>::max()))
        throw std::runtime_error("A block of " + std::to_string(size) + " bytes is too long");
    putInt(static_cast<int32_t>(size));
    putRaw(bytes, size);
}

void XByteWriter::putString(const XString& text)
{
    putBlock(text.data(), text.size());
}

void XByteWriter::putBytes(const std::vector<uint8_t>& bytes)
{
    putBlock(bytes.data(), bytes.size());
}

std::vector<uint8_t> XByteWriter::take()
{
    return std::exchange(m_bytes, {});
}

} // namespace xstd
