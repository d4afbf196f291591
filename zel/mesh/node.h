#pragma once

/// @file
/// Mesh nodes: a position with a normal, and the list of them that faces refer to by index.

#include <cstdio>

#include "zel/containers/indexed_slots.h"
#include "zel/core/api.h"
#include "zel/core/element_base.h"

class IntArr;
class KwIOCL;
class Point3DArr;
class QuadArr;
class QuadCL;
class TriangleArr;
class TriangleCL;

namespace zel {
class NodeIndex;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Woverloaded-virtual"  // FmWriteZelFileM hides on purpose

/// One mesh node. Points and normals are `float[3]`; a fresh node has both zero and tag 30.
class ZEL_API NodeCL : public KwBaseCL {
 public:
  /// Tag 30, everything zero.
  NodeCL() = default;
  /// @param tag the delete tag, any value.
  explicit NodeCL(char tag) : KwBaseCL(tag) {}
  /// A copy in every field, the tag included.
  NodeCL(const NodeCL& other) = default;
  /// Copies every field, the tag included.
  NodeCL& operator=(const NodeCL& other) = default;
  ~NodeCL() override = default;

  /// Reads tag, point and normal. @throws int 107 when one cannot be read.
  void FmInputZelFileM(KwIOCL* io) override;
  /// Writes tag, point and normal. @throws int 108 when one cannot be written.
  void FmOutputZelFileM(KwIOCL* io) const override;
  /// Reads the plain record: the tag's line, then point and normal. @return 1.
  int FmReadZelFileM(FILE* file) override;
  /// Writes the plain record. Hides the base's operation without overriding it: a call through
  /// KwBaseCL writes the tag alone. @return 1.
  int FmWriteZelFileM(FILE* file, zel::NotOverriding = {}) const;

  /// @param[out] point x, y, z.
  void GetPntM(float* point) const;
  /// @param[out] normal x, y, z; zero until set.
  void GetNormalM(float* normal) const;
  /// @param[out] point, normal three floats each.
  void GetNodeM(float* point, float* normal) const;
  /// Sets the point; tag and normal stay.
  void SetPntM(const float* point);
  /// Sets the normal as it is given, of unit length or not.
  void SetNormM(const float* normal);
  /// Sets point and normal; the tag stays.
  void SetNodeM(const float* point, const float* normal);
  /// @return 1 when the two positions are equal as slIsEqualPoint3D() has it, else 0. Normals and
  ///         tags play no part.
  [[nodiscard]] int CompareM(NodeCL other) const;
  /// Becomes a copy of `other`; the number is not used.
  void SetByMergeM(const NodeCL& other, int unused);
  /// Moves the point by a `float[16]` column-major matrix and turns the normal (no translation).
  void TransByMatrixM(const float* matrix);
  /// Marks the node deleted (32).
  using KwBaseCL::DelItemM;

  /// The point in place, `float[3]`.
  [[nodiscard]] const float* point() const { return point_; }
  /// As point(), for writing.
  [[nodiscard]] float* point() { return point_; }
  /// The normal in place, `float[3]`.
  [[nodiscard]] const float* normal() const { return normal_; }
  /// As normal(), for writing.
  [[nodiscard]] float* normal() { return normal_; }

 private:
  float point_[3] = {};
  float normal_[3] = {};
};

#pragma GCC diagnostic pop

/// The growable list of nodes.
///
/// Slots never move when one is deleted: a deleted node keeps its slot and content with tag 32.
/// *Length* is the number of allocated slots (4 of them inside the object), *bound* (also: count)
/// one past the highest slot written, *available* the number of slots counted as live (tag 31).
/// Writing at or beyond the length adds max(length, index - length + 1) slots. Bad indices are
/// ignored by writers, and answered with a fresh node or zero point by readers. Copies are deep.
///
/// Searches by position answer as a walk over the slots in index order would, but do not walk:
/// the list keeps an index of its own from the first few searches on. References and pointers to
/// nodes (`ElementAtM`, `[]`, `GetItemPM`, `getCurrentItemPrtM`) stay valid until the next growth,
/// and what is written through them is seen; each slot handed out makes every search a little
/// slower until then, and the whole store, or more than one slot in a hundred, handed out makes
/// every search walk. So read through the const forms, write through the list, or end the life of
/// what was handed out with AddSizeM(1).
///
/// Several threads may read and search a const list at once; whoever changes it must be alone with
/// it.
class ZEL_API NodeArr {
 public:
  /// An empty list of four slots, increment 10.
  NodeArr();
  /// @param length slots to allocate; 4 or fewer use no heap.
  explicit NodeArr(int length);
  /// A deep copy: every slot, the counters and the increment.
  NodeArr(const NodeArr& other);
  /// Takes the content over; `other` is left as newly constructed.
  NodeArr(NodeArr&& other) noexcept;
  /// Copies every slot, the counters and the increment. Out of memory, this list stays as it was.
  NodeArr& operator=(const NodeArr& other);
  /// Takes the content over; `other` is left as newly constructed.
  NodeArr& operator=(NodeArr&& other) noexcept;

  /// Reads the next tagged list. Live nodes are first marked deleted. @throws int 107.
  virtual void FmInputZelLstM(KwIOCL* io);
  /// Writes the tagged list `name`, every slot below the bound. @throws int 108.
  virtual void FmOutputZelLstM(KwIOCL* io, const char* name) const;
  /// Releases the store.
  virtual ~NodeArr();

  // --- the slot array family ---------------------------------------------------------------

  /// @return the slots allocated.
  [[nodiscard]] int GetLengthM() const;
  /// @return one past the highest slot written.
  [[nodiscard]] int GetBoundM() const;
  /// @return the slots counted as live.
  [[nodiscard]] int GetAvailableNumM() const;
  /// @return the number of live slots after `index`.
  [[nodiscard]] int GetAvailableNumM(int index) const;
  /// Adds `count` fresh slots; ignored below 1. @return 1.
  int AddSizeM(int count);
  /// Makes the list at least `length` slots long. @return 1.
  int InitialSizeM(int length);
  /// Sets the growth increment, which only insertion uses; ignored below 1. @return 1.
  int SetIncrementM(int increment);
  /// Writes a slot, growing when needed. A live node over a slot that is not raises the available
  /// count. @return 1.
  int SetItemM(const NodeCL& node, int index);
  /// Writes the slot at the bound. @return its index.
  int AddItemM(const NodeCL& node);
  /// Moves the slots from `position` up by one and writes there; bound and available count rise
  /// by one. @return 1.
  int InsertItemM(const NodeCL& node, int position);
  /// Marks a live slot deleted (32); when it is the last, live or not, lowers the bound by one.
  /// @return 1.
  int DelItemM(int index);
  /// Back to four fresh slots; the increment stays. @return 1.
  int DelAllM();
  /// Marks every live slot below the bound deleted, keeps the store. @return 1.
  int DelAllVirtualM();
  /// Copies a slot, live or not; a fresh node for an index outside 0 to bound - 1. @return 1.
  int GetItemM(NodeCL* node, int index) const;
  /// @return the slot, or null for an index outside 0 to bound - 1.
  [[nodiscard]] NodeCL* GetItemPM(int index);
  /// As GetItemPM(), for reading; such a pointer costs later searches nothing.
  [[nodiscard]] const NodeCL* GetItemPM(int index) const;
  /// @return the slot; for an index outside 0 to length - 1 a scratch node of the calling thread.
  [[nodiscard]] NodeCL& ElementAtM(int index);
  /// As ElementAtM(), for reading; such a reference costs later searches nothing.
  [[nodiscard]] const NodeCL& ElementAtM(int index) const;
  /// As ElementAtM().
  [[nodiscard]] NodeCL& operator[](int index);
  /// As ElementAtM(), for reading.
  [[nodiscard]] const NodeCL& operator[](int index) const;
  /// First live slot. @return 1, or -1 with a fresh node and index -2147483647.
  int GetFirstM(NodeCL* node, int* index) const;
  /// First live slot after `after`. @return as GetFirstM().
  int GetNextM(NodeCL* node, int* index, int after) const;
  /// Last live slot. @return its index (not 1), or -1 as GetFirstM().
  int GetLastM(NodeCL* node, int* index) const;
  /// The store itself, valid until the next growth.
  [[nodiscard]] NodeCL* getCurrentItemPrtM();
  /// As getCurrentItemPrtM(), for reading.
  [[nodiscard]] const NodeCL* getCurrentItemPrtConstM() const;

  // --- reading ---------------------------------------------------------------------------------
  // Indices name slots whether below the bound or not: plain lists leave nodes beyond it, and faces
  // refer to them. Points and normals of an index outside 0 to length - 1 read as zero; writes
  // there are ignored.

  /// @param[out] point x, y, z of the node at `index`.
  void GetPntM(int index, float* point) const;
  /// @param[out] normal x, y, z of the node at `index`.
  void GetNormalM(int index, float* normal) const;
  /// As GetPntM(), but zero from the bound on.
  void GetOnePntM(int index, float* point) const;
  /// Sets the normal of the node at `index`.
  void SetNodeNormM(int index, const float* normal);
  /// Copies the point of every slot below the bound, deleted ones too, to the same index of `out`.
  void GetPntLstM(Point3DArr* out) const;
  /// Smallest x and smallest y over the live nodes; 1e18 where there is none.
  void GetMinXY(float* minX, float* minY) const;
  /// Extents of the live nodes along three directions.
  /// @param[out] r1,r2,r3 [0] the smallest, [1] the largest dot product of point and direction;
  ///             untouched without a live node.
  void GetMaxMinM(const float* a1, const float* a2, const float* a3, float* r1, float* r2,
                  float* r3) const;
  /// out = point(i) - point(j). @return 1.
  int GenerateVectorM(int i, int j, float* out) const;
  /// As GenerateVectorM(), negated when its x is negative. @return 1.
  int GeneratePositiveVectorM(int i, int j, float* out) const;
  /// Whether all live nodes lie on one straight line. Directions are compared after the sign rule
  /// of GeneratePositiveVectorM(), so two opposite ones with x = 0 count as different lines.
  /// @return 1 also for fewer than three live nodes, else 0 or 1.
  [[nodiscard]] int IsOneLineM() const;

  // --- searching -------------------------------------------------------------------------------

  /// Slot that lies closest in direction d1 and, among those, in direction d2, seen from p.
  ///
  /// Walks all slots, deleted ones too. With a = |(point - p).d1| and b likewise for d2, a slot is
  /// taken when a is below the last taken a, or within 0.0001 of it, and b is below the last b.
  /// @param[out] idx untouched when no slot is taken.
  void GetMinPntIdxM(const float* p, const float* d1, const float* d2, int* idx) const;
  /// Nearest live node by slDistance3(); the lowest index among equals, and nodes 1e18 away or
  /// farther are never taken.
  /// @param[out] out copy of the winner; without one a copy of slot 1.
  /// @return its index, or -2147483647.
  int GetNearestNodeM(NodeCL& out, const float* p) const;
  /// Nearest corner of one quad, as a running minimum over several calls.
  /// @param[in,out] dist,idx the best so far, seeded by the caller; replaced by a nearer corner.
  /// @return *idx.
  int GetNearestNodeM(float* dist, int* idx, const QuadCL& quad, const float* p) const;
  /// As the form for quads, for one triangle.
  int GetNearestNodeM(float* dist, int* idx, const TriangleCL& triangle, const float* p) const;
  /// Walks along an index list while the distance to `node` falls; finds a local minimum.
  /// @param[in,out] pos position in `lst` (not a node index): the start, then where it stopped.
  void GetNearestNodeIdxM(const NodeCL& node, const IntArr& lst, int* pos) const;
  /// Picks a live node near a screen point.
  ///
  /// Measures in the x-z plane after moving the nodes by `matrix` (`float[16]`). A node within
  /// `radius` of p and nearer than all before wins. One farther by less than 0.0001 (squared) than
  /// the best also wins, without becoming the measure, when its distance from p in space is below
  /// radius squared.
  /// @param[out] outPnt the winner's point, not moved; untouched without a winner.
  /// @return its index, or -1.
  int GetSelectedIdxM(const float* matrix, const float* p, float radius, float* outPnt) const;

  // --- building and merging --------------------------------------------------------------------

  /// Finds a node by position or appends it.
  ///
  /// Two positions are the same node when their squared distance is below 9.999999e-9. The test is
  /// not transitive; the lowest live index wins, and the stored node keeps its own normal. A
  /// deleted slot is never revived. Constant time on average.
  /// @param[out] idx index of the node found, or of the copy appended at the bound.
  /// @return 1.
  int MergeNodeLstM(const NodeCL& node, int* idx);
  /// Copies node i of `src` to index i of this list, unless `src` has no live node there or this
  /// list already has one. @return 1.
  int AddNodeByIndex(int i, const NodeArr& src);
  /// Appends a point when -1e-8 < x < limit[0] and -1e-8 < y < limit[1].
  ///
  /// While the list has room the point alone is written: the slot keeps its tag and normal, yet
  /// counts as available. When it is full, `scratch` receives the point, with z = 0.0001 in place
  /// of a z that is not positive, and is appended. The last three numbers are not used.
  void AddPntAndNormM(NodeCL& scratch, const float* limit, float x, float y, float z, float unused1,
                      float unused2, float unused3);
  /// Merges the nodes lst[from] to lst[to - 1] into the node lst[to]: faces of `tris` that use one
  /// of them use the target instead (see TriangleArr::ChangeNodeIdxM), the node and its entry of
  /// `lst` are deleted. An entry equal to the target keeps the node.
  void MergeNodesM(IntArr* lst, int from, int to, TriangleArr* tris);
  /// Purges `lst`, then gathers every live node in slot 0: each in turn is copied there, and faces
  /// and the first matching entry of `lst` that refer to it refer to 0. The last one stays in slot
  /// 0; bound and available count do not change. This does not compact the list.
  void PurgeDeletedNodes(IntArr* lst, TriangleArr* tris);
  /// Reverses the order of the slots below the bound.
  void InverseNodeLstM();
  /// Reverses the order of the rows of a row-major grid of `rows` x `cols` nodes.
  void InverseMeshNodeLstM(int rows, int cols);
  /// Moves every slot below the bound, deleted ones too. @param matrix `float[16]`, column-major.
  void TransByMatrixM(const float* matrix);
  /// Moves the points as TransByMatrixM(); normals stay.
  void ScaleM(const float* matrix);
  /// Sweeps the live nodes round an axis into n - 1 further rings, one step of a full turn
  /// (6.283185 / (n - 1)) apart; the last ring repeats the first. Nothing is merged. The length
  /// becomes at least (n + 1) x bound.
  /// @param n   rings over the full turn; 1 appends nothing, below 1 nothing happens at all.
  /// @param p   point of the axis. @param dir its unit direction.
  /// @return 1.
  int ExtendByRotateToCircleM(int n, const float* p, const float* dir);

  // --- normals ---------------------------------------------------------------------------------

  /// Gives the corners of a triangle its flat normal, (P1 - P0) x (P2 - P0). Nothing is averaged:
  /// a shared node keeps the normal of the last face. Ignored when a corner is no node.
  void ReGenNormalVectM(const TriangleCL& triangle);
  /// As for triangles, (P1 - P0) x (P3 - P0); the third corner does not count.
  void ReGenNormalVectM(const QuadCL& quad);
  /// Normal of one node of a row-major grid, from its neighbours in row and column.
  ///
  /// Where a neighbour coincides with the node (components summing to less than 0.001), the
  /// diagonal neighbour takes its place, or, in the last row or column, the normal of the node
  /// before it is copied. Ignored on grids below 2 x 2, for positions outside the grid, and where
  /// the list ends before the node or a neighbour needed.
  /// @return 1.
  int ReGenNormalVectM(int row, int col, int rows, int cols);
  /// Brings the normals of the nodes that triangles use, deleted triangles and nodes included, to
  /// unit length. They are not computed from the faces, and quads play no part. @return 1.
  int CalculateNormByFaceviewLst(const TriangleArr& tris, const QuadArr& quads);
  /// Negates the normal of every live node. @return 1.
  int NegativeNormalVectM();

  // --- plain files -----------------------------------------------------------------------------

  /// Reads a plain node list. Records that do not fit are dropped; reading ends where the stream
  /// fails, which its error flag tells. @return 1.
  int FmReadNodeLstM(FILE* file);

 private:
  friend struct zel::IndexCheck;
  using Slots = zel::IndexedSlots<NodeCL, zel::ElementPolicy, zel::NodeIndex>;

  int fmReadOneNodeM(FILE* file, int index);

  Slots nodes_;
};
