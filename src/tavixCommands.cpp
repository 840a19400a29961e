#include "tavix.h"

#include "XActionSetBorder.h"
#include "XCellPointer.h"
#include "XCellTableModel.h"
#include "XCellTableView.h"
#include "XComboBox.h"
#include "XFontComboBox.h"
#include "XStyleAction.h"
#include "XTablePage.h"
#include "XTracingStyleBrush.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int largestShort = std::numeric_limits<int16_t>::max();

/// A 7 bit field: a step beyond either end comes back at the other.
constexpr int breakSizes = 128;

/// The record of the cell at the top left of the selection; null without one.
const XTavixCellExtend* firstRecord(const XTablePage& page, const xstd::XMergedRects& selection)
{
    return page.model()->cellExtend(selection[0].top, selection[0].left);
}

/// Calls fn(record) for every record of the selection.
template <class F>
void forEachRecord(XTablePage& page, const xstd::XMergedRects& selection, F&& fn)
{
    for (const xstd::XRect& rect : selection) {
        page.table().forEachCell(rect, [&](const huge::XCell* cell) {
            if (const auto* record = static_cast<const XTavixCellExtend*>(cell->extend()))
                fn(*record);
        });
    }
}

template <class F>
bool anyRecord(XTablePage& page, const xstd::XMergedRects& selection, F&& has)
{
    bool found = false;
    forEachRecord(page, selection,
                  [&](const XTavixCellExtend& record) { found = found || has(record); });
    return found;
}

/// The largest of what `of` reads from the records of the selection, `least` at the least.
template <class F>
int largest(XTablePage& page, const xstd::XMergedRects& selection, int least, F&& of)
{
    forEachRecord(page, selection, [&](const XTavixCellExtend& record) {
        least = std::max<int>(least, of(record.formatRule));
    });
    return least;
}

QCursor brushCursor()
{
    return cursorFromFile("./icons/brush_cursor.png", QPoint(1, 1), Qt::CrossCursor);
}

} // namespace

xstd::XMergedRects tavix::selection() const
{
    const XCellTableView* view = currentView();
    return view ? view->selectedRects() : xstd::XMergedRects();
}

void tavix::perform(std::unique_ptr<huge::XCellAction> action)
{
    const QModelIndex current = currentView()->currentIndex();
    if (current.isValid())
        action->setFocusRect(
            xstd::XRect(current.row(), current.column(), current.row(), current.column()));
    currentView()->tableModel()->perform(std::move(action));
}

template <class Action, class... Args>
void tavix::changeStyle(const Args&... args)
{
    const xstd::XMergedRects rects = selection();
    if (!rects.isEmpty())
        perform(std::make_unique<Action>(this, args..., rects));
}

template <class Action>
void tavix::toggleAny(bool XTavixCellExtend::*bit)
{
    const xstd::XMergedRects rects = selection();
    if (rects.isEmpty())
        return;
    const bool isOn = anyRecord(*currentPage(), rects,
                                [bit](const XTavixCellExtend& record) { return record.*bit; });
    changeStyle<Action>(!isOn);
}

void tavix::toggleBold()
{
    toggleAny<XActionSetFontBlod>(&XTavixCellExtend::bold);
}

void tavix::toggleItalic()
{
    toggleAny<XActionSetFontItalic>(&XTavixCellExtend::italic);
}

void tavix::toggleUnderline()
{
    toggleAny<XActionSetFontUnderline>(&XTavixCellExtend::underLine);
}

void tavix::toggleMultLine()
{
    const xstd::XMergedRects rects = selection();
    if (rects.isEmpty())
        return;
    const XTavixCellExtend* first = firstRecord(*currentPage(), rects);
    changeStyle<XActionSetMultline>(!(first && first->multLine));
}

huge::XFormatRule tavix::firstRule() const
{
    const xstd::XMergedRects rects = selection();
    const XTavixCellExtend* first = rects.isEmpty() ? nullptr : firstRecord(*currentPage(), rects);
    return first ? first->formatRule : huge::defaultFormatRule;
}

void tavix::applyFormatRule(XFormatField field, const huge::XFormatRule& rule)
{
    changeStyle<XActionSetFormatRule>(rule, field);
}

void tavix::togglePercent()
{
    huge::XFormatRule rule;
    rule.percent = !firstRule().percent;
    applyFormatRule(XFormatField::Percent, rule);
}

void tavix::toggleMod()
{
    huge::XFormatRule rule;
    rule.mod = !firstRule().mod;
    applyFormatRule(XFormatField::Mod, rule);
}

void tavix::toggleBreakChar(char breakChar)
{
    const auto byte = static_cast<uint8_t>(breakChar);
    huge::XFormatRule rule;
    rule.breakchar = firstRule().breakchar == byte ? 0 : byte;
    applyFormatRule(XFormatField::Breakchar, rule);
}

void tavix::toggleSign()
{
    const xstd::XMergedRects rects = selection();
    if (rects.isEmpty())
        return;
    huge::XFormatRule rule;
    rule.sign = !anyRecord(*currentPage(), rects,
                           [](const XTavixCellExtend& record) { return record.formatRule.sign; });
    applyFormatRule(XFormatField::Sign, rule);
}

void tavix::stepMantissa(int step)
{
    const xstd::XMergedRects rects = selection();
    if (rects.isEmpty())
        return;
    const int present = largest(*currentPage(), rects, -1,
                                [](const huge::XFormatRule& rule) { return rule.mantissa; });
    setMantissa(present + step);
}

void tavix::setMantissa(int size)
{
    huge::XFormatRule rule; // by itself: as many digits as the value has
    if (size >= 0)
        rule.mantissa = static_cast<int16_t>(std::min(size, largestShort));
    applyFormatRule(XFormatField::Mantissa, rule);
}

void tavix::stepBreakSize(int step)
{
    const xstd::XMergedRects rects = selection();
    if (rects.isEmpty())
        return;
    const int present = largest(*currentPage(), rects, 0,
                                [](const huge::XFormatRule& rule) { return rule.breaksize; });
    huge::XFormatRule rule;
    rule.breaksize = static_cast<uint8_t>((present + step + breakSizes) % breakSizes);
    applyFormatRule(XFormatField::Breaksize, rule);
}

void tavix::setRadix(int radix)
{
    huge::XFormatRule rule;
    rule.radix = static_cast<uint8_t>(radix);
    applyFormatRule(XFormatField::Radix, rule);
}

void tavix::stepFontSize(bool expand)
{
    if (expand)
        changeStyle<XActionExpandFontSize>();
    else
        changeStyle<XActionReduceFontSize>();
}

void tavix::setAlignment(bool vertical, int value)
{
    changeStyle<XActionSetAlignment>(vertical, static_cast<uint8_t>(value));
}

void tavix::setBorder(int mode)
{
    const xstd::XMergedRects rects = selection();
    if (!rects.isEmpty())
        perform(std::make_unique<XActionSetBorder>(this, rects, true, mode, borderColor()));
}

void tavix::clearStyle()
{
    changeStyle<XActionClearStyle>();
}

void tavix::onSetFontName(const QString& _name)
{
    // The panel sets the text too, when another cell becomes the current one.
    if (m_fontNameCombo->hasFocus())
        changeStyle<XActionSetFontName>(_name);
}

void tavix::onSetFontSize(const QString& _size)
{
    const int size = std::min(_size.toInt(), largestShort);
    if (m_fontSizeCombo->hasFocus() && size > 0)
        changeStyle<XActionSetFontSize>(static_cast<int16_t>(size));
}

void tavix::onSetMantissaSize(const QString& _size)
{
    bool isNumber = false;
    const int size = _size.toInt(&isNumber);
    if (m_mantissaCombo->hasFocus() && isNumber && !selection().isEmpty())
        setMantissa(size);
}

void tavix::onSetFontColor(const QColor& _color, XToolColorButton::Position)
{
    changeStyle<XActionSetTextColor>(_color);
}

void tavix::onSelectBackgroundColor(const QColor& _color, XToolColorButton::Position)
{
    changeStyle<XActionSetBackgroundColor>(_color);
}

void tavix::onSelectBorderColor(const QColor& _color, XToolColorButton::Position _pos)
{
    // A choice in the popup is for the borders that are drawn next.
    if (_pos == XToolColorButton::FromPopup)
        return;
    const xstd::XMergedRects rects = selection();
    if (!rects.isEmpty())
        perform(std::make_unique<XActionSetBorder>(this, rects, false, 0, _color));
}

void tavix::startStyleBrush()
{
    if (!selection().isEmpty())
        currentView()->setTool(std::make_unique<XTracingStyleBrush>(this, brushCursor()));
}
