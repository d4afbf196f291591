// The examples of the format reference, made anew.

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <string>

#include "list_files.h"
#include "mesh_samples.h"
#include "plain_file.h"
#include "support/temp_dir.h"
#include "zel/containers/char_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/containers/point3d_arr.h"
#include "zel/containers/real_arr.h"
#include "zel/textfile/keyword_lists.h"

namespace {

using zel::test::listOf;
using zel::test::node;
using zel::test::PlainFile;
using zel::test::StreamFile;

const float kUp[] = {0, 0, 1};

// The example blocks of the page, by the names in their markers.
std::map<std::string, std::string> examples() {
  const std::string page = zel::test::readFile(ZEL_SOURCE_DIR "/docs/format.md");
  const std::string marker = "<!-- example: ", open = " -->\n```text\n", close = "```\n";
  std::map<std::string, std::string> found;
  for (std::size_t at = page.find(marker); at != std::string::npos; at = page.find(marker, at)) {
    at += marker.size();
    const std::size_t nameEnd = page.find(open, at);
    const std::size_t end = page.find(close, nameEnd + open.size());
    found[page.substr(at, nameEnd - at)] =
        page.substr(nameEnd + open.size(), end - nameEnd - open.size());
  }
  return found;
}

void addTriangle(TriangleArr* faces, int a, int b, int c) {
  const int corners[] = {a, b, c};
  faces->AddTriangleM(corners, kUp);
}

std::string hex(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) {
    char digits[4];
    std::snprintf(digits, sizeof digits, "%02x ", static_cast<unsigned>(c) & 0xFFU);
    text += digits;
  }
  text.back() = '\n';
  return text;
}

TEST(FormatPage, valueLists) {
  auto example = examples();
  ASSERT_EQ(example.size(), 10U);
  StreamFile file;
  IntArr ints;
  ints.SetItemM(7, 1);
  EXPECT_EQ(listOf(file, ints), example["ints"]);
  EXPECT_EQ(hex(listOf(file, ints, "wb")), example["binary ints"]);
  Point3DArr points;
  const float point[] = {0.5F, -1, 2.5F};
  points.AddItemM(point);
  EXPECT_EQ(listOf(file, points), example["points"]);
  RealArr reals;
  reals.AddItemM(1);
  reals.AddItemM(2);
  reals.DelItemM(0);
  EXPECT_EQ(listOf(file, reals), example["reals"]);
  CharArr chars;
  chars.AddItemM('A');
  chars.AddItemM(-56);
  EXPECT_EQ(listOf(file, chars), example["chars"]);
  Point2DArr flat;
  flat.AddItemM(point);
  const PlainFile plain;
  slFprintfPoint2DArr(plain, flat, "l");
  EXPECT_EQ(plain.text(), example["container list"]);
}

TEST(FormatPage, meshLists) {
  auto example = examples();
  StreamFile file;
  NodeArr nodes;
  nodes.AddItemM(node(1, 2, -3));
  nodes.AddItemM(node(4, 5, 6));
  nodes.AddItemM(node(0, 0, 0));
  nodes.DelItemM(1);
  nodes.DelItemM(2);
  EXPECT_EQ(listOf(file, nodes), example["nodes"]);
  TriangleArr faces;
  addTriangle(&faces, 0, 1, 2);
  addTriangle(&faces, 0, 2, 3);
  addTriangle(&faces, 0, 2, 3);
  faces.DelItemM(1);
  faces.DelItemM(2);
  const PlainFile plain, exported;
  faces.FmWriteTriangleLstToFileM(plain);
  EXPECT_EQ(plain.text(), example["plain triangles"]);
  faces.ExportTriangleLstDBFileM(exported, nullptr);
  EXPECT_EQ(exported.text(), example["export"]);
}

TEST(FormatPage, document) {
  NodeArr nodes;
  for (const auto& [x, y] :
       {std::pair(0.F, 0.F), {1.F, 0.F}, {1.F, 1.F}, {0.F, 1.F}, {.5F, 1.5F}}) {
    nodes.AddItemM(node(x, y, 0));
  }
  TriangleArr triangles;
  addTriangle(&triangles, 3, 2, 4);
  QuadCL square = zel::test::quad(0, 1, 2, 3);
  square.SetNormM(kUp);
  QuadArr quads;
  quads.AddItemM(square);
  StreamFile file;
  EXPECT_EQ(file.written([&](KwIOCL& io) {
    io.OutputsM("zel4.008");
    nodes.FmOutputZelLstM(&io, "NODE");
    triangles.FmWriteTriangleLstToFileM(io.GetFileDescriptM());
    quads.FmWriteQuadLstToFileM(io.GetFileDescriptM());
  }),
            examples()["document"]);
}

}  // namespace
