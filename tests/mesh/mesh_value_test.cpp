// zel::Mesh as a value: flat arrays in and out, views, holes, what validate() sees.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "zel/core/error.h"
#include "zel/mesh/mesh.h"

namespace {

using zel::ErrorCode;
using zel::Mesh;
using zel::MeshArrays;

/// A square of two triangles beside a quad, everything filled in.
MeshArrays sampleArrays() {
  MeshArrays arrays;
  arrays.points = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 2, 0, 0.5F, 2, 1, 0.25F};
  arrays.triangles = {0, 1, 2, 0, 2, 3};
  arrays.quads = {1, 4, 5, 2};
  for (int node = 0; node < 6; ++node) {
    arrays.nodeNormals.insert(arrays.nodeNormals.end(), {0, 0.125F * float(node), 1});
  }
  for (int k = 0; k < 12; ++k) {
    arrays.triangleTexture.push_back(0.5F * float(k));
  }
  for (int k = 0; k < 8; ++k) {
    arrays.quadTexture.push_back(-0.25F * float(k));
  }
  return arrays;
}

void expectEqual(const MeshArrays& a, const MeshArrays& b) {
  EXPECT_EQ(a.points, b.points);
  EXPECT_EQ(a.triangles, b.triangles);
  EXPECT_EQ(a.quads, b.quads);
  EXPECT_EQ(a.nodeNormals, b.nodeNormals);
  EXPECT_EQ(a.triangleTexture, b.triangleTexture);
  EXPECT_EQ(a.quadTexture, b.quadTexture);
}

TEST(MeshValue, flatArraysComeBackAsTheyWentIn) {
  const MeshArrays full = sampleArrays();
  Mesh mesh(full.spans());
  EXPECT_EQ(mesh.validate(), "");
  EXPECT_TRUE(mesh.isCompact());
  expectEqual(mesh.arrays(), full);
  const Mesh moved = std::move(mesh);
  expectEqual(moved.arrays(), full);

  MeshArrays bare = full;
  bare.nodeNormals.clear();
  bare.triangleTexture.clear();
  bare.quadTexture.clear();
  expectEqual(Mesh(bare.spans()).arrays(), bare);
  expectEqual(Mesh(zel::MeshSpans{}).arrays(), MeshArrays{});
}

TEST(MeshValue, arraysThatDoNotFitAreRefused) {
  const std::vector<std::pair<const char*, std::function<void(MeshArrays&)>>> spoilers = {
      {"half a point", [](MeshArrays& a) { a.points.pop_back(); }},
      {"half a triangle", [](MeshArrays& a) { a.triangles.pop_back(); }},
      {"half a quad", [](MeshArrays& a) { a.quads.pop_back(); }},
      {"a normal too few", [](MeshArrays& a) { a.nodeNormals.resize(15); }},
      {"a coordinate too few", [](MeshArrays& a) { a.triangleTexture.pop_back(); }},
      {"a quad's coordinate too many", [](MeshArrays& a) { a.quadTexture.push_back(0); }},
      {"a corner below 0", [](MeshArrays& a) { a.triangles[4] = -1; }},
      {"a corner beyond the nodes", [](MeshArrays& a) { a.quads[3] = 6; }},
  };
  for (const auto& [name, spoil] : spoilers) {
    MeshArrays arrays = sampleArrays();
    spoil(arrays);
    try {
      const Mesh mesh(arrays.spans());
      ADD_FAILURE() << name;
    } catch (const zel::Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kArgument) << name << ": " << error.what();
    }
  }
}

TEST(MeshValue, copiesLeaveHolesOut) {
  Mesh mesh(sampleArrays().spans());
  mesh.nodes.DelItemM(3);
  mesh.triangles.DelItemM(1);
  mesh.nodes.DelItemM(0);
  EXPECT_FALSE(mesh.isCompact());
  EXPECT_NE(mesh.validate(), "") << "triangle 0 stands on a deleted node";
  EXPECT_THROW(static_cast<void>(mesh.arrays()), zel::Error);
  mesh.triangles.DelItemM(0);
  EXPECT_EQ(mesh.validate(), "");
  const MeshArrays arrays = mesh.arrays();
  EXPECT_EQ(arrays.points, (std::vector<float>{1, 0, 0, 1, 1, 0, 2, 0, 0.5F, 2, 1, 0.25F}));
  EXPECT_EQ(arrays.quads, (std::vector<int>{0, 2, 3, 1}));
  EXPECT_TRUE(arrays.triangles.empty() && arrays.triangleTexture.empty());
}

TEST(MeshValue, viewsSeeEverySlot) {
  const MeshArrays full = sampleArrays();
  Mesh mesh(full.spans());
  mesh.nodes.DelItemM(1);
  const auto points = mesh.points();
  const auto normals = mesh.nodeNormals();
  ASSERT_EQ(points.size(), 6U);
  for (std::size_t row = 0; row < points.size(); ++row) {
    for (std::size_t k = 0; k < 3; ++k) {
      EXPECT_EQ(points[row][k], full.points[3 * row + k]);
      EXPECT_EQ(normals[row][k], full.nodeNormals[3 * row + k]);
    }
  }
  ASSERT_EQ(mesh.triangleCorners().size(), 2U);
  EXPECT_EQ(mesh.triangleCorners()[1][2], 3);
  EXPECT_EQ(mesh.quadCorners()[0][1], 4);
  EXPECT_TRUE(Mesh().points().empty());
}

TEST(MeshValue, validateSeesWhatIsWrong) {
  const std::vector<std::function<void(Mesh&)>> faults = {
      [](Mesh& m) { m.nodes.GetItemPM(2)->SetDeleteTagM(32); },
      [](Mesh& m) { m.triangles.GetItemPM(0)->SetTriangleM(0, 1, 6); },
      [](Mesh& m) {
        m.quads.GetItemPM(0)->SetQuadM(std::array<int, 4>{0, 1, -5, 2}.data());
      },
      [](Mesh& m) {
        zel::setTextureCoord(m.triangleTexture, 6, {1, 1});
      },
      [](Mesh& m) {
        zel::setTextureCoord(m.quadTexture, 4, {1, 1});
      },
  };
  for (std::size_t k = 0; k < faults.size(); ++k) {
    Mesh mesh(sampleArrays().spans());
    faults[k](mesh);
    EXPECT_NE(mesh.validate(), "") << "fault " << k;
  }
}

TEST(MeshError, saysFileActionAndReasonInOneLine) {
  const zel::Error error(ErrorCode::kUnreadable, "cannot read", "no\nnumber", "a.obj", {12, -1});
  EXPECT_STREQ(error.what(), "a.obj:12: cannot read: no?number");
  const zel::Error copy = error;
  EXPECT_STREQ(copy.reason(), "no\nnumber");
  EXPECT_EQ(copy.place().line, 12);
  EXPECT_STREQ(zel::Error(ErrorCode::kUnreadable, "cannot read", "", "a.stl", {0, 84}).what(),
               "a.stl: byte 84: cannot read");
  EXPECT_EQ(zel::Error::outOfMemory().code(), ErrorCode::kExhausted);
  EXPECT_STREQ(zel::Error::outOfMemory().what(), "cannot go on: out of memory");
}

}  // namespace
