// The list of quads.

#include "zel/containers/detail/rows.h"
#include "zel/mesh/detail/faces/face_list_ops.h"
#include "zel/mesh/quad.h"

template class zel::SlotStore<QuadCL, zel::ElementPolicy>;
template class zel::IndexedSlots<QuadCL, zel::ElementPolicy, zel::FaceIndex<QuadCL>>;

#define ZEL_ARR QuadArr
#define ZEL_SLOT QuadCL
#define ZEL_IN const QuadCL&
#define ZEL_OUT QuadCL*
#define ZEL_SLOTS faces_
#define ZEL_HAS_INITIAL_SIZE
#define ZEL_HAS_ITEM_POINTER
#define ZEL_HAS_LAST_INDEX
#define ZEL_HAS_KEEPING_CLEAR
#define ZEL_HAS_ELEMENTS
#include "zel/containers/detail/family.inl"

int QuadArr::MergeQuadLstM(QuadCL quad) {
  faces_.add(quad);
  return 1;
}

int QuadArr::ModifyM(int pos, const int* indices) {
  QuadCL quad;
  quad.ModifyM(indices);
  zel::insertFace(faces_, quad, pos);
  return 1;
}

int QuadArr::JudgeBoundM(int a, int b, int* at) const {
  return zel::countFacesAlong(faces_, a, b, at);
}

void QuadArr::ChangeNodeIdxM(int oldIdx, int newIdx) {
  zel::renameNode(faces_, oldIdx, newIdx, [](int /*slot*/) {});
}

int QuadArr::GetOneNeighbourPntM(int n) const { return zel::cornerAfter(faces_, n); }

void QuadArr::ResetNodeIdxM(const IntArr& map) { zel::renumberAndCompact(faces_, map); }

void QuadArr::TransByMatrixM(const float* matrix) {
  zel::changeEveryNormal(faces_, [=](auto& face) { zel::turnNormal(face, matrix); });
}

void QuadArr::NegativeNormalVectM() {
  zel::changeEveryNormal(faces_, [](auto& face) { zel::negateNormal(face); });
}
