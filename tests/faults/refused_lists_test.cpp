// Lists read and written, and every call that names files, while the heap refuses: all of it is
// there, or the caller has been told.

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "faults/faulty_stream.h"
#include "faults/refusing_allocator.h"
#include "faults/stream_operations.h"
#include "support/shown_message.h"
#include "support/temp_dir.h"
#include "zel/containers/char_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/textfile/file_version.h"
#include "zel/textfile/files.h"
#include "zel/textfile/string_edit.h"

namespace zel::test {
namespace {

// --- the heap itself -----------------------------------------------------------------------------

TEST(RefusingHeap, refusesEveryRequestInItsTurn) {
  const int refusals = refuseEachRequest("growth", [](RefusingHeap& heap) {
    IntArr array;
    const Told told = heap.during([&] {
      for (int i = 0; i < 100; ++i) {
        array.AddItemM(i);
      }
    });
    return whatIsWrong(told.hasReport == heap.hasRefused(), "not reported") +
           whatIsWrong(told.hasReport || array.GetAvailableNumM() == 100, "lost");
  });
  EXPECT_EQ(refusals, 2 * 4);  // 14, 28, 56 and 112 slots
}

TEST(RefusingHeap, refusesTheCLibraryAndOperatorNewToo) {
  RefusingHeap heap(0, true);
  const Told told = heap.during([] {
    EXPECT_EQ(std::tmpfile(), nullptr);
    EXPECT_EQ(new (std::nothrow) int, nullptr);
    throw 108;
  });
  EXPECT_EQ(told.thrown, 108);
}

// --- lists and values ----------------------------------------------------------------------------

std::string attemptOn(const StreamOperation& operation, const CleanRun& clean, bool canSeek,
                      RefusingHeap& heap) {
  FaultyBytes bytes({}, operation.content);
  KwIOCL io;
  takeStream(io, bytes.open(operation.isReader ? "r" : "w", canSeek), operation.isBinary);
  const auto run = operation.start();
  const Told told = heap.during([&] {
    run->work(io);
    io.CloseM();
  });
  // What the object's own calls lose they throw.
  const bool isTold = operation.isPlain ? told.anything() || run->hasTold() : told.thrown != 0;
  if (isTold) {
    return whatIsWrong(heap.hasRefused(), "told of what was not");
  }
  return whatIsWrong(run->result() == clean.result, "not read whole") +
         whatIsWrong(operation.isReader || bytes.bytes() == clean.written, "not written whole");
}

class RefusedLists : public testing::TestWithParam<StreamOperation> {};

TEST_P(RefusedLists, areWholeOrSaySo) {
  const StreamOperation& operation = GetParam();
  const CleanRun clean = runCleanly(operation);
  for (const bool canSeek : {true, false}) {
    refuseEachRequest(operation.name, [&](RefusingHeap& heap) {
      return attemptOn(operation, clean, canSeek, heap);
    });
  }
}

INSTANTIATE_TEST_SUITE_P(, RefusedLists, testing::ValuesIn(streamOperations()),
                         testName<StreamOperation>);

// --- calls that name files -----------------------------------------------------------------------

/// A call in a folder that holds the file "old content of this file": makes its attempt and says
/// what is wrong.
struct FileCall {
  const char* name;
  std::function<std::string(const TempDir&, RefusingHeap&)> attempt;
};

const char* const kOld = "old content of this file";
/// Longer than what a std::string holds without a request.
const char* const kFile = "a file with a long name.txt";

const FileCall kFileCalls[] = {
    {"OpenM",
     [](const TempDir& dir, RefusingHeap& heap) {
       KwIOCL io;
       const std::string name = dir.file(kFile);
       const Told told = heap.during([&] { io.OpenM(name.c_str(), "r"); });
       return whatIsWrong(told.thrown == 0 || told.thrown == 109, "another number") +
              whatIsWrong(told.anything() || io.GetFileDescriptM() != nullptr, "not open");
     }},
    {"CreateIndirectlyM",
     [](const TempDir& dir, RefusingHeap& heap) {
       KwIOCL io;
       std::FILE* file = std::fopen(dir.file(kFile).c_str(), "r");
       const Told told = heap.during([&] { io.CreateIndirectlyM(file, "name", "zel4.7", 47); });
       return whatIsWrong((told.thrown != 109) == (io.GetFileDescriptM() == file), "not taken");
     }},
    {"ReadFileM",
     [](const TempDir& dir, RefusingHeap& heap) {
       CharArr text;
       text.SetNewStrM("kept");
       const std::string name = dir.file(kFile);
       int result = 0;
       heap.during([&] { result = text.ReadFileM(name.c_str(), 2); });
       const std::string now(text.GetContentConstPtrM(),
                             static_cast<std::size_t>(text.GetBoundM()));
       return whatIsWrong(now == (result == 1 ? std::string("ke") + kOld : std::string("kept", 5)),
                          "neither old nor new") +
              whatIsWrong(result == 1 || heap.hasRefused(), "not read");
     }},
    {"SaveFileM",
     [](const TempDir& dir, RefusingHeap& heap) {
       CharArr text;
       text.SetValueM(3, "new");
       const std::string name = dir.file(kFile);
       const Told told = heap.during([&] { text.SaveFileM(name.c_str()); });
       const std::string now = readFile(name);
       const auto files = std::distance(std::filesystem::directory_iterator(dir.path()), {});
       return whatIsWrong(now == (told.thrown == 108 ? kOld : "new"), "neither old nor new") +
              whatIsWrong(files == 1, "a file is left over");
     }},
    {"SaveFileM of a read-only file",
     [](const TempDir& dir, RefusingHeap& heap) {
       namespace fs = std::filesystem;
       CharArr text;
       text.SetValueM(3, "new");
       const std::string name = dir.file(kFile);
       const auto writers = fs::perms::owner_write | fs::perms::group_write;
       fs::permissions(name, writers, fs::perm_options::remove);
       const Told told = heap.during([&] { text.SaveFileM(name.c_str()); });
       const bool isWritable = (fs::status(name).permissions() & writers) != fs::perms::none;
       return whatIsWrong(told.thrown == 108 || readFile(name) == "new", "not saved") +
              whatIsWrong(told.thrown == 108 || !isWritable, "left writable");
     }},
    {"slIsExistentPath",
     [](const TempDir& dir, RefusingHeap& heap) {
       const std::string name = dir.file("a file*");
       bool isFound = false;
       heap.during([&] { isFound = slIsExistentPath(name.c_str()); });
       return whatIsWrong(isFound || heap.hasRefused(), "not found");
     }},
    {"slFindSingleFile",
     [](const TempDir& dir, RefusingHeap& heap) {
       const std::string name = dir.file(kFile);
       int result = 0;
       heap.during([&] { result = slFindSingleFile(name.c_str()); });
       return whatIsWrong(result == 1 || heap.hasRefused(), "not found");
     }},
    {"slCreateDirRecursively",
     [](const TempDir& dir, RefusingHeap& heap) {
       const std::string name = dir.file("first folder of two/second folder of two");
       int result = 0;
       heap.during([&] { result = slCreateDirRecursively(name.c_str()); });
       return whatIsWrong(result == (std::filesystem::is_directory(name) ? 1 : 0),
                          "a wrong answer");
     }},
    {"slCopyFile",
     [](const TempDir& dir, RefusingHeap& heap) {
       const std::string from = dir.file(kFile);
       const std::string to = dir.file("another file with a long name");
       const Told told = heap.during([&] { slCopyFile(from.c_str(), to.c_str()); });
       return whatIsWrong(told.anything() || readFile(to) == kOld, "not copied");
     }},
    {"slCopyFile onto another",
     [](const TempDir& dir, RefusingHeap& heap) {
       const std::string from = dir.file(kFile);
       const std::string to = dir.file("another file with a long name");
       writeFile(to, "precious");
       heap.during([&] { slCopyFile(from.c_str(), to.c_str()); });
       return whatIsWrong(readFile(to) == "precious", "written over");
     }},
    {"slFileMessage",
     [](const TempDir& dir, RefusingHeap& heap) {
       const std::string name = dir.file(kFile);
       const std::string shown =
           shownMessage([&] { heap.during([&] { slFileMessage(109, name.c_str()); }); });
       return whatIsWrong(shown.size() > 1, "nothing shown");
     }},
    {"slInsertStr",
     [](const TempDir& /*dir*/, RefusingHeap& heap) {
       char text[20] = "text";
       const Told told = heap.during([&] { slInsertStr(text, "pre"); });
       return whatIsWrong(std::string(text) == (told.hasReport ? "text" : "pretext"), "half done");
     }},
};

TEST(RefusedFileCalls, saySoAndLeaveWhatWasThere) {
  for (const FileCall& call : kFileCalls) {
    const int refusals = refuseEachRequest(call.name, [&](RefusingHeap& heap) {
      const TempDir dir;
      writeFile(dir.file(kFile), kOld);
      return call.attempt(dir, heap);
    });
    EXPECT_GT(refusals, 0) << call.name;
  }
}

}  // namespace
}  // namespace zel::test
