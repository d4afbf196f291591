#pragma once

/// @file
/// The slots of an array together with the index that answers its searches. Internal: it stands in
/// a public header only because the arrays hold it by value; call the arrays, not this.

#include <atomic>

#include "zel/containers/slot_store.h"

namespace zel {

/// For tests: asks an array's index to validate() itself.
struct IndexCheck;

/// A slot store that keeps an index of its content true.
///
/// Every change goes through here and is told to the index, if there is one: `forget` before a
/// slot below the bound changes, `learn` after it, `drop` when many change at once. A slot to which
/// a caller receives a reference may change unseen: the index forgets it, it stands among the
/// exposed slots, which every search tests as they are, and is learned again when the store moves
/// and the reference dies. When too many are exposed the index is thrown away, and searches walk
/// until the store moves.
///
/// An index is a cache: it is made when the walks of searches since the last change of the whole
/// array have passed a few times as many slots as there are, and never for short arrays. Its memory
/// is of the ordinary heap and follows the content; when that is refused, the index is dropped, no
/// error is reported, and searches walk.
///
/// Searches are const and several threads may make them at once: the parts of an index are built
/// under a lock, once, and published by an atomic.
template <class Slot, class Policy, class Index>
class IndexedSlots : private SlotStore<Slot, Policy> {
 public:
  using Store = SlotStore<Slot, Policy>;
  using SlotType = Slot;
  using PolicyType = Policy;
  /// Up to this length a walk is as fast as any index.
  static constexpr int kSmallLength = 64;

  IndexedSlots();
  explicit IndexedSlots(int wanted);
  IndexedSlots(const IndexedSlots& other);
  IndexedSlots(IndexedSlots&& other) noexcept;
  IndexedSlots& operator=(const IndexedSlots& other);
  IndexedSlots& operator=(IndexedSlots&& other) noexcept;
  ~IndexedSlots();

  // --- reading, as SlotStore ---
  using Store::available;
  using Store::bound;
  using Store::firstWhere;
  using Store::holds;
  using Store::increment;
  using Store::length;
  using Store::liveAfter;
  using Store::nextLive;
  using Store::previousLive;
  [[nodiscard]] const Slot* data() const { return Store::data(); }
  [[nodiscard]] const Slot& operator[](int slot) const { return Store::operator[](slot); }
  [[nodiscard]] const Slot* slotAt(int slot) const { return Store::slotAt(slot); }
  /// The store for reading.
  [[nodiscard]] const Store& store() const { return *this; }
  /// The slots below the bound: 0 when a reader left it negative.
  [[nodiscard]] int count() const { return bound() < 0 ? 0 : bound(); }
  /// Whether the slot is allocated, below the bound or not.
  [[nodiscard]] bool exists(int slot) const { return slot >= 0 && slot < length(); }
  [[nodiscard]] bool isLive(int slot) const;
  /// The slot for reading; a fresh one outside 0 to length - 1.
  [[nodiscard]] const Slot& at(int slot) const;

  // --- searching ---
  /// The index, made when first asked for; null while the array is short or memory is refused.
  [[nodiscard]] const Index* index() const {
    const Index* known = index_.load(std::memory_order_acquire);
    return known != nullptr ? known : makeIndex();
  }
  /// The index if there is one already, for changes.
  [[nodiscard]] Index* knownIndex() { return index_.load(std::memory_order_relaxed); }

  // --- handing out references, good until the next growth ---
  [[nodiscard]] Slot* data();
  /// The slot, or null outside 0 to bound - 1.
  [[nodiscard]] Slot* slotAt(int slot);
  /// The slot, or a scratch one of the calling thread outside 0 to length - 1.
  [[nodiscard]] Slot& handOut(int slot);

  // --- changing, as SlotStore ---
  bool addSize(std::int64_t added);
  bool reserve(int wanted);
  using Store::setAvailable;
  using Store::setIncrement;
  template <class Given>
  bool set(Given&& slot, int position);
  template <class Given>
  int add(Given&& slot);
  void insert(Slot slot, int position);
  void remove(int slot);
  void clear();
  void clearKeepingStore();
  /// Moves the bound by some slots, which stay as they are. Not beyond the length.
  void setBound(int wanted);
  /// Raises bound and available count by one for the slot at the bound as it is.
  void takeUpNextSlot() {
    setBound(count() + 1);
    setAvailable(available() + 1);
  }
  /// Changes one slot below the bound; `change` receives it.
  template <class Change>
  void change(int slot, Change change) {
    tellBefore(slot);
    change(Store::data()[slot]);
    tellAfter(slot, slot + 1);
  }
  /// The store for changes to many slots and to the counters; the index starts anew.
  [[nodiscard]] Store& changeAll();
  /// The store for changes to what no index looks at: normals, and slots from the bound on.
  [[nodiscard]] Slot* changeUnindexed() { return Store::data(); }
  /// Takes another store in place of this one.
  void replace(Store&& store);

  /// Whether the store's invariants hold and the index is true of every slot; tests ask after every
  /// change.
  [[nodiscard]] bool validate() const;

 private:
  [[nodiscard]] const Index* makeIndex() const;
  template <class Given>
  bool setAndTell(Given&& slot, int position);
  void tellBefore(int slot);
  void tellAfter(int first, int end);
  void tellMoved(int lengthBefore, int countBefore);
  void learn(Index& index, int slot);
  void startAnew();
  void checkNowAndThen();

  mutable std::atomic<Index*> index_ = nullptr;
  /// Slots are handed out that no index knows of.
  bool isUntracked_ = false;
};

}  // namespace zel
