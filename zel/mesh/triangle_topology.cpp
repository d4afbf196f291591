// Adding, following, renumbering and removing triangles.

#include "zel/mesh/detail/faces/face_list_ops.h"
#include "zel/mesh/triangle.h"

void TriangleArr::AddTriangleM(const int* indices, const float* normal) {
  TriangleCL triangle;
  triangle.ModifyM(indices, normal);
  faces_.add(triangle);
}

int TriangleArr::ModifyM(int pos, const int* indices, const float* normal) {
  TriangleCL triangle;
  triangle.ModifyM(indices, normal);
  zel::insertFace(faces_, triangle, pos);
  return 1;
}

int TriangleArr::JudgeBoundM(int a, int b, int* at) const {
  return zel::countFacesAlong(faces_, a, b, at);
}

int TriangleArr::GetOneBoundWithStIdxM(int prev, int* edge, int* at) const {
  const int node = edge[0];
  int count = 0;
  bool joinsPrevious = false;
  const zel::Candidates candidates = zel::facesAround(faces_, node);
  for (int k = 0; k < candidates.size(); ++k) {
    const TriangleCL& face = faces_[candidates[k]];
    int others[2];
    const int corner = face.GetIdxM(node);
    if (corner == zel::kNoIndex) {
      continue;
    }
    face.GetOtherTwoIdxI(corner, others);
    for (const int other : others) {
      if (other == prev) {
        joinsPrevious = true;
        continue;
      }
      count = JudgeBoundM(node, other, at);
      if (count == 1) {
        edge[1] = other;
        return 1;
      }
    }
  }
  if (joinsPrevious) {
    edge[1] = prev;
    return 1;
  }
  return count;
}

namespace {

bool hasDirectedEdge(const zel::FaceRecord<3>& face, const int* edge) {
  for (int k = 0; k < 3; ++k) {
    if (face.corners[k] == edge[0] && face.corners[(k + 1) % 3] == edge[1]) {
      return true;
    }
  }
  return false;
}

}  // namespace

int TriangleArr::getNextRelTriangleIdxM(int skip, const int* edge, int* out, int directed) const {
  *out = zel::kNoIndex;
  const zel::Candidates candidates = zel::facesAlong(faces_, edge[0], edge[1]);
  for (int k = 0; k < candidates.size(); ++k) {
    const int slot = candidates[k];
    if (slot == skip || !faces_.isLive(slot)) {
      continue;
    }
    const auto& face = faces_[slot].record();
    if (directed != 0 ? hasDirectedEdge(face, edge) : zel::hasNeighbours(face, edge[0], edge[1])) {
      *out = slot;
      return 1;
    }
  }
  return 0;
}

void TriangleArr::ChangeNodeIdxM(int oldIdx, int newIdx) {
  zel::renameNode(faces_, oldIdx, newIdx, [this](int slot) {
    if (zel::hasEqualCorners(faces_[slot].record())) {
      faces_.remove(slot);
    }
  });
}

void TriangleArr::ResetNodeIdxM(const IntArr& map) { zel::renumberAndCompact(faces_, map); }

void TriangleArr::DelTriangleByVertexM(int n) {
  const zel::Candidates candidates = zel::facesAround(faces_, n).detached(faces_.count());
  for (int k = 0; k < candidates.size(); ++k) {
    const int slot = candidates[k];
    if (faces_.isLive(slot) && faces_[slot].GetIdxM(n) != zel::kNoIndex) {
      faces_.remove(slot);
    }
  }
}

void TriangleArr::PurgeDeletedTrianglesM() {
  if (faces_.available() == faces_.count()) {
    return;
  }
  int live = 0;
  for (int slot = 0; slot < faces_.count(); ++slot) {
    live += faces_.isLive(slot) ? 1 : 0;
  }
  int length = Faces::Store::kInlineLength;
  while (length < live) {
    length *= 2;
  }
  Faces::Store survivors;
  if (!survivors.reserve(length)) {
    return;
  }
  for (int slot = 0; slot < faces_.count(); ++slot) {
    if (faces_.isLive(slot)) {
      survivors.add(faces_[slot]);
    }
  }
  faces_.replace(std::move(survivors));
}
