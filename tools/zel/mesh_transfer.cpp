#include "tools/zel/mesh_transfer.h"

#include <memory>

#include "tools/zel/failure.h"
#include "tools/zel/format_options.h"
#include "tools/zel/mesh_file.h"

namespace zel::program {

void MeshTransfer::declare(Options& options) {
  options.argument("INPUT", input_, "Mesh file, or - for standard input").required();
  options.argument("OUTPUT", output_, "File to write, or - for standard output");
  declareFrom(options, from_);
  declareTo(options, to_);
  options.flag("--in-place", inPlace_, "Replace the input instead of writing another file");
}

Mesh MeshTransfer::read(const Console& console) const {
  if (inPlace_ == !output_.empty() || (inPlace_ && input_ == "-")) {
    throw misuse(input_, "name a file to write, or say --in-place for a file to replace");
  }
  if (isSameFile(input_, output_)) {
    throw misuse(output_, "this is the input; say --in-place to replace it");
  }
  return readMesh(input_, from_, console);
}

void MeshTransfer::expectOtherFile(const std::string& second) const {
  const bool areBothStandardOutput = second == "-" && output_ == "-";
  if (!second.empty() &&
      (areBothStandardOutput || isSameFile(second, input_) || isSameFile(second, output_))) {
    throw misuse(second, "the mesh itself has this name");
  }
}

void MeshTransfer::write(const Mesh& mesh, const Console& console) const {
  const bool sameFormat = inPlace_ && to_.empty();
  writeMesh(mesh, inPlace_ ? input_ : output_, sameFormat ? from_ : to_, console);
}

void MeshTransfer::write(const Mesh& mesh, const std::string& second,
                         const std::function<std::string()>& text, const Console& console) const {
  std::unique_ptr<OutputFile> output;
  if (!second.empty()) {
    output = outputNamed(second);
    output->write(text());
  }
  write(mesh, console);
  if (output != nullptr) {
    output->commit();
  }
}

}  // namespace zel::program
