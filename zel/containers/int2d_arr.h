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
  /// @name Life, as IntArr
  /// @{
  Int2DArr();
  explicit Int2DArr(int length);
  Int2DArr(const Int2DArr& other);
  Int2DArr(Int2DArr&& other) noexcept;
  Int2DArr& operator=(const Int2DArr& other);
  Int2DArr& operator=(Int2DArr&& other) noexcept;
  virtual ~Int2DArr();
  /// @}

  /// @name Capacity, as IntArr
  /// @{
  int AddSizeM(int count);
  int InitialSizeM(int length);
  int SetIncrementM(int increment);
  [[nodiscard]] int GetLengthM() const;
  [[nodiscard]] int GetBoundM() const;
  [[nodiscard]] int GetAvailableNumM() const;
  [[nodiscard]] int GetAvailableNumM(int index) const;
  [[nodiscard]] int (*getCurrentItemPrtM())[2];
  [[nodiscard]] const int (*getCurrentItemPrtConstM() const)[2];
  /// @}

  /// @name Writing, as IntArr
  /// @{
  int SetItemM(const int* item, int index);
  int AddItemM(const int* item);
  int InsertItemM(const int* item, int position);
  /// @}

  /// @name Reading, as IntArr
  /// @{
  int GetItemM(int* item, int index) const;
  [[nodiscard]] int* GetItemPM(int index);
  [[nodiscard]] const int* GetItemPM(int index) const;
  /// @}

  /// @name Walking the live slots, as IntArr
  /// @{
  int GetFirstM(int* item, int* index) const;
  int GetNextM(int* item, int* index, int after) const;
  /// @}

  /// @name Deleting, as IntArr
  /// @{
  int DelItemM(int index);
  int DelAllM();
  int DelAllVirtualM();
  /// @}

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

  /// @name Files, as IntArr
  /// @{
  void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  void FmInputZelLstM(KwIOCL* io);
  /// @}

 private:
  zel::SlotStore<zel::Int2, zel::IntPolicy> slots_;
};
