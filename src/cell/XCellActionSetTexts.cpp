#include "cell/XCellActionSetTexts.h"
#include "cell/pastedSource.h"

#include <algorithm>
#include <utility>

namespace huge {

namespace {

const xstd::XString leaveAlone = "none";

} // namespace

XCellActionSetTexts::XCellActionSetTexts(XCellTable* table, xstd::XMergedRects destRects,
                                         Texts texts)
    : XCellDestAction(table, std::move(destRects)), m_texts(std::move(texts))
{
    for (std::vector<xstd::XString>& row : m_texts) {
        m_colCount = std::max(m_colCount, static_cast<int64_t>(row.size()));
        for (xstd::XString& text : row) {
            if (text != leaveAlone)
                text = pastedSource(text);
        }
    }
    m_bound = m_destRects.boundRect();
    growTo(m_bound, "setTexts");
}

const xstd::XString& XCellActionSetTexts::textFor(int32_t row, int32_t col) const
{
    if (m_colCount == 0)
        return leaveAlone;
    const auto& fields = m_texts[static_cast<size_t>(row - m_bound.top) % m_texts.size()];
    const size_t field = static_cast<size_t>((col - m_bound.left) % m_colCount);
    return field < fields.size() ? fields[field] : leaveAlone;
}

void XCellActionSetTexts::setText(int32_t row, int32_t col, const xstd::XString& text)
{
    XCell* cell = text.empty() ? m_table->cellAt(row, col) : m_table->forceCell(row, col);
    if (!cell)
        return;
    m_table->unlinkCell(cell);
    cell->setText_(*m_table, text);
    m_table->linkCell(cell);
}

/// Returns the first failure.
xstd::XExceptionItems XCellActionSetTexts::setRectTexts()
{
    xstd::XExceptionItems first;
    m_destRects.forEach([&](int32_t row, int32_t col) {
        const xstd::XString& text = textFor(row, col);
        try {
            if (text != leaveAlone)
                setText(row, col, text);
        } catch (const xstd::XExceptionItems& failure) {
            if (first.items().empty())
                first = failure;
        }
        return false; // to the last position
    });
    return first;
}

xstd::XUndoableAction* XCellActionSetTexts::do_()
{
    const xstd::XStopScope scope;
    saveDest();
    finish(m_changed, setRectTexts());
    return this;
}

xstd::XExceptionItem XCellActionSetTexts::ringItem(const xstd::XString& path) const
{
    return xstd::XExceptionItem(X_HERE, "action")
        .setMess("There is a circular dependency: " + path)
        .setExtend("cyclicPath", path)
        .setExtend("action", "setTexts")
        .setExtend("destRects", m_destRects.toString(0));
}

} // namespace huge
