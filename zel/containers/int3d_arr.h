#pragma once

/// @file
/// The array of integer triples, also a sorted index list.

#include "zel/containers/slot_store.h"
#include "zel/core/api.h"

/// An IntArr of triples. Items go in and out through a pointer to three integers; deletion writes
/// the mark into the first only, and the first alone tells whether a slot is live.
class ZEL_API Int3DArr {
 public:
  // --- life, as IntArr ---
  /// An empty array of four slots, increment 10.
  Int3DArr();
  /// An empty array with room for `length` slots; 4 or fewer give 4.
  explicit Int3DArr(int length);
  /// A deep copy: every slot, the counters and the increment.
  Int3DArr(const Int3DArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  Int3DArr(Int3DArr&& other) noexcept;
  /// Copies every slot, the counters and the increment. Out of memory, this array stays as it was.
  Int3DArr& operator=(const Int3DArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  Int3DArr& operator=(Int3DArr&& other) noexcept;
  /// Releases the store.
  virtual ~Int3DArr();

  // --- capacity, as IntArr ---
  /// Adds `count` slots at the end of the store; below 1 nothing happens. @return 1.
  int AddSizeM(int count);
  /// Makes the store at least `length` slots long. @return 1.
  int InitialSizeM(int length);
  /// As IntArr::SetIncrementM(). @return 1.
  int SetIncrementM(int increment);
  /// @return the slots allocated.
  [[nodiscard]] int GetLengthM() const;
  /// @return one past the highest slot written.
  [[nodiscard]] int GetBoundM() const;
  /// @return the slots counted as live.
  [[nodiscard]] int GetAvailableNumM() const;
  /// @return number of live slots after `index` and below the bound. Walks them.
  [[nodiscard]] int GetAvailableNumM(int index) const;
  /// @return the first slot of the store, GetLengthM() slots long; valid until it grows.
  [[nodiscard]] int (*getCurrentItemPrtM())[3];
  /// As getCurrentItemPrtM(), for reading.
  [[nodiscard]] const int (*getCurrentItemPrtConstM() const)[3];

  // --- writing, as IntArr ---
  /// Writes one slot, growing as IntArr::SetItemM(). @param item three integers. @return 1.
  int SetItemM(const int* item, int index);
  /// Writes a triple at the bound. @param item three integers. @return its index.
  int AddItemM(const int* item);
  /// Moves the slots from `position` (0 to the bound) up by one and writes the freed slot.
  /// @param item three integers.
  /// @return 1.
  int InsertItemM(const int* item, int position);

  // --- reading, as IntArr ---
  /// Reads a slot, live or not.
  /// @param[out] item three integers, all the mark when `index` is not in 0 to bound - 1.
  /// @return 1 in both cases.
  int GetItemM(int* item, int index) const;
  /// @return the slot, live or not; null when `index` is not in 0 to bound - 1.
  [[nodiscard]] int* GetItemPM(int index);
  /// As GetItemPM(), for reading.
  [[nodiscard]] const int* GetItemPM(int index) const;

  // --- walking the live slots, as IntArr ---
  /// First live slot of all; as GetNextM() after -1.
  int GetFirstM(int* item, int* index) const;
  /// First live slot above `after`.
  /// @param[out] item three integers, all the mark when there is none; `index` is then -2147483647.
  /// @return 1, or -1 when there is none.
  int GetNextM(int* item, int* index, int after) const;
  /// Last live slot.
  /// @param[out] item three integers, all the mark when there is none; `index` is then -2147483647.
  /// @return its index (unlike GetNextM()), or -1 when there is none.
  int GetLastM(int* item, int* index) const;

  // --- deleting, as IntArr ---
  /// Marks a live slot deleted and lowers the available count; the bound drops by one when it was
  /// the last slot.
  /// @return 1.
  int DelItemM(int index);
  /// Deletes everything and returns to four slots inside the object. @return 1.
  int DelAllM();

  // --- sorted index lists, as Int2DArr, but searched by component 0 instead of 1 ---
  /// Searches a list in ascending order of component 0 (as QuickSortM() leaves it; not the order
  /// of AddInIdxLstM()) by halving. @return an index whose component 0 is `key`, or -2147483647.
  [[nodiscard]] int FindIdxInLstM(int key) const;
  /// As Int2DArr::AddInIdxLstM(), in a list ordered by component 1. The other components
  /// become 0.
  int AddInIdxLstM(int position, int key, int value);
  /// As Int2DArr::DelItemInLstM().
  int DelItemInLstM(int position);
  /// Sorts the slots below the bound in ascending order of component 0, in n log n steps; holes
  /// come first. The order of equal ones is not kept.
  void QuickSortM();

 private:
  zel::SlotStore<zel::Int3, zel::IntPolicy> slots_;
};
