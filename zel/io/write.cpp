#include "zel/io/write.h"

#include <ostream>

#include "zel/core/detail/memory_errors.h"
#include "zel/io/detail/codec.h"
#include "zel/io/detail/format_table.h"
#include "zel/io/output_file.h"
#include "zel/mesh/appearance.h"

namespace zel {

namespace {

class FileSink : public ByteSink {
 public:
  explicit FileSink(OutputFile& file) : file_(file) {}
  void write(const char* bytes, std::size_t size) override { file_.write({bytes, size}); }

 private:
  OutputFile& file_;
};

class StreamSink : public ByteSink {
 public:
  explicit StreamSink(std::ostream& stream) : stream_(stream) {}
  void write(const char* bytes, std::size_t size) override {
    stream_.write(bytes, static_cast<std::streamsize>(size));
    if (!stream_) {
      throw Error(ErrorCode::kUnwritable, "cannot write", "the stream failed", "stream");
    }
  }

 private:
  std::ostream& stream_;
};

const FileFormat& formatFor(const std::string& file, const WriteOptions& options) {
  const FileFormat* format =
      options.format.empty() ? formatOfName(file) : findFormat(options.format);
  if (format == nullptr) {
    throw Error(ErrorCode::kArgument, "cannot write",
                options.format.empty() ? "the name tells no known format"
                                       : "no format is called " + options.format,
                file);
  }
  if (options.ascii && !format->hasTextForm && format->name != "zel" && format->name != "obj") {
    throw Error(ErrorCode::kArgument, "cannot write", "the format has no text form", file);
  }
  return *format;
}

/// A live face may name a deleted node, which a document can tell but no other format can.
template <class Faces>
void refuseDeletedCorners(const Faces& faces, const NodeArr& nodes, const char* what,
                          const std::string& file) {
  const NodeCL* store = nodes.getCurrentItemPrtConstM();
  forEachFace(faces, [&](int slot, const auto& corners) {
    for (const int corner : corners) {
      if (corner < 0 || corner >= nodes.GetBoundM() || !isLive(store[corner])) {
        throw Error(ErrorCode::kArgument, "cannot write",
                    std::string(what) + " " + std::to_string(slot) + " names node " +
                        std::to_string(corner) + ", which is not part of the mesh",
                    file);
      }
    }
  });
}

void leaveOutLooks(const FileFormat& format, const Appearance& looks, Remarks& remarks) {
  const auto leaveOut = [&](bool isKept, std::size_t count, const char* what) {
    if (!isKept) {
      addRemark(remarks, Remark::Kind::kLeftOut, static_cast<long long>(count), "left out", what);
    }
  };
  leaveOut(format.keepsColours, looks.nodeColours.size(), "node colour");
  leaveOut(format.keepsMaterials, looks.materials.size(), "material");
}

void writeTo(ByteSink& sink, const FileFormat& format, const Mesh& mesh, const std::string& name,
             const WriteOptions& options, Remarks& remarks) {
  if (!format.keepsDeletedSlots) {
    refuseDeletedCorners(mesh.triangles, mesh.nodes, "triangle", name);
    refuseDeletedCorners(mesh.quads, mesh.nodes, "quad", name);
  }
  WriteJob job{mesh, sink, options, remarks, name};
  workOf(format).write(job);
  if (options.appearance != nullptr) {
    leaveOutLooks(format, *options.appearance, remarks);
  }
}

void handOver(Remarks& found, Remarks* remarks) {
  if (remarks != nullptr) {
    remarks->insert(remarks->end(), found.begin(), found.end());
  }
}

}  // namespace

void writeMesh(const Mesh& mesh, const std::string& file, const WriteOptions& options,
               Remarks* remarks) {
  tellingRefusedMemory([&] {
    WriteOptions known = options;
    known.format = formatFor(file, options).name;
    OutputFile output(file);
    writeMesh(mesh, output, known, remarks);
    output.commit();
  });
}

void writeMesh(const Mesh& mesh, OutputFile& output, const WriteOptions& options,
               Remarks* remarks) {
  tellingRefusedMemory([&] {
    const FileFormat& format = formatFor(output.name(), options);
    Remarks found;
    FileSink sink(output);
    writeTo(sink, format, mesh, output.name(), options, found);
    handOver(found, remarks);
  });
}

void writeMesh(const Mesh& mesh, std::ostream& stream, const WriteOptions& options,
               Remarks* remarks) {
  return tellingRefusedMemory([&] {
    const FileFormat& format = formatFor("stream", options);
    Remarks found;
    StreamSink sink(stream);
    writeTo(sink, format, mesh, "stream", options, found);
    stream.flush();
    if (!stream) {
      throw Error(ErrorCode::kUnwritable, "cannot write", "the stream failed", "stream");
    }
    handOver(found, remarks);
  });
}

std::string meshBytes(const Mesh& mesh, const WriteOptions& options, Remarks* remarks) {
  return tellingRefusedMemory([&] {
    const FileFormat& format = formatFor("memory", options);
    Remarks found;
    StringSink sink;
    writeTo(sink, format, mesh, "memory", options, found);
    handOver(found, remarks);
    return std::move(sink.text());
  });
}

}  // namespace zel
