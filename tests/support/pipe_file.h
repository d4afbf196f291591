#pragma once

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#else
#include <unistd.h>
#endif

#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <utility>

namespace zel::test {

/// The reading end of a pipe through which `content` comes, which must all be read.
class PipeFile {
 public:
  explicit PipeFile(std::string content) {
    int ends[2];
#if defined(_WIN32)
    const bool made = _pipe(ends, 4096, _O_BINARY) == 0;
#else
    const bool made = pipe(ends) == 0;
#endif
    file_ = made ? fdopen(ends[0], "rb") : nullptr;
    std::FILE* in = made ? fdopen(ends[1], "wb") : nullptr;
    if (file_ == nullptr || in == nullptr) {
      std::abort();
    }
    writer_ = std::jthread([in, content = std::move(content)] {
      std::fwrite(content.data(), 1, content.size(), in);
      std::fclose(in);
    });
  }
  ~PipeFile() {
    if (file_ != nullptr) {
      std::fclose(file_);
    }
  }
  PipeFile(const PipeFile&) = delete;
  PipeFile& operator=(const PipeFile&) = delete;
  operator std::FILE*() const { return file_; }
  /// @return the stream, from now on the caller's to close, before this object's end.
  [[nodiscard]] std::FILE* release() { return std::exchange(file_, nullptr); }

 private:
  std::FILE* file_;
  std::jthread writer_;
};

}  // namespace zel::test
