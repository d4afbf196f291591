#pragma once

/// @file
/// What the readers and writers of single formats have in common: their jobs and their names.

#include <cstdint>
#include <limits>
#include <string>

#include "zel/core/error.h"
#include "zel/io/detail/byte_sink.h"
#include "zel/io/detail/input.h"
#include "zel/io/read.h"
#include "zel/io/remark.h"
#include "zel/io/write.h"
#include "zel/mesh/appearance.h"
#include "zel/mesh/detail/checked_lists.h"
#include "zel/mesh/mesh.h"

namespace zel {

/// One mesh to be read.
struct ReadJob {
  Input& input;
  const ReadOptions& options;
  Remarks& remarks;
  Appearance* appearance;  ///< empty at first; null when nobody wants it
};

/// One mesh to be written. Its live faces name live nodes.
struct WriteJob {
  const Mesh& mesh;
  ByteSink& sink;
  const WriteOptions& options;
  Remarks& remarks;
  std::string name;  ///< of the output, for messages
};

using ReadFunction = Mesh (*)(ReadJob&);
using WriteFunction = void (*)(WriteJob&);

[[nodiscard]] Mesh readZelDocument(ReadJob& job);
[[nodiscard]] Mesh readObj(ReadJob& job);
[[nodiscard]] Mesh readPly(ReadJob& job);
[[nodiscard]] Mesh readStl(ReadJob& job);
void writeZelDocument(WriteJob& job);
void writeObj(WriteJob& job);
void writePly(WriteJob& job);
void writeStl(WriteJob& job);

/// Adds a remark unless there is nothing to say.
/// @param verb what happened: "left out". @param noun what it happened to, in the singular; the
///        plural takes an s.
inline void addRemark(Remarks& remarks, Remark::Kind kind, long long count, const std::string& verb,
                      const std::string& noun, const std::string& why = {}) {
  if (count > 0) {
    std::string text = verb + " " + std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
    remarks.push_back({kind, text + (why.empty() ? "" : ": " + why), count});
  }
}

/// Makes a list at least `count` slots long.
/// @throws Error (kExhausted) when it cannot be that long or memory is refused.
template <class List>
void reserveSlots(List& list, std::uint64_t count, const Input& input, const char* what) {
  constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<int>::max());
  if (count > kMost) {
    throw Error(ErrorCode::kExhausted, "cannot read", "more than 2147483647 " + std::string(what),
                input.name());
  }
  reserve(list, static_cast<int>(count));
}

}  // namespace zel
