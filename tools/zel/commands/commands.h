#pragma once

#include <memory>
#include <vector>

#include "tools/zel/command.h"
#include "tools/zel/command_line.h"

namespace zel::program {

std::unique_ptr<Command> makeInfoCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeCheckCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeConvertCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeDiffCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeFormatsCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeWeldCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeNormalsCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeUnfoldCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeFitCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeRenderCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeReportCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeViewCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeDemoCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeHelpCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeVersionCommand(const ProgramUsage& usage);
std::unique_ptr<Command> makeCompletionCommand(const ProgramUsage& usage);

/// How the program introduces and makes a subcommand.
struct CommandEntry {
  const char* name;
  const char* summary;
  /// @param usage all subcommands; it is complete when the command runs, and outlives it.
  std::unique_ptr<Command> (*make)(const ProgramUsage& usage);
};

/// All subcommands in the order of the help.
[[nodiscard]] const std::vector<CommandEntry>& commands();

}  // namespace zel::program
