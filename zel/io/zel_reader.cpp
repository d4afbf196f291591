// The `.zel` document, strictly: every line is there and holds what it must, and nothing else.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "zel/core/constants.h"
#include "zel/core/detail/progress_steps.h"
#include "zel/io/detail/codec.h"
#include "zel/io/detail/text_cursor.h"
#include "zel/textfile/detail/tag_texts.h"
#include "zel/textfile/file_version.h"

namespace zel {

namespace {

/// The fewest bytes that the record of an element takes, its index line included.
constexpr std::size_t kLeastRecord = 2 + 2 + 6 + 6;
constexpr std::size_t kLeastPair = 2 + 4;

/// Which slots of a list have been named. Documents name them in order, as a rule.
class NamedSlots {
 public:
  explicit NamedSlots(int count) : count_(count) {}
  /// @return whether the slot is one of the list and was not named before.
  bool name(int slot) {
    if (slot == inOrder_ && outOfOrder_.empty()) {
      return ++inOrder_ <= count_;
    }
    if (slot < inOrder_ || slot >= count_) {
      return false;
    }
    outOfOrder_.resize(static_cast<std::size_t>(count_ - inOrder_));
    const std::size_t place = static_cast<std::size_t>(slot - inOrder_);
    const bool isNew = !outOfOrder_[place];
    outOfOrder_[place] = true;
    return isNew;
  }

 private:
  int count_;
  int inOrder_ = 0;  // slots below were named one after the other
  std::vector<bool> outOfOrder_;
};

class ZelReader {
 public:
  ZelReader(ReadJob& job, std::string_view text)
      : job_(job), text_(text), steps_(job.options.progress, text.size()) {}

  Mesh read() {
    readVersion();
    part_ = "list of nodes";
    readNodes();
    part_ = "list of triangles";
    readFaces<TriangleCL>(mesh_.triangles, "TRIANGLE", "triangle");
    part_ = "list of quads";
    readFaces<QuadCL>(mesh_.quads, "QUAD", "quad");
    part_ = "texture coordinates";
    readTexture(mesh_.triangleTexture, 3LL * mesh_.triangles.GetBoundM());
    readTexture(mesh_.quadTexture, 4LL * mesh_.quads.GetBoundM());
    expectEndOfFile();
    checkCorners(mesh_.triangles, "triangle");
    checkCorners(mesh_.quads, "quad");
    return std::move(mesh_);
  }

 private:
  // --- lines -----------------------------------------------------------------------------------

  [[nodiscard]] Error fault(const std::string& why) const {
    return job_.input.fault(std::string(part_) + ": " + why, {.line = line_});
  }
  void require(bool isThere, const char* wanted) const {
    if (!isThere) {
      throw fault(text_.atEnd() ? std::string("the file ends where ") + wanted + " should follow"
                                : std::string(wanted) + " is missing or malformed");
    }
  }
  void endLine(const char* whatItHolds) {
    text_.skipBlanks();
    const bool isLoneReturn = text_.rest().starts_with('\r') && !text_.rest().starts_with("\r\n");
    require(!isLoneReturn && (text_.takeLineEnd() || text_.atEnd()), whatItHolds);
  }
  template <class Number>
  bool takeNumber(Number& value) {
    text_.skipBlanks();
    if constexpr (std::is_floating_point_v<Number>) {
      return text_.takeReal(value, true);
    } else {
      return text_.takeInt(value);
    }
  }
  /// In a plain list the comma follows its number directly.
  void takeComma(const char* what) {
    if (!isPlain_) {
      text_.skipBlanks();
    }
    require(text_.take(','), what);
  }
  /// One line of numbers with commas between them.
  template <class Number>
  void takeLine(Number* values, int count, const char* what) {
    line_ = text_.line();
    for (int k = 0; k < count; ++k) {
      if (k > 0) {
        takeComma(what);
      }
      require(takeNumber(values[k]), what);
    }
    endLine(what);
  }
  /// A number, a comma and a tag.
  int takeTagLine(const TagText& tag, std::string_view name, const char* what) {
    line_ = text_.line();
    int number = 0;
    require(takeNumber(number), what);
    takeComma(what);
    takeTag(tag, name, what);
    return number;
  }
  void takeTag(const TagText& tag, std::string_view name, const char* what) {
    line_ = text_.line();
    text_.skipBlanks();
    require(text_.take(tag.head) && text_.take(name) && text_.take(tag.tail), what);
    endLine(what);
  }
  /// The first line of a list whose name the application has chosen.
  int takeBegin(std::string_view& name, std::size_t leastRecord) {
    int count = 0;
    line_ = text_.line();
    require(takeNumber(count), "the begin of a list");
    takeComma("the begin of a list");
    text_.skipBlanks();
    name = text_.takeWord();
    require(name.ends_with(kBeginTag.tail), "the begin of a list");
    name.remove_suffix(kBeginTag.tail.size());
    endLine("the begin of a list");
    checkCount(count, leastRecord);
    return count;
  }
  void checkCount(int count, std::size_t leastRecord) const {
    if (count < 0 || static_cast<std::size_t>(count) > text_.rest().size() / leastRecord) {
      throw fault("the file cannot hold the " + std::to_string(count) + " records of this list");
    }
  }
  signed char takeDeleteTag() {
    int tag = 0;
    takeLine(&tag, 1, "a delete tag");
    if (tag != kTagNotAvailable && tag != kTagAvailable && tag != kTagDeleted) {
      throw fault("the delete tag " + std::to_string(tag) + " is none of 30, 31 and 32");
    }
    return static_cast<signed char>(tag);
  }
  /// The index line of a record.
  int takeIndex(NamedSlots& named, std::string_view name, const char* what) {
    steps_.reach(text_.position());
    const int slot = takeTagLine(kIndexTag, name, what);
    if (!named.name(slot)) {
      throw fault("slot " + std::to_string(slot) + " is named twice or lies outside its list");
    }
    return slot;
  }

  // --- parts -----------------------------------------------------------------------------------

  void readVersion() {
    const std::string tag(text_.takeLine());
    try {
      static_cast<void>(slGetFileVersion(tag.find('\0') == std::string::npos ? tag.c_str() : ""));
    } catch (int) {
      throw fault("the first line is no known version tag");
    }
    endLine("the version tag");
  }

  void readNodes() {
    std::string_view name;
    const int count = takeBegin(name, kLeastRecord);
    reserveSlots(mesh_.nodes, static_cast<std::uint64_t>(count), job_.input, "nodes");
    NamedSlots named(count);
    for (int entry = 0; entry < count; ++entry) {
      const int slot = takeIndex(named, name, "the index of a node");
      NodeCL node(takeDeleteTag());
      takeLine(node.point(), 3, "the point of a node");
      takeLine(node.normal(), 3, "the normal of a node");
      mesh_.nodes.SetItemM(node, slot);
    }
    takeTag(kEndTag, name, "the end of the node list");
  }

  template <class Face, class Faces>
  void readFaces(Faces& faces, const char* name, const char* what) {
    isPlain_ = true;
    const int count = takeTagLine(kBeginTag, name, "the begin of a list of faces");
    checkCount(count, kLeastRecord);
    reserveSlots(faces, static_cast<std::uint64_t>(count), job_.input, "faces");
    NamedSlots named(count);
    for (int entry = 0; entry < count; ++entry) {
      const int slot = takeIndex(named, name, "the index of a face");
      Face face(takeDeleteTag());
      auto& record = face.record();
      takeLine(record.corners, std::remove_cvref_t<decltype(record)>::kCorners, "a row of corners");
      takeLine(record.normal, 3, "the normal of a face");
      int type = 0;
      takeLine(&type, 1, "the normal type of a face");
      if (type != static_cast<signed char>(type)) {
        throw fault(std::string("the normal type of the ") + what + " is out of range");
      }
      record.normalType = static_cast<char>(type);
      faces.SetItemM(face, slot);
    }
    takeTag(kEndTag, name, "the end of a list of faces");
    isPlain_ = false;
  }

  /// Entries that classic readers leave out stay as they were.
  static bool isTaken(const Float2& item) {
    constexpr float kLeftOut = -2147483648.0F;
    return item[0] != kLeftOut && item[1] != kLeftOut;
  }

  void readTexture(Point2DArr& coords, long long corners) {
    if (!isListNext()) {
      return;
    }
    std::string_view name;
    const int count = takeBegin(name, kLeastPair);
    if (count > corners) {
      throw fault("there are more texture coordinates than corners");
    }
    reserveSlots(coords, static_cast<std::uint64_t>(count), job_.input, "texture coordinates");
    NamedSlots named(count);
    for (int entry = 0; entry < count; ++entry) {
      const int slot = takeIndex(named, name, "the index of a texture coordinate");
      Float2 coord{};
      takeLine(coord.data(), 2, "a texture coordinate");
      if (isTaken(coord)) {
        coords.SetItemM(coord.data(), slot);
      }
    }
    takeTag(kEndTag, name, "the end of the texture coordinates");
  }

  /// A line that begins with a number, or one cut off before it, is meant for one more list.
  [[nodiscard]] bool isListNext() const {
    TextCursor ahead(text_.rest());
    ahead.skipBlanks();
    const bool isCut = ahead.atEnd() && ahead.position() > 0;
    return isCut || ahead.peek() == '-' || (ahead.peek() >= '0' && ahead.peek() <= '9');
  }

  void expectEndOfFile() {
    const std::size_t first = text_.rest().find_first_not_of(" \t\r\n");
    if (text_.rest().find("_LIST_") != std::string_view::npos) {
      line_ = text_.line();
      throw fault("a list follows that should not, or not here");
    }
    if (first != std::string_view::npos) {
      addRemark(job_.remarks, Remark::Kind::kDamaged,
                static_cast<long long>(text_.rest().size() - first), "left out", "byte",
                "they stand behind the end of the document");
    }
  }

  /// A live face may name a deleted node, which findDefects() tells, but no slot that is not there.
  template <class Faces>
  void checkCorners(const Faces& faces, const char* what) const {
    const int bound = mesh_.nodes.GetBoundM();
    forEachFace(faces, [&](int slot, const auto& corners) {
      for (const int corner : corners) {
        if (corner < 0 || corner >= bound) {
          throw job_.input.fault(std::string(what) + " " + std::to_string(slot) + " names node " +
                                 std::to_string(corner) + " of " + std::to_string(bound));
        }
      }
    });
  }

  ReadJob& job_;
  TextCursor text_;
  ProgressSteps steps_;
  const char* part_ = "version tag";
  bool isPlain_ = false;  // the list in hand
  long long line_ = 1;    // the one in hand, or just taken
  Mesh mesh_;
};

}  // namespace

Mesh readZelDocument(ReadJob& job) { return ZelReader(job, job.input.takeAll()).read(); }

}  // namespace zel
