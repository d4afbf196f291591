#include "tools/zel/mesh_transfer.h"

#include <memory>

#include "tools/zel/failure.h"
#include "tools/zel/file_format.h"
#include "tools/zel/format_options.h"
#include "tools/zel/mesh_file.h"

namespace zel::program {

void MeshTransfer::declare(Options& options, Welding::When welds) {
  options.argument("INPUT", input_, "Mesh file, or - for standard input").required();
  options.argument("OUTPUT", output_, "File to write, or - for standard output");
  declareFrom(options, from_);
  declareTo(options, to_);
  options.flag("--ascii", ascii_, "Write the text form of PLY or STL");
  options.flag("--in-place", inPlace_, "Replace the input instead of writing another file");
  welding_.declare(options, welds);
}

Mesh MeshTransfer::read(const Console& console) {
  if (inPlace_ == !output_.empty() || (inPlace_ && input_ == "-")) {
    throw misuse(input_, "name a file to write, or say --in-place for a file to replace");
  }
  if (isSameFile(input_, output_)) {
    throw misuse(output_, "this is the input; say --in-place to replace it");
  }
  looks_ = {};
  Mesh mesh = readMesh(input_, from_, console, &looks_);
  welded_ = welding_.apply(mesh, input_, console, &looks_);
  return mesh;
}

void MeshTransfer::expectOtherFile(const std::string& second) const {
  const bool areBothStandardOutput = second == "-" && output_ == "-";
  if (!second.empty() &&
      (areBothStandardOutput || isSameFile(second, input_) || isSameFile(second, output_))) {
    throw misuse(second, "the mesh itself has this name");
  }
}

void MeshTransfer::write(const Mesh& mesh, const Console& console) const {
  write(mesh, std::function<void()>(), console);
}

void MeshTransfer::write(const Mesh& mesh, const std::function<void()>& beforeItAppears,
                         const Console& console) const {
  const bool sameFormat = inPlace_ && to_.empty();
  const std::string& target = inPlace_ ? input_ : output_;
  const std::string& format = sameFormat ? from_ : to_;
  std::string note;
  if (welded_ && !(target == "-" && format.empty()) && outputFormat(target, format).name == "stl") {
    note = target +
           ": an STL file cannot hold a welded mesh: each triangle is written, and read "
           "back, with nodes of its own";
  }
  writeMesh(mesh, target, {format, ascii_, beforeItAppears, &looks_}, console);
  if (!note.empty()) {
    console.note(note);
  }
}

void MeshTransfer::write(const Mesh& mesh, const std::string& second,
                         const std::function<std::string()>& text, const Console& console) const {
  std::unique_ptr<OutputFile> output;
  if (!second.empty()) {
    output = outputNamed(second);
    output->write(text());
  }
  // A device may refuse the text yet, so it comes before the mesh; a file that is written whole
  // only has to be given its name.
  const bool isFirst = isDevice(second);
  const auto commitText = [&output] {
    if (output != nullptr) {
      output->commit();
      output.reset();
    }
  };
  write(mesh, isFirst ? std::function<void()>(commitText) : nullptr, console);
  commitText();
}

}  // namespace zel::program
