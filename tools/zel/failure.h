#pragma once

#include <string>
#include <utility>

#include "tools/zel/exit_code.h"

namespace zel::program {

/// The end of the work on one file, thrown up to the place that goes on with the next one.
class Failure {
 public:
  /// @param file what the user named. @param what what could not be done. @param why the reason.
  Failure(ExitCode code, std::string file, std::string what, std::string why)
      : code_(code), file_(std::move(file)), what_(std::move(what)), why_(std::move(why)) {}

  [[nodiscard]] ExitCode code() const { return code_; }
  /// "FILE: WHAT: WHY" on one line; control characters of the file name become '?'.
  [[nodiscard]] std::string line() const;
  /// The reason.
  [[nodiscard]] const std::string& why() const { return why_; }

 private:
  ExitCode code_;
  std::string file_;
  std::string what_;
  std::string why_;
};

/// A file that cannot be read or whose content is broken.
[[nodiscard]] inline Failure unreadable(const std::string& file, const std::string& why) {
  return {ExitCode::kUnreadable, file, "cannot read", why};
}

/// A file that cannot be written.
[[nodiscard]] inline Failure unwritable(const std::string& file, const std::string& why) {
  return {ExitCode::kUnwritable, file, "cannot write", why};
}

/// Memory or a limit of the library is exhausted.
[[nodiscard]] inline Failure exhausted(const std::string& file, const std::string& why) {
  return {ExitCode::kExhausted, file, "too large", why};
}

/// A command line that cannot be followed. @param word what of it is at fault.
[[nodiscard]] inline Failure misuse(const std::string& word, const std::string& why) {
  return {ExitCode::kUsage, word, "wrong usage", why};
}

/// Whether a character would disturb a line of text.
[[nodiscard]] inline bool isControlCharacter(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

/// The text with its letters A to Z made small.
[[nodiscard]] std::string lowerCase(std::string text);

/// The system's text for an error number.
[[nodiscard]] std::string systemText(int errorNumber);

}  // namespace zel::program
