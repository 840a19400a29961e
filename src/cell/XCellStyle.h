#pragma once

#include "common/XKVNode.h"
#include "common/XString.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace xstd {
class XByteCursor;
class XByteWriter;
} // namespace xstd

namespace huge {

/// What a format record holds beside its number format, as documents store it: everything that
/// painting needs. The engine shows none of it. It knows the form, so that the console tool writes
/// the same documents as the window. Colours are 0xAARRGGBB.
struct XCellStyle {
    xstd::XString fontName; ///< UTF-8
    uint32_t fore = 0;
    uint32_t background = 0; ///< 0: no fill
    uint32_t borderTop = 0;
    uint32_t borderLeft = 0;
    uint32_t borderBottom = 0;
    uint32_t borderRight = 0;
    bool bold = false;
    bool italic = false;
    bool underLine = false;
    bool multLine = false;
    uint8_t valign = 1; ///< 0 top, 1 centre, 2 bottom
    uint8_t align = 0;  ///< 0 left, 1 centre, 2 right
    int16_t fontSize = 10;
    uint8_t borderTopStyle = 0; ///< 0 none, 1 thin, 2 thick
    uint8_t borderLeftStyle = 0;
    uint8_t borderBottomStyle = 0;
    uint8_t borderRightStyle = 0;

    bool operator==(const XCellStyle&) const = default;

    /// The part of a format image behind the number format. fromBinary throws std::runtime_error,
    /// with the record as it was, for one that ends early.
    void toBinary(xstd::XByteWriter& image) const;
    void fromBinary(xstd::XByteCursor& image);
    /// The entries of a format object beside "formatRule". A colour has no alpha there: reading
    /// gives it back opaque, and one that can't be read, or is missing, as opaque black.
    void toJson(xstd::XKVNode& node) const;
    void fromJson(const xstd::XKVNode& node);
};

} // namespace huge
