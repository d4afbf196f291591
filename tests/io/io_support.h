#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>
#include <span>
#include <sstream>
#include <string>
#include <string_view>

#include "support/memory_file.h"
#include "zel/core/error.h"
#include "zel/io/read.h"
#include "zel/io/write.h"
#include "zel/mesh/appearance.h"
#include "zel/textfile/kw_iocl.h"

namespace zel::test {

inline Mesh readBytes(std::string_view bytes, const std::string& format = {},
                      Remarks* remarks = nullptr) {
  return readMesh(std::as_bytes(std::span(bytes)), {.format = format}, remarks);
}

inline std::string bytesOf(const Mesh& mesh, const std::string& format, bool ascii = false) {
  return meshBytes(mesh, {.format = format, .ascii = ascii});
}

/// All that a mesh holds, as text.
inline std::string document(const Mesh& mesh) { return bytesOf(mesh, "zel"); }

/// The error that reading gives; nothing when the bytes are read.
inline std::optional<Error> refusal(std::string_view bytes, const std::string& format = {}) {
  try {
    static_cast<void>(readBytes(bytes, format));
  } catch (const Error& error) {
    return error;
  }
  return std::nullopt;
}

inline std::string reasonOf(std::string_view bytes, const std::string& format = {}) {
  const std::optional<Error> error = refusal(bytes, format);
  return error ? error->reason() : "";
}

inline bool isSaid(const Remarks& remarks, Remark::Kind kind, std::string_view part,
                   long long count) {
  return std::ranges::any_of(remarks, [&](const Remark& remark) {
    return remark.kind == kind && remark.count == count &&
           remark.text.find(part) != std::string::npos;
  });
}

inline std::string textOf(const Remarks& remarks) {
  std::string text;
  for (const Remark& remark : remarks) {
    text += remark.text + "\n";
  }
  return text;
}

/// "nodes/triangles/quads"
inline std::string sizesOf(const Mesh& mesh) {
  return std::to_string(mesh.nodes.GetAvailableNumM()) + "/" +
         std::to_string(mesh.triangles.GetAvailableNumM()) + "/" +
         std::to_string(mesh.quads.GetAvailableNumM());
}

/// Six nodes, two triangles and a quad; optionally normals and texture coordinates.
inline Mesh houseMesh(bool hasNormals = true, bool hasTexture = true) {
  Mesh mesh;
  for (const Float3& p : {Float3{0, 0, 0}, Float3{1, 0, 0}, Float3{1, 1, 0}, Float3{0, 1, 0.25F},
                          Float3{0.5F, 1.5F, 1e-7F}, Float3{-3.3333333e9F, 2, 3}}) {
    mesh.addNode(p, hasNormals ? Float3{0, 0.6F, 0.8F} : Float3{});
  }
  mesh.addTriangle({3, 2, 4});
  mesh.addTriangle({4, 2, 5});
  mesh.addQuad({0, 1, 2, 3});
  for (int corner = 0; hasTexture && corner < 6; ++corner) {
    setTextureCoord(mesh.triangleTexture, corner, {0.1F * static_cast<float>(corner), 0.5F});
  }
  for (int corner = 0; hasTexture && corner < 4; ++corner) {
    setTextureCoord(mesh.quadTexture, corner, {1.0F, 0.3F * static_cast<float>(corner)});
  }
  return mesh;
}

/// A mesh with deleted and fresh slots and numbers of all sizes.
inline Mesh randomMesh(std::mt19937& random, int nodes) {
  const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  const auto real = [&] {
    const auto mantissa = static_cast<float>(static_cast<double>(random()) / 2147483648.0 - 1.0);
    return std::ldexp(mantissa, below(60) - 30);
  };
  Mesh mesh;
  for (int k = 0; k < nodes; ++k) {
    mesh.addNode({real(), real(), real()}, {real(), real(), real()});
    mesh.addTriangle({below(nodes), below(nodes), below(nodes)});
    mesh.addQuad({below(nodes), below(nodes), below(nodes), below(nodes)});
    if (k % 3 == 0) {
      const Float3 normal = {real(), real(), real()};
      mesh.triangles.GetItemPM(below(k + 1))->SetNormM(normal.data());
      setTextureCoord(mesh.triangleTexture, below(3 * k + 1), {real(), real()});
      setTextureCoord(mesh.quadTexture, below(4 * k + 1), {real(), real()});
    }
    if (k % 5 == 4) {
      mesh.triangles.DelItemM(below(k));
      mesh.quads.DelItemM(below(k));
    }
  }
  return mesh;
}

/// A document as the lists' own calls write it.
inline std::string classicDocument(const Mesh& mesh) {
  const MemoryFile file;
  KwIOCL io;
  io.OpenM(file.name(), "w");
  io.OutputSM("zel4.008", -1, 1);
  mesh.nodes.FmOutputZelLstM(&io, "NODE");
  mesh.triangles.FmWriteTriangleLstToFileM(io.GetFileDescriptM());
  mesh.quads.FmWriteQuadLstToFileM(io.GetFileDescriptM());
  if (mesh.triangleTexture.GetBoundM() + mesh.quadTexture.GetBoundM() > 0) {
    mesh.triangleTexture.FmOutputZelLstM(&io, "TEXTURE_COORD");
  }
  if (mesh.quadTexture.GetBoundM() > 0) {
    mesh.quadTexture.FmOutputZelLstM(&io, "QUAD_TEXTURE_COORD");
  }
  io.CloseM();
  return readFile(file.name());
}

/// What the lists' own calls read from a document.
inline Mesh classicMesh(const std::string& bytes) {
  const MemoryFile file;
  EXPECT_TRUE(file.store(bytes));
  Mesh mesh;
  KwIOCL io;
  io.OpenM(file.name(), "r");
  char tag[64];
  io.InputGetsM(tag, sizeof tag);
  mesh.nodes.FmInputZelLstM(&io);
  mesh.triangles.FmReadTriangleLstM(io.GetFileDescriptM());
  mesh.quads.FmReadQuadLstM(io.GetFileDescriptM());
  for (Point2DArr* coords : {&mesh.triangleTexture, &mesh.quadTexture}) {
    if (io.FinishedReadM() != 1) {
      coords->FmInputZelLstM(&io);
    }
  }
  return mesh;
}

}  // namespace zel::test
