// The mesh arrays on plain stdio streams.

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "plain_file.h"
#include "random_arrays.h"
#include "support/array_values.h"
#include "support/pipe_file.h"

namespace zel::test {
namespace {

const std::string kRecord =
    "   31\n         1,           2,           3\n"
    "  0.00000000e+00, -1.00000000e+00,  5.00000000e-01\n1\n";

/// Checks the bytes of `element`, and that a fresh one reads just these and writes them again.
template <class Element>
void expectRecord(const Element& element, const std::string& record) {
  const PlainFile file, again;
  EXPECT_EQ(element.FmWriteZelFileM(file), 1);
  EXPECT_EQ(file.text(), record);
  std::rewind(file);
  Element fresh;
  EXPECT_EQ(fresh.FmReadZelFileM(file), 1);
  EXPECT_EQ(std::fgetc(file), EOF);
  fresh.FmWriteZelFileM(again);
  EXPECT_EQ(again.text(), record);
}

TEST(PlainRecords, elementsByteForByteAndBack) {
  expectRecord(triangle(1, 2, 3), kRecord);
  expectRecord(quad(1, 2, 3, 4),
               "   31\n         1,           2,           3,           4\n"
               "  0.00000000e+00, -1.00000000e+00,  5.00000000e-01\n1\n");
  expectRecord(node(1, 2, 3),
               "   31\n  1.00000000e+00,    2.00000000e+00,    3.00000000e+00\n"
               "  0.00000000e+00,    0.00000000e+00,    1.00000000e+00\n");
}

TEST(PlainRecords, throughTheBaseTheTagAloneIsWritten) {
  const PlainFile file;
  EXPECT_EQ(static_cast<const KwBaseCL&>(node(1, 2, 3)).FmWriteZelFileM(file), 1);
  static_cast<const KwBaseCL&>(triangle(1, 2, 3)).FmWriteZelFileM(file);
  EXPECT_EQ(file.text(), "   31\n   31\n");
}

TEST(PlainRecords, missingFieldsStayAsTheyWere) {
  NodeCL read = node(7, 8, 9);
  read.FmReadZelFileM(PlainFile("30\n1, 2 3\n4"));
  EXPECT_EQ(read.IsAvailableM(), 30);
  EXPECT_EQ(read.point()[1] * 10 + read.point()[2], 29);
  EXPECT_EQ(read.normal()[0], 3);
}

// The texts of lists stand in the format reference, whose test compares them.
TEST(PlainLists, deletedFacesInBetweenAreWrittenButNotExported) {
  auto faces = arrayWith<TriangleArr>(triangle(1, 2, 3), triangle(1, 2, 3), triangle(1, 2, 3));
  faces.DelItemM(1);
  const PlainFile file, exported, again;
  const float matrix[16] = {2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1};
  EXPECT_EQ(faces.ExportTriangleLstDBFileM(exported, matrix), 1);
  const std::string index = "INDEX_OF_Triangle_LIST\n";
  EXPECT_EQ(exported.text(), "         2,  Triangle_LIST_BEGIN\n         0,  " + index + kRecord +
                                 "         2,  " + index + kRecord + "Node_LIST_END\n");
  EXPECT_EQ(faces.FmWriteTriangleLstToFileM(file), 1);
  const std::string text = file.text();
  TriangleArr read;
  EXPECT_EQ(read.FmReadTriangleLstM(PlainFile(text + " tail")), 1);
  EXPECT_EQ(countsOf(read), (Counts{.bound = 3, .live = 2, .length = 4}));
  read.FmWriteTriangleLstToFileM(again);
  EXPECT_EQ(again.text(), text);
}

TEST(PlainLists, quadsEndWithTheirOwnTag) {
  const PlainFile file, exported;
  QuadArr().FmWriteQuadLstToFileM(file);
  QuadArr().ExportQuadLstDBFileM(exported);
  EXPECT_EQ(file.text(), "         0,  QUAD_LIST_BEGIN\nQUAD_LIST_END\n");
  EXPECT_EQ(exported.text(), "         0,  Quad_LIST_BEGIN\nQuad_LIST_END\n");
}

TEST(PlainLists, lastSlotIsMadeFreshAndStorageDoubles) {
  auto faces = arrayWith<TriangleArr>(triangle(1, 2, 3), triangle(1, 2, 3), triangle(1, 2, 3));
  faces.FmReadTriangleLstM(PlainFile("2, b\n0, i\n" + kRecord + "0, i\n" + kRecord + "end"));
  EXPECT_EQ(faces.GetBoundM(), 3);
  EXPECT_EQ(faces.GetAvailableNumM(), 5);  // the counts are not corrected
  EXPECT_EQ(std::as_const(faces).ElementAtM(1).IsAvailableM(), 30);
  std::string five = "5, b\n";
  for (const char* index : {"0", "1", "2", "3", "4"}) {
    five += std::string(index) + ", i\n" + kRecord;
  }
  TriangleArr grown;
  grown.FmReadTriangleLstM(PlainFile(five));
  EXPECT_EQ(countsOf(grown), (Counts{.bound = 5, .live = 5, .length = 8}));
}

TEST(PlainLists, liveNodesAreCountedWhereverTheyStand) {
  const std::string first = "2, b\n0, i\n31\n1, 2, 3\n0, 0, 1\n";
  NodeArr two, one;
  one.FmReadNodeLstM(PlainFile(first + "1, i\n30\n4, 5, 6\n0, 0, 1\nend"));
  EXPECT_EQ(countsOf(one), (Counts{.bound = 1, .live = 1, .length = 4}));
  EXPECT_EQ(std::as_const(one).ElementAtM(1).point()[0], 4);
  for (const int bound : {2, 4, 6, 8}) {
    EXPECT_EQ(two.FmReadNodeLstM(PlainFile(first + "1, i\n31\n1, 2, 3\n0, 0, 1\nend")), 1);
    EXPECT_EQ(two.GetBoundM(), bound);
  }
  EXPECT_LE(two.GetBoundM(), two.GetLengthM());
}

TEST(PlainLists, listsFollowEachOtherInOneFile) {
  Random random(38);
  TriangleArr triangles, trianglesRead;
  QuadArr quads, quadsRead;
  fill(random, &triangles, 50);
  fill(random, &quads, 50);
  const PlainFile file, again;
  triangles.FmWriteTriangleLstToFileM(file);
  quads.FmWriteQuadLstToFileM(file);
  const std::string text = file.text();
  const PlainFile source(text);
  trianglesRead.FmReadTriangleLstM(source);
  quadsRead.FmReadQuadLstM(source);
  EXPECT_EQ(std::fgetc(source), EOF);
  trianglesRead.FmWriteTriangleLstToFileM(again);
  quadsRead.FmWriteQuadLstToFileM(again);
  EXPECT_TRUE(again.text() == text);
}

TEST(PlainLists, damagedFilesDoNoHarm) {
  Random random(39);
  TriangleArr triangles;
  fill(random, &triangles, 9);
  const PlainFile file;
  triangles.FmWriteTriangleLstToFileM(file);
  const std::string text = file.text();
  for (int round = 0; round < 1500; ++round) {
    const std::string bytes = damaged(random, text);
    TriangleArr faces;
    QuadArr quads;
    NodeArr nodes;
    faces.FmReadTriangleLstM(PlainFile(bytes));
    quads.FmReadQuadLstM(PlainFile(bytes));
    nodes.FmReadNodeLstM(PlainFile(bytes));
    EXPECT_LE(faces.GetBoundM(), faces.GetLengthM());
    EXPECT_LE(nodes.GetBoundM(), nodes.GetLengthM());
    EXPECT_LE(static_cast<std::size_t>(faces.GetLengthM() + quads.GetLengthM()), text.size());
  }
}

TEST(PlainLists, hostileCountsAndIndices) {
  for (const std::string text :
       {"", "x", "-5, b\nend", "2000000000, b\n", "2000000000, b\n0, i\n31\n", "99999999999, b",
        "1, b\n-1, i\n", "1, b\n2000000000, i\n"}) {
    TriangleArr faces;
    EXPECT_EQ(faces.FmReadTriangleLstM(PlainFile(text + kRecord)), 1) << text;
    EXPECT_LE(faces.GetLengthM(), 8);
    EXPECT_LE(faces.GetAvailableNumM(), 1);
  }
}

TEST(PlainLists, pipesAreReadToo) {
  constexpr int kFaces = 70000;
  TriangleArr faces, read;
  for (int i = 0; i < kFaces; ++i) {
    faces.AddItemM(triangle(i, i + 1, i + 2));
  }
  const PlainFile file;
  faces.FmWriteTriangleLstToFileM(file);
  read.FmReadTriangleLstM(PipeFile(file.text()));
  EXPECT_EQ(read.GetBoundM(), kFaces);
  EXPECT_EQ(read.GetAvailableNumM(), kFaces);
  EXPECT_EQ(std::as_const(read).ElementAtM(kFaces - 1).record().corners[0], kFaces - 1);
}

}  // namespace
}  // namespace zel::test
