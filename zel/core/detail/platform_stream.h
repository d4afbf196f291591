#pragma once

/// @file
/// What stdio offers under different names on different systems, or not everywhere.

#include <cstdint>
#include <cstdio>

namespace zel {

#if defined(_WIN32)
inline std::int64_t tell(std::FILE* file) { return _ftelli64(file); }
inline int seek(std::FILE* file, std::int64_t offset, int origin) {
  return _fseeki64(file, offset, origin);
}
#else
inline std::int64_t tell(std::FILE* file) { return ftello(file); }
inline int seek(std::FILE* file, std::int64_t offset, int origin) {
  return fseeko(file, static_cast<off_t>(offset), origin);
}
#endif

/// As fprintf(). @return whether all of it was taken; some systems' fprintf() does not tell.
template <class... Value>
bool print(std::FILE* file, const char* format, Value... values) {
  const bool wasSound = std::ferror(file) == 0;
  return std::fprintf(file, format, values...) >= 0 && !(wasSound && std::ferror(file) != 0);
}

/// As fclose(). @return whether all that was ever written arrived: neither fflush() nor fclose()
/// knows of an earlier write that failed, and some systems' fclose() of none.
inline bool flushAndClose(std::FILE* file) {
  const bool isFlushed = std::fflush(file) == 0 && std::ferror(file) == 0;
  return std::fclose(file) == 0 && isFlushed;
}

}  // namespace zel
