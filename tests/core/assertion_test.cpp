#include "zel/core/assertion.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/temp_dir.h"
#include "zel/core/platform.h"

namespace {

namespace fs = std::filesystem;

class FixedClock : public zel::Platform {
 public:
  zel::UtcTime utcTime() override { return {2003, 1, 4, 9, 5}; }
};

class AssertionLog : public testing::Test {
 protected:
  AssertionLog() : before_(fs::current_path()) {
    fs::current_path(dir_.path());
    zel::setPlatform(&clock_);
  }
  ~AssertionLog() override {
    zel::setPlatform(nullptr);
    fs::current_path(before_);
  }

  FixedClock clock_;
  zel::test::TempDir dir_;
  fs::path before_;
};

TEST_F(AssertionLog, failedConditionAppendsTwoLinesWithUnpaddedDate) {
  slAssert(3, "x", 0);
  slAssert(-4, nullptr, 0);
  std::ifstream log("machine.log");  // as text: the line ends are the system's
  const std::string lines{std::istreambuf_iterator<char>(log), std::istreambuf_iterator<char>()};
  EXPECT_EQ(lines, "200314  9:5\n3   x\n200314  9:5\n-4   \n");
}

TEST_F(AssertionLog, trueConditionCreatesNoFile) {
  slAssert(3, "x", 1);
  EXPECT_FALSE(fs::exists("machine.log"));
}

TEST_F(AssertionLog, unopenableLogIsIgnored) {
  fs::create_directory("machine.log");
  slAssert(3, "x", 0);
  EXPECT_TRUE(fs::is_directory("machine.log"));
}

TEST(Check, flagDecides) {
  EXPECT_EQ(slCheck(5, 0), 0);
  EXPECT_EQ(slCheck(5, 7), 5);
  EXPECT_EQ(slCheck(0, 7), 0);
}

}  // namespace
