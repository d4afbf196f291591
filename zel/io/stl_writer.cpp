// STL, text and binary: every face as triangles that bring their own points.

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "zel/algorithms/triangulate.h"
#include "zel/core/detail/progress_steps.h"
#include "zel/io/detail/codec.h"
#include "zel/io/detail/mesh_contents.h"
#include "zel/io/detail/soup_builder.h"

namespace zel {

namespace {

static_assert(std::endian::native == std::endian::little, "facets are written as they lie");

constexpr std::string_view kSolidName = "zel";

/// The unit normal of a triangle; zero when it has no area.
Float3 normalOf(const float (&p)[3][3]) {
  const auto edge = [&](int to) {
    return Double3{double{p[to][0]} - p[0][0], double{p[to][1]} - p[0][1],
                   double{p[to][2]} - p[0][2]};
  };
  const Double3 u = edge(1);
  const Double3 v = edge(2);
  const Double3 n = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2],
                     u[0] * v[1] - u[1] * v[0]};
  const double length = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
  if (!(length > 0.0) || !std::isfinite(length)) {
    return {};
  }
  return {static_cast<float>(n[0] / length), static_cast<float>(n[1] / length),
          static_cast<float>(n[2] / length)};
}

class StlWriter {
 public:
  explicit StlWriter(WriteJob& job)
      : job_(job),
        text_(job.sink),
        nodes_(job.mesh.nodes.getCurrentItemPrtConstM()),
        contents_(job.mesh),
        steps_(job.options.progress, contents_.triangles + contents_.quads) {}

  void write() {
    const std::size_t facets = contents_.triangles + 2 * contents_.quads;
    if (facets == 0 && contents_.nodes > 0) {
      throw Error(ErrorCode::kArgument, "cannot write",
                  "STL holds faces only, and the mesh has none", job_.name);
    }
    if (job_.options.ascii) {
      text_.add("solid ").add(kSolidName).add('\n');
    } else {
      std::array<char, 80> header{};
      std::ranges::copy(kSolidName, header.begin());
      text_.addRaw(header).addRaw(static_cast<std::uint32_t>(facets));
    }
    forEachFace(job_.mesh.triangles, [&](int slot, const auto& corners) {
      writeFacet(corners, job_.mesh.triangles.getCurrentItemPrtConstM()[slot].record());
      steps_.advance();
    });
    forEachFace(job_.mesh.quads, [&](int slot, const auto& corners) {
      const auto& record = job_.mesh.quads.getCurrentItemPrtConstM()[slot].record();
      writeQuad(corners, record);
      steps_.advance();
    });
    if (job_.options.ascii) {
      text_.add("endsolid ").add(kSolidName).add('\n');
    }
    text_.flush();
    tellLosses();
  }

 private:
  template <class Record>
  void writeQuad(const std::array<int, 4>& corners, const Record& record) {
    std::array<Float3, 4> points{};
    for (std::size_t k = 0; k < points.size(); ++k) {
      std::copy_n(nodes_[corners[k]].point(), 3, points[k].data());
    }
    for (const auto& half : triangulatePolygon(points)) {
      const auto corner = [&](std::size_t k) { return corners[static_cast<std::size_t>(half[k])]; };
      writeFacet({corner(0), corner(1), corner(2)}, record);
    }
  }
  template <class Record>
  void writeFacet(const std::array<int, 3>& corners, const Record& record) {
    Facet facet{};
    for (std::size_t k = 0; k < 3; ++k) {
      std::copy_n(nodes_[corners[k]].point(), 3, facet.points[k]);
    }
    if (record.normalType != 0) {
      std::copy_n(record.normal, 3, facet.normal);
    } else {
      std::ranges::copy(normalOf(facet.points), facet.normal);
    }
    if (job_.options.ascii) {
      writeText(facet);
    } else {
      text_.addRaw(facet).addRaw(std::uint16_t{0});
    }
  }
  void writeText(const Facet& facet) {
    writeVector("  facet normal", facet.normal);
    text_.add("    outer loop\n");
    for (const auto& point : facet.points) {
      writeVector("      vertex", point);
    }
    text_.add("    endloop\n  endfacet\n");
  }
  void writeVector(std::string_view keyword, const float (&v)[3]) {
    text_.add(keyword).add(' ').addReal(v[0]).add(' ').addReal(v[1]).add(' ').addReal(v[2]);
    text_.add('\n');
  }

  void tellLosses() {
    Remarks& remarks = job_.remarks;
    const auto count = [](std::size_t n) { return static_cast<long long>(n); };
    addRemark(remarks, Remark::Kind::kChanged, count(contents_.quads), "split", "quad",
              "STL holds triangles only");
    addRemark(remarks, Remark::Kind::kLeftOut, count(contents_.nodeNormals), "left out",
              "node normal");
    addRemark(remarks, Remark::Kind::kLeftOut, count(contents_.textureCoords), "left out",
              "texture coordinate");
    addRemark(remarks, Remark::Kind::kLeftOut, count(contents_.looseNodes), "left out",
              "loose node");
  }

  WriteJob& job_;
  TextBuffer text_;
  const NodeCL* nodes_;
  MeshContents contents_;
  ProgressSteps steps_;
};

}  // namespace

void writeStl(WriteJob& job) { StlWriter(job).write(); }

}  // namespace zel
