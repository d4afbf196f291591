#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

#include "line_ends.h"
#include "support/temp_dir.h"
#include "zel/textfile/kw_iocl.h"

namespace zel::test {

/// The int that `work` throws; 0 when it throws none.
inline int thrownBy(const std::function<void()>& work) {
  try {
    work();
  } catch (int code) {
    return code;
  }
  return 0;
}

/// A file in a folder whose name has blanks and letters beyond ASCII.
class StreamFile {
 public:
  StreamFile() {
    const auto folder = dir_.path() / u8"Мои файлы é 模型";
    std::filesystem::create_directory(folder);
    name_ = (folder / "list 1.zel").string();
  }
  [[nodiscard]] const char* name() const { return name_.c_str(); }
  [[nodiscard]] std::string bytes() const { return readFile(name_); }

  /// What `work` writes to a stream of its own.
  std::string written(const std::function<void(KwIOCL&)>& work, const char* mode = "w") {
    KwIOCL io;
    io.OpenM(name(), mode);
    work(io);
    io.CloseM();
    return bytes();
  }
  /// Opens `io` for reading `content`.
  void feed(KwIOCL& io, std::string_view content, const char* mode = "r") {
    const bool isText = std::string_view(mode).find('b') == std::string_view::npos;
    writeFile(name_, isText ? withLineEnds(content) : std::string(content));
    io.OpenM(name(), mode);
  }

 private:
  TempDir dir_;
  std::string name_;
};

}  // namespace zel::test
