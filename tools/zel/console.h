#pragma once

#include <string>

#include "tools/zel/exit_code.h"

namespace zel::program {

class Failure;

/// Where the program speaks: results on standard output, all else on standard error.
class Console {
 public:
  /// Set by `-q`: no remarks, no progress; comparisons answer by their exit code alone.
  bool quiet = false;
  /// Set by `-v`: remarks on what is being done.
  bool verbose = false;

  /// Prints a result on standard output.
  /// @throws Failure (code 4) when standard output does not take it.
  void result(const std::string& text) const;
  /// Prints a remark on standard error when `-v` was given.
  void remark(const std::string& text) const;
  /// Prints on standard error, unless `-q` was given, what a person must know about the work done.
  void note(const std::string& text) const;
  /// Prints the one line of a failure on standard error, also under `-q`.
  void complain(const Failure& failure) const;
  /// Prints the one line "FILE: too large: out of memory" without asking for memory.
  void complainOfMemory(const char* file) const noexcept;
  /// @return whether a progress bar would be seen by a person.
  [[nodiscard]] bool showsProgress() const;
};

}  // namespace zel::program
