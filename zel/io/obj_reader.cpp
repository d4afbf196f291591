// Wavefront OBJ. Text that others write in many ways: byte-order marks, any line ends, joined
// lines, faces before their points, places that count backwards.

#include <array>
#include <cmath>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "zel/core/detail/progress_steps.h"
#include "zel/io/detail/codec.h"
#include "zel/io/detail/face_builder.h"
#include "zel/io/detail/lost_digits.h"
#include "zel/io/detail/material_file.h"
#include "zel/io/detail/text_cursor.h"

namespace zel {

namespace {

/// The lists that the corners of faces name, in the order of the parts of a corner.
enum Part : std::size_t { kPoint, kTexture, kNormal, kParts };
using PartCounts = std::array<int, kParts>;

class ObjReader {
 public:
  ObjReader(ReadJob& job, std::string_view text)
      : job_(job),
        all_(text),
        text_(text),
        steps_(job.options.progress, text.size()),
        faces_(mesh_, job.appearance) {}

  Mesh read() {
    text_.take("\xEF\xBB\xBF");
    try {
      readStatements();
    } catch (const Error& error) {
      const bool isLastLine = text_.rest().find_first_of("\r\n") == std::string_view::npos;
      if (error.code() != ErrorCode::kUnreadable || !isLastLine) {
        throw;
      }
      remark(Remark::Kind::kDamaged, "the last line is cut off and was left out");
    }
    readPostponedFaces();
    if (known_ == 0 && unknown_ > 0) {
      throw job_.input.fault("there is no statement of an OBJ file");
    }
    tell();
    return std::move(mesh_);
  }

 private:
  // --- statements ------------------------------------------------------------------------------

  void readStatements() {
    for (; !text_.atEnd(); text_.takeLineEnd()) {
      steps_.reach(text_.position());
      text_.skipBlanksAndJoins();
      if (!text_.atLineEnd() && text_.peek() != '#') {
        readStatement();
      }
      text_.takeLine();
      if (text_.atEnd() && !all_.empty() && !TextCursor::isLineEnd(all_.back())) {
        remark(Remark::Kind::kNote, "the last line has no line end: the file may be cut off");
      }
    }
  }

  void readStatement() {
    const TextCursor start = text_;
    const std::string_view keyword = text_.takeWord();
    ++known_;
    if (keyword == "v") {
      readPoint();
    } else if (keyword == "f" || keyword == "fo") {
      readFace(start);
    } else if (keyword == "vt") {
      readTextureCoord();
    } else if (keyword == "vn") {
      readNormal();
    } else if (keyword == "usemtl" || keyword == "mtllib") {
      readMaterialStatement(keyword);
    } else {
      skipStatement(keyword);
    }
  }

  /// Skips what a mesh does not hold, joined lines included.
  void skipStatement(std::string_view keyword) {
    if (keyword == "g" || keyword == "o" || keyword == "s" || keyword == "mg") {
      ++groups_;
    } else if (keyword == "l") {
      ++lines_;
    } else if (keyword == "p") {
      ++points_;
    } else {
      --known_;
      ++unknown_;
    }
    skipRest();
  }
  void skipRest() {
    for (text_.skipBlanksAndJoins(); !text_.atLineEnd(); text_.skipBlanksAndJoins()) {
      if (text_.takeWord().empty()) {
        return;
      }
    }
  }

  /// Numbers up to the end of the statement. @return how many.
  template <std::size_t kMost>
  std::size_t takeNumbers(std::array<float, kMost>& numbers, std::size_t least) {
    std::size_t count = 0;
    for (; count < kMost; ++count) {
      text_.skipBlanksAndJoins();
      if (text_.atLineEnd() || text_.peek() == '#') {
        break;
      }
      if (!text_.takeReal(numbers[count]) || !text_.atWordEnd()) {
        throw fault("a number is malformed or out of range");
      }
    }
    text_.skipBlanksAndJoins();
    if (count < least || !(text_.atLineEnd() || text_.peek() == '#')) {
      throw fault(count < least ? "a number is missing"
                                : "there are more numbers than there may be");
    }
    return count;
  }

  void readPoint() {
    std::array<float, 7> numbers{};  // x y z, then perhaps a weight, then perhaps a colour
    const std::size_t count = takeNumbers(numbers, 3);
    NodeCL node(kTagAvailable);
    node.SetPntM(numbers.data());
    const int slot = append(mesh_.nodes, node);
    ++counts_[kPoint];
    if ((count == 4 || count == 7) && numbers[3] != 1.0F) {
      ++weights_;
    }
    if (count >= 6) {
      giveColour(slot, numbers.data() + (count - 3));
    }
  }
  void giveColour(int slot, const float* parts) {
    if (job_.appearance == nullptr) {
      ++colours_;
      return;
    }
    constexpr float kFull = 255.0F;
    Colour colour = Appearance::kNoColour;
    for (std::size_t k = 0; k < 3; ++k) {
      const float part = parts[k] > 0.0F ? std::min(parts[k], 1.0F) : 0.0F;
      colour[k] = static_cast<std::uint8_t>(std::lround(part * kFull));
    }
    job_.appearance->setColour(slot, colour);
  }

  void readTextureCoord() {
    std::array<float, 3> numbers{};
    takeNumbers(numbers, 1);
    depths_ += numbers[2] != 0.0F ? 1 : 0;
    textureCoords_.push_back({numbers[0], numbers[1]});
    countOneMore(kTexture);
  }

  void readNormal() {
    std::array<float, 3> numbers{};
    takeNumbers(numbers, 3);
    normals_.push_back(numbers);
    countOneMore(kNormal);
  }
  void countOneMore(Part part) {
    if (counts_[part] == std::numeric_limits<int>::max()) {
      throw Error(ErrorCode::kExhausted, "cannot read",
                  "more than 2147483647 texture coordinates or normals", job_.input.name());
    }
    ++counts_[part];
  }

  void readMaterialStatement(std::string_view keyword) {
    text_.skipBlanksAndJoins();
    std::string_view name = text_.takeLine();
    while (!name.empty() && TextCursor::isBlank(name.back())) {
      name.remove_suffix(1);
    }
    if (job_.appearance == nullptr) {
      ++materials_;
    } else if (keyword == "mtllib") {
      libraries_.emplace_back(name);
    } else {
      const auto [place, isNew] = materialPlaces_.try_emplace(std::string(name), 0);
      if (isNew) {
        place->second = materialNamed(*job_.appearance, place->first);
      }
      material_ = place->second;
    }
  }

  // --- faces -----------------------------------------------------------------------------------

  /// A face that names what has not come yet is put off to the end.
  struct PostponedFace {
    TextCursor start;
    PartCounts counts;
    int material;
  };

  void readFace(const TextCursor& start) {
    const bool isWhole = takeCorners(counts_, false);
    if (isWhole) {
      addFace(material_);
    } else {
      postponed_.push_back({start, counts_, material_});
      skipRest();
    }
  }

  void readPostponedFaces() {
    for (const PostponedFace& face : postponed_) {
      text_ = face.start;
      text_.takeWord();
      takeCorners(face.counts, true);
      addFace(face.material);
    }
  }

  /// Reads the corners of a face. @param known how much of each list stands before the face.
  /// @param isLast whether nothing can come any more.
  /// @return false when a corner names something that may still come.
  bool takeCorners(const PartCounts& known, bool isLast) {
    corners_.clear();
    cornerTexture_.clear();
    cornerNormals_.clear();
    hasTexture_ = false;
    missingHere_ = 0;
    for (;;) {
      text_.skipBlanksAndJoins();
      if (text_.atLineEnd() || text_.peek() == '#') {
        break;
      }
      if (!takeCorner(known, isLast)) {
        return false;
      }
    }
    if (corners_.size() < 3) {
      throw fault("a face has fewer than three corners");
    }
    return true;
  }

  /// "v", "v/vt", "v//vn" or "v/vt/vn".
  bool takeCorner(const PartCounts& known, bool isLast) {
    std::array<int, kParts> places = {kNoIndex, kNoIndex, kNoIndex};
    for (std::size_t part = kPoint; part < kParts; ++part) {
      const bool isEmpty = part > kPoint && (text_.peek() == '/' || text_.atWordEnd());
      if (!isEmpty && !takePlace(static_cast<Part>(part), known, isLast, places[part])) {
        return false;
      }
      if (!text_.take('/')) {
        break;
      }
    }
    if (!text_.atWordEnd()) {
      throw fault("a corner is malformed");
    }
    corners_.push_back(places[kPoint]);
    const bool hasTexture = places[kTexture] != kNoIndex;
    hasTexture_ = hasTexture_ || hasTexture;
    cornerTexture_.push_back(hasTexture ? textureCoords_[static_cast<std::size_t>(places[kTexture])]
                                        : kNoTexture);
    cornerNormals_.push_back(places[kNormal]);
    return true;
  }

  /// A place counts from 1, a negative one back from the end of what stands before the face. A
  /// texture coordinate or normal that does not exist is left out.
  bool takePlace(Part part, const PartCounts& known, bool isLast, int& place) {
    long long number = 0;
    if (!text_.takeInt(number)) {
      throw fault("a corner is no number");
    }
    const long long index = number < 0 ? known[part] + number : number - 1;
    const bool isThere = number != 0 && index >= 0 && index < counts_[part];
    if (isThere) {
      place = static_cast<int>(index);
      return true;
    }
    if (number > 0 && !isLast) {
      return false;
    }
    if (part == kPoint) {
      throw fault("a corner names point " + std::to_string(number) + " of " +
                  std::to_string(known[part]));
    }
    ++missingHere_;
    return true;
  }

  void addFace(int material) {
    const std::span<const Float2> texture =
        hasTexture_ ? std::span<const Float2>(cornerTexture_) : std::span<const Float2>();
    faces_.add(corners_, texture, material);
    missing_ += missingHere_;
    for (std::size_t k = 0; k < corners_.size(); ++k) {
      if (cornerNormals_[k] != kNoIndex) {
        giveNormal(corners_[k], normals_[static_cast<std::size_t>(cornerNormals_[k])]);
      }
    }
  }

  /// The first corner that names a node decides upon its normal.
  void giveNormal(int node, const Float3& normal) {
    Float3 known{};
    mesh_.nodes.GetNormalM(node, known.data());
    if (known == Float3{}) {
      mesh_.nodes.SetNodeNormM(node, normal.data());
    } else if (known != normal) {
      ++otherNormals_;
    }
  }

  // --- afterwards ------------------------------------------------------------------------------

  void tell() {
    const auto leftOut = [this](long long count, const char* noun, const char* why = "") {
      addRemark(job_.remarks, Remark::Kind::kLeftOut, count, "left out", noun, why);
    };
    faces_.tell(job_.remarks);
    leftOut(missing_, "corner part", "faces name texture coordinates or normals that do not exist");
    leftOut(otherNormals_, "corner normal", "a node has one normal, that of its first corner");
    leftOut(lines_, "line element");
    leftOut(points_, "point element");
    leftOut(groups_, "group statement");
    leftOut(materials_, "material statement");
    leftOut(colours_, "node colour");
    leftOut(weights_, "point weight");
    leftOut(depths_, "third texture coordinate");
    leftOut(unknown_, "other statement");
    addRemark(job_.remarks, Remark::Kind::kChanged, static_cast<long long>(postponed_.size()),
              "reordered", "face", "they stand before the points that they name");
    readLibraries();
    tellLostDigits();
  }

  void readLibraries() {
    for (const std::string& name : libraries_) {
      std::optional<Input> library = job_.input.beside(name);
      if (library) {
        readMaterials(library->takeAll(), *job_.appearance);
      } else {
        remark(Remark::Kind::kLeftOut, "the material library " + name + " cannot be read");
      }
    }
  }

  void tellLostDigits() {
    LostDigits digits(mesh_);
    if (!digits.mayLose()) {
      return;
    }
    for (TextCursor text(all_); !text.atEnd(); text.takeLine(), text.takeLineEnd()) {
      std::array<double, 3> point{};
      text.skipBlanksAndJoins();
      if (text.takeWord() != "v") {
        continue;
      }
      for (double& x : point) {
        text.skipBlanksAndJoins();
        static_cast<void>(text.takeReal(x));
      }
      digits.look(point.data());
    }
    digits.tell(job_.remarks);
  }

  void remark(Remark::Kind kind, const std::string& text) {
    job_.remarks.push_back({kind, text, 1});
  }
  [[nodiscard]] Error fault(const std::string& why) const {
    return job_.input.fault(why, {.line = text_.line()});
  }

  ReadJob& job_;
  std::string_view all_;
  TextCursor text_;
  ProgressSteps steps_;
  Mesh mesh_;
  FaceBuilder faces_;
  PartCounts counts_{};
  std::vector<Float2> textureCoords_;
  std::vector<Float3> normals_;
  std::vector<PostponedFace> postponed_;
  std::unordered_map<std::string, int> materialPlaces_;
  std::vector<std::string> libraries_;
  int material_ = Appearance::kNoMaterial;

  // The face in hand.
  std::vector<int> corners_;
  std::vector<Float2> cornerTexture_;
  std::vector<int> cornerNormals_;
  bool hasTexture_ = false;
  long long missingHere_ = 0;

  long long known_ = 0;
  long long unknown_ = 0;
  long long groups_ = 0;
  long long lines_ = 0;
  long long points_ = 0;
  long long materials_ = 0;
  long long colours_ = 0;
  long long weights_ = 0;
  long long depths_ = 0;
  long long missing_ = 0;
  long long otherNormals_ = 0;
};

}  // namespace

Mesh readObj(ReadJob& job) {
  const std::string_view text = job.input.takeAll();
  // Binary rubbish has no statement at all and would pass for an empty mesh.
  if (text.find('\0') != std::string_view::npos) {
    throw job.input.fault("this is no text");
  }
  return ObjReader(job, text).read();
}

}  // namespace zel
