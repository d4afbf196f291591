// Whole files in and out of a CharArr.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "containers/saved_files.h"

namespace {

namespace fs = std::filesystem;

using zel::test::bufferOf;
using zel::test::contentOf;
using zel::test::filesIn;
using zel::test::saveCode;
using CharArrFiles = zel::test::SavedFiles;

TEST_F(CharArrFiles, bytesGoOutAndComeBackUnchanged) {
  std::string bytes;
  for (int i = 0; i < 70000; ++i) {
    bytes += static_cast<char>(i * 7);
  }
  const std::string path = dir_.file("all \xC3\xA4 bytes.txt");
  ASSERT_EQ(saveCode(bufferOf(bytes), path), 0);
  EXPECT_EQ(zel::test::readFile(path), bytes);
  CharArr read = bufferOf("12345");
  EXPECT_EQ(read.ReadFileM(path.c_str(), 3), 1);
  EXPECT_EQ(contentOf(read), "123" + bytes);
  EXPECT_EQ(read.GetAvailableNumM(), 70003);
  EXPECT_EQ(read.GetLengthM(), 70003);
}

TEST_F(CharArrFiles, whatIsNoFileIsNotRead) {
  CharArr buffer = bufferOf("kept");
  zel::test::writeFile(dir_.file("file"), "text");
  EXPECT_EQ(buffer.ReadFileM(dir_.file("none").c_str(), 0), 0);
  EXPECT_EQ(buffer.ReadFileM(dir_.path().string().c_str(), 0), 0);
  EXPECT_EQ(buffer.ReadFileM(dir_.path().string().c_str(), 5), 0);
  EXPECT_EQ(buffer.ReadFileM(nullptr, 0), 0);
  EXPECT_EQ(buffer.ReadFileM(dir_.file("file").c_str(), -1), 0);
  EXPECT_EQ(buffer.ReadFileM(dir_.file("file").c_str(), 2147483645), 0);
  EXPECT_EQ(contentOf(buffer), "kept");
}

TEST_F(CharArrFiles, emptyContentMakesAnEmptyFile) {
  zel::test::writeFile(dir_.file("file"), "old");
  EXPECT_EQ(saveCode(CharArr(), dir_.file("file")), 0);
  EXPECT_EQ(fs::file_size(dir_.file("file")), 0U);
  CharArr buffer;
  EXPECT_EQ(buffer.ReadFileM(dir_.file("file").c_str(), 0), 1);
  EXPECT_EQ(buffer.GetBoundM(), 0);
}

TEST_F(CharArrFiles, readOnlyFileIsReplacedAndStaysReadOnly) {
  const std::string path = dir_.file("protected");
  zel::test::writeFile(path, "old");
  fs::permissions(path, fs::perms{0444});
  const fs::perms before = fs::status(path).permissions();
  ASSERT_EQ(before & fs::perms{0222}, fs::perms::none);
  EXPECT_EQ(saveCode(bufferOf("new"), path), 0);
  EXPECT_EQ(zel::test::readFile(path), "new");
  EXPECT_EQ(fs::status(path).permissions(), before);
  EXPECT_EQ(filesIn(dir_.path()), 1U);
}

// A save writes to a second file first, whose name must not take another file's place.
TEST_F(CharArrFiles, filesWithTheNameOfAnUnfinishedSaveAreLeftAlone) {
  zel::test::writeFile(dir_.file("file"), "old");
  zel::test::writeFile(dir_.file("file.new0"), "somebody's");
  EXPECT_EQ(saveCode(bufferOf("new"), dir_.file("file")), 0);
  EXPECT_EQ(zel::test::readFile(dir_.file("file")), "new");
  EXPECT_EQ(zel::test::readFile(dir_.file("file.new0")), "somebody's");
}

TEST_F(CharArrFiles, placesThatTakeNoFileThrow108) {
  const CharArr buffer = bufferOf("text");
  EXPECT_EQ(saveCode(buffer, dir_.file("missing/file")), 108);
  EXPECT_EQ(saveCode(buffer, dir_.path().string()), 108);
  EXPECT_EQ(saveCode(buffer, ""), 108);
  if (fs::exists("/dev/full")) {
    EXPECT_EQ(saveCode(buffer, "/dev/full"), 108);
  }
}

TEST_F(CharArrFiles, backslashesPartDirectoriesUnlessAFileIsNamedSo) {
  fs::create_directory(dir_.path() / "sub");
  const std::string path = dir_.path().string() + "\\sub\\file";
  EXPECT_EQ(saveCode(bufferOf("inside"), path), 0);
  EXPECT_EQ(zel::test::readFile(dir_.file("sub/file")), "inside");
  CharArr buffer;
  EXPECT_EQ(buffer.ReadFileM(path.c_str(), 0), 1);
  EXPECT_EQ(contentOf(buffer), "inside");
}

}  // namespace
