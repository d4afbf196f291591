// Saving a CharArr where files have modes, links and limits on their size.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "containers/saved_files.h"

namespace zel::test {
namespace {

namespace fs = std::filesystem;
using CharArrPosixFiles = SavedFiles;

TEST_F(CharArrPosixFiles, modesAndLinksOutliveASave) {
  const std::string path = dir_.file("script");
  writeFile(path, "old");
  ASSERT_EQ(chmod(path.c_str(), 0750), 0);
  fs::create_symlink("script", dir_.file("link"));
  EXPECT_EQ(save("new", dir_.file("link")), 0);
  EXPECT_TRUE(fs::is_symlink(dir_.file("link")));
  EXPECT_EQ(readFile(path), "new");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms{0750});
  fs::create_symlink("to come", dir_.file("early link"));
  EXPECT_EQ(save("first", dir_.file("early link")), 0);
  EXPECT_EQ(readFile(dir_.file("to come")), "first");
}

// A limit on file sizes fails the write as a full disk does.
TEST_F(CharArrPosixFiles, failedSaveThrows108AndKeepsTheOldFile) {
  const std::string path = dir_.file("precious");
  writeFile(path, "old content");
  const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit previous{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &previous), 0);
  rlimit limited = previous;
  limited.rlim_cur = 4096;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limited), 0);
  const int code = save(std::string(100000, 'x'), path);
  setrlimit(RLIMIT_FSIZE, &previous);
  std::signal(SIGXFSZ, previousHandler);
  EXPECT_EQ(code, 108);
  EXPECT_EQ(readFile(path), "old content");
  EXPECT_EQ(fileCount(), 1);
}

}  // namespace
}  // namespace zel::test
