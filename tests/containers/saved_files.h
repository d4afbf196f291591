#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "containers/char_bytes.h"
#include "support/temp_dir.h"
#include "zel/containers/char_arr.h"

namespace zel::test {

/// @return what SaveFileM() threw; 0 when nothing.
inline int saveCode(const CharArr& buffer, const std::string& path) {
  try {
    buffer.SaveFileM(path.c_str());
  } catch (int code) {
    return code;
  }
  return 0;
}

inline std::size_t filesIn(const std::filesystem::path& directory) {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(directory),
                                                std::filesystem::directory_iterator()));
}

/// A test with a directory of its own.
class SavedFiles : public ::testing::Test {
 protected:
  TempDir dir_;
};

}  // namespace zel::test
