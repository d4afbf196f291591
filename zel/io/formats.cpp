#include "zel/io/formats.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>

#include "zel/io/detail/format_table.h"
#include "zel/io/detail/text_cursor.h"

namespace zel {

namespace {

// --- telling a format by its content ------------------------------------------------------------

bool tellsZel(std::string_view start, bool /*isWhole*/) {
  TextCursor text(start);
  const std::string_view tag = text.takeLine();
  return (tag.starts_with("zel") || tag.starts_with("MAC")) && tag.size() < 10;
}

bool tellsPly(std::string_view start, bool /*isWhole*/) {
  return start.starts_with("ply\n") || start.starts_with("ply\r") || start.starts_with("ply ");
}

bool tellsStl(std::string_view start, bool isWhole) {
  constexpr std::size_t kHeader = 84;
  constexpr std::uint64_t kFacet = 50;
  if (isTextStl(start)) {
    return true;
  }
  if (start.size() < kHeader || start.substr(0, kHeader).find('\0') == std::string_view::npos) {
    return false;
  }
  std::uint64_t facets = 0;
  for (std::size_t byte = kHeader; byte > kHeader - 4; --byte) {
    facets = facets * 256 + static_cast<unsigned char>(start[byte - 1]);
  }
  const std::uint64_t size = kHeader + kFacet * facets;
  return isWhole ? start.size() == size : size > start.size();
}

/// The first statement decides, and only text can be one.
bool tellsObj(std::string_view start, bool /*isWhole*/) {
  constexpr std::string_view kStatements[] = {"v", "vt", "vn", "vp", "f",      "g",
                                              "o", "s",  "l",  "p",  "mtllib", "usemtl"};
  if (start.find('\0') != std::string_view::npos) {
    return false;
  }
  TextCursor text(start);
  text.take("\xEF\xBB\xBF");
  for (; !text.atEnd(); text.takeLine(), text.takeLineEnd()) {
    text.skipBlanks();
    if (!text.atLineEnd() && text.peek() != '#') {
      return std::ranges::find(kStatements, text.takeWord()) != std::end(kStatements);
    }
  }
  return false;
}

// --- the table
// ------------------------------------------------------------------------------------

// A format is added here and nowhere else; the two tables have the same order.
constexpr FileFormat kFormats[] = {
    {.name = "zel",
     .extensions = "zel",
     .description = "Zel document: nodes, triangles, quads, texture coordinates",
     .isRead = true,
     .isWritten = true,
     .keepsSharedNodes = true,
     .keepsQuads = true,
     .keepsNodeNormals = true,
     .keepsFaceNormals = true,
     .keepsTexture = true,
     .keepsDeletedSlots = true,
     .keepsLooseNodes = true},
    {.name = "obj",
     .extensions = "obj",
     .description = "Wavefront OBJ, numbers exact to the last bit",
     .isRead = true,
     .isWritten = true,
     .keepsSharedNodes = true,
     .keepsQuads = true,
     .keepsNodeNormals = true,
     .keepsTexture = true,
     .keepsColours = true,
     .keepsLooseNodes = true},
    {.name = "ply",
     .extensions = "ply",
     .description = "Polygon file, text or binary",
     .isRead = true,
     .isWritten = true,
     .hasTextForm = true,
     .keepsSharedNodes = true,
     .keepsQuads = true,
     .keepsNodeNormals = true,
     .keepsTexture = true,
     .keepsColours = true,
     .keepsLooseNodes = true},
    {.name = "stl",
     .extensions = "stl",
     .description = "Stereolithography: unconnected triangles, text or binary",
     .isRead = true,
     .isWritten = true,
     .hasTextForm = true,
     .keepsFaceNormals = true},
};

constexpr FormatWork kWork[] = {
    {readZelDocument, writeZelDocument, tellsZel},
    {readObj, writeObj, tellsObj},
    {readPly, writePly, tellsPly},
    {readStl, writeStl, tellsStl},
};
static_assert(std::size(kFormats) == std::size(kWork));

/// A format is asked about the content before those behind it here: a text may be several.
constexpr std::size_t kAskingOrder[] = {0, 2, 3, 1};

bool equalLetters(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::ranges::equal(a, b, {}, lower, lower);
}

bool hasExtension(const FileFormat& format, std::string_view extension) {
  TextCursor words(format.extensions);
  for (; !words.atEnd(); words.skipBlanks()) {
    if (equalLetters(words.takeWord(), extension)) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::span<const FileFormat> fileFormats() { return kFormats; }

const FileFormat* findFormat(std::string_view name) {
  for (const FileFormat& format : kFormats) {
    if (equalLetters(format.name, name) || hasExtension(format, name)) {
      return &format;
    }
  }
  return nullptr;
}

const FileFormat* formatOfName(std::string_view file) {
  const std::size_t slash = file.find_last_of("/\\");
  const std::string_view base = slash == std::string_view::npos ? file : file.substr(slash + 1);
  const std::size_t dot = base.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? nullptr : findFormat(base.substr(dot + 1));
}

const FileFormat* formatOfContent(std::string_view start, bool isWhole) {
  for (const std::size_t place : kAskingOrder) {
    if (kWork[place].tells(start, isWhole)) {
      return &kFormats[place];
    }
  }
  return nullptr;
}

const FormatWork& workOf(const FileFormat& format) { return kWork[&format - kFormats]; }

}  // namespace zel
