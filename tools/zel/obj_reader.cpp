#include <algorithm>
#include <array>
#include <atomic>
#include <string>
#include <string_view>
#include <vector>

#include "tools/zel/failure.h"
#include "tools/zel/obj_file.h"
#include "tools/zel/progress.h"
#include "tools/zel/word_scanner.h"

namespace zel::program {

namespace {

/// One corner of a face: places in the three lists, kNoIndex where the file gives none.
struct Corner {
  int vertex = kNoIndex;
  int texture = kNoIndex;
  int normal = kNoIndex;
};

class ObjReader {
 public:
  ObjReader(const InputFile& input, std::string_view text)
      : input_(input), scanner_(text), size_(text.size()) {}

  Mesh read() {
    for (; !scanner_.atEnd(); scanner_.nextLine()) {
      done_.store(scanner_.position(), std::memory_order_relaxed);
      readStatement(scanner_.word());
    }
    return std::move(mesh_);
  }

  [[nodiscard]] double fraction() const {
    return static_cast<double>(done_.load(std::memory_order_relaxed)) /
           static_cast<double>(size_ + 1);
  }

 private:
  void readStatement(std::string_view keyword) {
    if (keyword == "v") {
      mesh_.addNode(readNumbers<3>());
    } else if (keyword == "vt") {
      textureCoords_.push_back(readNumbers<2>());
    } else if (keyword == "vn") {
      normals_.push_back(readNumbers<3>());
    } else if (keyword == "f") {
      readFace();
    }
  }

  template <std::size_t N>
  std::array<float, N> readNumbers() {
    std::array<float, N> numbers{};
    for (float& number : numbers) {
      if (!WordScanner::parse(scanner_.word(), number)) {
        throw fault("a number is missing or out of range");
      }
    }
    return numbers;
  }

  void readFace() {
    corners_.clear();
    for (std::string_view word = scanner_.word(); !word.empty(); word = scanner_.word()) {
      corners_.push_back(readCorner(word));
    }
    if (corners_.size() < 3) {
      throw fault("a face has fewer than three corners");
    }
    if (corners_.size() == 4) {
      mesh_.addQuad(
          {corners_[0].vertex, corners_[1].vertex, corners_[2].vertex, corners_[3].vertex});
    } else {
      for (std::size_t k = 2; k < corners_.size(); ++k) {
        addTriangle(corners_[0], corners_[k - 1], corners_[k]);
      }
    }
    for (const Corner& corner : corners_) {
      giveNormal(corner);
    }
  }

  void addTriangle(const Corner& a, const Corner& b, const Corner& c) {
    const int slot = mesh_.addTriangle({a.vertex, b.vertex, c.vertex});
    int position = 0;
    for (const Corner* const corner : {&a, &b, &c}) {
      if (corner->texture != kNoIndex) {
        setTextureCoord(mesh_.triangleTexture, 3 * slot + position,
                        textureCoords_[static_cast<std::size_t>(corner->texture)]);
      }
      ++position;
    }
  }

  void giveNormal(const Corner& corner) {
    if (corner.normal != kNoIndex && normalOf(mesh_.nodes, corner.vertex) == Point{}) {
      mesh_.nodes.SetNodeNormM(corner.vertex,
                               normals_[static_cast<std::size_t>(corner.normal)].data());
    }
  }

  /// "v", "v/vt", "v//vn" or "v/vt/vn".
  Corner readCorner(std::string_view word) {
    const std::array<std::size_t, 3> known = {static_cast<std::size_t>(mesh_.nodes.GetBoundM()),
                                              textureCoords_.size(), normals_.size()};
    std::array<int, 3> places = {kNoIndex, kNoIndex, kNoIndex};
    for (std::size_t part = 0; part < places.size(); ++part) {
      const std::string_view number = word.substr(0, word.find('/'));
      if (part == 0 || !number.empty()) {
        places[part] = readPlace(number, known[part]);
      }
      if (number.size() == word.size()) {
        break;
      }
      word.remove_prefix(number.size() + 1);
    }
    return {places[0], places[1], places[2]};
  }

  /// A place counts from 1, a negative one back from the end of what has been read so far.
  int readPlace(std::string_view word, std::size_t known) {
    long long place = 0;
    if (!WordScanner::parse(word, place)) {
      throw fault("a corner is no number");
    }
    const auto count = static_cast<long long>(known);
    const long long index = place < 0 ? count + place : place - 1;
    if (index < 0 || index >= count) {
      throw fault("a corner names number " + std::string(word) + " of " + std::to_string(count));
    }
    return static_cast<int>(index);
  }

  [[nodiscard]] Failure fault(const std::string& what) const {
    return unreadable(input_.name(), "line " + std::to_string(scanner_.line()) + ": " + what);
  }

  const InputFile& input_;
  WordScanner scanner_;
  std::size_t size_;
  Mesh mesh_;
  std::vector<TextureCoord> textureCoords_;
  std::vector<Point> normals_;
  std::vector<Corner> corners_;
  std::atomic<std::size_t> done_ = 0;
};

}  // namespace

Mesh readObj(const InputFile& input, const Console& console) {
  const std::string text = input.readAll();
  // Binary rubbish has no statement at all and would pass for an empty mesh.
  if (text.find('\0') != std::string::npos) {
    throw unreadable(input.name(), "this is no text");
  }
  ObjReader reader(input, text);
  const Progress progress(console, "reading " + input.name(), [&] { return reader.fraction(); });
  return reader.read();
}

}  // namespace zel::program
