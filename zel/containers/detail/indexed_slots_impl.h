#pragma once

/// @file
/// Member definitions of IndexedSlots. Included by the source file of each array, which
/// instantiates the template explicitly.

#include <algorithm>
#include <new>
#include <utility>

#include "zel/containers/detail/slot_index.h"
#include "zel/containers/detail/slot_store_impl.h"
#include "zel/containers/indexed_slots.h"
#include "zel/core/detail/check.h"

namespace zel {

// --- life --------------------------------------------------------------------------------------

template <class Slot, class Policy, class Index>
IndexedSlots<Slot, Policy, Index>::IndexedSlots() = default;

template <class Slot, class Policy, class Index>
IndexedSlots<Slot, Policy, Index>::IndexedSlots(int wanted) : Store(wanted) {}

// A copy has another store, to which nothing is handed out yet: it starts without an index.
template <class Slot, class Policy, class Index>
IndexedSlots<Slot, Policy, Index>::IndexedSlots(const IndexedSlots& other) : Store(other.store()) {}

template <class Slot, class Policy, class Index>
IndexedSlots<Slot, Policy, Index>::IndexedSlots(IndexedSlots&& other) noexcept : IndexedSlots() {
  *this = std::move(other);
}

template <class Slot, class Policy, class Index>
IndexedSlots<Slot, Policy, Index>& IndexedSlots<Slot, Policy, Index>::operator=(
    const IndexedSlots& other) {
  const Slot* before = Store::data();
  Store::operator=(other);
  if (Store::data() != before) {  // equal when memory was refused: nothing has changed
    startAnew();
  }
  return *this;
}

template <class Slot, class Policy, class Index>
IndexedSlots<Slot, Policy, Index>& IndexedSlots<Slot, Policy, Index>::operator=(
    IndexedSlots&& other) noexcept {
  if (this != &other) {
    Store::operator=(std::move(static_cast<Store&>(other)));
    delete index_.exchange(other.index_.exchange(nullptr));
    isUntracked_ = std::exchange(other.isUntracked_, false);
  }
  return *this;
}

template <class Slot, class Policy, class Index>
IndexedSlots<Slot, Policy, Index>::~IndexedSlots() {
  delete index_.load(std::memory_order_relaxed);
}

// --- reading -----------------------------------------------------------------------------------

template <class Slot, class Policy, class Index>
bool IndexedSlots<Slot, Policy, Index>::isLive(int slot) const {
  return holds(slot) && Policy::isLive(keyOf(data()[slot]));
}

template <class Slot, class Policy, class Index>
const Slot& IndexedSlots<Slot, Policy, Index>::at(int slot) const {
  static const Slot kFresh{};
  return exists(slot) ? data()[slot] : kFresh;
}

template <class Slot, class Policy, class Index>
const Index* IndexedSlots<Slot, Policy, Index>::makeIndex() const {
  if (length() <= kSmallLength || isUntracked_) {
    return nullptr;
  }
  Index* made = new (std::nothrow) Index();
  Index* known = nullptr;
  if (made != nullptr && !index_.compare_exchange_strong(known, made)) {
    delete made;  // another thread was first
    return known;
  }
  return made;
}

// --- handing out -------------------------------------------------------------------------------

template <class Slot, class Policy, class Index>
Slot* IndexedSlots<Slot, Policy, Index>::slotAt(int slot) {
  return holds(slot) ? &handOut(slot) : nullptr;
}

template <class Slot, class Policy, class Index>
Slot& IndexedSlots<Slot, Policy, Index>::handOut(int slot) {
  if (!exists(slot)) {
    thread_local Slot scratch;
    scratch = Slot{};
    return scratch;
  }
  if (length() > kSmallLength && !isUntracked_) {
    Index* index = std::as_const(*this).index() == nullptr ? nullptr : knownIndex();
    if (index == nullptr) {
      return data()[slot];
    }
    if (!index->exposed.contains(slot)) {
      if (!index->exposed.add(slot, count())) {
        return data()[slot];
      }
      if (holds(slot)) {
        index->forget(Store::data(), slot);
      }
    }
  }
  return Store::data()[slot];
}

template <class Slot, class Policy, class Index>
Slot* IndexedSlots<Slot, Policy, Index>::data() {
  // Nothing is worth keeping: everything may change until the store moves.
  startAnew();
  isUntracked_ = length() > kSmallLength;
  return Store::data();
}

// --- changing ----------------------------------------------------------------------------------

template <class Slot, class Policy, class Index>
bool IndexedSlots<Slot, Policy, Index>::addSize(std::int64_t added) {
  const int before = length();
  const bool isDone = Store::addSize(added);
  tellMoved(before, count());
  return isDone;
}

template <class Slot, class Policy, class Index>
bool IndexedSlots<Slot, Policy, Index>::reserve(int wanted) {
  const int before = length();
  const bool isDone = Store::reserve(wanted);
  tellMoved(before, count());
  return isDone;
}

template <class Slot, class Policy, class Index>
template <class Given>
bool IndexedSlots<Slot, Policy, Index>::set(Given&& slot, int position) {
  if (knownIndex() == nullptr && exists(position)) {  // nobody to tell
    Store::write(std::forward<Given>(slot), position);
    return true;
  }
  return setAndTell(std::forward<Given>(slot), position);
}

// Apart, so that appending without an index stays as short as it can be.
template <class Slot, class Policy, class Index>
template <class Given>
[[gnu::noinline]] bool IndexedSlots<Slot, Policy, Index>::setAndTell(Given&& slot, int position) {
  const int lengthBefore = length();
  const int countBefore = count();
  tellBefore(position);
  const bool isDone = Store::set(std::forward<Given>(slot), position);
  if (isDone) {
    tellMoved(lengthBefore, countBefore);
    tellAfter(std::min(countBefore, position), position + 1);
  }
  return isDone;
}

template <class Slot, class Policy, class Index>
template <class Given>
int IndexedSlots<Slot, Policy, Index>::add(Given&& slot) {
  const int position = count();
  set(std::forward<Given>(slot), position);
  return position;
}

template <class Slot, class Policy, class Index>
void IndexedSlots<Slot, Policy, Index>::insert(Slot slot, int position) {
  const int lengthBefore = length();
  const int countBefore = count();
  Store::insert(std::move(slot), position);
  tellMoved(lengthBefore, countBefore);
  if (position == countBefore) {
    tellAfter(countBefore, count());
  } else if (count() != countBefore) {
    static_cast<void>(changeAll());
  }
}

template <class Slot, class Policy, class Index>
void IndexedSlots<Slot, Policy, Index>::remove(int slot) {
  if (holds(slot)) {
    tellBefore(slot);
    Store::remove(slot);
    tellAfter(slot, slot + 1);
  }
}

template <class Slot, class Policy, class Index>
void IndexedSlots<Slot, Policy, Index>::clear() {
  Store::clear();
  startAnew();
}

template <class Slot, class Policy, class Index>
void IndexedSlots<Slot, Policy, Index>::clearKeepingStore() {
  changeAll().clearKeepingStore();
}

template <class Slot, class Policy, class Index>
void IndexedSlots<Slot, Policy, Index>::setBound(int wanted) {
  ZEL_ASSERT(wanted <= length());
  const int countBefore = count();
  for (int slot = std::max(wanted, 0); slot < countBefore; ++slot) {
    tellBefore(slot);
  }
  Store::setBound(wanted);
  tellAfter(std::min(countBefore, count()), std::max(countBefore, count()));
}

template <class Slot, class Policy, class Index>
typename IndexedSlots<Slot, Policy, Index>::Store& IndexedSlots<Slot, Policy, Index>::changeAll() {
  if (Index* index = knownIndex()) {
    index->drop();
  }
  return *this;
}

template <class Slot, class Policy, class Index>
void IndexedSlots<Slot, Policy, Index>::replace(Store&& store) {
  Store::operator=(std::move(store));
  startAnew();
}

// --- telling the index -------------------------------------------------------------------------

template <class Slot, class Policy, class Index>
void IndexedSlots<Slot, Policy, Index>::tellBefore(int slot) {
  if (Index* index = knownIndex();
      index != nullptr && holds(slot) && !index->exposed.contains(slot)) {
    index->forget(Store::data(), slot);
  }
}

// Slots that a moving bound takes in, or leaves behind, hold whatever was left there.
template <class Slot, class Policy, class Index>
void IndexedSlots<Slot, Policy, Index>::tellAfter(int first, int end) {
  if (Index* index = knownIndex()) {
    for (int slot = std::max(first, 0); slot < std::min(end, length()); ++slot) {
      learn(*index, slot);
    }
    checkNowAndThen();
  }
}

// References have died, so slots below the bound are as they stay; those from there on are learned
// when the bound takes them in.
template <class Slot, class Policy, class Index>
void IndexedSlots<Slot, Policy, Index>::tellMoved(int lengthBefore, int countBefore) {
  if (length() == lengthBefore) {
    return;
  }
  isUntracked_ = false;
  if (Index* index = knownIndex()) {
    for (const int slot : index->exposed.takeAll()) {
      if (slot < countBefore) {
        learn(*index, slot);
      }
    }
  }
}

template <class Slot, class Policy, class Index>
void IndexedSlots<Slot, Policy, Index>::learn(Index& index, int slot) {
  if (index.exposed.contains(slot)) {
    return;
  }
  try {
    index.learn(Store::data(), slot, holds(slot));
  } catch (const std::bad_alloc&) {
    index.drop();
  }
}

template <class Slot, class Policy, class Index>
void IndexedSlots<Slot, Policy, Index>::startAnew() {
  delete index_.exchange(nullptr);
  isUntracked_ = false;
}

// --- checks ------------------------------------------------------------------------------------

template <class Slot, class Policy, class Index>
bool IndexedSlots<Slot, Policy, Index>::validate() const {
  const Index* index = index_.load(std::memory_order_acquire);
  return Store::validate() && (index == nullptr || (length() > kSmallLength && !isUntracked_ &&
                                                    index->validate(data(), count())));
}

// Often enough to find a fault near its cause, seldom enough for long arrays.
template <class Slot, class Policy, class Index>
void IndexedSlots<Slot, Policy, Index>::checkNowAndThen() {
  constexpr int kSlotsPerChange = 64;
  if (Index* index = knownIndex(); ZEL_CHECKS >= 2 && index != nullptr) {
    index->changesSinceCheck += 1;
    if (index->changesSinceCheck > count() / kSlotsPerChange) {
      index->changesSinceCheck = 0;
      ZEL_VALIDATE(validate());
    }
  }
}

}  // namespace zel
