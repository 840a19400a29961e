#pragma once

#include "cell/ScriptSet.h"
#include "cell/XCellExtend.h"
#include "cell/XCellRange.h"
#include "common/XByteCursor.h"
#include "common/XException.h"
#include "common/XRect.h"
#include "common/XString.h"
#include "values/HugeVariant.h"

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace huge {

class XCellEnv;
class XCellScript;
class XCellTable;

/// What recalculation does with a cell that it meets.
enum class XCellHold : uint8_t {
    None,   ///< it runs
    Fresh,  ///< its constant has just been calculated, or came back with its value: pass over once
    Failed, ///< its text does not compile or its constant failed: the error stays until a new text
    Ring    ///< its link would close a ring of references: it stays out until a new text
};

/// What is taken over from the image of a cell; the state always is.
enum class XCellImageMode : int32_t {
    Values = 1,     ///< the text of the value, as the cell's text
    Scripts = 2,    ///< the text
    Formats = 3,    ///< the format record
    Everything = 4, ///< text and format record
    Stored = 5      ///< the same, with the value's text in place of a value: nothing is run
};

/// A shared script that got another source text, and the text that it had. Null without one.
struct XDisplacedText {
    ScriptItemPtr script;
    xstd::XString text;
};

/// One cell: what was typed and what it evaluates to. A text with references is held as a counted
/// pointer to the script that all like cells share, and `ranges` holds this cell's own absolute
/// references, one per entry of the script's range map; a text without references is kept as it
/// is. A cell with content has exactly one of text and script. Cells that hold only a value or
/// only a format record are legal too. A table, or the snapshot of an action, owns the cell.
class XCell {
public:
    /// Stands for the cell's own position in setText_.
    static constexpr int32_t ownRow = -1;
    static constexpr int32_t ownCol = 65535;

    /// An empty cell.
    XCell(int32_t row, int32_t col);
    /// A deep copy at the same position; only the script is shared, and the copy is not linked.
    XCell(const XCell& source);
    /// A deep copy for another position: relative references move along, absolute ones stay.
    XCell(const XCell& source, int32_t row, int32_t col);
    /// Takes over position and content; neither cell may be linked.
    XCell& operator=(const XCell& source);
    /// The cell must be unlinked. Values that outlive it (a closure) find no cell any more.
    ~XCell();

    int32_t row() const noexcept { return m_row; }
    int32_t col() const noexcept { return m_col; }
    /// Writes the position and nothing else.
    void setPosition(int32_t row, int32_t col) noexcept;

    /// Two flag bits that travel with the cell: 0 deleted, 1 invalid. The engine tests neither.
    uint16_t state() const noexcept { return m_state; }
    void setState(uint16_t state) noexcept { m_state = state; }

    /// The last result; null when there is none.
    const HugeVariant& value() const noexcept { return m_value; }
    /// Stores a result and drops the display text.
    void setValue(HugeVariant value);

    /// The references, in the order of the script's range map; null for a cell without any.
    XCellRanges* ranges() noexcept { return m_ranges.get(); }
    const XCellRanges* ranges() const noexcept { return m_ranges.get(); }
    /// The shared script; null for a cell without references.
    const ScriptItemPtr& script() const noexcept { return m_script; }
    /// The source of a cell without script; null when there is none. Never begins with "=".
    const xstd::XString* constantText() const noexcept { return m_text.get(); }

    XCellExtend* extend() noexcept { return m_extend.get(); }
    const XCellExtend* extend() const noexcept { return m_extend.get(); }
    /// Replaces the format record (null removes it), drops the display text, returns the old one.
    std::unique_ptr<XCellExtend> swapExtend(std::unique_ptr<XCellExtend> extend);

    /// True when there is a script, a text or a value.
    bool hasContent() const noexcept;
    /// hasContent(), or a format record.
    bool isUsed() const noexcept { return hasContent() || m_extend; }

    /// Takes script, text, value and references of `source`; extend and state stay. The
    /// references move by the distance of the two cells when `shift` is set, absolute ones too.
    /// A null source clears the cell.
    void assignScriptFrom(const XCell* source, bool shift);
    /// Takes the value of `source` alone; the rest of the content goes.
    void assignValueFrom(const XCell& source);
    /// Drops text, script, references and value; extend and state stay.
    void clear_();
    void clearDisplayText() noexcept { m_displayText.reset(); }

    /// Installs `newRanges` (null is allowed) and returns the previous references.
    std::unique_ptr<XCellRanges> swapRanges(std::unique_ptr<XCellRanges> newRanges);
    /// Replaces the references by a copy of `source`.
    void setRanges(const XCellRanges& source);
    /// As setRanges; the copies then move by (row - fromRow, col - fromCol), absolute ends stay.
    void setRangesShifted(const XCellRanges& source, int32_t fromRow, int32_t fromCol);
    /// Moves the cell's position and its references; `force` moves absolute ends too.
    void move_(int32_t dRow, int32_t dCol, bool force);
    /// The reference with this identifier, or null.
    XCellRange* findRange(int32_t id) noexcept { return m_ranges ? m_ranges->find(id) : nullptr; }

    /// What an editor shows: the source, or for a cell that has none its value's text.
    xstd::XString text(bool showRef) const;
    /// The source alone, without "=". A deleted reference reads "#REF#" with `showRef`, else its
    /// last position.
    xstd::XString scriptText(bool showRef) const;
    /// The value as text in the cell's format; made on the first call after a change.
    const xstd::XString& valueText() const;

    /// Replaces the content by `text`; leading "=" are dropped and an empty text only clears. The
    /// text compiles for the base position (row, col). A text without references runs at once;
    /// one that reads cells gets its value from the recalculation. With `displaced` a script that
    /// others share already takes this text as its source, and its former text goes there. The
    /// cell must be unlinked. Failure: the text stays, the value becomes an error value, and the
    /// chain is raised.
    void setText_(XCellTable& table, const xstd::XString& text, int32_t row = ownRow,
                  int32_t col = ownCol, XDisplacedText* displaced = nullptr);
    /// For a text that a stop kept from being compiled: finds its references, so that the cell can
    /// be linked, and runs nothing. The value stays. Raises what the compiler raises, which becomes
    /// the value.
    void findReferences_(XCellTable& table);
    /// Replaces the content by a text that is not run, and shows the text of the value that it
    /// gave when it was stored. What calculates with that fails: it is no value. The cell must be
    /// unlinked; a text that does not compile shows its failure.
    void storeText_(XCellTable& table, const xstd::XString& text, const xstd::XString& shown);
    /// Runs the cell. A failure becomes its value and is not raised, so that a pass goes on; only
    /// a stop is raised, after it has become the value.
    void calc_();
    /// Shows a stop in place of a run that it kept from beginning.
    void showStop(const xstd::XExceptionItems& stop);
    /// Makes the failure the cell's value, as an error value with the chain's text.
    void setFailure(const xstd::XExceptionItems& failure);

    // Images (XCellImage.cpp).

    /// The value in the default format, as images and the clipboard hold it; empty for null. A
    /// value that has no text, such as a number of too many digits, gives its failure.
    xstd::XString plainValueText() const;
    /// Where the cell of a record stood. Reads the whole record: std::runtime_error for a damaged
    /// one.
    static xstd::XPoint recordPosition(xstd::XByteCursor record);
    /// The record of the cell: position, text, value as text, state, references, format.
    std::vector<uint8_t> toVector() const;
    /// Takes over what `mode` says from a record. Its text compiles for the record's position, so
    /// that relative references adapt to this cell. A format goes into the cell's own record, or a
    /// clone of `prototype`, or, if that is null, is kept as it is. The cell must be unlinked.
    /// std::runtime_error, with the cell unchanged, for a damaged record; what the format and the
    /// text raise comes after the rest has been taken over.
    void fromVector(XCellTable& table, xstd::XByteCursor record, XCellImageMode mode,
                    const XCellExtend* prototype);
    /// The same for a record from the clipboard: the text of a value is read as pastedSource does,
    /// and what it refers to counts as deleted, because a value refers to nothing.
    void fromVectorPasted(XCellTable& table, xstd::XByteCursor record, XCellImageMode mode,
                          const XCellExtend* prototype);
    /// The object of the cell in a table's JSON image, and the reverse, which works as fromVector
    /// and fails as it does, here for an object without a position.
    xstd::XJson toJson() const;
    void fromJson(XCellTable& table, const xstd::XKVNode& node, XCellImageMode mode,
                  const XCellExtend* prototype);
    /// Where the cell of such an object stood; std::runtime_error if it does not say.
    static xstd::XPoint jsonPosition(const xstd::XKVNode& node);

    XCellHold hold() const noexcept { return m_hold; }
    void setHold(XCellHold hold) noexcept { m_hold = hold; }
    /// Lets a constant that came back, or moved, with its value pass over the next recalculation:
    /// run again it could give another value.
    void keepValue() noexcept;
    /// True while the references are found as readers of what they name.
    bool isLinked() const noexcept { return isListed() && !m_isHeldOut; }

private:
    friend class XCellTable;
    friend class XCellMarks;

    static constexpr uint32_t notLinked = 0xffffffff;

    /// Known to a table, as a linked cell or as one that is held out.
    bool isListed() const noexcept { return m_linkIndex != notLinked; }

    struct Image;
    void copyContent(const XCell& source);
    std::unique_ptr<XCellExtend> newExtend(const XCellExtend* prototype) const;
    void takeFormat(const std::vector<uint8_t>& format, const XCellExtend* prototype);
    void takeImage(XCellTable& table, const Image& image, const xstd::XString& source,
                   XCellImageMode mode, const XCellExtend* prototype);
    void enterScript(XCellTable& table, XCellScript& script, const xstd::XString& text,
                     XDisplacedText* displaced);
    HugeVariant run();
    void store(HugeVariant&& result);
    const std::shared_ptr<XCellEnv>& env();
    void dropEnv() noexcept;
    /// An entry that says which cell failed, for a chain.
    xstd::XExceptionItem contextItem(const xstd::XSourceLocation& where,
                                     const xstd::XString& mess) const;
    void keepFailure(const xstd::XExceptionItems& failure);

    int32_t m_row;
    int16_t m_col;
    uint16_t m_state = 0;
    XCellHold m_hold = XCellHold::None;
    bool m_isHeldOut = false;         // listed among the table's cells that are held out
    uint32_t m_linkIndex = notLinked; // place in the table's list
    uint32_t m_mark = 0;              // pass of the table that saw the cell last
    uint32_t m_order = 0;             // the cell's number in that pass
    std::unique_ptr<XCellRanges> m_ranges;
    ScriptItemPtr m_script;
    std::unique_ptr<xstd::XString> m_text;
    mutable std::unique_ptr<xstd::XString> m_displayText;
    std::unique_ptr<XCellExtend> m_extend;
    HugeVariant m_value;
    std::shared_ptr<XCellEnv> m_env; // made at the first run
};

} // namespace huge
