#pragma once

#include "XTavixCellExtend.h"
#include "cell/XCellAction.h"

#include <QColor>

#include <utility>

class XCellTableModel;
class tavix;

/// An undoable change of how cells are shown. It concerns format records alone: no text, script or
/// value changes, and nothing is recalculated. The records are saved before the change and put back
/// by undo; a cell that was made only to hold a record stays, empty.
class XStyleAction : public huge::XCellAction {
public:
    /// So many positions one action gives a record at most: more would take gigabytes.
    static constexpr int64_t maxCells = 2'000'000;

    xstd::XUndoableAction* do_() override;
    xstd::XUndoableAction* undo_() override;

    /// The cells that were asked for, whatever is done with them.
    xstd::XMergedRects selectRects(xstd::XUndoableActionType) const override { return m_rects; }
    xstd::XMergedRects changedRects(xstd::XUndoableActionType) const override { return m_rects; }
    xstd::XMergedRects calcRects(xstd::XUndoableActionType) const override { return m_rects; }
    /// With the cells around them, which draw the borders that they share.
    xstd::XMergedRects paintRects(xstd::XUndoableActionType type) const override;

protected:
    /// The current page of `owner` is the one that is changed.
    XStyleAction(tavix* owner, xstd::XMergedRects rects);

    /// The change itself, made on cells(), whose records are saved.
    virtual void change() = 0;

    const xstd::XMergedRects& rects() const { return m_rects; }
    /// What the action may touch: the asked for cells, each once, if nothing else was set.
    const xstd::XMergedRects& cells() const { return m_cells; }
    void setCells(xstd::XMergedRects cells);
    huge::XCellTable& table() { return *m_table; }
    /// The record there; a cell without one gets the format of new cells.
    XTavixCellExtend& forceRecord(int32_t row, int32_t col);
    /// For actions that give every one of cells() a record: makes the working area reach them.
    /// Raises "The selection is too large for a format", with the table as it was.
    void requireRoom();

private:
    xstd::XMergedRects m_rects;
    xstd::XMergedRects m_cells; // no two share a position
    XCellTableModel* m_model;
    huge::XSavedExtends m_savedExtends;
};

/// Changes the record of every cell, each by itself.
class XRecordAction : public XStyleAction {
protected:
    XRecordAction(tavix* owner, xstd::XMergedRects rects);

    virtual void changeRecord(XTavixCellExtend& record) const = 0;

private:
    void change() final;
};

/// Gives one field of the records a value.
template <auto field, class Value>
class XActionSetField final : public XRecordAction {
public:
    XActionSetField(tavix* owner, Value value, xstd::XMergedRects rects)
        : XRecordAction(owner, std::move(rects)), m_value(std::move(value))
    {}

private:
    void changeRecord(XTavixCellExtend& record) const override { record.*field = m_value; }

    Value m_value;
};

using XActionSetFontName = XActionSetField<&XTavixCellExtend::fontName, QString>;
using XActionSetFontSize = XActionSetField<&XTavixCellExtend::fontSize, int16_t>;
using XActionSetFontBlod = XActionSetField<&XTavixCellExtend::bold, bool>;
using XActionSetFontItalic = XActionSetField<&XTavixCellExtend::italic, bool>;
using XActionSetFontUnderline = XActionSetField<&XTavixCellExtend::underLine, bool>;
using XActionSetMultline = XActionSetField<&XTavixCellExtend::multLine, bool>;

/// Gives one colour of the records a value. A transparent background is none.
template <QRgb XTavixCellExtend::*field>
class XActionSetColor final : public XRecordAction {
public:
    XActionSetColor(tavix* owner, const QColor& color, xstd::XMergedRects rects)
        : XRecordAction(owner, std::move(rects)), m_color(color)
    {}

private:
    void changeRecord(XTavixCellExtend& record) const override { record.*field = m_color.rgba(); }

    QColor m_color;
};

using XActionSetBackgroundColor = XActionSetColor<&XTavixCellExtend::background>;
using XActionSetTextColor = XActionSetColor<&XTavixCellExtend::fore>;

/// Makes every font a tenth larger, by a point at least, each from its own size.
class XActionExpandFontSize final : public XRecordAction {
public:
    XActionExpandFontSize(tavix* owner, xstd::XMergedRects rects);

private:
    void changeRecord(XTavixCellExtend& record) const override;
};

/// Makes every font a tenth smaller, by a point at least, down to 6 points.
class XActionReduceFontSize final : public XRecordAction {
public:
    XActionReduceFontSize(tavix* owner, xstd::XMergedRects rects);

private:
    void changeRecord(XTavixCellExtend& record) const override;
};

/// Aligns texts in one of the two directions.
class XActionSetAlignment final : public XRecordAction {
public:
    /// `value` is one of XTavixCellExtend's alignments.
    XActionSetAlignment(tavix* owner, bool isVertical, uint8_t value, xstd::XMergedRects rects);

private:
    void changeRecord(XTavixCellExtend& record) const override;

    bool m_isVertical;
    uint8_t m_value;
};

/// The fields of a number format, as XActionSetFormatRule names them.
enum class XFormatField : uint8_t {
    Length = 0,
    Mantissa = 1,
    Radix = 2,
    Breakchar = 3,
    Breaksize = 4,
    Chinese = 5,
    Percent = 6,
    Mod = 7,
    Sign = 8,
    DateTimeStyle = 9
};

/// Copies one field of a number format into the records; the other fields stay.
class XActionSetFormatRule final : public XRecordAction {
public:
    XActionSetFormatRule(tavix* owner, const huge::XFormatRule& rule, XFormatField field,
                         xstd::XMergedRects rects);

private:
    void changeRecord(XTavixCellExtend& record) const override;

    huge::XFormatRule m_rule;
    XFormatField m_field;
};

/// Takes the records away, and with them the cells that hold nothing else.
class XActionClearStyle final : public XStyleAction {
public:
    XActionClearStyle(tavix* owner, xstd::XMergedRects rects);

private:
    void change() override;
};
