// Saving a CharArr where files have modes, links and limits on their size.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

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

// Another file in its place would leave the other names, or the owner, with the old content.
TEST_F(CharArrPosixFiles, filesOfSeveralNamesOrAnotherOwnerAreWrittenInPlace) {
  const std::string path = dir_.file("shared");
  writeFile(path, "old content");
  fs::create_hard_link(path, dir_.file("other name"));
  EXPECT_EQ(save("new", path), 0);
  EXPECT_EQ(readFile(dir_.file("other name")), "new");
  fs::remove(dir_.file("other name"));

  constexpr uid_t kOther = 12345;
  struct stat before {};
  struct stat after {};
  ASSERT_EQ(stat(path.c_str(), &before), 0);
  EXPECT_EQ(save("newer", path), 0);
  ASSERT_EQ(stat(path.c_str(), &after), 0);
  EXPECT_NE(after.st_ino, before.st_ino) << "one's own file is replaced";
  if (chown(path.c_str(), kOther, static_cast<gid_t>(-1)) != 0) {
    return;  // for administrators only
  }
  EXPECT_EQ(save("newest", path), 0);
  ASSERT_EQ(stat(path.c_str(), &before), 0);
  EXPECT_EQ(before.st_ino, after.st_ino);
  EXPECT_EQ(before.st_uid, kOther);
  EXPECT_EQ(readFile(path), "newest");
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
