#include "zel/mesh/triangle.h"

#include "zel/mesh/detail/faces/face_record_ops.h"

void TriangleCL::GetTriangleM(int* out) const { std::copy_n(record_.corners, 3, out); }

void TriangleCL::SetTriangleM(const int* indices) { std::copy_n(indices, 3, record_.corners); }

void TriangleCL::SetTriangleM(int a, int b, int c) {
  record_.corners[0] = a;
  record_.corners[1] = b;
  record_.corners[2] = c;
}

void TriangleCL::SetValueM(int a, int b, int c, const float* normal) {
  SetTriangleM(a, b, c);
  zel::setNormal(record_, normal);
}

int TriangleCL::ModifyM(const int* indices, const float* normal) {
  SetDeleteTagM(zel::kTagAvailable);
  SetTriangleM(indices);
  zel::setNormal(record_, normal);
  return 1;
}

int TriangleCL::SetNormM(const float* normal) {
  zel::setNormal(record_, normal);
  return 1;
}

int TriangleCL::GetNormM(float* out) const {
  std::copy_n(record_.normal, 3, out);
  return 1;
}

int TriangleCL::GetNormTypeM(char* out) const {
  *out = record_.normalType;
  return 1;
}

void TriangleCL::NegativeNormalVectM() { zel::negateNormal(record_); }

void TriangleCL::TransByMatrixM(const float* matrix) { zel::turnNormal(record_, matrix); }

int TriangleCL::GetIdxM(int n) const { return zel::cornerOf(record_, n); }

void TriangleCL::GetOtherTwoIdxI(int k, int* out) const {
  if (k < 0 || k > 2) {
    return;
  }
  out[0] = record_.corners[k == 0 ? 1 : 0];
  out[1] = record_.corners[k == 2 ? 1 : 2];
}

int TriangleCL::FindEdgeM(int a, int b) const { return zel::hasNeighbours(record_, a, b) ? 1 : 0; }

int TriangleCL::FindTriangleM(const int* indices) const {
  return std::is_permutation(record_.corners, record_.corners + 3, indices) ? 1 : 0;
}

int TriangleCL::MakeNewIdxM(const IntArr& map) {
  zel::renumberCorners(record_, map);
  return 1;
}

int TriangleCL::ResetNodeIdxM(const IntArr& map) {
  zel::renumberCorners(record_, map);
  return zel::hasEqualCorners(record_) ? 0 : 1;
}
