#pragma once

#include <string>

#include "tools/zel/command_line.h"

namespace zel::program {

/// How a command line of the subcommand is put together.
[[nodiscard]] std::string synopsis(const Verb& verb);

/// How an option is written, with the word that it takes.
[[nodiscard]] std::string shownName(const Option& option);

/// What an option does, and what holds without it.
[[nodiscard]] std::string explained(const Option& option);

/// What `zel help` prints: all subcommands, the options of them all and the exit codes.
[[nodiscard]] std::string helpText(const ProgramUsage& usage);

/// What `zel help VERB` prints.
[[nodiscard]] std::string helpText(const Verb& verb, const Options& common);

/// The one line of `zel --version`.
[[nodiscard]] std::string versionText();

/// The manual page zel(1), as groff reads it.
[[nodiscard]] std::string manualPage(const ProgramUsage& usage);

}  // namespace zel::program
