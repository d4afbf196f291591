#include "zel/containers/point_store.h"

#include <algorithm>
#include <utility>

#include "zel/containers/detail/point_index.h"
#include "zel/containers/detail/slot_store_impl.h"

template class zel::SlotStore<zel::Float3, zel::PointPolicy>;

namespace zel {

// --- pointers handed out -----------------------------------------------------------------------

void HandedOutSlots::add(int slot, int length) {
  if (length != length_) {
    length_ = length;
    count_ = 0;
  }
  if (holds(slot, length)) {
    return;
  }
  if (count_ < kMost) {
    slots_[static_cast<std::size_t>(count_)] = slot;
  }
  ++count_;
}

void HandedOutSlots::addAll(int length) {
  length_ = length;
  count_ = kMost + 1;
}

bool HandedOutSlots::holds(int slot, int length) const {
  if (length != length_) {
    return false;
  }
  const auto end = slots_.begin() + std::min(count_, kMost);
  return count_ > kMost || std::find(slots_.begin(), end, slot) != end;
}

// --- life --------------------------------------------------------------------------------------

PointStore::PointStore() = default;

PointStore::PointStore(int length) : Store(length) {}

PointStore::PointStore(const PointStore& other) : Store(other.plain()) {}

PointStore::PointStore(PointStore&& other) noexcept : PointStore() { *this = std::move(other); }

PointStore& PointStore::operator=(const PointStore& other) {
  const Float3* const before = plain().data();
  Store::operator=(other);
  dropIndex();
  if (plain().data() != before) {
    handedOut_.clear();
  }
  return *this;
}

PointStore& PointStore::operator=(PointStore&& other) noexcept {
  if (this != &other) {
    Store::operator=(std::move(static_cast<Store&>(other)));
    index_ = std::move(other.index_);
    isCrowded_ = std::exchange(other.isCrowded_, false);
    handedOut_ = std::exchange(other.handedOut_, {});
  }
  return *this;
}

PointStore::~PointStore() = default;

// --- handing out -------------------------------------------------------------------------------

Float3* PointStore::data() {
  handedOut_.addAll(length());
  dropIndex();
  return Store::data();
}

Float3* PointStore::handOut(int slot) {
  tellBefore(slot);
  handedOut_.add(slot, length());
  if (handedOut_.holdsAll(length())) {
    dropIndex();
  }
  return Store::data() + slot;
}

// --- changing ----------------------------------------------------------------------------------

bool PointStore::set(Float3 point, int slot) {
  tellBefore(slot);
  return Store::set(point, slot);
}

int PointStore::add(Float3 point) {
  const int slot = std::max(bound(), 0);
  set(point, slot);
  return slot;
}

void PointStore::insert(Float3 point, int position) {
  if (position != bound()) {
    dropIndex();
  }
  Store::insert(point, position);
}

void PointStore::remove(int slot) {
  tellBefore(slot);
  Store::remove(slot);
  tellBound();
}

void PointStore::clear() {
  dropIndex();
  handedOut_.clear();
  Store::clear();
}

void PointStore::clearKeepingStore() { changeAll().clearKeepingStore(); }

void PointStore::setBound(int bound) {
  Store::setBound(bound);
  tellBound();
}

Float3& PointStore::change(int slot) {
  tellBefore(slot);
  return Store::data()[slot];
}

PointStore::Store& PointStore::changeAll() {
  dropIndex();
  return *this;
}

// --- the index ---------------------------------------------------------------------------------

void PointStore::dropIndex() {
  index_.reset();
  isCrowded_ = false;
}

void PointStore::tellBefore(int slot) {
  if (index_ != nullptr && slot >= 0 &&
      !index_->loosen(Store::data(), slot, handedOut_, length())) {
    dropIndex();
  }
}

void PointStore::tellBound() {
  if (index_ != nullptr) {
    index_->cutTo(Store::data(), bound());
  }
}

// The index in step with the store; null when a walk must do.
PointIndex* PointStore::readyIndex() const {
  if (bound() <= kSmallBound || isCrowded_ || handedOut_.holdsAll(length())) {
    return nullptr;
  }
  if (index_ == nullptr) {
    index_.reset(new PointIndex());
  }
  if (index_ != nullptr && !index_->follow(data(), bound(), handedOut_, length())) {
    index_.reset();
    isCrowded_ = true;
  }
  return index_.get();
}

int PointStore::firstNear(const float* point) const {
  if (const PointIndex* index = readyIndex()) {
    return index->lowestNear(data(), point);
  }
  return firstWhere(
      [point](const Float3& slot) { return isNearPoint(point, slot[0], slot[1], slot[2]); });
}

}  // namespace zel
