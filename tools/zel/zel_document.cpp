#include "tools/zel/zel_document.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <string>
#include <string_view>

#include "tools/zel/failure.h"
#include "tools/zel/progress.h"
#include "tools/zel/word_scanner.h"

namespace zel::program {

namespace {

constexpr const char* kVersionTag = "zel4.008";
constexpr const char* kNodeList = "NODE";
constexpr const char* kTextureCoordList = "TEXTURE_COORD";

/// What stands before the stream's position, with the white space at its end cut off. The list
/// readers do not compare tags, so a list that ended early or late is told by what they took for
/// its last lines.
std::string textBefore(FILE* stream) {
  constexpr long kLongestRecord = 1024;
  const long position = ftell(stream);
  const long start = std::max(position - kLongestRecord, 0L);
  std::string text(static_cast<std::size_t>(position - start), '\0');
  fseek(stream, start, SEEK_SET);
  text.resize(fread(text.data(), 1, text.size(), stream));
  fseek(stream, position, SEEK_SET);
  text.resize(text.find_last_not_of(" \t\r\n") + 1);
  return text;
}

/// The slot number of the last record in a text; kNoIndex when there is none.
int lastSlotIn(const std::string& text, const std::string& indexTag) {
  int slot = kNoIndex;
  const std::size_t tag = text.rfind(indexTag);
  if (tag != std::string::npos) {
    WordScanner line(std::string_view(text).substr(text.rfind('\n', tag) + 1));
    std::string_view number = line.word();
    number.remove_suffix(number.ends_with(',') ? 1 : 0);
    static_cast<void>(WordScanner::parse(number, slot));
  }
  return slot;
}

/// Reads the lists of one document in their order and says which of them is broken.
class ZelReader {
 public:
  ZelReader(const InputFile& input, const Console& console) : input_(input), console_(console) {}

  Mesh read() {
    try {
      stream_.OpenM(input_.path().c_str(), "r");
      const int descriptor = fileno(stream_.GetFileDescriptM());
      const Progress progress(console_, "reading " + input_.name(), [this, descriptor] {
        return static_cast<double>(lseek(descriptor, 0, SEEK_CUR)) /
               static_cast<double>(input_.size() + 1);
      });
      readLists();
    } catch (int code) {
      throw explained(code);
    }
    return std::move(mesh_);
  }

 private:
  void readLists() {
    FILE* const file = stream_.GetFileDescriptM();
    readVersion();
    list_ = "nodes";
    mesh_.nodes.FmInputZelLstM(&stream_);
    expectEnd("_LIST_END");
    expectEachSlotOnce(mesh_.nodes);
    list_ = "triangles";
    mesh_.triangles.FmReadTriangleLstM(file);
    expectPlainEnd("TRIANGLE", mesh_.triangles.GetBoundM());
    expectEachSlotOnce(mesh_.triangles);
    list_ = "quads";
    mesh_.quads.FmReadQuadLstM(file);
    expectPlainEnd("QUAD", mesh_.quads.GetBoundM());
    expectEachSlotOnce(mesh_.quads);
    if (stream_.FinishedReadM() != 1) {
      list_ = "texture coordinates";
      mesh_.triangleTexture.FmInputZelLstM(&stream_);
      expectEnd("_LIST_END");
    }
    checkCorners();
  }

  void readVersion() {
    std::array<char, 64> tag{};
    stream_.InputGetsM(tag.data(), static_cast<int>(tag.size()));
    static_cast<void>(slGetFileVersion(tag.data()));
  }

  void expectEnd(std::string_view tag) {
    if (!textBefore(stream_.GetFileDescriptM()).ends_with(tag)) {
      throw kReadFailure;
    }
  }

  /// The plain readers stop without a word where a record is missing, so the last record must be
  /// that of the last slot counted.
  void expectPlainEnd(const std::string& name, int bound) {
    expectEnd(name + "_LIST_END");
    const std::string text = textBefore(stream_.GetFileDescriptM());
    if (bound > 0 && lastSlotIn(text, "INDEX_OF_" + name + "_LIST") != bound - 1) {
      throw kReadFailure;
    }
  }

  /// The readers count every live record, also when several name one slot.
  template <class Elements>
  static void expectEachSlotOnce(const Elements& elements) {
    const int liveSlots = elements.GetAvailableNumM(-1);
    if (elements.GetAvailableNumM() != liveSlots) {
      throw kReadFailure;
    }
  }

  /// A live face may name a deleted node, which `zel check` tells, but no slot that is not there.
  void checkCorners() {
    const int bound = mesh_.nodes.GetBoundM();
    const auto check = [this, bound](const char* what, int slot, const auto& corners) {
      for (const int corner : corners) {
        if (corner < 0 || corner >= bound) {
          throw unreadable(input_.name(), std::string(what) + " " + std::to_string(slot) +
                                              " names node " + std::to_string(corner) + " of " +
                                              std::to_string(bound));
        }
      }
    };
    forEachFace(mesh_.triangles, [&](int slot, const auto& c) { check("triangle", slot, c); });
    forEachFace(mesh_.quads, [&](int slot, const auto& c) { check("quad", slot, c); });
  }

  Failure explained(int code) {
    if (code == kVersionFailure) {
      return unreadable(input_.name(), "the first line is no known version tag");
    }
    if (code == kOpenFailure) {
      return unreadable(input_.name(), systemText(errno));
    }
    const long place = ftell(stream_.GetFileDescriptM());
    return unreadable(input_.name(), std::string("the list of ") + list_ +
                                         " is broken or ends early, near byte " +
                                         std::to_string(place));
  }

  const InputFile& input_;
  const Console& console_;
  KwIOCL stream_;
  Mesh mesh_;
  const char* list_ = "nodes";
};

/// About how many bytes the document will have, for the progress bar.
double expectedSize(const Mesh& mesh) {
  constexpr double kPerNode = 140;
  constexpr double kPerFace = 140;
  constexpr double kPerTextureCoord = 80;
  return 1 + kPerNode * mesh.nodes.GetBoundM() +
         kPerFace * (mesh.triangles.GetBoundM() + mesh.quads.GetBoundM()) +
         kPerTextureCoord * mesh.triangleTexture.GetBoundM();
}

void writeLists(const Mesh& mesh, KwIOCL& stream) {
  stream.OutputSM(kVersionTag, -1, 1);
  mesh.nodes.FmOutputZelLstM(&stream, kNodeList);
  FILE* const file = stream.GetFileDescriptM();
  mesh.triangles.FmWriteTriangleLstToFileM(file);
  mesh.quads.FmWriteQuadLstToFileM(file);
  if (mesh.triangleTexture.GetBoundM() > 0) {
    mesh.triangleTexture.FmOutputZelLstM(&stream, kTextureCoordList);
  }
  // The plain lists report nothing themselves.
  if (fflush(file) != 0 || ferror(file) != 0) {
    throw kWriteFailure;
  }
}

}  // namespace

Mesh readZelDocument(const InputFile& input, const Console& console) {
  return ZelReader(input, console).read();
}

void writeZelDocument(const Mesh& mesh, const OutputFile& output, const Console& console) {
  const double size = expectedSize(mesh);
  const Progress progress(console, "writing " + output.name(),
                          [&output, size] { return static_cast<double>(output.size()) / size; });
  try {
    errno = 0;
    KwIOCL stream;
    stream.CreateIndirectlyM(output.openStream(), output.name().c_str(), kVersionTag,
                             slGetFileVersion(kVersionTag));
    writeLists(mesh, stream);
    stream.CloseM();
  } catch (int) {
    throw unwritable(output.name(), systemText(errno == 0 ? EIO : errno));
  }
}

}  // namespace zel::program
