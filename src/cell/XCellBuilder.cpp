#include "cell/XCellBuilder.h"

namespace huge {

namespace {

uint8_t formatOf(const XCellPos& pos)
{
    switch (pos.kind) {
    case XCellPos::kindRow:
        return XCellBuilder::formatRow;
    case XCellPos::kindCol:
        return XCellBuilder::formatCol;
    case XCellPos::kindNumber:
        return XCellBuilder::formatNumber;
    default:
        return XCellBuilder::formatCell;
    }
}

void writePos(XScriptExtendData& out, const XCellPos& pos)
{
    out.write32(static_cast<uint32_t>(pos.row));
    out.write16(pos.col);
    out.write8(pos.flags);
    out.write8(pos.kind);
}

} // namespace

XCellBuilder::XCellBuilder(std::vector<uint8_t>* prog, int32_t row, int32_t col,
                           XCellRangeRefs* ranges)
    : XScriptBuilder(prog), m_baseRow(row), m_baseCol(col), m_ranges(ranges)
{}

void XCellBuilder::reset()
{
    XScriptBuilder::reset();
    m_ranges->clear();
}

void XCellBuilder::decodeExtend(od_extend& out, const XScriptExtendData& data)
{
    const auto found = isReference(data.format()) ? m_ranges->find(data.id()) : m_ranges->end();
    if (found == m_ranges->end()) {
        XScriptBuilder::decodeExtend(out, data);
        return;
    }
    const XCellRangeRef& ref = found->second;
    out.format = data.format();
    out.textPos = ref.textPos;
    out.textLen = ref.textLen;
    out.name = ref.toTextShifted(m_baseRow, m_baseCol, false);
}

void XCellBuilder::encodeExtend(XScriptExtendData& out, const od_extend& name)
{
    XCellRangeRef ref;
    if (!XCellRangeRef::parse(name.name, ref)) {
        XScriptBuilder::encodeExtend(out, name);
        return;
    }
    ref.id = static_cast<int32_t>(m_ranges->size());
    ref.textPos = name.textPos;
    ref.textLen = static_cast<uint16_t>(name.textLen); // the decoder makes no longer token
    ref.shift_(-m_baseRow, -m_baseCol, false);
    m_ranges->emplace(ref.id, ref);

    out = XScriptExtendData();
    out.write8(formatOf(ref.start));
    out.write32(static_cast<uint32_t>(ref.id));
    out.write32(static_cast<uint32_t>(ref.textPos));
    out.write32(ref.textLen);
    writePos(out, ref.start);
    writePos(out, ref.end);
}

} // namespace huge
