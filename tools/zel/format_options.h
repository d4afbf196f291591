#pragma once

#include <string>

#include "tools/zel/options.h"

namespace zel::program {

/// Adds --from: a format that is read, whatever the name of a file says.
void declareFrom(Options& options, std::string& target,
                 const std::string& help = "Read as this format, whatever the name says");

/// Adds --to: a format that is written, whatever the name of the file says.
void declareTo(Options& options, std::string& target);

}  // namespace zel::program
