#include <algorithm>

#include "tools/zel/commands/commands.h"
#include "tools/zel/defect_classes.h"
#include "tools/zel/format_options.h"
#include "tools/zel/mesh_contents.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/number_text.h"
#include "tools/zel/report.h"
#include "tools/zel/welding.h"

namespace zel::program {

namespace {

class CheckCommand : public Command {
 public:
  void declare(Options& options) override {
    std::vector<std::string> names;
    for (const DefectClass& defect : kDefectClasses) {
      names.emplace_back(defect.name);
    }
    options.argument("FILES", files_, "Mesh files, or - for standard input").required();
    options
        .value("--ignore", "CLASS", ignored_,
               "A class of defect that shall not count; may be repeated")
        .oneOf(names);
    options.flag("--json", json_, "One JSON object a line for each file");
    declareFrom(options, from_);
    welding_.declare(options);
    options.note("Exit code 1 tells that a file has a defect.");
    options.example("zel check bunny.obj --ignore openEdges");
  }

  ExitCode run(const Console& console) override {
    return forEachFile(files_, console, [&](const std::string& file) {
      Mesh mesh = readMesh(file, from_, console);
      welding_.apply(mesh, file, console);
      const Defects defects = findDefects(mesh);
      if (!console.quiet) {
        console.result(reportOn(file, contentsOf(mesh), defects).print(json_));
      }
      return hasAny(defects) ? ExitCode::kFound : ExitCode::kDone;
    });
  }

 private:
  [[nodiscard]] bool counts(const DefectClass& defect) const {
    return std::ranges::find(ignored_, defect.name) == ignored_.end();
  }

  [[nodiscard]] bool hasAny(const Defects& defects) const {
    return std::ranges::any_of(kDefectClasses, [&](const DefectClass& defect) {
      return counts(defect) && defects.*defect.count > 0;
    });
  }

  [[nodiscard]] Report reportOn(const std::string& file, Contents contents,
                                const Defects& defects) const {
    Report report(file);
    reportContents(report, contents);
    for (const DefectClass& defect : kDefectClasses) {
      const int count = defects.*defect.count;
      report.row(defect.name,
                 count == 0 ? ""
                            : groupedText(count) + " " + defect.description +
                                  (counts(defect) ? "" : " (ignored)"),
                 {{defect.name, count}});
    }
    report.answer("sound", "sound", !hasAny(defects),
                  contents == Contents::kFaces ? "no defects" : "no defects, for want of faces",
                  "");
    return report;
  }

  std::vector<std::string> files_;
  std::vector<std::string> ignored_;
  std::string from_;
  Welding welding_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeCheckCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<CheckCommand>();
}

}  // namespace zel::program
