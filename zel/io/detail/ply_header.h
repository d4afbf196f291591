#pragma once

/// @file
/// What the head of a PLY file says of its content.

#include <cstdint>
#include <string>
#include <vector>

#include "zel/io/detail/input.h"

namespace zel {

enum class PlyType {
  kInt8,
  kUint8,
  kInt16,
  kUint16,
  kInt32,
  kUint32,
  kInt64,
  kUint64,
  kFloat,
  kDouble
};

/// @return bytes of a number in a binary file.
[[nodiscard]] std::size_t sizeOf(PlyType type);
[[nodiscard]] inline bool isReal(PlyType type) { return type >= PlyType::kFloat; }

struct PlyProperty {
  std::string name;
  PlyType type;  ///< of the number, or of each number of a list
  bool isList = false;
  PlyType countType = PlyType::kUint8;  ///< of a list
};

struct PlyElement {
  std::string name;
  std::uint64_t count = 0;
  std::vector<PlyProperty> properties;

  /// @return the fewest bytes that one of them takes.
  [[nodiscard]] std::uint64_t leastBytes(bool isText) const;
};

struct PlyHeader {
  enum class Form { kText, kLittleEndian, kBigEndian };

  Form form = Form::kText;
  std::vector<PlyElement> elements;
  std::vector<std::string> textures;  ///< pictures that comments name
  long long lines = 0;                ///< of the header itself
};

/// Takes the header and the end of its last line. A binary file's data may begin with the byte of a
/// line end, so no more is taken than the header's first line has for its own end.
/// @throws Error (kUnreadable).
[[nodiscard]] PlyHeader readPlyHeader(Input& input);

}  // namespace zel
