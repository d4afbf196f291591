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
  /// @name Life, as IntArr
  /// @{
  Int4DArr();
  explicit Int4DArr(int length);
  Int4DArr(const Int4DArr& other);
  Int4DArr(Int4DArr&& other) noexcept;
  Int4DArr& operator=(const Int4DArr& other);
  Int4DArr& operator=(Int4DArr&& other) noexcept;
  virtual ~Int4DArr();
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
  [[nodiscard]] int (*getCurrentItemPrtM())[4];
  [[nodiscard]] const int (*getCurrentItemPrtConstM() const)[4];
  /// @}

  /// @name Writing, as IntArr
  /// @{
  int SetItemM(const int* item, int index);
  int AddItemM(const int* item);
  int InsertItemM(const int* item, int position);
  /// @}

  /// Overwrites one component of an allocated slot; bound and available count stay.
  /// @param component 0 to 3; others, and indices outside the store, are ignored. @return 1.
  int ModifyItemM(int value, int index, int component);
  /// As SetItemM() for component 0 alone, but grows the store only by the increment, or by
  /// increment - length + `index` + 1 when that is not enough. @return 1.
  int ChangeFirstValueM(int value, int index);

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
  int GetLastM(int* item, int* index) const;
  /// @}

  /// @name Deleting, as IntArr
  /// @{
  int DelItemM(int index);
  int DelAllM();
  /// @}

  /// @name Sorted index lists, as Int3DArr
  /// @{
  [[nodiscard]] int FindIdxInLstM(int key) const;
  int AddInIdxLstM(int position, int key, int value);
  int DelItemInLstM(int position);
  void QuickSortM();
  /// @}

  /// @name Files, as IntArr
  /// @{
  void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  void FmInputZelLstM(KwIOCL* io);
  /// @}

 private:
  zel::SlotStore<zel::Int4, zel::IntPolicy> slots_;
};
