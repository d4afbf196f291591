// The tagged lists of nodes, triangles and quads, and their elements' records.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "list_files.h"
#include "mesh_samples.h"
#include "zel/containers/kw_string_arr.h"
#include "zel/textfile/kw_iocl.h"

namespace {

using zel::test::codeOfReading;
using zel::test::damaged;
using zel::test::fill;
using zel::test::listOf;
using zel::test::MemoryFile;
using zel::test::node;
using zel::test::quad;
using zel::test::Random;
using zel::test::readList;
using zel::test::StreamFile;
using zel::test::thrownBy;
using zel::test::triangle;

const std::string kNodeList =
    "2, l_LIST_BEGIN\n"
    "0, INDEX_OF_l_LIST\n"
    "   31\n"
    "  1.00000000e+00,   2.00000000e+00,  -3.00000000e+00\n"
    "  0.00000000e+00,   0.00000000e+00,   1.00000000e+00\n"
    "1, INDEX_OF_l_LIST\n"
    "   32\n"
    "  4.00000000e+00,   5.00000000e+00,   6.00000000e+00\n"
    "  0.00000000e+00,   0.00000000e+00,   1.00000000e+00\n"
    "l_LIST_END\n";

TEST(ElementLists, nodesByteForByteAndBack) {
  StreamFile file;
  NodeArr nodes;
  nodes.AddItemM(node(1, 2, -3));
  nodes.AddItemM(node(4, 5, 6));
  nodes.AddItemM(node(7, 8, 9));
  nodes.DelItemM(1);
  nodes.DelItemM(2);
  EXPECT_EQ(listOf(file, nodes), kNodeList);
  std::string binary("\2\0\0\0", 4);
  for (const NodeCL& each : {nodes.ElementAtM(0), nodes.ElementAtM(1)}) {
    binary += each.IsAvailableM();
    binary.append(reinterpret_cast<const char*>(each.point()), 12);
    binary.append(reinterpret_cast<const char*>(each.normal()), 12);
  }
  EXPECT_EQ(listOf(file, nodes, "wb"), binary);

  NodeArr read;
  for (int i = 0; i < 6; ++i) {
    read.AddItemM(node(9, 9, 9));
  }
  readList(file, &read, kNodeList);
  EXPECT_EQ(read.GetBoundM(), 2);
  EXPECT_EQ(read.GetAvailableNumM(), 1);
  EXPECT_EQ(read.GetItemPM(1)->point()[2], 6);
  EXPECT_EQ(listOf(file, read), kNodeList);
  EXPECT_EQ(static_cast<const NodeArr&>(read).ElementAtM(5).IsAvailableM(), 32);
}

TEST(ElementLists, facesAreWrittenInOneOrderAndReadInAnother) {
  StreamFile file;
  TriangleArr triangles;
  triangles.AddItemM(triangle(1, 2, 3));
  const std::string text = listOf(file, triangles);
  EXPECT_EQ(text,
            "1, l_LIST_BEGIN\n0, INDEX_OF_l_LIST\n   31\n    1\n"
            "  0.00000000e+00,  -1.00000000e+00,   5.00000000e-01\n"
            "         1,          2,          3\nl_LIST_END\n");
  TriangleArr read;
  EXPECT_EQ(thrownBy([&] { readList(file, &read, text); }), 107);
  readList(file, &read, "1, b\n0, i\n31\n1, 2, 3\n0, -1, 0.5\n1\nend\n");
  EXPECT_EQ(listOf(file, read), text);

  QuadArr quads;
  quads.AddItemM(quad(1, 2, 3, 4));
  EXPECT_EQ(listOf(file, quads),
            "1, l_LIST_BEGIN\n0, INDEX_OF_l_LIST\n   31\n    1\n"
            "  0.00000000e+00,  -1.00000000e+00,   5.00000000e-01\n"
            "         1,          2,          3,          4\nl_LIST_END\n");
}

TEST(ElementLists, binaryFaceRecordsHoldTheFirstCornerOnly) {
  StreamFile file;
  TriangleArr triangles;
  triangles.AddItemM(triangle(7, 8, 9));
  const float normal[] = {0, -1, 0.5F};
  std::string expected("\1\0\0\0\x1F\1", 6);
  expected.append(reinterpret_cast<const char*>(normal), sizeof normal).append("\7\0\0\0", 4);
  EXPECT_EQ(listOf(file, triangles, "wb"), expected);
  QuadArr quads;
  quads.AddItemM(quad(7, 8, 9, 10));
  EXPECT_EQ(listOf(file, quads, "wb"), expected);
  // Read in the other order: the normal type is taken from the last byte of the corner.
  TriangleArr read;
  readList(file, &read, expected, "rb");
  EXPECT_EQ(read.GetAvailableNumM(), 1);
  char type = 9;
  static_cast<const TriangleArr&>(read).ElementAtM(0).GetNormTypeM(&type);
  EXPECT_EQ(type, 0);
}

TEST(ElementLists, stringsWriteTheirTagAlone) {
  StreamFile file;
  KwStringArr texts;
  texts.AddByCompM("one");
  texts.AddByCompM("two");
  texts.DelItemM(0);
  const std::string list =
      "2, l_LIST_BEGIN\n0, INDEX_OF_l_LIST\n   32\n1, INDEX_OF_l_LIST\n   31\nl_LIST_END\n";
  EXPECT_EQ(listOf(file, texts), list);
  EXPECT_EQ(listOf(file, texts, "wb"), std::string("\2\0\0\0\x20\x1F", 6));
  KwStringArr read;
  readList(file, &read, list);
  EXPECT_EQ(read.GetBoundM() * 10 + read.GetAvailableNumM(), 21);
  EXPECT_EQ(read.FindStrM("anything"), 0);  // an empty text matches every one
  for (int i = 0; i < 200; ++i) {
    texts.AddByCompM(std::to_string(i).c_str());
  }
  ASSERT_EQ(texts.FindStrM("199"), 201);
  readList(file, &texts, list);
  EXPECT_EQ(texts.FindStrM("199"), -1);
  EXPECT_EQ(texts.FindStrM("two"), 1);
}

TEST(ElementLists, emptyListsChangeNothing) {
  StreamFile file;
  EXPECT_EQ(listOf(file, NodeArr()), "0, l_LIST_BEGIN\nl_LIST_END\n");
  EXPECT_EQ(listOf(file, QuadArr(), "wb"), std::string(4, '\0'));
  NodeArr nodes;
  nodes.AddItemM(node(1, 1, 1));
  readList(file, &nodes, "0, b\nend\n");
  EXPECT_EQ(nodes.GetAvailableNumM(), 1);
}

TEST(ElementLists, withoutNewLinesAListCannotBeReadBack) {
  StreamFile file;
  NodeArr nodes;
  nodes.AddItemM(node(1, 2, 3));
  const std::string text = file.written([&](KwIOCL& io) {
    io.SetAutoNewLineM(0);
    nodes.FmOutputZelLstM(&io, "l");
  });
  EXPECT_EQ(text.find('\n'), std::string::npos);
  EXPECT_EQ(thrownBy([&] { readList(file, &nodes, text); }), 107);
}

TEST(ElementLists, searchesSeeWhatWasRead) {
  StreamFile file;
  Random random(35);
  NodeArr nodes;
  fill(random, &nodes, 300);
  const std::string text = listOf(file, nodes);
  NodeArr target;
  for (int i = 0; i < 300; ++i) {
    int index = 0;
    target.MergeNodeLstM(node(static_cast<float>(i), 0, 0), &index);
  }
  readList(file, &target, text);
  for (int i = 0; i < 300; ++i) {
    int index = -1;
    const NodeCL& wanted = static_cast<const NodeArr&>(nodes).ElementAtM(i);
    if (wanted.IsAvailableM() == 31) {
      target.MergeNodeLstM(wanted, &index);
      EXPECT_EQ(index, i);
    }
  }
}

TEST(ElementLists, hostileCountsAndIndices) {
  StreamFile file;
  const std::string record = "31\n1,1,1\n0,0,1\n";
  for (const std::string text : {"-1, b\n", "2000000000, b\n", "x", "", "1, b\n4, i\n",
                                 "1, b\n-1, i\n", "1, b\n2000000000, i\n"}) {
    NodeArr nodes;
    EXPECT_EQ(thrownBy([&] { readList(file, &nodes, text + record + "end\n"); }), 107) << text;
    EXPECT_EQ(nodes.GetLengthM(), 4);
  }
  NodeArr beside;  // a slot of the store beyond the count is no harm
  readList(file, &beside, "1, b\n3, i\n" + record + "end\n");
  EXPECT_EQ(beside.GetBoundM(), 1);
  EXPECT_EQ(beside.GetAvailableNumM(), 1);
}

void fill(Random& random, KwStringArr* texts, int count) {
  for (int i = 0; i < count; ++i) {
    texts->AddByCompM(std::to_string(random()).c_str());
  }
}

template <class Array>
class ElementRoundTrip : public testing::Test {};
using Arrays = testing::Types<KwStringArr, NodeArr, TriangleArr, QuadArr>;
TYPED_TEST_SUITE(ElementRoundTrip, Arrays);

TYPED_TEST(ElementRoundTrip, damagedFilesDoNoHarm) {
  Random random(36);
  StreamFile file;
  const MemoryFile memory;
  TypeParam array;
  fill(random, &array, 9);
  for (const char* modes : {"w\0r", "wb\0rb"}) {
    const std::string bytes = listOf(file, array, modes);
    for (int round = 0; round < 800; ++round) {
      TypeParam read;
      const int code =
          codeOfReading(memory, &read, damaged(random, bytes), modes + std::strlen(modes) + 1);
      EXPECT_TRUE(code == 0 || code == 107);
      EXPECT_LE(read.GetBoundM(), read.GetLengthM());
      EXPECT_LE(static_cast<std::size_t>(read.GetLengthM()), bytes.size());
    }
  }
}

TEST(ElementRoundTrip, nodesKeepEveryBit) {
  Random random(37);
  StreamFile file;
  for (const char* modes : {"w\0r", "wb\0rb"}) {
    NodeArr nodes;
    fill(random, &nodes, 200);
    const std::string bytes = listOf(file, nodes, modes);
    NodeArr read;
    readList(file, &read, bytes, modes + std::strlen(modes) + 1);
    EXPECT_EQ(read.GetAvailableNumM(), nodes.GetAvailableNumM());
    EXPECT_TRUE(listOf(file, read, "wb") == listOf(file, nodes, "wb"));
  }
}

}  // namespace
