// Wavefront OBJ; every number is the shortest text that reads back to the same float.

#include <array>
#include <string>
#include <string_view>

#include "zel/core/detail/progress_steps.h"
#include "zel/io/detail/codec.h"
#include "zel/io/detail/mesh_contents.h"

namespace zel {

namespace {

class ObjWriter {
 public:
  explicit ObjWriter(WriteJob& job)
      : job_(job),
        text_(job.sink),
        contents_(job.mesh),
        numbers_(job.mesh.nodes),
        steps_(job.options.progress, contents_.nodes + 2 * (contents_.triangles + contents_.quads)),
        hasNormals_(contents_.nodeNormals > 0),
        hasColours_(job.options.appearance != nullptr &&
                    !job.options.appearance->nodeColours.empty()) {}

  void write() {
    const Mesh& mesh = job_.mesh;
    writeNodes();
    writeTexture(mesh.triangles, mesh.triangleTexture);
    writeTexture(mesh.quads, mesh.quadTexture);
    writeFaces(mesh.triangles, mesh.triangleTexture);
    writeFaces(mesh.quads, mesh.quadTexture);
    text_.flush();
    addRemark(job_.remarks, Remark::Kind::kLeftOut, seeThrough_, "left out", "alpha value",
              "the format holds no opacity");
  }

 private:
  void writeNodes() {
    constexpr float kFull = 255.0F;
    const NodeCL* store = job_.mesh.nodes.getCurrentItemPrtConstM();
    const auto slots = static_cast<int>(numbers_.ofSlot.size());
    for (int slot = 0; slot < slots; ++slot) {
      if (isLive(store[slot])) {
        text_.add('v');
        writeReals(store[slot].point(), 3);
        if (hasColours_) {
          const Colour colour = job_.options.appearance->colourOf(slot);
          const float parts[] = {static_cast<float>(colour[0]) / kFull,
                                 static_cast<float>(colour[1]) / kFull,
                                 static_cast<float>(colour[2]) / kFull};
          writeReals(parts, 3);
          seeThrough_ += colour[3] == 255 ? 0 : 1;
        }
        text_.add('\n');
        steps_.advance();
      }
    }
    for (int slot = 0; hasNormals_ && slot < slots; ++slot) {
      if (isLive(store[slot])) {
        text_.add("vn");
        writeReals(store[slot].normal(), 3);
        text_.add('\n');
      }
    }
  }
  void writeReals(const float* values, int count) {
    for (int k = 0; k < count; ++k) {
      text_.add(' ').addReal(values[k]);
    }
  }

  template <class Faces>
  void writeTexture(const Faces& faces, const Point2DArr& coords) {
    forEachFace(faces, [&](int slot, const auto& corners) {
      int corner = slot * static_cast<int>(corners.size());
      for (std::size_t k = 0; k < corners.size(); ++k) {
        Float2 coord{};
        if (textureCoordOf(coords, corner++, coord)) {
          text_.add("vt");
          writeReals(coord.data(), 2);
          text_.add('\n');
        }
      }
      steps_.advance();
    });
  }

  template <class Faces>
  void writeFaces(const Faces& faces, const Point2DArr& coords) {
    forEachFace(faces, [&](int slot, const auto& corners) {
      int corner = slot * static_cast<int>(corners.size());
      text_.add('f');
      for (const int node : corners) {
        writeCorner(numbers_.ofSlot[static_cast<std::size_t>(node)] + 1, coords, corner++);
      }
      text_.add('\n');
      steps_.advance();
    });
  }
  void writeCorner(int node, const Point2DArr& coords, int corner) {
    Float2 coord{};
    const bool isTextured = textureCoordOf(coords, corner, coord);
    text_.add(' ').addInt(node);
    if (isTextured) {
      text_.add('/').addInt(++coordsNamed_);
    }
    if (hasNormals_) {
      text_.add(isTextured ? "/" : "//").addInt(node);
    }
  }

  WriteJob& job_;
  TextBuffer text_;
  MeshContents contents_;
  NodeNumbers numbers_;
  ProgressSteps steps_;
  bool hasNormals_;
  bool hasColours_;
  long long seeThrough_ = 0;  // nodes whose colour is not opaque
  long long coordsNamed_ = 0;
};

}  // namespace

void writeObj(WriteJob& job) { ObjWriter(job).write(); }

}  // namespace zel
