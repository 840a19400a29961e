#pragma once

#include "cell/XCellPos.h"
#include "common/XRect.h"
#include "common/XString.h"

#include <cstdint>
#include <map>
#include <vector>

namespace huge {

/// One reference of a script: where its token stands in the source and which cells, or which
/// number, it names. A script holds it relative to the cell for which it was compiled, a cell in
/// absolute form with `start` at the top left. A single cell has two equal ends; a number only has
/// `start`, and an `end` that is all zero.
struct XCellRangeRef {
    int32_t id = 0;         ///< index in its script, in the order of compilation
    int32_t textPos = 0;    ///< byte offset of the token in the source
    uint16_t textLen = 0;   ///< bytes of the token
    bool isDeleted = false; ///< what it named no longer exists
    XCellPos start;
    XCellPos end;

    bool operator==(const XCellRangeRef&) const = default;

    bool isCell() const noexcept { return start.isCell(); }
    /// The cells of the absolute form; a null rectangle for a number.
    xstd::XRect rect() const noexcept;

    /// Moves both ends; see XCellPos::shift_.
    XCellRangeRef& shift_(int32_t dRow, int32_t dCol, bool force) noexcept;
    /// Makes `start` the top left end, each coordinate with its own mark. Numbers stay.
    XCellRangeRef& normalize_() noexcept;

    // The next three work on the absolute form and keep it inside the limits of cell names.

    /// The absolute form, of one that is relative to (row, col). What would lie outside the limits
    /// is marked deleted.
    XCellRangeRef& bind_(int32_t row, int32_t col) noexcept;
    /// Moves the reference. One that would leave the limits stays where it is, marked deleted.
    XCellRangeRef& move_(int32_t dRow, int32_t dCol, bool force) noexcept;
    /// Mirrors the reference about the diagonal through (row, col), with the same rule.
    XCellRangeRef& transpose_(int32_t row, int32_t col) noexcept;

    /// "A1", "$A$1:B2", "n:5". With `showRef` a deleted reference reads "#REF#", else it reads as
    /// its last position.
    xstd::XString toText(bool showRef) const;
    /// As toText, with the offsets added to relative coordinates of cells.
    xstd::XString toTextShifted(int32_t dRow, int32_t dCol, bool showRef) const;

    /// Rows and columns as numbers, for listings: "(0, 1)", "(0, 1):(3, 4)"; in a relative form
    /// these are offsets. Numbers read as in toText.
    xstd::XString toRcText() const;
    xstd::XString toRcTextShifted(int32_t dRow, int32_t dCol) const;

    /// Reads the ends from a text that holds one reference and nothing else, absolute form; id and
    /// place in the text stay. False, with `out` as it was, when the text is none.
    static bool parse(const xstd::XString& text, XCellRangeRef& out);
};

/// The references of a script, by id.
using XCellRangeRefs = std::map<int32_t, XCellRangeRef>;

/// The source with each reference's token replaced by the reference's present text; everything
/// between the tokens stays to the byte.
xstd::XString spliceRefs(const xstd::XString& source, std::vector<XCellRangeRef> refs,
                         bool showRef);

} // namespace huge
