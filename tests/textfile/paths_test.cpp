#include "zel/textfile/paths.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "zel/textfile/list_tags.h"

namespace {

struct Parts {
  std::string path, name, extension, mainName;
  int hasPath, hasExtension;
};

Parts partsOf(const char* fullName) {
  char path[260], name[260], extension[260], mainName[260];
  Parts parts;
  parts.hasPath = slGetPathAndName(fullName, path, name);
  parts.hasExtension = slGetFileExtension(fullName, extension);
  EXPECT_EQ(slGetFileMainName(fullName, mainName), 1);
  parts.path = path;
  parts.name = name;
  parts.extension = extension;
  parts.mainName = mainName;
  return parts;
}

TEST(Paths, splitsAtTheLastBackslashAndTheLastDot) {
  const struct {
    const char* fullName;
    Parts parts;
  } rows[] = {
      {"c:\\tex\\wood.bmp", {"c:\\tex\\", "wood.bmp", "bmp", "wood", 1, 1}},
      {"wood.tar.gz", {"", "wood.tar.gz", "gz", "wood.tar", 0, 1}},
      {"c:\\tex\\", {"c:\\tex\\", "", "", "", 1, 0}},
      {"a.b\\wood", {"a.b\\", "wood", "b\\wood", "wood", 1, 1}},
      {"dir/wood", {"", "dir/wood", "", "dir/wood", 0, 0}},
      {"", {"", "", "", "", 0, 0}},
      {nullptr, {"", "", "", "", 0, 0}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.fullName != nullptr ? row.fullName : "(null)");
    const Parts parts = partsOf(row.fullName);
    EXPECT_EQ(parts.path, row.parts.path);
    EXPECT_EQ(parts.name, row.parts.name);
    EXPECT_EQ(parts.extension, row.parts.extension);
    EXPECT_EQ(parts.mainName, row.parts.mainName);
    EXPECT_EQ(parts.hasPath, row.parts.hasPath);
    EXPECT_EQ(parts.hasExtension, row.parts.hasExtension);
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
