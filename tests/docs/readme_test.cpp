#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "tests/support/temp_dir.h"

namespace zel::test {

namespace {

std::string source(const std::string& name) {
  return readFile(std::string(ZEL_SOURCE_DIR) + "/" + name);
}

/// The content of the first fenced block of that language.
std::string fencedBlock(const std::string& text, const std::string& language) {
  const std::string fence = "```" + language + "\n";
  const std::size_t start = text.find(fence);
  if (start == std::string::npos) {
    return "";
  }
  const std::size_t content = start + fence.size();
  return text.substr(content, text.find("```\n", content) - content);
}

}  // namespace

TEST(Readme, showsTheExampleThatIsBuilt) {
  EXPECT_EQ(fencedBlock(source("README.md"), "cpp"), source("examples/readme_example.cpp"));
}

TEST(Readme, everyLinkLeadsSomewhere) {
  for (const std::string page :
       {"README.md", "docs/guide.md", "docs/format.md", "docs/formats.md"}) {
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
