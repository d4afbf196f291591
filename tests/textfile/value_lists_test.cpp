// The tagged lists of the value arrays: golden bytes, round trips, deliberate mismatches.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <type_traits>

#include "list_files.h"
#include "support/bits.h"
#include "zel/containers/char_arr.h"
#include "zel/containers/int2d_arr.h"
#include "zel/containers/int4d_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/containers/point3d_arr.h"
#include "zel/containers/real_arr.h"
#include "zel/textfile/kw_iocl.h"

namespace {

using zel::test::codeOfReading;
using zel::test::damaged;
using zel::test::listOf;
using zel::test::MemoryFile;
using zel::test::readList;
using zel::test::StreamFile;
using zel::test::thrownBy;

constexpr int kMark = -2147483647;
const std::string kTwo = "         2, l_LIST_BEGIN\n         0, INDEX_OF_l_LIST\n";
const std::string kNext = "         1, INDEX_OF_l_LIST\n";

// The other arrays' forms stand in the format reference, whose test compares them.
TEST(ValueLists, textFormsByteForByte) {
  StreamFile file;
  Int4DArr quads;
  const int four[] = {1, -2, 3, 4};
  quads.SetItemM(four, 1);
  EXPECT_EQ(listOf(file, quads), kTwo + "-2147483647, -2147483647, -2147483647, -2147483647\n" +
                                     kNext +
                                     "         1,         -2,          3,          4\n"
                                     "l_LIST_END\n");
  Point2DArr flat;
  const float xyz[] = {0.5F, -1e10F, 2};
  flat.AddItemM(xyz);
  flat.AddItemM(xyz);
  flat.DelItemM(0);
  EXPECT_EQ(listOf(file, flat), kTwo + " -9.99999984e+17,  -1.00000000e+10\n" + kNext +
                                    "  5.00000000e-01,  -1.00000000e+10\nl_LIST_END\n");
  EXPECT_EQ(listOf(file, IntArr()), "         0, l_LIST_BEGIN\nl_LIST_END\n");
}

TEST(ValueLists, pairsAreWrittenBinaryOnTextStreamsToo) {
  StreamFile file;
  Int2DArr pairs;
  const int pair[] = {1, 2};
  pairs.AddItemM(pair);
  const std::string bytes = listOf(file, pairs);
  EXPECT_EQ(bytes, std::string("\1\0\0\0\1\0\0\0\1\0\0\0\2\0\0\0", 16));
  EXPECT_EQ(listOf(file, pairs, "wb"), bytes);
  EXPECT_EQ(thrownBy([&] { readList(file, &pairs, bytes); }), 107);
  Int2DArr read;
  readList(file, &read, bytes, "rb");
  EXPECT_EQ(read.GetItemPM(0)[1], 2);
  readList(file, &read, kTwo + "5,6\n" + kNext + "-2147483647, 3\nl_LIST_END\n");
  EXPECT_EQ(read.GetBoundM(), 1);
  EXPECT_EQ(read.GetItemPM(0)[0], 5);
}

TEST(ValueLists, settingsOfTheStreamAreUsedAndRestored) {
  StreamFile file;
  IntArr ints;
  ints.AddItemM(7);
  KwIOCL io;
  io.OpenM(file.name(), "w");
  io.SetAutoNewLineM(0);
  io.SetSeparatorM(" %; ");
  io.SetFmtM(1, "<%d>");
  io.SetFmtM(3, "'%s'");
  ints.FmOutputZelLstM(&io, nullptr);
  EXPECT_EQ(io.GetAutoNewLineM(), 0);
  io.CloseM();
  EXPECT_EQ(file.bytes(),
            "'         1 %; _LIST_BEGIN'\n'         0 %; INDEX_OF__LIST'\n<7>\n'_LIST_END'\n");
}

// The formats of tuples bring their own commas; readers look for the separator all the same.
TEST(ValueLists, separatorsOfTheCallersReachSomeListsOnly) {
  StreamFile file;
  Point3DArr points;
  Int4DArr quads;
  const float xyz[] = {1, 2, 3};
  const int four[] = {1, 2, 3, 4};
  points.AddItemM(xyz);
  quads.AddItemM(four);
  KwIOCL io;
  io.OpenM(file.name(), "w+");
  io.SetSeparatorM(" | ");
  points.FmOutputZelLstM(&io, "l");
  quads.FmOutputZelLstM(&io, "l");
  io.RewindM();
  EXPECT_EQ(file.bytes(),
            "         1 | l_LIST_BEGIN\n         0 | INDEX_OF_l_LIST\n"
            "  1.00000000e+00 |   2.00000000e+00 |   3.00000000e+00\nl_LIST_END\n"
            "         1 | l_LIST_BEGIN\n         0 | INDEX_OF_l_LIST\n"
            "         1,          2,          3,          4\nl_LIST_END\n");
  Point3DArr read;
  read.FmInputZelLstM(&io);
  EXPECT_EQ(read.GetItemPM(0)[2], 3);
  EXPECT_EQ(thrownBy([&] { quads.FmInputZelLstM(&io); }), 107);
}

TEST(ValueLists, listsFollowEachOtherAndLandOnTop) {
  StreamFile file;
  IntArr ints, none;
  RealArr reals;
  Point3DArr points;
  ints.SetItemM(3, 2);
  reals.AddItemM(1.5F);
  const float xyz[] = {1, 2, 3};
  points.AddItemM(xyz);
  file.written([&](KwIOCL& io) {
    ints.FmOutputZelLstM(&io, "a");
    none.FmOutputZelLstM(&io, "b");
    reals.FmOutputZelLstM(&io, "c");
    points.FmOutputZelLstM(&io, "d");
  });
  IntArr target;
  target.SetItemM(9, 0);
  target.SetItemM(9, 7);
  RealArr realTarget;
  Point3DArr pointTarget;
  KwIOCL io;
  io.OpenM(file.name(), "r");
  io.SetAutoNewLineM(0);
  target.FmInputZelLstM(&io);
  target.FmInputZelLstM(&io);
  realTarget.FmInputZelLstM(&io);
  pointTarget.FmInputZelLstM(&io);
  EXPECT_EQ(io.FinishedReadM(), 1);
  EXPECT_EQ(io.GetAutoNewLineM(), 0);
  EXPECT_EQ(target.GetBoundM(), 8);
  EXPECT_EQ(target.GetAvailableNumM(), 3);
  EXPECT_EQ(target[2] * 100 + target[0] * 10 + target[7], 399);
  EXPECT_EQ(*realTarget.GetItemPM(0) + pointTarget.GetItemPM(0)[2], 4.5F);
}

TEST(ValueLists, readersLeaveOutTheirMarks) {
  StreamFile file;
  Point3DArr points;
  const std::string hole = "-999999984306749440";
  readList(file, &points, kTwo + hole + ", 1, 1\n" + kNext + "1, 1, " + hole + "\nEND\n");
  EXPECT_EQ(points.GetBoundM(), 2);
  EXPECT_EQ(points.GetAvailableNumM(), 1);
  readList(file, &points, kTwo + "1, " + hole + ", 1\n" + kNext + "1, 1, 1\nEND\n");
  EXPECT_EQ(points.IsPntAvailableM(0), 30);

  Point2DArr flat;
  readList(file, &flat, kTwo + "-2147483648, 1\n" + kNext + hole + ", 1\nEND\n");
  EXPECT_EQ(flat.GetBoundM(), 2);
  EXPECT_EQ(flat.GetAvailableNumM(), 1);  // its own hole comes back as a counted entry
}

TEST(ValueLists, denseCountsAreTakenAsRead) {
  StreamFile file;
  RealArr reals;
  for (int i = 0; i < 9; ++i) {
    reals.AddItemM(static_cast<float>(i));
  }
  readList(file, &reals, "2, x\r\n-77\r\n5\r\n6\r\nend");
  EXPECT_EQ(reals.GetBoundM(), 2);
  EXPECT_EQ(reals.GetAvailableNumM(), -77);
  EXPECT_EQ(reals.GetLengthM(), 15);
  EXPECT_EQ(*reals.GetItemPM(1), 6);
}

TEST(ValueLists, failureKeepsWhatWasReadAndTheLineSetting) {
  StreamFile file;
  IntArr ints;
  KwIOCL io;
  file.feed(io, kTwo + "5\n" + kNext + "x\n");
  io.SetAutoNewLineM(0);
  EXPECT_EQ(thrownBy([&] { ints.FmInputZelLstM(&io); }), 107);
  EXPECT_EQ(ints[0], 5);
  EXPECT_EQ(io.GetAutoNewLineM(), 1);
  KwIOCL closed;
  EXPECT_EQ(thrownBy([&] { ints.FmInputZelLstM(&closed); }), 107);
  EXPECT_EQ(thrownBy([&] { ints.FmOutputZelLstM(&closed, "l"); }), 108);
  if (!std::filesystem::exists("/dev/full")) {
    GTEST_SKIP() << "no device that is always full";
  }
  io.OpenM("/dev/full", "w");
  for (int i = 0; i < 1000; ++i) {
    ints.AddItemM(i);
  }
  EXPECT_EQ(thrownBy([&] { ints.FmOutputZelLstM(&io, "l"); }), 108);
}

TEST(ValueLists, emptyPointListAfterCancelling) {
  StreamFile file;
  Point3DArr points;
  const float xyz[] = {1, 2, 3};
  points.AddItemM(xyz);
  ASSERT_EQ(points.CancelLastItemM(), -1);
  EXPECT_EQ(listOf(file, points), "         0, l_LIST_BEGIN\nl_LIST_END\n");
}

TEST(ValueLists, hostileCountsAndIndices) {
  StreamFile file;
  const char* ends = "\nl_LIST_END\n";
  for (const std::string text :
       {"-1, b", "2000000000, b", "99999999999, b", "", "x", "1, b\n-1, i\n5",
        "1, b\n2000000000, i\n5", "1, b\n0, i\n", "3, b\n0, i\n5\n", "1, b\n0, i\n99999999999\n"}) {
    IntArr ints;
    EXPECT_EQ(thrownBy([&] { readList(file, &ints, text + ends); }), 107) << text;
    EXPECT_LE(ints.GetLengthM(), 15);
  }
  for (const std::string text : {"-1, b\n0", "2000000000, b\n0", "3, b\nx", "3, b\n3\n1\n2\n"}) {
    RealArr reals;
    EXPECT_EQ(thrownBy([&] { readList(file, &reals, text + ends); }), 107) << text;
    EXPECT_LE(reals.GetLengthM(), 15);
  }
  for (const std::string& bytes :
       {std::string("\xFF\xFF\xFF\xFF\0\0\0\0", 8), std::string("\2\0\0\0\2\0\0\0\0\0\0\0", 12),
        std::string("\xFF\xFF\xFF\x7F\0\0\0\0\0\0\0\0", 12), std::string("\2\0\0", 3)}) {
    Point3DArr points;
    EXPECT_EQ(thrownBy([&] { readList(file, &points, bytes, "rb"); }), 107);
    EXPECT_EQ(points.GetLengthM(), 4);
  }
}

// --- round trips -------------------------------------------------------------------------------

using Random = std::mt19937;

int anyInt(Random& random) { return static_cast<int>(random()); }
float anyFloat(Random& random) {
  return std::uniform_real_distribution<float>(-1e6F, 1e6F)(random);
}

void add(Random& random, CharArr* array) { array->AddItemM(static_cast<char>(random())); }
void add(Random& random, IntArr* array) { array->AddItemM(anyInt(random)); }
void add(Random& random, RealArr* array) { array->AddItemM(anyFloat(random)); }
void add(Random& random, Int2DArr* array) {
  const int item[] = {anyInt(random), anyInt(random)};
  array->AddItemM(item);
}
void add(Random& random, Int4DArr* array) {
  const int item[] = {anyInt(random), anyInt(random), anyInt(random), anyInt(random)};
  array->AddItemM(item);
}
void add(Random& random, Point2DArr* array) {
  const float item[] = {anyFloat(random), anyFloat(random)};
  array->AddItemM(item);
}
void add(Random& random, Point3DArr* array) {
  const float item[] = {anyFloat(random), anyFloat(random), anyFloat(random)};
  array->AddItemM(item);
}

template <class Array>
class ListRoundTrip : public testing::Test {};
using Arrays = testing::Types<CharArr, IntArr, Int2DArr, Int4DArr, RealArr, Point2DArr, Point3DArr>;
TYPED_TEST_SUITE(ListRoundTrip, Arrays);

template <class Array>
std::string storeBytes(const Array& array) {
  return {reinterpret_cast<const char*>(array.getCurrentItemPrtConstM()),
          static_cast<std::size_t>(array.GetBoundM()) * sizeof *array.getCurrentItemPrtConstM()};
}

// The binary form: number of slots, live count, the slots.
template <class Array>
std::string binaryForm(const Array& array) {
  const int counts[] = {array.GetBoundM(), array.GetAvailableNumM()};
  return std::string(reinterpret_cast<const char*>(counts), sizeof counts) + storeBytes(array);
}

// Deletes a slot and puts the mark into all of its components, as it comes back from a file.
template <class Array>
void digHole(Array* array, int index) {
  array->DelItemM(index);
  auto* slot = &array->getCurrentItemPrtM()[index];
  auto* first =
      reinterpret_cast<std::remove_all_extents_t<std::remove_pointer_t<decltype(slot)>>*>(slot);
  std::fill(first, first + sizeof *slot / sizeof *first, *first);
}

// Holes at the end do not come back from an indexed text list, so the last slot stays live.
TYPED_TEST(ListRoundTrip, keepsEveryBitAndHole) {
  Random random(33);
  StreamFile file;
  for (const char* modes : {"w\0r", "wb\0rb"}) {
    const char* readMode = modes + std::strlen(modes) + 1;
    for (int round = 0; round < 40; ++round) {
      TypeParam array;
      for (auto i = 1 + random() % 60U; i > 0; --i) {
        add(random, &array);
      }
      for (int i = 0; i + 1 < array.GetBoundM(); i += 1 + static_cast<int>(random() % 7U)) {
        digHole(&array, i);
      }
      const std::string text = listOf(file, array, modes);
      const bool isBinary = modes[1] == 'b' || std::is_same_v<TypeParam, Int2DArr>;
      EXPECT_TRUE(!isBinary || text == binaryForm(array));
      TypeParam read;
      readList(file, &read, text, isBinary ? "rb" : readMode);
      EXPECT_EQ(read.GetBoundM(), array.GetBoundM());
      EXPECT_TRUE(storeBytes(read) == storeBytes(array));
      if (!std::is_same_v<TypeParam, Point2DArr> || isBinary) {
        EXPECT_EQ(read.GetAvailableNumM(), array.GetAvailableNumM());
      }
    }
  }
}

// Whatever is cut off or altered, reading ends with the read failure or with a valid array.
TYPED_TEST(ListRoundTrip, damagedFilesDoNoHarm) {
  Random random(34);
  StreamFile file;
  const MemoryFile memory;
  for (const char* modes : {"w\0r", "wb\0rb"}) {
    TypeParam array;
    for (int i = 0; i < 12; ++i) {
      add(random, &array);
    }
    const std::string bytes = listOf(file, array, modes);
    for (int round = 0; round < 800; ++round) {
      TypeParam read;
      const int code =
          codeOfReading(memory, &read, damaged(random, bytes), modes + std::strlen(modes) + 1);
      EXPECT_TRUE(code == 0 || code == 107);
      EXPECT_LE(read.GetBoundM(), read.GetLengthM());
      EXPECT_LE(static_cast<std::size_t>(read.GetLengthM()), 4 * bytes.size());
    }
  }
}

TEST(PointDump, isTheBareCoordinates) {
  StreamFile file;
  Point3DArr points;
  const float xyz[] = {1, 2, 3};
  points.AddItemM(xyz);
  points.AddItemM(xyz);
  FILE* dump = std::fopen(file.name(), "w+b");
  EXPECT_EQ(points.FmOutputLstM(dump), 1);
  EXPECT_EQ(std::ftell(dump), 24);
  std::rewind(dump);
  Point3DArr read;
  EXPECT_EQ(read.FmInputLstM(dump, 5), 1);
  EXPECT_EQ(read.GetBoundM(), 5);
  EXPECT_EQ(read.GetAvailableNumM(), 5);
  EXPECT_EQ(read.GetItemPM(1)[2], 3);
  EXPECT_EQ(read.IsPntAvailableM(2), 30);
  EXPECT_EQ(read.FmInputLstM(dump, -3), 1);
  EXPECT_EQ(read.GetBoundM(), -3);
  EXPECT_EQ(read.AddItemM(xyz), 0);
  std::fclose(dump);
}

}  // namespace
