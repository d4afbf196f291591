// The plain lists of the mesh arrays, on stdio streams, and the DB export.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "zel/core/constants.h"
#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"
#include "zel/textfile/detail/list_sinks.h"
#include "zel/textfile/detail/plain_list.h"

namespace {

using zel::ListSource;
using zel::PlainListWriter;

// A line has a character and its end: index, tag, at least three lines of the record.
constexpr int kLeastRecordBytes = 2 + 2 + 6 + 6;
constexpr std::int64_t kMostSlots = std::numeric_limits<int>::max();

bool isLive(const KwBaseCL& element) { return element.IsAvailableM() == zel::kTagAvailable; }

template <class Faces>
int writeAll(FILE* file, const char* name, const Faces& faces) {
  PlainListWriter list(file, name);
  list.begin(faces.count());
  for (int i = 0; i < faces.count(); ++i) {
    list.index(i);
    faces[i].FmWriteZelFileM(file, zel::NotOverriding());
  }
  list.end();
  return 1;
}

// Writes the live faces, each by `writeRecord(face)`.
template <class Faces, class WriteRecord>
int exportLive(FILE* file, const char* name, const char* endName, const Faces& faces,
               WriteRecord writeRecord) {
  PlainListWriter list(file, name);
  list.begin(faces.available());
  for (int i = 0; i < faces.count(); ++i) {
    if (isLive(faces[i])) {
      list.index(i);
      writeRecord(faces[i]);
    }
  }
  PlainListWriter::writeEnd(file, endName);
  return 1;
}

// Reads one record on top of `element`. @return false, with `element` as it was, when reading
// fails.
template <class Element>
bool readRecord(FILE* file, Element* element) {
  const Element before = *element;
  element->FmReadZelFileM(file);
  const bool isWhole = zel::soundOrNone(file) != nullptr;
  if (!isWhole) {
    *element = before;
  }
  return isWhole;
}

// Reads one record into slot `index`, or past it when there is no such slot.
// @return whether a slot received a live element.
template <class Slots>
bool readIntoSlot(FILE* file, Slots* slots, int index) {
  auto& store = slots->changeAll();
  if (index < 0 || index >= store.length()) {
    std::remove_reference_t<decltype(store[0])> dropped;
    dropped.FmReadZelFileM(file);
    return false;
  }
  return readRecord(file, &store[index]) && isLive(store[index]);
}

// What node lists and face lists do each their own way:
//   prepare(count)            makes room for a list of `count` records
//   lengthAfter(before, count)  the length of the store that this makes of another one
//   noteRead(count)           raises the bound where prepare() does
//   countLive()               counts a live element

template <class Nodes>
struct NodeWays {
  explicit NodeWays(Nodes* nodes) : slots(nodes) {}

  void prepare(int count) const { slots->reserve(count); }
  static int lengthAfter(int before, int count) { return std::max(before, count); }
  void noteRead(int /*count*/) const {}
  // A live node takes up the next slot, wherever it was stored.
  void countLive() const {
    if (slots->bound() == slots->length()) {
      slots->addSize(slots->length());
    }
    if (slots->bound() < slots->length()) {
      slots->takeUpNextSlot();
    }
  }

  Nodes* slots;
};
template <class Nodes>
NodeWays(Nodes*) -> NodeWays<Nodes>;  // for compilers that do not deduce aggregates

template <class Faces>
struct FaceWays {
  explicit FaceWays(Faces* faces) : slots(faces) {}

  // The last slot that the list names exists and is fresh.
  void prepare(int count) const {
    if (count > slots->length()) {
      slots->reserve(lengthAfter(slots->length(), count));
    }
    if (count > 0 && count <= slots->length()) {
      noteRead(count);
      slots->changeAll()[count - 1] = {};
    }
  }
  static int lengthAfter(int before, int count) {
    const std::int64_t doubled = std::min<std::int64_t>(2 * std::int64_t{before}, kMostSlots);
    return count > before ? std::max(static_cast<int>(doubled), count) : before;
  }
  void noteRead(int count) const {
    auto& store = slots->changeAll();
    store.setBound(std::max(store.bound(), count));
  }
  void countLive() const { slots->setAvailable(slots->store().available() + 1); }

  Faces* slots;
};
template <class Faces>
FaceWays(Faces*) -> FaceWays<Faces>;  // for compilers that do not deduce aggregates

// Reads records until one has no index. @return whether all were read.
template <class ReadOne>
bool readRecords(FILE* file, int count, ReadOne readOne) {
  for (int entry = 0; entry < count; ++entry) {
    int index = 0;
    if (!zel::readPlainTagLine(file, &index)) {
      return false;
    }
    readOne(index);
  }
  return true;
}

// Reads the records of a list for which nothing vouches but what has been read of it: the store
// grows on the way and is in the end as if room had been made beforehand.
template <class Element, class Ways>
bool readUnmeasured(FILE* file, const ListSource& source, int count, const Ways& ways) {
  auto* slots = ways.slots;
  const int before = slots->length();
  zel::ElementSink<std::remove_pointer_t<decltype(slots)>, Element> sink(slots);
  int live = 0;
  const bool isWhole = readRecords(file, count, [&](int index) {
    if (sink.reaches(index, source.mostOf(count))) {
      live += readIntoSlot(file, slots, index) ? 1 : 0;
      return;
    }
    Element element;
    if (readRecord(file, &element) && index >= 0) {
      static_cast<void>(sink.wait(index, element));
    }
  });
  const int done = isWhole ? count : source.mostOf(count);
  const bool isLong =
      sink.finish(ways.lengthAfter(before, done), [&](int index, const Element& element) {
        slots->changeAll()[index] = element;
        live += isLive(element) ? 1 : 0;
      });
  if (isLong) {
    ways.noteRead(done);
  }
  for (; live > 0; --live) {
    ways.countLive();
  }
  return isWhole;
}

// `readOne(index)` reads a record into a slot and counts it when it is live.
template <class Element, class Ways, class ReadOne>
int readList(FILE* file, const Ways& ways, ReadOne readOne) {
  const ListSource source(file, kLeastRecordBytes);
  int count = 0;
  if (!zel::readPlainTagLine(file, &count)) {
    count = 0;
  }
  bool isWhole = true;
  if (source.isMeasured() || count <= ways.slots->length()) {
    ways.prepare(source.isMeasured() ? source.mostOf(count) : count);
    isWhole = readRecords(file, count, readOne);
  } else {
    isWhole = readUnmeasured<Element>(file, source, count, ways);
  }
  if (isWhole) {
    zel::skipPlainEnd(file);
  }
  return 1;
}

}  // namespace

// --- nodes -------------------------------------------------------------------------------------

int NodeArr::FmReadNodeLstM(FILE* file) {
  return readList<NodeCL>(file, NodeWays(&nodes_),
                          [this, file](int index) { fmReadOneNodeM(file, index); });
}

int NodeArr::fmReadOneNodeM(FILE* file, int index) {
  if (readIntoSlot(file, &nodes_, index)) {
    NodeWays(&nodes_).countLive();
  }
  return 1;
}

// --- triangles ---------------------------------------------------------------------------------

int TriangleArr::FmReadTriangleLstM(FILE* file) {
  return readList<TriangleCL>(file, FaceWays(&faces_),
                              [this, file](int index) { fmReadOneTriangleM(file, index); });
}

int TriangleArr::fmReadOneTriangleM(FILE* file, int index) {
  if (readIntoSlot(file, &faces_, index)) {
    FaceWays(&faces_).countLive();
  }
  return 1;
}

int TriangleArr::FmWriteTriangleLstToFileM(FILE* file) const {
  return writeAll(file, "TRIANGLE", faces_);
}

int TriangleArr::ExportTriangleLstDBFileM(FILE* file, const float* matrix) const {
  return exportLive(file, "Triangle", "Node", faces_,
                    [&](const TriangleCL& face) { face.ExportTriangleDBFIleM(file, matrix); });
}

// --- quads -------------------------------------------------------------------------------------

int QuadArr::FmReadQuadLstM(FILE* file) {
  return readList<QuadCL>(file, FaceWays(&faces_),
                          [this, file](int index) { fmReadOneQuadM(file, index); });
}

int QuadArr::fmReadOneQuadM(FILE* file, int index) {
  if (readIntoSlot(file, &faces_, index)) {
    FaceWays(&faces_).countLive();
  }
  return 1;
}

int QuadArr::FmWriteQuadLstToFileM(FILE* file) const { return writeAll(file, "QUAD", faces_); }

int QuadArr::ExportQuadLstDBFileM(FILE* file) const {
  return exportLive(file, "Quad", "Quad", faces_,
                    [file](const QuadCL& face) { face.ExportQuadDBFileM(file); });
}
