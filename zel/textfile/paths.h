#pragma once

/// @file
/// Path names. A backslash parts the directories; no other character does, on every system.
/// Output buffers are the caller's, of at least 260 characters, and must not overlap the input.
/// A null input text counts as empty.

#include "zel/core/api.h"

/// Splits a path name behind its last backslash.
/// @param[out] path everything up to and including the last backslash, empty without one.
/// @param[out] name everything behind it; may be null.
/// @return 1, or 0 when there is no backslash (`name` is then the whole input).
ZEL_API int slGetPathAndName(const char* fullName, char* path, char* name);

/// Finds the extension: what follows the last dot.
///
/// The whole text is searched, so a dot in a directory name counts when the file has none: the
/// extension of `a.b\wood` is `b\wood`.
/// @param[out] extension without the dot; empty when there is no dot.
/// @return 1, or 0 when there is no dot.
ZEL_API int slGetFileExtension(const char* fullName, char* extension);

/// Finds the name without directory and without what follows its last dot. @return 1.
ZEL_API int slGetFileMainName(const char* fullName, char* mainName);

/// Makes the name of one level of a texture pyramid: level 2 of `dir\wood.bmp` is `wood-2.bmp`.
///
/// The directory is dropped. A file without an extension yields a name that ends in a dot.
/// @return 1.
ZEL_API int slGetMipMapFileName(const char* fullName, char* out, int level);

/// Joins a directory and a name with exactly one backslash between them.
///
/// An empty directory becomes the name, with nothing added.
/// @param[in,out] directory buffer with room for both texts and a backslash.
/// @return 1, or 0 when an argument is null.
ZEL_API int slCombFileName(char* directory, const char* name);

/// Puts a path in front of a name, adding no separator.
/// @param[in,out] name buffer with room for both; the name "NULL" is made empty instead.
ZEL_API void slCatFileNameWithPath(char* name, const char* path);
