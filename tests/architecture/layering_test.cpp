// The library's folders stand on floors; an include may only go down or stay in its folder.

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

const std::map<std::string, int> kFloors{{"core", 0},  {"containers", 1}, {"geometry", 1},
                                         {"mesh", 2},  {"curves", 2},     {"textfile", 3},
                                         {"image", 3}, {"algorithms", 3}, {"io", 4}};

struct Include {
  fs::path from;
  std::string target;
};

std::vector<Include> includesOfLibrary() {
  static const std::regex pattern("#include\\s+[\"<](zel/[^\">]+)[\">]");
  const fs::path root = fs::path(ZEL_SOURCE_DIR) / "zel";
  std::vector<Include> found;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    const fs::path& path = entry.path();
    if (path.extension() != ".h" && path.extension() != ".cpp") {
      continue;
    }
    const std::string text = zel::test::readFile(path.string());
    for (std::sregex_iterator hit(text.begin(), text.end(), pattern), end; hit != end; ++hit) {
      found.push_back({fs::relative(path, root), (*hit)[1]});
    }
  }
  return found;
}

TEST(Layering, everyIncludeGoesDownOrStays) {
  const std::vector<Include> includes = includesOfLibrary();
  ASSERT_GT(includes.size(), 10U);
  for (const Include& include : includes) {
    const std::string from = include.from.begin()->string();
    if (from == "zel.h") {
      continue;
    }
    const std::string to = std::next(fs::path(include.target).begin())->string();
    ASSERT_TRUE(kFloors.count(from) == 1 && kFloors.count(to) == 1)
        << include.from << " includes " << include.target;
    EXPECT_TRUE(from == to || kFloors.at(from) > kFloors.at(to))
        << include.from << " includes " << include.target;
  }
}

TEST(Layering, publicHeadersIncludePublicHeadersOnly) {
  for (const Include& include : includesOfLibrary()) {
    const bool isPublicHeader = include.from.extension() == ".h" &&
                                include.from.string().find("detail") == std::string::npos;
    if (isPublicHeader) {
      EXPECT_EQ(include.target.find("detail"), std::string::npos)
          << include.from << " includes " << include.target;
    }
  }
}

TEST(Layering, onlyPlatformFilesAskForTheSystem) {
  for (const auto& entry : fs::recursive_directory_iterator(fs::path(ZEL_SOURCE_DIR) / "zel")) {
    const std::string name = entry.path().filename().string();
    const bool mayAsk =
        name == "api.h" || name == "desktop_types.h" || name.rfind("platform", 0) == 0;
    if (entry.is_regular_file() && !mayAsk) {
      EXPECT_EQ(zel::test::readFile(entry.path().string()).find("_WIN32"), std::string::npos)
          << entry.path();
    }
  }
}

TEST(Layering, roomsOfTheProgramHaveOneDoorEach) {
  static const struct {
    std::regex include;
    std::regex mayInclude;
  } doors[] = {
      {std::regex("#include <CLI/"), std::regex("command_line\\.cpp")},
      {std::regex("#include <nlohmann/"), std::regex("json\\.cpp")},
      {std::regex("#include \"tools/zel/commands/"), std::regex("main\\.cpp|commands/.*")},
  };
  const fs::path root = fs::path(ZEL_SOURCE_DIR) / "tools" / "zel";
  std::vector<int> users(std::size(doors));
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    const std::string name = fs::relative(entry.path(), root).generic_string();
    const std::string text =
        entry.is_regular_file() ? zel::test::readFile(entry.path().string()) : "";
    for (std::size_t k = 0; k < std::size(doors); ++k) {
      if (std::regex_search(text, doors[k].include)) {
        EXPECT_TRUE(std::regex_match(name, doors[k].mayInclude)) << name;
        ++users[k];
      }
    }
  }
  EXPECT_EQ(users[0], 1);
  EXPECT_EQ(users[1], 1);
  EXPECT_GT(users[2], 1);
}

}  // namespace
