#pragma once

#include "common/XString.h"

namespace huge {

/// The cell text that a field of pasted plain text stands for. A field that begins with "=" or
/// compiles is that text. A number with its digits grouped by commas is the number. What another
/// program's cell would show as a text stays one, as a string literal: a single word that means
/// nothing here, digits around any other comma, and what does not compile. Carriage returns before
/// line feeds are dropped.
xstd::XString pastedSource(const xstd::XString& field);

} // namespace huge
