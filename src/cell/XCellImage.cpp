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

/// The references of the shared script, in relative form. Nobody reads them back: the text has
/// them too.
std::vector<uint8_t> referenceImage(const ScriptItem& script)
{
    const size_t count =
        std::min<size_t>(script.ranges.size(), std::numeric_limits<uint16_t>::max());
    xstd::XByteWriter image;
    image.putU16(static_cast<uint16_t>(count));
    size_t left = count;
    for (const auto& [id, ref] : script.ranges) {
        if (left-- == 0)
            break;
        xstd::XByteWriter entry;
        entry.putInt(ref.id);
        entry.putInt(ref.textPos);
        entry.putU16(ref.textLen);
        entry.putU8(ref.isDeleted ? 1 : 0);
        entry.putU64(bitsOf(ref.start));
        entry.putU64(bitsOf(ref.end));
        image.putBytes(entry.bytes());
    }
    return image.take();
}

} // namespace

/// A record, read whole before anything of it counts.
struct XCell::Image {
    explicit Image(xstd::XByteCursor record)
        : row(record.getIntIn(0, XCellPos::maxRow, "row of a cell")),
          col(record.getIntIn(0, XCellPos::maxCol, "column of a cell")),
          text(record.getString("text of a cell")), value(record.getString("value of a cell")),
          state(record.getBlock("state of a cell").getU16("state of a cell"))
    {
        record.getBlock("references of a cell");
        format = record.getBytes("format of a cell");
    }

    int32_t row;
    int32_t col;
    xstd::XString text;
    xstd::XString value;
    uint16_t state;
    std::vector<uint8_t> format;
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
    xstd::XByteWriter state;
    state.putU16(m_state);
    xstd::XByteWriter record;
    record.putInt(m_row);
    record.putInt(m_col);
    record.putString(scriptText(false));
    record.putString(plainValueText());
    record.putBytes(state.bytes());
    record.putBytes(m_script ? referenceImage(*m_script) : std::vector<uint8_t>());
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

void XCell::takeImage(XCellTable& table, const Image& image, XCellImageMode mode,
                      const XCellExtend* prototype)
{
    m_state = image.state;
    const bool withFormat = mode == XCellImageMode::Formats || mode == XCellImageMode::Everything;
    std::exception_ptr formatFailure; // a damaged format must not cost the text
    try {
        if (withFormat && !image.format.empty())
            takeFormat(image.format, prototype);
    } catch (const std::exception&) {
        formatFailure = std::current_exception();
    }
    if (mode == XCellImageMode::Values)
        setText_(table, image.value, image.row, image.col);
    else if (mode != XCellImageMode::Formats)
        setText_(table, image.text, image.row, image.col);
    if (formatFailure)
        std::rethrow_exception(formatFailure);
}

void XCell::fromVector(XCellTable& table, xstd::XByteCursor record, XCellImageMode mode,
                       const XCellExtend* prototype)
{
    takeImage(table, Image(record), mode, prototype);
}

void XCell::fromVectorPasted(XCellTable& table, xstd::XByteCursor record, XCellImageMode mode,
                             const XCellExtend* prototype)
{
    Image image(record);
    if (mode == XCellImageMode::Values)
        image.value = pastedSource(image.value);
    takeImage(table, image, mode, prototype);
    if (mode != XCellImageMode::Values || !m_ranges)
        return;
    for (XCellRange& range : *m_ranges)
        range.setDeleted(true);
    m_hold = XCellHold::None; // it has to show that
}

} // namespace huge
