// Opening, closing, copying, layout settings and positioning of the stream.

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

#include "stream_fixture.h"
#include "zel/textfile/kw_iocl.h"

namespace zel::test {
namespace {

using StreamSetUp = StreamTest;
using StreamPosition = StreamTest;

TEST_F(StreamSetUp, startsWithoutStreamAndWithDefaults) {
  int version = 0;
  EXPECT_EQ(io_.GetVersionNumM(&version), 1);
  EXPECT_EQ(version, -INT_MAX);
  EXPECT_STREQ(io_.GetVersionStrM(), "");
  EXPECT_STREQ(io_.GetFileNameM(), "");
  EXPECT_EQ(io_.GetAutoNewLineM(), 1);
  EXPECT_EQ(io_.GetFileDescriptM(), nullptr);
}

TEST_F(StreamSetUp, withoutStreamReadsAndWritesAreToldAndTheRestIsQuiet) {
  int value = 7;
  float real = 0;
  char text[8];
  EXPECT_EQ(thrownBy([&] { io_.InputDM(&value); }), 107);
  EXPECT_EQ(thrownBy([&] { io_.InputGetsM(text, 8); }), 107);
  EXPECT_EQ(thrownBy([&] { io_.SkipLineM(); }), 107);
  EXPECT_EQ(thrownBy([&] { io_.OutputDM(&value); }), 108);
  EXPECT_EQ(thrownBy([&] { io_.OutputSM("x", 0, 0); }), 108);
  EXPECT_EQ(thrownBy([&] { io_.InputRsM(&real, 1); }), 108);
  io_.RewindM();
  io_.SeekM(3, SEEK_SET);
  EXPECT_EQ(io_.EofM() + io_.FinishedReadM() + io_.CloseM(), 3);
  EXPECT_EQ(io_.SearchStrM("x"), 0);
}

TEST_F(StreamSetUp, modeDecidesTheKindOfStream) {
  for (const char* mode : {"w", "r", "a+", "r+"}) {
    EXPECT_EQ(io_.OpenM(name(), mode), 1);
    EXPECT_EQ(io_.GetIoTypeM(), 0) << mode;
  }
  for (const char* mode : {"wb", "rb", "r+b"}) {
    io_.OpenM(name(), mode);
    EXPECT_EQ(io_.GetIoTypeM(), 1) << mode;
  }
}

TEST_F(StreamSetUp, refusedOpeningLeavesNoStream) {
  io_.OpenM(name(), "w");
  const std::string missing = dir_.file("missing");
  const std::string folder = dir_.path().string();
  const struct {
    const char *name, *mode;
  } rows[] = {{missing.c_str(), "r"}, {folder.c_str(), "r"}, {folder.c_str(), "rb"}, {"", "r"},
              {nullptr, "r"},         {name(), "?"},         {name(), nullptr}};
  for (const auto& row : rows) {
    EXPECT_EQ(thrownBy([&] { io_.OpenM(row.name, row.mode); }), 109);
    EXPECT_EQ(io_.GetFileDescriptM(), nullptr);
  }
}

TEST_F(StreamSetUp, backslashesPartDirectories) {
  const std::string file = dir_.path().string() + "\\new.zel";
  io_.OpenM(file.c_str(), "w");
  io_.CloseM();
  EXPECT_TRUE(std::filesystem::exists(dir_.file("new.zel")));
  char path[260];
  io_.GetFilePathM(path);
  EXPECT_EQ(path, dir_.path().string() + "\\");
  EXPECT_EQ(io_.GetFileNameM(), file);
}

TEST_F(StreamSetUp, longTextsAreCut) {
  const std::string longText(1000, 'x');
  io_.SetFileNameM(longText.c_str());
  io_.SetVersionStringM(longText.c_str());
  EXPECT_EQ(std::strlen(io_.GetFileNameM()), 259U);
  EXPECT_EQ(std::strlen(io_.GetVersionStrM()), 99U);
  EXPECT_EQ(io_.SetFmtM(3, longText.c_str()), 1);
  EXPECT_EQ(io_.SetFmtM(20, "x"), 1);
  EXPECT_EQ(io_.SetFmtM(-1, "x"), 1);
  EXPECT_EQ(io_.LoadDefaultFmtM(20), 1);
  EXPECT_EQ(io_.LoadDefaultFmtM(-2), 1);
}

TEST_F(StreamSetUp, separatorMustBeShort) {
  const std::string longest(48, ';');
  io_.SetFmtM(1, "%d");  // is not asked
  for (const std::string& kept : {std::string(", "), std::string(), longest}) {
    if (kept != ", ") {
      io_.SetSeparatorM(kept.c_str());
    }
    io_.SetSeparatorM((longest + ";").c_str());
    char format[110];
    io_.GetFmtStrM(format);
    EXPECT_EQ(format, "%10d" + kept + "%s");
  }
}

TEST_F(StreamSetUp, copySharesTheStreamWithoutOwningIt) {
  int one = 1;
  io_.OpenM(name(), "w");
  io_.SetSeparatorM(";");
  {
    KwIOCL copy(io_);
    EXPECT_EQ(copy.GetFileDescriptM(), io_.GetFileDescriptM());
    copy.OutputDM(&one, &one);
    KwIOCL assigned;
    assigned = copy;
    EXPECT_EQ(assigned.CloseM(), 1);
    EXPECT_EQ(assigned.GetFileDescriptM(), nullptr);
  }
  ASSERT_NE(io_.GetFileDescriptM(), nullptr);
  KwIOCL survivor(io_);
  const KwIOCL& self = io_;
  io_ = self;
  io_ = survivor;
  io_.OutputDM(&one);
  io_.CloseM();
  EXPECT_EQ(survivor.GetFileDescriptM(), nullptr);
  EXPECT_EQ(bytes(), "         1;         1\n         1\n");
}

TEST_F(StreamSetUp, adoptedStreamIsOwned) {
  FILE* opened = std::fopen(name(), "w+");
  std::fputs("1\n", opened);
  std::rewind(opened);
  EXPECT_EQ(io_.CreateIndirectlyM(opened, "name", "zel4.7", 47), 1);
  EXPECT_EQ(io_.CreateIndirectlyM(opened, "other", "zel4.7", 47), 1);
  EXPECT_STREQ(io_.GetFileNameM(), "other");
  EXPECT_STREQ(io_.GetVersionStrM(), "zel4.7");
  EXPECT_EQ(io_.EofM() + io_.FinishedReadM(), 2);
  EXPECT_EQ(io_.SearchStrM("1"), 0);
  int value = 0;
  io_.InputDM(&value);
  EXPECT_EQ(value, 1);
  io_.CreateIndirectlyM(nullptr, nullptr, nullptr, 0);
  EXPECT_EQ(io_.GetFileDescriptM(), nullptr);
}

TEST_F(StreamPosition, endIsSeenByPositionAndByPresentLength) {
  feed("");
  EXPECT_EQ(io_.EofM(), 1);
  feed("1\n2\n");
  EXPECT_EQ(io_.EofM() + io_.FinishedReadM(), 0);
  io_.SkipLineM();
  EXPECT_EQ(position(), 2);
  io_.SkipLineM();
  EXPECT_EQ(io_.EofM(), 1);
  io_.RewindM();
  EXPECT_EQ(io_.EofM(), 0);
  std::filesystem::resize_file(pathOf(name()), 0);
  EXPECT_EQ(io_.FinishedReadM(), 1);
  feed("1\n2\n");
  EXPECT_EQ(io_.SkipSomeLinesM(INT_MAX), 1);
  io_.SeekM(-2, SEEK_END);
  int value = 0;
  io_.InputDM(&value);
  EXPECT_EQ(value, 2);
}

TEST_F(StreamPosition, searchComparesWholeLines) {
  const std::string longLine(300, 'x');
  feed("a begin\r\nbegin\r\n" + longLine + "\n7\nbegin");
  EXPECT_EQ(io_.SearchStrM("begin"), 1);
  EXPECT_EQ(position(), 16);
  EXPECT_EQ(io_.SearchStrM("7"), 1);
  EXPECT_EQ(io_.SearchStrM("begin"), 1);
  EXPECT_EQ(io_.SearchStrM("begin"), 0);
  io_.RewindM();
  EXPECT_EQ(io_.SearchStrM("egin"), 0);
  io_.RewindM();
  EXPECT_EQ(io_.SearchStrM(nullptr), 0);  // no line is empty
}

TEST_F(StreamPosition, binaryLinesAreStringsWithACount) {
  const std::string longText(5000, 'x');
  io_.OpenM(name(), "wb");
  for (const char* text : {longText.c_str(), "", "begin"}) {
    io_.OutputsM(text);
  }
  io_.OpenM(name(), "rb");
  EXPECT_EQ(io_.SkipSomeLinesM(2), 1);
  EXPECT_EQ(io_.SearchStrM("begin"), 1);
  io_.RewindM();
  EXPECT_EQ(io_.SearchStrM("missing"), 0);
  io_.RewindM();
  EXPECT_EQ(io_.SearchStrM(nullptr), 1);
}

}  // namespace
}  // namespace zel::test
