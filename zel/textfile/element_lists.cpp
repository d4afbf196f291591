// The tagged lists of the element arrays.

#include <algorithm>

#include "zel/containers/detail/text_index.h"
#include "zel/containers/kw_string_arr.h"
#include "zel/core/constants.h"
#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"
#include "zel/textfile/detail/list_text.h"

namespace {

using zel::IndexedSlots;
using zel::SlotStore;

/// The fewest bytes that an element takes in a list.
struct LeastBytes {
  int text;
  int binary;
};
// A line has a character and its end; so in text: index, tag, and the element's other lines.
constexpr LeastBytes kLeastString{2 + 2, 1};
constexpr LeastBytes kLeastNode{2 + 2 + 2 * 6, 1 + 2 * 12};
constexpr LeastBytes kLeastTriangle{2 + 2 + 2 + 6 + 6, 1 + 1 + 12 + 4};
constexpr LeastBytes kLeastQuad{2 + 2 + 2 + 6 + 8, 1 + 1 + 12 + 4};

// A list that searches drops what it knows of its content when that is read anew.
template <class Element, class Index>
auto& storeOf(IndexedSlots<Element, Index>& slots) {
  return slots.changeAll();
}
template <class Element, class Index>
const auto& storeOf(const IndexedSlots<Element, Index>& slots) {
  return slots.store();
}

template <class Element, class Policy>
auto& storeOf(SlotStore<Element, Policy>& slots) {
  return slots;
}
template <class Element, class Policy>
const auto& storeOf(const SlotStore<Element, Policy>& slots) {
  return slots;
}

bool isText(const KwIOCL& io) { return io.GetIoTypeM() != 1; }

template <class Slots>
void writeList(KwIOCL* io, const char* name, const Slots& slots) {
  zel::streamOf(io, zel::kWriteFailure);
  const auto& store = storeOf(slots);
  const int count = std::max(store.bound(), 0);
  if (!isText(*io)) {
    io->OutputDM(&count);
    for (int i = 0; i < count; ++i) {
      store[i].FmOutputZelFileM(io);
    }
    return;
  }
  zel::ListWriter list(*io, name, zel::ListWriter::Layout::kPlain);
  list.begin(count);
  for (int i = 0; i < count; ++i) {
    list.index(i);
    store[i].FmOutputZelFileM(io);
  }
  list.end();
}

// Makes room for the elements to come, all old ones being deleted.
template <class Slots>
void startReading(const zel::ListSource& source, int count, Slots* slots) {
  if (!slots->reserve(source.roomFor(count, 0))) {
    throw zel::kReadFailure;
  }
  auto& store = storeOf(*slots);
  for (int i = 0; i < store.bound(); ++i) {
    if (store[i].IsAvailableM() == zel::kTagAvailable) {
      store[i].DelItemM();
    }
  }
  store.setAvailable(0);
}

template <class Slots>
void readList(KwIOCL* io, Slots* slots, LeastBytes least) {
  FILE* file = zel::streamOf(io, zel::kReadFailure);
  const bool hasIndices = isText(*io);
  const zel::ListSource source(file, hasIndices ? least.text : least.binary);
  const int count = zel::readCount(*io, source);
  if (count > 0) {
    startReading(source, count, slots);
  }
  auto& store = storeOf(*slots);
  for (int entry = 0; entry < count; ++entry) {
    const int room = source.roomFor(count, entry);
    if (!slots->reserve(room)) {
      throw zel::kReadFailure;
    }
    store.setBound(room);
    int index = entry;
    if (hasIndices) {
      io->InputDM(&index);
    }
    if (index < 0 || index >= store.length()) {
      throw zel::kReadFailure;
    }
    store[index].FmInputZelFileM(io);
    if (store[index].IsAvailableM() == zel::kTagAvailable) {
      store.setAvailable(store.available() + 1);
    }
  }
  if (hasIndices) {
    io->SkipLineM();
  }
}

}  // namespace

void NodeArr::FmInputZelLstM(KwIOCL* io) { readList(io, &nodes_, kLeastNode); }
void NodeArr::FmOutputZelLstM(KwIOCL* io, const char* name) const { writeList(io, name, nodes_); }

void TriangleArr::FmInputZelLstM(KwIOCL* io) { readList(io, &faces_, kLeastTriangle); }
void TriangleArr::FmOutputZelLstM(KwIOCL* io, const char* name) const {
  writeList(io, name, faces_);
}

void QuadArr::FmInputZelLstM(KwIOCL* io) { readList(io, &faces_, kLeastQuad); }
void QuadArr::FmOutputZelLstM(KwIOCL* io, const char* name) const { writeList(io, name, faces_); }

// Lists carry no texts: the slots keep those they had. The index knows another bound.
void KwStringArr::FmInputZelLstM(KwIOCL* io) {
  index_.reset();
  readList(io, &slots_, kLeastString);
}
void KwStringArr::FmOutputZelLstM(KwIOCL* io, const char* name) const {
  writeList(io, name, slots_);
}
