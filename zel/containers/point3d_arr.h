#pragma once

/// @file
/// The array of points in space.

#include <cstdio>

#include "zel/containers/indexed_slots.h"
#include "zel/core/api.h"

class KwIOCL;
struct XYCoordSysD;

namespace zel {
class PointIndex;
}

/// An IntArr of points (x, y, z) with the mark -1e18 in x. Items go in and out through a pointer
/// to three floats.
///
/// A point is live when x is greater than -5e17; IsPntAvailableM() and the backward walk draw the
/// line at -9.999e17 instead.
///
/// Several threads may read and search a const array at once; whoever changes it must be alone with
/// it.
class ZEL_API Point3DArr {
 public:
  // --- life, as IntArr ---
  /// An empty array of four slots, increment 10.
  Point3DArr();
  /// An empty array with room for `length` slots; 4 or fewer give 4.
  explicit Point3DArr(int length);
  /// A deep copy: every slot, the counters and the increment.
  Point3DArr(const Point3DArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  Point3DArr(Point3DArr&& other) noexcept;
  /// Copies every slot, the counters and the increment. Out of memory, this array stays as it was.
  Point3DArr& operator=(const Point3DArr& other);
  /// Takes the content over in constant time; `other` is left as newly constructed.
  Point3DArr& operator=(Point3DArr&& other) noexcept;
  /// Releases the store.
  virtual ~Point3DArr();

  // --- capacity, as IntArr ---
  /// Adds `count` slots at the end of the store; below 1 nothing happens. @return 1.
  int AddSizeM(int count);
  /// Makes the store at least `length` slots long. @return 1.
  int InitialSizeM(int length);
  /// A second name of InitialSizeM(), spelt so.
  int IntialSizeM(int length);
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
  [[nodiscard]] float (*getCurrentItemPrtM())[3];
  /// As getCurrentItemPrtM(), for reading.
  [[nodiscard]] const float (*getCurrentItemPrtConstM() const)[3];

  // --- writing, as IntArr ---
  /// Writes one slot, growing as IntArr::SetItemM(). The available count rises when the old x was
  /// below -5e17.
  /// @param item x, y, z.
  /// @return 1.
  int SetItemM(const float* item, int index);
  /// Writes a point at the bound. @param item x, y, z. @return its index.
  int AddItemM(const float* item);
  /// Moves the slots from `position` (0 to the bound) up by one and writes the freed slot. The
  /// available count rises only when x of the slot at the bound was below -5e17.
  /// @param item x, y, z.
  /// @return 1.
  int InsertItemM(const float* item, int position);
  /// Adds a point unless one is stored below the bound that differs by less than 0.0001 in each
  /// coordinate, live or not; the first such slot wins. Fast on large arrays, unless the
  /// caller got a pointer to the store (getCurrentItemPrtM(), or GetItemPM() of many slots) since
  /// it last grew: then every slot is compared.
  /// @return the index of the stored or added point.
  int AddPointM(const float* point);
  /// Appends the slots of `other` below its bound one to one: live points are copied, a hole
  /// leaves the slot in its place as it was. The available count becomes the new bound, holes
  /// included. When the heap refuses the room, nothing changes. @return 1.
  int AppendPntsM(const Point3DArr& other);
  /// Overwrites z of a slot in 0 to bound - 1; the available count stays.
  void SetItemZValueM(int index, float z);

  // --- reading, as IntArr ---
  /// Reads a slot, live or not.
  /// @param[out] item x, y, z; x and y the mark when `index` is not in 0 to bound - 1.
  /// @return 1 in both cases.
  int GetItemM(float* item, int index) const;
  /// @return the slot, live or not; null when `index` is not in 0 to length - 1.
  [[nodiscard]] float* GetItemPM(int index);
  /// As GetItemPM(), for reading.
  [[nodiscard]] const float* GetItemPM(int index) const;
  /// @return 31 when x of the point is greater than -9.999e17, otherwise, and for an index outside
  ///         the store, 30.
  [[nodiscard]] int IsPntAvailableM(int index) const;
  /// Reads `count` points, each as GetItemM(). @param[out] points `count` points.
  /// @return 1, also for a count below 1.
  int GetVertexM(int count, const int* indices, float (*points)[3]) const;

  // --- walking the live slots, as IntArr ---
  /// First live slot of all; as GetNextM() after -1.
  int GetFirstM(float* item, int* index) const;
  /// First live slot above `after`.
  /// @param[out] item x, y, z, all the mark when there is none; `index` is then -2147483647.
  /// @return 1, or -1 when there is none.
  int GetNextM(float* item, int* index, int after) const;
  /// Last available point below `before` (see IsPntAvailableM()).
  /// @param[out] item, index all -1e18 and -2147483647 when there is none.
  /// @return 1, or -1 when there is none.
  int GetPreviousM(float* item, int* index, int before) const;
  /// GetPreviousM() from the bound. @return 1 (not the index, unlike IntArr), or -1.
  int GetLastM(float* item, int* index) const;

  // --- deleting, as IntArr ---
  /// Marks a live slot deleted and lowers the available count; the bound drops by one when it was
  /// the last slot.
  /// @return 1.
  int DelItemM(int index);
  /// Deletes everything and returns to four slots inside the object. @return 1.
  int DelAllM();
  /// Deletes everything and keeps the store. @return 1.
  int DelAllVirtualM();
  /// Takes the bound down by two: deletes the last point, as DelItemM(), and puts the one before
  /// it beyond the bound, where it keeps its coordinates and stays counted. On a single point the
  /// bound becomes -1. @return the new bound.
  int CancelLastItemM();

  // --- measuring and fitting: the available points below the bound (IsPntAvailableM()) ---
  // `start` and `count` select points: from slot `start` on, `count` available ones; a negative
  // count means as many as the bound. Unless said, an array without available points gives 0.

  /// @return the largest squared distance between two selected points; 0 when all coincide.
  /// @param[out] first, second the pair found first, both -2147483647 when the result is 0.
  float GetFarthestTwoPointsM(int start, int count, int* first, int* second) const;
  /// @param point, direction the line: two points handed to slGetPntLineSquareDist().
  /// @param[out] index the farthest selected point, -2147483647 when the result is 0.
  /// @return its squared distance.
  float GetFarthestPntToLineM(const float* point, const float* direction, int start, int count,
                              int* index) const;
  /// @param normal, d the plane normal . X + d = 0.
  /// @param[out] index the farthest selected point, -2147483647 when the result is 0.
  /// @return its distance.
  float GetFarthestPntToPlaneM(const float* normal, float d, int start, int count,
                               int* index) const;
  /// Spread of the distances to a line: the root of the summed squares of (distance - mean),
  /// divided by the available count itself and not by its root.
  [[nodiscard]] float GetShapeErrorToLineM(const float* point, const float* direction) const;
  /// As GetShapeErrorToLineM(), for the distances to the plane normal . X + d = 0.
  [[nodiscard]] float GetShapeErrorToPlaneM(const float* normal, float d) const;
  /// As GetShapeErrorToLineM(), for (distance to `centre`) - `radius`.
  [[nodiscard]] float GetShapeErrorToCircleM(const float* centre, float radius) const;
  /// Least-squares plane, solved for the axis in which `direction` is largest.
  /// @param[out] normal unit; untouched on failure.
  /// @param[out] d      the constant of normal . X + d = 0; untouched on failure.
  /// @return 1, or the code of slSolveEquationGroup3() when it fails.
  int GenPlaneByLeastSquareM(const float* direction, float* normal, float* d) const;
  /// Normal equations of the fit x[c] + p x[a] + q x[b] + r = 0.
  /// @param a, b, c the axes 0, 1 and 2 in some order; any other number gives only zeros.
  /// @param[out] matrix 3 x 3, row-major. @param[out] rightSide 3 numbers.
  void GenEquationGroupM(int a, int b, int c, double* matrix, double* rightSide) const;
  /// @param[out] centre mean of the available points; the origin when there is none.
  void GetBaryCenterM(float* centre) const;
  /// @return mean distance to the line through `point` along `direction`.
  [[nodiscard]] float GetAverageDistToLineM(const float* point, const float* direction) const;
  /// @return mean distance to `point`.
  [[nodiscard]] float GetAverageDistToPntM(const float* point) const;
  /// @return largest distance to `point`.
  [[nodiscard]] float GetMaxLenToGivenPntM(const float* point) const;
  /// Extents of the live points along three directions.
  /// @param[out] r1, r2, r3 smallest and largest dot product with a1, a2, a3; untouched without
  ///             a live point.
  void GetMaxMinM(const float* a1, const float* a2, const float* a3, float* r1, float* r2,
                  float* r3) const;
  /// Moves every available point onto a plane. @param point on the plane. @param normal unit.
  void ProjectPntsToPlaneM(const float* point, const float* normal);
  /// Rewrites every available point in a local coordinate system, its axes taken as they are.
  void TransToLocalCoordSysM(const XYCoordSysD& system);

  // --- files, as IntArr ---
  /// Writes the array as the list `name`. @throws int 108 when it cannot be written.
  void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  /// Reads the next list on top of the present content. @throws int 107 when it cannot be read.
  void FmInputZelLstM(KwIOCL* io);
  /// Writes the coordinates of the slots below the bound to a binary stream, nothing else.
  /// @return 1.
  int FmOutputLstM(FILE* file) const;
  /// Reads such a dump over the first `count` slots. Bound and available count become `count`, also
  /// when it is negative. @return 1.
  int FmInputLstM(FILE* file, int count);

 private:
  friend struct zel::IndexCheck;
  /// Overwrites a slot in 0 to bound - 1; the available count stays.
  void SetItemValueM(int index, float x, float y, float z);

  zel::IndexedSlots<zel::Float3, zel::PointPolicy, zel::PointIndex> slots_;
};
