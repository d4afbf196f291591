#include <algorithm>

#include "tools/zel/commands/commands.h"
#include "tools/zel/format_options.h"
#include "tools/zel/mesh_contents.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/number_text.h"
#include "tools/zel/report.h"
#include "tools/zel/welding.h"

namespace zel::program {

namespace {

bool hasNodeNormals(const Mesh& mesh) {
  const NodeCL* nodes = mesh.nodes.getCurrentItemPrtConstM();
  return std::any_of(nodes, nodes + mesh.nodes.GetBoundM(), [](const NodeCL& node) {
    return isLive(node) && std::any_of(node.normal(), node.normal() + 3,
                                       [](float component) { return component != 0; });
  });
}

bool hasTexture(const Mesh& mesh) {
  return mesh.triangleTexture.GetAvailableNumM() > 0 || mesh.quadTexture.GetAvailableNumM() > 0;
}

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

std::string boundaryText(const Measures& facts) {
  std::string text =
      groupedText(facts.openEdges) + " edges in " + groupedText(facts.boundaryLoops) + " loops";
  if (facts.boundaryChains > 0) {
    text += " and " + groupedText(facts.boundaryChains) + " open chains";
  }
  return text;
}

void reportSize(Report& report, const Measures& facts) {
  const Bounds& bounds = facts.bounds;
  report.row("bounds",
             bounds.isEmpty ? "" : pointText(bounds.low) + " to " + pointText(bounds.high),
             {{"lowest", bounds.isEmpty ? Json() : Json(bounds.low)},
              {"highest", bounds.isEmpty ? Json() : Json(bounds.high)}});
  report.measure("area", "area", facts.area);
  report.row("volume", facts.isClosed() ? shortText(facts.signedVolume) : "",
             {{"volume", facts.signedVolume}});
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

Report reportOn(const std::string& file, const Mesh& mesh, const Measures& facts) {
  Report report(file);
  reportContents(report, contentsOf(mesh));
  reportSlots(report, "nodes", "nodeSlots", mesh.nodes);
  reportSlots(report, "triangles", "triangleSlots", mesh.triangles);
  reportSlots(report, "quads", "quadSlots", mesh.quads);
  reportSize(report, facts);
  report.row("boundary", boundaryText(facts),
             {{"boundaryEdges", facts.openEdges},
              {"boundaryLoops", facts.boundaryLoops},
              {"boundaryChains", facts.boundaryChains}});
  report.count("components", "components", facts.components);
  report.answer("closed", "closed", facts.isClosed());
  report.answer("orientation", "oriented", facts.isOriented(), "consistent", "mixed");
  report.answer("node normals", "nodeNormals", hasNodeNormals(mesh));
  report.answer("texture coords", "textureCoords", hasTexture(mesh));
  return report;
}

class InfoCommand : public Command {
 public:
  void declare(Options& options) override {
    options.argument("FILES", files_, "Mesh files, or - for standard input").required();
    options.flag("--json", json_, "One JSON object a line for each file");
    declareFrom(options, from_);
    welding_.declare(options);
    options.example("zel info bunny.obj --json");
  }

  ExitCode run(const Console& console) override {
    return forEachFile(files_, console, [&](const std::string& file) {
      Mesh mesh = readMesh(file, from_, console);
      welding_.apply(mesh, file, console);
      console.result(reportOn(file, mesh, measure(mesh)).print(json_));
      return ExitCode::kDone;
    });
  }

 private:
  std::vector<std::string> files_;
  std::string from_;
  Welding welding_;
  bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeInfoCommand(const ProgramUsage& /*usage*/) {
  return std::make_unique<InfoCommand>();
}

}  // namespace zel::program
