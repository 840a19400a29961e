#pragma once

#include "common/XString.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace huge {

/// The byte form of a name that the environment settles at run time: a format byte, then what
/// that format says. Format 1 is the name itself, as written in the source. Further formats belong
/// to whoever derives from the builder; formats 2 to 5 begin with a 32-bit id behind the format.
///
/// All integers are little-endian. Reading and writing go at a given position or, with -1, at the
/// cursor, which stands behind what was read or written last. The names of format 1 are kept ready
/// beside the bytes, so that resolving one neither parses nor copies.
class XScriptExtendData {
public:
    /// Empty, to be written to.
    XScriptExtendData() = default;

    /// Over the bytes of an operand. Any bytes will do; a damaged name reads as "".
    explicit XScriptExtendData(std::vector<uint8_t> bytes);

    /// The form of a plain name, format 1. At most 65,535 bytes.
    static XScriptExtendData fromName(const xstd::XString& name);

    const std::vector<uint8_t>& bytes() const noexcept { return m_bytes; }
    size_t size() const noexcept { return m_bytes.size(); }
    bool isEmpty() const noexcept { return m_bytes.empty(); }

    /// Byte 0, or 0 when there is none.
    uint8_t format() const noexcept { return m_bytes.empty() ? 0 : m_bytes[0]; }

    /// The id of formats 2 to 5; -1 for any other format and when the bytes end before it.
    int32_t id() const noexcept { return m_id; }

    /// The name of format 1 as written, and in ASCII lower case; "" for any other format.
    const xstd::XString& name() const noexcept { return m_name; }
    const xstd::XString& lowerName() const noexcept { return m_lowerName; }

    int32_t pos() const noexcept { return m_pos; }
    void setPos(int32_t pos) noexcept { m_pos = pos; }

    /// Writing grows the bytes with zeros up to the position.
    void write8(uint8_t value, int32_t at = -1);
    void write16(uint16_t value, int32_t at = -1);
    void write32(uint32_t value, int32_t at = -1);
    void write64(uint64_t value, int32_t at = -1);
    /// A 16-bit length, then the bytes; longer ones are refused ("scriptBuilder").
    void writeBlock(const void* data, size_t length, int32_t at = -1);
    void writeString(const xstd::XString& text, int32_t at = -1);

    /// Reading behind the last byte fails with "Unrecognized external identification!"
    /// ("scriptBuilder", with "extendSize" and "extendData").
    uint8_t read8(int32_t at = -1);
    uint16_t read16(int32_t at = -1);
    uint32_t read32(int32_t at = -1);
    uint64_t read64(int32_t at = -1);
    std::vector<uint8_t> readBlock(int32_t at = -1);
    xstd::XString readString(int32_t at = -1);

    /// Throws the failure of an operand that nobody can read.
    [[noreturn]] void fail() const;

private:
    void writeInteger(uint64_t value, size_t bytes, int32_t at);
    uint64_t readInteger(size_t bytes, int32_t at);
    const uint8_t* readBytes(size_t length, int32_t at);
    void writeBytes(const void* data, size_t length, int32_t at);
    void refresh();

    std::vector<uint8_t> m_bytes;
    int32_t m_pos = 0;
    int32_t m_id = -1;
    xstd::XString m_name;
    xstd::XString m_lowerName;
};

} // namespace huge
