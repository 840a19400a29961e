#pragma once

#include "common/XString.h"

#include <cstdint>

namespace huge {

/// The letters of column `col`, counted from 0: "A" to "Z", then "AA" and on. Empty below 0.
xstd::XString columnText(int32_t col);

/// The name of a cell, both numbers counted from 0: cellName(0, 27) is "AB1". No "$".
xstd::XString cellName(int32_t row, int32_t col);

} // namespace huge
