#pragma once

/// @file
/// The storage and bookkeeping that every slot array is built on. Internal: it stands in a public
/// header only because the arrays hold it by value; call the arrays, not this.

#include <array>
#include <cstdint>

namespace zel {

// What each array does its own way (see the policies' header for their members).
struct IntPolicy;
struct CharPolicy;
struct RealPolicy;
struct FloatTuplePolicy;
struct PointPolicy;
/// For arrays of elements derived from KwBaseCL: live means tag 31.
struct ElementPolicy;

/// Slots of a tuple array.
using Int2 = std::array<int, 2>;
using Int3 = std::array<int, 3>;
using Int4 = std::array<int, 4>;
using Float2 = std::array<float, 2>;
using Float3 = std::array<float, 3>;
using Float4 = std::array<float, 4>;

/// A growable row of slots that never moves one because another is deleted.
///
/// Invariant: the four slots inside the object are the store exactly when length() is 4;
/// otherwise the store is a heap block of length() slots. Every slot from 0 to length() is
/// constructed. bound() is one past the highest slot in use, available() the number of slots
/// counted as live; neither is derived from the content.
///
/// A request that the heap (or the limit of 0x7FFFFFFF bytes) refuses is reported once through
/// kwErrorMessage(40) and then ignored: content, length and counters stay.
template <class Slot, class Policy>
class SlotStore {
 public:
  using SlotType = Slot;
  using PolicyType = Policy;
  /// Slots inside the object.
  static constexpr int kInlineLength = 4;
  static constexpr int kDefaultIncrement = 10;

  SlotStore();
  /// @param length slots wanted; 4 or fewer use no heap.
  explicit SlotStore(int length);
  SlotStore(const SlotStore& other);
  /// Takes the heap block over; `other` is left as newly constructed.
  SlotStore(SlotStore&& other) noexcept;
  SlotStore& operator=(const SlotStore& other);
  SlotStore& operator=(SlotStore&& other) noexcept;
  ~SlotStore();

  // --- capacity and counters ---
  [[nodiscard]] int length() const { return length_; }
  [[nodiscard]] int bound() const { return bound_; }
  [[nodiscard]] int available() const { return available_; }
  [[nodiscard]] int increment() const { return increment_; }
  void setBound(int bound) { bound_ = bound; }
  void setAvailable(int count) { available_ = count; }
  /// @param increment ignored below 1.
  void setIncrement(int increment);
  /// Adds `count` fresh slots. @return false for a count below 1 and when refused.
  bool addSize(std::int64_t count);
  /// Makes the store at least `length` slots long. @return whether it is.
  bool reserve(int length);
  /// Makes slot `index` exist, growing by the policy's rule. @return whether it exists.
  bool makeRoomFor(int index);

  // --- access ---
  [[nodiscard]] Slot* data() { return length_ == kInlineLength ? inline_ : heap_; }
  [[nodiscard]] const Slot* data() const { return length_ == kInlineLength ? inline_ : heap_; }
  /// Unchecked: 0 <= index < length().
  [[nodiscard]] Slot& operator[](int index) { return data()[index]; }
  [[nodiscard]] const Slot& operator[](int index) const { return data()[index]; }
  /// @return whether `index` lies in 0 to bound - 1.
  [[nodiscard]] bool holds(int index) const { return index >= 0 && index < bound_; }
  /// @return the slot, or null when `index` lies outside 0 to bound - 1.
  [[nodiscard]] Slot* slotAt(int index) { return holds(index) ? data() + index : nullptr; }
  [[nodiscard]] const Slot* slotAt(int index) const {
    return holds(index) ? data() + index : nullptr;
  }

  // --- writing ---
  /// Writes a slot, growing when needed; a negative index is ignored. @return whether written.
  bool set(Slot slot, int index);
  /// As set(), unchecked: 0 <= index < length().
  template <class Given>
  void write(Given&& slot, int index);
  /// Writes the slot at the bound. @return its index, written or (heap refused) not.
  int add(Slot slot);
  /// Moves the slots from `position` up by one; positions outside 0 to bound are ignored.
  void insert(Slot slot, int position);
  /// Marks one slot deleted; lowers the bound by one when it was the last.
  void remove(int index);
  /// Back to the inline store, every slot fresh; the increment stays.
  void clear();
  /// Marks the slots below the bound deleted and keeps the store.
  void clearKeepingStore();
  /// As clearKeepingStore() and then reserve(); nothing has changed where that is refused.
  bool clearAndReserve(int length);
  /// Squeezes the holes out, as the policy says.
  void purge();
  /// Appends the live slots of `other`, all or (heap refused) none. @return the bound before.
  int append(const SlotStore& other);
  /// Grows by the available count of `other`, then writes its live slots, all or (heap refused)
  /// none. @return that count.
  int import(const SlotStore& other);

  // --- walking: indices, or -1 when there is none ---
  /// First live slot above `after`, below the bound.
  [[nodiscard]] int nextLive(int after) const;
  /// Last live slot below `before` and the bound, by the backward walk's liveness.
  [[nodiscard]] int previousLive(int before) const;
  /// Number of live slots above `index`, below the bound.
  [[nodiscard]] int liveAfter(int index) const;
  /// First slot below the bound, live or not, for which `matches(slot)` holds.
  template <class Predicate>
  [[nodiscard]] int firstWhere(Predicate matches) const;

  /// @return whether the invariants hold; tests ask after every mutation.
  [[nodiscard]] bool validate() const;

 private:
  bool resizeHeap(std::int64_t length);
  bool makeRoomForLive(const SlotStore& other, std::int64_t least);
  void returnInline(int kept);
  bool copyHeapOf(const SlotStore& other, Slot** block) const;
  void takeOver(SlotStore& other);
  void resetInline();
  void releaseHeap();

  Slot* heap_ = nullptr;
  Slot inline_[kInlineLength];
  int length_ = kInlineLength;
  int bound_ = 0;
  int available_ = 0;
  int increment_ = kDefaultIncrement;
};

}  // namespace zel
