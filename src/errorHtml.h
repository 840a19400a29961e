#pragma once

#include "common/XException.h"

#include <QString>

#include <exception>

/// A failure as HTML for the error box and the message pane. Messages and details may hold what a
/// user typed, of any length: long ones are cut, and a link leads to the whole text.
QString errorHtml(const xstd::XExceptionItems& failure);
/// The same for any other exception: a chain of one item with this type and place.
QString errorHtml(const std::exception& failure, const xstd::XSourceLocation& where,
                  const char* type);
