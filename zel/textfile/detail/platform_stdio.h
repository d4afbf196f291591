#pragma once

/// @file
/// What stdio offers under different names on different systems.

#include <cstdint>
#include <cstdio>

#if defined(_WIN32)
#include <locale.h>

#include <string>
#else
#include <locale.h>
#endif

namespace zel {

// A stream is used by one thread at a time, so characters are read without its lock.
#if defined(_WIN32)
inline int readChar(FILE* file) { return _getc_nolock(file); }
inline std::int64_t tell(FILE* file) { return _ftelli64(file); }
inline int seek(FILE* file, std::int64_t offset, int origin) {
  return _fseeki64(file, offset, origin);
}
#else
inline int readChar(FILE* file) { return getc_unlocked(file); }
inline std::int64_t tell(FILE* file) { return ftello(file); }
inline int seek(FILE* file, std::int64_t offset, int origin) {
  return fseeko(file, static_cast<off_t>(offset), origin);
}
#endif

/// Opens a file, its name taken as presentFileName() has it; a directory is refused.
/// @return null on failure.
FILE* openStream(const char* name, const char* mode);

/// @return the bytes between the position and the end of the file, not below 0; the largest
///         number for a stream that has no length (a pipe).
std::int64_t bytesLeft(FILE* file);

/// The calling thread has the "C" locale while such an object lives.
class CLocaleScope {
 public:
  CLocaleScope();
  ~CLocaleScope();
  CLocaleScope(const CLocaleScope&) = delete;
  CLocaleScope& operator=(const CLocaleScope&) = delete;

 private:
#if defined(_WIN32)
  int threadSetting_;
  std::string previous_;
#else
  locale_t previous_;
#endif
};

}  // namespace zel
