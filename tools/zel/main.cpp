#include <algorithm>
#include <clocale>
#include <csignal>

#include "tools/zel/command_line.h"
#include "tools/zel/commands/commands.h"
#include "tools/zel/failure.h"
#include "tools/zel/help_text.h"

namespace zel::program {

namespace {

constexpr const char* kVersion = ZEL_VERSION;

/// The subcommands with their options, and the options of them all.
class Program {
 public:
  Program() {
    common_.flag("-q,--quiet", console_.quiet, "No remarks and no progress bar");
    common_.flag("-v,--verbose", console_.verbose, "Tell what is being done");
    common_.flag("-h,--help", asksHelp_, "Tell how it is used");
    common_.flag("--version", asksVersion_, "Tell the version");
    for (const CommandEntry& entry : commands()) {
      Verb& verb = verbs_.emplace_back(Verb{entry.name, entry.summary, {}});
      commands_.push_back(entry.make());
      commands_.back()->declare(verb.options);
    }
  }

  /// @throws Failure.
  ExitCode run(std::vector<std::string> words) {
    const auto place = findVerb(words, common_);
    if (!place) {
      return runWithoutVerb(words);
    }
    const auto verb = std::ranges::find(verbs_, words[*place], &Verb::name);
    if (verb == verbs_.end()) {
      throw Failure(ExitCode::kUsage, words[*place], "wrong usage", "no such subcommand");
    }
    words.erase(words.begin() + static_cast<std::ptrdiff_t>(*place));
    parseWords(words, common_, *verb, asksHelp_);
    if (asksHelp_) {
      console_.result(helpText(*verb, common_));
      return ExitCode::kDone;
    }
    return commands_[static_cast<std::size_t>(verb - verbs_.begin())]->run(console_);
  }

 private:
  ExitCode runWithoutVerb(const std::vector<std::string>& words) {
    parseWords(words, common_, Verb{"zel", "", {}}, asksHelp_);
    if (asksHelp_) {
      console_.result(helpText(verbs_, common_));
    } else if (asksVersion_) {
      console_.result(std::string("zel ") + kVersion + "\n");
    } else {
      throw Failure(ExitCode::kUsage, "SUBCOMMAND", "wrong usage",
                    "it is missing; zel --help lists them");
    }
    return ExitCode::kDone;
  }

  Console console_;
  bool asksHelp_ = false;
  bool asksVersion_ = false;
  Options common_;
  std::vector<Verb> verbs_;
  std::vector<std::unique_ptr<Command>> commands_;
};

}  // namespace

ExitCode run(const std::vector<std::string>& words) {
  return guarded("zel", Console(), [&] { return Program().run(words); });
}

}  // namespace zel::program

int main(int argc, char** argv) {
  // The system's error texts come in the person's language; mesh files never depend on it.
  std::setlocale(LC_ALL, "");
  // Over the limit for file sizes a write shall fail and be told, not end the program.
  std::signal(SIGXFSZ, SIG_IGN);
  return static_cast<int>(zel::program::run({argv + std::min(argc, 1), argv + argc}));
}
