#include "tools/zel/commands.h"
#include "tools/zel/json_text.h"
#include "tools/zel/mesh_facts.h"
#include "tools/zel/mesh_file.h"
#include "tools/zel/number_text.h"

namespace zel::program {

namespace {

using Json = nlohmann::ordered_json;

std::string jsonText(const std::string& file, const MeshDocument& mesh, const MeshFacts& facts) {
  Json json;
  json["file"] = file;
  json["nodes"] = mesh.nodes.GetAvailableNumM();
  json["nodeSlots"] = mesh.nodes.GetBoundM();
  json["triangles"] = mesh.triangles.GetAvailableNumM();
  json["triangleSlots"] = mesh.triangles.GetBoundM();
  json["quads"] = mesh.quads.GetAvailableNumM();
  json["quadSlots"] = mesh.quads.GetBoundM();
  json["nodeNormals"] = facts.hasNodeNormals;
  json["textureCoords"] = facts.hasTextureCoords;
  json["lowest"] = facts.hasBounds ? Json(facts.lowest) : Json();
  json["highest"] = facts.hasBounds ? Json(facts.highest) : Json();
  json["area"] = facts.area;
  json["edges"] = facts.edges;
  json["shortestEdge"] = facts.shortestEdge;
  json["meanEdge"] = facts.meanEdge;
  json["longestEdge"] = facts.longestEdge;
  json["boundaryEdges"] = facts.defects.openEdges;
  json["boundaryLoops"] = facts.boundaryLoops;
  json["boundaryChains"] = facts.boundaryChains;
  json["components"] = facts.defects.components;
  json["closed"] = facts.isClosed();
  json["oriented"] = facts.isOriented();
  return jsonLine(json);
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
  void declare(CLI::App& app) override {
    app.add_option("files", files_, "Mesh files, or - for standard input")->required();
    app.add_flag("--json", json_, "One JSON object a line for each file");
    app.add_option("--from", from_, "Read as this format, whatever the name says");
    app.footer("Example: zel info bunny.obj --json");
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

std::unique_ptr<Command> makeInfoCommand() { return std::make_unique<InfoCommand>(); }

}  // namespace zel::program
