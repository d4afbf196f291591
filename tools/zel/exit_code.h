#pragma once

#include <array>

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

/// What a code means, for people.
struct ExitCodeMeaning {
  ExitCode code;
  const char* meaning;
};

/// All codes, from 0 on.
inline constexpr std::array<ExitCodeMeaning, 7> kExitCodes = {{
    {ExitCode::kDone, "done"},
    {ExitCode::kFound, "a check or comparison found something"},
    {ExitCode::kUsage, "wrong usage"},
    {ExitCode::kUnreadable, "an input cannot be read or is malformed"},
    {ExitCode::kUnwritable, "an output cannot be written"},
    {ExitCode::kExhausted, "out of memory or over a limit"},
    {ExitCode::kNoGraphics, "no graphics"},
}};

}  // namespace zel::program
