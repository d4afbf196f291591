// The `.zel` document, byte for byte as the lists' own calls write it.

#include <algorithm>
#include <string>
#include <string_view>

#include "zel/core/constants.h"
#include "zel/core/detail/progress_steps.h"
#include "zel/io/detail/codec.h"
#include "zel/textfile/detail/line_printer.h"
#include "zel/textfile/detail/tag_texts.h"

namespace zel {

namespace {

constexpr std::string_view kVersionTag = "zel4.008";

template <class List>
int slotsOf(const List& list) {
  return std::max(list.GetBoundM(), 0);
}

class ZelWriter {
 public:
  explicit ZelWriter(WriteJob& job)
      : job_(job),
        text_(job.sink),
        steps_(job.options.progress,
               static_cast<std::size_t>(slotsOf(job.mesh.nodes)) +
                   static_cast<std::size_t>(slotsOf(job.mesh.triangles)) +
                   static_cast<std::size_t>(slotsOf(job.mesh.quads)) +
                   static_cast<std::size_t>(slotsOf(job.mesh.triangleTexture)) +
                   static_cast<std::size_t>(slotsOf(job.mesh.quadTexture))) {}

  void write() {
    const Mesh& mesh = job_.mesh;
    text_.add(kVersionTag).add('\n');
    writeNodes(mesh.nodes);
    writeFaces(mesh.triangles, "TRIANGLE");
    writeFaces(mesh.quads, "QUAD");
    // The quads' list is the second of its kind, so the first is there before it, if empty.
    if (slotsOf(mesh.triangleTexture) + slotsOf(mesh.quadTexture) > 0) {
      writeTexture(mesh.triangleTexture, "TEXTURE_COORD");
    }
    if (slotsOf(mesh.quadTexture) > 0) {
      writeTexture(mesh.quadTexture, "QUAD_TEXTURE_COORD");
    }
    text_.flush();
  }

 private:
  void writeTagLine(int number, int columns, std::string_view gap, const TagText& tag,
                    std::string_view name) {
    text_.addInt(number, columns).add(gap).add(tag.head).add(name).add(tag.tail).add('\n');
  }
  void writeEnd(std::string_view name) {
    text_.add(kEndTag.head).add(name).add(kEndTag.tail).add('\n');
  }
  void writeReals(const float* values, int count, std::string_view gap) {
    text_.addFixedReal(values[0]);
    for (int k = 1; k < count; ++k) {
      text_.add(gap).addFixedReal(values[k]);
    }
    text_.add('\n');
  }
  /// Documents know no other tags, so a working mark of some algorithm cannot be stored.
  void writeDeleteTag(const KwBaseCL& element, int slot, const char* what) {
    const int tag = element.IsAvailableM();
    if (tag != kTagNotAvailable && tag != kTagAvailable && tag != kTagDeleted) {
      throw Error(ErrorCode::kArgument, "cannot write",
                  std::string(what) + " " + std::to_string(slot) + " has the delete tag " +
                      std::to_string(tag) + ", which is none of 30, 31 and 32",
                  job_.name);
    }
    text_.addInt(tag, kByteColumns).add('\n');
  }

  void writeNodes(const NodeArr& nodes) {
    const NodeCL* store = nodes.getCurrentItemPrtConstM();
    writeTagLine(slotsOf(nodes), 0, ", ", kBeginTag, "NODE");
    for (int slot = 0; slot < slotsOf(nodes); ++slot) {
      writeTagLine(slot, 0, ", ", kIndexTag, "NODE");
      writeDeleteTag(store[slot], slot, "node");
      writeReals(store[slot].point(), 3, ", ");
      writeReals(store[slot].normal(), 3, ", ");
      steps_.advance();
    }
    writeEnd("NODE");
  }

  template <class Faces>
  void writeFaces(const Faces& faces, std::string_view name) {
    const auto* store = faces.getCurrentItemPrtConstM();
    writeTagLine(slotsOf(faces), kIntColumns, ",  ", kBeginTag, name);
    for (int slot = 0; slot < slotsOf(faces); ++slot) {
      const auto& record = store[slot].record();
      writeTagLine(slot, kIntColumns, ",  ", kIndexTag, name);
      writeDeleteTag(store[slot], slot, "face");
      text_.addInt(record.corners[0], kIntColumns);
      for (const int corner : std::span(record.corners).subspan(1)) {
        text_.add(",  ").addInt(corner, kIntColumns);
      }
      text_.add('\n');
      writeReals(record.normal, 3, ",");
      text_.addInt(record.normalType).add('\n');
      steps_.advance();
    }
    writeEnd(name);
  }

  void writeTexture(const Point2DArr& coords, std::string_view name) {
    const auto* store = coords.getCurrentItemPrtConstM();
    writeTagLine(slotsOf(coords), kIntColumns, ", ", kBeginTag, name);
    for (int slot = 0; slot < slotsOf(coords); ++slot) {
      writeTagLine(slot, kIntColumns, ", ", kIndexTag, name);
      writeReals(store[slot], 2, ", ");
      steps_.advance();
    }
    writeEnd(name);
  }

  WriteJob& job_;
  TextBuffer text_;
  ProgressSteps steps_;
};

}  // namespace

void writeZelDocument(WriteJob& job) { ZelWriter(job).write(); }

}  // namespace zel
