#include "zel/textfile/string_edit.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>

namespace {

TEST(StringEdit, cutsAtEitherEndWithinTheLength) {
  char out[16] = "kept";
  for (const int n : {0, -1, 6}) {
    EXPECT_EQ(slLeft("ooden", n, out), 0);
    EXPECT_EQ(slRight("ooden", n, out), 0);
  }
  EXPECT_STREQ(out, "kept");
  EXPECT_EQ(slLeft("wooden", 4, out), 1);
  EXPECT_STREQ(out, "wood");
  EXPECT_EQ(slRight("wooden", 2, out), 1);
  EXPECT_STREQ(out, "en");
  EXPECT_EQ(slRight("wooden", 6, out), 1);
  EXPECT_STREQ(out, "wooden");
}

TEST(StringEdit, padsPrefixesAndSkips) {
  char text[16] = "den";
  EXPECT_EQ(slInsertStr(text, "woo"), text);
  EXPECT_STREQ(text, "wooden");
  EXPECT_EQ(slSpace(3, text), text);
  EXPECT_STREQ(text, "   ");
  EXPECT_STREQ(slSpace(-1, text), "");
  int position = 1;
  EXPECT_EQ(slSkipSpace("1 , ,,2", &position), 1);
  EXPECT_EQ(position, 6);
  slSkipSpace("  ", &(position = 0));
  EXPECT_EQ(position, 2);
}

TEST(StringEdit, insertsBehindSeedsWhileThereIsRoom) {
  char text[64] = "a,b,c,d";
  EXPECT_EQ(slInsStrBySeed(text, 7 + 2 * 2 + 2, "\r\n", ','), 0);
  EXPECT_STREQ(text, "a,\r\nb,\r\nc,d");
  char empty[4] = "";
  EXPECT_EQ(slInsStrBySeed(empty, 0, "x", ','), 1);
  char noSeed[4] = "abc";
  EXPECT_EQ(slInsStrBySeed(noSeed, 4, "x", '\0'), 1);
  EXPECT_STREQ(noSeed, "abc");
  EXPECT_EQ(slInsStrBySeed(noSeed, INT_MIN, "x", 'a'), 0);
  EXPECT_STREQ(noSeed, "abc");
}

// The rule spelt out one insertion at a time.
int insertOneByOne(std::string& text, int capacity, const std::string& insert, char seed) {
  for (std::size_t at = text.find(seed); at != std::string::npos;
       at = text.find(seed, at + 1 + insert.size())) {
    if (static_cast<int>(text.size() + insert.size()) + 1 >= capacity) {
      return 0;
    }
    text.insert(at + 1, insert);
  }
  return 1;
}

TEST(StringEdit, insertionAgreesWithOneAtATime) {
  std::mt19937 random(20);
  const auto below = [&](unsigned n) { return random() % n; };
  for (int round = 0; round < 3000; ++round) {
    std::string text(below(12), ' ');
    for (char& c : text) {
      c = "ab,"[below(3)];
    }
    const std::string insert = std::string("x,yz").substr(0, below(5));
    const int capacity = static_cast<int>(text.size() + 1 + below(24));
    std::string buffer = text + std::string(64, '#');
    buffer[text.size()] = '\0';
    const int result = slInsStrBySeed(buffer.data(), capacity, insert.c_str(), ',');
    EXPECT_EQ(result, insertOneByOne(text, capacity, insert, ','));
    EXPECT_STREQ(buffer.c_str(), text.c_str());
  }
}

}  // namespace
