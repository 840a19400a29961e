#pragma once

#include "common/XString.h"

#include <QString>

/// Text of the engine (UTF-8) as text of the interface. Bytes that are no UTF-8 become U+FFFD.
QString toQString(const std::string& text);
/// Text of the interface as UTF-8.
xstd::XString toXString(const QString& text);
