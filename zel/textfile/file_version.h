#pragma once

/// @file
/// Version tags at the head of files, and what to tell the user when a file fails.

#include "zel/core/api.h"

/// Turns a version tag into its number.
///
/// Known are "zel1.0" to "zel1.4" (10 to 14), "zel3.0" to "zel3.9" (30 to 39), "zel4.0" to
/// "zel4.7" (40 to 47), "zel4.008" (4008) and "MAC1.00" to "MAC1.02" (100 to 102). Mind the order
/// when comparing numbers by size: the MAC tags lie between 47 and 4008.
/// @param tag compared byte by byte; null matches none.
/// @throws int 111 for any other tag.
[[nodiscard]] ZEL_API int slGetFileVersion(const char* tag);

/// Shows the message for a file error in a modal notice of the platform (see
/// zel::Platform::showMessage()) and returns when it is closed.
/// @param code 107 not read, 108 not saved, 109 not opened, 110 wrong type, 111 wrong version, 112
///        to 114 as 109 to 111 for a texture file, 142 bad data; any other: unknown error.
/// @param name file name, in the GBK code page as the texts are, put behind the message and ": ";
///        null for the message alone.
/// @return 1.
ZEL_API int slFileMessage(int code, const char* name);
