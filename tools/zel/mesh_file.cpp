#include "tools/zel/mesh_file.h"

#include "tools/zel/failure.h"
#include "tools/zel/file_format.h"
#include "tools/zel/foreign/assimp_file.h"
#include "tools/zel/obj_file.h"
#include "tools/zel/zel_document.h"

namespace zel::program {

namespace {

/// Other formats know no deleted slots, so a face that uses one cannot be said in them.
void refuseDeletedCorners(const Mesh& mesh, const std::string& file) {
  const auto check = [&](const char* what, int slot, const auto& corners) {
    for (const int corner : corners) {
      if (!isLive(*mesh.nodes.GetItemPM(corner))) {
        throw unwritable(file, std::string(what) + " " + std::to_string(slot) +
                                   " names the deleted node " + std::to_string(corner));
      }
    }
  };
  forEachFace(mesh.triangles,
              [&](int slot, const auto& corners) { check("triangle", slot, corners); });
  forEachFace(mesh.quads, [&](int slot, const auto& corners) { check("quad", slot, corners); });
}

}  // namespace

Mesh readMesh(const std::string& file, const std::string& format, const Console& console) {
  const std::string known = file == "-" && format.empty() ? "zel" : inputFormat(file, format);
  const InputFile input(file);
  Mesh mesh = known == "zel"   ? readZelDocument(input, console)
              : known == "obj" ? readObj(input, console)
                               : readThroughAssimp(input, known);
  console.remark("read " + input.name() + " (" + known +
                 "): " + std::to_string(mesh.nodes.GetAvailableNumM()) + " nodes, " +
                 std::to_string(mesh.triangles.GetAvailableNumM()) + " triangles, " +
                 std::to_string(mesh.quads.GetAvailableNumM()) + " quads");
  return mesh;
}

void writeMesh(const Mesh& mesh, const std::string& file, const std::string& format,
               const Console& console) {
  const std::string known = file == "-" && format.empty() ? "zel" : outputFormat(file, format);
  OutputFile output(file);
  if (known == "zel") {
    writeZelDocument(mesh, output, console);
  } else {
    refuseDeletedCorners(mesh, output.name());
    known == "obj" ? writeObj(mesh, output) : writeThroughAssimp(mesh, output, known);
  }
  const long long size = output.size();
  output.commit();
  console.remark("wrote " + output.name() + " (" + known + "): " + std::to_string(size) + " bytes");
}

}  // namespace zel::program
