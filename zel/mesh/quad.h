#pragma once

/// @file
/// Quads and their list.

#include <cstdio>

#include "zel/containers/indexed_slots.h"
#include "zel/core/api.h"
#include "zel/core/element_base.h"
#include "zel/mesh/face_record.h"

class IntArr;
class KwIOCL;

namespace zel {
template <class Face>
class FaceIndex;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"  // FmWriteZelFileM hides on purpose

/// One four-cornered face; corners in cyclic order. Fresh state as TriangleCL, with four indices.
class ZEL_API QuadCL : public KwBaseCL {
 public:
  /// Tag 30, no corners, no normal.
  QuadCL() = default;
  /// @param tag the delete tag, any value.
  explicit QuadCL(char tag) : KwBaseCL(tag) {}
  /// A copy in every field, the tag included.
  QuadCL(const QuadCL& other) = default;
  /// Copies every field, the tag included.
  QuadCL& operator=(const QuadCL& other) = default;
  ~QuadCL() override = default;

  /// Reads tag, indices, normal and normal type, an order unlike the writer's: text lists of
  /// quads cannot be read back. @throws int 107 when a field cannot be read.
  void FmInputZelFileM(KwIOCL* io) override;
  /// Writes tag, normal type, normal and indices. @throws int 108 when one cannot be written.
  void FmOutputZelFileM(KwIOCL* io) const override;
  /// Reads the plain record: tag, indices, normal, normal type. @return 1.
  int FmReadZelFileM(FILE* file) override;
  /// Writes the plain record; hides the base's operation as in TriangleCL. @return 1.
  int FmWriteZelFileM(FILE* file, zel::NotOverriding = {}) const;
  /// Writes the plain record. @return 1.
  int ExportQuadDBFileM(FILE* file) const;

  /// @param[out] out the node indices in winding order.
  void GetQuadM(int* out) const;
  /// Sets the node indices, in winding order; tag and normal stay.
  void SetQuadM(const int* indices);
  /// @return 1.
  int SetQuadM(int a, int b, int c, int d);
  /// Fills the face: tag 31, indices, normal type 0 (a triangle's becomes 1); the normal stays.
  /// @return 1.
  int ModifyM(const int* indices);
  /// Sets the normal, normal type 1. @return 1.
  int SetNormM(const float* normal);
  /// @return 1.
  int GetNormM(float* out) const;
  /// @param[out] out 0 no normal given, 1 set explicitly. @return 1.
  int GetNormTypeM(char* out) const;
  /// Sets the normal type alone. @param type 0 no normal given, 1 set explicitly.
  void SetNormTypeM(char type);
  /// Negates the normal; the winding stays.
  void NegativeNormalVectM();
  /// Turns the normal by a `float[16]` column-major matrix; the indices stay.
  void TransByMatrixM(const float* matrix);
  /// Marks the face deleted (32).
  using KwBaseCL::DelItemM;
  /// Replaces each index k by map[k], -2147483647 where the map has none. @return 1.
  int MakeNewIdxM(const IntArr& map);
  /// As MakeNewIdxM(). @return 0 when any two of the new indices are equal, else 1.
  int ResetNodeIdxM(const IntArr& map);

  /// Normal and corners in place.
  [[nodiscard]] const zel::FaceRecord<4>& record() const { return record_; }
  /// As record(), for writing. To be used on a face of a list only through a reference the list
  /// gave.
  [[nodiscard]] zel::FaceRecord<4>& record() { return record_; }

 private:
  zel::FaceRecord<4> record_;
};

#pragma GCC diagnostic pop

/// The growable list of quads: as TriangleArr, with the differences stated.
///
/// Several threads may read and search a const list at once; whoever changes it must be alone with
/// it.
class ZEL_API QuadArr {
 public:
  /// An empty list of four slots, increment 10.
  QuadArr();
  /// @param length slots to allocate; 4 or fewer use no heap.
  explicit QuadArr(int length);
  /// A deep copy: every slot, the counters and the increment.
  QuadArr(const QuadArr& other);
  /// Takes the content over; `other` is left as newly constructed.
  QuadArr(QuadArr&& other) noexcept;
  /// Copies every slot, the counters and the increment. Out of memory, this list stays as it was.
  QuadArr& operator=(const QuadArr& other);
  /// Takes the content over; `other` is left as newly constructed.
  QuadArr& operator=(QuadArr&& other) noexcept;

  /// Reads the next tagged list; live quads are first marked deleted. @throws int 107.
  virtual void FmInputZelLstM(KwIOCL* io);
  /// Writes the tagged list `name`, every slot below the bound. @throws int 108.
  virtual void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  /// Releases the store.
  virtual ~QuadArr();

  // --- the slot array family, as NodeArr ---------------------------------------------------

  /// @return the slots allocated.
  [[nodiscard]] int GetLengthM() const;
  /// @return one past the highest slot written.
  [[nodiscard]] int GetBoundM() const;
  /// @return the slots counted as live.
  [[nodiscard]] int GetAvailableNumM() const;
  /// @return the number of live slots after `index`. Walks them.
  [[nodiscard]] int GetAvailableNumM(int index) const;
  /// Adds `count` fresh slots; ignored below 1. @return 1.
  int AddSizeM(int count);
  /// Makes the list at least `length` slots long. @return 1.
  int InitialSizeM(int length);
  /// As NodeArr::SetIncrementM(). @return 1.
  int SetIncrementM(int increment);
  /// Writes a slot, growing as NodeArr::SetItemM(). @return 1.
  int SetItemM(const QuadCL& quad, int index);
  /// Writes the slot at the bound. @return its index.
  int AddItemM(const QuadCL& quad);
  /// Moves the slots from `position` up by one and writes there; bound and available count rise by
  /// one.
  /// @return 1.
  int InsertItemM(const QuadCL& quad, int position);
  /// Marks a live slot deleted (32); when it is the last, live or not, lowers the bound by one.
  /// @return 1.
  int DelItemM(int index);
  /// Back to four fresh slots; the increment stays. @return 1.
  int DelAllM();
  /// Marks every live slot below the bound deleted, keeps the store. @return 1.
  int DelAllVirtualM();
  /// Copies a slot, live or not; a fresh quad for an index outside 0 to bound - 1. @return 1.
  int GetItemM(QuadCL* quad, int index) const;
  /// @return the slot, or null for an index outside 0 to bound - 1.
  [[nodiscard]] QuadCL* GetItemPM(int index);
  /// As GetItemPM(), for reading; such a pointer costs later searches nothing.
  [[nodiscard]] const QuadCL* GetItemPM(int index) const;
  /// @return the slot; for an index outside 0 to length - 1 a scratch quad of the calling thread.
  [[nodiscard]] QuadCL& ElementAtM(int index);
  /// As ElementAtM(), for reading; such a reference costs later searches nothing.
  [[nodiscard]] const QuadCL& ElementAtM(int index) const;
  /// As ElementAtM().
  [[nodiscard]] QuadCL& operator[](int index);
  /// As ElementAtM(), for reading.
  [[nodiscard]] const QuadCL& operator[](int index) const;
  /// First live slot. @return 1, or -1 with a fresh quad and index -2147483647.
  int GetFirstM(QuadCL* quad, int* index) const;
  /// First live slot after `after`. @return as GetFirstM().
  int GetNextM(QuadCL* quad, int* index, int after) const;
  /// @return the index (not 1), or -1.
  int GetLastM(QuadCL* quad, int* index) const;
  /// @return the store, GetLengthM() slots long; valid until the next growth.
  [[nodiscard]] QuadCL* getCurrentItemPrtM();
  /// As getCurrentItemPrtM(), for reading.
  [[nodiscard]] const QuadCL* getCurrentItemPrtConstM() const;

  // --- faces -----------------------------------------------------------------------------------

  /// Appends a quad as it is: degenerate and duplicate ones too, unlike triangles. @return 1.
  int MergeQuadLstM(QuadCL quad);
  /// Inserts a live quad with normal type 0 at `pos`; otherwise as TriangleArr::ModifyM. @return 1.
  int ModifyM(int pos, const int* indices);
  /// Number of quads, deleted ones too, in which b is a neighbour of the first corner that is a;
  /// diagonals do not count. 1 marks a boundary edge.
  /// @param[out] at the last of them; untouched when there is none.
  int JudgeBoundM(int a, int b, int* at) const;
  /// Renames a node: in every quad, deleted ones too, the first corner equal to `oldIdx` becomes
  /// `newIdx`. No quad is deleted, unlike triangles.
  void ChangeNodeIdxM(int oldIdx, int newIdx);
  /// @return the corner after n in the first quad that has n, or -2147483647.
  [[nodiscard]] int GetOneNeighbourPntM(int n) const;
  /// As TriangleArr::ResetNodeIdxM; a quad collapses when any two corners are equal.
  void ResetNodeIdxM(const IntArr& map);
  /// Turns the normal of every slot below the bound by a `float[16]` column-major matrix.
  void TransByMatrixM(const float* matrix);
  /// Negates the normal of every slot below the bound, deleted ones too.
  void NegativeNormalVectM();

  // --- plain files -----------------------------------------------------------------------------

  /// Reads a plain quad list. Records that do not fit are dropped; reading ends where the stream
  /// fails, which its error flag tells. @return 1.
  int FmReadQuadLstM(FILE* file);
  /// Writes the plain list "QUAD", every slot below the bound. @return 1.
  int FmWriteQuadLstToFileM(FILE* file) const;
  /// Writes the live quads as the list "Quad". @return 1.
  int ExportQuadLstDBFileM(FILE* file) const;

 private:
  friend struct zel::IndexCheck;
  using Faces = zel::IndexedSlots<QuadCL, zel::ElementPolicy, zel::FaceIndex<QuadCL>>;

  int fmReadOneQuadM(FILE* file, int index);

  Faces faces_;
};
