#include "tools/zel/commands/commands.h"
#include "tools/zel/failure.h"
#include "tools/zel/help_text.h"

namespace zel::program {

namespace {

std::vector<std::string> namesOf(const ProgramUsage& usage) {
  std::vector<std::string> names;
  for (const Verb& verb : usage.verbs) {
    names.push_back(verb.name);
  }
  return names;
}

class HelpCommand : public Command {
 public:
  explicit HelpCommand(const ProgramUsage& usage) : usage_(usage) {}

  void declare(Options& options) override {
    options.argument("SUBCOMMAND", verb_, "Tell about this one; else about the program")
        .suggesting([this] { return namesOf(usage_); });
    options.flag("--man", isManual_, "Print the manual page, as groff reads it");
    options.example("zel help weld");
  }

  ExitCode run(const Console& console) override {
    if (isManual_ && !verb_.empty()) {
      throw misuse(verb_, "the manual page is about the whole program");
    }
    console.result(isManual_       ? manualPage(usage_)
                   : verb_.empty() ? helpText(usage_)
                                   : helpText(verbNamed(usage_, verb_), usage_.common));
    return ExitCode::kDone;
  }

 private:
  const ProgramUsage& usage_;
  std::string verb_;
  bool isManual_ = false;
};

}  // namespace

std::unique_ptr<Command> makeHelpCommand(const ProgramUsage& usage) {
  return std::make_unique<HelpCommand>(usage);
}

}  // namespace zel::program
