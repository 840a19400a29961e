#pragma once

#include "common/XString.h"

#include <cstdint>

namespace huge {

/// One end of a reference. A cell's end holds its row and column, counted from 0, with a mark on
/// each that is absolute (written "$"). A number reference ("r:5", "c:5", "n:5") holds its number
/// in `row` and nothing else. These 8 bytes stand as they lie here in bytecode and in documents.
///
/// A position is absolute, or relative to a cell: then `row` and `col` are signed offsets where
/// they are not marked absolute, and `col` wraps at 16 bits. Arithmetic here wraps and checks no
/// limits; canShift and canTranspose tell before whether an absolute position stays one.
struct XCellPos {
    static constexpr uint8_t kindNone = 0;
    static constexpr uint8_t kindCell = 1;
    static constexpr uint8_t kindReserved = 2; ///< handled as kindCell
    static constexpr uint8_t kindRow = 3;      ///< "r:5", moves with the row
    static constexpr uint8_t kindCol = 4;      ///< "c:5", moves with the column
    static constexpr uint8_t kindNumber = 5;   ///< "n:5", moves with both

    /// The last row and column that a reference can name.
    static constexpr int32_t maxRow = 1048575;
    static constexpr int32_t maxCol = 32766;

    static constexpr uint8_t rowFlag = 0x01; ///< as written; any bit of its half counts when read
    static constexpr uint8_t colFlag = 0x10;

    int32_t row = 0;
    uint16_t col = 0;
    uint8_t flags = 0;
    uint8_t kind = kindNone;

    bool operator==(const XCellPos&) const = default;

    bool isCell() const noexcept { return kind == kindCell || kind == kindReserved; }
    bool isNumber() const noexcept { return kind >= kindRow && kind <= kindNumber; }
    bool isRowAbsolute() const noexcept { return (flags & 0x0f) != 0; }
    bool isColAbsolute() const noexcept { return (flags & 0xf0) != 0; }
    /// The column as an offset; for an absolute position the column itself.
    int32_t signedCol() const noexcept { return static_cast<int16_t>(col); }

    /// Moves a cell, absolute coordinates only with `force`; a row number moves with the rows, a
    /// column number with the columns, a plain number with both.
    XCellPos& shift_(int32_t dRow, int32_t dCol, bool force) noexcept;
    XCellPos shifted(int32_t dRow, int32_t dCol, bool force) const noexcept
    {
        return XCellPos(*this).shift_(dRow, dCol, force);
    }
    /// Whether shift_ ends inside the limits, without wrapping.
    bool canShift(int32_t dRow, int32_t dCol, bool force) const noexcept;
    /// As shift_ without force, but stops at the limits instead of wrapping.
    XCellPos& shiftClamped_(int32_t dRow, int32_t dCol) noexcept;

    /// Moves the row of a relative cell coordinate, and the number of "r:" and "n:".
    XCellPos& addRow_(int32_t dRow) noexcept;
    /// Moves the column of a relative cell coordinate, and the number of "c:" and "n:".
    XCellPos& addCol_(int32_t dCol) noexcept;

    /// Mirrors a cell about the diagonal through (row, col), with its marks; row numbers become
    /// column numbers and the reverse. Plain numbers stay.
    XCellPos& transpose_(int32_t row, int32_t col) noexcept;
    bool canTranspose(int32_t row, int32_t col) const noexcept;

    /// "A1", "$B$2", "r:5". Text of a relative form is only meaningful after a shift.
    xstd::XString toText(bool withDollars) const;
    /// As toText, with the offsets added to the relative coordinates of a cell; numbers print as
    /// they are.
    xstd::XString toTextShifted(int32_t dRow, int32_t dCol, bool withDollars) const;

    /// Reads exactly one position that fills the text, absolute form. False, with `out` as it was,
    /// for anything else, cells beyond maxRow and maxCol included.
    static bool parse(const xstd::XString& text, XCellPos& out);
    /// True when parse reads a cell.
    static bool isCellName(const xstd::XString& text);

private:
    struct Place;
    Place placeAfter(int64_t dRow, int64_t dCol, bool force) const noexcept;
    bool isInLimits(const Place& place) const noexcept;
};

static_assert(sizeof(XCellPos) == 8, "positions lie raw in bytecode and documents");

} // namespace huge
