#include <algorithm>
#include <clocale>
#include <csignal>
#include <iostream>

#include "tools/zel/commands.h"
#include "tools/zel/failure.h"

namespace zel::program {

namespace {

constexpr const char* kVersion = ZEL_VERSION;

/// The first argument that is no option, when it names no subcommand; else nothing.
std::string unknownSubcommand(int argc, char** argv) {
  for (int k = 1; k < argc; ++k) {
    const std::string word = argv[k];
    if (word.empty() || word[0] != '-') {
      const bool isKnown = std::ranges::any_of(
          commands(), [&](const CommandEntry& entry) { return word == entry.name; });
      return isKnown ? std::string() : word;
    }
  }
  return {};
}

ExitCode run(int argc, char** argv) {
  CLI::App app("zel: look into, weld, convert and compare 3D meshes", "zel");
  app.set_version_flag("--version", std::string("zel ") + kVersion);
  app.require_subcommand(1);
  app.fallthrough();
  app.footer("\n" + exitCodeTable() + "\nzel SUBCOMMAND --help tells about one subcommand.");
  Console console;
  app.add_flag("-q,--quiet", console.quiet, "No remarks and no progress bar");
  app.add_flag("-v,--verbose", console.verbose, "Tell what is being done");

  std::vector<std::pair<const CLI::App*, std::unique_ptr<Command>>> known;
  for (const CommandEntry& entry : commands()) {
    CLI::App* const subcommand = app.add_subcommand(entry.name, entry.summary);
    known.emplace_back(subcommand, entry.make());
    known.back().second->declare(*subcommand);
  }
  if (const std::string name = unknownSubcommand(argc, argv); !name.empty()) {
    console.complain(Failure(ExitCode::kUsage, name, "wrong usage", "no such subcommand"));
    return ExitCode::kUsage;
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? ExitCode::kDone : ExitCode::kUsage;
  }
  for (const auto& [subcommand, command] : known) {
    if (subcommand->parsed()) {
      return guarded("zel", console, [&] { return command->run(console); });
    }
  }
  return ExitCode::kUsage;
}

}  // namespace

}  // namespace zel::program

int main(int argc, char** argv) {
  // The system's error texts come in the person's language; mesh files never depend on it.
  std::setlocale(LC_ALL, "");
  // Over the limit for file sizes a write shall fail and be told, not end the program.
  std::signal(SIGXFSZ, SIG_IGN);
  return static_cast<int>(zel::program::run(argc, argv));
}
