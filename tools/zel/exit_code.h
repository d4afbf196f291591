#pragma once

#include <string>

namespace zel::program {

/// What the program answers to the shell. The numbers are part of its interface.
enum class ExitCode {
  kDone = 0,
  kFound = 1,       ///< a check or comparison found something
  kUsage = 2,       ///< the command line is wrong
  kUnreadable = 3,  ///< an input cannot be read or is malformed
  kUnwritable = 4,  ///< an output cannot be written
  kExhausted = 5,   ///< out of memory or over a limit
  kNoGraphics = 6,  ///< no display or no OpenGL
};

/// The worse of two answers: over many files the program ends with the worst one.
[[nodiscard]] inline ExitCode worse(ExitCode a, ExitCode b) { return a < b ? b : a; }

/// One line per code, for `--help`.
[[nodiscard]] std::string exitCodeTable();

}  // namespace zel::program
