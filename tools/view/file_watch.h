#pragma once

#include <chrono>
#include <filesystem>
#include <string>

namespace zel::view {

/// Sees when a file has changed and its writing has come to rest.
class FileWatch {
 public:
  using Time = std::chrono::steady_clock::time_point;
  /// So long a changed file must stay the same.
  static constexpr std::chrono::milliseconds kRest{400};

  FileWatch() = default;  ///< watches nothing
  explicit FileWatch(std::string file);

  /// Looks at the file; cheap enough for every turn of a loop.
  /// @return true once for each change, when the file is at rest. A file that has gone is waited
  ///         for.
  [[nodiscard]] bool hasChanged(Time now);

 private:
  struct Stamp {
    bool exists = false;
    std::uintmax_t size = 0;
    std::filesystem::file_time_type written{};

    bool operator==(const Stamp&) const = default;
  };
  [[nodiscard]] Stamp look() const;

  std::string file_;
  Stamp known_;   ///< as it was when it was read
  Stamp latest_;  ///< as it was seen last
  Time since_{};  ///< when it was first seen so
};

}  // namespace zel::view
