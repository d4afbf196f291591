// Opening, closing, copying, layout settings and positioning of the stream.

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <memory>
#include <string>

#include "stream_fixture.h"
#include "zel/textfile/kw_iocl.h"

namespace {

using zel::test::StreamFile;
using zel::test::TempDir;
using zel::test::thrownBy;
using zel::test::writeFile;

TEST(StreamSetUp, startsWithoutStreamAndWithDefaults) {
  KwIOCL io;
  int version = 0;
  EXPECT_EQ(io.GetVersionNumM(&version), 1);
  EXPECT_EQ(version, -INT_MAX);
  EXPECT_STREQ(io.GetVersionStrM(), "");
  EXPECT_STREQ(io.GetFileNameM(), "");
  EXPECT_EQ(io.GetIoTypeM(), 0);
  EXPECT_EQ(io.GetAutoNewLineM(), 1);
  EXPECT_EQ(io.GetFileDescriptM(), nullptr);
  char format[110];
  io.GetFmtStrM(format);
  EXPECT_STREQ(format, "%10d, %s");
}

TEST(StreamSetUp, withoutStreamReadsAndWritesAreToldAndTheRestIsQuiet) {
  KwIOCL io;
  int value = 7;
  float real = 0;
  char text[8];
  EXPECT_EQ(thrownBy([&] { io.InputDM(&value); }), 107);
  EXPECT_EQ(thrownBy([&] { io.InputGetsM(text, 8); }), 107);
  EXPECT_EQ(thrownBy([&] { io.SkipLineM(); }), 107);
  EXPECT_EQ(thrownBy([&] { io.OutputDM(&value); }), 108);
  EXPECT_EQ(thrownBy([&] { io.OutputSM("x", 0, 0); }), 108);
  EXPECT_EQ(thrownBy([&] { io.InputRsM(&real, 1); }), 108);
  io.RewindM();
  io.SeekM(3, SEEK_SET);
  EXPECT_EQ(io.EofM(), 1);
  EXPECT_EQ(io.FinishedReadM(), 1);
  EXPECT_EQ(io.SearchStrM("x"), 0);
  EXPECT_EQ(io.CloseM(), 1);
}

TEST(StreamSetUp, modeDecidesTheKindOfStream) {
  StreamFile file;
  KwIOCL io;
  for (const char* mode : {"w", "r", "a+", "r+"}) {
    EXPECT_EQ(io.OpenM(file.name(), mode), 1);
    EXPECT_EQ(io.GetIoTypeM(), 0) << mode;
  }
  for (const char* mode : {"wb", "rb", "r+b"}) {
    io.OpenM(file.name(), mode);
    EXPECT_EQ(io.GetIoTypeM(), 1) << mode;
  }
}

TEST(StreamSetUp, refusedOpeningLeavesNoStream) {
  StreamFile file;
  const TempDir dir;
  KwIOCL io;
  io.OpenM(file.name(), "w");
  const std::string missing = dir.file("missing");
  const std::string folder = dir.path().string();
  for (const char* name :
       {missing.c_str(), folder.c_str(), "", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(thrownBy([&] { io.OpenM(name, "r"); }), 109);
    EXPECT_EQ(io.GetFileDescriptM(), nullptr);
  }
  EXPECT_EQ(thrownBy([&] { io.OpenM(folder.c_str(), "rb"); }), 109);
  EXPECT_EQ(thrownBy([&] { io.OpenM(file.name(), "?"); }), 109);
  EXPECT_EQ(thrownBy([&] { io.OpenM(file.name(), nullptr); }), 109);
}

TEST(StreamSetUp, backslashesPartDirectories) {
  const TempDir dir;
  KwIOCL io;
  const std::string name = dir.path().string() + "\\new.zel";
  io.OpenM(name.c_str(), "w");
  io.CloseM();
  EXPECT_TRUE(std::filesystem::exists(dir.file("new.zel")));
  char path[260];
  io.GetFilePathM(path);
  EXPECT_EQ(path, dir.path().string() + "\\");
  EXPECT_EQ(io.GetFileNameM(), name);
}

TEST(StreamSetUp, longTextsAreCut) {
  KwIOCL io;
  const std::string longText(1000, 'x');
  io.SetFileNameM(longText.c_str());
  io.SetVersionStringM(longText.c_str());
  EXPECT_EQ(std::strlen(io.GetFileNameM()), 259U);
  EXPECT_EQ(std::strlen(io.GetVersionStrM()), 99U);
  EXPECT_EQ(io.SetFmtM(3, longText.c_str()), 1);
  EXPECT_EQ(io.SetFmtM(20, "x"), 1);
  EXPECT_EQ(io.SetFmtM(-1, "x"), 1);
  EXPECT_EQ(io.LoadDefaultFmtM(20), 1);
  EXPECT_EQ(io.LoadDefaultFmtM(-2), 1);
}

TEST(StreamSetUp, separatorMustBeShort) {
  KwIOCL io;
  char format[110];
  io.SetSeparatorM(std::string(49, ';').c_str());
  io.GetFmtStrM(format);
  EXPECT_STREQ(format, "%10d, %s");
  io.SetSeparatorM("");
  io.SetFmtM(1, "%d");
  io.GetFmtStrM(format);
  EXPECT_STREQ(format, "%10d%s");
  io.SetSeparatorM(std::string(48, ';').c_str());
  io.GetFmtStrM(format);
  EXPECT_EQ(std::strlen(format), 4 + 48 + 2U);
}

TEST(StreamSetUp, copySharesTheStreamWithoutOwningIt) {
  StreamFile file;
  int one = 1;
  KwIOCL io;
  io.OpenM(file.name(), "w");
  io.SetSeparatorM(";");
  {
    KwIOCL copy(io);
    EXPECT_EQ(copy.GetFileDescriptM(), io.GetFileDescriptM());
    copy.OutputDM(&one, &one);
    KwIOCL assigned;
    assigned = copy;
    EXPECT_EQ(assigned.CloseM(), 1);
    EXPECT_EQ(assigned.GetFileDescriptM(), nullptr);
  }
  ASSERT_NE(io.GetFileDescriptM(), nullptr);
  KwIOCL survivor(io);
  const KwIOCL& self = io;
  io = self;
  io = survivor;
  io.OutputDM(&one);
  io.CloseM();
  EXPECT_EQ(survivor.GetFileDescriptM(), nullptr);
  EXPECT_EQ(file.bytes(), "         1;         1\n         1\n");
}

TEST(StreamSetUp, adoptedStreamIsOwned) {
  StreamFile file;
  FILE* opened = std::fopen(file.name(), "w+");
  std::fputs("1\n", opened);
  std::rewind(opened);
  KwIOCL io;
  EXPECT_EQ(io.CreateIndirectlyM(opened, "name", "zel4.7", 47), 1);
  EXPECT_EQ(io.CreateIndirectlyM(opened, "other", "zel4.7", 47), 1);
  EXPECT_STREQ(io.GetFileNameM(), "other");
  EXPECT_STREQ(io.GetVersionStrM(), "zel4.7");
  EXPECT_EQ(io.EofM(), 1);
  EXPECT_EQ(io.FinishedReadM(), 1);
  EXPECT_EQ(io.SearchStrM("1"), 0);
  int value = 0;
  io.InputDM(&value);
  EXPECT_EQ(value, 1);
  io.CreateIndirectlyM(nullptr, nullptr, nullptr, 0);
  EXPECT_EQ(io.GetFileDescriptM(), nullptr);
}

TEST(StreamPosition, endIsSeenByPositionAndByPresentLength) {
  StreamFile file;
  KwIOCL io;
  file.feed(io, "");
  EXPECT_EQ(io.EofM(), 1);
  file.feed(io, "1\n2\n");
  EXPECT_EQ(io.EofM(), 0);
  EXPECT_EQ(io.FinishedReadM(), 0);
  io.SkipLineM();
  EXPECT_EQ(std::ftell(io.GetFileDescriptM()), 2);
  io.SkipLineM();
  EXPECT_EQ(io.EofM(), 1);
  io.RewindM();
  EXPECT_EQ(io.EofM(), 0);
  std::filesystem::resize_file(zel::test::pathOf(file.name()), 0);
  EXPECT_EQ(io.FinishedReadM(), 1);
  file.feed(io, "1\n2\n");
  EXPECT_EQ(io.SkipSomeLinesM(INT_MAX), 1);
  io.SeekM(-2, SEEK_END);
  int value = 0;
  io.InputDM(&value);
  EXPECT_EQ(value, 2);
}

TEST(StreamPosition, searchComparesWholeLines) {
  StreamFile file;
  KwIOCL io;
  const std::string longLine(300, 'x');
  file.feed(io, "a begin\r\nbegin\r\n" + longLine + "\n7\nbegin");
  EXPECT_EQ(io.SearchStrM("begin"), 1);
  EXPECT_EQ(std::ftell(io.GetFileDescriptM()), 16);
  EXPECT_EQ(io.SearchStrM("7"), 1);
  EXPECT_EQ(io.SearchStrM("begin"), 1);
  EXPECT_EQ(io.SearchStrM("begin"), 0);
  io.RewindM();
  EXPECT_EQ(io.SearchStrM("egin"), 0);
  io.RewindM();
  EXPECT_EQ(io.SearchStrM(nullptr), 0);  // no line is empty
}

TEST(StreamPosition, binaryLinesAreStringsWithACount) {
  StreamFile file;
  KwIOCL io;
  const std::string longText(5000, 'x');
  io.OpenM(file.name(), "wb");
  for (const char* text : {longText.c_str(), "", "begin"}) {
    io.OutputsM(text);
  }
  io.OpenM(file.name(), "rb");
  EXPECT_EQ(io.SkipSomeLinesM(2), 1);
  EXPECT_EQ(io.SearchStrM("begin"), 1);
  io.RewindM();
  EXPECT_EQ(io.SearchStrM("missing"), 0);
  io.RewindM();
  EXPECT_EQ(io.SearchStrM(nullptr), 1);
}

}  // namespace
