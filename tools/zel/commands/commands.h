#pragma once

#include <memory>
#include <vector>

#include "tools/zel/command.h"

namespace zel::program {

std::unique_ptr<Command> makeInfoCommand();
std::unique_ptr<Command> makeCheckCommand();
std::unique_ptr<Command> makeConvertCommand();
std::unique_ptr<Command> makeDiffCommand();
std::unique_ptr<Command> makeFormatsCommand();
std::unique_ptr<Command> makeWeldCommand();
std::unique_ptr<Command> makeNormalsCommand();
std::unique_ptr<Command> makeUnfoldCommand();
std::unique_ptr<Command> makeFitCommand();
std::unique_ptr<Command> makeRenderCommand();
std::unique_ptr<Command> makeViewCommand();
std::unique_ptr<Command> makeDemoCommand();

/// How the program introduces and makes a subcommand.
struct CommandEntry {
  const char* name;
  const char* summary;
  std::unique_ptr<Command> (*make)();
};

/// All subcommands in the order of the help.
[[nodiscard]] const std::vector<CommandEntry>& commands();

}  // namespace zel::program
