#pragma once

/// @file
/// The array of single-precision numbers.

#include "zel/containers/slot_store.h"
#include "zel/core/api.h"

class KwIOCL;

/// An IntArr of floats with the mark -1e18. A slot is live when its value is greater than the mark;
/// SetItemM() alone draws the line a little higher.
class ZEL_API RealArr {
 public:
  /// @name Life, as IntArr
  /// @{
  RealArr();
  explicit RealArr(int length);
  RealArr(const RealArr& other);
  RealArr(RealArr&& other) noexcept;
  RealArr& operator=(const RealArr& other);
  RealArr& operator=(RealArr&& other) noexcept;
  virtual ~RealArr();
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
  [[nodiscard]] float* getCurrentItemPrtM();
  [[nodiscard]] const float* getCurrentItemPrtConstM() const;
  /// @}

  /// @name Writing, as IntArr
  /// Except: SetItemM() raises the available count when the slot held -9.999e17 or less.
  /// @{
  int SetItemM(float value, int index);
  int AddItemM(float value);
  int InsertItemM(float value, int position);
  /// @}

  /// @name Reading, as IntArr
  /// @{
  int GetItemM(float* value, int index) const;
  [[nodiscard]] float* GetItemPM(int index);
  [[nodiscard]] const float* GetItemPM(int index) const;
  /// @}
  /// Finds the first slot below the bound, live or not, less than 0.0001 away from `value`.
  /// @param[out] index its index, -2147483647 on a miss. @return 1 found, 0 not.
  int FindItemM(float value, int* index) const;
  /// Finds the slot below the bound nearest to `value`; the earlier of two equally near. Holes
  /// take part as -1e18.
  /// @param[out] index its index, -2147483647 when the array is empty.
  /// @return its value, -1e18 when the array is empty.
  float FindNearItemM(float value, int* index) const;
  /// As IntArr::GetItemPosiM(), by exact equality.
  [[nodiscard]] int GetItemPosiM(float value) const;

  /// @name Walking the live slots, as IntArr
  /// @{
  int GetFirstM(float* value, int* index) const;
  int GetNextM(float* value, int* index, int after) const;
  int GetLastM(float* value, int* index) const;
  /// @}

  /// @name Deleting, as IntArr
  /// @{
  int DelItemM(int index);
  int DelAllM();
  int DelAllVirtualM();
  /// @}
  /// Moves the live slots together and lowers the bound to their number. When the bound was
  /// 5 or more and at most 4 are left, they return into the object and the length is 4 again;
  /// otherwise the slots above the new bound keep their stale values. The available count stays.
  void PurgeDeletedItemM();

  // --- combining ---
  /// As IntArr::ImportArrM().
  int ImportArrM(const RealArr& other);

  /// @name Files, as IntArr
  /// @{
  void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  void FmInputZelLstM(KwIOCL* io);
  /// @}

 private:
  zel::SlotStore<float, zel::RealPolicy> slots_;
};
