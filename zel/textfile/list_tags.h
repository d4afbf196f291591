#pragma once

/// @file
/// The tag texts that mark a list in a file, made from the list's name.
/// `out` is the caller's, with room for the name and 20 characters more.

#include "zel/core/api.h"

/// Writes the name followed by "_LIST_BEGIN". @return 1.
ZEL_API int slGetArrBeginStr(char* out, const char* name);

/// Writes "INDEX_OF_", the name and "_LIST". @return 1.
ZEL_API int slGetArrIndexStr(char* out, const char* name);

/// Writes the name followed by "_LIST_END". @return 1.
ZEL_API int slGetArrEndStr(char* out, const char* name);
