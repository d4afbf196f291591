#pragma once

/// @file
/// Strict parsing of numbers that a person typed. Blanks and tabs may stand around the number; the
/// decimal sign is the point whatever locale the process has set. A null text is refused.

#include "zel/core/api.h"

/// Parses exactly the first `n` characters: an optional sign, then decimal digits only.
/// @param[out] value the number modulo 2^32; a lone sign gives 0. Untouched on failure.
/// @return 1; 0 for `n` below 1, a text shorter than `n` or any other character.
ZEL_API int slStrToInt(int n, const char* text, int* value);

/// Parses a decimal integer that must be the whole text.
/// @param[out] value limited to 32 bits; untouched on failure.
/// @return 1; 0 when other characters stand in the text, or when the number is 0 and the text does
///         not begin with the digit 0 (so "-0" is refused).
ZEL_API int slSimpleIntParse(const char* text, int* value);

/// Parses a decimal real number (no hexadecimal form, infinity or NaN). One '-' directly after the
/// number is tolerated, and a lone '-' counts as 0.
/// @param[out] value what was converted, stored in every case; 0 when nothing was.
/// @return 1; 0 when other characters follow, or when the number is 0 and the text begins neither
///         with '0' nor with '-' (so ".0" and "+0" are refused).
ZEL_API int slSimpleFloatParse(const char* text, double* value);

/// As slSimpleFloatParse(), but stores 0 when the result is 0.
ZEL_API int slSimpleFloatParseF(const char* text, float* value);
