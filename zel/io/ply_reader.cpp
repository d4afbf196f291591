// PLY: text and both byte orders, any property types, faces and triangle strips.

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "zel/core/detail/progress_steps.h"
#include "zel/io/detail/codec.h"
#include "zel/io/detail/face_builder.h"
#include "zel/io/detail/lost_digits.h"
#include "zel/io/detail/ply_header.h"
#include "zel/io/detail/ply_source.h"

namespace zel {

namespace {

/// What a property of a vertex is for.
enum Role : std::size_t {
  kX,
  kY,
  kZ,
  kNormalX,
  kNormalY,
  kNormalZ,
  kTextureU,
  kTextureV,
  kRed,
  kGreen,
  kBlue,
  kAlpha,
  kRoles,
  kNone
};

struct RoleName {
  std::string_view name;
  Role role;
};
constexpr RoleName kRoleNames[] = {
    {"x", kX},
    {"y", kY},
    {"z", kZ},
    {"nx", kNormalX},
    {"ny", kNormalY},
    {"nz", kNormalZ},
    {"s", kTextureU},
    {"t", kTextureV},
    {"u", kTextureU},
    {"v", kTextureV},
    {"texture_u", kTextureU},
    {"texture_v", kTextureV},
    {"texture_s", kTextureU},
    {"texture_t", kTextureV},
    {"tex_u", kTextureU},
    {"tex_v", kTextureV},
    {"red", kRed},
    {"green", kGreen},
    {"blue", kBlue},
    {"alpha", kAlpha},
    {"r", kRed},
    {"g", kGreen},
    {"b", kBlue},
    {"a", kAlpha},
    {"diffuse_red", kRed},
    {"diffuse_green", kGreen},
    {"diffuse_blue", kBlue},
};

Role roleOf(const PlyProperty& property) {
  const auto* const found = std::ranges::find(kRoleNames, property.name, &RoleName::name);
  return found == std::end(kRoleNames) || property.isList ? kNone : found->role;
}

bool isNamed(const PlyElement& element, const char* name) { return element.name == name; }

bool isCornerList(const PlyProperty& property) {
  return property.isList && (property.name == "vertex_indices" || property.name == "vertex_index");
}

/// A part of a colour: whole numbers fill their type's range, others lie in [0, 1].
template <class Source>
std::uint8_t takeColour(Source& source, PlyType type) {
  if (isReal(type)) {
    const float part = source.template takeReal<float>(type);
    return static_cast<std::uint8_t>(
        std::lround((part > 0.0F ? std::min(part, 1.0F) : 0.0F) * 255.0F));
  }
  const long long part = source.takeInt(type);
  const bool isWide = type == PlyType::kUint16;
  return static_cast<std::uint8_t>(std::clamp(isWide ? part / 257 : part, 0LL, 255LL));
}

template <class Source>
class PlyBody {
 public:
  PlyBody(ReadJob& job, const PlyHeader& header, Source& source)
      : job_(job), header_(header), source_(source), faces_(mesh_, job.appearance) {}

  Mesh read() {
    addMaterials();
    for (const PlyElement& element : header_.elements) {
      checkCount(element);
      if (isNamed(element, "vertex") && !hasVertices_) {
        readVertices(element);
      } else if (isNamed(element, "face") || isNamed(element, "tristrips")) {
        readFaces(element);
      } else {
        skipElement(element);
      }
    }
    addWaitingFaces();
    tell();
    return std::move(mesh_);
  }

 private:
  // --- elements --------------------------------------------------------------------------------

  void checkCount(const PlyElement& element) const {
    const std::uint64_t least = element.leastBytes(Source::kIsText);
    const std::optional<std::uint64_t> left = source_.bytesLeft();
    if (least > 0 && left && *left / least < element.count) {
      throw source_.fault("the file cannot hold its " + std::to_string(element.count) +
                          " elements '" + element.name + "'");
    }
  }
  /// How many elements to make room for beforehand.
  std::uint64_t sureCount(const PlyElement& element) const {
    constexpr std::uint64_t kUnseen = 65536;
    return source_.bytesLeft() ? element.count : std::min(element.count, kUnseen);
  }

  template <class ReadOne>
  void forEach(const PlyElement& element, ReadOne readOne) {
    if (element.properties.empty()) {
      return;
    }
    const std::optional<std::uint64_t> left = source_.bytesLeft();
    const std::size_t size = source_.position() + static_cast<std::size_t>(left.value_or(0));
    ProgressSteps steps(job_.options.progress, size);
    for (std::uint64_t k = 0; k < element.count; ++k) {
      source_.beginElement();
      readOne();
      source_.endElement();
      if (left) {
        steps.reach(source_.position());
      }
    }
  }

  void skipProperty(const PlyProperty& property) {
    source_.skip(property.type, property.isList ? takeCount(property) : 1);
  }
  std::uint64_t takeCount(const PlyProperty& property) {
    const long long count = source_.takeInt(property.countType);
    const std::optional<std::uint64_t> left = source_.bytesLeft();
    const std::uint64_t least = Source::kIsText ? 2 : sizeOf(property.type);
    if (count < 0 || count > std::numeric_limits<int>::max() ||
        (left && *left / least < static_cast<std::uint64_t>(count))) {
      throw source_.fault("a list of " + std::to_string(count) + " numbers does not fit the file");
    }
    return static_cast<std::uint64_t>(count);
  }

  void skipElement(const PlyElement& element) {
    forEach(element, [&] {
      for (const PlyProperty& property : element.properties) {
        skipProperty(property);
      }
    });
    addRemark(job_.remarks, Remark::Kind::kLeftOut, static_cast<long long>(element.count),
              "left out", "element '" + element.name + "'");
  }

  // --- vertices --------------------------------------------------------------------------------

  void readVertices(const PlyElement& element) {
    hasVertices_ = true;
    std::vector<Role> roles;
    std::array<bool, kRoles> has{};
    bool keepsLoss = false;
    for (const PlyProperty& property : element.properties) {
      Role role = roleOf(property);
      role = role != kNone && has[role] ? kNone : role;
      if (role == kNone) {
        otherVertexProperties_ += 1;
      } else {
        has[role] = true;
        keepsLoss = keepsLoss || (role <= kZ && property.type != PlyType::kFloat);
      }
      roles.push_back(role);
    }
    if (element.count > 0 && !(has[kX] && has[kY] && has[kZ])) {
      throw source_.fault("the vertices lack x, y or z");
    }
    hasTexture_ = has[kTextureU] && has[kTextureV];
    hasColour_ = has[kRed] && has[kGreen] && has[kBlue];
    keepsLoss_ = keepsLoss && !Source::kIsText;
    reserveSlots(mesh_.nodes, sureCount(element), job_.input, "nodes");
    forEach(element, [&] { readVertex(element, roles); });
  }

  void readVertex(const PlyElement& element, const std::vector<Role>& roles) {
    std::array<float, kRed> values{};
    Colour colour = Appearance::kNoColour;
    float loss = 0.0F;
    for (std::size_t k = 0; k < roles.size(); ++k) {
      const PlyProperty& property = element.properties[k];
      if (roles[k] == kNone) {
        skipProperty(property);
      } else if (roles[k] >= kRed) {
        colour[roles[k] - kRed] = takeColour(source_, property.type);
      } else if (keepsLoss_ && roles[k] <= kZ) {
        const auto exact = source_.template takeReal<double>(property.type);
        values[roles[k]] = static_cast<float>(exact);
        loss = std::max(loss, static_cast<float>(std::fabs(exact - double{values[roles[k]]})));
      } else {
        values[roles[k]] = source_.template takeReal<float>(property.type);
      }
    }
    NodeCL node(kTagAvailable);
    node.SetNodeM(values.data(), values.data() + kNormalX);
    const int slot = append(mesh_.nodes, node);
    if (hasTexture_) {
      nodeTexture_.push_back({values[kTextureU], values[kTextureV]});
    }
    if (hasColour_ && job_.appearance != nullptr) {
      job_.appearance->setColour(slot, colour);
    }
    if (keepsLoss_) {
      losses_.push_back(loss);
    }
  }

  // --- faces -----------------------------------------------------------------------------------

  void readFaces(const PlyElement& element) {
    const bool isStrips = isNamed(element, "tristrips");
    const auto corners = std::ranges::find_if(element.properties, isCornerList);
    if (corners == element.properties.end()) {
      if (element.count > 0 && !element.properties.empty()) {
        throw source_.fault("the elements '" + element.name + "' have no vertex_indices");
      }
      return;
    }
    for (const PlyProperty& property : element.properties) {
      const bool isUsed = &property == &*corners ||
                          (!isStrips && (property.name == "texcoord" || isTextureNumber(property)));
      otherFaceProperties_ += isUsed ? 0 : 1;
    }
    forEach(element,
            [&] { isStrips ? readStrip(element, *corners) : readFace(element, *corners); });
    strips_ += isStrips ? static_cast<long long>(element.count) : 0;
  }

  static bool isTextureNumber(const PlyProperty& property) {
    return property.name == "texnumber" && !property.isList;
  }

  int takeCorner(PlyType type) {
    const long long corner = source_.takeInt(type);
    if (corner < 0 || static_cast<std::uint64_t>(corner) >= vertexCount()) {
      throw source_.fault("a face names vertex " + std::to_string(corner) + " of " +
                          std::to_string(vertexCount()));
    }
    return static_cast<int>(corner);
  }
  [[nodiscard]] std::uint64_t vertexCount() const {
    if (vertexCount_ == kUnknown) {
      const auto vertices = std::ranges::find(header_.elements, "vertex", &PlyElement::name);
      vertexCount_ = vertices == header_.elements.end() ? 0 : vertices->count;
      constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<int>::max());
      vertexCount_ = std::min(vertexCount_, kMost);
    }
    return vertexCount_;
  }

  void readFace(const PlyElement& element, const PlyProperty& cornerList) {
    corners_.clear();
    texture_.clear();
    std::uint64_t textureNumbers = 0;
    int material = header_.textures.empty() ? Appearance::kNoMaterial : 0;
    for (const PlyProperty& property : element.properties) {
      if (&property == &cornerList) {
        for (std::uint64_t left = takeCount(property); left > 0; --left) {
          corners_.push_back(takeCorner(property.type));
        }
      } else if (property.isList && property.name == "texcoord") {
        textureNumbers = takeTexture(property);
      } else if (isTextureNumber(property)) {
        const long long number = source_.takeInt(property.type);
        const auto known = static_cast<long long>(header_.textures.size());
        material =
            number >= 0 && number < known ? static_cast<int>(number) : Appearance::kNoMaterial;
      } else {
        skipProperty(property);
      }
    }
    if (corners_.size() < 3) {
      ++narrowFaces_;
      return;
    }
    if (textureNumbers != 2 * corners_.size()) {
      oddTextures_ += textureNumbers != 0 ? 1 : 0;
      texture_.clear();
    }
    addFace(material);
  }
  std::uint64_t takeTexture(const PlyProperty& property) {
    const std::uint64_t numbers = takeCount(property);
    for (std::uint64_t k = 0; k < numbers; ++k) {
      const auto number = source_.template takeReal<float>(property.type);
      if (k % 2 == 0) {
        texture_.push_back({number, 0.0F});
      } else {
        texture_.back()[1] = number;
      }
    }
    return numbers;
  }

  /// A strip goes on until a negative number; every second of its triangles is wound the other way.
  void readStrip(const PlyElement& element, const PlyProperty& cornerList) {
    for (const PlyProperty& property : element.properties) {
      if (&property != &cornerList) {
        skipProperty(property);
        continue;
      }
      std::array<int, 3> last{};
      std::size_t length = 0;
      for (std::uint64_t left = takeCount(property); left > 0; --left) {
        const std::optional<int> corner = takeStripCorner(property.type);
        length = corner ? length + 1 : 0;
        if (corner) {
          last = {last[1], last[2], *corner};
        }
        if (length >= 3) {
          addStripTriangle(last, length % 2 == 0);
        }
      }
    }
  }
  /// @return nothing where a strip ends.
  std::optional<int> takeStripCorner(PlyType type) {
    const long long corner = source_.takeInt(type);
    const bool isMark = corner < 0 || (type == PlyType::kUint32 && corner == 0xFFFFFFFFLL);
    if (isMark) {
      return std::nullopt;
    }
    if (static_cast<std::uint64_t>(corner) >= vertexCount()) {
      throw source_.fault("a strip names vertex " + std::to_string(corner) + " of " +
                          std::to_string(vertexCount()));
    }
    return static_cast<int>(corner);
  }
  void addStripTriangle(const std::array<int, 3>& last, bool isTurned) {
    if (last[0] == last[1] || last[1] == last[2] || last[2] == last[0]) {
      return;  // it only leads the strip elsewhere
    }
    corners_.assign({last[isTurned ? 1 : 0], last[isTurned ? 0 : 1], last[2]});
    texture_.clear();
    addFace(header_.textures.empty() ? Appearance::kNoMaterial : 0);
    ++stripTriangles_;
  }

  /// Adds the face in hand, or keeps it until the vertices are there.
  void addFace(int material) {
    if (hasVertices_) {
      giveVertexTexture();
      faces_.add(corners_, texture_, material);
      return;
    }
    waiting_.insert(waiting_.end(), corners_.begin(), corners_.end());
    waitingTexture_.insert(waitingTexture_.end(), texture_.begin(), texture_.end());
    waitingFaces_.push_back({corners_.size(), !texture_.empty(), material});
  }
  void giveVertexTexture() {
    if (texture_.empty() && hasTexture_) {
      for (const int corner : corners_) {
        texture_.push_back(nodeTexture_[static_cast<std::size_t>(corner)]);
      }
    }
  }
  void addWaitingFaces() {
    hasVertices_ = true;
    std::size_t first = 0;
    std::size_t firstTexture = 0;
    for (const WaitingFace& face : waitingFaces_) {
      const std::span<const int> corners(waiting_.data() + first, face.corners);
      corners_.assign(corners.begin(), corners.end());
      texture_.clear();
      if (face.hasTexture) {
        const auto* const coords = waitingTexture_.data() + firstTexture;
        texture_.assign(coords, coords + face.corners);
        firstTexture += face.corners;
      }
      first += face.corners;
      addFace(face.material);
    }
  }

  // --- afterwards ------------------------------------------------------------------------------

  void addMaterials() {
    Appearance* const appearance = job_.appearance;
    if (appearance != nullptr) {
      for (const std::string& texture : header_.textures) {
        appearance->materials.push_back(
            {.name = "texture" + std::to_string(appearance->materials.size()),
             .texture = texture,
             .textureBytes = {}});
      }
    }
  }

  void tell() {
    const auto leftOut = [this](long long count, const char* noun, const char* why = "") {
      addRemark(job_.remarks, Remark::Kind::kLeftOut, count, "left out", noun, why);
    };
    faces_.tell(job_.remarks);
    if (strips_ > 0) {
      addRemark(job_.remarks, Remark::Kind::kChanged, stripTriangles_, "made", "triangle",
                "they come from strips");
    }
    leftOut(narrowFaces_, "face", "fewer than three corners");
    leftOut(oddTextures_, "texcoord list", "its length does not match the face");
    leftOut(otherVertexProperties_, "vertex attribute");
    leftOut(otherFaceProperties_, "face attribute");
    if (job_.appearance == nullptr) {
      leftOut(hasColour_ ? mesh_.nodes.GetBoundM() : 0, "node colour");
      leftOut(static_cast<long long>(header_.textures.size()), "texture picture");
    }
    if (source_.lacksLineEnd()) {
      job_.remarks.push_back(
          {Remark::Kind::kNote, "the last line has no line end: the file may be cut off", 1});
    }
    addRemark(job_.remarks, Remark::Kind::kDamaged, source_.countRest(), "left out", "byte",
              "they stand behind the last element");
    tellLostDigits();
  }

  void tellLostDigits() {
    LostDigits digits(mesh_);
    if (!digits.mayLose()) {
      return;
    }
    if constexpr (Source::kIsText) {
      lookAgain(digits);
    } else {
      for (const float loss : losses_) {
        digits.lookAt(loss);
      }
    }
    digits.tell(job_.remarks);
  }
  /// Text is only now worth reading in double precision.
  void lookAgain(LostDigits& digits) {
    Source again = source_.again();
    for (const PlyElement& element : header_.elements) {
      const bool isVertex = isNamed(element, "vertex");
      for (std::uint64_t k = 0; k < (element.properties.empty() ? 0 : element.count); ++k) {
        std::array<double, 3> point{};
        again.beginElement();
        for (const PlyProperty& property : element.properties) {
          const Role role = roleOf(property);
          if (isVertex && role <= kZ) {
            point[role] = again.template takeReal<double>(property.type);
          } else {
            again.skip(property.type, property.isList ? static_cast<std::uint64_t>(
                                                            again.takeInt(property.countType))
                                                      : 1);
          }
        }
        again.endElement();
        if (isVertex) {
          digits.look(point.data());
        }
      }
      if (isVertex) {
        return;
      }
    }
  }

  struct WaitingFace {
    std::size_t corners;
    bool hasTexture;
    int material;
  };
  static constexpr std::uint64_t kUnknown = ~std::uint64_t{0};

  ReadJob& job_;
  const PlyHeader& header_;
  Source& source_;
  Mesh mesh_;
  FaceBuilder faces_;
  bool hasVertices_ = false;
  bool hasTexture_ = false;
  bool hasColour_ = false;
  bool keepsLoss_ = false;
  mutable std::uint64_t vertexCount_ = kUnknown;
  std::vector<Float2> nodeTexture_;
  std::vector<float> losses_;

  // The face in hand, and those that wait for the vertices.
  std::vector<int> corners_;
  std::vector<Float2> texture_;
  std::vector<int> waiting_;
  std::vector<Float2> waitingTexture_;
  std::vector<WaitingFace> waitingFaces_;

  long long otherVertexProperties_ = 0;
  long long otherFaceProperties_ = 0;
  long long narrowFaces_ = 0;
  long long oddTextures_ = 0;
  long long strips_ = 0;
  long long stripTriangles_ = 0;
};

}  // namespace

Mesh readPly(ReadJob& job) {
  const PlyHeader header = readPlyHeader(job.input);
  if (header.form == PlyHeader::Form::kText) {
    TextPlySource source(job.input, header.lines);
    return PlyBody<TextPlySource>(job, header, source).read();
  }
  BinaryPlySource source(job.input, header.form == PlyHeader::Form::kBigEndian);
  return PlyBody<BinaryPlySource>(job, header, source).read();
}

}  // namespace zel
