#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

#include "line_ends.h"
#include "support/temp_dir.h"
#include "support/thrown_by.h"
#include "zel/textfile/kw_iocl.h"

namespace zel::test {

/// A test with a stream and a file, in a folder whose name has blanks and letters beyond ASCII.
class StreamTest : public testing::Test {
 protected:
  StreamTest() {
    const auto folder = dir_.path() / u8"Мои файлы é 模型";
    std::filesystem::create_directory(folder);
    name_ = (folder / "list 1.zel").string();
  }
  [[nodiscard]] const char* name() const { return name_.c_str(); }
  [[nodiscard]] std::string bytes() const { return readFile(name_); }
  long position() { return std::ftell(io_.GetFileDescriptM()); }

  /// What `work` writes to a stream of its own.
  std::string written(const std::function<void(KwIOCL&)>& work, const char* mode = "w") {
    KwIOCL io;
    io.OpenM(name(), mode);
    work(io);
    io.CloseM();
    return bytes();
  }
  /// Opens the stream for reading `content`.
  void feed(std::string_view content, const char* mode = "r") {
    const bool isText = std::string_view(mode).find('b') == std::string_view::npos;
    writeFile(name_, isText ? withLineEnds(content) : std::string(content));
    io_.OpenM(name(), mode);
  }

  TempDir dir_;
  KwIOCL io_;

 private:
  std::string name_;
};

}  // namespace zel::test
