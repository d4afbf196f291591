// The examples of the format reference, made anew.

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>

#include "list_files.h"
#include "mesh_samples.h"
#include "plain_file.h"
#include "support/array_values.h"
#include "zel/containers/char_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/containers/point3d_arr.h"
#include "zel/containers/real_arr.h"
#include "zel/textfile/keyword_lists.h"

namespace zel::test {
namespace {

const float kUp[] = {0, 0, 1};

/// The example blocks of the page, by the names in their markers.
std::map<std::string, std::string> examples() {
  const std::string page = readFile(ZEL_SOURCE_DIR "/docs/format.md");
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

class FormatPage : public ListTest {
 protected:
  std::map<std::string, std::string> example_ = examples();
};

TriangleCL upward(int a, int b, int c) {
  TriangleCL face = triangle(a, b, c);
  face.SetNormM(kUp);
  return face;
}

std::string bytesOfHex(const std::string& digits) {
  std::istringstream in(digits);
  std::string bytes;
  for (unsigned byte; in >> std::hex >> byte;) {
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

TEST_F(FormatPage, valueLists) {
  ASSERT_EQ(example_.size(), 10U);
  IntArr ints;
  ints.SetItemM(7, 1);
  EXPECT_EQ(listOf(ints), example_["ints"]);
  EXPECT_EQ(listOf(ints, "wb"), bytesOfHex(example_["binary ints"]));
  EXPECT_EQ(listOf(arrayOf<Point3DArr>({{0.5F, -1, 2.5F}})), example_["points"]);
  auto reals = arrayOf<RealArr>({1, 2});
  reals.DelItemM(0);
  EXPECT_EQ(listOf(reals), example_["reals"]);
  EXPECT_EQ(listOf(arrayOf<CharArr>({'A', -56})), example_["chars"]);
  const PlainFile plain;
  slFprintfPoint2DArr(plain, arrayOf<Point2DArr>({{0.5F, -1}}), "l");
  EXPECT_EQ(plain.text(), example_["container list"]);
}

TEST_F(FormatPage, meshLists) {
  auto nodes = arrayWith<NodeArr>(node(1, 2, -3), node(4, 5, 6), node(0, 0, 0));
  nodes.DelItemM(1);
  nodes.DelItemM(2);
  EXPECT_EQ(listOf(nodes), example_["nodes"]);
  auto faces = arrayWith<TriangleArr>(upward(0, 1, 2), upward(0, 2, 3), upward(0, 2, 3));
  faces.DelItemM(1);
  faces.DelItemM(2);
  const PlainFile plain, exported;
  faces.FmWriteTriangleLstToFileM(plain);
  EXPECT_EQ(plain.text(), example_["plain triangles"]);
  faces.ExportTriangleLstDBFileM(exported, nullptr);
  EXPECT_EQ(exported.text(), example_["export"]);
}

TEST_F(FormatPage, document) {
  const auto nodes = arrayWith<NodeArr>(node(0, 0, 0), node(1, 0, 0), node(1, 1, 0), node(0, 1, 0),
                                        node(0.5F, 1.5F, 0));
  QuadCL square = quad(0, 1, 2, 3);
  square.SetNormM(kUp);
  const std::string document = written([&](KwIOCL& io) {
    io.OutputsM("zel4.008");
    nodes.FmOutputZelLstM(&io, "NODE");
    arrayWith<TriangleArr>(upward(3, 2, 4)).FmWriteTriangleLstToFileM(io.GetFileDescriptM());
    arrayWith<QuadArr>(square).FmWriteQuadLstToFileM(io.GetFileDescriptM());
  });
  EXPECT_EQ(document, example_["document"]);
}

}  // namespace
}  // namespace zel::test
