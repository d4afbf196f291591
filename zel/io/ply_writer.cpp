// PLY, binary (least significant byte first) or text.

#include <bit>
#include <cstdint>
#include <string_view>

#include "zel/core/detail/progress_steps.h"
#include "zel/io/detail/codec.h"
#include "zel/io/detail/mesh_contents.h"

namespace zel {

namespace {

static_assert(std::endian::native == std::endian::little, "numbers are written as they lie");

class PlyWriter {
 public:
  explicit PlyWriter(WriteJob& job)
      : job_(job),
        text_(job.sink),
        contents_(job.mesh),
        numbers_(job.mesh.nodes),
        steps_(job.options.progress, contents_.nodes + contents_.triangles + contents_.quads),
        hasNormals_(contents_.nodeNormals > 0),
        hasTexture_(contents_.textureCoords > 0),
        hasColours_(job.options.appearance != nullptr &&
                    !job.options.appearance->nodeColours.empty()) {}

  void write() {
    writeHeader();
    writeNodes();
    writeFaces(job_.mesh.triangles, job_.mesh.triangleTexture);
    writeFaces(job_.mesh.quads, job_.mesh.quadTexture);
    text_.flush();
  }

 private:
  void writeHeader() {
    text_.add("ply\nformat ").add(job_.options.ascii ? "ascii" : "binary_little_endian");
    text_.add(" 1.0\nelement vertex ").addInt(static_cast<long long>(contents_.nodes));
    text_.add("\nproperty float x\nproperty float y\nproperty float z\n");
    if (hasNormals_) {
      text_.add("property float nx\nproperty float ny\nproperty float nz\n");
    }
    if (hasColours_) {
      text_.add("property uchar red\nproperty uchar green\nproperty uchar blue\n");
      text_.add("property uchar alpha\n");
    }
    text_.add("element face ");
    text_.addInt(static_cast<long long>(contents_.triangles + contents_.quads));
    text_.add("\nproperty list uchar int vertex_indices\n");
    if (hasTexture_) {
      text_.add("property list uchar float texcoord\n");
    }
    text_.add("end_header\n");
  }

  void writeNodes() {
    const NodeCL* store = job_.mesh.nodes.getCurrentItemPrtConstM();
    for (int slot = 0; slot < static_cast<int>(numbers_.ofSlot.size()); ++slot) {
      if (!isLive(store[slot])) {
        continue;
      }
      writeReals(store[slot].point(), 3);
      if (hasNormals_) {
        writeReals(store[slot].normal(), 3);
      }
      if (hasColours_) {
        for (const std::uint8_t part : job_.options.appearance->colourOf(slot)) {
          writeByte(part);
        }
      }
      endLine();
      steps_.advance();
    }
  }

  template <class Faces>
  void writeFaces(const Faces& faces, const Point2DArr& coords) {
    forEachFace(faces, [&](int slot, const auto& corners) {
      const auto count = static_cast<std::uint8_t>(corners.size());
      writeByte(count);
      for (const int corner : corners) {
        writeInt(numbers_.ofSlot[static_cast<std::size_t>(corner)]);
      }
      if (hasTexture_) {
        writeTexture(coords, slot * count, count);
      }
      endLine();
      steps_.advance();
    });
  }
  /// A face of which no corner has a coordinate gets an empty list, a corner without one (0, 0).
  void writeTexture(const Point2DArr& coords, int firstCorner, std::uint8_t corners) {
    std::array<Float2, 4> values{};
    bool hasOne = false;
    for (int k = 0; k < corners; ++k) {
      hasOne =
          textureCoordOf(coords, firstCorner + k, values[static_cast<std::size_t>(k)]) || hasOne;
    }
    const int count = hasOne ? 2 * corners : 0;
    writeByte(static_cast<std::uint8_t>(count));
    writeReals(values[0].data(), count);
  }

  // --- single numbers --------------------------------------------------------------------------

  void gap() {
    if (!isLineStart_) {
      text_.add(' ');
    }
    isLineStart_ = false;
  }
  void writeByte(std::uint8_t value) {
    if (job_.options.ascii) {
      gap();
      text_.addInt(value);
    } else {
      text_.addRaw(value);
    }
  }
  void writeInt(int value) {
    if (job_.options.ascii) {
      gap();
      text_.addInt(value);
    } else {
      text_.addRaw(value);
    }
  }
  void writeReals(const float* values, int count) {
    for (int k = 0; k < count; ++k) {
      if (job_.options.ascii) {
        gap();
        text_.addReal(values[k]);
      } else {
        text_.addRaw(values[k]);
      }
    }
  }
  void endLine() {
    if (job_.options.ascii) {
      text_.add('\n');
      isLineStart_ = true;
    }
  }

  WriteJob& job_;
  TextBuffer text_;
  MeshContents contents_;
  NodeNumbers numbers_;
  ProgressSteps steps_;
  bool hasNormals_;
  bool hasTexture_;
  bool hasColours_;
  bool isLineStart_ = true;
};

}  // namespace

void writePly(WriteJob& job) { PlyWriter(job).write(); }

}  // namespace zel
