#pragma once

#include "common/XString.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace xstd {

/// Reads an image of bytes from front to back: integers little-endian, texts and byte blocks as an
/// int length with the bytes behind it, nothing aligned. The bytes are not owned. Whatever an image
/// says, nothing outside of it is read and no more is allocated than it has left: a read that does
/// not fit throws std::runtime_error, which names what was to be read and the offset, and the
/// position stays.
class XByteCursor {
public:
    /// `base` is the offset of the first byte in the whole image, for failure texts.
    XByteCursor(const uint8_t* bytes, size_t size, size_t base = 0)
        : m_bytes(bytes), m_size(size), m_base(base)
    {}
    explicit XByteCursor(const std::vector<uint8_t>& bytes)
        : XByteCursor(bytes.data(), bytes.size())
    {}

    size_t left() const noexcept { return m_size - m_pos; }
    bool atEnd() const noexcept { return m_pos == m_size; }
    /// Offset of the next byte in the whole image.
    size_t offset() const noexcept { return m_base + m_pos; }

    // `what` names the element in a failure text.

    uint8_t getU8(const char* what);
    uint16_t getU16(const char* what);
    int32_t getInt(const char* what);
    uint64_t getU64(const char* what);
    /// An int between `least` and `most`, both inclusive.
    int32_t getIntIn(int32_t least, int32_t most, const char* what);
    XString getString(const char* what);
    std::vector<uint8_t> getBytes(const char* what);
    /// The next block as a cursor of its own, without a copy; the position moves behind it.
    XByteCursor getBlock(const char* what);
    /// `size` bytes without a length in front of them.
    const uint8_t* getRaw(size_t size, const char* what);

    /// Throws "TEXT at offset N" for the element that begins at `offset`.
    [[noreturn]] static void fail(const XString& text, size_t offset);

private:
    const uint8_t* m_bytes;
    size_t m_size;
    size_t m_base;
    size_t m_pos = 0;
};

/// Writes an image in the same form.
class XByteWriter {
public:
    void putU8(uint8_t value) { m_bytes.push_back(value); }
    void putU16(uint16_t value);
    void putInt(int32_t value);
    void putU64(uint64_t value);
    /// Length and content; std::runtime_error for more than an int can count.
    void putString(const XString& text);
    void putBytes(const std::vector<uint8_t>& bytes);
    /// The bytes alone.
    void putRaw(const void* bytes, size_t size);

    const std::vector<uint8_t>& bytes() const noexcept { return m_bytes; }
    /// Hands the image out and starts a new one.
    std::vector<uint8_t> take();

private:
    void putBlock(const void* bytes, size_t size);

    std::vector<uint8_t> m_bytes;
};

} // namespace xstd
