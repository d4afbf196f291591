#pragma once

/// @file
/// What stdio offers under different names on different systems.

#include <locale.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "zel/core/detail/platform_stream.h"

namespace zel {

// A stream is used by one thread at a time, so characters are read without its lock.
#if defined(_WIN32)
inline int readChar(FILE* file) { return _getc_nolock(file); }
inline bool hasError(FILE* file) { return std::ferror(file) != 0; }
#else
inline int readChar(FILE* file) { return getc_unlocked(file); }
inline bool hasError(FILE* file) { return ferror_unlocked(file) != 0; }
#endif

/// Characters that the scanners of a thread have taken, ever.
#if defined(_WIN32)
extern constinit thread_local std::int64_t takenOfThread;
#else  // reached without a call, as one that counts for every number must be
[[gnu::tls_model("initial-exec")]] extern constinit thread_local std::int64_t takenOfThread;
#endif

/// Opens a file, its name taken as presentFileName() has it; a directory is refused. Line ends are
/// never translated, so that files are the same on every system.
/// @return null on failure.
FILE* openStream(const char* name, const char* mode);

#if defined(_WIN32)
/// @return whether the next line, or `size` characters of it, can be read and given back.
bool canTakeLineBack(FILE* file, std::size_t size);
#else
inline bool canTakeLineBack(FILE* /*file*/, std::size_t /*size*/) { return true; }
#endif

/// Gives characters that were read back to the stream. Memory for it may be refused: what was lost
/// is reported through kwErrorMessage(40).
void giveBack(FILE* file, std::string_view text);

/// @return whether the stream can be written to; true where the system's stdio does not tell.
bool takesWrites(FILE* file);

/// @return whether the stream takes no reads or was last written to; false where the system's stdio
///         does not tell.
bool isBeingWritten(FILE* file);

/// @return the bytes between the position and the end of the file, not below 0; the largest
///         number for a stream that has no length (a pipe). A stream that translates line ends does
///         not know its position: there it is the length of the whole file.
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
