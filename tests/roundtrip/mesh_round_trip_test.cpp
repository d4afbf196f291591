#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "tests/support/bits.h"
#include "tests/support/temp_dir.h"
#include "tests/support/thrown_by.h"
#include "zel/zel.h"

namespace zel::test {

namespace {

using Corner = std::array<float, 3>;

/// What an application keeps and stores.
struct Mesh {
  NodeArr nodes;
  TriangleArr triangles;
  QuadArr quads;
  Point2DArr textureCoords;
};

/// Half a pipe of `rows` x `columns` squares, each two triangles, as loose triangles whose points
/// are up to 0.00002 off.
std::vector<std::array<Corner, 3>> halfPipeSoup(int rows, int columns) {
  int shake = 0;
  const auto at = [&](int row, int column) {
    const double angle = 3.0 * column / columns;
    const float off = static_cast<float>(shake++ % 5 - 2) * 1e-5F;
    return Corner{static_cast<float>(std::cos(angle)) + off, static_cast<float>(std::sin(angle)),
                  static_cast<float>(row) * 0.25F - off};
  };
  std::vector<std::array<Corner, 3>> soup;
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      soup.push_back({at(row, column), at(row, column + 1), at(row + 1, column + 1)});
      soup.push_back({at(row, column), at(row + 1, column + 1), at(row + 1, column)});
    }
  }
  return soup;
}

Mesh welded(const std::vector<std::array<Corner, 3>>& soup) {
  Mesh mesh;
  for (const auto& corners : soup) {
    int indices[3];
    for (int k = 0; k < 3; ++k) {
      NodeCL node(kTagAvailable);
      node.SetPntM(corners[static_cast<std::size_t>(k)].data());
      mesh.nodes.MergeNodeLstM(node, &indices[k]);
    }
    TriangleCL triangle(kTagAvailable);
    triangle.SetTriangleM(indices);
    mesh.nodes.ReGenNormalVectM(triangle);
    triangle.SetNormM(std::as_const(mesh.nodes).GetItemPM(indices[0])->normal());
    mesh.triangles.MergeTriangleLstM(triangle);
  }
  return mesh;
}

void save(const Mesh& mesh, const std::string& file) {
  KwIOCL io;
  io.OpenM(file.c_str(), "w");
  io.OutputSM("zel4.008", -1, 1);
  mesh.nodes.FmOutputZelLstM(&io, "NODE");
  mesh.triangles.FmWriteTriangleLstToFileM(io.GetFileDescriptM());
  mesh.quads.FmWriteQuadLstToFileM(io.GetFileDescriptM());
  mesh.textureCoords.FmOutputZelLstM(&io, "TEXTURE_COORD");
  io.CloseM();
}

Mesh load(const std::string& file) {
  Mesh mesh;
  KwIOCL io;
  io.OpenM(file.c_str(), "r");
  char tag[16];
  io.InputGetsM(tag, sizeof tag);
  io.SetVersionNumM(slGetFileVersion(tag));
  mesh.nodes.FmInputZelLstM(&io);
  mesh.triangles.FmReadTriangleLstM(io.GetFileDescriptM());
  mesh.quads.FmReadQuadLstM(io.GetFileDescriptM());
  mesh.textureCoords.FmInputZelLstM(&io);
  EXPECT_EQ(io.FinishedReadM(), 1);
  return mesh;
}

void expectSameBits(const float* a, const float* b, int count) {
  for (int k = 0; k < count; ++k) {
    EXPECT_EQ(bits(a[k]), bits(b[k]));
  }
}

void expectSame(const Mesh& a, const Mesh& b) {
  ASSERT_EQ(a.nodes.GetBoundM(), b.nodes.GetBoundM());
  ASSERT_EQ(a.triangles.GetBoundM(), b.triangles.GetBoundM());
  ASSERT_EQ(a.textureCoords.GetBoundM(), b.textureCoords.GetBoundM());
  EXPECT_EQ(a.nodes.GetAvailableNumM(), b.nodes.GetAvailableNumM());
  EXPECT_EQ(a.triangles.GetAvailableNumM(), b.triangles.GetAvailableNumM());
  for (int slot = 0; slot < a.nodes.GetBoundM(); ++slot) {
    const NodeCL& nodeA = *a.nodes.GetItemPM(slot);
    const NodeCL& nodeB = *b.nodes.GetItemPM(slot);
    EXPECT_EQ(nodeA.IsAvailableM(), nodeB.IsAvailableM());
    expectSameBits(nodeA.point(), nodeB.point(), 3);
    expectSameBits(nodeA.normal(), nodeB.normal(), 3);
  }
  for (int slot = 0; slot < a.triangles.GetBoundM(); ++slot) {
    const TriangleCL& triangleA = *a.triangles.GetItemPM(slot);
    const TriangleCL& triangleB = *b.triangles.GetItemPM(slot);
    EXPECT_EQ(triangleA.IsAvailableM(), triangleB.IsAvailableM());
    EXPECT_EQ(triangleA.FindTriangleM(triangleB.record().corners), 1);
    EXPECT_EQ(triangleA.record().normalType, triangleB.record().normalType);
    expectSameBits(triangleA.record().normal, triangleB.record().normal, 3);
  }
  for (int slot = 0; slot < a.textureCoords.GetBoundM(); ++slot) {
    expectSameBits(a.textureCoords.GetItemPM(slot), b.textureCoords.GetItemPM(slot), 2);
  }
}

double distance(const float* a, const float* b, int dimensions) {
  double sum = 0;
  for (int k = 0; k < dimensions; ++k) {
    sum += (double{a[k]} - b[k]) * (double{a[k]} - b[k]);
  }
  return std::sqrt(sum);
}

class MeshRoundTrip : public testing::Test {
 protected:
  static constexpr int kRows = 6;
  static constexpr int kColumns = 10;

  /// Thrown code of a load, 0 when it went well.
  static int codeOfLoading(const std::string& file) {
    return thrownBy([&] { load(file); });
  }

  Mesh mesh_ = welded(halfPipeSoup(kRows, kColumns));
  TempDir dir_;
};

}  // namespace

TEST_F(MeshRoundTrip, weldingTurnsTheSoupIntoOneSheet) {
  EXPECT_EQ(mesh_.nodes.GetBoundM(), (kRows + 1) * (kColumns + 1));
  EXPECT_EQ(mesh_.triangles.GetBoundM(), 2 * kRows * kColumns);
  int face = kNoIndex;
  int onBoundary = 0;
  for (int slot = 0; slot < mesh_.triangles.GetBoundM(); ++slot) {
    const int* corners = std::as_const(mesh_.triangles).GetItemPM(slot)->record().corners;
    for (int k = 0; k < 3; ++k) {
      onBoundary += mesh_.triangles.JudgeBoundM(corners[k], corners[(k + 1) % 3], &face) == 1;
    }
  }
  EXPECT_EQ(onBoundary, 2 * (kRows + kColumns));
}

TEST_F(MeshRoundTrip, aMovedAndUnfoldedMeshComesBackToTheLastBit) {
  const float point[3] = {0.5F, -1, 2};
  const float axis[3] = {0.6F, 0, 0.8F};
  float matrix[16];
  slGetRotateMatrix(point, axis, 0.7F, matrix);
  mesh_.nodes.TransByMatrixM(matrix);
  mesh_.triangles.TransByMatrixM(matrix);
  XYCoordSysD noSystem{};
  noSystem.origin[0] = kFloatMark;
  TriangleArr walked = mesh_.triangles;
  ASSERT_EQ(walked.GetTexCoordM(noSystem, &mesh_.textureCoords, mesh_.nodes), 1);
  ASSERT_EQ(mesh_.textureCoords.GetBoundM(), 3 * mesh_.triangles.GetBoundM());
  save(mesh_, dir_.file("mesh.zel"));
  expectSame(mesh_, load(dir_.file("mesh.zel")));
}

TEST_F(MeshRoundTrip, theUnfoldedPipeKeepsTheLengthOfEveryEdge) {
  XYCoordSysD noSystem{};
  noSystem.origin[0] = kFloatMark;
  TriangleArr walked = mesh_.triangles;
  walked.GetTexCoordM(noSystem, &mesh_.textureCoords, mesh_.nodes);
  for (int slot = 0; slot < mesh_.triangles.GetBoundM(); ++slot) {
    const int* corners = std::as_const(mesh_.triangles).GetItemPM(slot)->record().corners;
    for (int k = 0; k < 3; ++k) {
      const int next = (k + 1) % 3;
      const Point2DArr& coords = mesh_.textureCoords;
      const NodeArr& nodes = mesh_.nodes;
      EXPECT_NEAR(distance(coords.GetItemPM(3 * slot + k), coords.GetItemPM(3 * slot + next), 2),
                  distance(nodes.GetItemPM(corners[k])->point(),
                           nodes.GetItemPM(corners[next])->point(), 3),
                  1e-3);
    }
  }
}

TEST_F(MeshRoundTrip, deletedSlotsKeepTheirPlaces) {
  mesh_.triangles.DelItemM(4);
  mesh_.triangles.DelItemM(17);
  mesh_.nodes.DelItemM(3);
  QuadCL quad(kTagAvailable);
  quad.SetQuadM(0, 1, 12, 11);
  mesh_.quads.MergeQuadLstM(quad);
  mesh_.quads.MergeQuadLstM(quad);
  mesh_.quads.DelItemM(0);
  save(mesh_, dir_.file("holes.zel"));
  const Mesh loaded = load(dir_.file("holes.zel"));
  expectSame(mesh_, loaded);
  EXPECT_EQ(loaded.quads.GetBoundM(), 2);
  EXPECT_EQ(loaded.quads.GetAvailableNumM(), 1);
  EXPECT_EQ(loaded.quads.GetItemPM(0)->IsAvailableM(), kTagDeleted);
  save(loaded, dir_.file("again.zel"));
  EXPECT_EQ(readFile(dir_.file("holes.zel")), readFile(dir_.file("again.zel")));
}

TEST_F(MeshRoundTrip, theApplicationLearnsWhatWentWrong) {
  const std::string file = dir_.file("mesh.zel");
  EXPECT_EQ(codeOfLoading(file), 109);
  save(mesh_, file);
  const std::string whole = readFile(file);
  writeFile(file, whole.substr(0, whole.find("NODE_LIST_END") - 40));
  EXPECT_EQ(codeOfLoading(file), 107);
  writeFile(file, "zel9.9\n" + whole);
  EXPECT_EQ(codeOfLoading(file), 111);
  EXPECT_THROW(save(mesh_, "/dev/full"), int);
}

}  // namespace zel::test
