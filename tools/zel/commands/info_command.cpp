#include "tools/zel/commands/commands.h"
#include "tools/zel/format_options.h"
#include "tools/zel/json.h"
#include "tools/zel/mesh_facts.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/number_text.h"

namespace zel::program {

namespace {

std::string jsonText(const std::string& file, const MeshDocument& mesh, const MeshFacts& facts) {
  Json::Members json;
  json.emplace_back("file", file);
  json.emplace_back("nodes", mesh.nodes.GetAvailableNumM());
  json.emplace_back("nodeSlots", mesh.nodes.GetBoundM());
  json.emplace_back("triangles", mesh.triangles.GetAvailableNumM());
  json.emplace_back("triangleSlots", mesh.triangles.GetBoundM());
  json.emplace_back("quads", mesh.quads.GetAvailableNumM());
  json.emplace_back("quadSlots", mesh.quads.GetBoundM());
  json.emplace_back("nodeNormals", facts.hasNodeNormals);
  json.emplace_back("textureCoords", facts.hasTextureCoords);
  json.emplace_back("lowest", facts.hasBounds ? Json(facts.lowest) : Json());
  json.emplace_back("highest", facts.hasBounds ? Json(facts.highest) : Json());
  json.emplace_back("area", facts.area);
  json.emplace_back("edges", facts.edges);
  json.emplace_back("shortestEdge", facts.shortestEdge);
  json.emplace_back("meanEdge", facts.meanEdge);
  json.emplace_back("longestEdge", facts.longestEdge);
  json.emplace_back("boundaryEdges", facts.defects.openEdges);
  json.emplace_back("boundaryLoops", facts.boundaryLoops);
  json.emplace_back("boundaryChains", facts.boundaryChains);
  json.emplace_back("components", facts.defects.components);
  json.emplace_back("closed", facts.isClosed());
  json.emplace_back("oriented", facts.isOriented());
  return Json(std::move(json)).line();
}

template <class Elements>
std::string slotsText(const Elements& elements) {
  const int live = elements.GetAvailableNumM();
  const int dead = elements.GetBoundM() - live;
  return groupedText(live) + (dead > 0 ? " (and " + groupedText(dead) + " deleted slots)" : "");
}

std::string boundaryText(const MeshFacts& facts) {
  std::string text = groupedText(facts.defects.openEdges) + " edges in " +
                     groupedText(facts.boundaryLoops) + " loops";
  if (facts.boundaryChains > 0) {
    text += " and " + groupedText(facts.boundaryChains) + " open chains";
  }
  return text;
}

std::string text(const std::string& file, const MeshDocument& mesh, const MeshFacts& facts) {
  std::string text = file + "\n";
  text += reportRow("nodes", slotsText(mesh.nodes));
  text += reportRow("triangles", slotsText(mesh.triangles));
  text += reportRow("quads", slotsText(mesh.quads));
  if (facts.hasBounds) {
    text += reportRow("bounds", pointText(facts.lowest) + " to " + pointText(facts.highest));
  }
  text += reportRow("area", shortText(facts.area));
  text += reportRow("edges", groupedText(facts.edges));
  if (facts.edges > 0) {
    text += reportRow("edge lengths", shortText(facts.shortestEdge) + " to " +
                                          shortText(facts.longestEdge) + ", mean " +
                                          shortText(facts.meanEdge));
  }
  text += reportRow("boundary", boundaryText(facts));
  text += reportRow("components", groupedText(facts.defects.components));
  text += reportRow("closed", facts.isClosed() ? "yes" : "no");
  text += reportRow("orientation", facts.isOriented() ? "consistent" : "mixed");
  text += reportRow("node normals", facts.hasNodeNormals ? "yes" : "no");
  text += reportRow("texture coords", facts.hasTextureCoords ? "yes" : "no");
  return text;
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
      const MeshFacts facts = gatherFacts(mesh);
      console.result(json_ ? jsonText(file, mesh, facts) : text(file, mesh, facts));
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
