#pragma once

/// @file
/// The array of colours or texture pixels.

#include "zel/containers/slot_store.h"
#include "zel/core/api.h"

/// An IntArr of four floats with the mark -1e18 in the first; live when the first is greater than
/// -9.999e17. Items go in and out through a pointer to four floats. It has the common operations
/// only, and of those neither InitialSizeM(), DelAllVirtualM(), GetItemPM() nor GetLastM().
class ZEL_API PixelArr {
 public:
  /// @name Life, as IntArr
  /// @{
  PixelArr();
  explicit PixelArr(int length);
  PixelArr(const PixelArr& other);
  PixelArr(PixelArr&& other) noexcept;
  PixelArr& operator=(const PixelArr& other);
  PixelArr& operator=(PixelArr&& other) noexcept;
  virtual ~PixelArr();
  /// @}

  /// @name Capacity, as IntArr
  /// @{
  int AddSizeM(int count);
  int SetIncrementM(int increment);
  [[nodiscard]] int GetLengthM() const;
  [[nodiscard]] int GetBoundM() const;
  [[nodiscard]] int GetAvailableNumM() const;
  [[nodiscard]] int GetAvailableNumM(int index) const;
  [[nodiscard]] float (*getCurrentItemPrtM())[4];
  [[nodiscard]] const float (*getCurrentItemPrtConstM() const)[4];
  /// @}

  /// @name Writing, as IntArr
  /// Except: SetItemM() raises the available count when the slot was not live.
  /// @{
  int SetItemM(const float* item, int index);
  int AddItemM(const float* item);
  int InsertItemM(const float* item, int position);
  /// @}

  /// @name Reading, as IntArr
  /// @{
  int GetItemM(float* item, int index) const;
  /// @}

  /// @name Walking the live slots, as IntArr
  /// @{
  int GetFirstM(float* item, int* index) const;
  int GetNextM(float* item, int* index, int after) const;
  /// @}

  /// @name Deleting, as IntArr
  /// @{
  int DelItemM(int index);
  int DelAllM();
  /// @}

 private:
  zel::SlotStore<zel::Float4, zel::FloatTuplePolicy> slots_;
};
