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

} // namespace huge
