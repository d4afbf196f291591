// The list of quads.

#include "zel/mesh/detail/face_list_ops.h"
#include "zel/mesh/quad.h"

template class zel::SlotStore<QuadCL, zel::ElementPolicy>;
template class zel::IndexedSlots<QuadCL, zel::FaceIndex<QuadCL>>;

#define ZEL_LIST QuadArr
#define ZEL_ELEMENT QuadCL
#define ZEL_SLOTS faces_
#include "zel/mesh/detail/list_family.inl"

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
