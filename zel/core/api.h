#pragma once

/// @file
/// `ZEL_API` marks what the shared library exports; everything else stays hidden.

#if defined(_WIN32)
#if defined(ZEL_BUILDING)
#define ZEL_API __declspec(dllexport)
#else
#define ZEL_API __declspec(dllimport)
#endif
#else
#define ZEL_API __attribute__((visibility("default")))
#endif
