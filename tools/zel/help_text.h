#pragma once

#include <string>
#include <vector>

#include "tools/zel/command_line.h"

namespace zel::program {

/// What `zel --help` prints: all subcommands, the options of them all and the exit codes.
[[nodiscard]] std::string helpText(const std::vector<Verb>& verbs, const Options& common);

/// What `zel VERB --help` prints.
[[nodiscard]] std::string helpText(const Verb& verb, const Options& common);

}  // namespace zel::program
