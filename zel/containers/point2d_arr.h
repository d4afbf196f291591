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
  // --- life, as IntArr ---
  /// An empty array of four slots, increment 10.
  Point2DArr();
  /// An empty array with room for `length` slots; 4 or fewer give 4.
  explicit Point2DArr(int length);
  /// A deep copy: every slot, the counters and the increment.
  Point2DArr(const Point2DArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  Point2DArr(Point2DArr&& other) noexcept;
  /// Copies every slot, the counters and the increment. Out of memory, this array stays as it was.
  Point2DArr& operator=(const Point2DArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  Point2DArr& operator=(Point2DArr&& other) noexcept;
  /// Releases the store.
  virtual ~Point2DArr();

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
  [[nodiscard]] float (*getCurrentItemPrtM())[2];
  /// As getCurrentItemPrtM(), for reading.
  [[nodiscard]] const float (*getCurrentItemPrtConstM() const)[2];

  // --- writing, as IntArr ---
  /// Writes one slot, growing as IntArr::SetItemM(). The available count rises when the slot was
  /// not live.
  /// @param item x and y.
  /// @return 1.
  int SetItemM(const float* item, int index);
  /// Writes a point at the bound. @param item x and y. @return its index.
  int AddItemM(const float* item);
  /// Moves the slots from `position` (0 to the bound) up by one and writes the freed slot.
  /// @param item x and y.
  /// @return 1.
  int InsertItemM(const float* item, int position);

  // --- reading, as IntArr ---
  /// Reads a slot, live or not.
  /// @param[out] item x and y, both the mark when `index` is not in 0 to bound - 1.
  /// @return 1 in both cases.
  int GetItemM(float* item, int index) const;
  /// @return the slot, live or not; null when `index` is not in 0 to bound - 1.
  [[nodiscard]] float* GetItemPM(int index);
  /// As GetItemPM(), for reading.
  [[nodiscard]] const float* GetItemPM(int index) const;

  // --- walking the live slots, as IntArr ---
  /// First live slot of all; as GetNextM() after -1.
  int GetFirstM(float* item, int* index) const;
  /// First live slot above `after`.
  /// @param[out] item x and y, both the mark when there is none; `index` is then -2147483647.
  /// @return 1, or -1 when there is none.
  int GetNextM(float* item, int* index, int after) const;

  // --- deleting, as IntArr ---
  /// Marks a live slot deleted and lowers the available count; the bound drops by one when it was
  /// the last slot.
  /// @return 1.
  int DelItemM(int index);
  /// Deletes everything and returns to four slots inside the object. @return 1.
  int DelAllM();
  /// Deletes everything and keeps the store. @return 1.
  int DelAllVirtualM();

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

  // --- files, as IntArr ---
  /// Writes the array as the list `name`. @throws int 108 when it cannot be written.
  void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  /// Reads the next list on top of the present content. @throws int 107 when it cannot be read.
  void FmInputZelLstM(KwIOCL* io);

 private:
  zel::SlotStore<zel::Float2, zel::FloatTuplePolicy> slots_;
};
