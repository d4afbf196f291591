// The unfolding walk against the plain walk, which asks the list itself for every neighbour and
// every face to restart from.

#include <gtest/gtest.h>

#include <random>
#include <utility>

#include "support/bits.h"
#include "support/meshes.h"
#include "zel/containers/point2d_arr.h"
#include "zel/core/constants.h"
#include "zel/geometry/geometry.h"

namespace {

using namespace zel::test;

void setTag(TriangleArr& faces, int slot, int tag) {
  TriangleCL face = std::as_const(faces).ElementAtM(slot);
  face.SetDeleteTagM(static_cast<char>(tag));
  faces.SetItemM(face, slot);
}

/// Takes the coordinates of the shared edge over and places the third corner.
void carry(const TriangleArr& faces, int from, int to, const int* edge, const NodeArr& nodes,
           Point2DArr& uv) {
  TriangleCL source = faces.ElementAtM(from);
  TriangleCL target = faces.ElementAtM(to);
  int known[2];
  for (int k = 0; k < 2; ++k) {
    float at[2];
    known[k] = target.GetIdxM(edge[k]);
    uv.GetItemM(at, 3 * from + source.GetIdxM(edge[k]));
    uv.SetItemM(at, 3 * to + known[k]);
  }
  target.SetTexCoordM(to, known[0], known[1], nullptr, nullptr, nullptr, nodes, &uv);
}

/// The walk from face 0, whose coordinates `uv` already holds.
/// @param[out] left how many live faces it never came to.
int walk(TriangleArr& faces, const NodeArr& nodes, Point2DArr& uv, int& left) {
  constexpr int kEdges[3][3] = {{0, 2, 37}, {1, 0, 38}, {2, 1, 30}};
  left = faces.GetAvailableNumM();
  bool mustRestart = false;
  for (int current = 0; left > 0;) {
    if (mustRestart) {
      current = faces.getFirstValidIdxM();
      if (current < 0) {
        return 0;
      }
    }
    int corners[3];
    faces.ElementAtM(current).GetTriangleM(corners);
    int next = zel::kNoIndex;
    mustRestart = true;
    for (const auto& [from, to, tag] : kEdges) {
      const int edge[2] = {corners[from], corners[to]};
      const int found = faces.getNextRelTriangleIdxM(current, edge, &next, 1);
      left -= tagOf(faces, current) == 31 ? 1 : 0;
      setTag(faces, current, tag);
      if (found == 1) {
        carry(faces, current, next, edge, nodes, uv);
        current = next;
        mustRestart = false;
        break;
      }
    }
  }
  return 1;
}

/// A rugged grid with some faces deleted; with an even seed also some turned round and some on
/// borrowed nodes.
Mesh tangledGrid(unsigned seed) {
  std::mt19937 random(seed);
  Mesh mesh =
      makeGrid(9, 7, [&](float, float) { return static_cast<float>(random() % 100) * 0.02F; });
  for (int slot = 0; seed % 2 == 0 && slot < mesh.triangles.GetBoundM(); ++slot) {
    TriangleCL face = std::as_const(mesh.triangles).ElementAtM(slot);
    const auto c = mesh.corners(slot);
    if (random() % 9 == 0) {
      face.SetTriangleM(c[1], c[0], c[2]);
    } else if (random() % 20 == 0) {
      face.SetTriangleM(c[0], c[1], static_cast<int>(random() % 80));
    }
    mesh.triangles.SetItemM(face, slot);
  }
  setFaceNormals(mesh);
  for (int i = 0; i < 3; ++i) {
    mesh.triangles.DelItemM(1 + static_cast<int>(random() % 100));
  }
  return mesh;
}

/// Faces about one hub and a few rim nodes: edges of many faces, in both windings, some degenerate.
Mesh tangledHub(unsigned seed) {
  std::mt19937 random(seed);
  const unsigned rim = 2 + seed % 9;
  Mesh mesh;
  for (unsigned node = 0; node <= rim; ++node) {
    mesh.addNode(static_cast<float>(random() % 50), static_cast<float>(random() % 50),
                 static_cast<float>(random() % 5));
  }
  for (int face = 0; face < 70; ++face) {
    const int a = static_cast<int>(1 + random() % rim);
    const int b = static_cast<int>(1 + random() % rim);
    random() % 2 == 0 ? mesh.addTriangle(0, a, b) : mesh.addTriangle(b, 0, a);
  }
  setFaceNormals(mesh);
  mesh.triangles.DelItemM(static_cast<int>(1 + random() % 60));
  return mesh;
}

TEST(UnfoldWalk, agreesWithThePlainWalkToTheLastBit) {
  int reachedAll = 0;
  for (unsigned seed = 1; seed <= 60; ++seed) {
    Mesh mesh = seed % 3 == 0 ? tangledHub(seed) : tangledGrid(seed);
    TriangleArr plain(mesh.triangles);
    Point2DArr uv;
    const int result = mesh.triangles.GetTexCoordM(noSystem(), &uv, mesh.nodes);
    Point2DArr expected;
    expected.AddSizeM(3 * plain.GetBoundM());
    for (int k = 0; k < 3; ++k) {
      float seedAt[2];
      uv.GetItemM(seedAt, k);
      expected.SetItemM(seedAt, k);
    }
    int left = 0;
    EXPECT_EQ(result, walk(plain, mesh.nodes, expected, left)) << "seed " << seed;
    EXPECT_EQ(mesh.triangles.GetAvailableNumM(), left) << "seed " << seed;
    reachedAll += result;
    ASSERT_EQ(uv.GetBoundM(), expected.GetBoundM()) << "seed " << seed;
    for (int slot = 0; slot < plain.GetBoundM(); ++slot) {
      EXPECT_EQ(tagOf(mesh.triangles, slot), tagOf(plain, slot)) << seed << " slot " << slot;
      for (int k = 0; k < 6; ++k) {
        EXPECT_EQ(bits(uv.getCurrentItemPrtConstM()[3 * slot + k / 2][k % 2]),
                  bits(expected.getCurrentItemPrtConstM()[3 * slot + k / 2][k % 2]))
            << "seed " << seed << " slot " << slot;
      }
    }
  }
  EXPECT_GT(reachedAll, 0) << "no walk came to its normal end";
  EXPECT_LT(reachedAll, 60) << "no walk ran out of faces";
}

}  // namespace
