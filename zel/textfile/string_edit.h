#pragma once

/// @file
/// Cutting and padding zero-terminated texts in the caller's buffers. Texts must not overlap
/// unless said; a null input text counts as empty.

#include "zel/core/api.h"

/// Takes the first `n` characters. @return 1; 0, with `out` untouched, when `n` is below 1 or
/// exceeds the text's length.
ZEL_API int slLeft(const char* text, int n, char* out);

/// Takes the last `n` characters; otherwise as slLeft().
ZEL_API int slRight(const char* text, int n, char* out);

/// Puts `prefix` in front of `text`.
/// @param[in,out] text buffer with room for both.
/// @return `text`; it is unchanged when no memory is left for the work.
ZEL_API char* slInsertStr(char* text, const char* prefix);

/// Writes `n` blanks and a terminator; none for `n` below 1. @return `out`.
ZEL_API char* slSpace(int n, char* out);

/// Moves a position over blanks and commas.
/// @param[in,out] position index within `text`, its terminator included; left alone if negative.
/// @return 1.
ZEL_API int slSkipSpace(const char* text, int* position);

/// Inserts a text behind every occurrence of a character. Inserted text is not searched again.
///
/// An insertion is made only while length + insert's length + 1 stays below `capacity`.
/// @param[in,out] text buffer of `capacity` characters.
/// @return 1 when every insertion fitted, 0 when one did not; those before it are made.
ZEL_API int slInsStrBySeed(char* text, int capacity, const char* insert, char seed);
