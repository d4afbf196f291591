#include "tools/zel/commands/commands.h"
#include "tools/zel/help_text.h"

namespace zel::program {

namespace {

class VersionCommand : public Command {
 public:
  void declare(Options& options) override { options.example("zel version"); }

  ExitCode run(const Console& console) override {
    console.result(versionText());
    return ExitCode::kDone;
  }
};

}  // namespace

std::unique_ptr<Command> makeVersionCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<VersionCommand>();
}

}  // namespace zel::program
