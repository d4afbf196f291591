#pragma once

/// @file
/// Checks of what must hold whatever callers do. A check that fails is a fault of the library: it
/// says where and ends the program. For what callers may cause (bad arguments, damaged files,
/// refused memory) results and errors are there instead.
///
/// ZEL_CHECKS is set by the build: 0 in optimised builds, 1 in debug builds, 2 under the
/// sanitizers and in the fuzz targets. A check that is off still compiles, and costs nothing.

#include <cstdio>
#include <cstdlib>

#ifndef ZEL_CHECKS
#define ZEL_CHECKS 0
#endif

namespace zel {

[[noreturn]] inline void reportBrokenInvariant(const char* condition, const char* file, int line) {
  std::fprintf(stderr, "%s:%d: broken invariant: %s\n", file, line, condition);
  std::abort();
}

}  // namespace zel

#define ZEL_CHECK_AT_LEVEL(level, condition)            \
  (ZEL_CHECKS < (level) || static_cast<bool>(condition) \
       ? static_cast<void>(0)                           \
       : zel::reportBrokenInvariant(#condition, __FILE__, __LINE__))

/// Cheap: a few instructions, on wherever speed does not matter.
#define ZEL_ASSERT(condition) ZEL_CHECK_AT_LEVEL(1, condition)
/// Dear: may look at the whole object (`validate()`), on in the tests that run under the
/// sanitizers.
#define ZEL_VALIDATE(condition) ZEL_CHECK_AT_LEVEL(2, condition)
