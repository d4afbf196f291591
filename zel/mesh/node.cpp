#include "zel/mesh/node.h"

#include <algorithm>

#include "zel/geometry/geometry.h"

void NodeCL::GetPntM(float* point) const { std::copy_n(point_, 3, point); }

void NodeCL::GetNormalM(float* normal) const { std::copy_n(normal_, 3, normal); }

void NodeCL::GetNodeM(float* point, float* normal) const {
  GetPntM(point);
  GetNormalM(normal);
}

void NodeCL::SetPntM(const float* point) { std::copy_n(point, 3, point_); }

void NodeCL::SetNormM(const float* normal) { std::copy_n(normal, 3, normal_); }

void NodeCL::SetNodeM(const float* point, const float* normal) {
  SetPntM(point);
  SetNormM(normal);
}

int NodeCL::CompareM(NodeCL other) const { return slIsEqualPoint3D(point_, other.point_); }

void NodeCL::SetByMergeM(const NodeCL& other, int /*unused*/) { *this = other; }

void NodeCL::TransByMatrixM(const float* matrix) {
  slMatrix16MultiPoint3(matrix, point_);
  slMatrix16MultiVector3(matrix, normal_);
}
