#include "tools/zel/mesh_file.h"

#include <filesystem>
#include <iostream>

#include "tools/zel/failure.h"
#include "tools/zel/file_format.h"
#include "tools/zel/foreign/foreign_mesh.h"
#include "tools/zel/progress.h"
#include "zel/io/read.h"
#include "zel/io/write.h"

namespace zel::program {

namespace {

constexpr const char* kStandardInput = "standard input";

/// Tells what a file and a mesh do not share; what is only worth knowing, to those who want to
/// know.
void tell(const Console& console, const Remarks& remarks) {
  for (const Remark& remark : remarks) {
    remark.kind == Remark::Kind::kNote ? console.remark(remark.text) : console.note(remark.text);
  }
}

void nameFile(Remarks& remarks, const std::string& name) {
  for (Remark& remark : remarks) {
    remark.text.insert(0, name + ": ");
  }
}

Mesh readOwn(const std::string& file, const ReadOptions& options, Remarks& remarks) {
  return file == "-" ? zel::readMesh(std::cin, options, &remarks, kStandardInput)
                     : zel::readMesh(file, options, &remarks);
}

}  // namespace

Mesh readMesh(const std::string& file, const std::string& format, const Console& console,
              Appearance* looks) {
  const std::string name = file == "-" ? kStandardInput : file;
  const KnownFormat* const known = inputFormat(file, format);
  Remarks remarks;
  Mesh mesh;
  if (known != nullptr && known->own == nullptr) {
    mesh = readForeign(InputFile(file), known->name, remarks);
  } else {
    JobProgress progress(console, "reading " + name);
    ReadOptions options{.progress = progress.told()};
    options.appearance = looks;
    options.format = known == nullptr ? "" : known->name;
    mesh = readOwn(file, options, remarks);
  }
  nameFile(remarks, name);
  tell(console, remarks);
  console.remark("read " + name + (known == nullptr ? "" : " (" + known->name + ")") + ": " +
                 std::to_string(mesh.nodes.GetAvailableNumM()) + " nodes, " +
                 std::to_string(mesh.triangles.GetAvailableNumM()) + " triangles, " +
                 std::to_string(mesh.quads.GetAvailableNumM()) + " quads");
  return mesh;
}

void writeMesh(const Mesh& mesh, const std::string& file, const MeshWriting& how,
               const Console& console) {
  const KnownFormat& known = outputFormat(file == "-" ? "-.zel" : file, how.format);
  const std::unique_ptr<OutputFile> output = outputNamed(file);
  Remarks remarks;
  {
    JobProgress progress(console, "writing " + output->name());
    zel::writeMesh(mesh, *output,
                   {.format = known.name,
                    .ascii = how.ascii,
                    .appearance = how.looks,
                    .progress = progress.told()},
                   &remarks);
  }
  // Once the file has appeared, nothing may fail for want of memory.
  nameFile(remarks, output->name());
  const std::string done = "wrote " + output->name() + " (" + known.name +
                           "): " + std::to_string(output->size()) + " bytes";
  if (how.beforeItAppears) {
    how.beforeItAppears();
  }
  output->commit();
  tell(console, remarks);
  console.remark(done);
}

std::unique_ptr<OutputFile> outputNamed(const std::string& file) {
  return file == "-" ? std::make_unique<OutputFile>(stdout, "standard output")
                     : std::make_unique<OutputFile>(file);
}

bool isDevice(const std::string& file) {
  std::error_code error;
  return file == "-" ||
         (std::filesystem::exists(file, error) && !std::filesystem::is_regular_file(file, error));
}

bool isSameFile(const std::string& a, const std::string& b) {
  namespace fs = std::filesystem;
  std::error_code error;
  if (b == "-" || isDevice(a)) {
    return false;
  }
  const auto placeOf = [&](const std::string& name) {
    return fs::weakly_canonical(fs::absolute(name, error), error);
  };
  return placeOf(a) == placeOf(b);
}

}  // namespace zel::program
