#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tools/zel/console.h"
#include "tools/zel/exit_code.h"
#include "tools/zel/options.h"

namespace zel::program {

class Failure;

/// One subcommand. Its options are its members; declare() ties them to the command line, run()
/// is called when the person chose it.
///
/// A new subcommand is one file with a class derived from this, a factory named in
/// commands/commands.h, and one line in the table of commands/commands.cpp.
class Command {
 public:
  Command() = default;
  virtual ~Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  /// Adds options, positional arguments and an example.
  virtual void declare(Options& options) = 0;
  /// Does the work. May throw Failure, which ends the command with the failure's code.
  virtual ExitCode run(const Console& console) = 0;
};

/// Runs `work` on each file; a Failure is reported and the next file is taken.
/// @return the worst answer of all.
ExitCode forEachFile(const std::vector<std::string>& files, const Console& console,
                     const std::function<ExitCode(const std::string&)>& work);

/// The failure that stands for the exception that is being handled. To be called where one is.
/// @param file what to name when the exception names none.
[[nodiscard]] Failure caughtFailure(const std::string& file);

/// Runs `work` and turns what it throws into one error line and an exit code. To tell of exhausted
/// memory it needs none. @param file what the line names when the error does not.
ExitCode guarded(const std::string& file, const Console& console,
                 const std::function<ExitCode()>& work);

}  // namespace zel::program
