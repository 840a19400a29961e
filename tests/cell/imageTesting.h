#pragma once

#include "Sheet.h"

#include <cstdint>
#include <string>
#include <vector>

using Bytes = std::vector<uint8_t>;

inline Bytes operator+(Bytes a, const Bytes& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

inline Bytes int32Bytes(int32_t value)
{
    const uint32_t bits = static_cast<uint32_t>(value);
    return {uint8_t(bits), uint8_t(bits >> 8), uint8_t(bits >> 16), uint8_t(bits >> 24)};
}

inline Bytes block(const Bytes& content)
{
    return int32Bytes(static_cast<int32_t>(content.size())) + content;
}

inline Bytes textBytes(const std::string& text)
{
    return block(Bytes(text.begin(), text.end()));
}

/// A record without references.
inline Bytes cellRecord(int32_t row, int32_t col, const std::string& text, const std::string& value,
                        const Bytes& state = {0, 0}, const Bytes& format = {})
{
    return block(int32Bytes(row) + int32Bytes(col) + textBytes(text) + textBytes(value) +
                 block(state) + block({}) + block(format));
}

/// The front of an image of the table from A1 to Q17.
inline Bytes smallHeader(int32_t maxRow, int32_t maxCol)
{
    return int32Bytes(0) + int32Bytes(0) + int32Bytes(16) + int32Bytes(16) + int32Bytes(maxRow) +
           int32Bytes(maxCol) + int32Bytes(4);
}

/// The sheet as an image makes it.
inline huge::XCellLoadNotes load(Sheet& sheet, const Bytes& image)
{
    return sheet.table.fromVector(image, huge::XCellImageMode::Everything);
}

/// The text of the failure, empty if there is none.
template <class F>
std::string failureOf(F&& action)
{
    try {
        action();
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return {};
}
