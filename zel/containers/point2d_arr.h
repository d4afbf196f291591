#pragma once

/// @file
/// The array of points in the plane.

#include "zel/containers/slot_store.h"
#include "zel/core/api.h"

class KwIOCL;

/// An IntArr of points (x, y) with the mark -1e18 in x; live when x is greater than -9.999e17.
/// Items go in and out through a pointer to two floats.
class ZEL_API Point2DArr {
 public:
  /// @name Life, as IntArr
  /// @{
  Point2DArr();
  explicit Point2DArr(int length);
  Point2DArr(const Point2DArr& other);
  Point2DArr(Point2DArr&& other) noexcept;
  Point2DArr& operator=(const Point2DArr& other);
  Point2DArr& operator=(Point2DArr&& other) noexcept;
  virtual ~Point2DArr();
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
  [[nodiscard]] float (*getCurrentItemPrtM())[2];
  [[nodiscard]] const float (*getCurrentItemPrtConstM() const)[2];
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
  [[nodiscard]] float* GetItemPM(int index);
  [[nodiscard]] const float* GetItemPM(int index) const;
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
  int DelAllVirtualM();
  /// @}

  // --- measuring ---
  /// Tells the orientation of a ring whose last point repeats the first. The closing edge is left
  /// out of the sum of x1 y2 - x2 y1, so the result holds for rings that begin at the origin, and
  /// for others only roughly.
  /// @return 1 when the sum is 0 or less, also with fewer than three points, else 0. So a
  ///         clockwise ring gives 1 and a counter-clockwise one 0.
  [[nodiscard]] int CheckCcwM() const;
  /// Bounds of the points whose x and y are both greater than -5e17.
  /// @param[out] xRange, yRange minimum and maximum; (1e18, -1e18) without such a point.
  void GetScopeM(float* xRange, float* yRange) const;
  /// Tells whether a point lies outside the ring that the array holds.
  /// @param point x and y.
  /// @return 1 outside or on the boundary, 0 inside, and 0 when the ring has fewer than 4 points.
  [[nodiscard]] int JudgePntInBoundM(const float* point) const;

  /// @name Files, as IntArr
  /// @{
  void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  void FmInputZelLstM(KwIOCL* io);
  /// @}

 private:
  zel::SlotStore<zel::Float2, zel::FloatTuplePolicy> slots_;
};
