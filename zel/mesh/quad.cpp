#include "zel/mesh/quad.h"

#include "zel/mesh/detail/faces/face_record_ops.h"

void QuadCL::GetQuadM(int* out) const { std::copy_n(record_.corners, 4, out); }

void QuadCL::SetQuadM(const int* indices) { std::copy_n(indices, 4, record_.corners); }

int QuadCL::SetQuadM(int a, int b, int c, int d) {
  const int indices[4] = {a, b, c, d};
  SetQuadM(indices);
  return 1;
}

int QuadCL::ModifyM(const int* indices) {
  SetDeleteTagM(zel::kTagAvailable);
  SetQuadM(indices);
  record_.normalType = 0;
  return 1;
}

int QuadCL::SetNormM(const float* normal) {
  zel::setNormal(record_, normal);
  return 1;
}

int QuadCL::GetNormM(float* out) const {
  std::copy_n(record_.normal, 3, out);
  return 1;
}

int QuadCL::GetNormTypeM(char* out) const {
  *out = record_.normalType;
  return 1;
}

void QuadCL::SetNormTypeM(char type) { record_.normalType = type; }

void QuadCL::NegativeNormalVectM() { zel::negateNormal(record_); }

void QuadCL::TransByMatrixM(const float* matrix) { zel::turnNormal(record_, matrix); }

int QuadCL::MakeNewIdxM(const IntArr& map) {
  zel::renumberCorners(record_, map);
  return 1;
}

int QuadCL::ResetNodeIdxM(const IntArr& map) {
  zel::renumberCorners(record_, map);
  return zel::hasEqualCorners(record_) ? 0 : 1;
}
