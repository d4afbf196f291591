#pragma once

/// @file
/// Member definitions of SlotStore. Included by the source file of each array, which instantiates
/// the store explicitly: `template class zel::SlotStore<int, zel::IntPolicy>;`

#include <algorithm>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "zel/containers/detail/heap.h"
#include "zel/containers/detail/policies.h"
#include "zel/containers/slot_store.h"

namespace zel {

/// Whether slots are plain values that may be moved bytewise.
template <class Slot>
inline constexpr bool kIsPlain = std::is_trivially_copyable_v<Slot>;

/// Constructs `count` fresh slots in raw memory.
template <class Policy, class Slot>
void constructFresh(Slot* first, std::int64_t count) {
  if constexpr (kIsPlain<Slot>) {
    std::uninitialized_fill_n(first, count, SlotTraits<Slot>::filled(Policy::fresh()));
  } else {
    std::uninitialized_default_construct_n(first, count);
  }
}

/// Room for `length` slots. @return null, reported, when refused.
template <class Slot>
Slot* allocateSlots(std::int64_t length) {
  return static_cast<Slot*>(takeBlock(length * static_cast<std::int64_t>(sizeof(Slot))));
}

// --- life --------------------------------------------------------------------------------------

template <class Slot, class Policy>
SlotStore<Slot, Policy>::SlotStore() {
  if constexpr (kIsPlain<Slot>) {
    resetInline();
  }
}

template <class Slot, class Policy>
SlotStore<Slot, Policy>::SlotStore(int length) : SlotStore() {
  reserve(length);
}

template <class Slot, class Policy>
SlotStore<Slot, Policy>::SlotStore(const SlotStore& other) : SlotStore() {
  *this = other;
}

template <class Slot, class Policy>
SlotStore<Slot, Policy>::SlotStore(SlotStore&& other) noexcept : SlotStore() {
  takeOver(other);
}

template <class Slot, class Policy>
SlotStore<Slot, Policy>& SlotStore<Slot, Policy>::operator=(const SlotStore& other) {
  Slot* block = nullptr;
  if (this == &other || !copyHeapOf(other, &block)) {
    return *this;
  }
  releaseHeap();
  heap_ = block;
  // Inline slots take part even when not in use: a purge may bring them back.
  std::copy_n(other.inline_, kInlineLength, inline_);
  length_ = other.length_;
  bound_ = other.bound_;
  available_ = other.available_;
  increment_ = other.increment_;
  return *this;
}

template <class Slot, class Policy>
SlotStore<Slot, Policy>& SlotStore<Slot, Policy>::operator=(SlotStore&& other) noexcept {
  if (this != &other) {
    releaseHeap();
    takeOver(other);
  }
  return *this;
}

template <class Slot, class Policy>
SlotStore<Slot, Policy>::~SlotStore() {
  releaseHeap();
}

// Copies the heap block of `other`, if it has one. False when memory is refused.
template <class Slot, class Policy>
bool SlotStore<Slot, Policy>::copyHeapOf(const SlotStore& other, Slot** block) const {
  if (other.length_ == kInlineLength) {
    return true;
  }
  *block = allocateSlots<Slot>(other.length_);
  if (*block == nullptr) {
    return false;
  }
  std::uninitialized_copy_n(other.heap_, other.length_, *block);
  return true;
}

// Steals the content of `other`; this store's heap block is already released.
template <class Slot, class Policy>
void SlotStore<Slot, Policy>::takeOver(SlotStore& other) {
  heap_ = std::exchange(other.heap_, nullptr);
  std::move(other.inline_, other.inline_ + kInlineLength, inline_);
  length_ = std::exchange(other.length_, kInlineLength);
  bound_ = std::exchange(other.bound_, 0);
  available_ = std::exchange(other.available_, 0);
  increment_ = std::exchange(other.increment_, kDefaultIncrement);
  other.resetInline();
}

template <class Slot, class Policy>
void SlotStore<Slot, Policy>::resetInline() {
  if constexpr (kIsPlain<Slot>) {
    constructFresh<Policy>(inline_, kInlineLength);
  } else {
    for (Slot& slot : inline_) {
      slot = Slot();
    }
  }
}

template <class Slot, class Policy>
void SlotStore<Slot, Policy>::releaseHeap() {
  if (heap_ != nullptr) {
    std::destroy_n(heap_, length_);
    slFree(heap_);
  }
  heap_ = nullptr;
  length_ = kInlineLength;
}

// --- capacity ----------------------------------------------------------------------------------

template <class Slot, class Policy>
void SlotStore<Slot, Policy>::setIncrement(int increment) {
  if (increment > 0) {
    increment_ = increment;
  }
}

template <class Slot, class Policy>
bool SlotStore<Slot, Policy>::addSize(std::int64_t count) {
  return count > 0 && resizeHeap(length_ + count);
}

template <class Slot, class Policy>
bool SlotStore<Slot, Policy>::reserve(int length) {
  return length <= length_ || resizeHeap(length);
}

template <class Slot, class Policy>
bool SlotStore<Slot, Policy>::makeRoomFor(int index) {
  return index < length_ ||
         resizeHeap(length_ + Policy::growth(length_, increment_, std::int64_t{index}));
}

// Moves the content to a heap block of `length` slots, more than now.
template <class Slot, class Policy>
bool SlotStore<Slot, Policy>::resizeHeap(std::int64_t length) {
  const std::int64_t bytes = length * static_cast<std::int64_t>(sizeof(Slot));
  Slot* block = nullptr;
  if (kIsPlain<Slot> && heap_ != nullptr && bytes <= kMaxBlockBytes) {
    void* raw = heap_;
    block = static_cast<Slot*>(slRealloc(raw, static_cast<std::uint32_t>(bytes)));
  } else {
    block = allocateSlots<Slot>(length);
  }
  if (block == nullptr) {
    return false;
  }
  if (heap_ == nullptr) {
    std::uninitialized_move_n(inline_, kInlineLength, block);
  } else if constexpr (!kIsPlain<Slot>) {
    std::uninitialized_move_n(heap_, length_, block);
    std::destroy_n(heap_, length_);
    slFree(heap_);
  }
  heap_ = block;
  constructFresh<Policy>(block + length_, length - length_);
  length_ = static_cast<int>(length);
  return true;
}

// --- writing -----------------------------------------------------------------------------------

template <class Slot, class Policy>
bool SlotStore<Slot, Policy>::set(Slot slot, int index) {
  if (index < 0 || !makeRoomFor(index)) {
    return false;
  }
  write(std::move(slot), index);
  return true;
}

template <class Slot, class Policy>
template <class Given>
void SlotStore<Slot, Policy>::write(Given&& slot, int index) {
  Slot& place = data()[index];
  if (Policy::countsWrite(keyOf(place), keyOf(slot))) {
    ++available_;
  }
  bound_ = std::max(bound_, index + 1);
  place = std::forward<Given>(slot);
}

template <class Slot, class Policy>
int SlotStore<Slot, Policy>::add(Slot slot) {
  const int index = std::max(bound_, 0);
  set(std::move(slot), index);
  return index;
}

template <class Slot, class Policy>
void SlotStore<Slot, Policy>::insert(Slot slot, int position) {
  const int oldBound = std::max(bound_, 0);
  if (position < 0 || position > oldBound) {
    return;
  }
  if (Policy::kInsertIsWrite || oldBound == length_) {
    if (!set(slot, oldBound)) {
      return;
    }
  } else {
    bound_ = oldBound + 1;
    ++available_;
  }
  Slot* store = data();
  std::move_backward(store + position, store + oldBound, store + oldBound + 1);
  store[position] = std::move(slot);
}

template <class Slot, class Policy>
void SlotStore<Slot, Policy>::remove(int index) {
  if (!holds(index)) {
    return;
  }
  Slot& slot = data()[index];
  if (Policy::isDeletable(keyOf(slot))) {
    Policy::markDeleted(keyOf(slot));
    --available_;
  }
  if (index == bound_ - 1) {
    --bound_;
  }
}

template <class Slot, class Policy>
void SlotStore<Slot, Policy>::clear() {
  releaseHeap();
  resetInline();
  bound_ = 0;
  available_ = 0;
}

template <class Slot, class Policy>
void SlotStore<Slot, Policy>::clearKeepingStore() {
  Slot* store = data();
  for (int i = 0; i < bound_; ++i) {
    Policy::markDeleted(keyOf(store[i]));
  }
  bound_ = 0;
  available_ = 0;
}

template <class Slot, class Policy>
bool SlotStore<Slot, Policy>::clearAndReserve(int length) {
  const int leftInside = heap_ == nullptr ? std::min(bound_, kInlineLength) : 0;
  if (!reserve(length)) {
    return false;
  }
  for (int i = 0; i < leftInside; ++i) {  // a purge may bring them back
    Policy::markDeleted(keyOf(inline_[i]));
  }
  clearKeepingStore();
  return true;
}

template <class Slot, class Policy>
void SlotStore<Slot, Policy>::purge() {
  const int oldBound = std::max(bound_, 0);
  Slot* store = data();
  int kept = 0;
  for (int i = 0; i < oldBound; ++i) {
    if (!Policy::isKept(keyOf(store[i]))) {
      continue;
    }
    if (i != kept) {
      store[kept] = std::move(store[i]);
      if constexpr (Policy::kPurgeZeroesSource) {
        store[i] = Slot{};
      }
    }
    ++kept;
  }
  bound_ = kept;
  if (Policy::kPurgeReturnsInline && oldBound > kInlineLength && kept <= kInlineLength) {
    returnInline(kept);
  }
}

// Brings the first `kept` slots home; the others keep what they held before the heap was used.
template <class Slot, class Policy>
void SlotStore<Slot, Policy>::returnInline(int kept) {
  std::move(heap_, heap_ + kept, inline_);
  releaseHeap();
}

// Makes room for the live slots of `other` behind the bound: at least `least` slots, and where
// these are too few, because the count of `other` is too low, as much as writing one after the
// other makes. @return whether there is room for all.
template <class Slot, class Policy>
bool SlotStore<Slot, Policy>::makeRoomForLive(const SlotStore& other, std::int64_t least) {
  std::int64_t length = length_ + std::max<std::int64_t>(least, 0);
  const std::int64_t end = std::int64_t{std::max(bound_, 0)} + other.liveAfter(-1);
  while (length < end && length <= kMaxBlockBytes) {
    length += Policy::growth(length, increment_, length);
  }
  return length == length_ || resizeHeap(length);
}

template <class Slot, class Policy>
int SlotStore<Slot, Policy>::append(const SlotStore& other) {
  const int oldBound = std::max(bound_, 0);
  const int otherBound = other.bound_;
  if (!makeRoomForLive(other, std::int64_t{other.available_} - (length_ - oldBound))) {
    return oldBound;
  }
  bound_ = oldBound;
  for (int i = 0; i < otherBound; ++i) {
    const Slot slot = other.data()[i];
    if (Policy::isLive(keyOf(slot))) {
      data()[bound_++] = slot;
      ++available_;
    }
  }
  return oldBound;
}

template <class Slot, class Policy>
int SlotStore<Slot, Policy>::import(const SlotStore& other) {
  const int imported = other.available_;
  const int otherBound = other.bound_;
  int next = std::max(bound_, 0);
  if (!makeRoomForLive(other, imported)) {
    return imported;
  }
  for (int i = 0; i < otherBound; ++i) {
    const Slot slot = other.data()[i];
    if (Policy::isLive(keyOf(slot))) {
      set(slot, next++);
    }
  }
  return imported;
}

// --- walking -----------------------------------------------------------------------------------

template <class Slot, class Policy>
int SlotStore<Slot, Policy>::nextLive(int after) const {
  const Slot* store = data();
  for (std::int64_t i = std::max(after, -1) + std::int64_t{1}; i < bound_; ++i) {
    if (Policy::isLive(keyOf(store[i]))) {
      return static_cast<int>(i);
    }
  }
  return -1;
}

template <class Slot, class Policy>
int SlotStore<Slot, Policy>::previousLive(int before) const {
  const Slot* store = data();
  for (int i = std::max(std::min(before, bound_), 0); i > 0; --i) {
    if (Policy::isLiveBackward(keyOf(store[i - 1]))) {
      return i - 1;
    }
  }
  return -1;
}

template <class Slot, class Policy>
int SlotStore<Slot, Policy>::liveAfter(int index) const {
  const Slot* store = data();
  int count = 0;
  for (std::int64_t i = std::max(index, -1) + std::int64_t{1}; i < bound_; ++i) {
    count += Policy::isLive(keyOf(store[i])) ? 1 : 0;
  }
  return count;
}

template <class Slot, class Policy>
template <class Predicate>
int SlotStore<Slot, Policy>::firstWhere(Predicate matches) const {
  const Slot* store = data();
  for (int i = 0; i < bound_; ++i) {
    if (matches(store[i])) {
      return i;
    }
  }
  return -1;
}

template <class Slot, class Policy>
bool SlotStore<Slot, Policy>::validate() const {
  const bool storeFits = (heap_ == nullptr) == (length_ == kInlineLength);
  return storeFits && length_ >= kInlineLength && bound_ <= length_ && increment_ > 0;
}

}  // namespace zel
