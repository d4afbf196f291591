#include "tools/zel/commands/commands.h"
#include "tools/zel/file_format.h"
#include "tools/zel/json.h"

namespace zel::program {

namespace {

class FormatsCommand : public Command {
 public:
  void declare(Options& options) override {
    options.flag("--json", json_, "One JSON array");
    options.example("zel formats --json");
  }

  ExitCode run(const Console& console) override {
    console.result(json_ ? jsonText() : text());
    return ExitCode::kDone;
  }

 private:
  static std::string jsonText() {
    Json::Elements json;
    for (const KnownFormat& format : knownFormats()) {
      json.emplace_back(
          Json::Members{{"name", format.name}, {"reads", true}, {"writes", format.isWritten}});
    }
    return Json(std::move(json)).line();
  }

  static std::string text() {
    std::string text = "read and written:\n";
    std::string others = "read only, through Assimp:\n ";
    constexpr std::size_t kPerLine = 12;
    std::size_t count = 0;
    for (const KnownFormat& format : knownFormats()) {
      if (format.isWritten) {
        text += "  " + format.name + "  " + format.description + "\n";
      } else {
        others += (count > 0 && count % kPerLine == 0 ? "\n  " : " ") + format.name;
        ++count;
      }
    }
    return text + others + "\n";
  }

  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeFormatsCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<FormatsCommand>();
}

}  // namespace zel::program
