#pragma once

/// @file
/// The slots of a mesh list together with the index that answers its searches. Internal: it stands
/// in a public header only because the lists hold it by value; call the lists, not this.

#include <memory>

#include "zel/containers/slot_store.h"

namespace zel {

/// A slot store of elements that keeps an index of its content true.
///
/// Every change goes through here and is told to the index, if there is one: `forget` before a
/// slot below the bound changes and `learn` after it, with whether it still is below the bound;
/// `drop` when many change at once; `expose` when a caller receives a reference through which a
/// slot may change unseen, until `storeMoved` ends its life. An index that refuses to keep track
/// of another reference is thrown away, and searches walk until the store moves.
/// The index is made at the first search of a list longer than kSmallLength, so that short lists
/// and lists that nobody searches pay nothing.
template <class Element, class Index>
class IndexedSlots {
 public:
  using Store = SlotStore<Element, ElementPolicy>;
  /// Up to this length a walk is as fast as any index.
  static constexpr int kSmallLength = 64;

  IndexedSlots();
  explicit IndexedSlots(int length);
  IndexedSlots(const IndexedSlots& other);
  IndexedSlots(IndexedSlots&& other) noexcept;
  IndexedSlots& operator=(const IndexedSlots& other);
  IndexedSlots& operator=(IndexedSlots&& other) noexcept;
  ~IndexedSlots();

  // --- reading ---
  [[nodiscard]] const Store& store() const { return store_; }
  [[nodiscard]] const Element* data() const { return store_.data(); }
  [[nodiscard]] const Element& operator[](int slot) const { return store_[slot]; }
  [[nodiscard]] int length() const { return store_.length(); }
  /// The bound, 0 when a reader left it negative.
  [[nodiscard]] int bound() const { return store_.bound() < 0 ? 0 : store_.bound(); }
  [[nodiscard]] bool holds(int slot) const { return store_.holds(slot); }
  /// Whether the slot is allocated, below the bound or not.
  [[nodiscard]] bool exists(int slot) const { return slot >= 0 && slot < store_.length(); }
  [[nodiscard]] bool isLive(int slot) const;
  /// Copies a slot, or a fresh element when there is none.
  void read(Element* out, int slot) const;
  /// The walks of the family: 1 and the slot, or -1 with a fresh element and kNoIndex.
  int next(Element* out, int* index, int after) const;
  int last(Element* out, int* index) const;
  /// The slot for reading; a scratch element outside 0 to length - 1.
  [[nodiscard]] const Element& at(int slot) const;
  /// The index, made when first asked for; null while the list is short or memory is refused.
  [[nodiscard]] Index* index() const { return index_ != nullptr ? index_.get() : makeIndex(); }
  /// The index if there is one already.
  [[nodiscard]] Index* knownIndex() const { return index_.get(); }

  // --- handing out, until the next growth ---
  [[nodiscard]] Element* handOut(int slot);
  [[nodiscard]] Element& handOutAt(int slot);
  [[nodiscard]] Element* handOutAll();

  // --- changing ---
  void addSize(int count);
  bool reserve(int length);
  void setIncrement(int increment) { store_.setIncrement(increment); }
  /// Writes a slot, growing when needed. @return whether written.
  bool set(const Element& element, int slot);
  /// Writes the slot at the bound. @return its index.
  int add(const Element& element);
  void insert(const Element& element, int position);
  /// Deletion as the family has it: marks a live slot, lowers the bound at the last one.
  void remove(int slot);
  void clear();
  void clearKeepingStore();
  /// Raises bound and available count by one for the slot at the bound as it is.
  void takeUpNextSlot();
  void setAvailable(int count) { store_.setAvailable(count); }
  /// Changes one slot below the bound; `change` receives the element.
  template <class Change>
  void change(int slot, Change change) {
    tellBefore(slot);
    change(store_[slot]);
    tellAfter(slot);
  }
  /// The store for changes to many slots and to the counters; the index starts anew.
  [[nodiscard]] Store& changeAll();
  /// The store for changes to what no index looks at: normals.
  [[nodiscard]] Element* changeUnindexed() { return store_.data(); }
  /// Takes another store in place of this one.
  void replace(Store&& store);

 private:
  [[nodiscard]] Index* makeIndex() const;
  void tellBefore(int slot);
  void tellAfter(int slot);
  void tellTakenUp(int first, int end);
  void tellMoved(int lengthBefore);
  void startAnew();

  Store store_;
  mutable std::unique_ptr<Index> index_;
  /// Slots are handed out that no index knows of.
  bool isUntracked_ = false;
};

}  // namespace zel
