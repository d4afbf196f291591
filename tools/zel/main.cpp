#include <fcntl.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <csignal>
#include <cstdint>
#include <optional>

#include "tools/zel/command_line.h"
#include "tools/zel/commands/commands.h"
#include "tools/zel/failure.h"
#include "tools/zel/foreign/foreign_mesh.h"
#include "tools/zel/help_text.h"
#include "tools/zel/temporary_file.h"

namespace zel::program {

namespace {

/// The subcommands with their options, and the options of them all.
class Program {
 public:
  Program() {
    usage_.common.flag("-q,--quiet", console_.quiet, "No remarks and no progress bar");
    usage_.common.flag("-v,--verbose", console_.verbose, "Tell what is being done");
    usage_.common.flag("-h,--help", asksHelp_, "Tell how it is used");
    usage_.common.flag("--version", asksVersion_, "Tell the version");
    usage_.common
        .value("--max-memory", "MIB", maxMemory_,
               "Let the reading of a foreign format take that much memory")
        .within(1, 1e9)
        .byDefault("512 and 64 times the size of the file");
    for (const CommandEntry& entry : commands()) {
      Verb& verb = usage_.verbs.emplace_back(Verb{entry.name, entry.summary, {}});
      commands_.push_back(entry.make(usage_));
      commands_.back()->declare(verb.options);
    }
  }

  /// @throws Failure.
  ExitCode run(std::vector<std::string> words) {
    const auto place = findVerb(words, usage_.common);
    if (!place) {
      return runWithoutVerb(words);
    }
    const Verb& verb = verbNamed(usage_, words[*place]);
    words.erase(words.begin() + static_cast<std::ptrdiff_t>(*place));
    parseWords(words, usage_.common, verb, [this] { return asksHelp_ || asksVersion_; });
    if (asksHelp_ || asksVersion_) {
      return answer(asksHelp_ ? helpText(verb, usage_.common) : versionText());
    }
    if (maxMemory_) {
      constexpr double kMebibyte = 1 << 20;
      limitForeignMemory(static_cast<std::uint64_t>(*maxMemory_ * kMebibyte));
    }
    return commands_[static_cast<std::size_t>(&verb - usage_.verbs.data())]->run(console_);
  }

 private:
  ExitCode runWithoutVerb(const std::vector<std::string>& words) {
    parseWords(words, usage_.common, Verb{"zel", "", {}}, [this] { return asksHelp_; });
    if (!asksHelp_ && !asksVersion_) {
      throw misuse("SUBCOMMAND", "it is missing; zel help lists them");
    }
    return answer(asksHelp_ ? helpText(usage_) : versionText());
  }

  [[nodiscard]] ExitCode answer(const std::string& text) const {
    console_.result(text);
    return ExitCode::kDone;
  }

  Console console_;
  bool asksHelp_ = false;
  bool asksVersion_ = false;
  std::optional<double> maxMemory_;
  ProgramUsage usage_;
  std::vector<std::unique_ptr<Command>> commands_;
};

/// A standard stream that is closed would be taken by the next file that is opened, and remarks
/// would end up in it. What stands in its place here refuses what the stream is for; only remarks
/// vanish as they were meant to.
void fillClosedStreams() {
  constexpr std::array<int, 3> kInstead = {O_WRONLY, O_RDONLY, O_WRONLY};
  for (int stream = 0; stream < static_cast<int>(kInstead.size()); ++stream) {
    if (fcntl(stream, F_GETFD) < 0) {
      // The lowest free number is taken, and that is this one.
      (void)!open("/dev/null", kInstead[static_cast<std::size_t>(stream)]);
    }
  }
}

}  // namespace

ExitCode run(int argc, char** argv) {
  return guarded("zel", Console(), [&] {
    return Program().run({argv + std::min(argc, 1), argv + argc});
  });
}

}  // namespace zel::program

int main(int argc, char** argv) {
  zel::program::fillClosedStreams();
  // The system's error texts come in the person's language; numbers keep their point, also where
  // libraries of others read and print them.
  std::setlocale(LC_ALL, "");
  std::setlocale(LC_NUMERIC, "C");
  // Over the limit for file sizes a write shall fail and be told, not end the program.
  std::signal(SIGXFSZ, SIG_IGN);
  zel::program::serveAsForeignReader(argc, argv);
  zel::program::cleanUpWhenEnded();
  return static_cast<int>(zel::program::run(argc, argv));
}
