#pragma once

/// @file
/// The one exception of the second storey.

#include <exception>
#include <memory>
#include <string>

#include "zel/core/api.h"

namespace zel {

/// Why work could not be done. The numbers 2 to 6 are also the exit codes of the program `zel`.
enum class ErrorCode {
  kArgument = 2,    ///< an argument or option makes no sense
  kUnreadable = 3,  ///< an input cannot be read or is malformed
  kUnwritable = 4,  ///< an output cannot be written
  kExhausted = 5,   ///< out of memory or over a limit
  kNoGraphics = 6,  ///< no display or no OpenGL
  kCancelled = 7,   ///< the progress callback asked for the end
};

/// Where in a file an error lies. Zero and -1 stand for "not known".
struct FilePlace {
  long long line = 0;   ///< of a text file, from 1
  long long byte = -1;  ///< of a binary file, from 0
};

/// What the functions of `namespace zel` throw: a code, and in words the file, what could not be
/// done and why. Copying never fails.
class ZEL_API Error : public std::exception {
 public:
  /// @param what what could not be done, for example "cannot read". @param why the reason.
  /// @param file the file concerned, as the caller named it; may be empty. @param place where in
  /// it. Where memory for the texts is refused, the error becomes outOfMemory().
  Error(ErrorCode code, const std::string& what, const std::string& why,
        const std::string& file = {}, FilePlace place = {}) noexcept;
  /// Shares the texts with `other`; takes constant time and no memory.
  Error(const Error& other) noexcept = default;
  /// Shares the texts with `other`; takes constant time and no memory.
  Error& operator=(const Error& other) noexcept = default;
  ~Error() override;

  /// The error of an exhausted heap (kExhausted). Needs no memory.
  [[nodiscard]] static Error outOfMemory() noexcept;

  /// What kind of failure it is.
  [[nodiscard]] ErrorCode code() const noexcept { return code_; }
  /// "FILE: WHAT: WHY", on one line: with the place behind the file where it is known ("a.obj:12"),
  /// without the parts that are empty; control characters are shown as '?'.
  [[nodiscard]] const char* what() const noexcept override;
  /// The file as the caller named it; empty when there is none.
  [[nodiscard]] const char* file() const noexcept;
  /// What could not be done.
  [[nodiscard]] const char* action() const noexcept;
  /// The reason.
  [[nodiscard]] const char* reason() const noexcept;
  /// Where in the file.
  [[nodiscard]] FilePlace place() const noexcept;

 private:
  struct Texts;
  explicit Error(ErrorCode code) noexcept : code_(code) {}

  ErrorCode code_;
  std::shared_ptr<const Texts> texts_;  // null: out of memory
};

}  // namespace zel
