// The tagged lists of the value arrays: golden bytes, settings, deliberate mismatches.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "list_files.h"
#include "support/array_values.h"
#include "zel/containers/int2d_arr.h"
#include "zel/containers/int4d_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/containers/point3d_arr.h"
#include "zel/containers/real_arr.h"

namespace zel::test {
namespace {

using ValueLists = ListTest;

const std::string kTwo = "         2, l_LIST_BEGIN\n         0, INDEX_OF_l_LIST\n";
const std::string kNext = "         1, INDEX_OF_l_LIST\n";

// The other arrays' forms stand in the format reference, whose test compares them.
TEST_F(ValueLists, textFormsByteForByte) {
  Int4DArr quads;
  const int four[] = {1, -2, 3, 4};
  quads.SetItemM(four, 1);
  EXPECT_EQ(listOf(quads), kTwo + "-2147483647, -2147483647, -2147483647, -2147483647\n" + kNext +
                               "         1,         -2,          3,          4\nl_LIST_END\n");
  auto flat = arrayOf<Point2DArr>({{0.5F, -1e10F}, {0.5F, -1e10F}});
  flat.DelItemM(0);
  EXPECT_EQ(listOf(flat), kTwo + " -9.99999984e+17,  -1.00000000e+10\n" + kNext +
                              "  5.00000000e-01,  -1.00000000e+10\nl_LIST_END\n");
  auto cancelled = arrayOf<Point3DArr>({{1, 2, 3}});
  ASSERT_EQ(cancelled.CancelLastItemM(), -1);
  EXPECT_EQ(listOf(cancelled), "         0, l_LIST_BEGIN\nl_LIST_END\n");
}

TEST_F(ValueLists, pairsAreWrittenBinaryOnTextStreamsToo) {
  auto pairs = arrayOf<Int2DArr>({{1, 2}});
  const std::string bytes("\1\0\0\0\1\0\0\0\1\0\0\0\2\0\0\0", 16);
  EXPECT_EQ(listOf(pairs), bytes);
  EXPECT_EQ(read(&pairs, bytes), 107);
  EXPECT_EQ(read(&pairs, kTwo + "5,6\n" + kNext + "-2147483647, 3\nl_LIST_END\n"), 0);
  EXPECT_EQ(valuesOf(pairs), (std::vector<Value<Int2DArr>>{{5, 6}}));
}

TEST_F(ValueLists, settingsOfTheStreamAreUsedAndRestored) {
  const std::string text = written([](KwIOCL& io) {
    io.SetAutoNewLineM(0);
    io.SetSeparatorM(" %; ");
    io.SetFmtM(1, "<%d>");
    io.SetFmtM(3, "'%s'");
    arrayOf<IntArr>({7}).FmOutputZelLstM(&io, nullptr);
    EXPECT_EQ(io.GetAutoNewLineM(), 0);
  });
  EXPECT_EQ(text,
            "'         1 %; _LIST_BEGIN'\n'         0 %; INDEX_OF__LIST'\n<7>\n'_LIST_END'\n");
}

// The formats of tuples bring their own commas; readers look for the separator all the same.
TEST_F(ValueLists, separatorsOfTheCallersReachSomeListsOnly) {
  auto points = arrayOf<Point3DArr>({{1, 2, 3}});
  auto quads = arrayOf<Int4DArr>({{1, 2, 3, 4}});
  io_.OpenM(name(), "w+");
  io_.SetSeparatorM(" | ");
  points.FmOutputZelLstM(&io_, "l");
  quads.FmOutputZelLstM(&io_, "l");
  io_.RewindM();
  EXPECT_EQ(bytes(),
            "         1 | l_LIST_BEGIN\n         0 | INDEX_OF_l_LIST\n"
            "  1.00000000e+00 |   2.00000000e+00 |   3.00000000e+00\nl_LIST_END\n"
            "         1 | l_LIST_BEGIN\n         0 | INDEX_OF_l_LIST\n"
            "         1,          2,          3,          4\nl_LIST_END\n");
  points.DelAllM();
  points.FmInputZelLstM(&io_);
  EXPECT_EQ(points.GetItemPM(0)[2], 3);
  EXPECT_EQ(thrownBy([&] { quads.FmInputZelLstM(&io_); }), 107);
}

TEST_F(ValueLists, listsFollowEachOtherAndLandOnTop) {
  auto ints = arrayOf<IntArr>({-2147483647, -2147483647, 3});
  auto reals = arrayOf<RealArr>({1.5F});
  io_.OpenM(name(), "w+");
  io_.SetAutoNewLineM(0);
  ints.FmOutputZelLstM(&io_, "a");
  IntArr().FmOutputZelLstM(&io_, "b");
  reals.FmOutputZelLstM(&io_, "c");
  io_.RewindM();
  IntArr target;
  target.SetItemM(9, 0);
  target.SetItemM(9, 7);
  target.FmInputZelLstM(&io_);
  target.FmInputZelLstM(&io_);
  reals.DelAllM();
  reals.FmInputZelLstM(&io_);
  EXPECT_EQ(io_.FinishedReadM(), 1);
  EXPECT_EQ(io_.GetAutoNewLineM(), 0);
  EXPECT_EQ(countsOf(target), (Counts{.bound = 8, .live = 3, .length = 18}));
  EXPECT_EQ(target[2] * 100 + target[0] * 10 + target[7], 399);
  EXPECT_EQ(valuesOf(reals), std::vector<float>{1.5F});
}

TEST_F(ValueLists, readersLeaveOutTheirMarks) {
  Point3DArr points;
  const std::string hole = "-999999984306749440";
  EXPECT_EQ(read(&points, kTwo + hole + ", 1, 1\n" + kNext + "1, 1, " + hole + "\nEND\n"), 0);
  EXPECT_EQ(countsOf(points), (Counts{.bound = 2, .live = 1, .length = 4}));
  EXPECT_EQ(read(&points, kTwo + "1, " + hole + ", 1\n" + kNext + "1, 1, 1\nEND\n"), 0);
  EXPECT_EQ(points.IsPntAvailableM(0), 30);

  Point2DArr flat;
  EXPECT_EQ(read(&flat, kTwo + "-2147483648, 1\n" + kNext + hole + ", 1\nEND\n"), 0);
  EXPECT_EQ(flat.GetBoundM(), 2);
  EXPECT_EQ(flat.GetAvailableNumM(), 1);  // its own hole comes back as a counted entry
}

TEST_F(ValueLists, denseCountsAreTakenAsRead) {
  auto reals = arrayOf<RealArr>({0, 1, 2, 3, 4, 5, 6, 7, 8});
  EXPECT_EQ(read(&reals, "2, x\r\n-77\r\n5\r\n6\r\nend"), 0);
  EXPECT_EQ(countsOf(reals), (Counts{.bound = 2, .live = -77, .length = 15}));
  EXPECT_EQ(valuesOf(reals), (std::vector<float>{5, 6}));
}

TEST_F(ValueLists, failureKeepsWhatWasReadAndTheLineSetting) {
  IntArr ints;
  io_.SetAutoNewLineM(0);
  EXPECT_EQ(read(&ints, kTwo + "5\n" + kNext + "x\n"), 107);
  EXPECT_EQ(ints[0], 5);
  EXPECT_EQ(io_.GetAutoNewLineM(), 1);
  io_.CloseM();
  EXPECT_EQ(thrownBy([&] { ints.FmInputZelLstM(&io_); }), 107);
  EXPECT_EQ(thrownBy([&] { ints.FmOutputZelLstM(&io_, "l"); }), 108);
  if (!std::filesystem::exists("/dev/full")) {
    GTEST_SKIP() << "no device that is always full";
  }
  io_.OpenM("/dev/full", "w");
  for (int i = 0; i < 1000; ++i) {
    ints.AddItemM(i);
  }
  EXPECT_EQ(thrownBy([&] { ints.FmOutputZelLstM(&io_, "l"); }), 108);
}

TEST_F(ValueLists, hostileCountsAndIndices) {
  const auto expectRefused = [&](auto array, const std::string& content, const char* mode) {
    EXPECT_EQ(read(&array, content, mode), 107) << content;
    EXPECT_LE(array.GetLengthM(), 15);
  };
  for (const std::string text :
       {"-1, b", "2000000000, b", "99999999999, b", "", "x", "1, b\n-1, i\n5",
        "1, b\n2000000000, i\n5", "1, b\n0, i\n", "3, b\n0, i\n5\n", "1, b\n0, i\n99999999999\n"}) {
    expectRefused(IntArr(), text + "\nl_LIST_END\n", "r");
  }
  for (const std::string text : {"-1, b\n0", "2000000000, b\n0", "3, b\nx", "3, b\n3\n1\n2\n"}) {
    expectRefused(RealArr(), text + "\nl_LIST_END\n", "r");
  }
  for (const std::string& binary :
       {std::string("\xFF\xFF\xFF\xFF\0\0\0\0", 8), std::string("\2\0\0\0\2\0\0\0\0\0\0\0", 12),
        std::string("\xFF\xFF\xFF\x7F\0\0\0\0\0\0\0\0", 12), std::string("\2\0\0", 3)}) {
    expectRefused(Point3DArr(), binary, "rb");
  }
}

TEST_F(ValueLists, pointDumpIsTheBareCoordinates) {
  FILE* dump = std::fopen(name(), "w+b");
  EXPECT_EQ(arrayOf<Point3DArr>({{1, 2, 3}, {4, 5, 6}}).FmOutputLstM(dump), 1);
  EXPECT_EQ(std::ftell(dump), 24);
  std::rewind(dump);
  Point3DArr points;
  EXPECT_EQ(points.FmInputLstM(dump, 5), 1);
  EXPECT_EQ(points.GetBoundM(), 5);
  EXPECT_EQ(points.GetAvailableNumM(), 5);
  EXPECT_EQ(points.GetItemPM(1)[2], 6);
  EXPECT_EQ(points.IsPntAvailableM(2), 30);
  EXPECT_EQ(points.FmInputLstM(dump, -3), 1);
  EXPECT_EQ(points.GetBoundM(), -3);
  EXPECT_EQ(points.AddPointM(points.getCurrentItemPrtConstM()[0]), 0);
  std::fclose(dump);
}

}  // namespace
}  // namespace zel::test
