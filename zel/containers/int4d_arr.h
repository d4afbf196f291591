#pragma once

/// @file
/// The array of integer quadruples, also a sorted index list.

#include "zel/containers/slot_store.h"
#include "zel/core/api.h"

class KwIOCL;

/// An IntArr of quadruples. Items go in and out through a pointer to four integers; deletion writes
/// the mark into the first only, and the first alone tells whether a slot is live.
class ZEL_API Int4DArr {
 public:
  // --- life, as IntArr ---
  /// An empty array of four slots, increment 10.
  Int4DArr();
  /// An empty array with room for `length` slots; 4 or fewer give 4.
  explicit Int4DArr(int length);
  /// A deep copy: every slot, the counters and the increment.
  Int4DArr(const Int4DArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  Int4DArr(Int4DArr&& other) noexcept;
  /// Copies every slot, the counters and the increment. Out of memory, this array stays as it was.
  Int4DArr& operator=(const Int4DArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  Int4DArr& operator=(Int4DArr&& other) noexcept;
  /// Releases the store.
  virtual ~Int4DArr();

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
  [[nodiscard]] int (*getCurrentItemPrtM())[4];
  /// As getCurrentItemPrtM(), for reading.
  [[nodiscard]] const int (*getCurrentItemPrtConstM() const)[4];

  // --- writing, as IntArr ---
  /// Writes one slot, growing as IntArr::SetItemM(). @param item four integers. @return 1.
  int SetItemM(const int* item, int index);
  /// Writes a quadruple at the bound. @param item four integers. @return its index.
  int AddItemM(const int* item);
  /// Moves the slots from `position` (0 to the bound) up by one and writes the freed slot.
  /// @param item four integers.
  /// @return 1.
  int InsertItemM(const int* item, int position);

  /// Overwrites one component of an allocated slot; bound and available count stay.
  /// @param component 0 to 3; others, and indices outside the store, are ignored. @return 1.
  int ModifyItemM(int value, int index, int component);
  /// As SetItemM() for component 0 alone, but grows the store only by the increment, or by
  /// increment - length + `index` + 1 when that is not enough. @return 1.
  int ChangeFirstValueM(int value, int index);

  // --- reading, as IntArr ---
  /// Reads a slot, live or not.
  /// @param[out] item four integers, all the mark when `index` is not in 0 to bound - 1.
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
  /// @param[out] item four integers, all the mark when there is none; `index` is then -2147483647.
  /// @return 1, or -1 when there is none.
  int GetNextM(int* item, int* index, int after) const;
  /// Last live slot.
  /// @param[out] item four integers, all the mark when there is none; `index` is then -2147483647.
  /// @return its index (unlike GetNextM()), or -1 when there is none.
  int GetLastM(int* item, int* index) const;

  // --- deleting, as IntArr ---
  /// Marks a live slot deleted and lowers the available count; the bound drops by one when it was
  /// the last slot.
  /// @return 1.
  int DelItemM(int index);
  /// Deletes everything and returns to four slots inside the object. @return 1.
  int DelAllM();

  // --- sorted index lists, as Int3DArr ---
  /// As Int3DArr::FindIdxInLstM().
  [[nodiscard]] int FindIdxInLstM(int key) const;
  /// As Int3DArr::AddInIdxLstM().
  int AddInIdxLstM(int position, int key, int value);
  /// As Int2DArr::DelItemInLstM().
  int DelItemInLstM(int position);
  /// As Int3DArr::QuickSortM().
  void QuickSortM();

  // --- files, as IntArr ---
  /// Writes the array as the list `name`. @throws int 108 when it cannot be written.
  void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  /// Reads the next list on top of the present content. @throws int 107 when it cannot be read.
  void FmInputZelLstM(KwIOCL* io);

 private:
  zel::SlotStore<zel::Int4, zel::IntPolicy> slots_;
};
