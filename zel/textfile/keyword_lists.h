#pragma once

/// @file
/// Three arrays as tagged lists on a plain stdio text stream. Their layout is not that of the
/// lists on a KwIOCL. A null stream counts as an empty one, to which nothing is written.

#include <cstdio>

#include "zel/core/api.h"

class Int2DArr;
class IntArr;
class Point2DArr;

/// Writes the array as the list `name`, every slot below the bound. @return 1, whatever was
/// written.
ZEL_API int slFprintfIntArr(FILE* file, const IntArr& array, const char* name);
/// As slFprintfIntArr(), for pairs.
ZEL_API int slFprintfInt2dArr(FILE* file, const Int2DArr& array, const char* name);
/// Coordinates are written with six decimals and therefore rounded.
ZEL_API int slFprintfPoint2DArr(FILE* file, const Point2DArr& array, const char* name);

/// Empties the array, then reads the next list into it. Tags are not compared. Entries that hold
/// the mark of a hole are left out, and so are entries whose index is negative or beyond anything
/// that the file could hold. Reading ends where an index cannot be read, and where the stream
/// fails, which its error flag tells. From a pipe a list is what it would be from a file.
/// @return 1, whatever was read.
ZEL_API int slFscanfIntArr(FILE* file, IntArr* array);
/// A pair is left out only when both numbers are the mark.
ZEL_API int slFscanfInt2dArr(FILE* file, Int2DArr* array);
/// A point is left out only when both coordinates are -1e18.
ZEL_API int slFscanfPoint2DArr(FILE* file, Point2DArr* array);
