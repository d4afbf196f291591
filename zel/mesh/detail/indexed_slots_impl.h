#pragma once

/// @file
/// Member definitions of IndexedSlots. Included by the source file of each list, which
/// instantiates the template explicitly.

#include <algorithm>
#include <new>
#include <utility>

#include "zel/containers/detail/slot_store_impl.h"
#include "zel/core/constants.h"
#include "zel/mesh/indexed_slots.h"

namespace zel {

// --- life --------------------------------------------------------------------------------------

template <class Element, class Index>
IndexedSlots<Element, Index>::IndexedSlots() = default;

template <class Element, class Index>
IndexedSlots<Element, Index>::IndexedSlots(int length) : store_(length) {}

// A copy has another store, to which nothing is handed out yet: it starts without an index.
template <class Element, class Index>
IndexedSlots<Element, Index>::IndexedSlots(const IndexedSlots& other) : store_(other.store_) {}

template <class Element, class Index>
IndexedSlots<Element, Index>::IndexedSlots(IndexedSlots&& other) noexcept
    : store_(std::move(other.store_)),
      index_(std::move(other.index_)),
      isUntracked_(std::exchange(other.isUntracked_, false)) {}

template <class Element, class Index>
IndexedSlots<Element, Index>& IndexedSlots<Element, Index>::operator=(const IndexedSlots& other) {
  const Element* before = store_.data();
  store_ = other.store_;
  if (store_.data() != before) {  // equal when memory was refused: nothing has changed
    startAnew();
  }
  return *this;
}

template <class Element, class Index>
IndexedSlots<Element, Index>& IndexedSlots<Element, Index>::operator=(
    IndexedSlots&& other) noexcept {
  if (this != &other) {
    store_ = std::move(other.store_);
    index_ = std::move(other.index_);
    isUntracked_ = std::exchange(other.isUntracked_, false);
  }
  return *this;
}

template <class Element, class Index>
IndexedSlots<Element, Index>::~IndexedSlots() = default;

// --- reading -----------------------------------------------------------------------------------

template <class Element, class Index>
bool IndexedSlots<Element, Index>::isLive(int slot) const {
  return store_.holds(slot) && store_[slot].IsAvailableM() == kTagAvailable;
}

template <class Element, class Index>
void IndexedSlots<Element, Index>::read(Element* out, int slot) const {
  *out = store_.holds(slot) ? store_[slot] : Element();
}

template <class Element, class Index>
int IndexedSlots<Element, Index>::next(Element* out, int* index, int after) const {
  const int slot = store_.nextLive(after);
  *index = slot < 0 ? kNoIndex : slot;
  read(out, slot);
  return slot < 0 ? -1 : 1;
}

template <class Element, class Index>
int IndexedSlots<Element, Index>::last(Element* out, int* index) const {
  const int slot = store_.previousLive(bound());
  *index = slot < 0 ? kNoIndex : slot;
  read(out, slot);
  return slot;
}

template <class Element, class Index>
const Element& IndexedSlots<Element, Index>::at(int slot) const {
  static const Element kNone;
  return slot >= 0 && slot < store_.length() ? store_[slot] : kNone;
}

template <class Element, class Index>
Index* IndexedSlots<Element, Index>::makeIndex() const {
  if (store_.length() > kSmallLength && !isUntracked_) {
    index_.reset(new (std::nothrow) Index());
  }
  return index_.get();
}

// --- handing out -------------------------------------------------------------------------------

template <class Element, class Index>
Element* IndexedSlots<Element, Index>::handOut(int slot) {
  return store_.holds(slot) ? &handOutAt(slot) : nullptr;
}

template <class Element, class Index>
Element& IndexedSlots<Element, Index>::handOutAt(int slot) {
  if (slot < 0 || slot >= store_.length()) {
    thread_local Element scratch;
    scratch = Element();
    return scratch;
  }
  if (store_.length() > kSmallLength && !isUntracked_) {
    Index* known = index();
    if (known == nullptr || !known->expose(store_.data(), slot, bound())) {
      return handOutAll()[slot];
    }
  }
  return store_[slot];
}

template <class Element, class Index>
Element* IndexedSlots<Element, Index>::handOutAll() {
  // Nothing is worth keeping: everything may change until the store moves.
  isUntracked_ = store_.length() > kSmallLength;
  index_.reset();
  return store_.data();
}

// --- changing ----------------------------------------------------------------------------------

template <class Element, class Index>
void IndexedSlots<Element, Index>::addSize(int count) {
  const int before = store_.length();
  store_.addSize(count);
  tellMoved(before);
}

template <class Element, class Index>
bool IndexedSlots<Element, Index>::reserve(int length) {
  const int before = store_.length();
  const bool done = store_.reserve(length);
  tellMoved(before);
  return done;
}

template <class Element, class Index>
bool IndexedSlots<Element, Index>::set(const Element& element, int slot) {
  const int lengthBefore = store_.length();
  const int boundBefore = bound();
  tellBefore(slot);
  if (!store_.set(element, slot)) {
    tellAfter(slot);
    return false;
  }
  tellMoved(lengthBefore);
  tellTakenUp(boundBefore, slot);
  tellAfter(slot);
  return true;
}

template <class Element, class Index>
int IndexedSlots<Element, Index>::add(const Element& element) {
  const int slot = bound();
  set(element, slot);
  return slot;
}

template <class Element, class Index>
void IndexedSlots<Element, Index>::insert(const Element& element, int position) {
  const int lengthBefore = store_.length();
  const int boundBefore = bound();
  if (position < 0 || position > boundBefore) {
    return;
  }
  store_.insert(element, position);
  tellMoved(lengthBefore);
  if (position == boundBefore) {
    tellAfter(position);
  } else if (index_ != nullptr) {
    index_->drop();
  }
}

template <class Element, class Index>
void IndexedSlots<Element, Index>::remove(int slot) {
  if (!store_.holds(slot)) {
    return;
  }
  tellBefore(slot);
  store_.remove(slot);
  tellAfter(slot);
}

template <class Element, class Index>
void IndexedSlots<Element, Index>::clear() {
  const Element* before = store_.data();
  store_.clear();
  if (store_.data() != before) {
    startAnew();
  }
}

template <class Element, class Index>
void IndexedSlots<Element, Index>::clearKeepingStore() {
  changeAll().clearKeepingStore();
}

template <class Element, class Index>
void IndexedSlots<Element, Index>::takeUpNextSlot() {
  const int slot = bound();
  store_.setBound(slot + 1);
  store_.setAvailable(store_.available() + 1);
  tellTakenUp(slot, slot + 1);
}

template <class Element, class Index>
typename IndexedSlots<Element, Index>::Store& IndexedSlots<Element, Index>::changeAll() {
  if (index_ != nullptr) {
    index_->drop();
  }
  return store_;
}

template <class Element, class Index>
void IndexedSlots<Element, Index>::replace(Store&& store) {
  store_ = std::move(store);
  startAnew();
}

// --- telling the index -------------------------------------------------------------------------

template <class Element, class Index>
void IndexedSlots<Element, Index>::tellBefore(int slot) {
  if (index_ != nullptr && store_.holds(slot)) {
    index_->forget(store_.data(), slot);
  }
}

template <class Element, class Index>
void IndexedSlots<Element, Index>::tellAfter(int slot) {
  if (index_ != nullptr && slot >= 0 && slot < store_.length()) {
    index_->learn(store_.data(), slot, store_.holds(slot));
  }
}

// Slots that a rising bound takes in hold whatever was left there.
template <class Element, class Index>
void IndexedSlots<Element, Index>::tellTakenUp(int first, int end) {
  if (index_ != nullptr) {
    for (int slot = first; slot < end; ++slot) {
      tellAfter(slot);
    }
  }
}

template <class Element, class Index>
void IndexedSlots<Element, Index>::tellMoved(int lengthBefore) {
  if (store_.length() != lengthBefore) {
    isUntracked_ = false;
    if (index_ != nullptr) {
      index_->storeMoved(store_.data(), bound());
    }
  }
}

template <class Element, class Index>
void IndexedSlots<Element, Index>::startAnew() {
  index_.reset();
  isUntracked_ = false;
}

}  // namespace zel
