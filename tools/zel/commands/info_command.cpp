#include "tools/zel/commands/commands.h"
#include "tools/zel/format_options.h"
#include "tools/zel/mesh_facts.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/number_text.h"
#include "tools/zel/report.h"

namespace zel::program {

namespace {

template <class Elements>
void reportSlots(Report& report, const std::string& name, const std::string& key,
                 const Elements& elements) {
  const int live = elements.GetAvailableNumM();
  const int slots = elements.GetBoundM();
  const int dead = slots - live;
  report.row(name,
             groupedText(live) + (dead > 0 ? " (and " + groupedText(dead) + " deleted slots)" : ""),
             {{name, live}, {key, slots}});
}

std::string boundaryText(const MeshFacts& facts) {
  std::string text = groupedText(facts.defects.openEdges) + " edges in " +
                     groupedText(facts.boundaryLoops) + " loops";
  if (facts.boundaryChains > 0) {
    text += " and " + groupedText(facts.boundaryChains) + " open chains";
  }
  return text;
}

void reportSize(Report& report, const MeshFacts& facts) {
  report.row("bounds",
             facts.hasBounds ? pointText(facts.lowest) + " to " + pointText(facts.highest) : "",
             {{"lowest", facts.hasBounds ? Json(facts.lowest) : Json()},
              {"highest", facts.hasBounds ? Json(facts.highest) : Json()}});
  report.measure("area", "area", facts.area);
  report.count("edges", "edges", facts.edges);
  report.row("edge lengths",
             facts.edges == 0
                 ? ""
                 : shortText(facts.shortestEdge) + " to " + shortText(facts.longestEdge) +
                       ", mean " + shortText(facts.meanEdge),
             {{"shortestEdge", facts.shortestEdge},
              {"longestEdge", facts.longestEdge},
              {"meanEdge", facts.meanEdge}});
}

Report reportOn(const std::string& file, const MeshDocument& mesh, const MeshFacts& facts) {
  Report report(file);
  reportSlots(report, "nodes", "nodeSlots", mesh.nodes);
  reportSlots(report, "triangles", "triangleSlots", mesh.triangles);
  reportSlots(report, "quads", "quadSlots", mesh.quads);
  reportSize(report, facts);
  report.row("boundary", boundaryText(facts),
             {{"boundaryEdges", facts.defects.openEdges},
              {"boundaryLoops", facts.boundaryLoops},
              {"boundaryChains", facts.boundaryChains}});
  report.count("components", "components", facts.defects.components);
  report.answer("closed", "closed", facts.isClosed());
  report.answer("orientation", "oriented", facts.isOriented(), "consistent", "mixed");
  report.answer("node normals", "nodeNormals", facts.hasNodeNormals);
  report.answer("texture coords", "textureCoords", facts.hasTextureCoords);
  return report;
}

class InfoCommand : public Command {
 public:
  void declare(Options& options) override {
    options.argument("FILES", files_, "Mesh files, or - for standard input").required();
    options.flag("--json", json_, "One JSON object a line for each file");
    declareFrom(options, from_);
    options.example("zel info bunny.obj --json");
  }

  ExitCode run(const Console& console) override {
    return forEachFile(files_, console, [&](const std::string& file) {
      const MeshDocument mesh = readMesh(file, from_, console);
      console.result(reportOn(file, mesh, gatherFacts(mesh)).print(json_));
      return ExitCode::kDone;
    });
  }

 private:
  std::vector<std::string> files_;
  std::string from_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeInfoCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<InfoCommand>();
}

}  // namespace zel::program
