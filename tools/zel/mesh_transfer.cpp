#include "tools/zel/mesh_transfer.h"

#include "tools/zel/failure.h"
#include "tools/zel/mesh_file.h"

namespace zel::program {

void MeshTransfer::declare(CLI::App& app) {
  app.add_option("input", input_, "Mesh file, or - for standard input")->required();
  app.add_option("output", output_, "File to write, or - for standard output");
  app.add_option("--from", from_, "Read as this format, whatever the name says");
  app.add_option("--to", to_, "Write as this format, whatever the name says");
  app.add_flag("--in-place", inPlace_, "Replace the input instead of writing another file");
}

MeshDocument MeshTransfer::read(const Console& console) const {
  if (inPlace_ == !output_.empty() || (inPlace_ && input_ == "-")) {
    throw Failure(ExitCode::kUsage, input_, "wrong usage",
                  "name a file to write, or say --in-place for a file to replace");
  }
  return readMesh(input_, from_, console);
}

void MeshTransfer::write(const MeshDocument& mesh, const Console& console) const {
  const bool sameFormat = inPlace_ && to_.empty();
  writeMesh(mesh, inPlace_ ? input_ : output_, sameFormat ? from_ : to_, console);
}

}  // namespace zel::program
