// The tagged lists of the value arrays. Two text layouts serve them: indexed, in which every slot
// has a line with its index, and dense, in which the values follow each other. The binary form is
// the same for all.

#include <cstdio>
#include <type_traits>

#include "zel/containers/char_arr.h"
#include "zel/containers/int2d_arr.h"
#include "zel/containers/int4d_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/containers/point3d_arr.h"
#include "zel/containers/real_arr.h"
#include "zel/core/constants.h"
#include "zel/textfile/detail/list_sinks.h"
#include "zel/textfile/detail/list_text.h"

namespace {

using zel::ListSource;
using zel::SlotStore;

constexpr int kLeastLineBytes = 2;

void require(bool done) {
  if (!done) {
    throw zel::kReadFailure;
  }
}

// --- one item on a line of its own -------------------------------------------------------------

void writeItem(KwIOCL& io, char item) { io.OutputCM(&item); }
void writeItem(KwIOCL& io, int item) { io.OutputDM(&item); }
void writeItem(KwIOCL& io, const zel::Int4& item) { io.OutputInt4DM(item.data()); }
void writeItem(KwIOCL& io, float item) { io.OutputRM(&item); }
void writeItem(KwIOCL& io, const zel::Float2& item) { io.OutputRM(&item[0], &item[1]); }
void writeItem(KwIOCL& io, const zel::Float3& item) { io.OutputRM(&item[0], &item[1], &item[2]); }

void readItem(KwIOCL& io, char* item) { io.InputCM(item); }
void readItem(KwIOCL& io, int* item) { io.InputDM(item); }
void readItem(KwIOCL& io, zel::Int2* item) { io.InputDM(&(*item)[0], &(*item)[1]); }
void readItem(KwIOCL& io, zel::Int4* item) {
  io.InputDM(&(*item)[0], &(*item)[1], &(*item)[2], &(*item)[3]);
}
void readItem(KwIOCL& io, float* item) { io.InputRM(item); }
void readItem(KwIOCL& io, zel::Float2* item) { io.InputRM(&(*item)[0], &(*item)[1]); }
void readItem(KwIOCL& io, zel::Float3* item) { io.InputRM(&(*item)[0], &(*item)[1], &(*item)[2]); }

// --- which entries an indexed list leaves out --------------------------------------------------

bool isTaken(int item) { return item != zel::kNoIndex; }
bool isTaken(const zel::Int2& item) { return isTaken(item[0]) && isTaken(item[1]); }
bool isTaken(const zel::Int4& item) {
  return isTaken(item[0]) && isTaken(item[1]) && isTaken(item[2]) && isTaken(item[3]);
}
// Not the mark that the array puts into its holes: these come back as counted entries.
bool isTaken(const zel::Float2& item) {
  constexpr float kLeftOut = -2147483648.0F;
  return item[0] != kLeftOut && item[1] != kLeftOut;
}
bool isTaken(const zel::Float3& item) {
  return item[0] > zel::kFloatMark && item[1] > zel::kFloatMark;
}

// --- text layouts ------------------------------------------------------------------------------

template <class Slot, class Policy>
int entriesOf(const SlotStore<Slot, Policy>& slots) {
  return slots.bound() < 0 ? 0 : slots.bound();
}

template <class Slot, class Policy>
void writeIndexed(KwIOCL& io, const char* name, const SlotStore<Slot, Policy>& slots) {
  const int autoNewLine = io.GetAutoNewLineM();
  io.SetAutoNewLineM(1);
  zel::ListWriter list(io, name, zel::ListWriter::Layout::kColumns);
  const int count = entriesOf(slots);
  list.begin(count);
  for (int i = 0; i < count; ++i) {
    list.index(i);
    writeItem(io, slots[i]);
  }
  list.end();
  io.SetAutoNewLineM(autoNewLine);
}

template <class Slot, class Policy>
void readIndexed(KwIOCL& io, SlotStore<Slot, Policy>* slots) {
  const int autoNewLine = io.GetAutoNewLineM();
  io.SetAutoNewLineM(1);
  const ListSource source(zel::streamOf(&io, zel::kReadFailure), 2 * kLeastLineBytes);
  const int count = zel::readCount(io, source);
  const auto store = [slots](int index, const Slot& item) {
    return !isTaken(item) || slots->set(item, index);
  };
  zel::EntrySink<Slot, decltype(store)> sink(source, zel::AtFault::kStop, store);
  for (int entry = 0; entry < count; ++entry) {
    int index = 0;
    Slot item{};
    io.InputDM(&index);
    readItem(io, &item);
    require(sink.put(index, item));
  }
  require(sink.finish());
  zel::readEndLine(io);
  io.SetAutoNewLineM(autoNewLine);
}

template <class Slot, class Policy>
void writeDense(KwIOCL& io, const char* name, const SlotStore<Slot, Policy>& slots) {
  const int autoNewLine = io.GetAutoNewLineM();
  io.SetAutoNewLineM(1);
  zel::ListWriter list(io, name, zel::ListWriter::Layout::kColumns);
  const int count = entriesOf(slots);
  const int available = slots.available();
  list.begin(count);
  io.OutputDM(&available);
  for (int i = 0; i < count; ++i) {
    writeItem(io, slots[i]);
  }
  list.end();
  io.SetAutoNewLineM(autoNewLine);
}

// Sets bound and available count and fills the slots with what `readSlots(first, end)` reads.
template <class Slot, class Policy, class ReadSlots>
void fillStore(const ListSource& source, int count, int available, SlotStore<Slot, Policy>* slots,
               ReadSlots readSlots) {
  int done = 0;
  do {
    const int end = source.roomFor(count, done);
    require(slots->reserve(end));
    slots->setBound(end);
    slots->setAvailable(available);
    readSlots(done, end);
    done = end;
  } while (done < count);
}

template <class Slot, class Policy>
void readDense(KwIOCL& io, SlotStore<Slot, Policy>* slots) {
  const int autoNewLine = io.GetAutoNewLineM();
  io.SetAutoNewLineM(1);
  const ListSource source(zel::streamOf(&io, zel::kReadFailure), kLeastLineBytes);
  const int count = zel::readCount(io, source);
  int available = 0;
  io.InputDM(&available);
  fillStore(source, count, available, slots, [&](int first, int end) {
    for (int i = first; i < end; ++i) {
      readItem(io, &(*slots)[i]);
    }
  });
  io.SkipLineM();
  io.SetAutoNewLineM(autoNewLine);
}

// --- binary form -------------------------------------------------------------------------------

template <class Slot, class Policy>
void writeBinary(FILE* file, const SlotStore<Slot, Policy>& slots) {
  const int counts[] = {entriesOf(slots), slots.available()};
  zel::writeRaw(file, counts, sizeof counts);
  zel::writeRaw(file, slots.data(), static_cast<std::size_t>(counts[0]) * sizeof(Slot));
}

template <class Slot, class Policy>
void readBinary(KwIOCL& io, SlotStore<Slot, Policy>* slots) {
  FILE* file = zel::streamOf(&io, zel::kReadFailure);
  const ListSource ofCounts(file, 1);
  const int count = zel::readCount(io, ofCounts);
  int available = 0;
  io.InputDM(&available);
  const ListSource source(file, sizeof(Slot));
  require(source.mayHold(count));
  fillStore(source, count, available, slots, [&](int first, int end) {
    const auto wanted = static_cast<std::size_t>(end - first);
    require(std::fread(slots->data() + first, sizeof(Slot), wanted, file) == wanted);
  });
}

// --- one list ------------------------------------------------------------------------------------

/// Arrays of single reals or characters are dense, all others indexed.
template <class Slot>
constexpr bool kIsDense = std::is_same_v<Slot, float> || std::is_same_v<Slot, char>;

template <class Slot, class Policy>
void writeList(KwIOCL* io, const char* name, const SlotStore<Slot, Policy>& slots) {
  FILE* file = zel::streamOf(io, zel::kWriteFailure);
  if (io->GetIoTypeM() == 1) {
    writeBinary(file, slots);
  } else if constexpr (kIsDense<Slot>) {
    writeDense(*io, name, slots);
  } else {
    writeIndexed(*io, name, slots);
  }
}

template <class Slot, class Policy>
void readList(KwIOCL* io, SlotStore<Slot, Policy>* slots) {
  zel::streamOf(io, zel::kReadFailure);
  if (io->GetIoTypeM() == 1) {
    readBinary(*io, slots);
  } else if constexpr (kIsDense<Slot>) {
    readDense(*io, slots);
  } else {
    readIndexed(*io, slots);
  }
}

}  // namespace

void CharArr::FmOutputZelLstM(KwIOCL* io, const char* name) const { writeList(io, name, slots_); }
void CharArr::FmInputZelLstM(KwIOCL* io) { readList(io, &slots_); }

void IntArr::FmOutputZelLstM(KwIOCL* io, const char* name) const { writeList(io, name, slots_); }
void IntArr::FmInputZelLstM(KwIOCL* io) { readList(io, &slots_); }

// Binary on every open stream, text streams too; the reader goes by the kind of stream.
void Int2DArr::FmOutputZelLstM(KwIOCL* io, const char* /*name*/) const {
  writeBinary(zel::streamOf(io, zel::kWriteFailure), slots_);
}
void Int2DArr::FmInputZelLstM(KwIOCL* io) { readList(io, &slots_); }

void Int4DArr::FmOutputZelLstM(KwIOCL* io, const char* name) const { writeList(io, name, slots_); }
void Int4DArr::FmInputZelLstM(KwIOCL* io) { readList(io, &slots_); }

void RealArr::FmOutputZelLstM(KwIOCL* io, const char* name) const { writeList(io, name, slots_); }
void RealArr::FmInputZelLstM(KwIOCL* io) { readList(io, &slots_); }

void Point2DArr::FmOutputZelLstM(KwIOCL* io, const char* name) const {
  writeList(io, name, slots_);
}
void Point2DArr::FmInputZelLstM(KwIOCL* io) { readList(io, &slots_); }

void Point3DArr::FmOutputZelLstM(KwIOCL* io, const char* name) const {
  writeList(io, name, slots_.store());
}
void Point3DArr::FmInputZelLstM(KwIOCL* io) { readList(io, &slots_.changeAll()); }

int Point3DArr::FmOutputLstM(FILE* file) const {
  if (file != nullptr) {
    const auto count = static_cast<std::size_t>(entriesOf(slots_.store()));
    static_cast<void>(std::fwrite(slots_.data(), sizeof(zel::Float3), count, file));
  }
  return 1;
}

int Point3DArr::FmInputLstM(FILE* file, int count) {
  auto& store = slots_.changeAll();
  if (count > 0) {
    if (!store.reserve(count)) {
      return 1;
    }
    if (file != nullptr) {
      const auto wanted = static_cast<std::size_t>(count);
      static_cast<void>(std::fread(store.data(), sizeof(zel::Float3), wanted, file));
    }
  }
  store.setBound(count);
  store.setAvailable(count);
  return 1;
}
