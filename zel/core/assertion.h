#pragma once

/// @file
/// Checks for applications: a guarded value and a log of failed assertions.

#include "zel/core/api.h"

/// @return `value` when `flag` is not 0, else 0.
[[nodiscard]] ZEL_API int slCheck(int value, int flag);

/// Logs a failed assertion and goes on.
///
/// When `condition` is 0, two lines are appended to "machine.log" in the current directory: the
/// UTC date and time (year, month and day run together without leading zeros, two blanks, hour,
/// a colon, minute), then `code`, three blanks and `text`. A log that cannot be opened is ignored.
/// @param code      number that identifies the place.
/// @param text      what failed; null counts as empty.
/// @param condition not 0: nothing happens.
ZEL_API void slAssert(int code, const char* text, int condition);
