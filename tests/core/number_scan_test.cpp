#include "zel/core/detail/number_scan.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include "support/bits.h"

namespace {

TEST(NumberScan, integersAreWholeTextsWithinBlanks) {
  EXPECT_EQ(zel::scanSigned("12"), 12);
  EXPECT_EQ(zel::scanSigned(" \t12\t "), 12);
  EXPECT_EQ(zel::scanSigned("-12"), -12);
  EXPECT_EQ(zel::scanSigned("+007"), 7);
  EXPECT_EQ(zel::scanSigned("000"), 0);
  EXPECT_EQ(zel::scanUnsigned(" +5 "), 5U);
  for (const char* text :
       {"", " ", "12a", "1 2", "a", "-", "+", "+-5", "1.0", "0x10", "-0", "+0"}) {
    EXPECT_FALSE(zel::scanSigned(text)) << text;
    EXPECT_FALSE(zel::scanUnsigned(text)) << text;
  }
  EXPECT_FALSE(zel::scanUnsigned("-1"));
}

TEST(NumberScan, integersAreLimitedTo32Bits) {
  EXPECT_EQ(zel::scanSigned("2147483648"), 2147483647);
  EXPECT_EQ(zel::scanSigned("-99999999999999999999"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(zel::scanUnsigned("4294967295"), 4294967295U);
  EXPECT_EQ(zel::scanUnsigned("99999999999999999999"), 4294967295U);
}

TEST(NumberScan, realsFollowTheZeroAndMinusRules) {
  const struct {
    const char* text;
    double value;
    bool accepted;
  } kCases[] = {
      {" \t-2e3 ", -2000, true},
      {"3- \t", 3, true},
      {"3 -", 3, false},
      {"12abc", 12, false},
      {"0.0", 0, true},
      {".0", 0, false},
      {"+0", 0, false},
      {"-0", -0.0, true},
      {"-", 0, true},
      {"", 0, false},
      {"abc", 0, false},
      {"inf", 0, false},
      {"nan", 0, false},
      {"0x10", 0, false},
      {"1e999", INFINITY, true},
      {"-1e999", -INFINITY, true},
      {"1e-999", 0, false},
      {"0e99999999999", 0, true},
      {"0.0000001e-99999999999", 0, true},
      {"1,5", 1, false},
      {"-x", 0, false},
  };
  for (const auto& expected : kCases) {
    const zel::RealScan scan = zel::scanReal(expected.text);
    EXPECT_EQ(zel::test::bits(scan.value), zel::test::bits(expected.value)) << expected.text;
    EXPECT_EQ(scan.accepted, expected.accepted) << expected.text;
  }
}

TEST(NumberScan, realsConvertAsTheCLibraryDoes) {
  constexpr char kLetters[] = "0123456789.eE+-00";
  std::mt19937 random(4711);
  for (int round = 0; round < 200000; ++round) {
    std::string text;
    for (auto length = random() % 14; length > 0; --length) {
      text += kLetters[random() % (sizeof(kLetters) - 1)];
    }
    char* end = nullptr;
    const double converted = std::strtod(text.c_str(), &end);
    const double expected =
        end != text.c_str() ? converted : 0;  // some libraries answer -0 for no number
    const zel::RealScan scan = zel::scanReal(text.c_str());
    ASSERT_EQ(zel::test::bits(scan.value), zel::test::bits(expected)) << text;
    if (expected != 0.0) {
      const std::string rest = end;
      ASSERT_EQ(scan.accepted, rest.empty() || rest == "-") << text;
    }
  }
}

}  // namespace
