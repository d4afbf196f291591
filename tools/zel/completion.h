#pragma once

#include <string>

#include "tools/zel/command_line.h"

namespace zel::program {

/// What completes command lines of the program: a text for the shell to read.
[[nodiscard]] std::string bashCompletion(const ProgramUsage& usage);
[[nodiscard]] std::string zshCompletion(const ProgramUsage& usage);
[[nodiscard]] std::string fishCompletion(const ProgramUsage& usage);

}  // namespace zel::program
