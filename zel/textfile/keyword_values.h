#pragma once

/// @file
/// Single values and small tuples on a plain stdio text stream, each with the caller's format.
///
/// Nothing here throws. Every scan helper calls the stdio scanner once and returns 1 when exactly
/// the conversions of its value succeeded, else 0; what was converted before a failure stays
/// stored unless said otherwise. Every print helper returns 1 when the printer reports no error,
/// else 0; reals are handed to it as `double`. All of them use the decimal point whatever locale
/// the process has set. A null stream or format fails, and so does scanning a stream whose error
/// flag is set: a number that a failed read cut off is none. clearerr() lifts that. The caller
/// answers for a format that suits the value.

#include <cstdio>

#include "zel/core/api.h"

// --- scanning ------------------------------------------------------------------------------------

/// Scans an integer ("%d") and stores its low 8 bits; nothing is stored on failure.
ZEL_API int slFscanfC(FILE* file, const char* format, char* value);
/// Scans an integer; nothing is stored on failure.
ZEL_API int slFscanfD(FILE* file, const char* format, int* value);
/// Scans a number in single precision; nothing is stored on failure.
ZEL_API int slFscanfR(FILE* file, const char* format, float* value);
/// The caller answers for a buffer that holds the word, or for a width in the format.
ZEL_API int slFscanfS(FILE* file, const char* format, char* text);
ZEL_API int slFscanfInt2D(FILE* file, const char* format, int* values);      ///< two
ZEL_API int slFscanfPoint2D(FILE* file, const char* format, float* values);  ///< two
ZEL_API int slFscanfPoint3D(FILE* file, const char* format, float* values);  ///< three
ZEL_API int slFscanfPoint4D(FILE* file, const char* format, float* values);  ///< four
ZEL_API int slFscanfPixel4D(FILE* file, const char* format, float* values);  ///< four
/// Scans three integers into bytes 0 to 2 (their low 8 bits) and sets byte 3 to 255; nothing is
/// stored on failure.
ZEL_API int slFscanfTexPixel4D(FILE* file, const char* format, unsigned char* values);

// --- printing ------------------------------------------------------------------------------------

/// Prints a char as an integer ("%d" shows its signed value).
ZEL_API int slFprintfC(FILE* file, const char* format, char value);
/// Prints an integer.
ZEL_API int slFprintfD(FILE* file, const char* format, int value);
/// Prints a number, which reaches the format as a double.
ZEL_API int slFprintfR(FILE* file, const char* format, float value);
/// Prints a text, zero-terminated.
ZEL_API int slFprintfS(FILE* file, const char* format, const char* text);
/// Prints two integers.
ZEL_API int slFprintfInt2D(FILE* file, const char* format, const int* values);
/// Prints two numbers.
ZEL_API int slFprintfPoint2D(FILE* file, const char* format, const float* values);
/// Prints three numbers.
ZEL_API int slFprintfPoint3D(FILE* file, const char* format, const float* values);
/// Prints four numbers.
ZEL_API int slFprintfPoint4D(FILE* file, const char* format, const float* values);
/// Prints four numbers.
ZEL_API int slFprintfPixel4D(FILE* file, const char* format, const float* values);
/// Prints four bytes as unsigned integers.
ZEL_API int slFprintfTexPixel4D(FILE* file, const char* format, const unsigned char* values);

// --- lines and words -----------------------------------------------------------------------------

/// Reads one line without its end (LF or CR LF) and keeps `size` - 1 characters of it; the rest of
/// a longer line is dropped. At the end of the file, and when reading fails, the text is empty.
/// With `size` below 1 nothing is stored. @return 1.
ZEL_API int slFgets(FILE* file, char* buffer, int size);

/// Drops the rest of the line. @return 1; 0 when the file ends, or fails, before the line does.
ZEL_API int slSkipLine(FILE* file);

/// Reads words parted by white space until one equals `word`; unlike KwIOCL::SearchStrM() it
/// finds a word anywhere in a line.
/// @return 1, the stream then stands behind the word and the white space after it; 0 when the
///         file ends or fails first, and at once when the stream's end-of-file flag is set.
ZEL_API int slSearchStrM(FILE* file, const char* word);
