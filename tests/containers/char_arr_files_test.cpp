// Whole files in and out of a CharArr.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "containers/char_bytes.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

using zel::test::bufferOf;
using zel::test::contentOf;

/// @return what SaveFileM() threw; 0 when nothing.
int saveCode(const CharArr& buffer, const std::string& path) {
  try {
    buffer.SaveFileM(path.c_str());
  } catch (int code) {
    return code;
  }
  return 0;
}

std::size_t filesIn(const fs::path& directory) {
  return static_cast<std::size_t>(
      std::distance(fs::directory_iterator(directory), fs::directory_iterator()));
}

class CharArrFiles : public ::testing::Test {
 protected:
  zel::test::TempDir dir_;
};

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
  EXPECT_EQ(buffer.ReadFileM(dir_.path().c_str(), 0), 0);
  EXPECT_EQ(buffer.ReadFileM(dir_.path().c_str(), 5), 0);
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
  ASSERT_EQ(chmod(path.c_str(), 0444), 0);
  EXPECT_EQ(saveCode(bufferOf("new"), path), 0);
  EXPECT_EQ(zel::test::readFile(path), "new");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms{0444});
  EXPECT_EQ(filesIn(dir_.path()), 1U);
}

TEST_F(CharArrFiles, modesAndLinksOutliveASave) {
  const std::string path = dir_.file("script");
  zel::test::writeFile(path, "old");
  ASSERT_EQ(chmod(path.c_str(), 0750), 0);
  fs::create_symlink("script", dir_.file("link"));
  EXPECT_EQ(saveCode(bufferOf("new"), dir_.file("link")), 0);
  EXPECT_TRUE(fs::is_symlink(dir_.file("link")));
  EXPECT_EQ(zel::test::readFile(path), "new");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms{0750});
  fs::create_symlink("to come", dir_.file("early link"));
  EXPECT_EQ(saveCode(bufferOf("first"), dir_.file("early link")), 0);
  EXPECT_EQ(zel::test::readFile(dir_.file("to come")), "first");
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

// A limit on file sizes fails the write as a full disk does.
TEST_F(CharArrFiles, failedSaveThrows108AndKeepsTheOldFile) {
  const std::string path = dir_.file("precious");
  zel::test::writeFile(path, "old content");
  const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit previous{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &previous), 0);
  rlimit limited = previous;
  limited.rlim_cur = 4096;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
  const int code = saveCode(bufferOf(std::string(100000, 'x')), path);
  setrlimit(RLIMIT_FSIZE, &previous);
  std::signal(SIGXFSZ, previousHandler);
  EXPECT_EQ(code, 108);
  EXPECT_EQ(zel::test::readFile(path), "old content");
  EXPECT_EQ(filesIn(dir_.path()), 1U);
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
