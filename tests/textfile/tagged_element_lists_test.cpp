// The tagged lists of nodes, triangles, quads and strings, and their elements' records.

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "list_files.h"
#include "random_arrays.h"
#include "support/array_values.h"

namespace zel::test {
namespace {

using ElementLists = ListTest;

// The text stands in the format reference, whose test compares it.
TEST_F(ElementLists, nodesTakeThePlaceOfTheOld) {
  auto nodes = arrayWith<NodeArr>(node(1, 2, -3), node(4, 5, 6), node(7, 8, 9));
  nodes.DelItemM(1);
  nodes.DelItemM(2);
  std::string binary("\2\0\0\0", 4);
  for (const NodeCL& each : {nodes.ElementAtM(0), nodes.ElementAtM(1)}) {
    binary += each.IsAvailableM();
    binary.append(reinterpret_cast<const char*>(each.point()), 12);
    binary.append(reinterpret_cast<const char*>(each.normal()), 12);
  }
  EXPECT_EQ(listOf(nodes, "wb"), binary);
  const std::string text = listOf(nodes);
  NodeArr target;
  for (int i = 0; i < 6; ++i) {
    target.AddItemM(node(9, 9, 9));
  }
  EXPECT_EQ(read(&target, text), 0);
  EXPECT_EQ(countsOf(target), (Counts{.bound = 2, .live = 1, .length = 8}));
  EXPECT_EQ(listOf(target), text);
  EXPECT_EQ(std::as_const(target).ElementAtM(5).IsAvailableM(), 32);
}

TEST_F(ElementLists, facesAreWrittenInOneOrderAndReadInAnother) {
  const std::string begin =
      "1, l_LIST_BEGIN\n0, INDEX_OF_l_LIST\n   31\n    1\n"
      "  0.00000000e+00,  -1.00000000e+00,   5.00000000e-01\n";
  const std::string text = begin + "         1,          2,          3\nl_LIST_END\n";
  EXPECT_EQ(listOf(arrayWith<TriangleArr>(triangle(1, 2, 3))), text);
  EXPECT_EQ(listOf(arrayWith<QuadArr>(quad(1, 2, 3, 4))),
            begin + "         1,          2,          3,          4\nl_LIST_END\n");
  TriangleArr faces;
  EXPECT_EQ(read(&faces, text), 107);
  EXPECT_EQ(read(&faces, "1, b\n0, i\n31\n1, 2, 3\n0, -1, 0.5\n1\nend\n"), 0);
  EXPECT_EQ(listOf(faces), text);
}

TEST_F(ElementLists, binaryFaceRecordsHoldTheFirstCornerOnly) {
  const float normal[] = {0, -1, 0.5F};
  std::string expected("\1\0\0\0\x1F\1", 6);
  expected.append(reinterpret_cast<const char*>(normal), sizeof normal).append("\7\0\0\0", 4);
  EXPECT_EQ(listOf(arrayWith<TriangleArr>(triangle(7, 8, 9)), "wb"), expected);
  EXPECT_EQ(listOf(arrayWith<QuadArr>(quad(7, 8, 9, 10)), "wb"), expected);
  // Read in the other order: the normal type is taken from the last byte of the corner.
  TriangleArr faces;
  EXPECT_EQ(read(&faces, expected, "rb"), 0);
  EXPECT_EQ(faces.GetAvailableNumM(), 1);
  EXPECT_EQ(std::as_const(faces).ElementAtM(0).record().normalType, 0);
}

TEST_F(ElementLists, stringsWriteTheirTagAlone) {
  KwStringArr texts;
  texts.AddByCompM("one");
  texts.AddByCompM("two");
  texts.DelItemM(0);
  const std::string list =
      "2, l_LIST_BEGIN\n0, INDEX_OF_l_LIST\n   32\n1, INDEX_OF_l_LIST\n   31\nl_LIST_END\n";
  EXPECT_EQ(listOf(texts), list);
  EXPECT_EQ(listOf(texts, "wb"), std::string("\2\0\0\0\x20\x1F", 6));
  KwStringArr fresh;
  EXPECT_EQ(read(&fresh, list), 0);
  EXPECT_EQ(fresh.GetAvailableNumM(), 1);
  EXPECT_EQ(fresh.FindStrM("anything"), 0);  // an empty text matches every one
  for (int i = 0; i < 200; ++i) {
    texts.AddByCompM(std::to_string(i).c_str());
  }
  ASSERT_EQ(texts.FindStrM("199"), 201);
  EXPECT_EQ(read(&texts, list), 0);
  EXPECT_EQ(texts.FindStrM("199"), -1);
  EXPECT_EQ(texts.FindStrM("two"), 1);
}

TEST_F(ElementLists, emptyListsChangeNothing) {
  EXPECT_EQ(listOf(NodeArr()), "0, l_LIST_BEGIN\nl_LIST_END\n");
  EXPECT_EQ(listOf(QuadArr(), "wb"), std::string(4, '\0'));
  auto nodes = arrayWith<NodeArr>(node(1, 1, 1));
  EXPECT_EQ(read(&nodes, "0, b\nend\n"), 0);
  EXPECT_EQ(nodes.GetAvailableNumM(), 1);
}

TEST_F(ElementLists, withoutNewLinesAListCannotBeReadBack) {
  auto nodes = arrayWith<NodeArr>(node(1, 2, 3));
  const std::string text = written([&](KwIOCL& io) {
    io.SetAutoNewLineM(0);
    nodes.FmOutputZelLstM(&io, "l");
  });
  EXPECT_EQ(text.find('\n'), std::string::npos);
  EXPECT_EQ(read(&nodes, text), 107);
}

TEST_F(ElementLists, nodesKeepEveryBitAndSearchesSeeThem) {
  Random random(35);
  NodeArr nodes;
  fill(random, &nodes, 300);
  for (const bool isBinary : {false, true}) {
    NodeArr target;
    int index = 0;
    for (int i = 0; i < 300; ++i) {
      target.MergeNodeLstM(node(static_cast<float>(i), 0, 0), &index);
    }
    const std::string bytes = listOf(nodes, isBinary ? "wb" : "w");
    EXPECT_EQ(read(&target, bytes, isBinary ? "rb" : "r"), 0);
    EXPECT_EQ(target.GetAvailableNumM(), nodes.GetAvailableNumM());
    EXPECT_TRUE(listOf(target, "wb") == listOf(nodes, "wb"));
    for (int i = 0; i < 300; ++i) {
      const NodeCL& wanted = std::as_const(nodes).ElementAtM(i);
      if (wanted.IsAvailableM() == 31) {
        target.MergeNodeLstM(wanted, &index);
        EXPECT_EQ(index, i);
      }
    }
  }
}

TEST_F(ElementLists, hostileCountsAndIndices) {
  const std::string record = "31\n1,1,1\n0,0,1\n";
  for (const std::string text : {"-1, b\n", "2000000000, b\n", "x", "", "1, b\n4, i\n",
                                 "1, b\n-1, i\n", "1, b\n2000000000, i\n"}) {
    NodeArr nodes;
    EXPECT_EQ(read(&nodes, text + record + "end\n"), 107) << text;
    EXPECT_EQ(nodes.GetLengthM(), 4);
  }
  NodeArr beside;  // a slot of the store beyond the count is no harm
  EXPECT_EQ(read(&beside, "1, b\n3, i\n" + record + "end\n"), 0);
  EXPECT_EQ(countsOf(beside), (Counts{.bound = 1, .live = 1, .length = 4}));
}

}  // namespace
}  // namespace zel::test
