#pragma once

/// @file
/// Where the entries of a list go while it is read. A stream without a length (a pipe) does not
/// vouch for the indices that a list names: those that reach far beyond what was read so far wait
/// for the end of the list, when all that was read vouches for them. So the list is the same as
/// from a file, whatever the order of its entries, and no stream makes storage grow faster than it
/// delivers bytes.

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

#include "zel/containers/detail/heap.h"
#include "zel/textfile/detail/list_text.h"

namespace zel {

/// Entries with the slots that they are meant for, in the order in which they came.
template <class Entry>
class WaitingEntries {
 public:
  struct Waiting {
    int slot;
    Entry entry;
  };

  /// @return false, reported, when memory is refused.
  [[nodiscard]] bool add(int slot, Entry entry) {
    try {
      entries_.push_back({slot, std::move(entry)});
    } catch (const std::bad_alloc&) {
      return false;
    }
    return true;
  }
  [[nodiscard]] bool empty() const { return entries_.empty(); }
  [[nodiscard]] std::vector<Waiting, HeapAllocator<Waiting>> takeAll() {
    return std::exchange(entries_, {});
  }
  /// One past the highest slot below `limit`; 0 without any.
  [[nodiscard]] int endBelow(int limit) const {
    int end = 0;
    for (const Waiting& waiting : entries_) {
      end = waiting.slot < limit ? std::max(end, waiting.slot + 1) : end;
    }
    return end;
  }

 private:
  std::vector<Waiting, HeapAllocator<Waiting>> entries_;
};

/// What becomes of an entry that cannot be stored.
enum class AtFault {
  kStop,  ///< the list has failed
  kSkip,  ///< it is dropped
};

/// Stores the entries of an indexed list of values by `store(index, entry)`, which answers whether
/// it could. Storage may grow differently with the order, so once an entry waits, all behind it do.
template <class Entry, class Store>
class EntrySink {
 public:
  EntrySink(const ListSource& source, AtFault atFault, Store store)
      : source_(source), atFault_(atFault), store_(store) {}
  /// What still waits when reading has failed is stored as far as it may be.
  ~EntrySink() { static_cast<void>(finish()); }
  EntrySink(const EntrySink&) = delete;
  EntrySink& operator=(const EntrySink&) = delete;

  /// @return whether the list is sound so far.
  [[nodiscard]] bool put(int index, const Entry& entry) {
    bool isDone = false;
    if (index >= 0 && (!waiting_.empty() || !source_.mayName(index)) && !source_.isMeasured()) {
      isDone = waiting_.add(index, entry);
    } else {
      isDone = source_.mayName(index) && store_(index, entry);
    }
    return isDone || atFault_ == AtFault::kSkip;
  }
  /// Stores what waits. @return whether the list is sound.
  [[nodiscard]] bool finish() {
    for (const auto& [slot, entry] : waiting_.takeAll()) {
      const bool isDone = source_.mayName(slot) && store_(slot, entry);
      if (!isDone && atFault_ == AtFault::kStop) {
        return false;
      }
    }
    return true;
  }

 private:
  const ListSource& source_;
  AtFault atFault_;
  Store store_;
  WaitingEntries<Entry> waiting_;
};

/// The slots that a list of elements fills.
template <class Slots, class Element>
class ElementSink {
 public:
  /// @param slots what is there already stays; an element meant for one of them never waits.
  explicit ElementSink(Slots* slots) : slots_(slots), limit_(slots->length()) {}

  /// @param limit slots that the stream vouches for by now.
  /// @return whether the store has the slot `index`, which makes it grow below the limit.
  [[nodiscard]] bool reaches(int index, int limit) {
    // What waits must come behind what was read later for the same slot.
    limit_ = waiting_.empty() ? std::max(limit, limit_) : limit_;
    if (index < 0 || index >= limit_) {
      return false;
    }
    const std::int64_t doubled = std::int64_t{2} * slots_->length();
    return index < slots_->length() ||
           slots_->reserve(static_cast<int>(std::max<std::int64_t>(
               index + std::int64_t{1}, std::min<std::int64_t>(doubled, limit_))));
  }
  /// @return false, reported, when memory is refused.
  [[nodiscard]] bool wait(int index, Element element) {
    return waiting_.add(index, std::move(element));
  }
  /// One past the highest slot below `limit` for which an element waits; 0 without any.
  [[nodiscard]] int endOfWaiting(int limit) const { return waiting_.endBelow(limit); }
  /// Makes the store `length` slots long and puts what waits into those that there are, each by
  /// `put(index, element)`. @return whether memory was granted.
  template <class Put>
  [[nodiscard]] bool finish(int length, Put put) {
    const bool isLong = slots_->reserve(length);
    for (auto& [slot, element] : waiting_.takeAll()) {
      if (slot < slots_->length()) {
        put(slot, std::move(element));
      }
    }
    return isLong;
  }

 private:
  Slots* slots_;
  int limit_;
  WaitingEntries<Element> waiting_;
};

}  // namespace zel
