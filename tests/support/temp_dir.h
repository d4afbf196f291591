#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace zel::test {

/// The path behind a name in UTF-8.
inline std::filesystem::path pathOf(const std::string& name) {
  return std::u8string(name.begin(), name.end());
}

/// A directory of its own for one test, removed at its end.
class TempDir {
 public:
  TempDir() {
    std::random_device random;
    do {
      path_ = std::filesystem::temp_directory_path() / ("zel_test_" + std::to_string(random()));
    } while (!std::filesystem::create_directory(path_));
  }
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  [[nodiscard]] std::string file(const std::string& name) const {
    return (path_ / pathOf(name)).string();
  }
  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

inline std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void writeFile(const std::string& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace zel::test
