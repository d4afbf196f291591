#pragma once

/// @file
/// Triangles and their list: storage, searches, topology, renumbering.

#include <cstdio>

#include "zel/containers/indexed_slots.h"
#include "zel/core/api.h"
#include "zel/core/element_base.h"
#include "zel/geometry/records.h"
#include "zel/mesh/face_record.h"

class Int2DArr;
class IntArr;
class KwIOCL;
class NodeArr;
class Point2DArr;
class Point3DArr;
struct XYCoordSysD;

namespace zel {
template <class Face>
class FaceIndex;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"  // FmWriteZelFileM hides on purpose

/// One triangular face: three node indices in winding order, a normal and its type.
///
/// A fresh triangle has tag 30, normal type 0, a zero normal and three indices of -2147483647
/// ("no node").
class ZEL_API TriangleCL : public KwBaseCL {
 public:
  /// Tag 30, no corners, no normal.
  TriangleCL() = default;
  /// @param tag the delete tag, any value.
  explicit TriangleCL(char tag) : KwBaseCL(tag) {}
  /// A copy in every field, the tag included.
  TriangleCL(const TriangleCL& other) = default;
  /// Copies every field, the tag included.
  TriangleCL& operator=(const TriangleCL& other) = default;
  ~TriangleCL() override = default;

  /// Reads tag, indices, normal and normal type, an order unlike the writer's: text lists of
  /// triangles cannot be read back. @throws int 107 when a field cannot be read.
  void FmInputZelFileM(KwIOCL* io) override;
  /// Writes tag, normal type, normal and indices. @throws int 108 when one cannot be written.
  void FmOutputZelFileM(KwIOCL* io) const override;
  /// Reads the plain record: tag, indices, normal, normal type. @return 1.
  int FmReadZelFileM(FILE* file) override;
  /// Writes the plain record. Hides the base's operation without overriding it: a call through
  /// KwBaseCL writes the tag alone. @return 1.
  int FmWriteZelFileM(FILE* file, zel::NotOverriding = {}) const;
  /// Writes the plain record; the matrix (`float[16]`) does not change it. @return 1.
  int ExportTriangleDBFIleM(FILE* file, const float* matrix) const;

  /// @param[out] out the node indices in winding order.
  void GetTriangleM(int* out) const;
  /// Sets the node indices, in winding order; tag and normal stay.
  void SetTriangleM(const int* indices);
  /// As SetTriangleM(const int*).
  void SetTriangleM(int a, int b, int c);
  /// Sets indices and normal, normal type 1; the tag stays.
  void SetValueM(int a, int b, int c, const float* normal);
  /// Fills the face: tag 31, indices, normal, normal type 1. @return 1.
  int ModifyM(const int* indices, const float* normal);
  /// Sets the normal, normal type 1. @return 1.
  int SetNormM(const float* normal);
  /// @return 1.
  int GetNormM(float* out) const;
  /// @param[out] out 0 no normal given, 1 set explicitly. @return 1.
  int GetNormTypeM(char* out) const;
  /// Negates the normal; the winding stays.
  void NegativeNormalVectM();
  /// Turns the normal by a `float[16]` column-major matrix; the indices stay.
  void TransByMatrixM(const float* matrix);
  /// Marks the face deleted (32).
  using KwBaseCL::DelItemM;

  /// @return the first corner (0, 1, 2) that is node n, or -2147483647.
  [[nodiscard]] int GetIdxM(int n) const;
  /// The two nodes beside corner k, in corner order; nothing for any other k.
  void GetOtherTwoIdxI(int k, int* out) const;
  /// @return 1 when a and b stand at two different corners, in either order, else 0.
  [[nodiscard]] int FindEdgeM(int a, int b) const;
  /// @return 1 when the three indices given are a permutation of the face's, else 0.
  [[nodiscard]] int FindTriangleM(const int* indices) const;
  /// Replaces each index k by map[k], -2147483647 where the map has none. @return 1.
  int MakeNewIdxM(const IntArr& map);
  /// As MakeNewIdxM(). @return 0 when two of the new indices are equal, else 1.
  int ResetNodeIdxM(const IntArr& map);
  /// Places the third corner beside two whose texture coordinates are known, keeping the angle at
  /// corner j (measured about the face normal) and the length of the edge from j to the third.
  /// @param t     index of this face: entry 3 t + k of `uv` belongs to its corner k.
  /// @param i,j   the known corners, one after the other in the winding; others give corner 0 as
  ///              the third, and numbers outside 0 to 2 do nothing.
  /// The three vectors are not used. Known corners in one place give the direction (1, 0).
  void SetTexCoordM(int t, int i, int j, const float* unused1, const float* unused2,
                    const float* unused3, const NodeArr& nodes, Point2DArr* uv) const;
  /// Draws the face with its flat normal in the current GL context. @param points indexed like the
  /// nodes. Tag and normal type play no part.
  void ShowM(const Point3DArr& points) const;

  /// Normal and corners in place.
  [[nodiscard]] const zel::FaceRecord<3>& record() const { return record_; }
  /// As record(), for writing. To be used on a face of a list only through a reference the list
  /// gave.
  [[nodiscard]] zel::FaceRecord<3>& record() { return record_; }

 private:
  zel::FaceRecord<3> record_;
};

#pragma GCC diagnostic pop

/// The growable list of triangles. Storage, copies and bad indices as NodeArr.
///
/// No search looks at delete tags unless it says so: a deleted face still matches until it is
/// purged. Searches by node or corner set answer as a walk over the slots in index order would,
/// in time that grows with the faces around the nodes asked about, not with the list; slots and
/// stores handed out count as in NodeArr.
///
/// Several threads may read and search a const list at once; whoever changes it must be alone with
/// it.
class ZEL_API TriangleArr {
 public:
  /// An empty list of four slots, increment 10.
  TriangleArr();
  /// @param length slots to allocate; 4 or fewer use no heap.
  explicit TriangleArr(int length);
  /// A deep copy: every slot, the counters and the increment.
  TriangleArr(const TriangleArr& other);
  /// Takes the content over; `other` is left as newly constructed.
  TriangleArr(TriangleArr&& other) noexcept;
  /// Copies every slot, the counters and the increment. Out of memory, this list stays as it was.
  TriangleArr& operator=(const TriangleArr& other);
  /// Takes the content over; `other` is left as newly constructed.
  TriangleArr& operator=(TriangleArr&& other) noexcept;

  /// Reads the next tagged list; live faces are first marked deleted. @throws int 107.
  virtual void FmInputZelLstM(KwIOCL* io);
  /// Writes the tagged list `name`, every slot below the bound. @throws int 108.
  virtual void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  /// Releases the store.
  virtual ~TriangleArr();

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
  int SetItemM(const TriangleCL& triangle, int index);
  /// Writes the slot at the bound. @return its index.
  int AddItemM(const TriangleCL& triangle);
  /// Moves the slots from `position` up by one and writes there; bound and available count rise by
  /// one.
  /// @return 1.
  int InsertItemM(const TriangleCL& triangle, int position);
  /// Marks a live slot deleted (32); when it is the last, live or not, lowers the bound by one.
  /// @return 1.
  int DelItemM(int index);
  /// Back to four fresh slots; the increment stays. @return 1.
  int DelAllM();
  /// Marks every live slot below the bound deleted, keeps the store. @return 1.
  int DelAllVirtualM();
  /// Copies a slot, live or not; a fresh triangle for an index outside 0 to bound - 1. @return 1.
  int GetItemM(TriangleCL* triangle, int index) const;
  /// @return the slot, or null for an index outside 0 to bound - 1.
  [[nodiscard]] TriangleCL* GetItemPM(int index);
  /// As GetItemPM(), for reading; such a pointer costs later searches nothing.
  [[nodiscard]] const TriangleCL* GetItemPM(int index) const;
  /// @return the slot; for an index outside 0 to length - 1 a scratch triangle of the calling
  /// thread.
  [[nodiscard]] TriangleCL& ElementAtM(int index);
  /// As ElementAtM(), for reading; such a reference costs later searches nothing.
  [[nodiscard]] const TriangleCL& ElementAtM(int index) const;
  /// As ElementAtM().
  [[nodiscard]] TriangleCL& operator[](int index);
  /// As ElementAtM(), for reading.
  [[nodiscard]] const TriangleCL& operator[](int index) const;
  /// First live slot. @return 1, or -1 with a fresh triangle and index -2147483647.
  int GetFirstM(TriangleCL* triangle, int* index) const;
  /// First live slot after `after`. @return as GetFirstM().
  int GetNextM(TriangleCL* triangle, int* index, int after) const;
  /// @return the index (not 1), or -1.
  int GetLastM(TriangleCL* triangle, int* index) const;
  /// @return the store, GetLengthM() slots long; valid until the next growth.
  [[nodiscard]] TriangleCL* getCurrentItemPrtM();
  /// As getCurrentItemPrtM(), for reading.
  [[nodiscard]] const TriangleCL* getCurrentItemPrtConstM() const;

  // --- searching -------------------------------------------------------------------------------

  /// The *last* face each of whose corners is among the three indices given; so (0, 0, 1) is
  /// found by (0, 1, 5). @return its index, or -1.
  [[nodiscard]] int FindTriangleM(const int* indices) const;
  /// The *first* face whose corners are a permutation of the indices given.
  /// @param[out] at its index; untouched without one. @return 1, or 0.
  int FindTriangleM(const int* indices, int* at) const;
  /// Appends a pair (face, first corner that is n) for every face around node n, in index order.
  /// @param[in,out] out not cleared first.
  void FindTriangleM(int n, Int2DArr* out) const;
  /// The candidate one of whose edges at the shared corner is most nearly perpendicular to `dir`.
  ///
  /// At each corner the second edge is looked at only when the first does not beat all before.
  /// @param cand pairs as FindTriangleM(n, out) makes them.
  /// @param[out] best position in `cand` (not a face index); untouched without a candidate.
  void FindTriangleByVectM(const float* dir, const NodeArr& nodes, const Int2DArr& cand,
                           int* best) const;
  /// @return the lowest index whose tag is neither 30 nor 31 (so deleted faces are found), or
  ///         -2147483647.
  [[nodiscard]] int getFirstValidIdxM() const;
  /// @return the corner after n in the first face that has n, or -2147483647.
  [[nodiscard]] int GetOneNeighbourPntM(int n) const;

  // --- adding ----------------------------------------------------------------------------------

  /// Appends a live face with normal type 1; never fills a deleted slot.
  void AddTriangleM(const int* indices, const float* normal);
  /// Appends a face unless two of its corners are equal or the list has one with the same corner
  /// set, whatever its winding or tag. Constant time on average.
  /// @return 1 appended, 0 refused.
  int MergeTriangleLstM(TriangleCL triangle);
  /// Inserts a live face with normal type 1 at `pos`, moving later slots up. A full store grows
  /// by the increment alone. Ignored for a position outside 0 to bound. @return 1.
  int ModifyM(int pos, const int* indices, const float* normal);

  // --- topology --------------------------------------------------------------------------------

  /// Number of faces, deleted ones too, that have the edge {a, b}; 1 marks a boundary edge.
  /// @param[out] at the last of them; untouched when there is none.
  int JudgeBoundM(int a, int b, int* at) const;
  /// Next boundary edge from node edge[0], not back to `prev` unless there is no other.
  ///
  /// Tries the faces around the node in index order and their other two corners in corner order.
  /// @param[in,out] edge [0] the node, [1] receives the other end.
  /// @param[out] at      as left by the last JudgeBoundM() asked.
  /// @return 1 when found; also when the only way is back to `prev`. Otherwise the count of the
  ///         last edge tried, 0 when there was none.
  int GetOneBoundWithStIdxM(int prev, int* edge, int* at) const;
  /// The first live face other than `skip` that has the edge.
  /// @param edge     two nodes; with `directed` not 0 the face must have them in this order.
  /// @param[out] out its index, or -2147483647. @return 1, or 0.
  int getNextRelTriangleIdxM(int skip, const int* edge, int* out, int directed) const;

  // --- renumbering and removing ----------------------------------------------------------------

  /// Renames a node: in every face, deleted ones too, the first corner equal to `oldIdx` becomes
  /// `newIdx`. A face left with two equal corners is deleted when it was live; when it is the
  /// last, live or not, the bound drops by one.
  void ChangeNodeIdxM(int oldIdx, int newIdx);
  /// Renumbers the corners of the live faces through `map` and squeezes out all that is not live.
  /// Faces with two equal new corners collapse (tag 30) and go. Back to the inline store when 4
  /// or fewer remain.
  void ResetNodeIdxM(const IntArr& map);
  /// Deletes every live face around node n; the bound drops by one when the last is among them.
  void DelTriangleByVertexM(int n);
  /// Removes all that is not live, keeping the order, unless bound and available count agree.
  /// Length shrinks to the smallest doubling of 4 that holds the rest, the increment returns to
  /// 10. Nothing refers to faces by index, so no map is given.
  void PurgeDeletedTrianglesM();

  // --- normals ---------------------------------------------------------------------------------

  /// Normal type 0 for every slot below the bound.
  void ResetNormalTypeM();
  /// Turns the normal of every slot below the bound by a `float[16]` column-major matrix.
  void TransByMatrixM(const float* matrix);
  /// Negates the normal of every slot below the bound, deleted ones too.
  void NegativeNormalVectM();
  /// A face normal of the larger of two groups: those on the side of slot 0's normal (a right
  /// angle counts there) and those against it, deleted slots included. Ties go to slot 0's; so do
  /// lists of fewer than three live faces.
  void GetMajorNormM(float* out) const;

  // --- texture coordinates -----------------------------------------------------------------------

  /// Unfolds the faces into the plane, each beside the one it was reached from across a shared
  /// edge, so that every face keeps an edge length and a corner angle.
  ///
  /// Entry 3 t + k of `uv` belongs to corner k of face t; a node may get different coordinates in
  /// different faces. The walk goes only to live faces that run along the shared edge in the
  /// opposite direction. Where it cannot go on, it restarts from the lowest face that has edges
  /// left to try; deleted faces take part in that. Delete tags are its working state: 37 and 38 on
  /// a face tell how many edges have been tried, 30 that all have; the available count falls by
  /// one for each face visited. Callers that need the list afterwards unfold a copy, or put the
  /// faces back with SetItemM(), which restores the count, too.
  /// @param cs    where the walk begins: at a face around the node nearest to the x axis, laid
  ///              into the x-y plane. An origin with x = -1e18 means none: then face 0 is first,
  ///              its first corner at (0, 0).
  /// @param[out] uv grows by 3 entries a face; entries of unreached faces keep what they held.
  /// @return 1 when the walk ended normally or there are no faces; 0 when live faces remain out of
  ///         reach, when no face to begin with was found, or at a face whose corners are no nodes.
  /// Linear in the number of faces.
  int GetTexCoordM(const XYCoordSysD& cs, Point2DArr* uv, const NodeArr& nodes);

  // --- plain files -----------------------------------------------------------------------------

  /// Reads a plain triangle list. Records that do not fit are dropped; reading ends where the
  /// stream fails, which its error flag tells. @return 1.
  int FmReadTriangleLstM(FILE* file);
  /// Writes the plain list "TRIANGLE", every slot below the bound. @return 1.
  int FmWriteTriangleLstToFileM(FILE* file) const;
  /// Writes the live faces as the list "Triangle"; it ends with the tag Node_LIST_END. @return 1.
  int ExportTriangleLstDBFileM(FILE* file, const float* matrix) const;

 private:
  friend struct zel::IndexCheck;
  using Faces = zel::IndexedSlots<TriangleCL, zel::ElementPolicy, zel::FaceIndex<TriangleCL>>;

  class UnfoldWalk;

  int fmReadOneTriangleM(FILE* file, int index);
  /// @return the face to start from, or -2147483647.
  int seedFirstFace(Point2DArr* uv, const NodeArr& nodes) const;
  int seedAlongAxis(const XYCoordSysD& cs, Point2DArr* uv, const NodeArr& nodes) const;
  /// Carries an edge's coordinates from one face to the next and places that one's third corner.
  void setTextureCoordM(int from, int to, const int* edge, const float* z, const float* x,
                        const float* y, const NodeArr& nodes, Point2DArr* uv);

  Faces faces_;
};
