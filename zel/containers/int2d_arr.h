#pragma once

/// @file
/// The array of integer pairs, also a sorted index list.

#include "zel/containers/slot_store.h"
#include "zel/core/api.h"

class KwIOCL;

/// An IntArr of pairs. Items go in and out through a pointer to two integers; deletion writes the
/// mark into the first only, and the first alone tells whether a slot is live.
class ZEL_API Int2DArr {
 public:
  // --- life, as IntArr ---
  /// An empty array of four slots, increment 10.
  Int2DArr();
  /// An empty array with room for `length` slots; 4 or fewer give 4.
  explicit Int2DArr(int length);
  /// A deep copy: every slot, the counters and the increment.
  Int2DArr(const Int2DArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  Int2DArr(Int2DArr&& other) noexcept;
  /// Copies every slot, the counters and the increment. Out of memory, this array stays as it was.
  Int2DArr& operator=(const Int2DArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  Int2DArr& operator=(Int2DArr&& other) noexcept;
  /// Releases the store.
  virtual ~Int2DArr();

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
  [[nodiscard]] int (*getCurrentItemPrtM())[2];
  /// As getCurrentItemPrtM(), for reading.
  [[nodiscard]] const int (*getCurrentItemPrtConstM() const)[2];

  // --- writing, as IntArr ---
  /// Writes one slot, growing as IntArr::SetItemM(). @param item two integers. @return 1.
  int SetItemM(const int* item, int index);
  /// Writes a pair at the bound. @param item two integers. @return its index.
  int AddItemM(const int* item);
  /// Moves the slots from `position` (0 to the bound) up by one and writes the freed slot.
  /// @param item two integers.
  /// @return 1.
  int InsertItemM(const int* item, int position);

  // --- reading, as IntArr ---
  /// Reads a slot, live or not.
  /// @param[out] item two integers, both the mark when `index` is not in 0 to bound - 1.
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
  /// @param[out] item two integers, both the mark when there is none; `index` is then -2147483647.
  /// @return 1, or -1 when there is none.
  int GetNextM(int* item, int* index, int after) const;

  // --- deleting, as IntArr ---
  /// Marks a live slot deleted and lowers the available count; the bound drops by one when it was
  /// the last slot.
  /// @return 1.
  int DelItemM(int index);
  /// Deletes everything and returns to four slots inside the object. @return 1.
  int DelAllM();
  /// Deletes everything and keeps the store. @return 1.
  int DelAllVirtualM();

  // --- sorted index lists: entries (value, key), kept in ascending order of the key ---
  /// Searches a list in ascending order of component 1 by halving.
  /// @param[out] position the entry, or on a miss the neighbour to pass to AddInIdxLstM();
  ///             -2147483647 when the list is empty.
  /// @param[out] value component 0 of that entry, or -2147483647. @return 1 found, 0 not.
  int FindIdxInLstM(int key, int* position, int* value) const;
  /// Inserts the entry (`value`, `key`) before the entry at `position` when that one's component 1
  /// is greater than `key`, otherwise behind it; into an empty list wherever `position` points.
  /// @param position entry in 0 to bound - 1, as a missed search names it. @return 1.
  int AddInIdxLstM(int position, int key, int value);
  /// Removes an entry for good: the later ones move down, bound and available count drop by one,
  /// even when the entry was a hole. @return 1.
  int DelItemInLstM(int position);
  /// Finds the first slot whose component `which` (0 or 1) is `target`.
  /// @param[out] other its other component; untouched on a miss.
  /// @return its index, or -1 (unlike the other searches), also for any other `which`.
  int FindItemByValueM(int which, int target, int* other) const;

  // --- files, as IntArr ---
  /// Writes the array as the list `name`. @throws int 108 when it cannot be written.
  void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  /// Reads the next list on top of the present content. @throws int 107 when it cannot be read.
  void FmInputZelLstM(KwIOCL* io);

 private:
  zel::SlotStore<zel::Int2, zel::IntPolicy> slots_;
};
