#pragma once

/// @file
/// The array of integer triples, also a sorted index list.

#include "zel/containers/slot_store.h"
#include "zel/core/api.h"

/// An IntArr of triples. Items go in and out through a pointer to three integers; deletion writes
/// the mark into the first only, and the first alone tells whether a slot is live.
class ZEL_API Int3DArr {
 public:
  /// @name Life, as IntArr
  /// @{
  Int3DArr();
  explicit Int3DArr(int length);
  Int3DArr(const Int3DArr& other);
  Int3DArr(Int3DArr&& other) noexcept;
  Int3DArr& operator=(const Int3DArr& other);
  Int3DArr& operator=(Int3DArr&& other) noexcept;
  virtual ~Int3DArr();
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
  [[nodiscard]] int (*getCurrentItemPrtM())[3];
  [[nodiscard]] const int (*getCurrentItemPrtConstM() const)[3];
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
  int GetLastM(int* item, int* index) const;
  /// @}

  /// @name Deleting, as IntArr
  /// @{
  int DelItemM(int index);
  int DelAllM();
  /// @}

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
