#include "zel/io/read.h"

#include <istream>
#include <utility>

#include "zel/algorithms/weld.h"
#include "zel/core/detail/memory_errors.h"
#include "zel/io/detail/codec.h"
#include "zel/io/detail/format_table.h"
#include "zel/mesh/appearance.h"

namespace zel {

namespace {

const FileFormat& formatFor(Input& input, const ReadOptions& options, bool hasFileName) {
  if (!options.format.empty()) {
    if (const FileFormat* format = findFormat(options.format)) {
      return *format;
    }
    throw Error(ErrorCode::kArgument, "cannot read", "no format is called " + options.format,
                input.name());
  }
  const FileFormat* format = hasFileName ? formatOfName(input.name()) : nullptr;
  if (format == nullptr) {
    const std::string_view start = input.peek(kFormatProbe);
    format = formatOfContent(start, start.size() < kFormatProbe);
  }
  if (format == nullptr) {
    throw input.fault(hasFileName ? "neither name nor content tells a known format"
                                  : "the content tells no known format");
  }
  return *format;
}

Mesh readFrom(Input& input, const ReadOptions& options, Remarks* remarks, bool hasFileName) {
  Remarks found;
  Appearance looks;
  ReadJob job{input, options, found, options.appearance != nullptr ? &looks : nullptr};
  Mesh mesh = workOf(formatFor(input, options, hasFileName)).read(job);
  if (options.weld) {
    // What a reader has welded already does not change any more.
    const WeldReport report = weld(mesh, {.tolerance = *options.weld,
                                          .faceMaps = options.appearance != nullptr,
                                          .threads = options.threads});
    looks.followNodes(report.newIndexOf);
    looks.followFaces(report.triangleOrigins, report.quadOrigins);
  }
  if (options.appearance != nullptr) {
    *options.appearance = std::move(looks);
  }
  if (remarks != nullptr) {
    remarks->insert(remarks->end(), found.begin(), found.end());
  }
  return mesh;
}

}  // namespace

Mesh readMesh(const std::string& file, const ReadOptions& options, Remarks* remarks) {
  return tellingRefusedMemory([&] {
    Input input = Input::ofFile(file);
    return readFrom(input, options, remarks, true);
  });
}

Mesh readMesh(std::span<const std::byte> bytes, const ReadOptions& options, Remarks* remarks,
              const std::string& name) {
  return tellingRefusedMemory([&] {
    Input input = Input::ofBytes(bytes, name);
    return readFrom(input, options, remarks, false);
  });
}

Mesh readMesh(std::istream& stream, const ReadOptions& options, Remarks* remarks,
              const std::string& name) {
  return tellingRefusedMemory([&] {
    Input input = Input::ofStream(stream, name);
    return readFrom(input, options, remarks, false);
  });
}

}  // namespace zel
