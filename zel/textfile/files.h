#pragma once

/// @file
/// Looking for files, copying them, creating directories. Everything goes through
/// `zel::platform()`. Backslash and slash both part directories here, on every system, unlike in
/// paths.h. A null path counts as empty.

#include "zel/core/api.h"

/// @return whether a file or directory of this name is found. '*' and '?' in the last part match
///         as patterns; a path with a trailing separator is not found.
[[nodiscard]] ZEL_API bool slIsExistentPath(const char* path);

/// Looks for a file or directory; one trailing separator is ignored.
/// @return 1 when it is found; 0 when not, for an empty path and for 260 characters or more.
[[nodiscard]] ZEL_API int slFindSingleFile(const char* path);

/// Creates every missing directory along a path.
///
/// Leading blanks are skipped. The path must be absolute: it begins with a letter and a colon
/// naming a present drive or, on a system without drives, with a separator.
/// @return 1 when the whole path stands at the end; 0 for 260 characters or more, a relative path,
///         an absent drive, a blank before the first separator, a file in the way, or a directory
///         that cannot be created. Directories created before a failure stay.
ZEL_API int slCreateDirRecursively(const char* path);

/// Copies a file unless the target exists.
/// @param destination target file; when it ends with a separator, the directory in which the
///        target gets the source's name.
/// @return always 1, also when nothing was copied.
ZEL_API int slCopyFile(const char* source, const char* destination);
