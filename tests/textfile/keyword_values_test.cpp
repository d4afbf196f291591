// The helpers for plain text streams, the plain lists of three arrays, versions and messages.

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "plain_file.h"
#include "support/array_values.h"
#include "support/recording_platform.h"
#include "support/shown_message.h"
#include "support/thrown_by.h"
#include "zel/containers/int2d_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/core/element_base.h"
#include "zel/textfile/file_version.h"
#include "zel/textfile/keyword_lists.h"
#include "zel/textfile/keyword_values.h"
#include "zel/textfile/number_parse.h"

namespace zel::test {
namespace {

TEST(KeywordScan, storesOnlyWhatConverts) {
  char c = 'x', text[8] = "";
  int i[2] = {};
  float r[4] = {};
  unsigned char pixel[4] = {9, 9, 9, 9};
  const PlainFile file("65 abc 7 1 2 .5 1.5 -2 1 2 3 4 5 6 7 8 9 256 1 2 3 1 2 x");
  EXPECT_EQ(slFscanfC(file, "%d", &c), 1);
  EXPECT_EQ(slFscanfC(file, "%d", &c), 0);
  EXPECT_EQ(c, 'A');
  EXPECT_EQ(slFscanfS(file, "%7s", text), 1);
  EXPECT_STREQ(text, "abc");
  EXPECT_EQ(slFscanfD(file, "%d", i), 1);
  EXPECT_EQ(slFscanfInt2D(file, "%d %d", i), 1);
  EXPECT_EQ(i[0] * 10 + i[1], 12);
  EXPECT_EQ(slFscanfR(file, "%f", r), 1);
  EXPECT_EQ(slFscanfPoint2D(file, "%f %f", r), 1);
  EXPECT_EQ(r[0] * r[1], -3);
  EXPECT_EQ(slFscanfPoint3D(file, "%f %f %f", r), 1);
  EXPECT_EQ(slFscanfPoint4D(file, "%f %f %f %f", r), 1);
  EXPECT_EQ(r[3], 7);
  EXPECT_EQ(slFscanfTexPixel4D(file, "%d %d", pixel), 0);
  EXPECT_EQ(pixel[0], 9);
  EXPECT_EQ(slFscanfTexPixel4D(file, "%d %d %d", pixel), 1);
  EXPECT_EQ(std::memcmp(pixel, "\x00\x01\x02\xFF", 4), 0);
  EXPECT_EQ(slFscanfPixel4D(file, "%f %f %f %f", r), 0);
  EXPECT_EQ(r[2], 2);
  EXPECT_EQ(slFscanfD(nullptr, "%d", i), 0);
  EXPECT_EQ(slFscanfD(file, nullptr, i), 0);
}

TEST(KeywordPrint, usesTheCallersFormat) {
  const int i[] = {1, 2};
  const float r[] = {0.5F, 1, 2, 3};
  const unsigned char p[] = {0, 1, 254, 255};
  const PlainFile file;
  EXPECT_EQ(slFprintfC(file, "%d ", -56), 1);
  EXPECT_EQ(slFprintfD(file, "%03d ", 7), 1);
  EXPECT_EQ(slFprintfR(file, "%.2f ", 0.25F), 1);
  EXPECT_EQ(slFprintfS(file, "<%s>", "s"), 1);
  EXPECT_EQ(slFprintfInt2D(file, "%d/%d ", i), 1);
  EXPECT_EQ(slFprintfPoint2D(file, "%g,%g ", r), 1);
  EXPECT_EQ(slFprintfPoint3D(file, "%g,%g,%g ", r), 1);
  EXPECT_EQ(slFprintfPoint4D(file, "%g,%g,%g,%g ", r), 1);
  EXPECT_EQ(slFprintfPixel4D(file, "%g%g%g%g ", r), 1);
  EXPECT_EQ(slFprintfTexPixel4D(file, "%u %u %u %u", p), 1);
  EXPECT_EQ(file.text(), "-56 007 0.25 <s>1/2 0.5,1 0.5,1,2 0.5,1,2,3 0.5123 0 1 254 255");
  EXPECT_EQ(slFprintfD(nullptr, "%d", 1), 0);
  if (FILE* full = std::fopen("/dev/full", "w")) {
    std::setbuf(full, nullptr);
    EXPECT_EQ(slFprintfD(full, "%d", 1), 0);
    std::fclose(full);
  }
}

TEST(KeywordLines, linesAreCutToTheBuffer) {
  const PlainFile file("sevenly\r\nab\r\nskip me\nlast");
  for (const std::string line : {"seve", "ab", "#", "last", ""}) {
    char text[5] = "#";
    EXPECT_EQ(line == "#" ? slSkipLine(file) : slFgets(file, text, 5), 1);
    EXPECT_EQ(text, line);
  }
  EXPECT_EQ(slSkipLine(file), 0);
}

TEST(KeywordLines, searchComparesWholeWords) {
  const PlainFile file("a begin beg  \n begin\n \t next");
  EXPECT_EQ(slSearchStrM(file, "beg"), 1);
  EXPECT_EQ(slSearchStrM(file, "begin"), 1);
  EXPECT_EQ(std::fgetc(file), 'n');
  for (const char* missing : {"begin", "nex", ""}) {
    EXPECT_EQ(slSearchStrM(file, missing), 0);
    std::rewind(file);
  }
  EXPECT_EQ(slSearchStrM(file, "next"), 1);
}

TEST(KeywordLists, goldenBytes) {
  IntArr ints;
  ints.SetItemM(-5, 1);
  const PlainFile a, b;
  EXPECT_EQ(slFprintfIntArr(a, ints, "l"), 1);
  EXPECT_EQ(a.text(),
            "         2,  l_LIST_BEGIN\n         0,  INDEX_OF_l_LIST\n-2147483647\n"
            "         1,  INDEX_OF_l_LIST\n        -5\nl_LIST_END\n");
  slFprintfInt2dArr(b, arrayOf<Int2DArr>({{1, -2}}), "l");
  EXPECT_EQ(b.text(),
            "         1,  l_LIST_BEGIN\n         0,  INDEX_OF_l_LIST\n1,  -2\nl_LIST_END\n");
}

TEST(KeywordLists, readersEmptyFirstAndLeaveOutTheirMarks) {
  IntArr ints;
  ints.SetItemM(9, 9);
  const PlainFile a("3,  b\n0,  i\n5\n1,  i\n-2147483647\n2,  i\n7\nend\n 1,  b\n4,  i\n8\nend\n");
  EXPECT_EQ(slFscanfIntArr(a, &ints), 1);
  EXPECT_EQ(valuesOf(ints), (std::vector<int>{5, -2147483647, 7}));
  EXPECT_EQ(ints.GetAvailableNumM(), 2);
  slFscanfIntArr(a, &ints);
  EXPECT_EQ(ints[4], 8);
  EXPECT_EQ(ints.GetAvailableNumM(), 1);

  Int2DArr pairs;
  const PlainFile b("2, b\r\n0, i\r\n-2147483647, 1\r\n1, i\r\n-2147483647, -2147483647\r\nend");
  slFscanfInt2dArr(b, &pairs);
  EXPECT_EQ(valuesOf(pairs), (std::vector<Value<Int2DArr>>{{-2147483647, 1}}));

  Point2DArr points;
  const PlainFile c("2, b\n0, i\n-1e18, 1\n1, i\n-1e18, -1e18\nend");
  slFscanfPoint2DArr(c, &points);
  EXPECT_EQ(valuesOf(points), (std::vector<Value<Point2DArr>>{{-1e18F, 1}}));
}

TEST(KeywordLists, hostileFilesEndQuietly) {
  for (const char* text :
       {"", "x", "2000000000, b\n", "2000000000, b\n0, i\n5\n", "1, b\n-1, i\n5\nend\n",
        "1, b\n2000000000, i\n5\nend\n", "-5, b\nend\n", "1, b\n0 i\n", "99999999999, b"}) {
    IntArr ints;
    Point2DArr points;
    EXPECT_EQ(slFscanfIntArr(PlainFile(text), &ints), 1);
    EXPECT_EQ(slFscanfPoint2DArr(PlainFile(text), &points), 1);
    EXPECT_LE(ints.GetLengthM(), 15) << text;
    EXPECT_EQ(points.GetBoundM(), 0) << text;
  }
}

TEST(KeywordLists, tenColumnsAreReadOfANumber) {
  IntArr ints;
  slFscanfIntArr(PlainFile("1, b\n00000000001, i\n5\nend\n"), &ints);
  EXPECT_EQ(ints.GetBoundM(), 0);  // "0000000000" and the word "1,"
}

TEST(KeywordLists, nullStreamsCountAsEmpty) {
  FILE* const none = nullptr;
  char line[4] = "old";
  EXPECT_EQ(slFgets(none, line, 4), 1);
  EXPECT_STREQ(line, "");
  EXPECT_EQ(slSkipLine(none) + slSearchStrM(none, "x"), 0);
  auto ints = arrayOf<IntArr>({1});
  EXPECT_EQ(slFprintfIntArr(none, ints, "l"), 1);
  EXPECT_EQ(slFprintfPoint2DArr(none, arrayOf<Point2DArr>({{1, 2}}), "l"), 1);
  EXPECT_EQ(slFscanfIntArr(none, &ints), 1);
  EXPECT_EQ(ints.GetBoundM(), 0);
  KwBaseCL element(31);
  EXPECT_EQ(element.FmWriteZelFileM(none) + element.FmReadZelFileM(none), 2);
  EXPECT_EQ(element.IsAvailableM(), 31);
}

TEST(ElementBase, plainRecordIsTheTagOnALine) {
  const PlainFile file, source("32 rest 1\nx 5\n33");
  KwBaseCL element(31);
  EXPECT_EQ(element.FmWriteZelFileM(file), 1);
  EXPECT_EQ(file.text(), "   31\n");
  for (const int tag : {32, 32, 33}) {
    EXPECT_EQ(element.FmReadZelFileM(source), 1);
    EXPECT_EQ(element.IsAvailableM(), tag);
  }
}

TEST(FileVersion, tagsAreComparedByteByByte) {
  EXPECT_EQ(slGetFileVersion("zel1.0"), 10);
  EXPECT_EQ(slGetFileVersion("zel3.9"), 39);
  EXPECT_EQ(slGetFileVersion("zel4.7"), 47);
  EXPECT_EQ(slGetFileVersion("zel4.008"), 4008);
  EXPECT_EQ(slGetFileVersion("MAC1.02"), 102);
  for (const char* tag : {"zel4.08", "ZEL4.0", "zel2.0", "zel4.8", "zel4.", "zel4.00", "",
                          " zel4.0", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(thrownBy([&] { static_cast<void>(slGetFileVersion(tag)); }), 111);
  }
}

TEST(FileMessage, reachesThePlatformInGbk) {
  RecordingPlatform desktop;
  EXPECT_EQ(slFileMessage(109, "a.zel"), 1);
  EXPECT_EQ(slFileMessage(109, nullptr), 1);
  const std::string text = "\xCE\xC4\xBC\xFE\xB4\xF2\xBF\xAA\xCA\xA7\xB0\xDC";
  EXPECT_EQ(desktop.messages, (std::vector<std::string>{text + ": a.zel", text}));
}

TEST(FileMessage, isShownInUtf8) {
  const struct {
    int code;
    const char* text;
  } rows[] = {{107, "文件读取失败"},
              {108, "文件保存失败"},
              {109, "文件打开失败"},
              {110, "文件类型不对"},
              {111, "文件版本不对"},
              {112, "纹理文件打开失败"},
              {113, "纹理文件类型不对"},
              {114, "纹理文件版本不对"},
              {142, "数据错误"},
              {115, "未知错误"},
              {0, "未知错误"}};
  for (const auto& row : rows) {
    EXPECT_EQ(shownMessage([&] { slFileMessage(row.code, "модель.zel"); }),
              std::string(row.text) + ": модель.zel\n");
  }
}

TEST(NumberParse, fixedWidthIntegers) {
  const struct {
    const char* text;
    int n, result, value;
  } rows[] = {{"-12", 3, 1, -12},
              {"+12x", 3, 1, 12},
              {"-", 1, 1, 0},
              {"+", 1, 1, 0},
              {"12x", 3, 0, 99},
              {"1", 0, 0, 99},
              {"1", 2, 0, 99},
              {"-+", 2, 0, 99},
              {nullptr, 1, 0, 99},
              {"4294967297", 10, 1, 1},
              {"-2147483648", 11, 1, INT32_MIN}};
  for (const auto& row : rows) {
    int value = 99;
    EXPECT_EQ(slStrToInt(row.n, row.text, &value), row.result) << row.n << " of " << row.text;
    EXPECT_EQ(value, row.value);
  }
}

TEST(NumberParse, wholeIntegers) {
  const struct {
    const char* text;
    int result, value;
  } rows[] = {{" \t-7\t ", 1, -7}, {"00", 1, 0},   {"99999999999", 1, INT32_MAX},
              {"", 0, 99},         {"x", 0, 99},   {"1x", 0, 99},
              {"1 2", 0, 99},      {"-0", 0, 99},  {"+0", 0, 99},
              {"1.0", 0, 99},      {"- 1", 0, 99}, {"\n1", 0, 99}};
  for (const auto& row : rows) {
    int value = 99;
    EXPECT_EQ(slSimpleIntParse(row.text, &value), row.result) << row.text;
    EXPECT_EQ(value, row.value);
  }
}

TEST(NumberParse, wholeReals) {
  const struct {
    const char* text;
    int result;
    double value;
  } rows[] = {{"1.5", 1, 1.5}, {" 1e3- \t", 1, 1000}, {"1.5x", 0, 1.5}, {"1--", 0, 1},
              {"-", 1, 0},     {".0", 0, 0},          {"+0", 0, 0},     {"-0", 1, 0},
              {"0x1", 0, 0},   {"inf", 0, 0},         {"nan", 0, 0},    {"", 0, 0},
              {"1,5", 0, 1},   {"-abc", 0, 0}};
  for (const auto& row : rows) {
    double value = 99;
    EXPECT_EQ(slSimpleFloatParse(row.text, &value), row.result) << row.text;
    EXPECT_EQ(value, row.value) << row.text;
    float narrow = 99;
    EXPECT_EQ(slSimpleFloatParseF(row.text, &narrow), row.result);
    EXPECT_EQ(narrow, row.result == 1 ? static_cast<float>(row.value) : 0.0F);
  }
}

}  // namespace
}  // namespace zel::test
