#include "cell/XCellEnv.h"
#include "cell/XCell.h"
#include "cell/XCellBuilder.h"
#include "cell/XCellFunctions.h"
#include "cell/XCellVarError.h"
#include "cell/XCellVarRange.h"
#include "script/XScriptExtendData.h"

namespace huge {

XCellEnv::XCellEnv(XCell* cell) : m_cell(cell)
{
    initFunctions();
}

void XCellEnv::resolve(HugeVariant& out, const XScriptExtendData& data)
{
    const uint8_t format = data.format();
    if (!XCellBuilder::isReference(format)) {
        XScriptEnv_base::resolve(out, data);
        return;
    }
    XCellRanges* ranges = m_cell ? m_cell->ranges() : nullptr;
    XCellRange* range = ranges ? ranges->find(data.id()) : nullptr;
    if (range && !range->ref.isDeleted) {
        out.replace_(HugeVariant::make<XCellVarRange>(range));
        return;
    }
    const auto type = format == XCellBuilder::formatCell ? cellRefError : cellValueError;
    out.replace_(HugeVariant::make<XCellVarError>(type, "range is invalid"));
}

void XCellEnv::initFunctions()
{
    static const bool once = [] {
        initVars();
        enterCellFunctions();
        return true;
    }();
    static_cast<void>(once);
}

} // namespace huge
