// Saving a CharArr where files have attributes, access lists and sharing modes.

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

#include "containers/saved_files.h"

namespace zel::test {
namespace {

using CharArrWindowsFiles = SavedFiles;

constexpr DWORD kKeptAttributes =
    FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

TEST_F(CharArrWindowsFiles, attributesOutliveASave) {
  const std::string path = dir_.file("hidden");
  for (const DWORD attributes : {DWORD{FILE_ATTRIBUTE_HIDDEN}, kKeptAttributes, DWORD{0}}) {
    writeFile(path, "old");
    const DWORD wanted = attributes != 0 ? attributes : DWORD{FILE_ATTRIBUTE_NORMAL};
    ASSERT_NE(SetFileAttributesA(path.c_str(), wanted), 0);
    ASSERT_EQ(GetFileAttributesA(path.c_str()) & kKeptAttributes, attributes);
    EXPECT_EQ(save("new", path), 0);
    EXPECT_EQ(GetFileAttributesA(path.c_str()) & kKeptAttributes, attributes);
    EXPECT_EQ(readFile(path), "new");
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
  }
  EXPECT_EQ(fileCount(), 1);
}

// A file that another program keeps to itself cannot be replaced.
TEST_F(CharArrWindowsFiles, failedSaveThrows108AndKeepsTheOldFile) {
  const std::string path = dir_.file("precious");
  writeFile(path, "old content");
  const HANDLE held = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  EXPECT_EQ(save(std::string(100000, 'x'), path), 108);
  CloseHandle(held);
  EXPECT_EQ(readFile(path), "old content");
  EXPECT_EQ(fileCount(), 1);
}

TEST_F(CharArrWindowsFiles, devicesAreWrittenDirectly) {
  EXPECT_EQ(save("gone", "NUL"), 0);
  EXPECT_EQ(save("gone", dir_.file("nul")), 0);
  EXPECT_EQ(fileCount(), 0);
}

TEST_F(CharArrWindowsFiles, bothSeparatorsAndDriveLettersAreTaken) {
  std::string path = dir_.file("a file");
  ASSERT_EQ(path[1], ':');
  EXPECT_EQ(save("text", path), 0);
  std::replace(path.begin(), path.end(), '\\', '/');
  CharArr buffer;
  EXPECT_EQ(buffer.ReadFileM(path.c_str(), 0), 1);
  EXPECT_EQ(contentOf(buffer), "text");
}

}  // namespace
}  // namespace zel::test
