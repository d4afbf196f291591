// A mesh's way through the library: loose triangles are welded, given normals, moved, unfolded for
// a texture, saved, and read back. With a document as argument its nodes and triangles are used
// instead of the generated ones: `mesh_round_trip bunny.zel`.

#include <zel/zel.h>

#include <cmath>
#include <cstdio>

namespace {

struct Mesh {
  NodeArr nodes;
  TriangleArr triangles;
  Point2DArr textureCoords;
};

/// Merging by position makes the corners of neighbouring faces one node; merging by corners keeps
/// collapsed and repeated faces out.
void addFace(Mesh& mesh, const float (*points)[3]) {
  int corners[3];
  for (int k = 0; k < 3; ++k) {
    NodeCL node(zel::kTagAvailable);
    node.SetPntM(points[k]);
    mesh.nodes.MergeNodeLstM(node, &corners[k]);
  }
  TriangleCL face(zel::kTagAvailable);
  face.SetTriangleM(corners);
  mesh.triangles.MergeTriangleLstM(face);
}

/// A sheet of 40 x 40 squares, waved along x, as loose triangles.
Mesh waves() {
  const auto at = [](int x, int y, float* point) {
    point[0] = static_cast<float>(x);
    point[1] = static_cast<float>(y);
    point[2] = 2.0F * std::sin(0.4F * point[0]);
  };
  Mesh mesh;
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 40; ++x) {
      float p[4][3];
      at(x, y, p[0]);
      at(x + 1, y, p[1]);
      at(x + 1, y + 1, p[2]);
      at(x, y + 1, p[3]);
      addFace(mesh, p);
      const float other[3][3] = {
          {p[0][0], p[0][1], p[0][2]}, {p[2][0], p[2][1], p[2][2]}, {p[3][0], p[3][1], p[3][2]}};
      addFace(mesh, other);
    }
  }
  return mesh;
}

/// Lists carry names that nobody checks: they are read in the order in which they were written.
void save(const Mesh& mesh, const char* file) {
  KwIOCL io;
  io.OpenM(file, "w");
  io.OutputSM("zel4.008", -1, 1);
  mesh.nodes.FmOutputZelLstM(&io, "NODE");
  mesh.triangles.FmWriteTriangleLstToFileM(io.GetFileDescriptM());
  io.CloseM();
}

Mesh load(const char* file) {
  Mesh mesh;
  KwIOCL io;
  char tag[32];
  io.OpenM(file, "r");
  io.InputGetsM(tag, sizeof tag);
  io.SetVersionNumM(slGetFileVersion(tag));
  mesh.nodes.FmInputZelLstM(&io);
  mesh.triangles.FmReadTriangleLstM(io.GetFileDescriptM());
  return mesh;
}

/// Every face its normal, and its corners the normal of the last face around them.
void giveNormals(Mesh& mesh) {
  TriangleCL face;
  int slot = -1;
  while (mesh.triangles.GetNextM(&face, &slot, slot) > 0) {
    mesh.nodes.ReGenNormalVectM(face);
    int corners[3];
    float normal[3];
    face.GetTriangleM(corners);
    mesh.nodes.GetNormalM(corners[0], normal);
    face.SetNormM(normal);
    mesh.triangles.SetItemM(face, slot);
  }
}

void moveAndUnfold(Mesh& mesh) {
  const float centre[3] = {20, 20, 0};
  const float axis[3] = {0, 0, 1};
  float matrix[16];
  slGetRotateMatrix(centre, axis, slAngleToRadian(30), matrix);
  mesh.nodes.TransByMatrixM(matrix);
  mesh.triangles.TransByMatrixM(matrix);
  XYCoordSysD anywhere{};
  anywhere.origin[0] = -1.0e18F;
  TriangleArr walked(mesh.triangles);  // the walk uses up the delete tags of its list
  walked.GetTexCoordM(anywhere, &mesh.textureCoords, mesh.nodes);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Mesh mesh = argc > 1 ? load(argv[1]) : waves();
    giveNormals(mesh);
    moveAndUnfold(mesh);
    save(mesh, "mesh_round_trip.zel");
    const Mesh back = load("mesh_round_trip.zel");
    std::printf("%d nodes and %d triangles came back, %d texture coordinates were unfolded\n",
                back.nodes.GetAvailableNumM(), back.triangles.GetAvailableNumM(),
                mesh.textureCoords.GetAvailableNumM());
  } catch (int code) {  // 107 read, 108 write, 109 open, 111 version
    slFileMessage(code, argc > 1 ? argv[1] : "mesh_round_trip.zel");
    return 1;
  }
  return 0;
}
