#include "zel/textfile/paths.h"

#include <gtest/gtest.h>

#include <cstring>

#include "zel/textfile/list_tags.h"

namespace {

TEST(Paths, splitsAtTheLastBackslashAndTheLastDot) {
  const struct {
    const char *fullName, *path, *name, *extension, *mainName;
    int hasPath, hasExtension;
  } rows[] = {
      {"c:\\tex\\wood.bmp", "c:\\tex\\", "wood.bmp", "bmp", "wood", 1, 1},
      {"wood.tar.gz", "", "wood.tar.gz", "gz", "wood.tar", 0, 1},
      {"c:\\tex\\", "c:\\tex\\", "", "", "", 1, 0},
      {"a.b\\wood", "a.b\\", "wood", "b\\wood", "wood", 1, 1},
      {"dir/wood", "", "dir/wood", "", "dir/wood", 0, 0},
      {"", "", "", "", "", 0, 0},
      {nullptr, "", "", "", "", 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.fullName != nullptr ? row.fullName : "(null)");
    char path[260], name[260], extension[260], mainName[260];
    EXPECT_EQ(slGetPathAndName(row.fullName, path, name), row.hasPath);
    EXPECT_EQ(slGetFileExtension(row.fullName, extension), row.hasExtension);
    EXPECT_EQ(slGetFileMainName(row.fullName, mainName), 1);
    EXPECT_STREQ(path, row.path);
    EXPECT_STREQ(name, row.name);
    EXPECT_STREQ(extension, row.extension);
    EXPECT_STREQ(mainName, row.mainName);
  }
}

TEST(Paths, pathAloneMayOverwriteItsInput) {
  char buffer[260] = "c:\\tex\\wood.bmp";
  EXPECT_EQ(slGetPathAndName(buffer, buffer, nullptr), 1);
  EXPECT_STREQ(buffer, "c:\\tex\\");
}

TEST(Paths, textureLevelNameDropsTheDirectory) {
  char out[260];
  EXPECT_EQ(slGetMipMapFileName("c:\\tex\\wood.bmp", out, 2), 1);
  EXPECT_STREQ(out, "wood-2.bmp");
  slGetMipMapFileName("wood", out, -1);
  EXPECT_STREQ(out, "wood--1.");
}

TEST(Paths, joiningLeavesOneBackslash) {
  const struct {
    const char *directory, *name, *joined;
  } rows[] = {{"a", "b", "a\\b"},     {"a\\", "b", "a\\b"}, {"a", "\\b", "a\\b"},
              {"a\\", "\\b", "a\\b"}, {"", "\\b", "\\b"},   {"\\", "b", "\\b"},
              {"a", "", "a\\"}};
  for (const auto& row : rows) {
    char directory[260];
    std::strcpy(directory, row.directory);
    EXPECT_EQ(slCombFileName(directory, row.name), 1);
    EXPECT_STREQ(directory, row.joined);
  }
  char directory[260] = "a";
  EXPECT_EQ(slCombFileName(directory, nullptr), 0);
  EXPECT_EQ(slCombFileName(nullptr, "b"), 0);
}

TEST(Paths, nullNameStaysEmptyWhateverThePath) {
  char name[260] = "NULL";
  slCatFileNameWithPath(name, "c:\\tex\\");
  EXPECT_STREQ(name, "");
  std::strcpy(name, "wood.bmp");
  slCatFileNameWithPath(name, "c:\\tex");
  EXPECT_STREQ(name, "c:\\texwood.bmp");
}

TEST(ListTags, carryTheListName) {
  char out[64];
  EXPECT_EQ(slGetArrBeginStr(out, "nodes"), 1);
  EXPECT_STREQ(out, "nodes_LIST_BEGIN");
  EXPECT_EQ(slGetArrIndexStr(out, "nodes"), 1);
  EXPECT_STREQ(out, "INDEX_OF_nodes_LIST");
  EXPECT_EQ(slGetArrEndStr(out, "nodes"), 1);
  EXPECT_STREQ(out, "nodes_LIST_END");
}

}  // namespace
