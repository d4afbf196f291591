#include "zel/io/detail/ply_header.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "zel/io/detail/text_cursor.h"

namespace zel {

namespace {

struct TypeName {
  std::string_view name;
  PlyType type;
};
constexpr TypeName kTypeNames[] = {
    {"char", PlyType::kInt8},     {"int8", PlyType::kInt8},      {"uchar", PlyType::kUint8},
    {"uint8", PlyType::kUint8},   {"short", PlyType::kInt16},    {"int16", PlyType::kInt16},
    {"ushort", PlyType::kUint16}, {"uint16", PlyType::kUint16},  {"int", PlyType::kInt32},
    {"int32", PlyType::kInt32},   {"uint", PlyType::kUint32},    {"uint32", PlyType::kUint32},
    {"long", PlyType::kInt64},    {"int64", PlyType::kInt64},    {"ulong", PlyType::kUint64},
    {"uint64", PlyType::kUint64}, {"float", PlyType::kFloat},    {"float32", PlyType::kFloat},
    {"double", PlyType::kDouble}, {"float64", PlyType::kDouble},
};

/// Reads the lines of a header from as much of the file as is in sight.
class HeaderReader {
 public:
  /// @param isAll whether no more of the file follows.
  HeaderReader(const Input& input, std::string_view text, bool isAll)
      : input_(input), text_(text), isAll_(isAll) {}

  /// @return whether the whole header was in sight.
  bool read() {
    if (!text_.take("ply")) {
      throw fault("the first line is not 'ply'");
    }
    text_.skipBlanks();
    const char* const firstEnd = text_.rest().data();
    if (!text_.takeLineEnd()) {
      return requireSight("the first line is not 'ply'");
    }
    endsInLoneReturn_ = *firstEnd == '\r' && text_.rest().data() - firstEnd == 1;
    bool isLast = false;
    while (!isLast) {
      TextCursor line(nextLine(), text_.line());
      if (text_.atEnd() || (text_.rest().size() < 2 && !isAll_)) {
        return false;  // perhaps not the whole line, or not all of its end
      }
      line.skipBlanks();
      isLast = readLine(line);
      takeLineEnd(isLast);
    }
    header_.lines = text_.line() - 1;
    return true;
  }
  [[nodiscard]] PlyHeader& header() { return header_; }
  [[nodiscard]] std::size_t size() const { return text_.position(); }
  [[nodiscard]] Error fault(const std::string& why) const {
    return input_.fault(why, {.line = text_.line()});
  }

 private:
  bool requireSight(const char* why) const {
    if (!text_.atEnd()) {
      throw fault(why);
    }
    return false;
  }
  /// The line in hand; the cursor stands at its end.
  std::string_view nextLine() { return text_.takeLine(); }
  void takeLineEnd(bool isLast) {
    if (isLast && endsInLoneReturn_) {
      text_.take('\r');
    } else {
      text_.takeLineEnd();
    }
  }

  /// @return whether this is the last line.
  bool readLine(TextCursor& line) {
    const std::string_view keyword = line.takeWord();
    if (keyword == "end_header") {
      if (!hasFormat_) {
        throw fault("the header names no format");
      }
      return true;
    }
    if (keyword == "format") {
      readFormat(line);
    } else if (keyword == "element") {
      readElement(line);
    } else if (keyword == "property") {
      readProperty(line);
    } else if (keyword == "comment") {
      readComment(line);
    } else if (!keyword.empty() && keyword != "obj_info") {
      throw fault("the header has the unknown keyword '" + std::string(keyword) + "'");
    }
    return false;
  }
  static std::string_view nextWord(TextCursor& line) {
    line.skipBlanks();
    return line.takeWord();
  }
  void expectLineEnd(TextCursor& line) const {
    line.skipBlanks();
    if (!line.atEnd()) {
      throw fault("a line of the header holds too much");
    }
  }
  void readFormat(TextCursor& line) {
    const std::string_view form = nextWord(line);
    if (form == "ascii") {
      header_.form = PlyHeader::Form::kText;
    } else if (form == "binary_little_endian") {
      header_.form = PlyHeader::Form::kLittleEndian;
    } else if (form == "binary_big_endian") {
      header_.form = PlyHeader::Form::kBigEndian;
    } else {
      throw fault("the format '" + std::string(form) + "' is unknown");
    }
    if (nextWord(line) != "1.0") {
      throw fault("the format is not of version 1.0");
    }
    expectLineEnd(line);
    hasFormat_ = true;
  }
  void readElement(TextCursor& line) {
    PlyElement element;
    element.name = nextWord(line);
    if (element.name.empty() || !parseWord(nextWord(line), element.count)) {
      throw fault("an element needs a name and a count");
    }
    expectLineEnd(line);
    header_.elements.push_back(std::move(element));
  }
  void readProperty(TextCursor& line) {
    PlyProperty property{};
    std::string_view type = nextWord(line);
    property.isList = type == "list";
    if (property.isList) {
      property.countType = typeNamed(nextWord(line));
      type = nextWord(line);
      if (isReal(property.countType)) {
        throw fault("the length of a list is no whole number");
      }
    }
    property.type = typeNamed(type);
    property.name = nextWord(line);
    if (property.name.empty() || header_.elements.empty()) {
      throw fault("a property needs a name and an element");
    }
    expectLineEnd(line);
    header_.elements.back().properties.push_back(std::move(property));
  }
  [[nodiscard]] PlyType typeNamed(std::string_view name) const {
    const auto* const found = std::ranges::find(kTypeNames, name, &TypeName::name);
    if (found == std::end(kTypeNames)) {
      throw fault("the type '" + std::string(name) + "' is unknown");
    }
    return found->type;
  }
  void readComment(TextCursor& line) {
    if (nextWord(line) == "TextureFile") {
      line.skipBlanks();
      header_.textures.emplace_back(line.takeLine());
    }
  }

  const Input& input_;
  TextCursor text_;
  bool isAll_;
  PlyHeader header_;
  bool hasFormat_ = false;
  bool endsInLoneReturn_ = false;
};

}  // namespace

std::size_t sizeOf(PlyType type) {
  switch (type) {
    case PlyType::kInt8:
    case PlyType::kUint8:
      return 1;
    case PlyType::kInt16:
    case PlyType::kUint16:
      return 2;
    case PlyType::kInt32:
    case PlyType::kUint32:
    case PlyType::kFloat:
      return 4;
    default:
      return 8;
  }
}

std::uint64_t PlyElement::leastBytes(bool isText) const {
  constexpr std::uint64_t kCharacterAndSpace = 2;
  std::uint64_t least = 0;
  for (const PlyProperty& property : properties) {
    least +=
        isText ? kCharacterAndSpace : sizeOf(property.isList ? property.countType : property.type);
  }
  return least;
}

PlyHeader readPlyHeader(Input& input) {
  constexpr std::size_t kUsualSize = 4096;
  for (std::size_t sight = kUsualSize;; sight *= 2) {
    std::string text(input.peek(sight));
    const bool isAll = text.size() < sight;
    HeaderReader reader(input, text, isAll);
    if (!reader.read()) {
      if (!isAll) {
        continue;
      }
      // The last line of a file without elements may lack its end.
      text += '\n';
      HeaderReader whole(input, text, true);
      if (!text.ends_with("end_header\n") || !whole.read()) {
        throw whole.fault("the file ends within its header");
      }
      std::string taken(text.size() - 1, '\0');
      input.read(taken.data(), taken.size());
      return std::move(whole.header());
    }
    std::string taken(reader.size(), '\0');
    input.read(taken.data(), taken.size());
    return std::move(reader.header());
  }
}

}  // namespace zel
