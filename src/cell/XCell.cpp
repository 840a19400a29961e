#include "cell/XCell.h"
#include "cell/XCellEnv.h"
#include "cell/XCellScript.h"
#include "cell/XCellTable.h"
#include "cell/XCellVarError.h"
#include "cell/XCellVarRange.h"
#include "cell/cellName.h"
#include "common/XStop.h"
#include "script/XScriptRunner.h"

#include <cassert>
#include <stdexcept>
#include <utility>

namespace huge {

XCell::XCell(int32_t row, int32_t col) : m_row(row), m_col(static_cast<int16_t>(col)) {}

XCell::XCell(const XCell& source) : XCell(source.m_row, source.m_col)
{
    copyContent(source);
}

XCell::XCell(const XCell& source, int32_t row, int32_t col) : XCell(row, col)
{
    copyContent(source);
    if (row == source.m_row && col == source.m_col)
        return;
    if (m_ranges)
        m_ranges->shift(row - source.m_row, col - source.m_col, false);
    if (m_hold == XCellHold::Ring)
        m_hold = XCellHold::None; // other cells are read from there
}

XCell& XCell::operator=(const XCell& source)
{
    assert(!isListed() && !source.isListed());
    if (this == &source)
        return *this;
    setPosition(source.m_row, source.m_col);
    copyContent(source);
    return *this;
}

XCell::~XCell()
{
    assert(!isListed());
    dropEnv();
}

void XCell::setPosition(int32_t row, int32_t col) noexcept
{
    m_row = row;
    m_col = static_cast<int16_t>(col);
}

void XCell::copyContent(const XCell& source)
{
    clear_();
    m_state = source.m_state;
    m_hold = source.m_hold == XCellHold::Fresh ? XCellHold::None : source.m_hold;
    m_script = source.m_script;
    m_value = source.m_value;
    if (source.m_ranges)
        setRanges(*source.m_ranges);
    if (source.m_text)
        m_text = std::make_unique<xstd::XString>(*source.m_text);
    m_extend = source.m_extend ? source.m_extend->clone() : nullptr;
}

void XCell::setValue(HugeVariant value)
{
    m_value.replace_(std::move(value));
    clearDisplayText();
}

std::unique_ptr<XCellExtend> XCell::swapExtend(std::unique_ptr<XCellExtend> extend)
{
    clearDisplayText();
    m_extend.swap(extend);
    return extend;
}

bool XCell::hasContent() const noexcept
{
    return m_script || m_text || !m_value.isNull();
}

void XCell::assignScriptFrom(const XCell* source, bool shift)
{
    clear_();
    if (!source)
        return;
    m_script = source->m_script;
    m_value = source->m_value;
    if (source->m_text)
        m_text = std::make_unique<xstd::XString>(*source->m_text);
    if (source->m_hold == XCellHold::Failed)
        m_hold = XCellHold::Failed;
    if (!source->m_ranges)
        return;
    setRanges(*source->m_ranges);
    if (shift)
        m_ranges->shift(m_row - source->m_row, m_col - source->m_col, true);
}

void XCell::assignValueFrom(const XCell& source)
{
    clear_();
    m_value = source.m_value;
}

void XCell::clear_()
{
    m_value.clear_();
    m_text.reset();
    m_script = ScriptItemPtr();
    m_ranges.reset();
    m_hold = XCellHold::None;
    dropEnv();
    clearDisplayText();
}

// A closure that left the cell keeps the environment. Its references name the ranges that go now,
// and must not find those that come.
void XCell::dropEnv() noexcept
{
    if (m_env)
        m_env->detach();
    m_env.reset();
}

std::unique_ptr<XCellRanges> XCell::swapRanges(std::unique_ptr<XCellRanges> newRanges)
{
    m_ranges.swap(newRanges);
    if (m_ranges)
        m_ranges->setOwner(this);
    return newRanges;
}

void XCell::setRanges(const XCellRanges& source)
{
    swapRanges(std::make_unique<XCellRanges>(source));
}

void XCell::setRangesShifted(const XCellRanges& source, int32_t fromRow, int32_t fromCol)
{
    setRanges(source);
    m_ranges->shift(m_row - fromRow, m_col - fromCol, false);
}

void XCell::move_(int32_t dRow, int32_t dCol, bool force)
{
    setPosition(m_row + dRow, m_col + dCol);
    if (m_ranges)
        m_ranges->shift(dRow, dCol, force);
}

xstd::XString XCell::text(bool showRef) const
{
    return m_text || m_script ? scriptText(showRef) : valueText();
}

xstd::XString XCell::scriptText(bool showRef) const
{
    if (m_script && m_ranges)
        return m_script->textAt(m_ranges->refs(), showRef);
    return m_text ? *m_text : xstd::XString();
}

const xstd::XString& XCell::valueText() const
{
    if (!m_displayText) {
        const XFormatRule rule = m_extend ? m_extend->rule() : XFormatRule();
        xstd::XString text;
        try {
            if (m_value.object())
                text = m_value.fmt(rule);
        } catch (const std::runtime_error& failure) {
            // A number of more digits than a text may have. Who paints cells must not fail.
            text = XCellVarError(cellValueError, failure.what()).toString();
        }
        m_displayText = std::make_unique<xstd::XString>(std::move(text));
    }
    return *m_displayText;
}

void XCell::keepValue() noexcept
{
    if (!m_script && m_hold == XCellHold::None)
        m_hold = XCellHold::Fresh;
}

void XCell::setText_(XCellTable& table, const xstd::XString& text, int32_t row, int32_t col,
                     XDisplacedText* displaced)
{
    assert(!isListed());
    clear_();
    const size_t begin = text.find_first_not_of('=');
    if (begin == xstd::XString::npos)
        return;
    const xstd::XString source(text.substr(begin));
    m_text = std::make_unique<xstd::XString>(source);
    const bool own = row == ownRow && col == ownCol;
    try {
        XCellScript script(source, own ? m_row : row, own ? m_col : col);
        script.compile();
        if (script.ranges.empty())
            store(script.run(env()));
        else
            enterScript(table, script, source, displaced);
    } catch (xstd::XExceptionItems& failure) {
        failure.add(contextItem(X_HERE, "XCell::setText Error"));
        keepFailure(failure);
        throw;
    } catch (const std::exception& error) {
        xstd::XExceptionItems failure;
        failure.add(contextItem(X_HERE, error.what()));
        keepFailure(failure);
        throw failure;
    }
    if (m_ranges && m_ranges->hasRect())
        return; // the recalculation runs it, when all that it reads is up to date
    if (m_script)
        calc_();
    m_hold = XCellHold::Fresh;
}

void XCell::findReferences_(XCellTable& table)
{
    if (!m_text)
        return;
    const xstd::XString source = *m_text;
    try {
        XCellScript script(source, m_row, m_col);
        script.compile();
        if (!script.ranges.empty())
            enterScript(table, script, source, nullptr);
    } catch (xstd::XExceptionItems& failure) {
        failure.add(contextItem(X_HERE, "XCell::setText Error"));
        keepFailure(failure);
        throw;
    }
}

void XCell::storeText_(XCellTable& table, const xstd::XString& text, const xstd::XString& shown)
{
    assert(!isListed());
    clear_();
    if (text.empty())
        return;
    m_text = std::make_unique<xstd::XString>(text);
    try {
        findReferences_(table);
    } catch (const xstd::XExceptionItems&) {
        return; // the cell shows that
    }
    if (!shown.empty())
        setValue(HugeVariant::make<XCellVarError>(cellStoredText, shown));
}

void XCell::calc_()
{
    if (m_hold != XCellHold::None || (!m_script && !m_text)) {
        if (m_hold == XCellHold::Fresh)
            m_hold = XCellHold::None;
        return;
    }
    try {
        store(run());
    } catch (xstd::XExceptionItems& failure) {
        failure.add(contextItem(X_HERE, m_script ? "XCell::calc Error" : "XCell::setText Error"));
        keepFailure(failure);
        if (xstd::XStop::isStop(failure))
            throw;
    } catch (const std::exception& error) {
        xstd::XExceptionItems failure;
        failure.add(contextItem(X_HERE, error.what()));
        keepFailure(failure);
    }
}

HugeVariant XCell::run()
{
    if (m_script)
        return XScriptRunner(m_script->program, env()).run();
    XCellScript script(*m_text, m_row, m_col);
    script.compile();
    return script.run(env());
}

void XCell::enterScript(XCellTable& table, XCellScript& script, const xstd::XString& text,
                        XDisplacedText* displaced)
{
    ScriptSet& scripts = table.scripts();
    const ScriptItemPtr standing = displaced ? scripts.find(script.prog()) : nullptr;
    if (standing) {
        displaced->script = standing;
        displaced->text = standing->text;
        m_script = scripts.putReplacing(m_row, m_col, text, script.program(), script.ranges);
    } else {
        m_script = scripts.put(m_row, m_col, text, script.program(), script.ranges);
    }
    m_ranges = std::make_unique<XCellRanges>(&table, this, script.ranges, m_row, m_col);
    m_text.reset();
}

/// What ends up in a cell holds no reference: neither the result nor what a closure captured.
void XCell::store(HugeVariant&& result)
{
    stripRanges(result);
    setValue(std::move(result));
}

const std::shared_ptr<XCellEnv>& XCell::env()
{
    if (!m_env)
        m_env = std::make_shared<XCellEnv>(this);
    return m_env;
}

xstd::XExceptionItem XCell::contextItem(const xstd::XSourceLocation& where,
                                        const xstd::XString& mess) const
{
    return xstd::XExceptionItem(where, "cell")
        .setMess(mess)
        .setExtend("cellRow", m_row)
        .setExtend("cellCol", int32_t(m_col))
        .setExtend("cellName", cellName(m_row, m_col))
        .setExtend("text", scriptText(false));
}

void XCell::keepFailure(const xstd::XExceptionItems& failure)
{
    // What reads cells may succeed the next time, and a stopped text is not at fault.
    if (!m_script && !xstd::XStop::isStop(failure))
        m_hold = XCellHold::Failed;
    setFailure(failure);
}

void XCell::setFailure(const xstd::XExceptionItems& failure)
{
    // The running text, which is bounded: a long script must not be kept once more in its failure.
    setValue(HugeVariant::make<XCellVarError>(cellValueError, failure.what()));
}

void XCell::showStop(const xstd::XExceptionItems& stop)
{
    const bool runs = m_script || m_text;
    if (m_hold == XCellHold::None && runs)
        setFailure(stop);
    else if (m_hold == XCellHold::Fresh)
        m_hold = XCellHold::None;
}

} // namespace huge
