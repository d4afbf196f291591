#include <array>
#include <charconv>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tools/zel/failure.h"
#include "tools/zel/obj_file.h"

namespace zel::program {

namespace {

/// Collects text and hands it on in large pieces.
class TextSink {
 public:
  explicit TextSink(const OutputFile& output) : output_(output) {}

  TextSink& operator<<(std::string_view text) {
    buffer_ += text;
    if (buffer_.size() > kPiece) {
      flush();
    }
    return *this;
  }
  /// The shortest text that reads back to the same value.
  template <class Number>
  requires std::is_arithmetic_v<Number> TextSink& operator<<(Number value) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return *this << std::string_view(text.data(), end);
  }
  void flush() {
    output_.write(buffer_);
    buffer_.clear();
  }

 private:
  static constexpr std::size_t kPiece = std::size_t{1} << 16;
  const OutputFile& output_;
  std::string buffer_;
};

void writeVector(TextSink& sink, std::string_view keyword, std::span<const float> numbers) {
  sink << keyword;
  for (const float number : numbers) {
    sink << " " << number;
  }
  sink << "\n";
}

class ObjWriter {
 public:
  ObjWriter(const Mesh& mesh, const OutputFile& output)
      : mesh_(mesh), sink_(output), numbering_(mesh.nodes) {}

  void write() {
    writeNodes();
    writeTextureCoords();
    forEachFace(mesh_.triangles,
                [this](int slot, const auto& corners) { writeFace(slot, corners); });
    forEachFace(mesh_.quads, [this](int, const auto& corners) { writeFace(kNoIndex, corners); });
    sink_.flush();
  }

 private:
  void writeNodes() {
    for (const int slot : numbering_.slots) {
      writeVector(sink_, "v", pointOf(mesh_.nodes, slot));
      hasNormals_ = hasNormals_ || normalOf(mesh_.nodes, slot) != Point{};
    }
    if (hasNormals_) {
      for (const int slot : numbering_.slots) {
        writeVector(sink_, "vn", normalOf(mesh_.nodes, slot));
      }
    }
  }

  void writeTextureCoords() {
    forEachFace(mesh_.triangles, [this](int slot, const auto&) {
      TextureCoord coord{};
      for (int corner = 0; corner < 3; ++corner) {
        if (textureCoordOf(mesh_.triangleTexture, 3 * slot + corner, coord)) {
          writeVector(sink_, "vt", coord);
        }
      }
    });
  }

  template <std::size_t N>
  void writeFace(int triangle, const std::array<int, N>& corners) {
    sink_ << "f";
    for (std::size_t k = 0; k < N; ++k) {
      const int node = numbering_.numbers[static_cast<std::size_t>(corners[k])] + 1;
      TextureCoord coord{};
      const bool textured =
          triangle != kNoIndex &&
          textureCoordOf(mesh_.triangleTexture, 3 * triangle + static_cast<int>(k), coord);
      sink_ << " " << node;
      if (textured) {
        sink_ << "/" << ++textureCoordsNamed_;
      }
      if (hasNormals_) {
        sink_ << (textured ? "/" : "//") << node;
      }
    }
    sink_ << "\n";
  }

  const Mesh& mesh_;
  TextSink sink_;
  NodeNumbering numbering_;
  bool hasNormals_ = false;
  int textureCoordsNamed_ = 0;
};

}  // namespace

void writeObj(const Mesh& mesh, const OutputFile& output) { ObjWriter(mesh, output).write(); }

}  // namespace zel::program
