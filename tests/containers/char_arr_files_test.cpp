// Whole files in and out of a CharArr.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

#include "containers/saved_files.h"
#include "support/array_values.h"

namespace zel::test {
namespace {

namespace fs = std::filesystem;
using CharArrFiles = SavedFiles;

TEST_F(CharArrFiles, bytesGoOutAndComeBackUnchanged) {
  std::string bytes;
  for (int i = 0; i < 70000; ++i) {
    bytes += static_cast<char>(i * 7);
  }
  const std::string path = dir_.file("all \xC3\xA4 bytes.txt");
  ASSERT_EQ(save(bytes, path), 0);
  EXPECT_EQ(readFile(path), bytes);
  CharArr read = bufferOf("12345");
  EXPECT_EQ(read.ReadFileM(path.c_str(), 3), 1);
  EXPECT_EQ(contentOf(read), "123" + bytes);
  EXPECT_EQ(countsOf(read), (Counts{.bound = 70003, .live = 70003, .length = 70003}));
}

TEST_F(CharArrFiles, whatIsNoFileIsNotRead) {
  CharArr buffer = bufferOf("kept");
  const std::string file = dir_.file("file");
  writeFile(file, "text");
  for (const auto& [path, start] : {std::pair{dir_.file("none"), 0},
                                    {dir_.path().string(), 5},
                                    {file, -1},
                                    {file, 2147483645}}) {
    EXPECT_EQ(buffer.ReadFileM(path.c_str(), start), 0) << path;
  }
  EXPECT_EQ(buffer.ReadFileM(nullptr, 0), 0);
  EXPECT_EQ(contentOf(buffer), "kept");
}

TEST_F(CharArrFiles, emptyContentMakesAnEmptyFile) {
  const std::string path = dir_.file("file");
  writeFile(path, "old");
  EXPECT_EQ(save("", path), 0);
  EXPECT_EQ(fs::file_size(path), 0U);
  CharArr buffer;
  EXPECT_EQ(buffer.ReadFileM(path.c_str(), 0), 1);
  EXPECT_EQ(buffer.GetBoundM(), 0);
}

// A save writes to a second file first, whose name must not take another file's place.
TEST_F(CharArrFiles, filesWithTheNameOfAnUnfinishedSaveAreLeftAlone) {
  writeFile(dir_.file("file"), "old");
  writeFile(dir_.file("file.new0"), "somebody's");
  EXPECT_EQ(save("new", dir_.file("file")), 0);
  EXPECT_EQ(readFile(dir_.file("file")), "new");
  EXPECT_EQ(readFile(dir_.file("file.new0")), "somebody's");
}

TEST_F(CharArrFiles, readOnlyFileIsReplacedAndStaysReadOnly) {
  const std::string path = dir_.file("protected");
  writeFile(path, "old");
  fs::permissions(path, fs::perms{0444});
  const fs::perms before = fs::status(path).permissions();
  ASSERT_EQ(before & fs::perms{0222}, fs::perms::none);
  EXPECT_EQ(save("new", path), 0);
  EXPECT_EQ(readFile(path), "new");
  EXPECT_EQ(fs::status(path).permissions(), before);
  EXPECT_EQ(fileCount(), 1);
}

TEST_F(CharArrFiles, placesThatTakeNoFileThrow108) {
  for (const std::string& path :
       {dir_.file("missing/file"), dir_.path().string(), std::string(), std::string("/dev/full")}) {
    EXPECT_EQ(save("text", path), 108) << path;
  }
}

TEST_F(CharArrFiles, backslashesPartDirectoriesEvenWhereAFileIsNamedSo) {
  fs::create_directory(dir_.path() / "sub");
  writeFile(dir_.file("sub\\file"), "another");  // where the system lets it have that name
  const std::string path = dir_.file("sub\\file");
  EXPECT_EQ(save("inside", path), 0);
  EXPECT_EQ(readFile(dir_.file("sub/file")), "inside");
  CharArr buffer;
  EXPECT_EQ(buffer.ReadFileM(path.c_str(), 0), 1);
  EXPECT_EQ(contentOf(buffer), "inside");
}

}  // namespace
}  // namespace zel::test
