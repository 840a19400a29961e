#pragma once

#include "cell/XCellRangeRef.h"
#include "script/XScriptBuilder.h"

#include <cstdint>
#include <vector>

namespace huge {

/// Writes references as extend operands of 29 bytes: what kind it is, its id, its place in the
/// text, and both ends relative to the base cell. A run only needs the id; the rest makes the
/// image, and with it the digest by which cells share a script, differ between texts that are not
/// the same in relative terms. Each reference is noted in a map of the script.
class XCellBuilder final : public XScriptBuilder {
public:
    /// The format bytes of the operands.
    enum Format : uint8_t { formatRow = 2, formatCol = 3, formatNumber = 4, formatCell = 5 };

    /// For the base cell (row, col). Image and map stay the script's.
    XCellBuilder(std::vector<uint8_t>* prog, int32_t row, int32_t col, XCellRangeRefs* ranges);

    /// Forgets the references too.
    void reset() override;
    /// A reference comes back as its text at the base cell.
    void decodeExtend(od_extend& out, const XScriptExtendData& data) override;
    void encodeExtend(XScriptExtendData& out, const od_extend& name) override;

    static bool isReference(uint8_t format) noexcept
    {
        return format >= formatRow && format <= formatCell;
    }

private:
    int32_t m_baseRow;
    int32_t m_baseCol;
    XCellRangeRefs* m_ranges;
};

} // namespace huge
