#include "tools/view/file_watch.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/temp_dir.h"

namespace {

using zel::view::FileWatch;

TEST(FileWatch, tellsOfAChangeOnceTheFileRests) {
  using namespace std::chrono_literals;
  const zel::test::TempDir dir;
  const std::string file = dir.file("a.obj");
  zel::test::writeFile(file, "one");
  FileWatch watch(file);
  const FileWatch::Time start{};
  EXPECT_FALSE(watch.hasChanged(start + 10s));
  zel::test::writeFile(file, "longer");
  EXPECT_FALSE(watch.hasChanged(start + 11s));
  zel::test::writeFile(file, "longer still");
  EXPECT_FALSE(watch.hasChanged(start + 11s + 2 * FileWatch::kRest));  // it has moved again
  EXPECT_TRUE(watch.hasChanged(start + 11s + 3 * FileWatch::kRest));
  EXPECT_FALSE(watch.hasChanged(start + 20s));
  std::filesystem::remove(file);
  EXPECT_FALSE(watch.hasChanged(start + 21s));
  EXPECT_FALSE(watch.hasChanged(start + 25s));
  zel::test::writeFile(file, "back");
  EXPECT_FALSE(watch.hasChanged(start + 26s));
  EXPECT_TRUE(watch.hasChanged(start + 28s));
  EXPECT_FALSE(FileWatch().hasChanged(start + 30s));
}

}  // namespace
