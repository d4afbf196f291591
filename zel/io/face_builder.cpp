#include "zel/io/detail/face_builder.h"

#include <utility>

#include "zel/algorithms/triangulate.h"
#include "zel/io/detail/codec.h"

namespace zel {

namespace {

template <std::size_t kCorners>
void giveTexture(Point2DArr& coords, int face, std::array<std::size_t, kCorners> places,
                 std::span<const Float2> texture) {
  if (texture.empty()) {
    return;
  }
  int corner = face * static_cast<int>(kCorners);
  for (const std::size_t place : places) {
    if (texture[place][0] > kLiveNearMark) {
      setTextureCoord(coords, corner, texture[place]);
    }
    ++corner;
  }
}

}  // namespace

void FaceBuilder::add(std::span<const int> corners, std::span<const Float2> texture, int material) {
  if (corners.size() == 3) {
    behindQuads_ += mesh_.quads.GetBoundM() > 0 ? 1 : 0;
    addTriangle({0, 1, 2}, corners, texture, material);
  } else if (corners.size() == 4) {
    addQuad(corners, texture, material);
  } else {
    ++polygons_;
    addPolygon(corners, texture, material);
  }
}

void FaceBuilder::addPolygon(std::span<const int> corners, std::span<const Float2> texture,
                             int material) {
  const NodeCL* store = std::as_const(mesh_.nodes).getCurrentItemPrtConstM();
  points_.clear();
  for (const int corner : corners) {
    const float* point = store[corner].point();
    points_.push_back({point[0], point[1], point[2]});
  }
  for (const auto& places : triangulatePolygon(points_)) {
    const auto place = [&](std::size_t k) { return static_cast<std::size_t>(places[k]); };
    addTriangle({place(0), place(1), place(2)}, corners, texture, material);
  }
}

void FaceBuilder::addTriangle(std::array<std::size_t, 3> places, std::span<const int> corners,
                              std::span<const Float2> texture, int material) {
  TriangleCL triangle(kTagAvailable);
  triangle.SetTriangleM(corners[places[0]], corners[places[1]], corners[places[2]]);
  const int slot = append(mesh_.triangles, triangle);
  giveTexture(mesh_.triangleTexture, slot, places, texture);
  if (appearance_ != nullptr && material != Appearance::kNoMaterial) {
    appearance_->setTriangleMaterial(slot, material);
  }
}

void FaceBuilder::addQuad(std::span<const int> corners, std::span<const Float2> texture,
                          int material) {
  QuadCL quad(kTagAvailable);
  quad.SetQuadM(corners.data());
  const int slot = append(mesh_.quads, quad);
  giveTexture(mesh_.quadTexture, slot, std::array<std::size_t, 4>{0, 1, 2, 3}, texture);
  if (appearance_ != nullptr && material != Appearance::kNoMaterial) {
    appearance_->setQuadMaterial(slot, material);
  }
}

void FaceBuilder::tell(Remarks& remarks) const {
  addRemark(remarks, Remark::Kind::kChanged, polygons_, "triangulated", "polygon",
            "a mesh has faces of three and four corners");
  addRemark(remarks, Remark::Kind::kChanged, behindQuads_, "reordered", "triangle",
            "triangles and quads are lists of their own");
}

}  // namespace zel
