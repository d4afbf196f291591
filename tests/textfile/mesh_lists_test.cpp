// The mesh arrays on plain stdio streams.

#include <gtest/gtest.h>

#include <string>

#include "list_files.h"
#include "mesh_samples.h"
#include "plain_file.h"
#include "support/pipe_file.h"

namespace {

using zel::test::damaged;
using zel::test::fill;
using zel::test::node;
using zel::test::PlainFile;
using zel::test::quad;
using zel::test::Random;
using zel::test::triangle;

const std::string kRecord =
    "   31\n         1,           2,           3\n"
    "  0.00000000e+00, -1.00000000e+00,  5.00000000e-01\n1\n";

TEST(PlainRecords, elementsByteForByteAndBack) {
  const PlainFile a, b, c;
  EXPECT_EQ(triangle(1, 2, 3).FmWriteZelFileM(a), 1);
  EXPECT_EQ(a.text(), kRecord);
  quad(1, 2, 3, 4).FmWriteZelFileM(b);
  EXPECT_EQ(b.text(),
            "   31\n         1,           2,           3,           4\n"
            "  0.00000000e+00, -1.00000000e+00,  5.00000000e-01\n1\n");
  node(1, 2, 3).FmWriteZelFileM(c);
  EXPECT_EQ(c.text(),
            "   31\n  1.00000000e+00,    2.00000000e+00,    3.00000000e+00\n"
            "  0.00000000e+00,    0.00000000e+00,    1.00000000e+00\n");
  for (FILE* file : {static_cast<FILE*>(a), static_cast<FILE*>(b), static_cast<FILE*>(c)}) {
    std::rewind(file);
  }
  TriangleCL triangleRead;
  QuadCL quadRead;
  NodeCL nodeRead;
  triangleRead.FmReadZelFileM(a);
  quadRead.FmReadZelFileM(b);
  nodeRead.FmReadZelFileM(c);
  EXPECT_EQ(triangleRead.record().corners[2] * 10 + quadRead.record().corners[3], 34);
  EXPECT_EQ(quadRead.record().normal[2] + triangleRead.record().normal[1], -0.5F);
  EXPECT_EQ(triangleRead.record().normalType, 1);
  EXPECT_EQ(nodeRead.point()[2] + nodeRead.normal()[2], 4);
  EXPECT_EQ(std::fgetc(a) + std::fgetc(b) + std::fgetc(c), 3 * EOF);
}

TEST(PlainRecords, throughTheBaseTheTagAloneIsWritten) {
  const PlainFile file;
  const NodeCL aNode = node(1, 2, 3);
  const KwBaseCL& element = aNode;
  EXPECT_EQ(element.FmWriteZelFileM(file), 1);
  const TriangleCL aTriangle = triangle(1, 2, 3);
  static_cast<const KwBaseCL&>(aTriangle).FmWriteZelFileM(file);
  EXPECT_EQ(file.text(), "   31\n   31\n");
}

TEST(PlainRecords, missingFieldsStayAsTheyWere) {
  NodeCL read = node(7, 8, 9);
  read.FmReadZelFileM(PlainFile("30\n1, 2 3\n4"));
  EXPECT_EQ(read.IsAvailableM(), 30);
  EXPECT_EQ(read.point()[1] * 10 + read.point()[2], 29);
  EXPECT_EQ(read.normal()[0], 3);
}

TEST(PlainLists, everySlotIsWritten) {
  TriangleArr faces;
  faces.AddItemM(triangle(1, 2, 3));
  faces.AddItemM(triangle(1, 2, 3));
  faces.AddItemM(triangle(1, 2, 3));
  faces.DelItemM(1);
  const PlainFile file, exported;
  EXPECT_EQ(faces.FmWriteTriangleLstToFileM(file), 1);
  const std::string index = "INDEX_OF_TRIANGLE_LIST\n";
  std::string deleted = kRecord;
  deleted.replace(3, 2, "32");
  const std::string text = "         3,  TRIANGLE_LIST_BEGIN\n         0,  " + index + kRecord +
                           "         1,  " + index + deleted + "         2,  " + index + kRecord +
                           "TRIANGLE_LIST_END\n";
  EXPECT_EQ(file.text(), text);

  float matrix[16] = {2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1};
  EXPECT_EQ(faces.ExportTriangleLstDBFileM(exported, matrix), 1);
  const std::string exportIndex = "INDEX_OF_Triangle_LIST\n";
  EXPECT_EQ(exported.text(), "         2,  Triangle_LIST_BEGIN\n         0,  " + exportIndex +
                                 kRecord + "         2,  " + exportIndex + kRecord +
                                 "Node_LIST_END\n");
  TriangleArr read;
  EXPECT_EQ(read.FmReadTriangleLstM(PlainFile(text + " tail")), 1);
  EXPECT_EQ(read.GetBoundM(), 3);
  EXPECT_EQ(read.GetAvailableNumM(), 2);
  const PlainFile again;
  read.FmWriteTriangleLstToFileM(again);
  EXPECT_EQ(again.text(), text);
}

TEST(PlainLists, quadsEndWithTheirOwnTag) {
  QuadArr faces;
  const PlainFile file, exported;
  faces.FmWriteQuadLstToFileM(file);
  faces.ExportQuadLstDBFileM(exported);
  EXPECT_EQ(file.text(), "         0,  QUAD_LIST_BEGIN\nQUAD_LIST_END\n");
  EXPECT_EQ(exported.text(), "         0,  Quad_LIST_BEGIN\nQuad_LIST_END\n");
}

TEST(PlainLists, lastSlotIsMadeFreshAndStorageDoubles) {
  TriangleArr faces;
  for (int i = 0; i < 3; ++i) {
    faces.AddItemM(triangle(1, 2, 3));
  }
  faces.FmReadTriangleLstM(PlainFile("2, b\n0, i\n" + kRecord + "0, i\n" + kRecord + "end"));
  EXPECT_EQ(faces.GetBoundM(), 3);
  EXPECT_EQ(faces.GetAvailableNumM(), 5);  // the counts are not corrected
  EXPECT_EQ(static_cast<const TriangleArr&>(faces).ElementAtM(1).IsAvailableM(), 30);
  std::string five = "5, b\n";
  for (const char* index : {"0", "1", "2", "3", "4"}) {
    five += std::string(index) + ", i\n" + kRecord;
  }
  TriangleArr grown;
  grown.FmReadTriangleLstM(PlainFile(five));
  EXPECT_EQ(grown.GetLengthM(), 8);
  EXPECT_EQ(grown.GetBoundM(), 5);
}

TEST(PlainLists, liveNodesAreCountedWhereverTheyStand) {
  const std::string live = "31\n1, 2, 3\n0, 0, 1\n";
  NodeArr two, one;
  EXPECT_EQ(two.FmReadNodeLstM(PlainFile("2, b\n0, i\n" + live + "1, i\n" + live + "end")), 1);
  EXPECT_EQ(two.GetBoundM() * 10 + two.GetAvailableNumM(), 22);
  one.FmReadNodeLstM(PlainFile("2, b\n0, i\n" + live + "1, i\n30\n4, 5, 6\n0, 0, 1\nend"));
  EXPECT_EQ(one.GetBoundM() * 10 + one.GetAvailableNumM(), 11);
  EXPECT_EQ(static_cast<const NodeArr&>(one).ElementAtM(1).point()[0], 4);
  for (int i = 0; i < 3; ++i) {
    two.FmReadNodeLstM(PlainFile("2, b\n0, i\n" + live + "1, i\n" + live + "end"));
  }
  EXPECT_EQ(two.GetBoundM(), 8);
  EXPECT_LE(two.GetBoundM(), two.GetLengthM());
}

TEST(PlainLists, listsFollowEachOtherInOneFile) {
  Random random(38);
  TriangleArr triangles, trianglesRead;
  QuadArr quads, quadsRead;
  fill(random, &triangles, 50);
  fill(random, &quads, 50);
  const PlainFile file;
  triangles.FmWriteTriangleLstToFileM(file);
  quads.FmWriteQuadLstToFileM(file);
  const PlainFile source(file.text());
  trianglesRead.FmReadTriangleLstM(source);
  quadsRead.FmReadQuadLstM(source);
  EXPECT_EQ(std::fgetc(source), EOF);
  const PlainFile again;
  trianglesRead.FmWriteTriangleLstToFileM(again);
  quadsRead.FmWriteQuadLstToFileM(again);
  std::rewind(file);
  std::fseek(file, 0, SEEK_END);
  EXPECT_TRUE(again.text() == file.text());
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
  TriangleArr faces;
  for (int i = 0; i < kFaces; ++i) {
    faces.AddItemM(triangle(i, i + 1, i + 2));
  }
  const PlainFile file;
  faces.FmWriteTriangleLstToFileM(file);
  TriangleArr read;
  read.FmReadTriangleLstM(zel::test::PipeFile(file.text()));
  EXPECT_EQ(read.GetBoundM(), kFaces);
  EXPECT_EQ(read.GetAvailableNumM(), kFaces);
  EXPECT_EQ(static_cast<const TriangleArr&>(read).ElementAtM(kFaces - 1).record().corners[0],
            kFaces - 1);
}

}  // namespace
