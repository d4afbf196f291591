// The tagged lists of the element arrays.

#include <algorithm>
#include <utility>

#include "zel/containers/kw_string_arr.h"
#include "zel/core/constants.h"
#include "zel/mesh/node.h"
#include "zel/mesh/quad.h"
#include "zel/mesh/triangle.h"
#include "zel/textfile/detail/list_sinks.h"
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
template <class Element, class Policy, class Index>
auto& storeOf(IndexedSlots<Element, Policy, Index>& slots) {
  return slots.changeAll();
}
template <class Element, class Policy, class Index>
const auto& storeOf(const IndexedSlots<Element, Policy, Index>& slots) {
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

void require(bool done) {
  if (!done) {
    throw zel::kReadFailure;
  }
}

// Makes room for `room` elements, all old ones being deleted.
template <class Slots>
void startReading(int room, Slots* slots) {
  require(slots->reserve(room));
  auto& store = storeOf(*slots);
  for (int i = 0; i < store.bound(); ++i) {
    if (store[i].IsAvailableM() == zel::kTagAvailable) {
      store[i].DelItemM();
    }
  }
  store.setAvailable(0);
}

template <class Store>
void countIfLive(Store& store, int index) {
  if (store[index].IsAvailableM() == zel::kTagAvailable) {
    store.setAvailable(store.available() + 1);
  }
}

/// Reads the elements of one list into their slots.
template <class Slots, class Element>
class ElementReader {
 public:
  ElementReader(KwIOCL* io, const zel::ListSource& source, int count, Slots* slots)
      : io_(io),
        source_(source),
        count_(count),
        hasIndices_(isText(*io)),
        slots_(slots),
        // Beyond the count there is room only where there was.
        end_(std::max(count, slots->length())),
        sink_(slots) {}

  void readAll() {
    for (int entry = 0; entry < count_; ++entry) {
      readOne(entry);
    }
    require(finish(count_));
  }
  /// After a failure: what waits is kept as far as what was read vouches for it.
  void keepRead() {
    const int end = sink_.endOfWaiting(source_.mostOf(count_));
    static_cast<void>(finish(end));
  }

 private:
  void readOne(int entry) {
    auto& store = storeOf(*slots_);
    int index = entry;
    if (hasIndices_) {
      io_->InputDM(&index);
    }
    require(index >= 0 && index < end_);
    const int room = source_.roomFor(count_, entry + 1);
    if (sink_.reaches(index,
                      hasIndices_ && !source_.isMeasured() ? source_.mostOf(count_) : room)) {
      store.setBound(std::min(count_, store.length()));
      store[index].FmInputZelFileM(io_);
      countIfLive(store, index);
    } else {
      require(!source_.isMeasured());
      Element element;
      element.FmInputZelFileM(io_);
      require(sink_.wait(index, std::move(element)));
    }
  }
  bool finish(int end) {
    auto& store = storeOf(*slots_);
    const bool isLong = sink_.finish(end, [&store](int index, Element element) {
      store[index] = std::move(element);
      countIfLive(store, index);
    });
    store.setBound(std::min(count_, store.length()));
    return isLong;
  }

  KwIOCL* io_;
  const zel::ListSource& source_;
  int count_;
  bool hasIndices_;
  Slots* slots_;
  int end_;
  zel::ElementSink<Slots, Element> sink_;
};

template <class Element, class Slots>
void readList(KwIOCL* io, Slots* slots, LeastBytes least) {
  FILE* file = zel::streamOf(io, zel::kReadFailure);
  const zel::ListSource source(file, isText(*io) ? least.text : least.binary);
  const int count = zel::readCount(*io, source);
  if (count > 0) {
    startReading(source.isMeasured() ? count : 0, slots);
    ElementReader<Slots, Element> reader(io, source, count, slots);
    try {
      reader.readAll();
    } catch (int) {
      reader.keepRead();
      throw;
    }
  }
  if (isText(*io)) {
    io->SkipLineM();
  }
}

}  // namespace

void NodeArr::FmInputZelLstM(KwIOCL* io) { readList<NodeCL>(io, &nodes_, kLeastNode); }
void NodeArr::FmOutputZelLstM(KwIOCL* io, const char* name) const { writeList(io, name, nodes_); }

void TriangleArr::FmInputZelLstM(KwIOCL* io) { readList<TriangleCL>(io, &faces_, kLeastTriangle); }
void TriangleArr::FmOutputZelLstM(KwIOCL* io, const char* name) const {
  writeList(io, name, faces_);
}

void QuadArr::FmInputZelLstM(KwIOCL* io) { readList<QuadCL>(io, &faces_, kLeastQuad); }
void QuadArr::FmOutputZelLstM(KwIOCL* io, const char* name) const { writeList(io, name, faces_); }

// Lists carry no texts: the slots keep those they had. The index knows another bound.
void KwStringArr::FmInputZelLstM(KwIOCL* io) { readList<KwStringCL>(io, &slots_, kLeastString); }
void KwStringArr::FmOutputZelLstM(KwIOCL* io, const char* name) const {
  writeList(io, name, slots_);
}
