#include "cell/XCellPos.h"
#include "cell/cellName.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace huge {

namespace {

int32_t wrapAdd(int32_t a, int32_t b) noexcept
{
    return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

uint16_t wrapAddCol(uint16_t col, int32_t dCol) noexcept
{
    return static_cast<uint16_t>(col + static_cast<uint32_t>(dCol));
}

bool isDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

/// Reads the digits from `pos` to the end of the text; -1 when there are none, when something
/// else stands there or when the number is greater than `max`.
int64_t readNumber(const xstd::XString& text, size_t pos, int64_t max)
{
    if (pos == text.size())
        return -1;
    int64_t number = 0;
    for (; pos < text.size(); ++pos) {
        if (!isDigit(text[pos]))
            return -1;
        number = number * 10 + (text[pos] - '0');
        if (number > max)
            return -1;
    }
    return number;
}

/// Reads column letters and moves `pos` behind them; -1 when there are none or too many.
int32_t readLetters(const xstd::XString& text, size_t& pos)
{
    int32_t count = 0; // the letters as a number with the digits 1 to 26
    for (; pos < text.size() && text[pos] >= 'A' && text[pos] <= 'Z'; ++pos) {
        count = count * 26 + (text[pos] - 'A' + 1);
        if (count > XCellPos::maxCol + 1)
            return -1;
    }
    return count - 1;
}

bool readDollar(const xstd::XString& text, size_t& pos)
{
    const bool isThere = pos < text.size() && text[pos] == '$';
    pos += isThere ? 1 : 0;
    return isThere;
}

bool parseCell(const xstd::XString& text, XCellPos& out)
{
    size_t pos = 0;
    XCellPos cell;
    cell.kind = XCellPos::kindCell;
    if (readDollar(text, pos))
        cell.flags |= XCellPos::colFlag;
    const int32_t col = readLetters(text, pos);
    if (col < 0)
        return false;
    if (readDollar(text, pos))
        cell.flags |= XCellPos::rowFlag;
    if (pos < text.size() && text[pos] == '0')
        return false;
    const int64_t row = readNumber(text, pos, XCellPos::maxRow + 1);
    if (row < 0)
        return false;
    cell.row = static_cast<int32_t>(row - 1);
    cell.col = static_cast<uint16_t>(col);
    out = cell;
    return true;
}

bool parseNumber(const xstd::XString& text, uint8_t kind, XCellPos& out)
{
    const int64_t number = readNumber(text, 2, std::numeric_limits<int32_t>::max());
    if (number < 0)
        return false;
    out = XCellPos();
    out.kind = kind;
    out.row = static_cast<int32_t>(number);
    return true;
}

} // namespace

/// Row and column of a cell, or the number as row, wide enough for any shift.
struct XCellPos::Place {
    int64_t row;
    int64_t col;
};

XCellPos::Place XCellPos::placeAfter(int64_t dRow, int64_t dCol, bool force) const noexcept
{
    switch (kind) {
    case kindCell:
    case kindReserved:
        return {row + (force || !isRowAbsolute() ? dRow : 0),
                signedCol() + (force || !isColAbsolute() ? dCol : 0)};
    case kindRow:
        return {row + dRow, 0};
    case kindCol:
        return {row + dCol, 0};
    case kindNumber:
        return {row + dRow + dCol, 0};
    default:
        return {row, signedCol()};
    }
}

bool XCellPos::isInLimits(const Place& place) const noexcept
{
    const int64_t lastRow = isCell() ? maxRow : std::numeric_limits<int32_t>::max();
    return place.row >= 0 && place.row <= lastRow && place.col >= 0 && place.col <= maxCol;
}

XCellPos& XCellPos::shift_(int32_t dRow, int32_t dCol, bool force) noexcept
{
    if (isCell()) {
        if (force || !isRowAbsolute())
            row = wrapAdd(row, dRow);
        if (force || !isColAbsolute())
            col = wrapAddCol(col, dCol);
    } else if (isNumber()) {
        row = wrapAdd(row, wrapAdd(kind == kindCol ? 0 : dRow, kind == kindRow ? 0 : dCol));
    }
    return *this;
}

bool XCellPos::canShift(int32_t dRow, int32_t dCol, bool force) const noexcept
{
    return isInLimits(placeAfter(dRow, dCol, force));
}

XCellPos& XCellPos::shiftClamped_(int32_t dRow, int32_t dCol) noexcept
{
    const Place place = placeAfter(dRow, dCol, false);
    const int64_t lastRow = isCell() ? maxRow : std::numeric_limits<int32_t>::max();
    row = static_cast<int32_t>(std::clamp<int64_t>(place.row, 0, lastRow));
    col = static_cast<uint16_t>(std::clamp<int64_t>(place.col, 0, maxCol));
    return *this;
}

XCellPos& XCellPos::addRow_(int32_t dRow) noexcept
{
    return shift_(dRow, 0, false);
}

XCellPos& XCellPos::addCol_(int32_t dCol) noexcept
{
    return shift_(0, dCol, false);
}

XCellPos& XCellPos::transpose_(int32_t diagonalRow, int32_t diagonalCol) noexcept
{
    if (kind == kindRow || kind == kindCol) {
        kind = kind == kindRow ? kindCol : kindRow;
    } else if (kind == kindCell) {
        const int32_t fromLeft = signedCol() - diagonalCol;
        const int32_t fromTop = wrapAdd(row, -diagonalRow);
        row = wrapAdd(diagonalRow, fromLeft);
        col = wrapAddCol(static_cast<uint16_t>(diagonalCol), fromTop);
        flags = static_cast<uint8_t>(flags << 4 | flags >> 4);
    }
    return *this;
}

bool XCellPos::canTranspose(int32_t diagonalRow, int32_t diagonalCol) const noexcept
{
    if (kind != kindCell)
        return true;
    const int64_t toRow = int64_t(signedCol()) - diagonalCol + diagonalRow;
    const int64_t toCol = int64_t(row) - diagonalRow + diagonalCol;
    return isInLimits({toRow, toCol});
}

xstd::XString XCellPos::toText(bool withDollars) const
{
    switch (kind) {
    case kindCell:
    case kindReserved: {
        xstd::XString text;
        if (withDollars && isColAbsolute())
            text += '$';
        text += columnText(signedCol());
        if (withDollars && isRowAbsolute())
            text += '$';
        text += std::to_string(int64_t(row) + 1);
        return text;
    }
    case kindRow:
        return xstd::XString("r:" + std::to_string(row));
    case kindCol:
        return xstd::XString("c:" + std::to_string(row));
    case kindNumber:
        return xstd::XString("n:" + std::to_string(row));
    default:
        return "unknown";
    }
}

xstd::XString XCellPos::toTextShifted(int32_t dRow, int32_t dCol, bool withDollars) const
{
    return isCell() ? shifted(dRow, dCol, false).toText(withDollars) : toText(withDollars);
}

bool XCellPos::parse(const xstd::XString& text, XCellPos& out)
{
    if (text.size() > 2 && text[1] == ':') {
        switch (text[0]) {
        case 'r':
            return parseNumber(text, kindRow, out);
        case 'c':
            return parseNumber(text, kindCol, out);
        case 'n':
            return parseNumber(text, kindNumber, out);
        default:
            return false;
        }
    }
    return parseCell(text, out);
}

bool XCellPos::isCellName(const xstd::XString& text)
{
    XCellPos ignored;
    return parseCell(text, ignored);
}

} // namespace huge
