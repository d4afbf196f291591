#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "tests/support/temp_dir.h"

namespace zel::test {

namespace {

std::string source(const std::string& name) {
  return readFile(std::string(ZEL_SOURCE_DIR) + "/" + name);
}

/// The contents of all fenced blocks of that language, in their order.
std::vector<std::string> fencedBlocks(const std::string& text, const std::string& language) {
  const std::string fence = "```" + language + "\n";
  std::vector<std::string> blocks;
  for (std::size_t at = text.find(fence); at != std::string::npos; at = text.find(fence, at)) {
    at += fence.size();
    blocks.push_back(text.substr(at, text.find("```\n", at) - at));
  }
  return blocks;
}

}  // namespace

TEST(Readme, showsTheExamplesThatAreBuilt) {
  EXPECT_EQ(
      fencedBlocks(source("README.md"), "cpp"),
      (std::vector{source("examples/readme_example.cpp"), source("examples/classic_example.cpp")}));
}

TEST(Readme, everyLinkLeadsSomewhere) {
  for (const std::string page :
       {"README.md", "docs/ARCHITECTURE.md", "docs/CONTRIBUTING.md", "docs/clusters.md",
        "docs/guide.md", "docs/format.md", "docs/formats.md", "docs/names.md", "docs/python.md"}) {
    const std::string text = source(page);
    const auto folder = std::filesystem::path(ZEL_SOURCE_DIR) / page;
    const std::regex link("\\]\\(([^)#:]+)(#[^)]*)?\\)");
    for (std::sregex_iterator it(text.begin(), text.end(), link), end; it != end; ++it) {
      EXPECT_TRUE(std::filesystem::exists(folder.parent_path() / (*it)[1].str()))
          << page << " names " << (*it)[1];
    }
  }
}

}  // namespace zel::test
