#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tools/zel/options.h"

namespace zel::program {

/// A subcommand as the command line, the help, the manual page and the completions know it.
struct Verb {
  std::string name;
  std::string summary;
  Options options;
};

/// All that the program understands.
struct ProgramUsage {
  Options common;  ///< options of all subcommands
  std::vector<Verb> verbs;
};

/// @return the subcommand. @throws Failure (code 2) when there is none of that name.
[[nodiscard]] const Verb& verbNamed(const ProgramUsage& usage, const std::string& name);

/// @return the place of the first word that is no option and that no option of all subcommands
///         takes, or nothing.
[[nodiscard]] std::optional<std::size_t> findVerb(const std::vector<std::string>& words,
                                                  const Options& common);

/// Hands every word to the option it belongs to.
/// @param words  all words of the command line but the program and the subcommand.
/// @param common options of all subcommands; these are handed over first.
/// @param isDone asked after that: whether all else need not be complete or right.
/// @throws Failure (code 2) with the word at fault, or the subcommand when one is missing.
void parseWords(const std::vector<std::string>& words, const Options& common, const Verb& verb,
                const std::function<bool()>& isDone);

}  // namespace zel::program
