// The mesh arrays on plain stdio streams: their own lists and the DB export.

#include <algorithm>

#include "zel/core/constants.h"
#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"
#include "zel/textfile/detail/list_text.h"
#include "zel/textfile/detail/plain_list.h"

namespace {

using zel::ListSource;
using zel::PlainListWriter;

// A line has a character and its end: index, tag, at least three lines of the record.
constexpr int kLeastRecordBytes = 2 + 2 + 6 + 6;

bool isLive(const KwBaseCL& element) { return element.IsAvailableM() == zel::kTagAvailable; }

template <class Faces>
int writeAll(FILE* file, const char* name, const Faces& faces) {
  PlainListWriter list(file, name);
  list.begin(faces.bound());
  for (int i = 0; i < faces.bound(); ++i) {
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
  list.begin(faces.store().available());
  for (int i = 0; i < faces.bound(); ++i) {
    if (isLive(faces[i])) {
      list.index(i);
      writeRecord(faces[i]);
    }
  }
  PlainListWriter::writeEnd(file, endName);
  return 1;
}

// The storage rule of face lists: the last slot that the list names exists and is fresh.
template <class Faces>
void prepareFaces(Faces* faces, int count) {
  if (count < 1) {
    return;
  }
  if (count > faces->length()) {
    faces->addSize(std::max(faces->length(), count - faces->length()));
  }
  auto& store = faces->changeAll();
  if (count <= store.length()) {
    store.setBound(std::max(store.bound(), count));
    store[count - 1] = {};
  }
}

// Reads one record into slot `index`, or past it when there is no such slot.
// @return whether a slot received a live element.
template <class Slots>
bool readRecord(FILE* file, Slots* slots, int index) {
  auto& store = slots->changeAll();
  if (index < 0 || index >= store.length()) {
    std::remove_reference_t<decltype(store[0])> dropped;
    dropped.FmReadZelFileM(file);
    return false;
  }
  store[index].FmReadZelFileM(file);
  return isLive(store[index]);
}

// Reads the frame of a list: `prepare(count)` makes room, `readOne(index)` reads a record.
template <class Prepare, class ReadOne>
int readFrame(FILE* file, Prepare prepare, ReadOne readOne) {
  const ListSource source(file, kLeastRecordBytes);
  int count = 0;
  zel::readPlainTagLine(file, &count);
  int prepared = 0;
  for (int entry = 0; entry < count; ++entry) {
    const int room = source.roomFor(source.mostOf(count), entry);
    if (room > prepared) {
      prepare(room);
      prepared = room;
    }
    int index = 0;
    if (!zel::readPlainTagLine(file, &index)) {
      return 1;
    }
    readOne(index);
  }
  zel::skipPlainEnd(file);
  return 1;
}

}  // namespace

// --- nodes -------------------------------------------------------------------------------------

int NodeArr::FmReadNodeLstM(FILE* file) {
  return readFrame(
      file, [this](int count) { nodes_.reserve(count); },
      [this, file](int index) { fmReadOneNodeM(file, index); });
}

// A live node takes up the next slot, wherever it was stored.
int NodeArr::fmReadOneNodeM(FILE* file, int index) {
  if (readRecord(file, &nodes_, index)) {
    if (nodes_.bound() == nodes_.length()) {
      nodes_.addSize(nodes_.length());
    }
    if (nodes_.bound() < nodes_.length()) {
      nodes_.takeUpNextSlot();
    }
  }
  return 1;
}

// --- triangles ---------------------------------------------------------------------------------

int TriangleArr::FmReadTriangleLstM(FILE* file) {
  return readFrame(
      file, [this](int count) { prepareFaces(&faces_, count); },
      [this, file](int index) { fmReadOneTriangleM(file, index); });
}

int TriangleArr::fmReadOneTriangleM(FILE* file, int index) {
  if (readRecord(file, &faces_, index)) {
    faces_.setAvailable(faces_.store().available() + 1);
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
  return readFrame(
      file, [this](int count) { prepareFaces(&faces_, count); },
      [this, file](int index) { fmReadOneQuadM(file, index); });
}

int QuadArr::fmReadOneQuadM(FILE* file, int index) {
  if (readRecord(file, &faces_, index)) {
    faces_.setAvailable(faces_.store().available() + 1);
  }
  return 1;
}

int QuadArr::FmWriteQuadLstToFileM(FILE* file) const { return writeAll(file, "QUAD", faces_); }

int QuadArr::ExportQuadLstDBFileM(FILE* file) const {
  return exportLive(file, "Quad", "Quad", faces_,
                    [file](const QuadCL& face) { face.ExportQuadDBFileM(file); });
}
