#include "tools/zel/commands/commands.h"
#include "tools/zel/completion.h"

namespace zel::program {

namespace {

class CompletionCommand : public Command {
 public:
  explicit CompletionCommand(const ProgramUsage& usage) : usage_(usage) {}

  void declare(Options& options) override {
    options.argument("SHELL", shell_, "bash, zsh or fish")
        .required()
        .oneOf({"bash", "zsh", "fish"});
    options.note(
        "The text goes into a file where the shell looks for such; installed packages "
        "bring it along.");
    options.example("zel completion bash > ~/.local/share/bash-completion/completions/zel");
  }

  ExitCode run(const Console& console) override {
    console.result(shell_ == "bash"  ? bashCompletion(usage_)
                   : shell_ == "zsh" ? zshCompletion(usage_)
                                     : fishCompletion(usage_));
    return ExitCode::kDone;
  }

 private:
  const ProgramUsage& usage_;
  std::string shell_;
};

}  // namespace

std::unique_ptr<Command> makeCompletionCommand(const ProgramUsage& usage) {
  return std::make_unique<CompletionCommand>(usage);
}

}  // namespace zel::program
