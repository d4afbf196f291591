#pragma once

/// @file
/// `ZEL_API` marks what the shared library exports; everything else stays hidden. `ZEL_API_INLINE`
/// marks an inline method of an exported class; on Windows the class's own mark covers it.

#if defined(_WIN32)
#if defined(ZEL_BUILDING)
#define ZEL_API __declspec(dllexport)
#else
#define ZEL_API __declspec(dllimport)
#endif
#define ZEL_API_INLINE
#else
/// Exported from the shared library.
#define ZEL_API __attribute__((visibility("default")))
/// The same for what is defined in a header; empty where an import may not be defined.
#define ZEL_API_INLINE ZEL_API
#endif
