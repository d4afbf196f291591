#include "zel/textfile/files.h"

#include <gtest/gtest.h>

#include <string>

#include "support/temp_dir.h"
#include "zel/core/platform.h"

namespace {

namespace fs = std::filesystem;
using zel::test::readFile;
using zel::test::TempDir;
using zel::test::writeFile;

TEST(Files, findsFilesDirectoriesAndPatterns) {
  const TempDir dir;
  writeFile(dir.file("wood.bmp"), "x");
  EXPECT_TRUE(slIsExistentPath(dir.file("wood.bmp").c_str()));
  EXPECT_TRUE(slIsExistentPath(dir.path().string().c_str()));
  EXPECT_TRUE(slIsExistentPath((dir.path().string() + "\\w*.bmp").c_str()));
  EXPECT_FALSE(slIsExistentPath(dir.file("iron.bmp").c_str()));
  EXPECT_FALSE(slIsExistentPath((dir.path().string() + "\\").c_str()));
  EXPECT_FALSE(slIsExistentPath(nullptr));
  // Only '*' and '?' are pattern characters.
  writeFile(dir.file("oak[1].bmp"), "x");
  EXPECT_TRUE(slIsExistentPath(dir.file("oak[1].bmp").c_str()));
  EXPECT_TRUE(slIsExistentPath((dir.path().string() + "\\o?k[1].*").c_str()));
  EXPECT_FALSE(slIsExistentPath((dir.path().string() + "\\w[a-z]od*").c_str()));

  EXPECT_EQ(slFindSingleFile((dir.path().string() + "\\").c_str()), 1);
  EXPECT_EQ(slFindSingleFile((dir.path().string() + "/").c_str()), 1);
  EXPECT_EQ(slFindSingleFile(dir.file("iron.bmp").c_str()), 0);
  EXPECT_EQ(slFindSingleFile(""), 0);
  EXPECT_EQ(slFindSingleFile(std::string(260, 'x').c_str()), 0);
}

TEST(Files, createsEveryMissingDirectory) {
  const TempDir dir;
  const std::string root = dir.path().string();
  EXPECT_EQ(slCreateDirRecursively(("  " + root + "\\a\\\\b c/d\\").c_str()), 1);
  EXPECT_TRUE(fs::is_directory(dir.path() / "a" / "b c" / "d"));
  EXPECT_EQ(slCreateDirRecursively((root + "\\a").c_str()), 1);
  writeFile(dir.file("plain"), "x");
  EXPECT_EQ(slCreateDirRecursively((root + "\\plain\\b").c_str()), 0);
  EXPECT_EQ(slCreateDirRecursively((root + "\\plain").c_str()), 0);
}

TEST(Files, refusesPathsWithoutARoot) {
  for (const std::string path : {"", " ", "x", "relative\\path", "1:\\x", "Q:\\x"}) {
    EXPECT_EQ(slCreateDirRecursively(path.c_str()), 0) << path;
  }
  EXPECT_EQ(slCreateDirRecursively(("\\" + std::string(259, 'x')).c_str()), 0);
}

// A system with the drives C: and D:, which notes what it is asked to create.
class DrivePlatform : public zel::Platform {
 public:
  DrivePlatform() { zel::setPlatform(this); }
  ~DrivePlatform() override { zel::setPlatform(nullptr); }
  std::uint32_t presentDrives() override { return 0b1100; }
  bool createDirectory(const char* path) override {
    created += std::string(path) + ";";
    return true;
  }
  std::string created;
};

TEST(Files, directoriesOnDrivesNeedAPresentOne) {
  DrivePlatform drives;
  EXPECT_EQ(slCreateDirRecursively("e:\\x"), 0);
  EXPECT_EQ(slCreateDirRecursively("\\x"), 0);
  EXPECT_EQ(slCreateDirRecursively("c: \\x"), 0);
  EXPECT_EQ(drives.created, "");
  EXPECT_EQ(slCreateDirRecursively("d:\\x y\\z"), 1);
  EXPECT_EQ(drives.created, "d:\\x y;d:\\x y\\z;");
}

TEST(Files, copyNeverReplaces) {
  const TempDir dir;
  writeFile(dir.file("wood.bmp"), "new");
  writeFile(dir.file("old.bmp"), "old");
  fs::create_directory(dir.path() / "sub");
  const std::string source = dir.path().string() + "\\wood.bmp";
  EXPECT_EQ(slCopyFile(source.c_str(), dir.file("old.bmp").c_str()), 1);
  EXPECT_EQ(readFile(dir.file("old.bmp")), "old");
  EXPECT_EQ(slCopyFile(source.c_str(), dir.file("sub\\").c_str()), 1);
  EXPECT_EQ(readFile(dir.file("sub/wood.bmp")), "new");
  fs::create_directory(dir.path() / "with slashes");
  slCopyFile(dir.file("wood.bmp").c_str(), dir.file("with slashes/").c_str());
  EXPECT_EQ(readFile(dir.file("with slashes/wood.bmp")), "new");
  EXPECT_EQ(slCopyFile(dir.file("none").c_str(), dir.file("copy").c_str()), 1);
  EXPECT_FALSE(slIsExistentPath(dir.file("copy").c_str()));
  EXPECT_EQ(slCopyFile(nullptr, nullptr), 1);
}

}  // namespace
