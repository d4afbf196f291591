#include <optional>

#include "tools/zel/commands.h"
#include "tools/zel/json_text.h"
#include "tools/zel/mesh_compare.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/number_option.h"
#include "tools/zel/number_text.h"

namespace zel::program {

namespace {

class DiffCommand : public Command {
 public:
  void declare(CLI::App& app) override {
    app.add_option("first", first_, "Mesh file, or - for standard input")->required();
    app.add_option("second", second_, "Mesh file")->required();
    app.add_option("--tolerance", tolerance_,
                   "Points may lie this far apart; normals and texture coordinates are left out")
        ->check(notNegative());
    app.add_flag("--json", json_, "One JSON object");
    app.add_option("--from", from_, "Read both as this format, whatever the names say");
    app.footer(
        "Without --tolerance every bit counts: points, faces and their normals, and node normals\n"
        "and texture coordinates when both meshes have some. Exit code 1 tells of a difference.\n"
        "Example: zel diff before.zel after.stl --tolerance 0.0001");
  }

  ExitCode run(const Console& console) override {
    const MeshDocument first = readMesh(first_, from_, console);
    const MeshDocument second = readMesh(second_, from_, console);
    const MeshDifference difference =
        tolerance_ ? compareWithin(first, second, *tolerance_) : compareExactly(first, second);
    if (!console.quiet) {
      console.result(json_ ? jsonText(difference) : text(difference));
    }
    return difference.findings.empty() ? ExitCode::kDone : ExitCode::kFound;
  }

 private:
  static std::string jsonText(const MeshDifference& difference) {
    nlohmann::ordered_json json;
    json["same"] = difference.findings.empty();
    json["findings"] = difference.findings;
    json["largestMove"] = difference.largestMove;
    return jsonLine(json);
  }

  static std::string text(const MeshDifference& difference) {
    std::string text;
    for (const std::string& finding : difference.findings) {
      text += finding + "\n";
    }
    text += difference.findings.empty() ? "same" : "different";
    if (difference.largestMove > 0) {
      text += ", points up to " + shortText(difference.largestMove) + " apart";
    }
    return text + "\n";
  }

  std::string first_;
  std::string second_;
  std::string from_;
  std::optional<double> tolerance_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeDiffCommand() { return std::make_unique<DiffCommand>(); }

}  // namespace zel::program
