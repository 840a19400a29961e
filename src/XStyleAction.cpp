#include "XStyleAction.h"

#include "XCellTableModel.h"
#include "XTablePage.h"
#include "tavix.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int smallestFont = 6;

int64_t countOf(const xstd::XMergedRects& cells)
{
    int64_t count = 0;
    for (const xstd::XRect& rect : cells) {
        if (!rect.isNull())
            count += int64_t(rect.height()) * rect.width();
    }
    return count;
}

} // namespace

XStyleAction::XStyleAction(tavix* owner, xstd::XMergedRects rects)
    : XCellAction(&owner->currentPage()->table()), m_rects(std::move(rects)),
      m_cells(xstd::XMergedRects(m_rects).normalize_()), m_model(owner->currentPage()->model())
{}

void XStyleAction::setCells(xstd::XMergedRects cells)
{
    m_cells = std::move(cells.normalize_());
}

XTavixCellExtend& XStyleAction::forceRecord(int32_t row, int32_t col)
{
    return *m_model->forceCellExtend(row, col);
}

void XStyleAction::requireRoom()
{
    if (countOf(m_cells) > maxCells)
        throw xstd::XExceptionItems().add(xstd::XExceptionItem(X_HERE, "action")
                                              .setMess("The selection is too large for a format")
                                              .setExtend("rects", m_rects.toString(0)));
    growTo(m_cells.boundRect(), "setStyle");
}

xstd::XMergedRects XStyleAction::paintRects(xstd::XUndoableActionType) const
{
    xstd::XMergedRects painted;
    for (const xstd::XRect& rect : m_rects)
        painted.add_(xstd::XRect(rect.top - 1, rect.left - 1, rect.bottom + 1, rect.right + 1));
    return painted;
}

xstd::XUndoableAction* XStyleAction::do_()
{
    m_savedExtends.clear(); // a redo saves the table as it stands then
    m_table->snapshotExtends(m_savedExtends, m_cells, {huge::optCopy});
    change();
    return this;
}

xstd::XUndoableAction* XStyleAction::undo_()
{
    m_table->restoreExtends(m_savedExtends, m_cells, {huge::optTake});
    return this;
}

XRecordAction::XRecordAction(tavix* owner, xstd::XMergedRects rects)
    : XStyleAction(owner, std::move(rects))
{
    requireRoom();
}

void XRecordAction::change()
{
    cells().forEach([this](int32_t row, int32_t col) {
        changeRecord(forceRecord(row, col));
        return false;
    });
}

XActionExpandFontSize::XActionExpandFontSize(tavix* owner, xstd::XMergedRects rects)
    : XRecordAction(owner, std::move(rects))
{}

void XActionExpandFontSize::changeRecord(XTavixCellExtend& record) const
{
    const int size = record.fontSize;
    const int larger = std::max(static_cast<int>(size * 1.1), size + 1);
    record.fontSize =
        static_cast<int16_t>(std::min<int>(larger, std::numeric_limits<int16_t>::max()));
}

XActionReduceFontSize::XActionReduceFontSize(tavix* owner, xstd::XMergedRects rects)
    : XRecordAction(owner, std::move(rects))
{}

void XActionReduceFontSize::changeRecord(XTavixCellExtend& record) const
{
    const int size = record.fontSize;
    const int smaller = std::min(static_cast<int>(size * 0.9), size - 1);
    record.fontSize = static_cast<int16_t>(std::max(smaller, smallestFont));
}

XActionSetAlignment::XActionSetAlignment(tavix* owner, bool isVertical, uint8_t value,
                                         xstd::XMergedRects rects)
    : XRecordAction(owner, std::move(rects)), m_isVertical(isVertical), m_value(value)
{}

void XActionSetAlignment::changeRecord(XTavixCellExtend& record) const
{
    (m_isVertical ? record.valign : record.align) = m_value;
}

XActionSetFormatRule::XActionSetFormatRule(tavix* owner, const huge::XFormatRule& rule,
                                           XFormatField field, xstd::XMergedRects rects)
    : XRecordAction(owner, std::move(rects)), m_rule(rule), m_field(field)
{}

void XActionSetFormatRule::changeRecord(XTavixCellExtend& record) const
{
    huge::XFormatRule& rule = record.formatRule;
    switch (m_field) {
    case XFormatField::Length:
        rule.length = m_rule.length;
        break;
    case XFormatField::Mantissa:
        rule.mantissa = m_rule.mantissa;
        break;
    case XFormatField::Radix:
        rule.radix = m_rule.radix;
        break;
    case XFormatField::Breakchar:
        rule.breakchar = m_rule.breakchar;
        break;
    case XFormatField::Breaksize:
        rule.breaksize = m_rule.breaksize;
        break;
    case XFormatField::Chinese:
        rule.chinese = m_rule.chinese;
        break;
    case XFormatField::Percent:
        rule.percent = m_rule.percent;
        break;
    case XFormatField::Mod:
        rule.mod = m_rule.mod;
        break;
    case XFormatField::Sign:
        rule.sign = m_rule.sign;
        break;
    case XFormatField::DateTimeStyle:
        rule.dateTimeStyle = m_rule.dateTimeStyle;
        break;
    }
}

XActionClearStyle::XActionClearStyle(tavix* owner, xstd::XMergedRects rects)
    : XStyleAction(owner, std::move(rects))
{}

void XActionClearStyle::change()
{
    for (huge::XCell* cell : table().collectCells(cells(), {huge::optAll})) {
        if (cell->swapExtend(nullptr) && !cell->isUsed())
            table().deleteCell(cell->row(), cell->col());
    }
}
