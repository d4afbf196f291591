#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <string_view>

#include "line_ends.h"

namespace zel::test {

/// A stdio stream without a name, over a text for reading or to be written.
class PlainFile {
 public:
  explicit PlainFile(std::string_view content = "") : file_(std::tmpfile()) {
    const std::string text = withLineEnds(content);
    std::fwrite(text.data(), 1, text.size(), file_);
    std::rewind(file_);
  }
  ~PlainFile() { std::fclose(file_); }
  PlainFile(const PlainFile&) = delete;
  PlainFile& operator=(const PlainFile&) = delete;
  operator FILE*() const { return file_; }
  /// What was written up to the present position; the stream is rewound first.
  [[nodiscard]] std::string text() const {
    std::string all(static_cast<std::size_t>(std::ftell(file_)), '\0');
    std::rewind(file_);
    EXPECT_EQ(std::fread(all.data(), 1, all.size(), file_), all.size());
    return all;
  }

 private:
  FILE* file_;
};

}  // namespace zel::test
