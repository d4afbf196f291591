// Writes that fail are told by CloseM() at the latest, whatever happens in between.

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "faults/faulty_stream.h"
#include "support/temp_dir.h"
#include "support/thrown_by.h"
#include "zel/containers/int_arr.h"
#include "zel/textfile/keyword_lists.h"
#include "zel/textfile/kw_iocl.h"

namespace zel::test {
namespace {

using Kind = Fault::Kind;

constexpr Fault kLoss{Kind::kError, 0};

/// A stream whose first physical write fails, with something in its buffer.
std::FILE* losing(FaultyBytes& bytes, const char* mode = "w") {
  std::FILE* file = bytes.open(mode, true);
  std::fputs("buffered", file);
  return file;
}

TEST(LostWrites, areToldByCloseWhateverComesBetween) {
  const std::function<void(KwIOCL&)> between[] = {
      [](KwIOCL& io) { io.RewindM(); },
      [](KwIOCL& io) { io.SeekM(0, SEEK_SET); },
      [](KwIOCL& io) { io.SeekM(0, SEEK_END), io.RewindM(), io.RewindM(); },
      [](KwIOCL& io) { static_cast<void>(io.FinishedReadM()); },
      [](KwIOCL& io) { std::fflush(io.GetFileDescriptM()); },
      [](KwIOCL& io) { std::fseek(io.GetFileDescriptM(), 0, SEEK_SET); },
      [](KwIOCL& io) { io.OutputsM("more"), io.RewindM(); },
      [](KwIOCL& io) { KwIOCL(io).RewindM(); },
  };
  for (const char* mode : {"w", "w+"}) {
    for (const auto& work : between) {
      FaultyBytes bytes(kLoss);
      KwIOCL io;
      io.CreateIndirectlyM(losing(bytes, mode), "", "", 0);
      work(io);
      EXPECT_EQ(thrownBy([&] { io.CloseM(); }), 108) << mode << " " << &work - between;
      EXPECT_EQ(io.CloseM(), 1);
    }
  }
}

TEST(LostWrites, ofTheOldStreamAreToldWithTheNewOneInHand) {
  const TempDir dir;
  const std::string path = dir.file("new");
  writeFile(path, "4711\n");
  FaultyBytes newBytes;
  std::FILE* newFile = newBytes.open("w", true);
  KwIOCL other;
  other.OpenM(path.c_str(), "r");
  struct Taking {
    const char* name;
    std::function<void(KwIOCL&)> take;
    std::FILE* expected;
  };
  const Taking takings[] = {
      {"open", [&](KwIOCL& io) { io.OpenM(path.c_str(), "r"); }, nullptr},
      {"create", [&](KwIOCL& io) { io.CreateIndirectlyM(newFile, "n", "zel4.7", 47); }, newFile},
      {"assign", [&](KwIOCL& io) { io = other; }, other.GetFileDescriptM()},
  };
  for (const Taking& taking : takings) {
    FaultyBytes bytes(kLoss);
    KwIOCL io;
    io.CreateIndirectlyM(losing(bytes), "old", "zel4.6", 46);
    EXPECT_EQ(thrownBy([&] { taking.take(io); }), 108) << taking.name;
    EXPECT_NE(io.GetFileDescriptM(), nullptr) << taking.name;
    EXPECT_TRUE(taking.expected == nullptr || io.GetFileDescriptM() == taking.expected);
    EXPECT_STRNE(io.GetFileNameM(), "old") << taking.name;
    EXPECT_EQ(thrownBy([&] { io.CloseM(); }), 0) << taking.name;
  }
}

TEST(LostWrites, areToldLaterWhenNoNewStreamIsFound) {
  FaultyBytes bytes(kLoss);
  KwIOCL io;
  io.CreateIndirectlyM(losing(bytes), "", "", 0);
  EXPECT_EQ(thrownBy([&] { io.OpenM("/no folder/no file", "r"); }), 109);
  EXPECT_EQ(thrownBy([&] { io.CloseM(); }), 108);
  EXPECT_EQ(io.CloseM(), 1);
}

// Whatever its reads came to: the failure of a read is no lost write.
TEST(LostWrites, areNotThoseOfStreamsThatWereOnlyRead) {
  for (const char* mode : {"r", "r+"}) {
    for (const bool canSeek : {true, false}) {
      for (const int at : {0, 1, 99}) {
        FaultyBytes bytes({Kind::kGone, at}, "  1,  2\n" + std::string(200, ' '));
        KwIOCL io;
        io.CreateIndirectlyM(bytes.open(mode, canSeek), "", "", 0);
        int value = 0;
        thrownBy([&] { io.InputDM(&value); });
        thrownBy([&] { io.SkipSomeLinesM(3); });
        IntArr array;
        slFscanfIntArr(io.GetFileDescriptM(), &array);
        EXPECT_EQ(thrownBy([&] { io.CloseM(); }), 0) << mode << at;
      }
    }
  }
}

}  // namespace
}  // namespace zel::test
