#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "containers/char_bytes.h"
#include "support/temp_dir.h"
#include "support/thrown_by.h"
#include "zel/containers/char_arr.h"

namespace zel::test {

/// A test with a directory of its own.
class SavedFiles : public testing::Test {
 protected:
  /// @return what saving `text` throws; 0 when nothing.
  static int save(const std::string& text, const std::string& path) {
    return thrownBy([&] { bufferOf(text).SaveFileM(path.c_str()); });
  }
  [[nodiscard]] std::ptrdiff_t fileCount() const {
    using Entries = std::filesystem::directory_iterator;
    return std::distance(Entries(dir_.path()), Entries());
  }
  TempDir dir_;
};

}  // namespace zel::test
