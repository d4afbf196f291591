#pragma once

/// @file
/// The slots of the point array together with the index that answers its search. Internal: it
/// stands in a public header only because the array holds it by value; call the array, not this.

#include <array>
#include <memory>

#include "zel/containers/slot_store.h"

namespace zel {

class PointIndex;

/// Slots to which callers hold pointers, through which they may change unseen. A pointer is good
/// until the store next changes its length.
class HandedOutSlots {
 public:
  /// Notes one slot of a store of `length` slots; beyond a few, all count as handed out.
  void add(int slot, int length);
  void addAll(int length);
  void clear() { count_ = 0; }
  [[nodiscard]] bool holds(int slot, int length) const;
  [[nodiscard]] bool holdsAll(int length) const { return length == length_ && count_ > kMost; }

 private:
  static constexpr int kMost = 12;

  std::array<int, kMost> slots_{};
  int count_ = 0;    ///< kMost + 1: all
  int length_ = -1;  ///< of the store when they were handed out
};

/// A slot store of points that finds the first point near a place without a walk.
///
/// Every change goes through here, so that the index stays true; that is why the store behind is
/// not accessible for writing except through changeAll(). The index is made at the first search of
/// a store with more than kSmallBound slots in use. While a pointer to the whole store is out,
/// searches walk.
class PointStore : private SlotStore<Float3, PointPolicy> {
 public:
  using Store = SlotStore<Float3, PointPolicy>;
  using SlotType = Float3;
  using PolicyType = PointPolicy;
  /// Up to this bound a walk is as fast as the index.
  static constexpr int kSmallBound = 64;

  PointStore();
  explicit PointStore(int length);
  PointStore(const PointStore& other);
  PointStore(PointStore&& other) noexcept;
  PointStore& operator=(const PointStore& other);
  PointStore& operator=(PointStore&& other) noexcept;
  ~PointStore();

  // --- as SlotStore ---
  using Store::addSize;
  using Store::available;
  using Store::bound;
  using Store::firstWhere;
  using Store::holds;
  using Store::increment;
  using Store::length;
  using Store::liveAfter;
  using Store::nextLive;
  using Store::previousLive;
  using Store::reserve;
  using Store::setAvailable;
  using Store::setIncrement;
  using Store::validate;
  [[nodiscard]] const Float3* data() const { return Store::data(); }
  [[nodiscard]] const Float3& operator[](int slot) const { return Store::operator[](slot); }
  [[nodiscard]] const Float3* slotAt(int slot) const { return Store::slotAt(slot); }
  /// The store for reading.
  [[nodiscard]] const Store& plain() const { return *this; }

  // --- handing out pointers, good until the next growth ---
  [[nodiscard]] Float3* data();
  /// @param slot in 0 to length() - 1.
  [[nodiscard]] Float3* handOut(int slot);

  // --- changing, as SlotStore ---
  bool set(Float3 point, int slot);
  int add(Float3 point);
  void insert(Float3 point, int position);
  void remove(int slot);
  void clear();
  void clearKeepingStore();
  void setBound(int bound);
  /// One slot, to be written at once. @param slot in 0 to length() - 1.
  [[nodiscard]] Float3& change(int slot);
  /// The store for any changes, to be made at once; the index starts anew.
  [[nodiscard]] Store& changeAll();

  // --- searching ---
  /// @return the lowest slot below the bound, live or not, that differs from `point` by less than
  ///         kTolerance in each coordinate; -1 when there is none.
  [[nodiscard]] int firstNear(const float* point) const;

 private:
  void tellBefore(int slot);
  void tellBound();
  void dropIndex();
  [[nodiscard]] PointIndex* readyIndex() const;

  mutable std::unique_ptr<PointIndex> index_;
  /// The points crowd so much that an index does not help.
  mutable bool isCrowded_ = false;
  HandedOutSlots handedOut_;
};

}  // namespace zel
