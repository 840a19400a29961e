#include "cell/XCell.h"
#include "cell/XCellRawExtend.h"
#include "cell/XCellTable.h"
#include "cell/XCellVarError.h"
#include "cell/pastedSource.h"

#include <cstring>
#include <exception>
#include <limits>
#include <stdexcept>
#include <utility>

namespace huge {

namespace {

uint64_t bitsOf(const XCellPos& pos)
{
    uint64_t bits = 0;
    std::memcpy(&bits, &pos, sizeof(bits)); // images hold positions as they lie in memory
    return bits;
}

/// Appends the references of the shared script, in relative form. Nobody reads them back: the text
/// has them too.
void putReferences(xstd::XByteWriter& image, const ScriptItem& script)
{
    constexpr int32_t entrySize = 4 + 4 + 2 + 1 + 8 + 8;
    const size_t count =
        std::min<size_t>(script.ranges.size(), std::numeric_limits<uint16_t>::max());
    image.putInt(static_cast<int32_t>(2 + count * (4 + entrySize)));
    image.putU16(static_cast<uint16_t>(count));
    size_t left = count;
    for (const auto& [id, ref] : script.ranges) {
        if (left-- == 0)
            break;
        image.putInt(entrySize);
        image.putInt(ref.id);
        image.putInt(ref.textPos);
        image.putU16(ref.textLen);
        image.putU8(ref.isDeleted ? 1 : 0);
        image.putU64(bitsOf(ref.start));
        image.putU64(bitsOf(ref.end));
    }
}

xstd::XString textOf(xstd::XByteCursor block)
{
    const size_t size = block.left();
    const uint8_t* bytes = block.getRaw(size, "text");
    return xstd::XString(std::string(reinterpret_cast<const char*>(bytes), size));
}

std::vector<uint8_t> bytesOf(xstd::XByteCursor block)
{
    const size_t size = block.left();
    const uint8_t* bytes = block.getRaw(size, "bytes");
    return std::vector<uint8_t>(bytes, bytes + size);
}

} // namespace

/// A record, looked through whole before anything of it counts; what is long is not copied.
struct XCell::Image {
    explicit Image(xstd::XByteCursor record)
        : row(record.getIntIn(0, XCellPos::maxRow, "row of a cell")),
          col(record.getIntIn(0, XCellPos::maxCol, "column of a cell")),
          text(record.getBlock("text of a cell")), value(record.getBlock("value of a cell")),
          state(record.getBlock("state of a cell").getU16("state of a cell")),
          references(record.getBlock("references of a cell")),
          format(record.getBlock("format of a cell"))
    {}

    /// The text that the cell gets.
    xstd::XString source(XCellImageMode mode) const
    {
        return mode == XCellImageMode::Values ? textOf(value) : textOf(text);
    }

    int32_t row;
    int32_t col;
    xstd::XByteCursor text;
    xstd::XByteCursor value;
    uint16_t state;
    xstd::XByteCursor references;
    xstd::XByteCursor format;
};

xstd::XString XCell::plainValueText() const
{
    try {
        return m_value.isNull() ? xstd::XString() : m_value.fmt(XFormatRule());
    } catch (const std::runtime_error& failure) {
        return XCellVarError(cellValueError, failure.what()).toString();
    }
}

xstd::XPoint XCell::recordPosition(xstd::XByteCursor record)
{
    const Image image(record);
    return {image.row, image.col};
}

std::vector<uint8_t> XCell::toVector() const
{
    xstd::XByteWriter record;
    record.putInt(m_row);
    record.putInt(m_col);
    record.putString(scriptText(false));
    record.putString(plainValueText());
    record.putInt(sizeof m_state);
    record.putU16(m_state);
    if (m_script)
        putReferences(record, *m_script);
    else
        record.putInt(0);
    record.putBytes(m_extend ? m_extend->toBinary() : std::vector<uint8_t>());
    return record.take();
}

/// The record that a format is read into: one that fails leaves the cell's own as it was.
std::unique_ptr<XCellExtend> XCell::newExtend(const XCellExtend* prototype) const
{
    if (m_extend)
        return m_extend->clone();
    return prototype ? prototype->clone() : std::make_unique<XCellRawExtend>();
}

void XCell::takeFormat(const std::vector<uint8_t>& format, const XCellExtend* prototype)
{
    std::unique_ptr<XCellExtend> extend = newExtend(prototype);
    extend->fromBinary(format);
    swapExtend(std::move(extend));
}

void XCell::takeImage(XCellTable& table, const Image& image, const xstd::XString& source,
                      XCellImageMode mode, const XCellExtend* prototype)
{
    m_state = image.state;
    const bool withFormat = mode == XCellImageMode::Formats || mode == XCellImageMode::Everything ||
                            mode == XCellImageMode::Stored;
    std::exception_ptr formatFailure; // a damaged format must not cost the text
    try {
        if (withFormat && !image.format.atEnd())
            takeFormat(bytesOf(image.format), prototype);
    } catch (const std::exception&) {
        formatFailure = std::current_exception();
    }
    if (mode == XCellImageMode::Stored)
        storeText_(table, source, textOf(image.value));
    else if (mode != XCellImageMode::Formats)
        setText_(table, source, image.row, image.col);
    if (formatFailure)
        std::rethrow_exception(formatFailure);
}

void XCell::fromVector(XCellTable& table, xstd::XByteCursor record, XCellImageMode mode,
                       const XCellExtend* prototype)
{
    const Image image(record);
    takeImage(table, image, image.source(mode), mode, prototype);
}

void XCell::fromVectorPasted(XCellTable& table, xstd::XByteCursor record, XCellImageMode mode,
                             const XCellExtend* prototype)
{
    const Image image(record);
    xstd::XString source = image.source(mode);
    if (mode == XCellImageMode::Values)
        source = pastedSource(source);
    takeImage(table, image, source, mode, prototype);
    if (mode != XCellImageMode::Values || !m_ranges)
        return;
    for (XCellRange& range : *m_ranges)
        range.setDeleted(true);
    m_hold = XCellHold::None; // it has to show that
}

} // namespace huge
