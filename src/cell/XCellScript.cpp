#include "cell/XCellScript.h"

#include <utility>
#include <vector>

namespace huge {

XCellScript::XCellScript(const xstd::XString& text, int32_t row, int32_t col)
    : m_textDecoder(text), m_imageBuilder(image(), row, col, &ranges)
{
    attach(&m_textDecoder, &m_imageBuilder);
}

xstd::XString XCellScript::textAt(int32_t row, int32_t col, bool showRef) const
{
    std::vector<XCellRangeRef> refs;
    refs.reserve(ranges.size());
    for (const auto& entry : ranges)
        refs.push_back(XCellRangeRef(entry.second).bind_(row, col));
    return spliceRefs(m_textDecoder.text(), std::move(refs), showRef);
}

xstd::h160 XCellScript::hash() const
{
    return xstd::hash160(prog());
}

void XCellScript::dump(const XDebugInfo* debug, const XScriptBuilder::LineSink& sink)
{
    XScriptBuilder::putLine(sink, "hash: " + hash().toHex());
    XScriptBuilder::putLine(sink, "ranges:");
    for (const auto& entry : ranges)
        XScriptBuilder::putLine(sink, entry.second.toRcText());
    m_imageBuilder.decode(debug, sink);
}

void XCellScript::list(const xstd::XString& text, int32_t row, int32_t col,
                       const XScriptBuilder::LineSink& sink)
{
    XDebugInfo debug;
    debug.lines = text.split('\n');
    XCellScript script(text, row, col);
    script.compile(&debug);
    script.dump(&debug, sink);
}

} // namespace huge
