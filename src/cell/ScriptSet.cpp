#include "cell/ScriptSet.h"
#include "script/XScriptProgram.h"

#include <utility>

namespace huge {

ScriptItem::~ScriptItem()
{
    if (owner)
        owner->m_hashIndex.erase(hash);
}

xstd::XString ScriptItem::textAt(std::vector<XCellRangeRef> refs, bool showRef) const
{
    return spliceRefs(text, std::move(refs), showRef);
}

ScriptItemPtr ScriptSet::put(int32_t row, int32_t col, const xstd::XString& text,
                             std::shared_ptr<const XScriptProgram> program,
                             const XCellRangeRefs& ranges)
{
    // Neighbours mostly have the same formula: comparing with the last one saves the digest.
    ScriptItemPtr item = m_last.lock();
    if (item && item->owner == this && item->program->code() == program->code())
        return item;
    const xstd::h160 hash = xstd::hash160(program->code());
    const auto found = m_hashIndex.find(hash);
    if (found != m_hashIndex.end()) {
        m_last = found->second;
        return found->second.lock();
    }

    item = std::make_shared<ScriptItem>();
    item->row = row;
    item->col = col;
    item->text = text;
    item->program = std::move(program);
    item->ranges = ranges;
    item->hash = hash;
    m_hashIndex.emplace(hash, item);
    item->owner = this;
    m_last = item;
    return item;
}

ScriptItemPtr ScriptSet::putReplacing(int32_t row, int32_t col, const xstd::XString& text,
                                      std::shared_ptr<const XScriptProgram> program,
                                      const XCellRangeRefs& ranges)
{
    ScriptItemPtr item = put(row, col, text, std::move(program), ranges);
    item->text = text;
    item->ranges = ranges;
    return item;
}

ScriptItemPtr ScriptSet::find(const std::vector<uint8_t>& code) const
{
    const auto found = m_hashIndex.find(xstd::hash160(code));
    return found == m_hashIndex.end() ? nullptr : found->second.lock();
}

void ScriptSet::clear()
{
    for (const auto& entry : m_hashIndex) {
        if (const ScriptItemPtr item = entry.second.lock())
            item->owner = nullptr;
    }
    m_hashIndex.clear();
}

} // namespace huge
